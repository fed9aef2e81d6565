#include "ring/RoundedEffectsWindow.h"

#include "ring/BezelView.h"
#include "ring/RoundedRegion.h"

#include <QMouseEvent>
#include <QPainter>

namespace Orbita {

namespace {

constexpr double outlineInset = 1.5;

void paintPanel(QPainter &painter, const QRectF &bounds, Backdrop backdrop)
{
    const QRectF panel = bounds.adjusted(outlineInset, outlineInset, -outlineInset, -outlineInset);
    const QColor veil = backdropVeil(Qt::white, backdrop);
    painter.setBrush(veil.alpha() > 0 ? veil : discFill(Qt::white, backdrop));
    painter.setPen(QPen(Qt::white, 1.0));
    painter.drawRoundedRect(panel, panelCornerRadius, panelCornerRadius);
}

} // namespace

RoundedEffectsWindow::RoundedEffectsWindow(Stage &stage, BlurBehind &blur, QWidget *parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::NoDropShadowWindowHint),
      m_shape(*this, stage, blur, roundedRegion, {.body = 1, .blur = 1}),
      m_drag(*this, stage),
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

void RoundedEffectsWindow::mousePressEvent(QMouseEvent *event)
{
    m_drag.press(*event);
}

void RoundedEffectsWindow::mouseMoveEvent(QMouseEvent *event)
{
    m_drag.move(*event);
}

} // namespace Orbita
