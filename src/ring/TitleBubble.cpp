#include "ring/TitleBubble.h"

#include "platform/Stage.h"
#include "ring/RingText.h"
#include "ring/ScreenAt.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QWindow>

#include <cmath>

namespace Orbita {

namespace {

constexpr double fontSize = 13.0;
constexpr double widestText = 400.0;
// Where no shadow sets the bubble off. The mask takes the outer half.
constexpr QColor cutOutline(160, 160, 160);
constexpr double cutOutlineWidth = 2.0;

QSizeF textSize(const QString &text)
{
    const QFontMetricsF metrics(ringFont(fontSize));
    return {std::ceil(metrics.horizontalAdvance(text)), std::ceil(metrics.height())};
}

void paintShadow(QPainter &painter, const QPainterPath &outline)
{
    constexpr int layers = 8;
    painter.setBrush(Qt::NoBrush);
    for (int layer = 1; layer <= layers; ++layer) {
        painter.setPen(QPen(QColor(0, 0, 0, 7), 2.0 * layer, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(outline.translated(0, 1.5));
    }
}

} // namespace

TitleBubble::TitleBubble(Stage &stage)
    : QWidget(nullptr,
              Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus
                  | Qt::NoDropShadowWindowHint),
      m_stage(stage)
{
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setObjectName(QStringLiteral("titleBubble"));
    connect(&m_stage, &Stage::compositingChanged, this, &TitleBubble::shape);
}

void TitleBubble::showTitle(const QString &title, const QRectF &item, QWidget *owner)
{
    const QString text = elidedLine(title, ringFont(fontSize), widestText);
    if (isVisible() && text == m_text && item == m_item)
        return;
    m_text = text;
    m_item = item;
    m_placement = placeBubble(textSize(m_text), item, screenAt(m_stage, item.center()));
    winId(); // there must be a window to place
    windowHandle()->setTransientParent(owner ? owner->windowHandle() : nullptr);
    const QRectF frame = m_placement.frame.toAlignedRect();
    resize(frame.size().toSize());
    m_stage.place(*windowHandle(), frame);
    shape();
    show();
    update();
}

void TitleBubble::shape()
{
    if (m_stage.isCompositing())
        clearMask();
    else
        setMask(QRegion(bubbleOutline(size(), m_placement.edge, m_placement.arrow).toFillPolygon().toPolygon()));
    update();
}

void TitleBubble::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPainterPath outline = bubbleOutline(size(), m_placement.edge, m_placement.arrow);
    const bool isBlended = m_stage.isCompositing();
    if (isBlended)
        paintShadow(painter, outline);
    else
        painter.fillRect(rect(), cutOutline); // a mask of whole pixels shows what lies under the smooth edge
    painter.setPen(isBlended ? QPen(QColor(0, 0, 0, 40), 1.0) : QPen(cutOutline, cutOutlineWidth));
    painter.setBrush(QColor(246, 246, 246));
    painter.drawPath(outline);
    painter.setFont(ringFont(fontSize));
    painter.setPen(Qt::black);
    painter.drawText(bubbleLabel(size(), m_placement.edge), Qt::AlignCenter | Qt::TextSingleLine, m_text);
}

} // namespace Orbita
