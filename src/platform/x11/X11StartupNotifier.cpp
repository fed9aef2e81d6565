#include "platform/x11/X11StartupNotifier.h"

#include "platform/x11/X11Connection.h"

#include <QCoreApplication>
#include <QFile>
#include <QSysInfo>

#define SN_API_NOT_YET_FROZEN
#include <libsn/sn.h>

namespace Orbita {

namespace {

/// The name of the program as it stands in ids, where blanks and slashes separate.
constexpr char launcherName[] = "orbita";

class X11StartupSequence final : public StartupSequence {
public:
    /// \a connection is what \a context sends its messages over.
    X11StartupSequence(X11Connection &connection, SnLauncherContext *context)
        : m_connection(connection), m_context(context)
    {
    }
    ~X11StartupSequence() override { sn_launcher_context_unref(m_context); }
    Q_DISABLE_COPY_MOVE(X11StartupSequence)

    [[nodiscard]] QByteArray id() const override { return sn_launcher_context_get_startup_id(m_context); }
    void cancel() override
    {
        sn_launcher_context_complete(m_context);
        m_connection.flush();
    }

private:
    X11Connection &m_connection;
    SnLauncherContext *m_context;
};

void describe(SnLauncherContext *context, const Launchee &launchee)
{
    sn_launcher_context_set_name(context, launchee.name.toUtf8().constData());
    sn_launcher_context_set_binary_name(context, QFile::encodeName(launchee.executable).constData());
    if (!launchee.windowClass.isEmpty())
        sn_launcher_context_set_wmclass(context, launchee.windowClass.toUtf8().constData());
    if (!launchee.icon.isEmpty())
        sn_launcher_context_set_icon_name(context, launchee.icon.toUtf8().constData());
    // The library declares a function for this one but does not contain it.
    if (!launchee.desktopFile.isEmpty())
        sn_launcher_context_set_extra_property(context, "APPLICATION_ID",
                                               QFile::encodeName(launchee.desktopFile).constData());
}

} // namespace

X11StartupNotifier::X11StartupNotifier(X11Connection &connection) : m_connection(connection) {}

X11StartupNotifier::~X11StartupNotifier()
{
    if (m_display)
        sn_display_unref(m_display);
}

std::unique_ptr<StartupSequence> X11StartupNotifier::begin(const Launchee &launchee)
{
    const xcb_timestamp_t now = m_connection.serverTime();
    if (now == XCB_CURRENT_TIME)
        return nullptr;
    if (!m_display)
        m_display = sn_xcb_display_new(m_connection.xcb(), nullptr, nullptr);
    SnLauncherContext *context = sn_launcher_context_new(m_display, m_connection.screenNumber());
    describe(context, launchee);
    sn_launcher_context_initiate(context, launcherName, QFile::encodeName(launchee.executable).constData(), now);
    m_connection.flush();
    return std::make_unique<X11StartupSequence>(m_connection, context);
}

QByteArray X11StartupNotifier::token()
{
    const xcb_timestamp_t now = m_connection.serverTime();
    if (now == XCB_CURRENT_TIME)
        return {};
    return QStringLiteral("%1-%2-%3-%4_TIME%5")
        .arg(QLatin1String(launcherName), QString::number(QCoreApplication::applicationPid()),
             QString::number(m_tokenCount++), QSysInfo::machineHostName(), QString::number(now))
        .toUtf8();
}

} // namespace Orbita
