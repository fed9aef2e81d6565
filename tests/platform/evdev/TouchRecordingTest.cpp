#include "desktop/harness/Wait.h"
#include "support/RowName.h"
#include "support/TemporaryContainer.h"

#include "platform/evdev/RecordedTouchEventTap.h"

#include <gtest/gtest.h>

#include <linux/input.h>

namespace Orbita {
namespace {

using namespace std::chrono_literals;

#define PAD "A: 2f 0 1 0 0 0\nA: 35 0 100 0 0 12\nA: 36 -100 0 0 0\n"

struct Row {
    const char *name;
    const char *text;
    const char *error;
};

class BadTouchRecording : public testing::TestWithParam<Row> {};

TEST_P(BadTouchRecording, isRefusedWithTheReason)
{
    const auto recording = TouchRecording::parse(GetParam().text);
    ASSERT_FALSE(recording);
    EXPECT_EQ(recording.error().toStdString(), GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, BadTouchRecording,
    testing::Values(
        Row{"nothing", "", "The recording is not one of a touchpad"},
        Row{"an axis without length", PAD "A: 35 7 7 0 0 0\n", "The recording is not one of a touchpad"},
        Row{"no place for a finger", PAD "A: 2f 0 -2147483648 0 0\n", "The recording is not one of a touchpad"},
        Row{"a truncated event", PAD "E: 0.000000 0003 0039", "Line 4 of the recording is no event"},
        Row{"a value beyond its type", PAD "E: 0.0 3 39 2147483648\n", "Line 4 of the recording is no event"},
        Row{"a code beyond its type", PAD "E: 0.0 3 10039 1\n", "Line 4 of the recording is no event"},
        Row{"a negative time", PAD "E: -1.0 3 39 1\n", "Line 4 of the recording is no event"},
        Row{"more than a day", PAD "E: 1.0 0 0 0\nE: 86401.000001 0 0 0\n",
            "Line 5 of the recording is later than a day after the first event"},
        Row{"another text", PAD "hello\n", "Line 4 of the recording is of no known kind"}),
    rowName<Row>);

TEST(TouchRecording, readsWhatTheRecorderWrites)
{
    const auto recording = TouchRecording::parse(
        "# EVEMU 1.3\r\nN: Pad #1\nI: 0018 04f3 30aa 0100\nP: 05 00\nB: 00 0b\nL: 00\nS: 00 0\n\n"
        "A: 2f 0 999 0 0 0\nA: 35 -10 10 0 0 0\nA: 36 0 5 0 0 0\nA: 18 0 9 0 0 0\n"
        "E: 7.999999 0003 0035 -012\t# EV_ABS\nE: 9.000001 0000 0000 0000\nE: 8.0 1 14a 1\nE: 8.25 0 0 0");
    ASSERT_TRUE(recording) << recording.error().toStdString();
    EXPECT_EQ(recording->axes.x.minimum, -10);
    EXPECT_EQ(recording->axes.contacts, TouchDecoder::maximumContacts);
    ASSERT_EQ(recording->events.size(), 4U);
    EXPECT_EQ(recording->events[0].value, -12);
    EXPECT_EQ(recording->events[2].code, BTN_TOUCH);
    EXPECT_EQ(recording->events[2].due, 1'000'002us) << "backwards";
    EXPECT_EQ(recording->events[3].due, 1'250'002us);
}

TEST(TouchRecording, loadsOnlyBoundedFiles)
{
    const TemporaryContainer container;
    const QByteArray text(PAD);
    const QByteArray filling(TouchRecording::maximumSize - text.size(), '\n');
    EXPECT_TRUE(TouchRecording::load(container.write(QStringLiteral("full"), text + filling)));
    EXPECT_FALSE(TouchRecording::load(container.write(QStringLiteral("larger"), text + filling + '\n')));
    EXPECT_FALSE(TouchRecording::load(QStringLiteral("/dev/zero")));
}

TEST(RecordedTouchEventTap, playsInRealTimeFromTheFirstEnablingAndLiftsAtTheEnd)
{
    const QByteArray text = PAD "E: 5.0 3 39 1\nE: 5.0 0 0 0\nE: 5.08 3 35 50\nE: 5.08 0 0 0\n"
                                "E: 5.08 0 3 0\nE: 5.08 3 35 60\nE: 5.08 0 0 0\n"
                                "E: 5.08 3 39 2\nE: 5.08 0 0 0\n";
    RecordedTouchEventTap tap(*TouchRecording::parse(text));
    QElapsedTimer clock;
    std::vector<qsizetype> fingers;
    qint64 secondFrame = 0;
    QObject::connect(&tap, &TouchEventTap::gesture, &tap, [&](const Touches &touching) {
        fingers.push_back(touching.size());
        if (fingers.size() == 2)
            secondFrame = clock.elapsed();
    });
    bool isFinished = false;
    QObject::connect(&tap, &RecordedTouchEventTap::finished, &tap, [&] { isFinished = true; });
    EXPECT_FALSE(tap.isEnabled());
    clock.start();
    EXPECT_TRUE(tap.setEnabled(true));
    ASSERT_TRUE(eventually([&] { return isFinished; }));
    EXPECT_EQ(fingers, (std::vector<qsizetype>{1, 1, 0, 1, 0})); // what was dropped lifts, too
    EXPECT_GE(secondFrame, 80);
    EXPECT_TRUE(tap.isEnabled());
}

} // namespace
} // namespace Orbita
