#pragma once

#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QRegion>

#include <functional>
#include <vector>

class QWindow;

namespace Orbita {

/// Screens, the pointer and where windows stand.
///
/// Global coordinates are points with y upwards; the origin is the lower left corner of the first screen. A frame is
/// a rectangle whose y() is its lower edge and whose y() + height() is its upper edge. Desktop coordinates are those of
/// the toolkit: points with y downwards, as QWidget::mapToGlobal() gives them. The first screen may lie anywhere in
/// them.
class Stage : public QObject {
    Q_OBJECT
public:
    struct Screen {
        QRectF frame;
        double devicePixelRatio = 1.0;
    };
    using PointerCallback = std::function<void(QPointF)>;
    using QObject::QObject;

    /// The first is the main screen. Never empty.
    [[nodiscard]] virtual std::vector<Screen> screens() const = 0;
    /// Calls \a callback with the pointer's place, at once or later; not at all when \a context is gone by then.
    virtual void locatePointer(QObject *context, PointerCallback callback) = 0;
    /// Whether no mouse button is pressed now.
    [[nodiscard]] virtual bool areButtonsUp() const = 0;

    /// Gives \a window that frame, shown or not.
    virtual void place(QWindow &window, const QRectF &frame) = 0;
    /// Call after \a window was shown: it gets the keyboard, also when another program has it, stands on every
    /// workspace and above other windows.
    virtual void present(QWindow &window) = 0;
    /// What was asked of windows so far, their opacity for instance, counts now and not only when the toolkit next has
    /// something to paint.
    virtual void flush() = 0;
    /// Only clicks within \a region (view points, y downwards) reach \a window; the rest goes to what is beneath.
    /// An empty region gives the whole window back.
    virtual void setInputRegion(QWindow &window, const QRegion &region) = 0;

    /// Whether translucent windows are blended with what is beneath them.
    [[nodiscard]] virtual bool isCompositing() const = 0;

    [[nodiscard]] QPointF fromDesktop(QPointF point) const;
    [[nodiscard]] QPointF toDesktop(QPointF point) const;
    [[nodiscard]] QRectF fromDesktop(const QRectF &rect) const;
    [[nodiscard]] QRectF toDesktop(const QRectF &frame) const;

Q_SIGNALS:
    void compositingChanged(bool compositing);
    void screensChanged();

protected:
    /// The first screen in desktop coordinates.
    [[nodiscard]] virtual QRectF mainScreenOnDesktop() const = 0;
};

} // namespace Orbita
