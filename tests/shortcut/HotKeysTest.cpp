#include "platform/KeyedArchive.h"
#include "platform/memory/MemoryHotKeyService.h"
#include "platform/memory/MemoryKeyboardLayout.h"
#include "platform/memory/MemoryUserDefaults.h"
#include "shortcut/MASShortcutDefaultsObserver.h"
#include "shortcut/MASShortcutUserDefaultsHotKeys.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

const QString key = u"GlobalShortcut"_s;
const MASShortcut f1(122, ~0ULL); // with each modifier
constexpr KeyCombination f1Keys{122, CommandKey | ShiftKey | OptionKey | ControlKey};
const MASShortcut f2(120);

class HotKeysTest : public testing::Test {
protected:
    int presses(const MASShortcut &shortcut)
    {
        m_presses = 0;
        m_service.press({shortcut.carbonKeyCode(), shortcut.carbonFlags()});
        return m_presses;
    }

    int m_presses = 0;
    const MASShortcutHotKey::Handler m_handler = [this] { ++m_presses; };
    MemoryHotKeyService m_service;
    MemoryKeyboardLayout m_layout;
    MemoryUserDefaults m_defaults;
    MASShortcutMonitors m_monitors{m_service, m_layout};
    MASShortcutUserDefaultsHotKeys m_hotKeys{m_defaults, m_monitors};
};

TEST_F(HotKeysTest, shortcutHasOneMonitorAtMost)
{
    EXPECT_FALSE(m_monitors.addGlobalHotkeyMonitor(MASShortcut(NotFound, CommandModifierFlag), m_handler));
    EXPECT_TRUE(m_service.held.empty());
    m_service.takenByOthers = {f1Keys};
    EXPECT_FALSE(m_monitors.addGlobalHotkeyMonitor(f1, m_handler));
    m_service.takenByOthers.clear();
    EXPECT_EQ(m_monitors.addGlobalHotkeyMonitor(f1, m_handler), u"⌃⌥⇧⌘F1"_s);
    EXPECT_EQ(m_monitors.addGlobalHotkeyMonitor(f1, [] { FAIL(); }), std::nullopt);
    EXPECT_EQ(presses(f1), 1);
    Q_EMIT m_service.pressed({0, m_service.held.front().id.id}); // another owner's
    EXPECT_EQ(m_presses, 1);
    EXPECT_EQ(m_monitors.addGlobalHotkeyMonitor(f2, {}), u"F2"_s);
    EXPECT_EQ(presses(f2), 0);
}

TEST_F(HotKeysTest, numbersAreNeverUsedAgain)
{
    for (const quint32 id : {1, 2}) {
        ASSERT_TRUE(m_monitors.addGlobalHotkeyMonitor(f1, m_handler));
        EXPECT_EQ(m_service.held, (std::vector<MemoryHotKeyService::HotKey>{{{0x4D415353, id}, f1Keys}}));
        m_monitors.removeGlobalHotkeyMonitor(u"F2"_s);
        EXPECT_EQ(presses(f1), 1); // listens again after there was none
        m_monitors.removeGlobalHotkeyMonitor(u"⌃⌥⇧⌘F1"_s);
    }
    EXPECT_TRUE(m_service.held.empty());
}

TEST_F(HotKeysTest, handlerMayUnregisterItself)
{
    m_hotKeys.setGlobalShortcut(f1, key);
    m_hotKeys.registerGlobalShortcut(key, [this, name = key.toUtf8()] { // to be freed with the handler
        m_hotKeys.unregisterGlobalShortcut(QString::fromUtf8(name));
        m_presses += int(name.size());
    });
    EXPECT_EQ(presses(f1), key.size());
    EXPECT_EQ(presses(f1), 0);
}

TEST_F(HotKeysTest, followStoredShortcut)
{
    m_hotKeys.registerGlobalShortcut(key, m_handler);
    m_hotKeys.setGlobalShortcut(f1, key);
    EXPECT_EQ(presses(f1), 1);
    m_defaults.changeExternally(key, f2.data());
    EXPECT_EQ(presses(f2), 1);
    for (const QVariant &none : {QVariant(u"text"_s), QVariant(QByteArray("bytes"))}) {
        m_hotKeys.setGlobalShortcut(f1, key);
        m_defaults.setValue(key, none);
        EXPECT_TRUE(m_service.held.empty()) << none.typeName();
    }
    m_hotKeys.setGlobalShortcut(f1, key);
    m_hotKeys.setGlobalShortcut({}, key);
    EXPECT_FALSE(m_defaults.contains(key));
    ASSERT_TRUE(m_monitors.addGlobalHotkeyMonitor(f1, m_handler));
    m_hotKeys.unregisterGlobalShortcut(key);
    EXPECT_EQ(presses(f1), 1); // that monitor was another's
}

TEST_F(HotKeysTest, registeringTwiceLeavesNone)
{
    m_hotKeys.setGlobalShortcut(f1, key);
    m_hotKeys.registerGlobalShortcut(key, m_handler);
    m_hotKeys.registerGlobalShortcut(key, m_handler);
    EXPECT_EQ(m_hotKeys.registeredUserDefaultsHotKeys().at(key)->monitor(), std::nullopt);
    EXPECT_TRUE(m_service.held.empty());
}

TEST_F(HotKeysTest, recorderAndStoreFollowEachOther)
{
    int stored = 0;
    QObject::connect(&m_defaults, &UserDefaults::changed, &m_defaults, [&stored] { ++stored; });
    m_hotKeys.setGlobalShortcut(f1, key);
    MASShortcutValue view;
    view.setShortcutValue(f2);
    auto goesFirst = std::make_unique<MASShortcutValue>();
    {
        const MASShortcutDefaultsObserver other(*goesFirst, m_defaults, key);
        goesFirst.reset();
        const MASShortcutDefaultsObserver observer(view, m_defaults, key);
        EXPECT_EQ(view.shortcutValue(), f1);
        m_hotKeys.setGlobalShortcut(MASShortcut(0, CommandModifierFlag), key);
        EXPECT_EQ(view.shortcutValue(), MASShortcut(0, CommandModifierFlag));
        view.setShortcutValue(f1);
        EXPECT_EQ(m_defaults.value(key), f1.data());
        view.setShortcutValue({});
        EXPECT_EQ(m_defaults.value(key), KeyedArchive::encodeNothing());
    }
    EXPECT_EQ(view.shortcutValue(), f2); // as before
    EXPECT_EQ(stored, 4);                // what came from the store was not stored again
}

} // namespace
} // namespace Orbita
