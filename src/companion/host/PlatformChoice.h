#pragma once

#include <QByteArray>

namespace Orbita {

/// Whether there is a display to show windows on. Asked before an application is made, because the toolkit ends the
/// program with a core dump where there is none.
[[nodiscard]] bool isDisplayReachable();

/// Sets the toolkit's platform for as long as the application is made. What scripts start must not inherit the choice.
class PlatformChoice {
public:
    explicit PlatformChoice(bool hasDisplay);
    ~PlatformChoice();
    Q_DISABLE_COPY_MOVE(PlatformChoice)

private:
    bool m_isOurs;
    QByteArray m_before;
};

} // namespace Orbita
