#include "control/Tint.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

TEST(Tint, putsDarkOnLightAndLightOnDark)
{
    for (const QColor &light : {QColor(Qt::white), QColor(Qt::yellow), QColor::fromRgbF(0.67F, 0.67F, 0.67F)}) {
        EXPECT_EQ(highlightColorOn(light), QColor(Qt::black)) << qPrintable(light.name());
        EXPECT_LT(greyLevel(closeButtonColorOn(light)), 0.5);
    }
    for (const QColor &dark : {QColor(Qt::black), QColor(Qt::blue), QColor::fromRgbF(0.65F, 0.65F, 0.65F)}) {
        EXPECT_EQ(highlightColorOn(dark), QColor(Qt::white)) << qPrintable(dark.name());
        EXPECT_EQ(closeButtonColorOn(dark), QColor(Qt::white));
    }
}

} // namespace
} // namespace Orbita
