#include "ForeignClient.h"

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11KeyboardLayout.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

class X11KeyboardLayoutTest : public testing::Test {
protected:
    void use(const QString &arguments) const
    {
        EXPECT_EQ(display.start(QStringLiteral("setxkbmap"), arguments.split(u' ')).waitForExit(), 0);
    }

    VirtualDisplay display;
    X11Connection connection{display.name()};
    X11KeyboardLayout layout{connection};
};

TEST_F(X11KeyboardLayoutTest, tellsWhatStandsOnTheKeysAfterEachChange)
{
    struct Row {
        const char *name;
        const char *layout;
        quint16 key;
        QString text;
    };
    const Row rows[] = {{"a German letter", "de", 41, QStringLiteral("\u00f6")},
                        {"a dead acute as its accent", "de", 24, QStringLiteral("\u00b4")},
                        {"a French digit key without Shift", "fr", 18, QStringLiteral("&")},
                        {"an English letter", "us", 0, QStringLiteral("a")},
                        {"nothing on Return", "us", 36, QString()},
                        {"nothing where no key is", "us", 0xffff, QString()}};
    QString shown; // as by what follows the changes
    quint16 key = 0;
    QObject::connect(&layout, &KeyboardLayout::changed, &layout, [&] { shown = layout.text(key); });
    for (const Row &row : rows) {
        key = row.key;
        shown = layout.text(key);
        use(QString::fromLatin1(row.layout));
        EXPECT_TRUE(eventually([&] { return shown == row.text; })) << row.name;
    }
}

TEST_F(X11KeyboardLayoutTest, followsTheGroupAndNotShift)
{
    use(QStringLiteral("us,ru -option grp:menu_toggle"));
    const ForeignClient client(display.name());
    client.input.pressKeys(client.input.keyCodes(QStringLiteral("Shift")));
    (void)connection.serverTime();
    QCoreApplication::processEvents(); // notices that another device types now must not do the work of the group's
    EXPECT_EQ(layout.text(0), QStringLiteral("a"));
    client.input.releaseKeys(client.input.keyCodes(QStringLiteral("Shift")));
    client.input.tap(QStringLiteral("ISO_Next_Group"));
    EXPECT_TRUE(eventually([&] { return layout.text(0) == QStringLiteral("\u0444"); }));
}

} // namespace
} // namespace Orbita
