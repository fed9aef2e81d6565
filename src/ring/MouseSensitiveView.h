#pragma once

#include <QWidget>

#include <functional>

class QEnterEvent;
class QMouseEvent;

namespace Orbita {

/// A view that tells its owner when the pointer comes, goes and clicks. Its child widgets never take the pointer.
///
/// Without a block, enter and leave go to the parent; movements always do.
class MouseSensitiveView : public QWidget {
    Q_OBJECT
public:
    explicit MouseSensitiveView(QWidget *parent = nullptr);

    /// True from press to release.
    [[nodiscard]] bool isHighlighted() const { return m_isHighlighted; }
    virtual void setIsHighlighted(bool highlighted);

    std::function<void(QEnterEvent &)> mouseEnterBlock;
    std::function<void(QEvent &)> mouseLeaveBlock;
    /// Called on a release within the bounds. May destroy the view only with deleteLater().
    std::function<void(QMouseEvent &)> mouseClickBlock;

protected:
    void childEvent(QChildEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    bool m_isHighlighted = false;
};

} // namespace Orbita
