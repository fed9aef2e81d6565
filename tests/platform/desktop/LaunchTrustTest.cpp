#include "platform/desktop/LaunchTrust.h"

#include "support/RowName.h"

#include <gtest/gtest.h>

#include <linux/magic.h>
#include <sys/stat.h>

namespace Orbita {
namespace {

constexpr uid_t self = 1000;
constexpr uid_t stranger = 1001;
constexpr gid_t own = 1000;
constexpr gid_t foreign = 100;

/// The same owner, group, permissions and file system, for a program and for the folder that it lies in.
struct Row {
    const char *name;
    FileFacts facts; ///< the mode without the kind of file
    bool isProgramSafe;
    bool isFolderSafe;
};

class LaunchTrust : public testing::TestWithParam<Row> {};

TEST_P(LaunchTrust, isForWhatNobodyElseCanReplace)
{
    const auto as = [](mode_t kind) {
        FileFacts facts = GetParam().facts;
        facts.mode |= kind;
        return facts;
    };
    const TrustingUser user{self, own};
    EXPECT_EQ(isSafeProgram(as(S_IFREG), user), GetParam().isProgramSafe);
    EXPECT_EQ(isSafeFolder(as(S_IFDIR), user), GetParam().isFolderSafe);
    EXPECT_FALSE(isSafeProgram(as(S_IFDIR), user));
    EXPECT_FALSE(isSafeProgram(as(S_IFIFO), user));
    EXPECT_FALSE(isSafeFolder(as(S_IFREG), user));
}

const Row rows[]{
    {"the user's own", {EXT4_SUPER_MAGIC, 0755, self, own}, true, true},
    {"root's", {OVERLAYFS_SUPER_MAGIC, 0755, 0, 0}, true, true},
    {"a stranger's", {EXT4_SUPER_MAGIC, 0755, stranger, own}, false, false},
    {"a stranger's that is sticky", {EXT4_SUPER_MAGIC, 01755, stranger, own}, false, false},
    {"not executable, as a folder never lacks", {EXT4_SUPER_MAGIC, 0644, self, own}, false, true},
    {"executable for others alone", {EXT4_SUPER_MAGIC, 0655, self, own}, false, true},
    {"writable by the user's own group", {BTRFS_SUPER_MAGIC, 0775, self, own}, true, true},
    {"writable by those whom an access list names", {EXT4_SUPER_MAGIC, 0775, self, own, true}, false, false},
    {"with an access list that lets nobody write", {EXT4_SUPER_MAGIC, 0755, self, own, true}, true, true},
    {"writable by a foreign group", {EXT4_SUPER_MAGIC, 0775, self, foreign}, false, false},
    {"root's, writable by a foreign group", {EXT4_SUPER_MAGIC, 02775, 0, foreign}, false, false},
    {"writable by anybody", {TMPFS_MAGIC, 0777, self, own}, false, false},
    {"sticky and writable by anybody", {TMPFS_MAGIC, 01777, 0, 0}, false, true},
    {"sticky and writable by a foreign group", {TMPFS_MAGIC, 01770, 0, foreign}, false, true},
    {"on a network file system with modes", {NFS_SUPER_MAGIC, 0755, self, own}, true, true},
    {"on a stick", {MSDOS_SUPER_MAGIC, 0755, self, own}, false, false},
    {"on an optical disc", {ISOFS_SUPER_MAGIC, 0755, 0, 0}, false, false},
    {"on a Windows share", {CIFS_SUPER_MAGIC, 0755, self, own}, false, false},
    {"on its newer kind", {SMB2_SUPER_MAGIC, 0755, self, own}, false, false},
    {"on a folder of a virtual machine's host", {V9FS_MAGIC, 0755, self, own}, false, false},
    {"on what a program makes up", {FUSE_SUPER_MAGIC, 0755, self, own}, false, false},
    {"on an unknown file system", {0x12345678, 0755, self, own}, false, false},
};
INSTANTIATE_TEST_SUITE_P(Facts, LaunchTrust, testing::ValuesIn(rows), rowName<Row>);

TEST(LaunchTrustOfAGroup, needsOneOfTheUsersOwn)
{
    const FileFacts program{EXT4_SUPER_MAGIC, S_IFREG | 0775, self, own};
    EXPECT_FALSE(isSafeProgram(program, {self, std::nullopt}));
}

} // namespace
} // namespace Orbita
