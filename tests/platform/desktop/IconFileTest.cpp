#include "platform/desktop/IconFile.h"

#include <gtest/gtest.h>

namespace Orbita {

namespace {

using Type = IconFile::Type;

IconFile fixed(int size, int scale = 1)
{
    return {QStringLiteral("fixed%1@%2").arg(size).arg(scale), Type::Fixed, size, size, size, 2, scale};
}

IconFile threshold(int size)
{
    return {QStringLiteral("threshold%1").arg(size), Type::Threshold, size, size, size, 2, 1};
}

IconFile scalable(int size, int minimum, int maximum)
{
    return {QStringLiteral("scalable%1").arg(size), Type::Scalable, size, minimum, maximum, 2, 1};
}

TEST(NearestFirst, FollowsTheDistance)
{
    const std::vector<std::tuple<const char *, std::vector<IconFile>, int, const char *, int>> rows{
        {"the exact size wins", {fixed(16), fixed(48), fixed(64)}, 48, "fixed48@1", 0},
        {"a doubled one counts in device pixels", {fixed(48), fixed(32, 2)}, 64, "fixed32@2", 0},
        {"the nearest when none fits", {fixed(16), fixed(256)}, 320, "fixed256@1", 64},
        {"the larger of two as near", {fixed(32), fixed(64)}, 48, "fixed64@1", 16},
        {"a range that holds the size", {fixed(256), scalable(128, 8, 512)}, 320, "scalable128", 0},
        {"a range that ends too early", {fixed(256), scalable(16, 8, 64)}, 320, "fixed256@1", 64},
        {"the border of a range is in it", {scalable(16, 8, 64), fixed(65)}, 64, "scalable16", 0},
        {"the border of a threshold is in it", {threshold(48), fixed(49)}, 50, "threshold48", 0},
        {"just outside a threshold", {threshold(48), fixed(56)}, 51, "threshold48", 3}};
    for (const auto &[name, files, devicePixels, best, distance] : rows) {
        const auto sorted = nearestFirst(files, devicePixels);
        ASSERT_EQ(sorted.size(), files.size()) << name;
        EXPECT_EQ(sorted.front().path, QLatin1String(best)) << name;
        EXPECT_EQ(sizeDistance(sorted.front(), devicePixels), distance) << name;
    }
}

} // namespace

} // namespace Orbita
