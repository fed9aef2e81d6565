#include "support/RowName.h"

#include "platform/evdev/TouchDecoder.h"

#include <QRandomGenerator>
#include <QRectF>
#include <QStringList>

#include <gtest/gtest.h>

#include <linux/input.h>

namespace Orbita {
namespace {

constexpr TouchpadAxes twoPlaces{{0, 100}, {0, 100}, 2};

/// "7:50,20": finger 7 at half the width and a fifth of the height; "+1:…" is the second finger without a place.
QString describe(const Touch &touch)
{
    const bool hasPlace = !(touch.identity & 0x80000000);
    return QStringLiteral("%1%2:%3,%4")
        .arg(QLatin1String(hasPlace ? "" : "+"))
        .arg(touch.identity & 0x7fffffff)
        .arg(qRound(touch.normalizedPosition.x() * 100))
        .arg(qRound(touch.normalizedPosition.y() * 100));
}

/// "s1 i7 x20": contact 1 gets finger 7 at 20. "T" stamps the frame. "3+" and "3-" are the tool key for three fingers,
/// "|" ends a frame.
bool take(TouchDecoder &decoder, const QString &word)
{
    static constexpr quint16 axes[]{ABS_MT_SLOT, ABS_MT_TRACKING_ID, ABS_MT_POSITION_X, ABS_MT_POSITION_Y,
                                    ABS_MT_TOOL_TYPE};
    static constexpr quint16 keys[]{BTN_LEFT, BTN_TOOL_DOUBLETAP, BTN_TOOL_TRIPLETAP, BTN_TOOL_QUADTAP};
    if (const auto axis = QStringLiteral("sixyt").indexOf(word[0]); axis >= 0)
        return decoder.take(EV_ABS, axes[axis], word.mid(1).toInt());
    if (word[0].isDigit())
        return decoder.take(EV_KEY, keys[word[0].digitValue() - 1], word[1] == u'+');
    if (word == u"T")
        return decoder.take(EV_MSC, MSC_TIMESTAMP, 1);
    if (word == u"|" || word == u"dropped")
        return decoder.take(EV_SYN, word == u"|" ? SYN_REPORT : SYN_DROPPED, 0);
    return word == u"lift" ? decoder.liftAll() : decoder.resynchronised();
}

/// The frames that \a script makes; an empty one is "-", and "*" marks those that magnify.
QString frames(const TouchpadAxes &axes, const QString &script)
{
    TouchDecoder decoder(axes, 1);
    QStringList frames;
    for (const QString &word : script.split(u' ')) {
        if (!take(decoder, word))
            continue;
        QStringList fingers;
        for (const Touch &touch : decoder.touching())
            fingers += describe(touch);
        const QString frame = fingers.isEmpty() ? QStringLiteral("-") : fingers.join(u' ');
        frames += decoder.hasMagnified() ? frame + u'*' : frame;
    }
    return frames.join(u" / ");
}

struct Row {
    const char *name;
    const char *script;
    const char *frames;
    TouchpadAxes axes = twoPlaces;
};

class TouchDecoding : public testing::TestWithParam<Row> {};

TEST_P(TouchDecoding, makesFramesOfEvents)
{
    EXPECT_EQ(frames(GetParam().axes, QString::fromLatin1(GetParam().script)).toStdString(), GetParam().frames);
}

INSTANTIATE_TEST_SUITE_P(
    Frames, TouchDecoding,
    testing::Values(
        Row{"y grows upwards", "s0 i7 x50 y20 | i-1 |", "7:50,80 / -"},
        Row{"a place is kept between fingers", "s0 i7 x50 y20 | i-1 | i8 |", "7:50,80 / - / 8:50,80"},
        Row{"a finger may replace another in one frame", "s0 i7 x50 y20 | i8 |", "7:50,80 / 8:50,80"},
        Row{"ranges may be negative and values outside", "s0 i1 x-200 y900 |", "1:25,0", {{-250, -50}, {-100, 0}, 1}},
        Row{"the widest ranges do not overflow",
            "s0 i1 x0 y2147483647 |",
            "1:50,0",
            {{INT32_MIN, INT32_MAX}, {INT32_MIN, INT32_MAX}, 1}},
        Row{"clicks tell nothing", "s0 i1 x10 y10 | 1+ | x20 |", "1:10,90 / 1:20,90"},
        Row{"a stamp tells of fingers that lie still", "s0 i1 x10 y10 | T |", "1:10,90 / 1:10,90"},
        Row{"nothing is told without a finger", "s0 x10 | 2+ 2- | T |", ""},
        Row{"contacts beyond the range disturb nobody", "s0 i1 x10 y10 s2 i5 x90 | s-1 i6 x80 | s0 x20 |",
            "1:10,90 / 1:20,90"},
        Row{"contacts beyond the bound disturb nobody",
            "s63 i1 x10 y10 s64 i5 x90 s999 x80 |",
            "1:10,90",
            {{0, 100}, {0, 100}, 1000}},
        Row{"fingers without a place are where the last one touched",
            "s0 i1 x10 y10 s1 i2 x30 y30 3+ | s0 x20 | s1 x40 4+ 3- | 4- 2+ |",
            "1:10,90 2:30,70 +0:30,70 / 1:20,90 2:30,70 +0:30,70* / 1:20,90 2:40,70 +0:40,70 +1:40,70 / "
            "1:20,90 2:40,70"},
        Row{"fingers outlast their places", "s0 i1 x10 y10 | i-1 2+ | 2- |", "1:10,90 / +0:10,90 +1:10,90 / -"},
        Row{"palms are left out and are no extra fingers", "s0 i1 x10 y10 s1 i2 t2 2+ | t0 |",
            "1:10,90 / 1:10,90 2:0,100"},
        Row{"half a state is not told", "s0 i1 x10 y10 | dropped i-1 | s1 i2 | resynchronised s1 x50 |",
            "1:10,90 / 2:0,100 / 2:50,100"},
        Row{"lifting all forgets all", "s0 i1 x10 y10 3+ | lift | x20 |", "1:10,90 +0:10,90 +1:10,90 / -"},
        Row{"a tenth more spread is no magnifying, further is", "s0 i1 x0 s1 i2 x50 | x54 | x56 |",
            "1:0,100 2:50,100 / 1:0,100 2:54,100 / 1:0,100 2:56,100*"},
        Row{"closing is magnifying, and the next starts there", "s0 i1 x0 s1 i2 x50 | x40 | x37 | x35 |",
            "1:0,100 2:50,100 / 1:0,100 2:40,100* / 1:0,100 2:37,100 / 1:0,100 2:35,100*"},
        Row{"moving together is no magnifying", "s0 i1 x0 s1 i2 x50 | s0 x50 s1 x100 |",
            "1:0,100 2:50,100 / 1:50,100 2:100,100"},
        Row{"another finger starts to magnify afresh", "s0 i1 x0 s1 i2 x50 | i3 x90 |",
            "1:0,100 2:50,100 / 1:0,100 3:90,100"},
        Row{"one finger never magnifies", "s0 i1 x0 | x90 |", "1:0,100 / 1:90,100"}),
    rowName<Row>);

TEST(TouchDecoder, keepsItsPromisesWhateverComes)
{
    QRandomGenerator random(7);
    TouchDecoder decoder({{-5, 90}, {3, 4}, 1000}, 3);
    static constexpr std::pair<quint16, quint16> firsts[]{{EV_SYN, 0}, {EV_KEY, BTN_TOOL_PEN}, {EV_ABS, ABS_MT_SLOT}};
    for (int i = 0; i < 300'000; ++i) {
        const auto [type, first] = firsts[random.bounded(3)];
        const qint32 value = random.bounded(8) ? random.bounded(-5, 100) : qint32(random.generate());
        if (!decoder.take(type, quint16(first + (type == EV_SYN ? 0 : random.bounded(16))), value))
            continue;
        for (const Touch &touch : decoder.touching()) {
            ASSERT_EQ(touch.identity >> 32, 3U);
            ASSERT_TRUE(QRectF(0, 0, 1, 1).contains(touch.normalizedPosition));
        }
    }
    EXPECT_LE(decoder.touching().size(), TouchDecoder::maximumContacts + 5);
}

} // namespace
} // namespace Orbita
