#pragma once

#include "platform/HotKeyService.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace Orbita {

/// Hot keys of a keyboard that a test presses.
class MemoryHotKeyService final : public HotKeyService {
    Q_OBJECT
public:
    using HotKeyService::HotKeyService;

    struct HotKey {
        HotKeyId id;
        KeyCombination combination;

        friend bool operator==(HotKey, HotKey) = default;
    };

    [[nodiscard]] Result<void, GrabError> grab(HotKeyId id, KeyCombination combination) override
    {
        if (const auto error = std::exchange(nextError, {}))
            return Failure(*error);
        if (isTakenByOther(combination) || holder(combination) != held.end())
            return Failure(GrabError::TakenByOther);
        held.push_back({id, combination});
        return {};
    }
    void release(HotKeyId id) override
    {
        std::erase_if(held, [id](HotKey hotKey) { return hotKey.id == id; });
    }
    [[nodiscard]] bool isTakenByOther(KeyCombination combination) override
    {
        return std::find(takenByOthers.begin(), takenByOthers.end(), combination) != takenByOthers.end();
    }

    /// The user presses \a combination; nothing happens when it is not held.
    void press(KeyCombination combination)
    {
        if (const auto hotKey = holder(combination); hotKey != held.end())
            Q_EMIT pressed(hotKey->id);
    }

    std::vector<HotKey> held; ///< in the order in which they were taken
    std::vector<KeyCombination> takenByOthers;
    std::optional<GrabError> nextError; ///< what the next grab() answers, once

private:
    [[nodiscard]] std::vector<HotKey>::const_iterator holder(KeyCombination combination) const
    {
        return std::find_if(held.begin(), held.end(),
                            [combination](HotKey hotKey) { return hotKey.combination == combination; });
    }
};

} // namespace Orbita
