#pragma once

#include "ring/WindowShape.h"

#include <QColor>
#include <QPointer>
#include <QWidget>

namespace Orbita {

class BezelView;

/// The round, frameless, see-through window that a ring stands in: above others, on every workspace.
///
/// It can be shown any number of times. Stage::place() and Stage::present() say where and that it gets the keyboard.
class RingWindow : public QWidget {
    Q_OBJECT
public:
    /// 400 points square, white. \a stage and \a blur outlive the window.
    RingWindow(Stage &stage, BlurBehind &blur);

    /// Makes the native window ahead of the first show, so that a show only fills, places and maps it.
    void prepare();

    /// The disc's colour as tintFor() keeps it; an invalid colour for none.
    [[nodiscard]] QColor tintColor() const;
    void setTintColor(const QColor &color);
    [[nodiscard]] bool backgroundBlurred() const { return m_shape.backdrop() == Backdrop::Blurred; }
    [[nodiscard]] BezelView &strokeView() const { return *m_strokeView; }

    /// Takes \a view in above what is there; it fills the window from now on.
    void addFillingView(QWidget *view);
    /// Takes \a view in above what is there; it keeps its size and stands in the middle from now on.
    void addCenteredView(QWidget *view);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void updateMask();
    void placeViews();

    WindowShape m_shape;
    QColor m_givenTint = Qt::white; ///< as set: what it becomes depends on the backdrop
    BezelView *m_strokeView;
    QList<QPointer<QWidget>> m_fillingViews;
    QList<QPointer<QWidget>> m_centeredViews;
};

} // namespace Orbita
