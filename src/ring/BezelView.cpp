#include "ring/BezelView.h"

#include <QPainter>

namespace Orbita {

BezelView::BezelView(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

void BezelView::setDrawing(Drawing drawing)
{
    m_drawing = std::move(drawing);
    update();
}

void BezelView::paintEvent(QPaintEvent *)
{
    if (!m_drawing)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    m_drawing(painter, rect());
}

} // namespace Orbita
