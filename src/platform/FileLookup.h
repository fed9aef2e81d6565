#pragma once

#include "platform/Image.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <functional>
#include <optional>

namespace Orbita {

/// What is known of the file or folder that a bookmark stands for.
struct KnownFile {
    enum class Presence {
        Unknown, ///< Nobody has looked yet.
        Present,
        Missing,     ///< It was removed for good.
        Unreachable, ///< Its drive is not mounted or does not answer, or its folder may not be read.
    };
    Presence presence = Presence::Unknown;
    QString path;        ///< where it lies, or was seen last
    QByteArray bookmark; ///< what should be stored for it from now on
    Image icon;          ///< what it looked like last; null before the first look
    bool isDirectory = false;

    friend bool operator==(const KnownFile &, const KnownFile &) = default;
};

/// Looks at files in the background and remembers what it saw: a disk may take its time, and one behind a network may
/// never answer.
class FileLookup : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    using Answer = std::function<void(const KnownFile &)>;

    /// What is known of the file of \a bookmark now; nothing for bytes that are no bookmark. Asks no disk.
    [[nodiscard]] virtual std::optional<KnownFile> known(const QByteArray &bookmark) const = 0;
    /// Looks at the file of \a bookmark, unless that is being done already, and calls \a then, if given, with what came
    /// of it: perhaps at once, never when this object ends before. A disk that does not answer in time is unreachable,
    /// until it does. Nothing happens for bytes that are no bookmark.
    virtual void look(const QByteArray &bookmark, Answer then = {}) = 0;
    /// Whether a look at the file of \a bookmark goes on, so that what is known of it may be outdated.
    [[nodiscard]] virtual bool isLooking(const QByteArray &bookmark) const = 0;

Q_SIGNALS:
    /// What known() says has changed for one or more files. From the event loop, never from within look().
    void changed();
};

} // namespace Orbita
