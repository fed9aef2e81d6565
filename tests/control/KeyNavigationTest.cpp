#include "control/KeyNavigation.h"

#include "platform/KeyCodes.h"
#include "support/RowName.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

using namespace std::chrono_literals;
using Action = RingKeyPlan::Action;

constexpr quint16 letterA = 0;
constexpr quint16 shift = 56;

struct Row {
    const char *name;
    RingKey key;
    RingKeyContext context;
    RingKeyPlan plan;
};

class PlanRingKey : public testing::TestWithParam<Row> {};

TEST_P(PlanRingKey, decides)
{
    const RingKeyPlan plan = planRingKey(GetParam().key, GetParam().context);
    EXPECT_EQ(int(plan.action), int(GetParam().plan.action));
    EXPECT_EQ(plan.position, GetParam().plan.position);
    EXPECT_EQ(plan.lastTime, GetParam().plan.lastTime);
}

INSTANTIATE_TEST_SUITE_P(
    Keys, PlanRingKey,
    testing::Values(
        Row{"a pressed mouse button lets every key pass",
            {KeyCodes::Escape, 5s, false},
            {6, 2, {}},
            {Action::PassOn, NotFound, {}}},
        Row{"an empty ring lets every key pass",
            {KeyCodes::Escape, 5s},
            {0, NotFound, 4s},
            {Action::PassOn, NotFound, 4s}},
        Row{"Escape hides", {KeyCodes::Escape, 5s}, {6, NotFound, {}}, {Action::Hide, NotFound, {}}},
        Row{"Escape hides within the guard too",
            {KeyCodes::Escape, 5s},
            {6, 1, 4999ms},
            {Action::Hide, NotFound, 4999ms}},
        Row{"the first Return only selects", {KeyCodes::Return, 5s}, {6, NotFound, {}}, {Action::Highlight, 0, 5s}},
        Row{"the first letter selects too", {letterA, 5s}, {6, NotFound, {}}, {Action::Highlight, 0, 5s}},
        Row{"a modifier alone is no key of the ring", {shift, 5s}, {6, NotFound, {}}, {Action::PassOn, NotFound, {}}},
        Row{"right goes on", {KeyCodes::RightArrow, 5s}, {6, 2, {}}, {Action::Highlight, 3, 5s}},
        Row{"right wraps to the first", {KeyCodes::RightArrow, 5s}, {6, 5, {}}, {Action::Highlight, 0, 5s}},
        Row{"left goes back", {KeyCodes::LeftArrow, 5s}, {6, 2, {}}, {Action::Highlight, 1, 5s}},
        Row{"left wraps to the last", {KeyCodes::LeftArrow, 5s}, {6, 0, {}}, {Action::Highlight, 5, 5s}},
        Row{"Return clicks the selected item", {KeyCodes::Return, 5s}, {6, 4, {}}, {Action::Click, 4, 5s}},
        Row{"other keys are swallowed", {letterA, 5s}, {6, 4, {}}, {Action::Swallow, NotFound, 5s}},
        Row{"unknown keys are swallowed", {std::nullopt, 5s}, {6, 4, {}}, {Action::Swallow, NotFound, 5s}},
        Row{"a key at the guard's end does nothing",
            {KeyCodes::RightArrow, 5s},
            {6, 2, 4800ms},
            {Action::Swallow, NotFound, 4800ms}},
        Row{"a key just after the guard moves",
            {KeyCodes::RightArrow, 5s},
            {6, 2, 4799ms},
            {Action::Highlight, 3, 5s}}),
    rowName<Row>);

} // namespace
} // namespace Orbita
