#include "editors/VXSheetWindow.h"

#include "editors/SheetStyle.h"
#include "editors/VXSheetWindowContentView.h"
#include "platform/Stage.h"
#include "ring/RoundedRegion.h"
#include "ring/ScreenAt.h"

#include <QCloseEvent>
#include <QWindow>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Orbita {

namespace {

constexpr QSize initialSize{320, 240};
constexpr double grip = 40.0; // points of the upper part that must be seen to move the window

QRectF centred(QSizeF size, const QRectF &screen)
{
    const QSizeF fitting = size.boundedTo(screen.size());
    const QPointF corner = screen.center() - QPointF(fitting.width(), fitting.height()) / 2;
    return {QPointF(std::floor(corner.x()), std::floor(corner.y())), fitting};
}

} // namespace

VXSheetWindow::VXSheetWindow(Stage &stage, BlurBehind &blur)
    : QWidget(nullptr, Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      m_stage(stage),
      m_shape(*this, stage, blur, roundedRegion, {.body = 0, .blur = std::nullopt}),
      m_drag(*this, stage),
      m_contentView(new VXSheetWindowContentView(this))
{
    setObjectName(QStringLiteral("sheetWindow"));
    setWindowModality(Qt::ApplicationModal);
    setStyleSheet(sheetStyleSheet());
    connect(&m_shape, &WindowShape::backdropChanged, this, &VXSheetWindow::followBackdrop);
    connect(&stage, &Stage::screensChanged, this, &VXSheetWindow::recover);
    followBackdrop();
    resize(initialSize);
}

void VXSheetWindow::followBackdrop()
{
    m_contentView->setBlended(m_shape.backdrop() != Backdrop::None);
}

void VXSheetWindow::present(QSizeF size)
{
    m_wantedSize = size;
    m_stage.locatePointer(this,
                          [this, size](QPointF pointer) { presentAt(centred(size, screenAt(m_stage, pointer))); });
}

void VXSheetWindow::recover()
{
    if (!m_wantedSize.isNull() && !isInReach())
        present(m_wantedSize);
}

bool VXSheetWindow::isInReach() const
{
    const QRectF frame = m_stage.fromDesktop(QRectF(geometry()));
    const double top = frame.y() + frame.height();
    const auto isOnScreen = [screens = m_stage.screens()](QPointF point) {
        return std::ranges::any_of(screens, [point](const auto &screen) { return screen.frame.contains(point); });
    };
    return isOnScreen(frame.center()) && isOnScreen({frame.center().x(), top})
        && isOnScreen({frame.center().x(), top - grip});
}

void VXSheetWindow::presentAt(const QRectF &frame)
{
    if (m_isClosed)
        return;
    resize(frame.size().toSize());
    winId(); // there must be a window to place
    m_stage.place(*windowHandle(), frame);
    show();
    m_stage.present(*windowHandle());
}

void VXSheetWindow::closeEvent(QCloseEvent *event)
{
    event->accept();
    if (!std::exchange(m_isClosed, true))
        Q_EMIT willClose();
}

void VXSheetWindow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    m_contentView->setGeometry(rect());
}

void VXSheetWindow::mousePressEvent(QMouseEvent *event)
{
    m_drag.press(*event);
}

void VXSheetWindow::mouseMoveEvent(QMouseEvent *event)
{
    m_drag.move(*event);
}

} // namespace Orbita
