#pragma once

#include "platform/desktop/StartupNotifier.h"

struct xcb_connection_t;

namespace Orbita {

/// Startup notification on an X display, over a connection of its own that is opened when first needed.
class X11StartupNotifier final : public StartupNotifier {
public:
    /// \a display is a name like ":1"; when empty, the one of the DISPLAY variable.
    explicit X11StartupNotifier(QByteArray display = {});
    ~X11StartupNotifier() override;
    Q_DISABLE_COPY_MOVE(X11StartupNotifier)

    [[nodiscard]] std::unique_ptr<StartupSequence> begin(const Launchee &launchee) override;
    [[nodiscard]] QByteArray token() override;

private:
    class Connection;

    Connection *connection();

    QByteArray m_display;
    std::shared_ptr<Connection> m_connection;
    quint64 m_tokenCount = 0;
};

} // namespace Orbita
