#include "editors/VXSheetWindowContentView.h"

#include "ring/RoundedRegion.h"

#include <QPainter>

namespace Orbita {

namespace {

constexpr QColor blendedEdge(0, 0, 0, 56);
constexpr QColor cutEdge(176, 176, 176);

} // namespace

void VXSheetWindowContentView::setBlended(bool isBlended)
{
    m_isBlended = isBlended;
    update();
}

void VXSheetWindowContentView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    // The mask leaves whole pixels, the smooth edge of the shape would show what lies under it.
    if (!m_isBlended)
        painter.fillRect(rect(), cutEdge);
    painter.setBrush(Qt::white);
    painter.setPen(QPen(m_isBlended ? blendedEdge : cutEdge, 1.0));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), panelCornerRadius, panelCornerRadius);
}

} // namespace Orbita
