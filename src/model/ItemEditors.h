#pragma once

#include "platform/Image.h"

#include <functional>
#include <optional>

namespace Orbita {

/// The windows in which items are edited. Each call runs an event loop of its own until the user is done.
class ItemEditors {
public:
    /// Given the text, and the picture where the user chose another one. Called exactly once: what is discarded comes
    /// back as it was given, without a picture.
    using FinishHandler = std::function<void(const QString &text, const std::optional<Image> &image)>;

    virtual ~ItemEditors() = default;

    virtual void editScript(const QString &script, const QString &title, const Image &image, FinishHandler handler) = 0;
    virtual void editLink(const QString &urlString, const Image &image, FinishHandler handler) = 0;
};

} // namespace Orbita
