#pragma once

#include "platform/Image.h"

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QWidget;

namespace Orbita {

struct ItemServices;
struct RunningApplication;

/// One entry of the ring.
///
/// Ask the capability before the action: canRename() before rename(), canEdit() before startEditing(), canQuit() before
/// quit(), canOpenPath() before openPath(), canHoldSubitems() before the sub-item operations. The base answers no,
/// nothing, or does nothing.
class MenuItem {
public:
    using Pointer = std::shared_ptr<MenuItem>;

    virtual ~MenuItem() = default;
    MenuItem(const MenuItem &) = delete;
    MenuItem &operator=(const MenuItem &) = delete;

    /// Makes the item that \a dictionary describes by its "class". Null for a dictionary without a known class, and for
    /// one that its class cannot be made from. An entry of a known class that this program cannot open is kept as it
    /// is.
    [[nodiscard]] static Pointer fromDictionary(const QVariantMap &dictionary, ItemServices &services);

    /// Names the entry for comparisons and for the picture cache: equal identities mean the same entry.
    [[nodiscard]] virtual QString identity() const;
    /// Called just before the item is deleted for good, so that it drops what it keeps outside the item file.
    virtual void willBeRemoved() {}

    [[nodiscard]] virtual QString name() const { return {}; }
    /// What the entry is called where it is shown: its name, and where it cannot be opened now, why.
    [[nodiscard]] virtual QString title() const { return name(); }
    /// Whether nothing is known to stand in the way of opening it. Otherwise it is shown dimmed.
    [[nodiscard]] virtual bool isAvailable() const { return true; }
    /// Whether what it stands for was removed for good.
    [[nodiscard]] virtual bool isGone() const { return false; }
    [[nodiscard]] virtual bool canRename() const { return false; }
    virtual void rename(const QString &) {}
    [[nodiscard]] virtual Image image() const { return {}; }

    virtual void open() {}
    [[nodiscard]] virtual bool isRunning() const { return false; }
    /// Whether files dropped on the item may be opened with it; \a path is one of them.
    [[nodiscard]] virtual bool canOpenPath(const QString &) const { return false; }
    virtual void openPath(const QString &) {}
    /// The applications that can open this item.
    [[nodiscard]] virtual QStringList openWithAppPaths() const { return {}; }
    virtual void openWithAppPath(const QString &) {}

    [[nodiscard]] virtual bool canQuit() const { return false; }
    virtual void quit() {}
    [[nodiscard]] virtual bool canEdit() const { return false; }
    virtual void startEditing(QWidget *, const std::function<void()> &) {}

    [[nodiscard]] virtual bool canHoldSubitems() const { return false; }
    [[nodiscard]] virtual std::vector<Pointer> subitems() const { return {}; }
    virtual void addSubitem(const Pointer &) {}
    virtual void removeSubitem(const Pointer &) {}
    virtual void insertSubitem(const Pointer &, std::size_t) {}

    /// The stored form, with its "class"; nothing for an item that is never stored.
    [[nodiscard]] virtual std::optional<QVariantMap> dictionaryRepresentation() const { return std::nullopt; }
    /// Whether \a application is what this item stands for, or part of it.
    [[nodiscard]] virtual bool representsRunningApplication(const RunningApplication &) const { return false; }

protected:
    MenuItem() = default;
};

} // namespace Orbita
