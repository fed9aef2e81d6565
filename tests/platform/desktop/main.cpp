#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

void useFolders(const QString &home)
{
    const auto set = [&home](const char *variable, const char *folder) {
        const QString path = home + QLatin1String(folder);
        QDir().mkpath(path);
        qputenv(variable, QFile::encodeName(path));
    };
    set("HOME", "");
    set("XDG_DATA_HOME", "/data");
    set("XDG_CONFIG_HOME", "/config");
    set("XDG_CACHE_HOME", "/cache");
    set("XDG_DATA_DIRS", "/share");
    set("XDG_CONFIG_DIRS", "/etc");
    set("XDG_RUNTIME_DIR", "/run");
    set("GSETTINGS_SCHEMA_DIR", "/schemas");
    QFile(home + QStringLiteral("/run")).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QFile::link(QStringLiteral("/usr/share/mime"), home + QStringLiteral("/share/mime"));
    for (const char *variable : {"DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS"})
        qunsetenv(variable);
}

/// Only the keys that are read, so that no package of schemas is needed.
void compileSchema(const QString &home)
{
    QFile schema(home + QStringLiteral("/schemas/interface.gschema.xml"));
    if (schema.open(QIODevice::WriteOnly)) {
        schema.write("<schemalist><schema id='org.gnome.desktop.interface' path='/org/gnome/desktop/interface/'>"
                     "<key name='enable-animations' type='b'><default>true</default></key>"
                     "<key name='icon-theme' type='s'><default>'Plain'</default></key>"
                     "</schema></schemalist>");
        schema.close();
    }
    if (QProcess::execute(QStringLiteral("glib-compile-schemas"), {home + QStringLiteral("/schemas")}) != 0)
        qFatal("glib-compile-schemas failed");
}

void startBus(QProcess &bus)
{
    bus.start(QStringLiteral("dbus-daemon"),
              {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    if (!bus.waitForReadyRead())
        qFatal("dbus-daemon did not start");
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.readLine().trimmed());
}

} // namespace

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();
    const QTemporaryDir home;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("GSETTINGS_BACKEND", "keyfile");
    qputenv("LANG", "C.UTF-8");
    qputenv("XDG_CURRENT_DESKTOP", "Here"); // GIO reads it once
    useFolders(QDir(home.path()).canonicalPath());
    compileSchema(home.path());
    QGuiApplication application(argc, argv);
    QProcess bus;
    startBus(bus);
    const int result = RUN_ALL_TESTS();
    bus.terminate();
    bus.waitForFinished();
    return result;
}
