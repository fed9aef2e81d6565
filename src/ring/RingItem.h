#pragma once

#include "platform/Image.h"

#include <QColor>
#include <QRectF>
#include <QString>

namespace Orbita {

class RingItem;

/// What an item needs of the view that it stands in.
class RingItemHost {
public:
    virtual ~RingItemHost() = default;

    /// Something that \a item shows has changed.
    virtual void itemChanged(const RingItem &item) = 0;
    /// The title bubble of an item is to appear or to go.
    virtual void titleVisibilityChanged() = 0;
    /// Whether bubbles can be shown: the view stands in a window and answers the pointer.
    [[nodiscard]] virtual bool canShowTitles() const = 0;
};

/// Where the parts of an item lie. Points from the item's lower left corner, y upwards.
struct RingItemLayers {
    QRectF selectionLayer; ///< the frame of a selected item, 2 points round it
    QRectF contentLayer;   ///< the picture
    QRectF titleLayer;     ///< the caption, shown when the title always is
    QRectF highlightLayer; ///< the dot below the item
    double titleFontSize = 0.0;
};

/// The parts of an item of \a size. With \a alwaysShowTitle the picture stands above the caption.
[[nodiscard]] RingItemLayers ringItemLayers(QSizeF size, bool alwaysShowTitle);

/// One entry on the ring: a picture, a caption, a dot that marks it and a bubble with its name.
///
/// Not a widget: the view that holds it paints it (RingItemPainter.h), moves it and shows its bubble.
class RingItem {
public:
    /// An item of 48 by 48 points at the origin, highlighted until its owner says otherwise.
    RingItem(Image image, QString title);

    [[nodiscard]] const Image &image() const { return m_image; }
    void setImage(const Image &image);
    /// The entry's name as given; an item without one has no bubble.
    [[nodiscard]] const QString &title() const { return m_title; }
    void setTitle(const QString &title);
    /// Whether the dot is shown.
    [[nodiscard]] bool isHighlighted() const { return m_highlighted; }
    void setHighlighted(bool highlighted);
    [[nodiscard]] bool isSelected() const { return m_selected; }
    void setSelected(bool selected);
    /// Whether the selection frame is seen: an item without a picture never shows it.
    [[nodiscard]] bool showsSelection() const { return m_selected && !m_image.isNull(); }
    /// The colour of dot and caption, grey at first. An invalid colour changes nothing.
    [[nodiscard]] QColor highlightColor() const { return m_highlightColor; }
    void setHighlightColor(const QColor &color);
    /// Whether picture and caption are faint, as of something that cannot be used.
    [[nodiscard]] bool isDimmed() const { return m_dimmed; }
    void setDimmed(bool dimmed);
    /// Whether the caption is shown inside the item.
    [[nodiscard]] bool alwaysShowTitle() const { return m_alwaysShowTitle; }
    void setAlwaysShowTitle(bool always);

    /// Shows the bubble if there is one and the item stands in a view that can show it.
    void showTitle();
    void closeTitle();
    [[nodiscard]] bool titleVisible() const { return m_titleVisible; }

    /// Where the item belongs, in the view's space with y upwards.
    [[nodiscard]] const QRectF &frame() const { return m_frame; }
    /// Where it is seen now, on its way to frame().
    [[nodiscard]] const QRectF &shownFrame() const { return m_shownFrame; }
    /// Moves at once.
    void setFrame(const QRectF &frame);
    /// Sets out for \a frame from where it is seen now; moveTo() takes it there.
    void startMoving(const QRectF &frame);
    void setShownFrame(const QRectF &frame) { m_shownFrame = frame; }
    /// \a progress of the way, 0 to 1.
    void moveTo(double progress);
    [[nodiscard]] bool isMoving() const { return m_shownFrame != m_frame; }
    /// All that the item paints when it is seen in \a frame.
    [[nodiscard]] QRectF paintedRect() const;

    /// The title on one line, cut at the end to fit the caption of frame().
    [[nodiscard]] const QString &caption() const;

    /// The view, borrowed; null while the item stands in none.
    void setHost(RingItemHost *host) { m_host = host; }

private:
    void changed();
    void setTitleVisible(bool visible);

    Image m_image;
    QString m_title;
    QColor m_highlightColor;
    QRectF m_frame{0, 0, 48, 48};
    QRectF m_shownFrame{0, 0, 48, 48};
    QRectF m_departure;
    RingItemHost *m_host = nullptr;
    bool m_highlighted = true;
    bool m_selected = false;
    bool m_dimmed = false;
    bool m_alwaysShowTitle = false;
    bool m_titleVisible = false;
    mutable QString m_caption;
    mutable double m_captionSide = -1.0; ///< what m_caption was cut for
};

} // namespace Orbita
