#include "settings/triggers/CircleDetector.h"

#include "base/Angle.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace Orbita {
namespace {

using Points = std::vector<QPointF>;

/// Samples at \a radius, each \a step degrees further, clockwise from \a first.
Points arc(std::size_t count, double step, double radius, double first = 10.0)
{
    Points points;
    for (std::size_t i = 0; i < count; ++i)
        points.push_back(QPointF(700, 500) + pointAtAngle(radius, (first + step * double(i)) * Pi / 180.0));
    return points;
}

/// Six samples that sweep \a sweep degrees from \a first on about their centroid.
Points sweep(double sweep, double first)
{
    const double half = sweep / 2.0;
    const auto cosine = [](double degrees) { return std::cos(degrees * Pi / 180.0); };
    const double balanced = -30.0 * (cosine(half) + cosine(100.0)) / cosine(50.0);
    Points points;
    for (const auto &[angle, radius] : std::vector<std::pair<double, double>>{
             {-half, 30.0}, {-100.0, 30.0}, {-50.0, balanced}, {50.0, balanced}, {100.0, 30.0}, {half, 30.0}})
        points.push_back(pointAtAngle(radius, (angle + half + first) * Pi / 180.0));
    return points;
}

/// Samples at angles in degrees and radii, then those opposite in the same order, so that the centroid is in between.
Points withOpposites(const std::vector<std::pair<double, double>> &samples)
{
    Points points;
    for (const double turn : {0.0, 180.0}) {
        for (const auto &[angle, radius] : samples)
            points.push_back(pointAtAngle(radius, (angle + turn) * Pi / 180.0));
    }
    return points;
}

Points joined(Points points, const Points &more)
{
    points.insert(points.end(), more.begin(), more.end());
    return points;
}

using std::chrono::milliseconds;

struct Row {
    const char *name;
    Points points;
    std::vector<std::size_t> completed; ///< the points that complete a circle
    milliseconds interval{50};
};

TEST(CircleDetector, FindsCirclesOnly)
{
    for (const auto &[name, points, completed, interval] : std::vector<Row>{
             {"clockwise with the sixth sample", arc(6, 60, 40), {5}},
             {"twice round is two", arc(12, 60, 40), {5, 11}},
             {"counter clockwise never", arc(24, -60, 40), {}},
             {"five samples never", arc(5, 72, 40), {}},
             {"a radius just too small never", arc(10, 36, 19.99), {}},
             {"a radius just large enough", arc(10, 36, 20.01), {9}},
             {"a sweep just too short", sweep(287.9, 30), {}},
             {"a sweep just long enough", sweep(288.1, 30), {5}},
             {"a sweep just too short past twelve", sweep(287.9, 336), {}},
             {"a sweep just long enough past twelve", sweep(288.1, 336), {5}},
             {"a step too wide to cross twelve from afar", sweep(288.1, 180), {}},
             {"a step too wide to cross twelve to afar", sweep(288.1, 315), {}},
             {"a step just too small", withOpposites({{10, 40}, {18.58, 40}, {70, 40}, {130, 40}}), {}},
             {"every step just large enough", withOpposites({{10, 40}, {18.61, 40}, {70, 40}, {130, 40}}), {7}},
             {"a sample just too near", withOpposites({{10, 40}, {55, 4.99}, {100, 40}, {145, 40}}), {}},
             {"every sample just far enough", withOpposites({{10, 40}, {55, 5.01}, {100, 40}, {145, 40}}), {7}},
             {"just within a second", arc(6, 60, 40), {5}, milliseconds(200)},
             {"just too slow", arc(12, 60, 40), {}, milliseconds(201)},
             {"samples that come too soon are skipped", arc(11, 30, 40), {10}, milliseconds(49)},
             {"a sweep counts from before a break", joined(arc(2, -5, 40), arc(6, 50, 40, 100)), {7}},
             {"the run before a break does not count", joined(arc(5, 60, 40), arc(1, 0, 40, 200)), {}},
             {"nowhere", joined(arc(1, 0, std::nan("")), arc(12, 60, 40)), {}}}) {
        CircleDetector detector;
        CircleDetector::Time now;
        std::vector<std::size_t> found;
        for (std::size_t i = 0; i < points.size(); ++i, now += interval) {
            EXPECT_EQ(detector.isDue(now), i == 0 || interval >= milliseconds(50) || i % 2 == 0) << name;
            if (detector.onPointer(points[i], now))
                found.push_back(i);
        }
        EXPECT_EQ(found, completed) << name;
    }
}

} // namespace
} // namespace Orbita
