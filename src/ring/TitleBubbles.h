#pragma once

#include <QRectF>
#include <QString>

#include <memory>
#include <vector>

class QWidget;

namespace Orbita {

class Stage;
class TitleBubble;

/// The title bubbles of one ring: as many windows as titles were visible at a time, used again and again.
class TitleBubbles {
public:
    struct Title {
        QString text;
        QRectF item; ///< global points, y upwards
    };

    explicit TitleBubbles(Stage &stage);
    ~TitleBubbles();

    /// Shows these titles and no others, above \a owner's window. Beyond 64 the rest is left out.
    void show(const std::vector<Title> &titles, QWidget *owner);
    [[nodiscard]] size_t visibleCount() const;

private:
    Stage &m_stage;
    std::vector<std::unique_ptr<TitleBubble>> m_bubbles;
};

} // namespace Orbita
