#include "settings/triggers/FingerRestDetector.h"
#include "settings/triggers/FingerSpreadDetector.h"

#include <gtest/gtest.h>

#include <limits>
#include <string_view>
#include <vector>

namespace Orbita {
namespace {

/// Fingers in a row, named from \a first on, moved right by \a offset.
Touches fingers(quint64 count, double offset = 0.0, quint64 first = 1)
{
    Touches touches;
    for (quint64 i = 0; i < count; ++i)
        touches.append({first + i, {0.125 * double(i) + offset, 0.5}});
    return touches;
}

/// Four fingers at \a radius from their middle.
Touches spread(double radius)
{
    return {{1, {radius, 0}}, {2, {-radius, 0}}, {3, {0, radius}}, {4, {0, -radius}}};
}

TEST(FingerRestDetector, AsksForChecks)
{
    // The numbers of fingers, and where a check is asked for.
    for (const auto &[counts, asked] : std::vector<std::pair<std::string_view, std::string_view>>{
             {"33333", ".!.!."}, {"23", ".!"}, {"2433", "...!"}, {"44221", "....."}, {"4033", "...!"}}) {
        FingerRestDetector detector;
        for (std::size_t i = 0; i < counts.size(); ++i)
            EXPECT_EQ(detector.onTouches(3, fingers(quint64(counts[i] - '0'))), asked[i] == '!') << counts << i;
    }
}

TEST(FingerRestDetector, ChecksThatTheSameFingersAreWhereTheyWere)
{
    const double far = std::numeric_limits<double>::infinity();
    Touches oneMoved = fingers(3);
    oneMoved[2].normalizedPosition += {0.0, 0.07}; // 0.023 on average
    const Touches turned{fingers(3)[2], fingers(3)[0], fingers(3)[1]};
    for (const auto &[name, now, rested] :
         std::vector<std::tuple<const char *, Touches, bool>>{{"still", fingers(3), true},
                                                              {"in another order", turned, true},
                                                              {"a little off", fingers(3, 0.0249), true},
                                                              {"one off, little on average", oneMoved, true},
                                                              {"off by the limit", fingers(3, 0.025), false},
                                                              {"one replaced", fingers(3, 0.0, 2), false},
                                                              {"one lifted", fingers(2), false},
                                                              {"one joined", fingers(4), false},
                                                              {"all lifted", {}, false},
                                                              {"nowhere", fingers(3, far - far), false},
                                                              {"infinitely far", fingers(3, far), false}}) {
        FingerRestDetector detector;
        EXPECT_FALSE(detector.check()) << "none was asked for";
        ASSERT_FALSE(detector.onTouches(3, fingers(3)));
        ASSERT_TRUE(detector.onTouches(3, fingers(3)));
        EXPECT_FALSE(detector.onTouches(3, now));
        EXPECT_EQ(detector.check(), rested) << name;
    }
}

TEST(FingerRestDetector, DecidesEachCheckByItself)
{
    FingerRestDetector detector;
    for (const double offset : {0.0, 0.0, 0.1, 0.1})
        (void)detector.onTouches(3, fingers(3, offset));
    EXPECT_FALSE(detector.check()) << "they were elsewhere";
    EXPECT_TRUE(detector.check());

    for (int event = 0; event < 4; ++event)
        (void)detector.onTouches(3, fingers(3));
    detector.onMagnify();
    (void)detector.onTouches(3, fingers(3));
    EXPECT_FALSE(detector.check()) << "a pinch is no rest";
    EXPECT_FALSE(detector.check());
    (void)detector.onTouches(3, fingers(3));
    EXPECT_TRUE(detector.check()) << "which is over";
}

TEST(FingerSpreadDetector, FiresOnceWhenTheFingersHaveSpread)
{
    const double far = std::numeric_limits<double>::infinity();
    const Touches one = fingers(1);
    for (const auto &[name, events, fired] : std::vector<std::tuple<const char *, std::vector<Touches>, int>>{
             {"to the limit", {spread(0.25), spread(0.375)}, 0},
             {"beyond it, once", {spread(0.25), spread(0.376), spread(0.5), spread(0.1), spread(0.9)}, 1},
             {"slowly", {spread(0.25), spread(0.3), spread(0.35), spread(0.4)}, 1},
             {"a pinch, and apart again", {spread(0.3), spread(0.1), spread(0.4)}, 0},
             {"again with other fingers", {spread(0.1), spread(0.2), one, spread(0.1), spread(0.2)}, 2},
             {"again after lifting", {spread(0.1), spread(0.2), {}, spread(0.1), spread(0.2)}, 2},
             {"measured anew with four", {spread(0.1), one, spread(0.2)}, 0},
             {"all at one point is no measure", {spread(0.0), spread(0.2), spread(0.25)}, 0},
             {"nowhere", {spread(far), spread(0.1), spread(far), spread(far - far), spread(0.14)}, 0}}) {
        FingerSpreadDetector detector;
        int count = 0;
        for (const Touches &touching : events)
            count += detector.onTouches(4, touching) ? 1 : 0;
        EXPECT_EQ(count, fired) << name;
    }
}

} // namespace
} // namespace Orbita
