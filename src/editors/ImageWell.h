#pragma once

#include "base/Result.h"
#include "platform/Image.h"

#include <QAbstractButton>
#include <QPixmap>

namespace Orbita {

class Dialogs;

/// Shows a picture, and takes another one that is dropped, pasted, or chosen on a click, Space or Return.
///
/// What is no usable picture is refused with an alert, and the old one stays.
class ImageWell final : public QAbstractButton {
    Q_OBJECT
public:
    /// \a dialogs outlives the well.
    explicit ImageWell(Dialogs &dialogs, QWidget *parent = nullptr);

    [[nodiscard]] const Image &image() const { return m_image; }
    void setImage(const Image &image);

public Q_SLOTS:
    void copy();
    void paste();
    /// Lets the user choose a picture file.
    void choose();

Q_SIGNALS:
    /// The user gave the picture that is shown now.
    void imageDropped();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void take(const Result<Image, QString> &picture);
    void setDropTarget(bool isDropTarget);
    void paintFrame(QPainter &painter) const;
    [[nodiscard]] const QPixmap &pixmap();

    Dialogs &m_dialogs;
    Image m_image;
    QPixmap m_pixmap;    ///< m_image as it is painted; null when it is to be rendered
    QSize m_renderedFor; ///< device pixels
    bool m_isDropTarget = false;
};

} // namespace Orbita
