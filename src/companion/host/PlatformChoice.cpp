#include "companion/host/PlatformChoice.h"

#include <xcb/xcb.h>

namespace Orbita {

namespace {

constexpr char variable[] = "QT_QPA_PLATFORM";

} // namespace

bool isDisplayReachable()
{
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    const bool isReachable = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return isReachable;
}

PlatformChoice::PlatformChoice(bool hasDisplay)
    : m_isOurs(!hasDisplay || !qEnvironmentVariableIsSet(variable)), m_before(qgetenv(variable))
{
    if (m_isOurs)
        qputenv(variable, hasDisplay ? "xcb" : "offscreen");
}

PlatformChoice::~PlatformChoice()
{
    if (m_isOurs && m_before.isNull())
        qunsetenv(variable);
    else if (m_isOurs)
        qputenv(variable, m_before);
}

} // namespace Orbita
