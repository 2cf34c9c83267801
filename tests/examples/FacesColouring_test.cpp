#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "FacesTestKit.h"
#include "examples/faces/Colouring.h"

namespace faces {
namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::Ge;
using testing::IsEmpty;
using testing::Lt;

TEST(FacesColouring, NoFacesHaveNoColours) { EXPECT_THAT(ColourFaces(0, {}), IsEmpty()); }

TEST(FacesColouring, FacesWithoutNeighboursTakeAllColoursInTurn) {
    EXPECT_THAT(ColourFaces(6, {}), testing::UnorderedElementsAre(0, 1, 2, 3, 4, 5));
}

TEST(FacesColouring, FourMutualNeighboursDifferAll) {
    const std::vector<int> colours = ColourFaces(4, {{0, 1}, {0, 2}, {0, 3}, {1, 2}, {1, 3}, {2, 3}});

    EXPECT_EQ(std::set<int>(colours.begin(), colours.end()).size(), 4U);
}

RC_GTEST_PROP(FacesColouring, NeighboursOnAPlaneMapDiffer, ()) {
    const TracedMap traced(RandomLattice(*rc::gen::arbitrary<unsigned int>(), *rc::gen::inRange(1, 25),
                                         *rc::gen::inRange(30, 101)));
    const auto neighbours = traced.m_faces.Neighbours();

    const std::vector<int> colours = ColourFaces(traced.m_faces.m_faces.size(), neighbours);

    RC_ASSERT(colours.size() == traced.m_faces.m_faces.size());
    for (const int nColour : colours) RC_ASSERT(nColour >= 0 && nColour < Colours);
    for (const auto& [nA, nB] : neighbours) {
        RC_ASSERT(colours[static_cast<std::size_t>(nA)] != colours[static_cast<std::size_t>(nB)]);
    }
}

TEST(FacesColouring, AWheelOfManyFacesNeedsNoMoreThanSix) {
    constexpr long spokes = 1001;
    std::vector<std::pair<long, long>> neighbours;
    for (long i = 1; i <= spokes; ++i) {
        neighbours.emplace_back(0, i);
        neighbours.emplace_back(std::min(i, i % spokes + 1), std::max(i, i % spokes + 1));
    }

    const std::vector<int> colours = ColourFaces(spokes + 1, neighbours);

    EXPECT_THAT(colours, Each(AllOf(Ge(0), Lt(Colours))));
    for (const auto& [nA, nB] : neighbours) {
        EXPECT_NE(colours[static_cast<std::size_t>(nA)], colours[static_cast<std::size_t>(nB)]);
    }
}

}  // namespace
}  // namespace faces
