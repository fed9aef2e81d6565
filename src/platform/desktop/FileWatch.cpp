#include "platform/desktop/FileWatch.h"

#include "platform/Log.h"

#include <QFile>
#include <QFileInfo>

#include <sys/inotify.h>
#include <unistd.h>

namespace Orbita {

FileWatch::FileWatch(const QString &path, QObject *parent)
    : QObject(parent), m_path(path), m_descriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    if (m_descriptor < 0) {
        qCWarning(lcPlatform, "Changes that other programs make to %s will not be noticed.", qUtf8Printable(path));
        return;
    }
    watchFolders();
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &FileWatch::readEvents);
}

FileWatch::~FileWatch()
{
    m_notifier.reset();
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

void FileWatch::watchFolders()
{
    constexpr quint32 mask = IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_ATTRIB | IN_ONLYDIR;
    // The file may have become a link or have stopped being one; a folder that is watched already stays as it is.
    for (const QString &file : {m_path, QFileInfo(m_path).canonicalFilePath()})
        if (!file.isEmpty())
            ::inotify_add_watch(m_descriptor, QFile::encodeName(QFileInfo(file).path()).constData(), mask);
}

void FileWatch::readEvents()
{
    const QByteArray name = QFile::encodeName(QFileInfo(m_path).fileName());
    const QByteArray targetName = QFile::encodeName(QFileInfo(QFileInfo(m_path).canonicalFilePath()).fileName());
    bool concerns = false;
    alignas(inotify_event) char buffer[16 * 1024];
    for (;;) {
        const ssize_t size = ::read(m_descriptor, buffer, sizeof buffer);
        if (size <= 0)
            break;
        for (ssize_t at = 0; at < size;) {
            const auto *event = reinterpret_cast<const inotify_event *>(buffer + at);
            const QByteArray changedName(event->len > 0 ? event->name : "");
            concerns = concerns || (event->mask & IN_Q_OVERFLOW) || changedName == name || changedName == targetName;
            at += ssize_t(sizeof(inotify_event) + event->len);
        }
    }
    if (!concerns)
        return;
    watchFolders();
    Q_EMIT changed();
}

} // namespace Orbita
