#include "ring/DiscPainter.h"

#include "support/RowName.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

QColor rgb(float red, float green, float blue, float alpha = 1.0F)
{
    return QColor::fromRgbF(red, green, blue, alpha);
}

struct FillRow {
    const char *name;
    QColor tint;
    Backdrop backdrop;
    QColor fill; ///< alpha 0 for no fill
};

class DiscFill : public testing::TestWithParam<FillRow> {};

TEST_P(DiscFill, followsTintAndBackdrop)
{
    const QColor fill = discFill(GetParam().tint, GetParam().backdrop);
    EXPECT_NEAR(fill.alphaF(), GetParam().fill.alphaF(), 1e-4);
    if (GetParam().fill.alpha() > 0) {
        EXPECT_EQ(fill.rgb(), GetParam().fill.rgb());
    }
}

INSTANTIATE_TEST_SUITE_P(
    Table, DiscFill,
    testing::Values(FillRow{"none blurred is clear", {}, Backdrop::Blurred, Qt::transparent},
                    FillRow{"none is white", {}, Backdrop::Clear, rgb(1, 1, 1, 0.95F)},
                    FillRow{"white blurred is clear", Qt::white, Backdrop::Blurred, Qt::transparent},
                    FillRow{"white is white", Qt::white, Backdrop::Clear, rgb(1, 1, 1, 0.95F)},
                    FillRow{"black blurred is half transparent", Qt::black, Backdrop::Blurred, rgb(0, 0, 0, 0.5F)},
                    FillRow{"black is black", Qt::black, Backdrop::Clear, rgb(0, 0, 0, 0.95F)},
                    FillRow{"a colour blurred", rgb(0.2F, 0.4F, 0.6F), Backdrop::Blurred, rgb(0.2F, 0.4F, 0.6F, 0.6F)},
                    FillRow{"a colour", rgb(0.2F, 0.4F, 0.6F), Backdrop::Clear, rgb(0.2F, 0.4F, 0.6F, 0.95F)},
                    FillRow{"a see through colour", rgb(0.2F, 0.4F, 0.6F, 0.1F), Backdrop::Blurred,
                            rgb(0.2F, 0.4F, 0.6F, 0.6F)},
                    FillRow{"not quite black blurred", rgb(0.01F, 0, 0), Backdrop::Blurred, rgb(0.01F, 0, 0, 0.6F)},
                    FillRow{"nothing shines through where nothing is blended", Qt::black, Backdrop::None, Qt::black},
                    FillRow{"white is opaque there", Qt::white, Backdrop::None, Qt::white}),
    rowName<FillRow>);

TEST(CountsAsWhite, beginsStrictlyAbove)
{
    EXPECT_TRUE(countsAsWhite(rgb(0.995F, 0.995F, 0.995F)));
    EXPECT_FALSE(countsAsWhite(rgb(0.99F, 1, 1)));
    EXPECT_FALSE(countsAsWhite(QColor()));
    EXPECT_FALSE(countsAsBlack(QColor()));
    EXPECT_TRUE(countsAsBlack(rgb(0.005F, 0, 0.009F)));
}

struct TintRow {
    const char *name;
    QColor tint;
    Backdrop backdrop;
    QColor kept;
};

class Tint : public testing::TestWithParam<TintRow> {};

TEST_P(Tint, darkensWithoutBlur)
{
    const QColor kept = tintFor(GetParam().tint, GetParam().backdrop);
    ASSERT_EQ(kept.isValid(), GetParam().kept.isValid());
    EXPECT_EQ(kept.rgba(), GetParam().kept.rgba());
}

INSTANTIATE_TEST_SUITE_P(
    Rules, Tint,
    testing::Values(TintRow{"brightness 0.5 becomes 0.3", QColor::fromHsvF(0.6F, 0.5F, 0.5F), Backdrop::Clear,
                            QColor::fromHsvF(0.6F, 0.5F, 0.3F).toRgb()},
                    TintRow{"brightness 0.2 stays", QColor::fromHsvF(0.6F, 0.5F, 0.2F), Backdrop::Clear,
                            QColor::fromHsvF(0.6F, 0.5F, 0.2F).toRgb()},
                    TintRow{"grey has no hue", rgb(0.5F, 0.5F, 0.5F), Backdrop::None, rgb(0.3F, 0.3F, 0.3F)},
                    TintRow{"black stays", Qt::black, Backdrop::Clear, Qt::black},
                    TintRow{"alpha is dropped", rgb(0.1F, 0, 0, 0.2F), Backdrop::Clear, rgb(0.1F, 0, 0)},
                    TintRow{"white stays", rgb(0.995F, 1, 1), Backdrop::Clear, rgb(0.995F, 1, 1)},
                    TintRow{"blur leaves it as given", rgb(0.5F, 0.1F, 0.1F, 0.2F), Backdrop::Blurred,
                            rgb(0.5F, 0.1F, 0.1F, 0.2F)},
                    TintRow{"none stays none", {}, Backdrop::Clear, {}}),
    rowName<TintRow>);

} // namespace
} // namespace Orbita
