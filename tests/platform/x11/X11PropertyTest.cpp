#include "platform/x11/X11Property.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

TEST(IconFromCardinals, takesTheLargestCompletePictureAndNothingElse)
{
    struct Row {
        const char *name;
        std::vector<quint32> data;
        QSize size;
    };
    const Row rows[]{
        {"the larger of two", {1, 1, 0xff000000, 2, 1, 0xff000000, 0xff000000}, {2, 1}},
        {"complete ones before one that is cut off", {1, 1, 0xff000000, 2, 2, 0}, {1, 1}},
        {"no picture in nothing", {}, {}},
        {"a size alone", {2, 2}, {}},
        {"no width", {0, 5, 1, 1, 0xff000000}, {1, 1}},
        {"sides whose product overflows", {0x10000, 0x10000, 0, 0}, {}},
        {"the largest numbers", {0xffffffff, 0xffffffff, 1, 2}, {}},
    };
    for (const Row &row : rows) {
        const QImage icon = iconFromCardinals(row.data);
        EXPECT_EQ(icon.isNull() ? QSize() : icon.size(), row.size) << row.name;
    }
    std::vector<quint32> tooWide(2 + 513);
    tooWide[0] = 513;
    tooWide[1] = 1;
    EXPECT_TRUE(iconFromCardinals(tooWide).isNull());
}

} // namespace
} // namespace Orbita
