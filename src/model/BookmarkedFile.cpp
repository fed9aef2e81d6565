#include "model/BookmarkedFile.h"

#include "model/ItemServices.h"
#include "model/Log.h"
#include "model/Notices.h"
#include "model/StoredText.h"
#include "platform/Bookmark.h"

#include <QCoreApplication>

namespace Orbita {

namespace {

using Presence = KnownFile::Presence;

QString tr(const char *text)
{
    return QCoreApplication::translate("BookmarkedFile", text);
}

void tellWhyNotOpened(const QString &name, Presence presence, Notices &notices)
{
    notices.tell(tr("“%1” cannot be opened").arg(name),
                 presence == Presence::Missing
                     ? tr("It does not exist any more.")
                     : tr("It cannot be reached at the moment. Connect its drive or network, then try again."));
}

} // namespace

std::optional<BookmarkedFile> BookmarkedFile::fromPath(const QString &path, ItemServices &services)
{
    auto bookmark = Bookmark::create(path);
    if (!bookmark) {
        qCWarning(lcModel, "No bookmark of %s could be made: there is no such file.", qUtf8Printable(forLog(path)));
        return std::nullopt;
    }
    services.files.look(*bookmark);
    return BookmarkedFile(std::move(bookmark).value(), services);
}

std::optional<BookmarkedFile> BookmarkedFile::fromDictionary(const QVariantMap &dictionary, ItemServices &services)
{
    const QVariant stored = dictionary.value(QStringLiteral("bookmarkData"));
    if (stored.typeId() != QMetaType::QByteArray) {
        qCWarning(lcModel, "%s: No bookmark data available", qUtf8Printable(forLog(storedText(dictionary, "class"))));
        return std::nullopt;
    }
    const QByteArray bookmark = stored.toByteArray();
    if (!services.files.known(bookmark)) {
        qCWarning(lcModel, "The bookmark of \"%s\" is damaged.",
                  qUtf8Printable(forLog(storedText(dictionary, "name"))));
        return std::nullopt;
    }
    services.files.look(bookmark);
    return BookmarkedFile(bookmark, services);
}

KnownFile BookmarkedFile::known() const
{
    const auto file = m_services.get().files.known(m_bookmark);
    Q_ASSERT(file);
    return *file;
}

bool BookmarkedFile::isAvailable() const
{
    const Presence presence = known().presence;
    return presence == Presence::Present || presence == Presence::Unknown;
}

bool BookmarkedFile::isBeingLookedAt() const
{
    return m_services.get().files.isLooking(m_bookmark);
}

bool BookmarkedFile::isGone() const
{
    return known().presence == Presence::Missing && !isBeingLookedAt();
}

QString BookmarkedFile::title(const QString &name) const
{
    // Short words, so that captions have room for them.
    switch (known().presence) {
    case Presence::Missing:
        return tr("%1 (gone)").arg(name);
    case Presence::Unreachable:
        return tr("%1 (offline)").arg(name);
    case Presence::Unknown:
    case Presence::Present:
        return name;
    }
    Q_UNREACHABLE();
}

void BookmarkedFile::whenPresent(const QString &name, const std::function<void(const KnownFile &)> &action) const
{
    ItemServices &services = m_services;
    services.files.look(m_bookmark, [name, action, &services](const KnownFile &file) {
        if (file.presence == Presence::Present)
            action(file);
        else
            tellWhyNotOpened(name, file.presence, services.notices);
    });
}

QVariantMap BookmarkedFile::dictionary(const QString &className, const QString &name) const
{
    return {{QStringLiteral("class"), className},
            {QStringLiteral("name"), name},
            {QStringLiteral("bookmarkData"), known().bookmark}};
}

} // namespace Orbita
