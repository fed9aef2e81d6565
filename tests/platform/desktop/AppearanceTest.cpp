#include "PrivateSession.h"

#include "platform/desktop/AppearanceRules.h"
#include "platform/desktop/FreedesktopAppearance.h"

#include <gtest/gtest.h>

namespace Orbita {

namespace {

QStringList desktops(const char *names)
{
    return QString::fromLatin1(names).split(u':');
}

TEST(AppearanceRules, FollowTheDesktop)
{
    const std::vector<std::tuple<const char *, AppearanceHints, bool, bool>> rows{
        {"nothing is known", {}, false, false},
        {"animations off", {{}, false, {}, false, {}}, true, false},
        {"GNOME is dark on top in light windows", {desktops("ubuntu:GNOME"), true, {}, false, {}}, false, true},
        {"the classic session is light", {desktops("GNOME-Classic:GNOME"), true, {}, false, {}}, false, false},
        {"a desktop that follows the preference", {desktops("XFCE"), {}, {}, true, {}}, false, true},
        {"KDE without animations, dark", {desktops("KDE"), true, 0.0, false, QColor(49, 54, 59)}, true, true},
        {"KDE with slow animations, light", {desktops("KDE"), {}, 2.0, true, QColor(239, 240, 241)}, false, false},
        {"KDE's file does not count elsewhere", {desktops("XFCE"), true, 0.0, false, QColor(0, 0, 0)}, false, false}};
    for (const auto &[name, hints, motionReduced, darkPanel] : rows) {
        EXPECT_EQ(isMotionReduced(hints), motionReduced) << name;
        EXPECT_EQ(hasDarkPanel(hints), darkPanel) << name;
    }
}

class FreedesktopAppearanceTest : public testing::Test {
protected:
    FreedesktopAppearanceTest()
    {
        PrivateSession::clear();
        qputenv("XDG_CURRENT_DESKTOP", "KDE");
    }
    ~FreedesktopAppearanceTest() override { qputenv("XDG_CURRENT_DESKTOP", "Here"); }
};

TEST_F(FreedesktopAppearanceTest, KdesFileIsFollowed)
{
    const FreedesktopAppearance appearance;
    EXPECT_FALSE(appearance.isMotionReduced());
    bool isStill = false;
    bool isDark = false;
    QObject::connect(&appearance, &DesktopAppearance::motionReducedChanged, &appearance, [&](bool b) { isStill = b; });
    QObject::connect(&appearance, &DesktopAppearance::darkPanelChanged, &appearance, [&](bool b) { isDark = b; });
    PrivateSession::write(".config/kdeglobals",
                          "[KDE]\nAnimationDurationFactor=0\n[Colors:Window]\nBackgroundNormal=49,54,59\n");
    ASSERT_TRUE(eventually([&] { return isStill && isDark; }));
    EXPECT_TRUE(appearance.isMotionReduced());
    EXPECT_TRUE(appearance.hasDarkPanel());
}

TEST_F(FreedesktopAppearanceTest, TheSharedSettingsAreFollowed)
{
    FreedesktopAppearance appearance;
    EXPECT_FALSE(appearance.isMotionReduced());
    bool isStill = false;
    QObject::connect(&appearance, &DesktopAppearance::motionReducedChanged, &appearance, [&](bool b) { isStill = b; });
    PrivateSession::write(".config/glib-2.0/settings/keyfile",
                          "[org/gnome/desktop/interface]\nenable-animations=false\n");
    ASSERT_TRUE(eventually([&] { return isStill; }));
    EXPECT_TRUE(appearance.isMotionReduced());
}

} // namespace

} // namespace Orbita
