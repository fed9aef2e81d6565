#pragma once

#include <QObject>
#include <QRegion>

class QWindow;

namespace Orbita {

/// The compositor's blur of what stands behind a window.
class BlurBehind : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    [[nodiscard]] virtual bool isAvailable() const = 0;
    /// Blurs behind \a region of \a window (points, y downwards); an empty region ends it.
    virtual void setRegion(QWindow &window, const QRegion &region) = 0;

Q_SIGNALS:
    void availableChanged(bool available);
};

} // namespace Orbita
