#include "editors/ImageWell.h"

#include "editors/SheetStyle.h"
#include "platform/Dialogs.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>

#include <utility>

namespace Orbita {

namespace {

constexpr double cornerRadius = 8.0;
constexpr int padding = 8; // points between the edge and the picture
constexpr QSize copied{1024, 1024};
constexpr double fadedOpacity = 0.35; // of the old picture while a new one is read

} // namespace

ImageWell::ImageWell(Dialogs &dialogs, QWidget *parent) : QAbstractButton(parent), m_dialogs(dialogs)
{
    setObjectName(QStringLiteral("imageView"));
    setAccessibleName(QStringLiteral("Picture"));
    setAccessibleDescription(QStringLiteral("Drop or paste a picture, or press to choose a file"));
    setToolTip(QStringLiteral("Drop a picture here, or click to choose a file"));
    setFocusPolicy(Qt::StrongFocus);
    setAcceptDrops(true);
    setAttribute(Qt::WA_Hover);
    connect(this, &ImageWell::clicked, this, &ImageWell::choose);
}

void ImageWell::setImage(const Image &image)
{
    m_image = image;
    m_pixmap = {};
    update();
}

void ImageWell::copy()
{
    const QImage pixels = m_image.render(copied);
    if (pixels.isNull())
        return;
    QByteArray png;
    QBuffer buffer(&png);
    pixels.save(&buffer, "png");
    auto clip = std::make_unique<QMimeData>();
    clip->setData(QStringLiteral("image/png"), png);
    QApplication::clipboard()->setMimeData(clip.release());
}

void ImageWell::paste()
{
    const QMimeData *given = QApplication::clipboard()->mimeData();
    if (auto picture = given ? givenPicture(*given) : std::nullopt)
        read(std::move(*picture));
}

void ImageWell::choose()
{
    auto path
        = m_dialogs.chooseFile({QStringLiteral("Choose a Picture"), QStringLiteral("Pictures"), pictureNamePatterns()});
    if (path)
        read(std::move(*path));
}

void ImageWell::read(GivenPicture given)
{
    setReading(true);
    m_jobs.start([this, number = ++m_given, reader = m_reader, given = std::move(given)]() -> BackgroundJobs::Delivery {
        return [this, number, picture = reader(given)] { pictureWasRead(number, picture); };
    });
}

void ImageWell::pictureWasRead(int number, const Picture &picture)
{
    if (!m_isReading || number != m_given)
        return; // nobody wants it any more
    setReading(false);
    take(picture);
}

void ImageWell::stopReading()
{
    setReading(false);
}

void ImageWell::setReading(bool isReading)
{
    m_isReading = isReading;
    update();
}

void ImageWell::take(const Picture &picture)
{
    if (!picture) {
        Q_EMIT imageRefused();
        m_dialogs.runAlert({picture.error(), {}, {QStringLiteral("OK")}});
        return;
    }
    setImage(*picture);
    Q_EMIT imageDropped();
}

void ImageWell::setDropTarget(bool isDropTarget)
{
    m_isDropTarget = isDropTarget;
    update();
}

void ImageWell::dragEnterEvent(QDragEnterEvent *event)
{
    if (!mayHoldPicture(*event->mimeData()))
        return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    setDropTarget(true);
}

void ImageWell::dragLeaveEvent(QDragLeaveEvent *)
{
    setDropTarget(false);
}

void ImageWell::dropEvent(QDropEvent *event)
{
    setDropTarget(false);
    event->setDropAction(Qt::CopyAction);
    event->accept();
    if (auto given = givenPicture(*event->mimeData()))
        read(std::move(*given));
}

void ImageWell::keyPressEvent(QKeyEvent *event)
{
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (isPlain && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
        choose();
    else
        QAbstractButton::keyPressEvent(event);
}

const QPixmap &ImageWell::pixmap()
{
    const qreal ratio = devicePixelRatioF();
    const QSize wanted = (QSizeF(size().shrunkBy({padding, padding, padding, padding})) * ratio).toSize();
    if (m_pixmap.isNull() || m_pixmap.devicePixelRatio() != ratio || m_renderedFor != wanted) {
        m_pixmap = QPixmap::fromImage(m_image.render(wanted));
        m_pixmap.setDevicePixelRatio(ratio);
        m_renderedFor = wanted;
    }
    return m_pixmap;
}

void ImageWell::paintFrame(QPainter &painter) const
{
    const QColor accent = sheetAccent();
    const bool isAccented = hasFocus() || m_isDropTarget;
    QColor fill(0, 0, 0, isDown() ? 30 : underMouse() ? 14 : 7);
    if (m_isDropTarget) {
        fill = accent;
        fill.setAlpha(40);
    }
    const double width = isAccented ? 2.0 : 1.0;
    painter.setPen(QPen(isAccented ? accent : QColor(0, 0, 0, 50), width));
    painter.setBrush(fill);
    const QRectF frame = QRectF(rect()).adjusted(width / 2, width / 2, -width / 2, -width / 2);
    painter.drawRoundedRect(frame, cornerRadius, cornerRadius);
}

void ImageWell::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintFrame(painter);
    painter.setOpacity(m_isReading ? fadedOpacity : 1.0);
    const QSizeF shown = pixmap().deviceIndependentSize();
    painter.drawPixmap(QRectF(rect()).center() - QPointF(shown.width(), shown.height()) / 2, m_pixmap);
}

} // namespace Orbita
