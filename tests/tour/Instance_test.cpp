#include "examples/tour/Instance.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "TourKit.h"
#include "examples/tour/TsplibFile.h"

namespace tour {
namespace {

using testing::ElementsAre;

TEST(TourMetric, RoundsEuclideanDistancesToTheNearest) {
    EXPECT_EQ(Distance(Metric::Euclidean, {0, 0}, {3, 4}), 5);
    EXPECT_EQ(Distance(Metric::Euclidean, {0, 0}, {1, 1}), 1);
    EXPECT_EQ(Distance(Metric::Euclidean, {0, 0}, {2, 2}), 3);
    EXPECT_EQ(Distance(Metric::Euclidean, {0, 0}, {0.5, 0}), 1);
    EXPECT_EQ(Distance(Metric::Euclidean, {7, 7}, {7, 7}), 0);
}

TEST(TourMetric, RoundsCeilingDistancesUp) {
    EXPECT_EQ(Distance(Metric::EuclideanCeiling, {0, 0}, {3, 4}), 5);
    EXPECT_EQ(Distance(Metric::EuclideanCeiling, {0, 0}, {1, 1}), 2);
}

TEST(TourMetric, RoundsPseudoEuclideanDistancesUp) {
    EXPECT_EQ(Distance(Metric::PseudoEuclidean, {0, 0}, {10, 0}), 4);
    EXPECT_EQ(Distance(Metric::PseudoEuclidean, {0, 0}, {30, 10}), 10);
    EXPECT_EQ(Distance(Metric::PseudoEuclidean, {0, 0}, {0, 0}), 0);
}

TEST(TourMetric, TakesGeographicalCoordinatesAsDegreesAndMinutes) {
    // 30 minutes are half a degree: 6378.388 * pi / 360, and one kilometre for the rounding.
    EXPECT_EQ(Distance(Metric::Geographical, {10.00, 20.00}, {10.30, 20.00}), 56);
    EXPECT_EQ(Distance(Metric::Geographical, {-10.00, 20.00}, {-10.30, 20.00}), 56);
    EXPECT_EQ(Distance(Metric::Geographical, {0, 0}, {0, 90}), 10020);
}

TEST(TourMetric, GivesTheKnownLengthOfAGeographicalInstance) {
    EXPECT_EQ(ShortestTour(ReadTsplib(Burma, "")), 3323);
}

TEST(TourMetric, MeasuresGreatCirclesInKilometres) {
    EXPECT_EQ(Distance(Metric::GreatCircle, {0, 0}, {0, 90}), 10008);
    EXPECT_EQ(Distance(Metric::GreatCircle, {-90, 0}, {90, 0}), 20015);
    EXPECT_EQ(Distance(Metric::GreatCircle, {179, 0}, {-179, 0}), 222);
    EXPECT_EQ(Distance(Metric::GreatCircle, {5, 5}, {5, 5}), 0);
}

TEST(TourInstance, MeasuresClosedTours) {
    const Instance square("square", Metric::Euclidean, {{0, 0}, {10, 0}, {10, 10}, {0, 10}});

    EXPECT_EQ(square.Length({0, 1, 2, 3}), 40);
    EXPECT_EQ(square.Length({0, 2, 1, 3}), 48);
    EXPECT_EQ(square.Length({0, 1}), 20);
    EXPECT_EQ(square.Length({3}), 0);
}

TEST(TourInstance, NamesTheNearestCitiesInOrder) {
    const Instance line("line", Metric::Euclidean, {{0, 0}, {10, 0}, {30, 0}, {31, 0}});

    EXPECT_THAT(line.Neighbours(2), ElementsAre(1, 2, 0, 2, 3, 1, 2, 1));
}

TEST(TourInstance, MeasuresAlikeWithAndWithoutAMatrix) {
    std::vector<Point> points;
    for (int i = 0; i < 4001; ++i) {
        points.push_back({1.7 * i, 0.3 * (i % 7)});
    }
    const Instance many("many", Metric::Euclidean, points);
    const Instance few("few", Metric::Euclidean, {points.begin(), points.begin() + 50});

    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(many.Distance(i, 49 - i), few.Distance(i, 49 - i));
    }
}

TEST(TourInstance, RefusesNoCitiesAndTooMany) {
    EXPECT_THROW(Instance("none", Metric::Euclidean, {}), std::runtime_error);
    EXPECT_THROW(Instance("many", Metric::Euclidean, std::vector<Point>(Instance::MaxCities + 1)),
                 std::runtime_error);
}

TEST(TourInstance, RefusesDistancesThatHaveNoRoom) {
    EXPECT_THROW(Instance("far", Metric::Euclidean, {{-2e9, 0}, {2e9, 0}}), std::runtime_error);
    EXPECT_THROW(Instance("far", Metric::Euclidean, {{-1e308, 0}, {1e308, 1e308}}), std::runtime_error);
}

}  // namespace
}  // namespace tour
