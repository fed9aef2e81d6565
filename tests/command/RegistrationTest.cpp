#include "command/Registration.h"
#include "command/DefaultApplication.h"
#include "command/Entries.h"
#include "command/TextFile.h"
#include "support/RowName.h"

namespace Orbita {
namespace {

/// A list of default applications, with "a" as the one of "x" and without it.
struct List {
    const char *name;
    const char *list, *with, *without;
};

class DefaultsList : public testing::TestWithParam<List> {};

TEST_P(DefaultsList, keepsAllElse)
{
    EXPECT_EQ(withDefault(GetParam().list, "x", "a"), GetParam().with);
    EXPECT_EQ(withDefault(GetParam().with, "x", "a"), GetParam().with);
    EXPECT_EQ(withoutDefault(GetParam().list, "x", "a"), GetParam().without);
}

const List lists[]{
    {"none", "", "[Default Applications]\nx=a;\n", ""},
    {"another group", "[Added Associations]\nx=a;", "[Added Associations]\nx=a;\n[Default Applications]\nx=a;\n",
     "[Added Associations]\nx=a;"},
    {"another type", "#c\n\n[Default Applications]\ny=a\n\n[Z]\nx=a\n",
     "#c\n\n[Default Applications]\nx=a;\ny=a\n\n[Z]\nx=a\n", "#c\n\n[Default Applications]\ny=a\n\n[Z]\nx=a\n"},
    {"another application", "[Default Applications]\r\nx = b\r\n", "[Default Applications]\r\nx=a;b;\n",
     "[Default Applications]\r\nx = b\r\n"},
    {"several applications", "[Default Applications]\nx=b;a;c;\ny=a;\n", "[Default Applications]\nx=a;b;c;\ny=a;\n",
     "[Default Applications]\nx=b;c;\ny=a;\n"},
    {"itself alone", "[Default Applications]\nx=a;\n[Z]\n", "[Default Applications]\nx=a;\n[Z]\n", "[Z]\n"},
    {"itself and a remark", "[Default Applications]\n#c\nx=a;\n", "[Default Applications]\n#c\nx=a;\n",
     "[Default Applications]\n#c\n"},
};
INSTANTIATE_TEST_SUITE_P(Lists, DefaultsList, testing::ValuesIn(lists), rowName<List>);

TEST(Entries, nameProgramsInFoldersOfAnyName)
{
    const EntryTemplate desktop{"a.desktop", "Exec=\"@ORBITA@\" %U\n"},
        service{"a.service", "Exec=\"@ORBITA_TOOLKIT@\"\n"};
    const std::string folder = R"(/a b/$"`\100)";
    EXPECT_TRUE(filledEntry(desktop, folder).ends_with("\nExec=\"/a b/\\\\$\\\\\"\\\\`\\\\\\\\100/orbita\" %U\n"));
    EXPECT_TRUE(filledEntry(service, folder).ends_with("\nExec=\"/a b/\\\\$\\\\\"\\\\`\\\\\\\\100/orbita-toolkit\"\n"));
    for (const char *unfit : {"/a\nb", "/100%"})
        EXPECT_EQ(filledEntry(desktop, unfit), "") << unfit;
}

TEST(Registration, leavesFilesOfOthersAlone)
{
    const std::filesystem::path home = testing::TempDir() + "registration";
    std::filesystem::remove_all(home);
    const UserFolders folders{home / "data", home / "config"};
    const auto foreign = folders.data / entryTemplates().back().path;
    for (const char *text : {"foreign", ""}) {
        ASSERT_TRUE(writeTextFile(foreign, text));
        EXPECT_NE(registerPrograms(folders, "/opt").value_or("").find("written by something else"), std::string::npos);
        EXPECT_FALSE(std::filesystem::exists(folders.data / entryTemplates().front().path));
        EXPECT_FALSE(std::filesystem::exists(folders.configuration));
        EXPECT_EQ(unregisterPrograms(folders), std::nullopt);
        EXPECT_EQ(readTextFile(foreign), text);
        EXPECT_TRUE(std::filesystem::exists(foreign));
    }
}

TEST(TextFile, keepsTheModeOfWhatItReplaces)
{
    const std::filesystem::path path = testing::TempDir() + "mode";
    std::filesystem::remove(path);
    for (const auto mode : {std::filesystem::perms(0644), std::filesystem::perms(0600)}) {
        ASSERT_TRUE(writeTextFile(path, "text"));
        EXPECT_EQ(std::filesystem::status(path).permissions(), mode);
        std::filesystem::permissions(path, std::filesystem::perms(0600));
    }
}

} // namespace
} // namespace Orbita
