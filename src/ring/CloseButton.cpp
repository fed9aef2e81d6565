#include "ring/CloseButton.h"

#include <QMouseEvent>
#include <QPainter>

namespace Orbita {

CloseButton::CloseButton(QWidget *parent) : MouseSensitiveView(parent)
{
    setAccessibleName(QStringLiteral("Close"));
    setObjectName(QStringLiteral("closeButton"));
}

void CloseButton::setDefaultColor(const QColor &color)
{
    m_defaultColor = color;
    setIsHighlighted(isHighlighted());
}

void CloseButton::setHighlightColor(const QColor &color)
{
    m_highlightColor = color;
    setIsHighlighted(isHighlighted());
}

void CloseButton::setStrokeColor(const QColor &color)
{
    if (!color.isValid())
        return;
    m_strokeColor = color;
    update();
}

void CloseButton::setIsHighlighted(bool highlighted)
{
    MouseSensitiveView::setIsHighlighted(highlighted);
    setStrokeColor(highlighted ? m_highlightColor : m_defaultColor);
}

void CloseButton::click()
{
    if (!mouseClickBlock)
        return;
    const QPointF middle = QRectF(rect()).center();
    QMouseEvent event(QEvent::MouseButtonRelease, middle, mapToGlobal(middle), Qt::LeftButton, Qt::NoButton,
                      Qt::NoModifier);
    mouseClickBlock(event);
}

void CloseButton::mouseMoveEvent(QMouseEvent *event)
{
    event->accept(); // movements over the button stay here
}

void CloseButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(m_strokeColor, 1.0));
    const QRectF bounds = QRectF(rect()).adjusted(1.0, 1.0, -1.0, -1.0);
    painter.drawRoundedRect(bounds, bounds.height() / 2, bounds.height() / 2);
    const auto at = [&bounds](double x, double y) {
        return QPointF(bounds.x() + x * bounds.width(), bounds.y() + y * bounds.height());
    };
    painter.drawLine(at(0.25, 0.25), at(0.75, 0.75));
    painter.drawLine(at(0.25, 0.75), at(0.75, 0.25));
}

} // namespace Orbita
