#include "examples/tour/LocalSearch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "TourKit.h"

namespace tour {
namespace {

using testing::ElementsAre;

Instance RandomInstance(int nFewest, int nMost) {
    const auto coordinate =
        rc::gen::map(rc::gen::inRange(0, 1000), [](int n) { return static_cast<double>(n); });
    const auto n = *rc::gen::inRange(nFewest, nMost + 1);
    const auto numbers =
        *rc::gen::container<std::vector<double>>(static_cast<std::size_t>(2 * n), coordinate);
    std::vector<Point> points;
    for (std::size_t i = 0; i < numbers.size(); i += 2) {
        points.push_back({numbers[i], numbers[i + 1]});
    }
    return {"random", Metric::Euclidean, points};
}

std::vector<int> RandomOrder(int n) {
    std::vector<int> order(static_cast<std::size_t>(n));
    std::iota(order.begin(), order.end(), 0);
    for (std::size_t i = order.size(); i > 1; --i) {
        std::swap(order[i - 1], order[*rc::gen::inRange<std::size_t>(0, i)]);
    }
    return order;
}

TEST(TourLocalSearch, LeavesAFewCitiesAlone) {
    const Instance square("square", Metric::Euclidean, {{0, 0}, {10, 0}, {10, 10}, {0, 10}});
    std::vector<int> order = {0, 2, 1, 3};

    LocalSearch(square).Improve(order);

    EXPECT_THAT(order, ElementsAre(0, 2, 1, 3));
}

TEST(TourLocalSearch, UntanglesACrossing) {
    const std::vector<double> angles = {0, 72, 144, 216, 288};
    const Instance pentagon = OnACircle(angles);
    std::vector<int> star = {0, 2, 4, 1, 3};

    LocalSearch(pentagon).Improve(star);

    EXPECT_EQ(pentagon.Length(star), LengthOfPolygon(pentagon, angles));
}

TEST(TourLocalSearch, EndsOnCitiesThatAllLieOnOnePoint) {
    const Instance heap("heap", Metric::Euclidean, std::vector<Point>(30, Point{5, 5}));
    std::vector<int> order(30);
    std::iota(order.begin(), order.end(), 0);

    LocalSearch(heap).Improve(order);

    EXPECT_TRUE(IsTour(order, 30));
}

RC_GTEST_PROP(TourLocalSearch, MakesAShorterTourOfTheSameCities, ()) {
    const Instance instance = RandomInstance(1, 60);
    std::vector<int> order = RandomOrder(instance.Cities());
    const long nBefore = instance.Length(order);

    LocalSearch(instance).Improve(order);

    RC_ASSERT(IsTour(order, instance.Cities()));
    RC_ASSERT(instance.Length(order) <= nBefore);
}

RC_GTEST_PROP(TourLocalSearch, LeavesNoTwoRoadsThatAreBetterExchanged, ()) {
    // Nine cities: each of them is near every other.
    const Instance instance = RandomInstance(5, 9);
    std::vector<int> order = RandomOrder(instance.Cities());
    LocalSearch(instance).Improve(order);

    for (std::size_t i = 0; i < order.size(); ++i) {
        for (std::size_t j = i + 1; j < order.size(); ++j) {
            std::vector<int> exchanged = order;
            std::reverse(exchanged.begin() + static_cast<long>(i),
                         exchanged.begin() + static_cast<long>(j) + 1);
            RC_ASSERT(instance.Length(exchanged) >= instance.Length(order));
        }
    }
}

RC_GTEST_PROP(TourLocalSearch, GivesTheSameForTheSame, ()) {
    const Instance instance = RandomInstance(1, 40);
    std::vector<int> first = RandomOrder(instance.Cities());
    std::vector<int> second = first;
    LocalSearch used(instance);
    std::vector<int> other = RandomOrder(instance.Cities());
    used.Improve(other);

    used.Improve(first);
    LocalSearch(instance).Improve(second);

    RC_ASSERT(first == second);
}

}  // namespace
}  // namespace tour
