#include "ring/RoundedEffectsWindow.h"

#include "platform/Stage.h"
#include "ring/BezelView.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWindow>

namespace Orbita {

namespace {

constexpr double cornerRadius = 10.0;
constexpr double outlineInset = 1.5;

QRegion roundedRegion(QSize size, int inset)
{
    QPainterPath path;
    path.addRoundedRect(QRectF(QPointF(), size).adjusted(inset, inset, -inset, -inset), cornerRadius, cornerRadius);
    return QRegion(path.toFillPolygon().toPolygon());
}

void paintPanel(QPainter &painter, const QRectF &bounds, Backdrop backdrop)
{
    const QRectF panel = bounds.adjusted(outlineInset, outlineInset, -outlineInset, -outlineInset);
    const QColor veil = backdropVeil(Qt::white, backdrop);
    painter.setBrush(veil.alpha() > 0 ? veil : discFill(Qt::white, backdrop));
    painter.setPen(QPen(Qt::white, 1.0));
    painter.drawRoundedRect(panel, cornerRadius, cornerRadius);
}

} // namespace

RoundedEffectsWindow::RoundedEffectsWindow(Stage &stage, BlurBehind &blur, QWidget *parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::NoDropShadowWindowHint),
      m_stage(stage),
      m_shape(*this, stage, blur, roundedRegion, {.body = 1, .blur = 1}),
      m_strokeView(new BezelView(this))
{
    connect(&m_shape, &WindowShape::backdropChanged, this, &RoundedEffectsWindow::updateMask);
    updateMask();
}

void RoundedEffectsWindow::updateMask()
{
    m_strokeView->setDrawing([backdrop = m_shape.backdrop()](QPainter &painter, const QRectF &bounds) {
        paintPanel(painter, bounds, backdrop);
    });
}

void RoundedEffectsWindow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    m_strokeView->setGeometry(rect());
    m_strokeView->lower();
}

QRectF RoundedEffectsWindow::stageFrame() const
{
    return m_stage.fromDesktop(QRectF(geometry()));
}

void RoundedEffectsWindow::mousePressEvent(QMouseEvent *event)
{
    m_originalMouseLocation = m_stage.fromDesktop(event->globalPosition());
    m_originalWindowLocation = stageFrame().topLeft();
}

void RoundedEffectsWindow::mouseMoveEvent(QMouseEvent *event)
{
    if (!(event->buttons() & Qt::LeftButton) || !windowHandle())
        return;
    const QPointF moved = m_stage.fromDesktop(event->globalPosition()) - m_originalMouseLocation;
    m_stage.place(*windowHandle(), QRectF(m_originalWindowLocation + moved, QSizeF(size())));
}

} // namespace Orbita
