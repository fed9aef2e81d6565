#include "ring/MouseSensitiveView.h"

#include <QChildEvent>
#include <QCoreApplication>
#include <QMouseEvent>

namespace Orbita {

MouseSensitiveView::MouseSensitiveView(QWidget *parent) : QWidget(parent)
{
    setMouseTracking(true);
    setFocusPolicy(Qt::NoFocus);
}

void MouseSensitiveView::setIsHighlighted(bool highlighted)
{
    m_isHighlighted = highlighted;
    update();
}

void MouseSensitiveView::childEvent(QChildEvent *event)
{
    auto *child = qobject_cast<QWidget *>(event->child());
    if (event->added() && child)
        child->setAttribute(Qt::WA_TransparentForMouseEvents);
    QWidget::childEvent(event);
}

void MouseSensitiveView::enterEvent(QEnterEvent *event)
{
    if (mouseEnterBlock)
        mouseEnterBlock(*event);
    else if (parentWidget())
        QCoreApplication::sendEvent(parentWidget(), event);
}

void MouseSensitiveView::leaveEvent(QEvent *event)
{
    if (mouseLeaveBlock)
        mouseLeaveBlock(*event);
    else if (parentWidget())
        QCoreApplication::sendEvent(parentWidget(), event);
}

void MouseSensitiveView::mouseMoveEvent(QMouseEvent *event)
{
    event->ignore(); // so it goes on to the parent
}

void MouseSensitiveView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        setIsHighlighted(true);
}

void MouseSensitiveView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_isHighlighted)
        return;
    setIsHighlighted(false);
    if (mouseClickBlock && QRectF(rect()).contains(event->position()))
        mouseClickBlock(*event);
}

} // namespace Orbita
