#include "PrivateSession.h"

#include "desktop/harness/Bus.h"

#include <QFile>
#include <QGuiApplication>
#include <QProcess>

#include <gtest/gtest.h>

using namespace Orbita;

namespace {

/// A desktop that binds keys in lists, as single texts and to what the user wants.
constexpr char shortcutSchemas[] = R"(<schemalist>
  <schema id='org.gnome.desktop.wm.keybindings' path='/org/gnome/desktop/wm/keybindings/'>
    <key name='a' type='as'><default>['&lt;Super&gt;space', '&lt;Primary&gt;&lt;Alt&gt;T', 'F1']</default></key>
    <key name='b' type='as'><default>['', 'disabled', '&lt;Super', '&lt;Hyper&gt;x', '&lt;Super&gt;']</default></key>
    <key name='c' type='b'><default>true</default></key>
    <key name='d' type='as'><default>['&lt;mod4&gt;Tab', '&lt;Super&gt;&lt;Alt&gt;Above_Tab', 'XF86Mail']</default></key>
  </schema>
  <schema id='org.gnome.settings-daemon.plugins.media-keys' path='/org/gnome/settings-daemon/plugins/media-keys/'>
    <key name='copy' type='s'><default>'&lt;Shift&gt;c'</default></key>
    <key name='custom-keybindings' type='as'><default>['/own/0/', 'x//', '/y']</default></key>
  </schema>
  <schema id='org.gnome.settings-daemon.plugins.media-keys.custom-keybinding'>
    <key name='binding' type='s'><default>'&lt;Shift&gt;&lt;Super&gt;x'</default></key>
  </schema>
  <schema id='org.cinnamon.desktop.keybindings' path='/org/cinnamon/desktop/keybindings/'>
    <key name='custom-list' type='as'><default>['custom0']</default></key>
  </schema>
  <schema id='org.cinnamon.desktop.keybindings.custom-keybinding'>
    <key name='binding' type='as'><default>['&lt;Super&gt;c']</default></key>
  </schema>
  <schema id='org.mate.Marco.global-keybindings' path='/org/mate/marco/global-keybindings/'>
    <key name='run' type='s'><default>'&lt;Alt&gt;F2'</default></key>
  </schema>
  <schema id='org.mate.control-center.keybinding'>
    <key name='binding' type='s'><default>'&lt;Super&gt;m'</default></key>
  </schema>
</schemalist>)";

void enterSession()
{
    const auto &folders = PrivateSession::folders();
    const auto environment = folders.environment();
    for (const QString &variable : environment.keys())
        qputenv(variable.toLatin1().constData(), environment.value(variable).toLocal8Bit());
    for (const char *variable : {"DISPLAY", "WAYLAND_DISPLAY"})
        qunsetenv(variable);
    qputenv("XDG_DATA_DIRS", QFile::encodeName(PrivateSession::path("share")));
    qputenv("XDG_CONFIG_DIRS", QFile::encodeName(PrivateSession::path("etc")));
    qputenv("XDG_CURRENT_DESKTOP", "Here"); // GIO reads it once
    qputenv("GSETTINGS_BACKEND", "keyfile");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Only the keys that are read, so that no package of schemas is needed.
    const QString schema
        = folders.write(QStringLiteral("share/glib-2.0/schemas/interface.gschema.xml"),
                        "<schemalist><schema id='org.gnome.desktop.interface' path='/org/gnome/desktop/interface/'>"
                        "<key name='enable-animations' type='b'><default>true</default></key>"
                        "<key name='icon-theme' type='s'><default>'Plain'</default></key></schema></schemalist>");
    folders.write(QStringLiteral("share/glib-2.0/schemas/shortcuts.gschema.xml"), shortcutSchemas);
    if (QProcess::execute(QStringLiteral("glib-compile-schemas"), {schema.section(u'/', 0, -2)}) != 0)
        qFatal("glib-compile-schemas failed");
    QFile::link(QStringLiteral("/usr/share/mime"), PrivateSession::path("share/mime"));
}

} // namespace

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();
    {
        const QCoreApplication whileItIsSetUp(argc, argv);
        enterSession();
    }
    const QGuiApplication application(argc, argv);
    const auto bus = startBusDaemon(PrivateSession::folders().busAddress(), QProcessEnvironment::systemEnvironment());
    return RUN_ALL_TESTS();
}
