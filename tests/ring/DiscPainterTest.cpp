#include "ring/DiscPainter.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

QColor rgb(float red, float green, float blue, float alpha = 1.0F)
{
    return QColor::fromRgbF(red, green, blue, alpha);
}

struct Row {
    const char *name;
    QColor tint;
    Backdrop backdrop;
    QColor expected;
};

TEST(DiscFill, followsTintAndBackdrop)
{
    for (const auto &[name, tint, backdrop, expected] :
         {Row{"none blurred is clear", {}, Backdrop::Blurred, Qt::transparent},
          Row{"none is white", {}, Backdrop::Clear, rgb(1, 1, 1, 0.95F)},
          Row{"white blurred is clear", Qt::white, Backdrop::Blurred, Qt::transparent},
          Row{"white is white", Qt::white, Backdrop::Clear, rgb(1, 1, 1, 0.95F)},
          Row{"black blurred is half transparent", Qt::black, Backdrop::Blurred, rgb(0, 0, 0, 0.5F)},
          Row{"black is black", Qt::black, Backdrop::Clear, rgb(0, 0, 0, 0.95F)},
          Row{"a see through colour blurred", rgb(0.2F, 0.4F, 0.6F, 0.1F), Backdrop::Blurred,
              rgb(0.2F, 0.4F, 0.6F, 0.6F)},
          Row{"a colour", rgb(0.2F, 0.4F, 0.6F), Backdrop::Clear, rgb(0.2F, 0.4F, 0.6F, 0.95F)},
          Row{"not quite black blurred", rgb(0.01F, 0, 0), Backdrop::Blurred, rgb(0.01F, 0, 0, 0.6F)},
          Row{"not quite white blurred", rgb(0.99F, 1, 1), Backdrop::Blurred, rgb(0.99F, 1, 1, 0.6F)},
          Row{"nothing shines through where nothing is blended", Qt::black, Backdrop::None, Qt::black},
          Row{"white is opaque there", Qt::white, Backdrop::None, Qt::white}}) {
        SCOPED_TRACE(name);
        const QColor fill = discFill(tint, backdrop);
        EXPECT_NEAR(fill.alphaF(), expected.alphaF(), 1e-4);
        EXPECT_TRUE(expected.alpha() == 0 || fill.rgb() == expected.rgb());
    }
}

TEST(Tint, darkensWithoutBlur)
{
    for (const auto &[name, tint, backdrop, expected] :
         {Row{"brightness 0.5 becomes 0.3", QColor::fromHsvF(0.6F, 0.5F, 0.5F), Backdrop::Clear,
              QColor::fromHsvF(0.6F, 0.5F, 0.3F).toRgb()},
          Row{"brightness 0.2 stays", QColor::fromHsvF(0.6F, 0.5F, 0.2F), Backdrop::Clear,
              QColor::fromHsvF(0.6F, 0.5F, 0.2F).toRgb()},
          Row{"grey has no hue", rgb(0.5F, 0.5F, 0.5F), Backdrop::None, rgb(0.3F, 0.3F, 0.3F)},
          Row{"black stays", Qt::black, Backdrop::Clear, Qt::black},
          Row{"alpha is dropped", rgb(0.1F, 0, 0, 0.2F), Backdrop::Clear, rgb(0.1F, 0, 0)},
          Row{"white stays", rgb(0.995F, 1, 1), Backdrop::Clear, rgb(0.995F, 1, 1)},
          Row{"blur leaves it", rgb(0.5F, 0.1F, 0.1F, 0.2F), Backdrop::Blurred, rgb(0.5F, 0.1F, 0.1F, 0.2F)},
          Row{"none stays none", {}, Backdrop::Clear, {}}}) {
        SCOPED_TRACE(name);
        const QColor kept = tintFor(tint, backdrop);
        EXPECT_EQ(kept.isValid(), expected.isValid());
        EXPECT_EQ(kept.rgba(), expected.rgba());
    }
}

} // namespace
} // namespace Orbita
