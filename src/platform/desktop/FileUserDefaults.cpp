#include "platform/desktop/FileUserDefaults.h"

#include "platform/AtomicFile.h"
#include "platform/Log.h"
#include "platform/PropertyList.h"

namespace Orbita {

namespace {

QStringList differingKeys(const QVariantMap &before, const QVariantMap &after)
{
    QStringList keys;
    for (auto entry = after.cbegin(); entry != after.cend(); ++entry)
        if (before.value(entry.key()) != entry.value())
            keys.append(entry.key());
    for (auto entry = before.cbegin(); entry != before.cend(); ++entry)
        if (!after.contains(entry.key()))
            keys.append(entry.key());
    return keys;
}

} // namespace

FileUserDefaults::FileUserDefaults(const QString &path, QObject *parent)
    : UserDefaults(parent), m_path(path), m_watch(path)
{
    readFile();
    connect(&m_watch, &FileWatch::changed, this, &FileUserDefaults::reload);
}

QVariant FileUserDefaults::value(const QString &key) const
{
    const auto unsaved = m_unsaved.constFind(key);
    return unsaved != m_unsaved.cend() ? *unsaved : m_saved.value(key);
}

void FileUserDefaults::setValue(const QString &key, const QVariant &value)
{
    const auto stored = PropertyList::normalized(value.isValid() ? QVariantMap{{key, value}} : QVariantMap());
    if (!stored) {
        qCWarning(lcPlatform, "The setting \"%s\" cannot hold a %s.", qUtf8Printable(key), value.typeName());
        return;
    }
    reload();
    m_unsaved.insert(key, stored->toMap().value(key));
    save();
    Q_EMIT changed(key);
}

bool FileUserDefaults::synchronize()
{
    if (!m_unsaved.isEmpty()) {
        reload();
        save();
    }
    return m_unsaved.isEmpty();
}

QVariantMap FileUserDefaults::values() const
{
    QVariantMap values = m_saved;
    for (auto entry = m_unsaved.cbegin(); entry != m_unsaved.cend(); ++entry) {
        if (entry->isValid())
            values.insert(entry.key(), *entry);
        else
            values.remove(entry.key());
    }
    return values;
}

void FileUserDefaults::reload()
{
    const QVariantMap before = values();
    readFile();
    if (const QStringList keys = differingKeys(before, values()); !keys.isEmpty())
        announceExternalChange(keys);
}

void FileUserDefaults::readFile()
{
    using PropertyList::ReadError;
    const auto root = PropertyList::read(m_path);
    const bool isMissing = !root && root.error() == ReadError::Missing;
    m_isWritable = isMissing || (root && root->typeId() == QMetaType::QVariantMap);
    if (m_isWritable)
        m_saved = isMissing ? QVariantMap() : root->toMap();
    else if (!root && root.error() == ReadError::Unreadable)
        warnOnce("cannot be read");
    else
        setAside();
}

void FileUserDefaults::setAside()
{
    const QString aside = setAsideDamagedFile(m_path);
    if (aside.isEmpty()) {
        warnOnce("is damaged and cannot be set aside");
        return;
    }
    qCWarning(lcPlatform, "%s is damaged and was set aside as %s.", qUtf8Printable(m_path), qUtf8Printable(aside));
    keepAsUnsaved();
    m_isWritable = true;
    // Otherwise they would be lost with the program's end, and other programs would find none.
    if (!m_unsaved.isEmpty())
        save();
}

/// Once the file is gone, reading it again must not take the values away.
void FileUserDefaults::keepAsUnsaved()
{
    QVariantMap all = m_saved;
    for (auto entry = m_unsaved.cbegin(); entry != m_unsaved.cend(); ++entry)
        all.insert(entry.key(), *entry);
    m_unsaved = all;
    m_saved.clear();
}

void FileUserDefaults::save()
{
    if (!m_isWritable)
        return;
    const QVariantMap all = values();
    if (!PropertyList::write(m_path, all, PropertyList::Format::Xml)) {
        warnOnce("cannot be written");
        return;
    }
    m_saved = all;
    m_unsaved.clear();
    m_hasWarned = false;
}

void FileUserDefaults::warnOnce(const char *problem)
{
    if (!m_hasWarned)
        qCWarning(lcPlatform, "%s %s, so settings are kept in memory.", qUtf8Printable(m_path), problem);
    m_hasWarned = true;
}

} // namespace Orbita
