#include "platform/x11/X11StartupNotifier.h"

#include "platform/x11/X11Connection.h"

#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <cstdlib>

namespace Orbita {

namespace {

/// A virtual X server with a client that reads startup messages, as a window manager does.
class X11StartupNotifierTest : public testing::Test {
protected:
    void SetUp() override
    {
        m_server.start(QStringLiteral("Xvfb"),
                       {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                        QStringLiteral("0"), QStringLiteral("64x64x24"), QStringLiteral("-noreset"),
                        QStringLiteral("-nolisten"), QStringLiteral("tcp")});
        ASSERT_TRUE(m_server.waitForReadyRead()) << "Xvfb is needed";
        display = ':' + m_server.readLine().trimmed();
        m_listener = xcb_connect(display.constData(), nullptr);
        ASSERT_EQ(xcb_connection_has_error(m_listener), 0);
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(m_listener)).data->root;
        const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(m_listener, root, XCB_CW_EVENT_MASK, &events);
        std::free(xcb_get_input_focus_reply(m_listener, xcb_get_input_focus(m_listener), nullptr));
    }
    void TearDown() override
    {
        if (m_listener)
            xcb_disconnect(m_listener);
        m_server.terminate();
        m_server.waitForFinished();
    }

    /// The next startup message in full. It comes in pieces of twenty bytes, the last of which holds a zero.
    QByteArray nextMessage()
    {
        QByteArray message;
        while (xcb_generic_event_t *event = xcb_wait_for_event(m_listener)) {
            if ((event->response_type & 0x7F) == XCB_CLIENT_MESSAGE)
                message.append(
                    reinterpret_cast<const char *>(reinterpret_cast<xcb_client_message_event_t *>(event)->data.data8),
                    20);
            std::free(event);
            if (message.contains('\0'))
                break;
        }
        return message.left(message.indexOf('\0'));
    }

    QByteArray display;

private:
    QProcess m_server;
    xcb_connection_t *m_listener = nullptr;
};

quint32 timeIn(const QByteArray &id)
{
    return QRegularExpression(QStringLiteral("_TIME(\\d+)$")).match(QString::fromUtf8(id)).captured(1).toUInt();
}

TEST_F(X11StartupNotifierTest, AStartIsAnnouncedWithTheServersTimeAndTakenBack)
{
    X11Connection connection(display);
    X11StartupNotifier notifier(connection);
    const auto sequence = notifier.begin(
        {QStringLiteral("My \"Probe\""), QStringLiteral("/opt/my probe"), {}, QStringLiteral("Probe"), {}});
    ASSERT_TRUE(sequence);
    EXPECT_GT(timeIn(sequence->id()), 0U);
    const QByteArray announced = nextMessage();
    EXPECT_TRUE(announced.startsWith("new:")) << announced.constData();
    EXPECT_TRUE(announced.contains("WMCLASS=Probe")) << announced.constData();
    EXPECT_TRUE(announced.contains("My\\ \\\"Probe\\\"") || announced.contains("\"My \\\"Probe\\\"\""))
        << announced.constData();
    sequence->cancel();
    const QByteArray takenBack = nextMessage();
    EXPECT_TRUE(takenBack.startsWith("remove:")) << takenBack.constData();
}

TEST_F(X11StartupNotifierTest, TokensDifferAndCarryTimesThatDoNotRunBackwards)
{
    X11Connection connection(display);
    X11StartupNotifier notifier(connection);
    const QByteArray first = notifier.token();
    const QByteArray second = notifier.token();
    EXPECT_NE(first, second);
    EXPECT_GT(timeIn(first), 0U);
    EXPECT_GE(timeIn(second), timeIn(first));
}

TEST(X11StartupNotifierWithoutServer, NothingIsAnnounced)
{
    X11Connection connection(":no-such-display");
    X11StartupNotifier notifier(connection);
    EXPECT_FALSE(notifier.begin({QStringLiteral("Probe"), QStringLiteral("probe"), {}, {}, {}}));
    EXPECT_TRUE(notifier.token().isEmpty());
}

} // namespace

} // namespace Orbita
