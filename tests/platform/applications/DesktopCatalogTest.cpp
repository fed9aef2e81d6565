#include "platform/desktop/DesktopCatalog.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

DesktopEntry entry(const char *id, const char *startupWmClass, const char *program, bool isHidden = false)
{
    const QString name = QString::fromUtf8(id);
    return {name,
            QStringLiteral("/a/%1.desktop").arg(name),
            name,
            QString::fromUtf8(startupWmClass),
            QString::fromUtf8(program),
            isHidden,
            {}};
}

DesktopCatalog catalog()
{
    return DesktopCatalog({
        entry("debian-xterm", "XTerm", "xterm"),
        entry("org.xfce.mousepad", "", "mousepad"),
        entry("org.kde.kate", "", "kate"),
        entry("gimp", "", "gimp-2.10"),
        entry("features-hidden", "Features", "features", true),
        entry("features-shown", "Features", "features"),
        entry("mail", "", "mailer"),
        entry("snake", "", "python3.11"),
        entry("b-twin", "Twin", ""),
        entry("a-twin", "Twin", ""),
        entry("class.of.instance", "navigator", ""),
    });
}

WindowIdentity window(const char *windowClass, const char *instance = "", const char *executable = "")
{
    return {{}, QString::fromUtf8(windowClass), QString::fromUtf8(instance), {}, QString::fromUtf8(executable)};
}

WindowIdentity named(const char *gtkId, const char *launchedFrom, const char *windowClass = "")
{
    return {QString::fromUtf8(gtkId), QString::fromUtf8(windowClass), {}, QString::fromUtf8(launchedFrom), {}};
}

TEST(DesktopCatalog, findsTheEntryForAWindow)
{
    const std::vector<std::tuple<const char *, WindowIdentity, const char *>> rows{
        {"the id that the program names wins over its class", named("org.xfce.mousepad", "", "XTerm"),
         "org.xfce.mousepad"},
        {"StartupWMClass is the class", window("XTerm"), "debian-xterm"},
        {"StartupWMClass is the instance", window("firefox", "Navigator"), "class.of.instance"},
        {"the class wins over the instance", window("XTerm", "navigator"), "debian-xterm"},
        {"the id is the class in any case", window("Gimp"), "gimp"},
        {"the id is the instance", window("Whatever", "gimp"), "gimp"},
        {"the class is the last part of a domain name", window("Kate"), "org.kde.kate"},
        {"the program that it runs", window("odd", "odd", "/usr/bin/mailer"), "mail"},
        {"an interpreter says nothing", window("odd", "odd", "/usr/bin/python3.11"), ""},
        {"the file it was launched from", named("", "/a/mail.desktop"), "mail"},
        {"the class wins over the file it was launched from", named("", "/a/mail.desktop", "Kate"), "org.kde.kate"},
        {"an application shown in menus wins over a hidden one", window("Features"), "features-shown"},
        {"the first id wins among equals", window("Twin"), "a-twin"},
        {"a stranger is found nowhere", window("odd", "odd", "/opt/odd"), ""},
        {"nothing said, nothing found", {}, ""}};
    const DesktopCatalog all = catalog();
    for (const auto &[name, identity, id] : rows) {
        const DesktopEntry *found = all.entryFor(identity);
        EXPECT_EQ(found != nullptr ? found->id : QString(), QString::fromUtf8(id)) << name;
    }
}

} // namespace
} // namespace Orbita
