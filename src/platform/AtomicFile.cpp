#include "platform/AtomicFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <fcntl.h>
#include <functional>
#include <unistd.h>

namespace Orbita {

namespace {

const QString damagedSuffix = QStringLiteral(".damaged-");

/// What \a path leads to once its symbolic links are followed, whether or not something is there.
QString resolved(QString path)
{
    constexpr int maximumLinks = 40; // as many as the kernel follows
    for (int i = 0; i < maximumLinks; ++i) {
        const QString target = QFileInfo(path).symLinkTarget();
        if (target.isEmpty())
            return path;
        path = target;
    }
    return {};
}

/// Makes what the file at \a path holds last. False when that failed.
bool flushFile(const QString &path)
{
    const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    const bool isFlushed = ::fsync(file) == 0;
    ::close(file);
    return isFlushed;
}

/// Makes new names in the folder at \a path last, on file systems that can say so.
void flushFolder(const QString &path)
{
    const int folder = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return;
    ::fsync(folder);
    ::close(folder);
}

/// Whether the regular files at \a a and \a b hold the same.
bool areSame(const QString &a, const QString &b)
{
    QFile first(a);
    QFile second(b);
    if (!QFileInfo(b).isFile() || !first.open(QIODevice::ReadOnly) || !second.open(QIODevice::ReadOnly)
        || first.size() != second.size())
        return false;
    constexpr qint64 block = 64 * 1024; // bytes
    while (!first.atEnd()) {
        if (const QByteArray part = first.read(block); part.isEmpty() || part != second.read(block))
            return false;
    }
    return true;
}

/// The file that was set aside from \a path before and holds the same; empty when there is none.
QString sameSetAside(const QString &path)
{
    const QFileInfo info(path);
    if (!info.isFile())
        return {};
    const QFileInfoList kept = info.dir().entryInfoList({info.fileName() + damagedSuffix + u'*'}, QDir::Files);
    const auto same
        = std::ranges::find_if(kept, [&path](const QFileInfo &file) { return areSame(path, file.absoluteFilePath()); });
    return same != kept.end() ? same->absoluteFilePath() : QString();
}

/// Lets \a put fill the first free name beside \a path and flushes the folder. Empty when \a put fails.
QString putAside(const QString &path, const std::function<bool(const QString &)> &put)
{
    if (!QFileInfo(path).isFile())
        return {};
    const QString time = QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd-hhmmss"));
    const QString base = path + damagedSuffix + time;
    for (int counter = 1;; ++counter) {
        const QString name = counter == 1 ? base : base + u'-' + QString::number(counter);
        const QFileInfo taken(name);
        if (taken.exists() || taken.isSymLink())
            continue;
        if (!put(name))
            return {};
        flushFolder(QFileInfo(name).path());
        return name;
    }
}

} // namespace

bool writeFileAtomically(const QString &path, const QByteArray &content)
{
    const QString target = resolved(path);
    const bool isNew = !QFileInfo::exists(target);
    QSaveFile file(target);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    if (isNew)
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    // Committing flushes too, but does not tell when that failed.
    if (file.write(content) != content.size() || ::fsync(file.handle()) != 0) {
        file.cancelWriting();
        return false;
    }
    if (!file.commit())
        return false;
    flushFolder(QFileInfo(target).path());
    return true;
}

QString setAsideDamagedFile(const QString &path)
{
    return putAside(path, [&path](const QString &name) { return QFile::rename(path, name); });
}

QString copyAsideDamagedFile(const QString &path)
{
    if (const QString kept = sameSetAside(path); !kept.isEmpty())
        return kept;
    return putAside(path, [&path](const QString &name) {
        if (!QFile::copy(path, name))
            return false;
        if (flushFile(name))
            return true;
        QFile::remove(name);
        return false;
    });
}

} // namespace Orbita
