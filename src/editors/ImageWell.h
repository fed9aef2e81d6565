#pragma once

#include "base/Result.h"
#include "editors/DroppedPicture.h"
#include "platform/BackgroundJobs.h"
#include "platform/Image.h"

#include <QAbstractButton>
#include <QPixmap>

#include <functional>

namespace Orbita {

class Dialogs;

/// Shows a picture, and takes another one that is dropped, pasted, or chosen on a click, Space or Return.
///
/// A picture is read on another thread; until it is there, the old one is shown faded. One that is given meanwhile
/// replaces it. What is no usable picture is refused with an alert, and the old one stays. A picture may never be
/// there, since its disk may not answer; nothing waits for it.
class ImageWell final : public QAbstractButton {
    Q_OBJECT
public:
    using Picture = Result<Image, QString>;
    /// As readPicture() does, on another thread.
    using Reader = std::function<Picture(const GivenPicture &)>;

    /// \a dialogs outlives the well.
    explicit ImageWell(Dialogs &dialogs, QWidget *parent = nullptr);

    [[nodiscard]] const Image &image() const { return m_image; }
    void setImage(const Image &image);
    /// How pictures are read from now on; by readPicture() if nothing else is said.
    void setReader(Reader reader) { m_reader = std::move(reader); }

    /// Whether a picture that the user gave is still being read. Then imageDropped() or imageRefused() follows,
    /// unless it never comes.
    [[nodiscard]] bool isReading() const { return m_isReading; }
    /// Forgets the picture that is being read, without a word.
    void stopReading();

public Q_SLOTS:
    void copy();
    void paste();
    /// Lets the user choose a picture file.
    void choose();

Q_SIGNALS:
    /// The user gave the picture that is shown now.
    void imageDropped();
    /// What the user gave is no usable picture. An alert follows that says so.
    void imageRefused();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void read(GivenPicture given);
    void pictureWasRead(int number, const Picture &picture);
    void setReading(bool isReading);
    void take(const Picture &picture);
    void setDropTarget(bool isDropTarget);
    void paintFrame(QPainter &painter) const;
    [[nodiscard]] const QPixmap &pixmap();

    Dialogs &m_dialogs;
    Image m_image;
    QPixmap m_pixmap;    ///< m_image as it is painted; null when it is to be rendered
    QSize m_renderedFor; ///< device pixels
    bool m_isDropTarget = false;
    bool m_isReading = false;
    int m_given = 0; ///< how many pictures were given
    Reader m_reader = readPicture;
    BackgroundJobs m_jobs{1};
};

} // namespace Orbita
