#pragma once

#include "platform/desktop/StartupNotifier.h"

struct SnDisplay;

namespace Orbita {

class X11Connection;

/// Startup notification on an X display.
class X11StartupNotifier final : public StartupNotifier {
public:
    /// \a connection must outlive this and every sequence that was begun.
    explicit X11StartupNotifier(X11Connection &connection);
    ~X11StartupNotifier() override;
    Q_DISABLE_COPY_MOVE(X11StartupNotifier)

    [[nodiscard]] std::unique_ptr<StartupSequence> begin(const Launchee &launchee) override;
    [[nodiscard]] QByteArray token() override;

private:
    X11Connection &m_connection;
    SnDisplay *m_display = nullptr; ///< made when first needed
    quint64 m_tokenCount = 0;
};

} // namespace Orbita
