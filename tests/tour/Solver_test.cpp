#include "examples/tour/Solver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <random>

#include "TourKit.h"
#include "examples/tour/TsplibFile.h"

namespace tour {
namespace {

Settings Generations(long n, unsigned nSeed = 1) {
    Settings settings;
    settings.m_nPopSize = 10;
    settings.m_nSeed = nSeed;
    settings.m_nGenerations = n;
    return settings;
}

Result SolveAlone(const Instance& instance, const Settings& settings) {
    return Solve(instance, settings, Islands(0, nullptr, false));
}

/// Stops where nothing is left to gain.
Result SolveTo(long nTarget, const Instance& instance, unsigned nSeed) {
    Settings settings = Generations(60, nSeed);
    settings.m_nPopSize = 20;
    settings.m_limits.m_nTarget = nTarget;
    return SolveAlone(instance, settings);
}

class SolverFindsTheShortestTour : public testing::TestWithParam<unsigned> {};

TEST_P(SolverFindsTheShortestTour, RoundPointsOnACircle) {
    for (const int n : {5, 8, 31, 100, 150}) {
        std::mt19937 random(GetParam());
        std::vector<double> angles;
        for (int i = 0; i < n; ++i) {
            angles.push_back(360.0 * static_cast<double>(random()) / 4294967296.0);
        }
        const Instance instance = OnACircle(angles);
        const long nShortest = LengthOfPolygon(instance, angles);

        EXPECT_EQ(SolveTo(nShortest, instance, GetParam()).m_nLength, nShortest) << n << " points";
    }
}

TEST_P(SolverFindsTheShortestTour, RoundClustersOnACircle) {
    std::vector<double> angles;
    for (int nCluster = 0; nCluster < 12; ++nCluster) {
        for (int i = 0; i < 10; ++i) {
            angles.push_back(30.0 * nCluster + 0.05 * (i * 7 % 10));
        }
    }
    const Instance instance = OnACircle(angles);
    const long nShortest = LengthOfPolygon(instance, angles);

    EXPECT_EQ(SolveTo(nShortest, instance, GetParam()).m_nLength, nShortest);
}

TEST_P(SolverFindsTheShortestTour, OfAGrid) {
    for (const auto& [nColumns, nRows] :
         {std::pair(2, 5), std::pair(5, 5), std::pair(9, 8), std::pair(11, 11)}) {
        const long nShortest = ShortestTourOfGrid(nColumns, nRows);

        EXPECT_EQ(SolveTo(nShortest, Grid(nColumns, nRows), GetParam()).m_nLength, nShortest)
            << nColumns << " x " << nRows;
    }
}

TEST_P(SolverFindsTheShortestTour, OfBurma) {
    EXPECT_EQ(SolveTo(3323, ReadTsplib(Burma, ""), GetParam()).m_nLength, 3323);
}

INSTANTIATE_TEST_SUITE_P(Seeds, SolverFindsTheShortestTour, testing::Range(1U, TOUR_SEEDS + 1U));

RC_GTEST_PROP(Solver, AgreesWithAnExactSolverOnFewCities, ()) {
    const auto coordinate =
        rc::gen::map(rc::gen::inRange(0, 100), [](int n) { return static_cast<double>(n); });
    std::vector<Point> points(*rc::gen::inRange<std::size_t>(1, 10));
    for (Point& point : points) {
        point = {*coordinate, *coordinate};
    }
    const Instance instance("random", Metric::Euclidean, points);
    const auto nSeed = *rc::gen::arbitrary<unsigned>();

    const Result result = SolveAlone(instance, Generations(20, nSeed));

    RC_ASSERT(IsTour(result.m_order, instance.Cities()));
    RC_ASSERT(result.m_nLength == instance.Length(result.m_order));
    RC_ASSERT(result.m_nLength == ShortestTour(instance));
}

TEST(Solver, RunsAsManyGenerationsAsAsked) {
    EXPECT_EQ(SolveAlone(Grid(4, 4), Generations(0)).m_nGenerations, 0);
    EXPECT_EQ(SolveAlone(Grid(4, 4), Generations(7)).m_nGenerations, 7);
}

TEST(Solver, GivesTheSameTourForTheSameSeed) {
    const Instance instance = Grid(7, 7);

    const Result first = SolveAlone(instance, Generations(3, 5));
    const Result second = SolveAlone(instance, Generations(3, 5));

    EXPECT_EQ(first.m_order, second.m_order);
}

TEST(Solver, TriesOtherThingsWithAnotherSeed) {
    const Instance instance = Grid(7, 7);

    const Result first = SolveAlone(instance, Generations(0, 5));
    const Result second = SolveAlone(instance, Generations(0, 6));

    EXPECT_NE(first.m_order, second.m_order);
}

TEST(Solver, StopsWithATourWhenItsTimeIsOverAtOnce) {
    Settings settings = Generations(1000);
    settings.m_limits.m_deadline = Limits::Clock::now();

    const Result result = SolveAlone(Grid(6, 6), settings);

    EXPECT_EQ(result.m_nGenerations, 0);
    EXPECT_TRUE(IsTour(result.m_order, 36));
}

}  // namespace
}  // namespace tour
