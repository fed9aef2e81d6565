#include "PrivateSession.h"

#include "platform/desktop/DesktopSystemShortcuts.h"
#include "platform/memory/MemoryHotKeyService.h"
#include "platform/memory/MemoryKeyboardLayout.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

/// The shortcuts as "modifiers in hexadecimal:key code" and sorted; "unknown" when there are none to know.
std::string shortcuts(const QByteArray &desktop, const KeyFinder &findKey = keyOnUsLayout)
{
    qputenv("XDG_CURRENT_DESKTOP", desktop);
    MemoryHotKeyService hotKeys;
    const auto found = DesktopSystemShortcuts(hotKeys, findKey).symbolicHotKeys();
    qputenv("XDG_CURRENT_DESKTOP", "Here");
    if (!found)
        return "unknown";
    QStringList texts;
    for (const auto &[combination, enabled] : *found)
        texts.append(QStringLiteral("%1:%2").arg(combination.modifiers, 0, 16).arg(combination.keyCode));
    texts.sort();
    return texts.join(u' ').toStdString();
}

TEST(SystemShortcuts, AreThoseOfTheInstalledSchemas)
{
    PrivateSession::clear();
    EXPECT_EQ(shortcuts("ubuntu:GNOME"), "0:122 100:48 100:49 1800:17 200:8 300:7 900:50");
    EXPECT_EQ(shortcuts("X-Cinnamon"), "100:8") << "the user's own, by the list of their names";
    EXPECT_EQ(QString::fromStdString(shortcuts("MATE")).remove(QStringLiteral(" 100:46")),
              QStringLiteral("100:46 800:120"));
    EXPECT_EQ(shortcuts("Elsewhere"), "unknown");
    EXPECT_EQ(shortcuts(""), "unknown");
}

TEST(SystemShortcuts, AreThoseOfKdesFile)
{
    PrivateSession::clear();
    EXPECT_EQ(shortcuts("KDE"), "unknown");
    for (const auto &[entry, expected] : std::vector<std::pair<QByteArray, const char *>>{
             {"Walk Through Windows=Alt+Tab,none,Walk", "800:48"},
             {"_launch=Alt+Space\\tAlt+F2\\tSearch,Alt+Space,KRunner", "800:120 800:49"},
             {"Preferences=Meta+\\\\,,Meta+\\\\,,Preferences", "100:43"},
             {"Back=Meta+Shift+Backtab,none,Back", "300:48"},
             {"Zoom=Meta+Num++\\tMeta+=,none,Zoom", "100:24 100:69"},
             {"Edit=Ctrl+F20\\tCtrl+Esc,none,Edit", "1000:53 1000:90"},
             {"Off=none,Meta+X,Off\n_k_friendly_name=X\n#A=X\n[X=Y]\n=X\nNothing=", ""},
             {"Sequence=\"Meta+X, Meta+C\"\nRow=Meta+X\\, Y,none,Row\nUnknown=Meta+Banana\nEnd=Meta+\\", "100:42"},
             {QByteArray("\xff\xfe\0=\0\\\\\\,\t=", 9) + QByteArray(70000, '\\') + "\nLast=Meta+Q\r\n", "100:12"},
             {"Huge=Meta+Q\n" + QByteArray(1024 * 1024, ' '), "unknown"}}) {
        PrivateSession::write(".config/kglobalshortcutsrc", "[kwin]\n" + entry);
        EXPECT_EQ(shortcuts("KDE"), expected) << entry.left(80).constData();
    }
}

TEST(SystemShortcuts, AreThoseOfXfcesFiles)
{
    const auto channel = [](const QByteArray &provider, const QByteArray &set, const QByteArray &properties) {
        return "<channel><property name='" + provider + "'><property name='" + set + "'>" + properties
            + "</property></property></channel>";
    };
    const auto key = [](const QByteArray &name, const QByteArray &value = "x", const QByteArray &type = "string") {
        return "<property name='" + name + "' type='" + type + "' value='" + value
            + "'><property name='F5' type='bool' value='true'/></property>";
    };
    const QByteArray override = key("override", "true", "bool");
    const QByteArray defaults = channel("commands", "default", key("&lt;Alt&gt;F2") + key("&lt;Primary&gt;q"));
    for (const auto &[name, system, user, expected] :
         std::vector<std::tuple<const char *, QByteArray, QByteArray, const char *>>{
             {"the system's", defaults, "", "1000:12 800:120"},
             {"the user's own in their place", defaults,
              channel("commands", "custom", key("&lt;Super&gt;KP_1") + override), "100:83"},
             {"the user's own are not in force", defaults, channel("commands", "custom", key("F1")), "1000:12 800:120"},
             {"one of them changed", defaults, channel("commands", "default", key("&lt;Alt&gt;F2", "", "empty")),
              "1000:12"},
             {"the window manager's", "", channel("xfwm4", "default", key("&lt;Shift&gt;&lt;Alt&gt;Page_Down")),
              "a00:121"},
             {"a damaged file is left out", defaults, "<channel><property name='commands'><property name='default'>",
              "1000:12 800:120"},
             {"nonsense", "<a><property/></a>", "\xff<property name='&lt;&lt;&lt;'/>", ""}}) {
        PrivateSession::clear();
        EXPECT_EQ(shortcuts("KDE:XFCE"), "unknown") << "KDE is first";
        const QByteArray file = "/xfce4/xfconf/xfce-perchannel-xml/xfce4-keyboard-shortcuts.xml";
        PrivateSession::write("etc" + file, system);
        PrivateSession::write(".config" + file, user);
        EXPECT_EQ(shortcuts("XFCE"), expected) << name;
    }
}

TEST(SystemShortcuts, AreWhereTheLayoutHasThem)
{
    PrivateSession::clear();
    PrivateSession::write(".config/kglobalshortcutsrc", "A=Meta+\u0391\nB=Meta+Z\nC=Meta+Q\nD=Meta+\u0392\n");
    MemoryKeyboardLayout layout; // whose Q types the A of the Greek alphabet, and whose Y types Z
    layout.setTexts({{12, QStringLiteral("\u03b1")}, {16, QStringLiteral("z")}});
    EXPECT_EQ(shortcuts("KDE", keysOn(layout)), "100:12 100:12 100:16");
}

TEST(SystemShortcuts, AreTakenByWhoeverGrabsThem)
{
    MemoryHotKeyService hotKeys;
    const KeyCombination grabbed{12, CommandKey};
    hotKeys.takenByOthers = {grabbed};
    const DesktopSystemShortcuts shortcuts(hotKeys);
    EXPECT_TRUE(shortcuts.isGrabbed(grabbed));
    EXPECT_FALSE(shortcuts.isGrabbed({12, ControlKey}));
}

} // namespace
} // namespace Orbita
