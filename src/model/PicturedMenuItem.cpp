#include "model/PicturedMenuItem.h"

#include "model/DraftStore.h"
#include "model/ImageStore.h"
#include "model/ItemServices.h"
#include "model/Log.h"
#include "model/Notices.h"
#include "model/StoredText.h"

#include <QCoreApplication>
#include <QRandomGenerator>

#include <utility>

namespace Orbita {

PicturedMenuItem::PicturedMenuItem(const Kind &kind, QString name, QString text, ItemServices &services)
    : m_services(services), m_kind(kind), m_name(std::move(name)), m_text(std::move(text))
{
}

PicturedMenuItem::PicturedMenuItem(const Kind &kind, const QVariantMap &dictionary, ItemServices &services)
    : m_services(services),
      m_kind(kind),
      m_name(storedText(dictionary, "name")),
      m_imageKey(storedText(dictionary, "imageKey")),
      m_text(storedText(dictionary, kind.textKey))
{
}

QString PicturedMenuItem::identity() const
{
    return QLatin1String(m_kind.className) + m_name + m_text;
}

Image PicturedMenuItem::image() const
{
    if (m_image.isNull()) // its file need not be asked about at each reload of a ring
        m_image = m_services.imageStore.imageForKey(m_imageKey, Image::named(QLatin1String(m_kind.picture)));
    return m_image;
}

bool PicturedMenuItem::setImage(const Image &image)
{
    // The old picture goes only when there is a new one: the file that it comes from may be damaged or gone by now, and
    // the disk may be full.
    const QImage pixels = image.render({ImageStore::maximumSide, ImageStore::maximumSide});
    if (pixels.isNull()) {
        qCWarning(lcModel, "The new picture of \"%s\" cannot be read.", qUtf8Printable(forLog(m_name)));
        return false;
    }
    const QString key = QString::number(QRandomGenerator::global()->generate());
    if (!m_services.imageStore.storeImage(Image::fromPixels(pixels), key))
        return false;
    m_services.imageStore.discardImageForKey(std::exchange(m_imageKey, key));
    m_image = {};
    return true;
}

void PicturedMenuItem::willBeRemoved()
{
    m_services.imageStore.discardImageForKey(m_imageKey);
    m_services.drafts.entryWillBeRemoved(identity());
}

void PicturedMenuItem::rename(const QString &name)
{
    const QString before = identity();
    m_name = name;
    m_services.drafts.entryWasRenamed(before, identity());
}

std::optional<Draft> PicturedMenuItem::draft() const
{
    auto draft = m_services.drafts.draftOf(identity());
    return draft && (draft->picture || draft->text != m_text) ? draft : std::nullopt;
}

void PicturedMenuItem::settleDraft(const QString &before, const std::optional<Image> &newPicture) const
{
    m_services.drafts.settle(before, identity(), {m_text, newPicture, QDateTime::currentDateTimeUtc()});
}

void PicturedMenuItem::keepPicture(const Image &picture) const
{
    m_services.drafts.keep(identity(), {m_text, picture, QDateTime::currentDateTimeUtc()});
    m_services.notices.tell(
        QCoreApplication::translate("PicturedMenuItem", "The picture of “%1” could not be saved").arg(m_name),
        QCoreApplication::translate("PicturedMenuItem",
                                    "The disk may be full. Edit the entry again to save the picture."));
}

void PicturedMenuItem::startEditing(QWidget *, const std::function<void()> &completion)
{
    // The list that holds this item may be loaded anew while the editor is open.
    const auto self = weak_from_this().lock();
    DraftStore &drafts = m_services.drafts;
    const QString before = identity();
    bool isFinished = false;
    const auto complete = [&drafts, &completion] {
        if (completion)
            completion();
        drafts.keepUnsaved();
    };
    const auto finish = [&](const QString &text, const std::optional<Image> &image) {
        isFinished = true;
        m_text = text;
        const bool isPictureTaken = !image || setImage(*image);
        settleDraft(before, isPictureTaken ? image : std::nullopt);
        if (!isPictureTaken)
            keepPicture(*image);
        complete();
    };
    const auto keepDraft = [&](const std::optional<Draft> &draft) {
        if (draft)
            drafts.keep(before, *draft);
        else
            settleDraft(before, std::nullopt);
    };
    edit(m_services.editors, {m_text, draft()}, {finish, keepDraft});
    if (!isFinished)
        complete();
}

std::optional<QVariantMap> PicturedMenuItem::dictionaryRepresentation() const
{
    return QVariantMap{{QStringLiteral("class"), QString::fromLatin1(m_kind.className)},
                       {QStringLiteral("name"), m_name},
                       {QStringLiteral("imageKey"), m_imageKey},
                       {QString::fromLatin1(m_kind.textKey), m_text}};
}

} // namespace Orbita
