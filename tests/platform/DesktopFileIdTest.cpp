#include "platform/DesktopFileId.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

TEST(DesktopFileId, isThatOfThePlaceOfAnInstalledFileAndOfTheNameOfACopy)
{
    const QStringList folders{u"/home/me/.local/share/applications"_s, u"/usr/share/applications/"_s};
    struct Row {
        const char *path;
        const char *id; ///< empty: it has none
        const char *standsFor;
        const char *standsNotFor;
    };
    for (const auto &[path, id, standsFor, standsNotFor] :
         {Row{"/usr/share/applications/tool.desktop", "tool.desktop", "tool.desktop", "kde-tool.desktop"},
          Row{"/usr/share/applications/kde/tool.desktop", "kde-tool.desktop", "kde-tool.desktop", "tool.desktop"},
          Row{"/home/me/.local/share/applications//a/../kde/tool.desktop", "kde-tool.desktop", "kde-tool.desktop",
              "tool.desktop"},
          Row{"/usr/share/applications-old/tool.desktop", "", "tool.desktop", "-old-tool.desktop"},
          Row{"/home/me/Desktop/tool.desktop", "", "tool.desktop", "kde-tool.desktop"},
          Row{"/home/me/Desktop/kde-tool.desktop", "", "kde-tool.desktop", "tool.desktop"}}) {
        const QString file = QString::fromLatin1(path);
        EXPECT_EQ(desktopFileId(file, folders), QLatin1String(id)) << path;
        EXPECT_TRUE(standsForDesktopFileId(file, QString::fromLatin1(standsFor), folders)) << path;
        EXPECT_FALSE(standsForDesktopFileId(file, QString::fromLatin1(standsNotFor), folders)) << path;
    }
}

} // namespace
} // namespace Orbita
