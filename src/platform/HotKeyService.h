#pragma once

#include "base/Result.h"
#include "platform/KeyCombination.h"

#include <QObject>

namespace Orbita {

/// Why a combination could not be taken.
enum class GrabError {
    TakenByOther, ///< Another program, or another hot key of ours, has it.
    NoSuchKey,    ///< The keyboard lacks the key or one of the modifiers.
    NotSupported, ///< Hot keys are out of reach: there is no server to take them from.
};

/// Names one hot key.
struct HotKeyId {
    quint32 signature = 0; ///< four characters that name its owner
    quint32 id = 0;

    friend bool operator==(HotKeyId, HotKeyId) = default;
};

/// Session-wide hot keys. What holds one is pressed for nobody else, whether or not Caps Lock or Num Lock is on.
class HotKeyService : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Takes \a combination under \a id, which names none yet. On an error nothing is taken.
    [[nodiscard]] virtual Result<void, GrabError> grab(HotKeyId id, KeyCombination combination) = 0;
    /// Gives back what is taken under \a id; nothing happens when there is none.
    virtual void release(HotKeyId id) = 0;
    /// Whether a program other than this one has taken \a combination. To find out, it may be taken for a moment.
    [[nodiscard]] virtual bool isTakenByOther(KeyCombination combination) = 0;

Q_SIGNALS:
    /// Once for each time the keys go down, however long they are held.
    void pressed(Orbita::HotKeyId id);
};

} // namespace Orbita
