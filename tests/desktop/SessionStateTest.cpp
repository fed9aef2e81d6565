// What happens behind a screen locker, and while the screen shows another session.

#include "desktop/OrbitaSession.h"
#include "desktop/harness/FakeLogind.h"

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

const QPoint middle{640, 400};

TEST(SessionState, hidesTheRingAndRefusesToShowAnythingUntilTheUserIsBack)
{
    OrbitaSession session({}, {{u"gestureSettings"_s, 6}});
    const QString systemBus = session.desktop().folders().systemBusAddress();
    const auto daemon = startBusDaemon(systemBus, session.desktop().environment());
    FakeLogind logind(systemBus);
    const std::vector<std::pair<std::function<void(bool)>, QString>> rows{
        {[&](bool locked) { logind.setLocked(locked); }, u"Nothing is shown while the session is locked."_s},
        {[&](bool away) { logind.setActive(!away); }, u"Nothing is shown while the screen shows another session."_s}};
    for (const auto &[setUnusable, sentence] : rows) {
        session.show();
        setUnusable(true);
        session.waitUntilHidden();
        for (const QStringList &arguments : {QStringList{u"show"_s}, {u"toggle"_s}, {u"settings"_s}, {}}) {
            const CommandResult refused = session.run(arguments);
            EXPECT_EQ(refused.status, 1);
            EXPECT_EQ(refused.lines, QStringList(u"orbita: "_s + sentence)) << qPrintable(arguments.join(u' '));
        }
        Program &second = session.desktop().start(u"orbita-desktop"_s, {u"--show"_s});
        EXPECT_EQ(second.waitForExit(), 1);
        EXPECT_EQ(second.lines().filter(sentence).size(), 1) << qPrintable(second.lines().join(u'\n'));
        session.input().press(Button::Middle);
        session.input().release(Button::Middle);
        session.orbita(u"hide"_s); // is answered
        EXPECT_TRUE(session.windows().matching(withClass(u"orbita"_s)).isEmpty());

        setUnusable(false);
        waitUntil([&] { return session.run({u"settings"_s}).status == 0; }, u"the settings are shown again"_s);
        session.windows().close(session.waitForSettings().id);
        EXPECT_FALSE(session.ring()) << "it does not come back by itself";
        session.input().moveTo(middle);
        session.input().press(Button::Middle);
        session.input().release(Button::Middle);
        session.waitForRing();
        session.dismiss();
    }
}

} // namespace
} // namespace Orbita
