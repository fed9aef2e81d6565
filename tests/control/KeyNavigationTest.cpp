#include "control/KeyNavigation.h"

#include "platform/KeyCodes.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

using namespace std::chrono_literals;
using namespace KeyCodes;
using Action = RingKeyPlan::Action;

constexpr quint16 letterA = 0;
constexpr quint16 shift = 56;
constexpr auto now = 5000ms;

struct Row {
    const char *name;
    std::optional<quint16> code;
    RingKeyContext context;
    RingKeyPlan plan;
};

TEST(PlanRingKey, decides)
{
    for (const auto &[name, code, context, plan] :
         {Row{"an empty ring lets every key pass", Escape, {0, NotFound, 4s}, {Action::PassOn, NotFound, 4s}},
          Row{"Escape hides", Escape, {6, NotFound, {}}, {Action::Hide, NotFound, {}}},
          Row{"Escape hides within the guard too", Escape, {6, 1, 4999ms}, {Action::Hide, NotFound, 4999ms}},
          Row{"the first Return only selects", Return, {6, NotFound, {}}, {Action::Highlight, 0, now}},
          Row{"the first letter selects too", letterA, {6, NotFound, {}}, {Action::Highlight, 0, now}},
          Row{"a modifier alone is no key of the ring", shift, {6, NotFound, {}}, {Action::PassOn, NotFound, {}}},
          Row{"right goes on", RightArrow, {6, 2, {}}, {Action::Highlight, 3, now}},
          Row{"right wraps to the first", RightArrow, {6, 5, {}}, {Action::Highlight, 0, now}},
          Row{"left goes back", LeftArrow, {6, 2, {}}, {Action::Highlight, 1, now}},
          Row{"left wraps to the last", LeftArrow, {6, 0, {}}, {Action::Highlight, 5, now}},
          Row{"Return clicks the selected item", Return, {6, 4, {}}, {Action::Click, 4, now}},
          Row{"other keys are swallowed", letterA, {6, 4, {}}, {Action::Swallow, NotFound, now}},
          Row{"unknown keys are swallowed", std::nullopt, {6, 4, {}}, {Action::Swallow, NotFound, now}},
          Row{"at the guard's end nothing", RightArrow, {6, 2, 4800ms}, {Action::Swallow, NotFound, 4800ms}},
          Row{"a key just after the guard moves", RightArrow, {6, 2, 4799ms}, {Action::Highlight, 3, now}}}) {
        SCOPED_TRACE(name);
        EXPECT_TRUE(planRingKey({code, now}, context) == plan);
        EXPECT_TRUE(planRingKey({code, now, false}, context)
                    == (RingKeyPlan{Action::PassOn, NotFound, context.lastTime}))
            << "a pressed mouse button lets every key pass";
    }
}

} // namespace
} // namespace Orbita
