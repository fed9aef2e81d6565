#include "platform/desktop/DesktopCatalog.h"

#include "support/RowName.h"

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

struct Row {
    const char *name;
    WindowIdentity window;
    const char *id; ///< empty for none
};
class DesktopCatalogEntry : public testing::TestWithParam<Row> {};

TEST_P(DesktopCatalogEntry, isFoundForAWindow)
{
    const DesktopCatalog all = catalog();
    const DesktopEntry *found = all.entryFor(GetParam().window);
    EXPECT_EQ(found != nullptr ? found->id : QString(), QString::fromUtf8(GetParam().id));
}

WindowIdentity window(const char *windowClass, const char *instance = "", const char *executable = "")
{
    return {{}, QString::fromUtf8(windowClass), QString::fromUtf8(instance), {}, QString::fromUtf8(executable)};
}

WindowIdentity named(const char *gtkId, const char *launchedFrom, const char *windowClass = "")
{
    return {QString::fromUtf8(gtkId), QString::fromUtf8(windowClass), {}, QString::fromUtf8(launchedFrom), {}};
}

INSTANTIATE_TEST_SUITE_P(
    Windows, DesktopCatalogEntry,
    testing::Values(Row{"the id that the program names wins over its class", named("org.xfce.mousepad", "", "XTerm"),
                        "org.xfce.mousepad"},
                    Row{"StartupWMClass is the class", window("XTerm"), "debian-xterm"},
                    Row{"StartupWMClass is the instance", window("firefox", "Navigator"), "class.of.instance"},
                    Row{"the class wins over the instance", window("XTerm", "navigator"), "debian-xterm"},
                    Row{"the id is the class in any case", window("Gimp"), "gimp"},
                    Row{"the id is the instance", window("Whatever", "gimp"), "gimp"},
                    Row{"the class is the last part of a domain name", window("Kate"), "org.kde.kate"},
                    Row{"the program that it runs", window("odd", "odd", "/usr/bin/mailer"), "mail"},
                    Row{"an interpreter says nothing", window("odd", "odd", "/usr/bin/python3.11"), ""},
                    Row{"the file it was launched from", named("", "/a/mail.desktop"), "mail"},
                    Row{"the class wins over the file it was launched from", named("", "/a/mail.desktop", "Kate"),
                        "org.kde.kate"},
                    Row{"an application shown in menus wins over a hidden one", window("Features"), "features-shown"},
                    Row{"the first id wins among equals", window("Twin"), "a-twin"},
                    Row{"a stranger is found nowhere", window("odd", "odd", "/opt/odd"), ""},
                    Row{"nothing said, nothing found", {}, ""}),
    rowName<Row>);

} // namespace
} // namespace Orbita
