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
    painter.setBrush(Qt::white);
    painter.setPen(m_isBlended ? QPen(blendedEdge, 1.0) : QPen(Qt::NoPen));
    // A mask of whole pixels shows what lies under a smooth edge, so there the line is all that the white leaves.
    const double inset = m_isBlended ? 0.5 : 1.0;
    if (!m_isBlended)
        painter.fillRect(rect(), cutEdge);
    const double radius = panelCornerRadius - inset; // round the same centres as the edge
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius, radius);
}

} // namespace Orbita
