#include "ring/RingWindow.h"

#include "ring/BezelView.h"

#include <QResizeEvent>

namespace Orbita {

namespace {

constexpr QSize initialSize{400, 400};

QRegion discRegion(QSize size, int inset)
{
    return {QRect(QPoint(), size).adjusted(inset, inset, -inset, -inset), QRegion::Ellipse};
}

} // namespace

RingWindow::RingWindow(Stage &stage, BlurBehind &blur)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::NoDropShadowWindowHint),
      m_shape(*this, stage, blur, discRegion, {.body = 1, .blur = 2}),
      m_strokeView(new BezelView(this))
{
    // The stage gives it the keyboard when it is presented.
    setAttribute(Qt::WA_ShowWithoutActivating);
    setObjectName(QStringLiteral("ringWindow"));
    setWindowTitle(QStringLiteral("Orbita"));
    connect(&m_shape, &WindowShape::backdropChanged, this, &RingWindow::updateMask);
    addFillingView(m_strokeView);
    resize(initialSize);
    updateMask();
}

void RingWindow::prepare()
{
    winId();
}

QColor RingWindow::tintColor() const
{
    return tintFor(m_givenTint, m_shape.backdrop());
}

void RingWindow::setTintColor(const QColor &color)
{
    m_givenTint = color;
    updateMask();
}

void RingWindow::updateMask()
{
    m_strokeView->setDrawing(
        [tint = tintColor(), backdrop = m_shape.backdrop()](QPainter &painter, const QRectF &bounds) {
            paintDisc(painter, bounds, tint, backdrop);
        });
}

void RingWindow::addFillingView(QWidget *view)
{
    view->setParent(this);
    m_fillingViews.removeIf([](const QPointer<QWidget> &former) { return !former; });
    m_fillingViews.append(view);
    placeViews();
    view->show();
}

void RingWindow::addCenteredView(QWidget *view)
{
    view->setParent(this);
    m_centeredViews.removeIf([](const QPointer<QWidget> &former) { return !former; });
    m_centeredViews.append(view);
    placeViews();
    view->show();
}

void RingWindow::placeViews()
{
    for (QWidget *view : std::as_const(m_fillingViews)) {
        if (view)
            view->setGeometry(rect());
    }
    for (QWidget *view : std::as_const(m_centeredViews)) {
        if (view)
            view->move((width() - view->width()) / 2, (height() - view->height()) / 2);
    }
}

void RingWindow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeViews();
}

} // namespace Orbita
