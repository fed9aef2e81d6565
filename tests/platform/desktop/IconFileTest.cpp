#include "platform/desktop/IconFile.h"

#include <gtest/gtest.h>

#include "support/RowName.h"

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

struct Row {
    const char *name;
    std::vector<IconFile> files;
    int devicePixels;
    QString best;
    int distance;
};

class NearestFirst : public testing::TestWithParam<Row> {};

TEST_P(NearestFirst, FollowsTheDistance)
{
    const auto sorted = nearestFirst(GetParam().files, GetParam().devicePixels);
    ASSERT_EQ(sorted.size(), GetParam().files.size());
    EXPECT_EQ(sorted.front().path, GetParam().best);
    EXPECT_EQ(sizeDistance(sorted.front(), GetParam().devicePixels), GetParam().distance);
}

INSTANTIATE_TEST_SUITE_P(
    Files, NearestFirst,
    testing::Values(
        Row{"the exact size wins", {fixed(16), fixed(48), fixed(64)}, 48, QStringLiteral("fixed48@1"), 0},
        Row{"a doubled one counts in device pixels", {fixed(48), fixed(32, 2)}, 64, QStringLiteral("fixed32@2"), 0},
        Row{"the nearest when none fits", {fixed(16), fixed(256)}, 320, QStringLiteral("fixed256@1"), 64},
        Row{"the larger of two as near", {fixed(32), fixed(64)}, 48, QStringLiteral("fixed64@1"), 16},
        Row{"a range that holds the size", {fixed(256), scalable(128, 8, 512)}, 320, QStringLiteral("scalable128"), 0},
        Row{"a range that ends too early", {fixed(256), scalable(16, 8, 64)}, 320, QStringLiteral("fixed256@1"), 64},
        Row{"the border of a range is in it", {scalable(16, 8, 64), fixed(65)}, 64, QStringLiteral("scalable16"), 0},
        Row{"the border of a threshold is in it", {threshold(48), fixed(49)}, 50, QStringLiteral("threshold48"), 0},
        Row{"just outside a threshold", {threshold(48), fixed(56)}, 51, QStringLiteral("threshold48"), 3}),
    rowName<Row>);

} // namespace

} // namespace Orbita
