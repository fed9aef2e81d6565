#include "ring/RoundVisualEffectView.h"

#include "ring/DiscPainter.h"

#include <QPainter>

namespace Orbita {

void RoundVisualEffectView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(backdropVeil(Qt::white, Backdrop::Blurred));
    painter.drawEllipse(QRectF(rect()).adjusted(1.0, 1.0, -1.0, -1.0));
    painter.setPen(QPen(Qt::white, 1.0));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(QRectF(rect()));
}

} // namespace Orbita
