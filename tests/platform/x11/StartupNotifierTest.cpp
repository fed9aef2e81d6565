#include "ForeignClient.h"

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11StartupNotifier.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

/// The next startup message in full. It comes in pieces of twenty bytes, the last of which holds a zero.
QByteArray nextMessage(const XConnection &listener)
{
    QByteArray message;
    while (!message.contains('\0')) {
        const XReply<xcb_generic_event_t> event{xcb_wait_for_event(listener)};
        if (!event)
            break;
        if ((event->response_type & 0x7F) == XCB_CLIENT_MESSAGE)
            message.append(
                reinterpret_cast<const char *>(reinterpret_cast<xcb_client_message_event_t *>(event.get())->data.data8),
                20);
    }
    return message.left(message.indexOf('\0'));
}

quint32 timeIn(const QByteArray &id)
{
    return QRegularExpression(QStringLiteral("_TIME(\\d+)$")).match(QString::fromUtf8(id)).captured(1).toUInt();
}

TEST(X11StartupNotifier, announcesAStartWithTheServersTimeAndTakesItBack)
{
    const VirtualDisplay display;
    const XConnection listener(display.name()); // as a window manager does
    const quint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(listener, listener.root(), XCB_CW_EVENT_MASK, &events);
    listener.sync();
    X11Connection connection(display.name());
    X11StartupNotifier notifier(connection);
    const auto sequence = notifier.begin(
        {QStringLiteral("My \"Probe\""), QStringLiteral("/opt/my probe"), {}, QStringLiteral("Probe"), {}});
    ASSERT_TRUE(sequence);
    EXPECT_GT(timeIn(sequence->id()), 0U);
    const QByteArray announced = nextMessage(listener);
    EXPECT_TRUE(announced.startsWith("new:")) << announced.constData();
    EXPECT_TRUE(announced.contains("WMCLASS=Probe")) << announced.constData();
    EXPECT_TRUE(announced.contains("My\\ \\\"Probe\\\"") || announced.contains("\"My \\\"Probe\\\"\""))
        << announced.constData();
    sequence->cancel();
    const QByteArray takenBack = nextMessage(listener);
    EXPECT_TRUE(takenBack.startsWith("remove:")) << takenBack.constData();

    const QByteArray first = notifier.token();
    const QByteArray second = notifier.token();
    EXPECT_NE(first, second);
    EXPECT_GT(timeIn(first), 0U);
    EXPECT_GE(timeIn(second), timeIn(first));
}

} // namespace
} // namespace Orbita
