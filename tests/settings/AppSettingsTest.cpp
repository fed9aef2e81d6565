#include "settings/AppSettings.h"

#include "platform/ColorArchive.h"
#include "platform/EventTap.h"
#include "platform/memory/MemoryUserDefaults.h"

#include "support/RowName.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTimerEvent>

#include <functional>

namespace Orbita {
namespace {

/// A tap whose source a test can take away, and which keeps what was asked of it.
class PlantedMouseUpEventTap final : public MouseUpEventTap {
public:
    [[nodiscard]] bool isEnabled() const override { return enabled; }
    bool setEnabled(bool enable) override
    {
        requests.append(enable);
        enabled = enable;
        return true;
    }

    bool enabled = true;
    QList<bool> requests;
};

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
        note(&AppSettings::shouldHide, "hide");
    }

    void store(const char *key, const QVariant &value) { m_defaults.setValue(QLatin1String(key), value); }
    [[nodiscard]] QVariant stored(const char *key) const { return m_defaults.value(QLatin1String(key)); }
    [[nodiscard]] QTimer &watchdog() const { return *m_settings.findChild<QTimer *>(); }

    MemoryUserDefaults m_defaults;
    PlantedMouseUpEventTap m_tap;
    AppSettings m_settings{m_defaults, m_tap};
    QStringList m_emitted;
};

// What getters make of what is stored.

struct GetterRow {
    const char *name;
    const char *key;
    QVariant stored;
    std::function<int(AppSettings &)> get;
    int expected;
};

void PrintTo(const GetterRow &row, std::ostream *stream)
{
    *stream << row.name;
}

template <typename Getter>
std::function<int(AppSettings &)> get(Getter getter)
{
    return [getter](AppSettings &settings) { return int((settings.*getter)()); };
}

const auto gesture = get(&AppSettings::gestureSettings);
const auto magnify = get(&AppSettings::magnifySettings);
const auto style = get(&AppSettings::runningAppsStyle);
const auto size = get(&AppSettings::menuSizeSettings);
const auto position = get(&AppSettings::menuPositionSettings);
const auto swift = get(&AppSettings::swiftMode);
const auto title = get(&AppSettings::titleDisplay);
const auto finder = get(&AppSettings::showFinder);
const auto login = get(&AppSettings::launchAtLogin);
const auto launched = get(&AppSettings::launchedBefore);

class Getter : public AppSettingsTest, public testing::WithParamInterface<GetterRow> {};

TEST_P(Getter, validatesWhatIsStored)
{
    store(GetParam().key, GetParam().stored);
    EXPECT_EQ(GetParam().get(m_settings), GetParam().expected);
    EXPECT_TRUE(m_emitted.isEmpty());
}

const QVariantList list{1};

INSTANTIATE_TEST_SUITE_P(
    Settings, Getter,
    testing::Values(GetterRow{"no gesture is stored", "gestureSettings", {}, gesture, 1},
                    GetterRow{"gesture 0 is three fingers resting", "gestureSettings", 0, gesture, 1},
                    GetterRow{"gesture -1 is none", "gestureSettings", -1, gesture, -1},
                    GetterRow{"gesture -2 is out of range", "gestureSettings", -2, gesture, 1},
                    GetterRow{"gesture 8 is the fifth button", "gestureSettings", 8, gesture, 8},
                    GetterRow{"gesture 9 is out of range", "gestureSettings", 9, gesture, 1},
                    GetterRow{"gesture 2 to the 32 plus 5 is out of range", "gestureSettings", (qint64(1) << 32) + 5,
                              gesture, 1},
                    GetterRow{"a gesture in a list", "gestureSettings", list, gesture, 1},
                    GetterRow{"no magnification is stored", "magnifySettings", {}, magnify, 1},
                    GetterRow{"magnification off", "magnifySettings", false, magnify, 0},
                    GetterRow{"magnification 0", "magnifySettings", 0, magnify, 0},
                    GetterRow{"magnification as data", "magnifySettings", QByteArray("x"), magnify, 1},
                    GetterRow{"style 0 reads 2", "runningAppsStyle", 0, style, 2},
                    GetterRow{"style 3", "runningAppsStyle", 3, style, 3},
                    GetterRow{"style 4 reads 2", "runningAppsStyle", 4, style, 2},
                    GetterRow{"no size is stored", "menuSizeSettings", {}, size, 1},
                    GetterRow{"size 4", "menuSizeSettings", 4, size, 4},
                    GetterRow{"size 5 reads 1", "menuSizeSettings", 5, size, 1},
                    GetterRow{"position 2", "menuPositionSettings", 2, position, 2},
                    GetterRow{"position 3 reads 1", "menuPositionSettings", 3, position, 1},
                    GetterRow{"position 0 reads 1", "menuPositionSettings", 0, position, 1},
                    GetterRow{"swift mode 2", "swiftMode", 2, swift, 2},
                    GetterRow{"swift mode 3 reads 0", "swiftMode", 3, swift, 0},
                    GetterRow{"swift mode -1 reads 0", "swiftMode", -1, swift, 0},
                    GetterRow{"titles 1", "titleDisplay", 1, title, 1},
                    GetterRow{"titles 2 read 0", "titleDisplay", 2, title, 0},
                    GetterRow{"no file manager is stored", "showFinder", {}, finder, 1},
                    GetterRow{"file manager NO", "showFinder", QStringLiteral("NO"), finder, 0},
                    GetterRow{"no launch at login is stored", "launchAtLogin", {}, login, 0},
                    GetterRow{"launch at login", "launchAtLogin", true, login, 1},
                    GetterRow{"no first launch is stored", "launchedBefore", {}, launched, 0},
                    GetterRow{"launched before", "launchedBefore", true, launched, 1}),
    rowName<GetterRow>);

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
    for (const QVariant &garbage : {QVariant(QByteArray("garbage")), QVariant(QStringLiteral("red")), QVariant(7)}) {
        store("windowTintColor", garbage);
        EXPECT_EQ(m_settings.windowTintColor(), QColor(Qt::white));
    }
}

// What setters write and tell.

struct SetterRow {
    const char *name;
    std::function<void(AppSettings &)> set;
    const char *key;
    QVariant stored;
    QStringList emitted;
};

void PrintTo(const SetterRow &row, std::ostream *stream)
{
    *stream << row.name;
}

class Setter : public AppSettingsTest, public testing::WithParamInterface<SetterRow> {};

TEST_P(Setter, writesAtOnceAndThenTells)
{
    GetParam().set(m_settings);
    EXPECT_EQ(stored(GetParam().key), GetParam().stored);
    EXPECT_EQ(m_emitted, GetParam().emitted);
    GetParam().set(m_settings);
    EXPECT_EQ(m_emitted, GetParam().emitted + GetParam().emitted) << "also for the same value";
}

INSTANTIATE_TEST_SUITE_P(
    Settings, Setter,
    testing::Values(
        SetterRow{"gesture", [](auto &s) { s.setGestureSettings(GestureTriggerNone); }, "gestureSettings", -1, {}},
        SetterRow{"magnification",
                  [](auto &s) { s.setMagnifySettings(false); },
                  "magnifySettings",
                  false,
                  {QStringLiteral("magnify")}},
        SetterRow{"tint",
                  [](auto &s) { s.setWindowTintColor(Qt::black); },
                  "windowTintColor",
                  ColorArchive::encode(Qt::black),
                  {QStringLiteral("tint")}},
        SetterRow{"running apps style",
                  [](auto &s) { s.setRunningAppsStyle(RunningAppsStyle::Colored); },
                  "runningAppsStyle",
                  3,
                  {QStringLiteral("style")}},
        SetterRow{"size",
                  [](auto &s) { s.setMenuSizeSettings(MenuSize::ExtraLarge); },
                  "menuSizeSettings",
                  4,
                  {QStringLiteral("size")}},
        SetterRow{"position",
                  [](auto &s) { s.setMenuPositionSettings(MenuPosition::ScreenCenter); },
                  "menuPositionSettings",
                  2,
                  {}},
        SetterRow{"swift mode", [](auto &s) { s.setSwiftMode(SwiftMode::RunningAppsOnly); }, "swiftMode", 2, {}},
        SetterRow{"titles", [](auto &s) { s.setTitleDisplay(TitleDisplay::Always); }, "titleDisplay", 1, {}},
        SetterRow{
            "file manager", [](auto &s) { s.setShowFinder(false); }, "showFinder", false, {QStringLiteral("finder")}},
        SetterRow{"launch at login", [](auto &s) { s.setLaunchAtLogin(true); }, "launchAtLogin", true, {}},
        SetterRow{"first launch", [](auto &s) { s.setLaunchedBefore(true); }, "launchedBefore", true, {}}),
    rowName<SetterRow>);

TEST_F(AppSettingsTest, tellsAnExternalChangeOfWhatAGetterReturns)
{
    const auto change = [this](const char *key, const QVariant &value) {
        m_emitted.clear();
        m_defaults.changeExternally(QLatin1String(key), value);
        return m_emitted;
    };
    EXPECT_EQ(change("magnifySettings", false), QStringList{QStringLiteral("magnify")});
    EXPECT_EQ(change("magnifySettings", 0), QStringList());
    EXPECT_EQ(change("menuSizeSettings", 9), QStringList()) << "it still reads 1";
    EXPECT_EQ(change("menuSizeSettings", 3), QStringList{QStringLiteral("size")});
    EXPECT_EQ(change("showRunningApps", false), QStringList{QStringLiteral("style")});
    EXPECT_EQ(change("runningAppsStyle", 1), QStringList());
    EXPECT_EQ(change("showFinder", false), QStringList{QStringLiteral("finder")});
    EXPECT_EQ(change("windowTintColor", QByteArray("garbage")), QStringList());
    EXPECT_EQ(change("windowTintColor", ColorArchive::encode(Qt::red)), QStringList{QStringLiteral("tint")});
    EXPECT_EQ(change("swiftMode", 2), QStringList());

    m_settings.setMagnifySettings(true);
    m_settings.reset();
    EXPECT_EQ(change("magnifySettings", true), QStringList()) << "an own change is not told again";
}

TEST_F(AppSettingsTest, resetsTwoSettingsSilently)
{
    store("gestureSettings", 5);
    store("magnifySettings", false);
    store("menuSizeSettings", 3);
    store("swiftMode", 2);
    m_settings.addBlacklistedApplication(QStringLiteral("/a.desktop"));
    m_tap.requests.clear();

    m_settings.reset();
    EXPECT_EQ(stored("gestureSettings"), 1);
    EXPECT_EQ(stored("magnifySettings"), true);
    EXPECT_EQ(stored("menuSizeSettings"), 3);
    EXPECT_EQ(stored("swiftMode"), 2);
    EXPECT_EQ(m_settings.blacklistedApplications(), QStringList{QStringLiteral("/a.desktop")});
    EXPECT_TRUE(m_emitted.isEmpty());
    EXPECT_TRUE(m_tap.requests.isEmpty());
}

TEST_F(AppSettingsTest, editsTheBlacklist)
{
    const QString a = QStringLiteral("/a.desktop");
    const QString b = QStringLiteral("/b.desktop");
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

// The handlers.

TEST_F(AppSettingsTest, runsTheHandlersWhileStarted)
{
    EXPECT_TRUE(m_tap.requests.isEmpty());
    EXPECT_FALSE(watchdog().isActive());

    m_settings.startHandlers();
    EXPECT_EQ(m_tap.requests, (QList<bool>{false, true})) << "it stops before it starts";
    EXPECT_TRUE(watchdog().isActive());
    Q_EMIT m_tap.mouseUp();
    EXPECT_EQ(m_emitted, QStringList{QStringLiteral("hide")});

    m_settings.stopHandlers();
    EXPECT_FALSE(m_tap.enabled);
    EXPECT_FALSE(watchdog().isActive());
}

TEST_F(AppSettingsTest, revivesALostTapEveryEightSeconds)
{
    m_settings.startHandlers();
    EXPECT_EQ(watchdog().interval(), 8000);
    m_tap.requests.clear();
    const auto timeOut = [this] {
        QTimerEvent event(watchdog().timerId());
        QCoreApplication::sendEvent(&watchdog(), &event);
    };
    timeOut();
    EXPECT_TRUE(m_tap.requests.isEmpty()) << "an enabled tap is left alone";
    m_tap.enabled = false;
    timeOut();
    EXPECT_TRUE(m_tap.enabled);
    m_tap.enabled = false;
    m_settings.checkHandlers();
    EXPECT_TRUE(m_tap.enabled);
}

TEST_F(AppSettingsTest, startsTheHandlersAnewForAnotherTrigger)
{
    const auto changeExternally = [this](int trigger) {
        m_tap.requests.clear();
        m_defaults.changeExternally(QStringLiteral("gestureSettings"), trigger);
        return m_tap.requests;
    };
    EXPECT_TRUE(changeExternally(5).isEmpty()) << "they are not started";
    m_settings.setGestureSettings(GestureTriggerMiddleButton);
    EXPECT_TRUE(m_tap.enabled);
    EXPECT_EQ(changeExternally(5), (QList<bool>{false, true}));
    EXPECT_TRUE(changeExternally(5).isEmpty());
    EXPECT_EQ(m_settings.gestureSettings(), GestureTriggerMouseCircle);
}

} // namespace
} // namespace Orbita
