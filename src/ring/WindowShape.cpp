#include "ring/WindowShape.h"

#include "platform/BlurBehind.h"
#include "platform/Stage.h"

#include <QEvent>
#include <QWidget>
#include <QWindow>

namespace Orbita {

WindowShape::WindowShape(QWidget &window, Stage &stage, BlurBehind &blur, Outline outline, Insets insets)
    : m_window(window), m_stage(stage), m_blur(blur), m_outline(std::move(outline)), m_insets(insets)
{
    window.setAttribute(Qt::WA_TranslucentBackground);
    window.installEventFilter(this);
    const auto follow = [this] {
        apply();
        Q_EMIT backdropChanged();
    };
    connect(&stage, &Stage::compositingChanged, this, follow);
    connect(&blur, &BlurBehind::availableChanged, this, follow);
}

Backdrop WindowShape::backdrop() const
{
    if (!m_stage.isCompositing())
        return Backdrop::None;
    return m_blur.isAvailable() ? Backdrop::Blurred : Backdrop::Clear;
}

bool WindowShape::eventFilter(QObject *watched, QEvent *event)
{
    // Some window managers pass on the input region only of a window that they have mapped already.
    const bool mayNeedShape = event->type() == QEvent::Resize || event->type() == QEvent::Show
        || event->type() == QEvent::WinIdChange || event->type() == QEvent::WindowActivate;
    if (watched == &m_window && mayNeedShape)
        apply();
    return QObject::eventFilter(watched, event);
}

void WindowShape::apply()
{
    const QRegion body = m_outline(m_window.size(), m_insets.body);
    const bool isBlended = backdrop() != Backdrop::None;
    if (isBlended)
        m_window.clearMask();
    else
        m_window.setMask(body);
    QWindow *handle = m_window.windowHandle();
    if (!handle)
        return; // asked again when there is one
    m_stage.setInputRegion(*handle, isBlended ? body : QRegion());
    const bool isBlurred = backdrop() == Backdrop::Blurred && m_insets.blur;
    m_blur.setRegion(*handle, isBlurred ? m_outline(m_window.size(), *m_insets.blur) : QRegion());
}

} // namespace Orbita
