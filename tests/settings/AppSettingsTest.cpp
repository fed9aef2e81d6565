#include "settings/AppSettings.h"

#include "platform/ColorArchive.h"
#include "platform/memory/MemoryUserDefaults.h"
#include "support/MemoryTriggers.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

class AppSettingsTest : public testing::Test {
protected:
    AppSettingsTest()
    {
        const auto note = [this](void (AppSettings::*signal)(), const char *name) {
            QObject::connect(&m_settings, signal, &m_settings, [this, name] { m_emitted.append(QLatin1String(name)); });
        };
        note(&AppSettings::magnifySettingsChanged, "magnify");
        note(&AppSettings::windowTintSettingsChanged, "tint");
        note(&AppSettings::runningAppsStyleChanged, "style");
        note(&AppSettings::menuSizeSettingsChanged, "size");
        note(&AppSettings::showFinderChanged, "finder");
        note(&AppSettings::blacklistedApplicationsChanged, "blacklist");
        note(&AppSettings::shouldHide, "hide");
        note(&AppSettings::handlersStarting, "started");
    }

    void store(const char *key, const QVariant &value) { m_defaults.setValue(QLatin1String(key), value); }
    [[nodiscard]] QVariant stored(const char *key) const { return m_defaults.value(QLatin1String(key)); }

    MemoryUserDefaults m_defaults;
    MemoryTriggers m_triggers{m_defaults};
    AppSettings m_settings{m_defaults, m_triggers.sources};
    QStringList m_emitted;
};

TEST_F(AppSettingsTest, validatesWhatIsStored)
{
    const auto check = [this](const char *key, auto getter, const std::vector<std::pair<QVariant, int>> &rows) {
        for (const auto &[value, expected] : rows) {
            store(key, value);
            EXPECT_EQ(int((m_settings.*getter)()), expected) << key << ' ' << qPrintable(value.toString());
        }
    };
    const QVariantList list{1};
    check("gestureSettings", &AppSettings::gestureSettings,
          {{{}, 1}, {0, 1}, {-1, -1}, {-2, 1}, {8, 8}, {9, 1}, {(qint64(1) << 32) + 5, 1}, {list, 1}});
    check("magnifySettings", &AppSettings::magnifySettings, {{{}, 1}, {false, 0}, {0, 0}, {QByteArray("x"), 1}});
    check("runningAppsStyle", &AppSettings::runningAppsStyle, {{0, 2}, {3, 3}, {4, 2}});
    check("menuSizeSettings", &AppSettings::menuSizeSettings, {{{}, 1}, {4, 4}, {5, 1}});
    check("menuPositionSettings", &AppSettings::menuPositionSettings, {{2, 2}, {3, 1}, {0, 1}});
    check("swiftMode", &AppSettings::swiftMode, {{2, 2}, {3, 0}, {-1, 0}});
    check("titleDisplay", &AppSettings::titleDisplay, {{1, 1}, {2, 0}});
    check("showFinder", &AppSettings::showFinder, {{{}, 1}, {u"NO"_s, 0}});
    check("launchAtLogin", &AppSettings::launchAtLogin, {{{}, 0}, {true, 1}});
    check("launchedBefore", &AppSettings::launchedBefore, {{{}, 0}, {true, 1}});
    EXPECT_TRUE(m_emitted.isEmpty());
}

TEST_F(AppSettingsTest, migratesTheRunningAppsStyle)
{
    EXPECT_FALSE(stored("runningAppsStyle").isValid()) << "nothing is written before it is read";
    EXPECT_EQ(m_settings.runningAppsStyle(), RunningAppsStyle::Normal);
    EXPECT_EQ(stored("runningAppsStyle"), 2);

    for (const bool shows : {false, true}) {
        store("runningAppsStyle", {});
        store("showRunningApps", shows);
        EXPECT_EQ(int(m_settings.runningAppsStyle()), shows ? 2 : 1);
        EXPECT_EQ(stored("runningAppsStyle"), shows ? 2 : 1);
        EXPECT_EQ(stored("showRunningApps"), shows);
    }
    store("runningAppsStyle", 4);
    EXPECT_EQ(m_settings.runningAppsStyle(), RunningAppsStyle::Normal);
    EXPECT_EQ(stored("runningAppsStyle"), 4) << "what is out of range stays as it was";
}

TEST_F(AppSettingsTest, keepsTheTintAsAnArchive)
{
    EXPECT_EQ(m_settings.windowTintColor(), QColor(Qt::white));
    m_settings.setWindowTintColor(QColor(247, 74, 62));
    EXPECT_EQ(stored("windowTintColor"), ColorArchive::encode(QColor(247, 74, 62)));
    EXPECT_EQ(m_settings.windowTintColor(), QColor(247, 74, 62));
    for (const QVariant &garbage : {QVariant(QByteArray("garbage")), QVariant(u"red"_s), QVariant(7)}) {
        store("windowTintColor", garbage);
        EXPECT_EQ(m_settings.windowTintColor(), QColor(Qt::white));
    }
}

TEST_F(AppSettingsTest, writesAtOnceAndThenTells)
{
    const auto check = [this](const char *key, const auto &set, const QVariant &expected, const char *signal) {
        for (const char *which : {"a new value", "also the same value"}) {
            SCOPED_TRACE(std::string(key) + ": " + which);
            m_emitted.clear();
            set();
            EXPECT_EQ(stored(key), expected);
            EXPECT_EQ(m_emitted.join(u' ').toStdString(), signal);
        }
    };
    AppSettings &s = m_settings;
    check(
        "gestureSettings", [&] { s.setGestureSettings(GestureTriggerNone); }, -1, "started");
    check(
        "magnifySettings", [&] { s.setMagnifySettings(false); }, false, "magnify");
    check(
        "windowTintColor", [&] { s.setWindowTintColor(Qt::black); }, ColorArchive::encode(Qt::black), "tint");
    check(
        "runningAppsStyle", [&] { s.setRunningAppsStyle(RunningAppsStyle::Colored); }, 3, "style");
    check(
        "menuSizeSettings", [&] { s.setMenuSizeSettings(MenuSize::ExtraLarge); }, 4, "size");
    check(
        "menuPositionSettings", [&] { s.setMenuPositionSettings(MenuPosition::ScreenCenter); }, 2, "");
    check(
        "swiftMode", [&] { s.setSwiftMode(SwiftMode::RunningAppsOnly); }, 2, "");
    check(
        "titleDisplay", [&] { s.setTitleDisplay(TitleDisplay::Always); }, 1, "");
    check(
        "showFinder", [&] { s.setShowFinder(false); }, false, "finder");
    check(
        "launchAtLogin", [&] { s.setLaunchAtLogin(true); }, true, "");
    check(
        "launchedBefore", [&] { s.setLaunchedBefore(true); }, true, "");
    m_defaults.changeExternally(u"something else"_s, 1);
    EXPECT_TRUE(m_emitted.isEmpty()) << "an own change is not told again";
}

TEST_F(AppSettingsTest, tellsAnExternalChangeOfWhatAGetterReturns)
{
    const auto expectAfter = [this](const char *key, const QVariant &value, const char *signal) {
        m_emitted.clear();
        m_defaults.changeExternally(QLatin1String(key), value);
        EXPECT_EQ(m_emitted.join(u' ').toStdString(), signal) << key << ' ' << qPrintable(value.toString());
    };
    expectAfter("magnifySettings", false, "magnify");
    expectAfter("magnifySettings", 0, "");
    expectAfter("menuSizeSettings", 9, ""); // it still reads 1
    expectAfter("menuSizeSettings", 3, "size");
    expectAfter("showRunningApps", false, "style");
    expectAfter("runningAppsStyle", 1, "");
    expectAfter("showFinder", false, "finder");
    expectAfter("windowTintColor", QByteArray("garbage"), "");
    expectAfter("windowTintColor", ColorArchive::encode(Qt::red), "tint");
    expectAfter("swiftMode", 2, "");
    expectAfter("blacklistedApps", QVariantList{u"/a.desktop"_s}, "blacklist");
    expectAfter("blacklistedApps", QVariantList{u"/a.desktop"_s, 1}, "blacklist"); // it reads as empty
    expectAfter("blacklistedApps", {}, "");

    m_settings.setMagnifySettings(true);
    m_settings.reset();
    expectAfter("magnifySettings", true, ""); // an own change is not told again
}

TEST_F(AppSettingsTest, resetsTwoSettingsSilently)
{
    store("gestureSettings", 5);
    store("magnifySettings", false);
    store("swiftMode", 2);
    store("blacklistedApps", QStringList(u"/a"_s));
    m_settings.reset();
    EXPECT_EQ(stored("gestureSettings"), 1);
    EXPECT_EQ(stored("magnifySettings"), true);
    EXPECT_EQ(stored("swiftMode"), 2);
    EXPECT_EQ(m_settings.blacklistedApplications(), QStringList(u"/a"_s));
    EXPECT_TRUE(m_emitted.isEmpty());
}

TEST_F(AppSettingsTest, editsTheBlacklist)
{
    const QString a = u"/a"_s;
    const QString b = u"/b"_s;
    EXPECT_TRUE(m_settings.blacklistedApplications().isEmpty());
    m_settings.addBlacklistedApplication(b);
    m_settings.addBlacklistedApplication(a);
    m_settings.addBlacklistedApplication(b);
    EXPECT_EQ(m_settings.blacklistedApplications(), (QStringList{b, a}));

    store("blacklistedApps", QStringList{b, a, b});
    m_settings.removeBlacklistedApplication(b);
    EXPECT_EQ(m_settings.blacklistedApplications(), QStringList{a});
    m_settings.removeBlacklistedApplication(a);
    EXPECT_EQ(stored("blacklistedApps"), QVariantList());

    for (const QVariant &garbage : {QVariant(a), QVariant(QVariantList{a, 1}), QVariant(QVariantMap{{a, a}})}) {
        store("blacklistedApps", garbage);
        EXPECT_TRUE(m_settings.blacklistedApplications().isEmpty());
    }
}

TEST_F(AppSettingsTest, startsTheHandlersAnewForAnotherTrigger)
{
    const EventTap &middle = m_triggers.taps.otherMouseDown;
    const EventTap &circle = m_triggers.taps.mouseMoved;
    m_defaults.changeExternally(u"gestureSettings"_s, 5);
    EXPECT_FALSE(circle.isEnabled()) << "they are not started";
    m_settings.setGestureSettings(GestureTriggerMiddleButton);
    EXPECT_TRUE(middle.isEnabled());
    m_defaults.changeExternally(u"gestureSettings"_s, 5);
    EXPECT_TRUE(circle.isEnabled());
    EXPECT_FALSE(middle.isEnabled());
    m_triggers.taps.mouseUp.release();
    EXPECT_EQ(m_emitted, (QStringList{u"started"_s, u"started"_s, u"hide"_s}));
    m_settings.reset();
    EXPECT_TRUE(circle.isEnabled()) << "it restarts nothing";
}

} // namespace
} // namespace Orbita
