#pragma once

#include "ring/BubblePlacement.h"

#include <QWidget>

namespace Orbita {

class Stage;

/// A light bubble with an arrow that shows an item's name. Takes neither pointer nor keyboard.
class TitleBubble : public QWidget {
    Q_OBJECT
public:
    explicit TitleBubble(Stage &stage);

    /// Shows \a title at \a item (global points, y upwards) above \a owner's window; cut where it is very long.
    void showTitle(const QString &title, const QRectF &item, QWidget *owner);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void shape();

    Stage &m_stage;
    QString m_text;
    QRectF m_item;
    BubblePlacement m_placement;
};

} // namespace Orbita
