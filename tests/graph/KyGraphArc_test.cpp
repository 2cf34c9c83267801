#include "VexaBase/graph/KyGraphArc.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "DistantPlace.h"
#include "NumberedElements.h"
#include "VexaBase/containers/KyDynArray.h"

namespace {

using testing::ElementsAre;
using testing::IsNull;

// Construction ----------------------------------------------------------------------------------------------

TEST(KyGraphArc, StartsWithoutEndsAndWithoutFlagBits) {
    const KyGraphArc arc;

    EXPECT_THAT(arc.m_pStart, IsNull());
    EXPECT_THAT(arc.m_pEnd, IsNull());
    EXPECT_EQ(arc.m_nBits, 0U);
}

TEST(KyGraphArc, IsMadeWithItsEndsAndListedAtNeither) {
    KyGraphNode start;
    KyGraphNode end;

    const KyGraphArc arc(&start, &end);

    EXPECT_EQ(arc.m_pStart, &start);
    EXPECT_EQ(arc.m_pEnd, &end);
    EXPECT_THAT(start.m_lstArc, ElementsAre());
    EXPECT_THAT(end.m_lstArc, ElementsAre());
}

// Connecting ------------------------------------------------------------------------------------------------

TEST(KyGraphArc, ConnectListsItAtBothEnds) {
    KyGraphNode start;
    KyGraphNode end;
    KyGraphArc arc(&start, &end);

    arc.Connect();

    EXPECT_THAT(start.m_lstArc, ElementsAre(&arc));
    EXPECT_THAT(end.m_lstArc, ElementsAre(&arc));
}

TEST(KyGraphArc, ConnectOffersItToTheStartNodeFirst) {
    NumberedNode start(1);
    NumberedNode end(2);
    NumberedArc resident(10, &start, &end);
    NumberedArc arc(20, &start, &end);
    resident.Connect();
    const ComparisonLog<NumberedArc> log;

    arc.Connect();

    const Comparison aroundStart{20, 10, 1};
    const Comparison aroundEnd{20, 10, 2};
    EXPECT_THAT(log.Lines(), ElementsAre(aroundStart, aroundStart, aroundEnd, aroundEnd));
}

TEST(KyGraphArc, ConnectSkipsAnEndThatIsNotSet) {
    KyGraphNode node;
    KyGraphArc out(&node, nullptr);
    KyGraphArc in(nullptr, &node);
    KyGraphArc loose;

    out.Connect();
    loose.Connect();

    EXPECT_THAT(node.m_lstArc, ElementsAre(&out));
    in.Connect();
    EXPECT_EQ(node.m_lstArc.GetLength(), 2);
}

TEST(KyGraphArc, ConnectListsALoopOnce) {
    NumberedNode node(1);
    NumberedArc loop(10, &node, &node);
    const ComparisonLog<NumberedArc> log;

    loop.Connect();

    EXPECT_THAT(node.m_lstArc, ElementsAre(&loop));
    const Comparison itself{10, 10, 1};
    EXPECT_THAT(log.Lines(), ElementsAre(itself, itself, itself));
}

TEST(KyGraphArc, ALoopIsReportedAsOutgoingAndAsIncoming) {
    KyGraphNode node;
    KyGraphArc loop(&node, &node);
    loop.Connect();
    KyDynArray<KyGraphArc*> out;
    KyDynArray<KyGraphArc*> in;

    node.GetArcOut(out);
    node.GetArcIn(in);

    EXPECT_THAT(out, ElementsAre(&loop));
    EXPECT_THAT(in, ElementsAre(&loop));
}

TEST(KyGraphArc, ConnectTwiceListsItOnce) {
    KyGraphNode start;
    KyGraphNode end;
    KyGraphArc arc(&start, &end);

    arc.Connect();
    arc.Connect();

    EXPECT_THAT(start.m_lstArc, ElementsAre(&arc));
    EXPECT_THAT(end.m_lstArc, ElementsAre(&arc));
}

TEST(KyGraphArc, ConnectKeepsTheEndsEvenWhereItIsRefused) {
    NumberedNode start(1);
    NumberedNode end(2);
    NumberedArc resident(10, &start, nullptr);
    NumberedArc arc(10, &start, &end);
    resident.Connect();

    arc.Connect();

    EXPECT_THAT(start.m_lstArc, ElementsAre(&resident));
    EXPECT_THAT(end.m_lstArc, ElementsAre(&arc));
    EXPECT_EQ(arc.m_pStart, &start);
}

// Unconnecting ----------------------------------------------------------------------------------------------

TEST(KyGraphArc, UnConnectTakesItOffBothNodesAndForgetsThem) {
    NumberedNode start(1);
    NumberedNode end(2);
    NumberedArc stays(10, &start, &end);
    NumberedArc goes(20, &start, &end);
    stays.Connect();
    goes.Connect();

    goes.UnConnect();

    EXPECT_THAT(goes.m_pStart, IsNull());
    EXPECT_THAT(goes.m_pEnd, IsNull());
    EXPECT_THAT(start.m_lstArc, ElementsAre(&stays));
    EXPECT_THAT(end.m_lstArc, ElementsAre(&stays));
}

TEST(KyGraphArc, UnConnectOfALoopTakesItOffItsNode) {
    KyGraphNode node;
    KyGraphArc loop(&node, &node);
    loop.Connect();

    loop.UnConnect();

    EXPECT_THAT(node.m_lstArc, ElementsAre());
    EXPECT_THAT(loop.m_pStart, IsNull());
    EXPECT_THAT(loop.m_pEnd, IsNull());
}

TEST(KyGraphArc, UnConnectOfANodeClearsBothEndsOfALoop) {
    KyGraphNode node;
    KyGraphArc loop(&node, &node);
    loop.Connect();

    node.UnConnect();

    EXPECT_THAT(loop.m_pStart, IsNull());
    EXPECT_THAT(loop.m_pEnd, IsNull());
}

TEST(KyGraphArc, UnConnectOfAnUnlistedArcForgetsItsEndsAndLeavesTheNodes) {
    NumberedNode start(1);
    NumberedNode end(2);
    NumberedArc resident(10, &start, &end);
    NumberedArc arc(10, &start, &end);
    resident.Connect();

    arc.UnConnect();

    EXPECT_THAT(arc.m_pStart, IsNull());
    EXPECT_THAT(arc.m_pEnd, IsNull());
    EXPECT_THAT(start.m_lstArc, ElementsAre(&resident));
    EXPECT_THAT(end.m_lstArc, ElementsAre(&resident));
}

TEST(KyGraphArc, UnConnectWithoutEndsDoesNothing) {
    KyGraphArc arc;

    arc.UnConnect();

    EXPECT_THAT(arc.m_pStart, IsNull());
    EXPECT_THAT(arc.m_pEnd, IsNull());
}

// Destruction, in either order ------------------------------------------------------------------------------

TEST(KyGraphArc, DestructionTakesItOffBothNodes) {
    KyGraphNode start;
    KyGraphNode end;
    {
        KyGraphArc arc(&start, &end);
        arc.Connect();
    }

    EXPECT_THAT(start.m_lstArc, ElementsAre());
    EXPECT_THAT(end.m_lstArc, ElementsAre());
}

TEST(KyGraphArc, SurvivesTheDestructionOfItsNodesInAnyOrder) {
    for (const bool bStartFirst : {true, false}) {
        auto pStart = std::make_unique<KyGraphNode>();
        auto pEnd = std::make_unique<KyGraphNode>();
        KyGraphArc arc(pStart.get(), pEnd.get());
        arc.Connect();

        (bStartFirst ? pStart : pEnd).reset();

        EXPECT_EQ(arc.m_pStart, pStart.get());
        EXPECT_EQ(arc.m_pEnd, pEnd.get());
        (bStartFirst ? pEnd : pStart).reset();
        EXPECT_THAT(arc.m_pStart, IsNull());
        EXPECT_THAT(arc.m_pEnd, IsNull());
    }
}

TEST(KyGraphArc, DestructionOfAnUnlistedKeyLeavesTheNodesItNames) {
    NumberedNode start(1);
    NumberedNode end(2);
    NumberedArc arc(10, &start, &end);
    arc.Connect();
    { const NumberedArc key(10, &start, &end); }

    EXPECT_THAT(start.m_lstArc, ElementsAre(&arc));
    EXPECT_THAT(end.m_lstArc, ElementsAre(&arc));
}

TEST(KyGraphArc, IsDestroyedThroughItsBase) {
    const auto before = NumberedArc::s_live.size();
    KyGraphNode node;
    auto* const pArc = new NumberedArc(10, &node, nullptr);
    pArc->Connect();
    KyBitData* const pBits = pArc;

    delete pBits;

    EXPECT_EQ(NumberedArc::s_live.size(), before);
    EXPECT_THAT(node.m_lstArc, ElementsAre());
}

// The default order -----------------------------------------------------------------------------------------

TEST(KyGraphArc, TheDefaultCmpArcCountsArcsBetweenTheTwoAddresses) {
    const KyGraphArc arcs[4];

    EXPECT_EQ(arcs[3].CmpArc(arcs[1]), 2);
    EXPECT_EQ(arcs[0].CmpArc(arcs[3]), -3);
    EXPECT_EQ(arcs[2].CmpArc(arcs[2]), 0);
}

TEST(KyGraphArc, TheDefaultCmpArcCountsInArcsEvenWhereTheObjectsAreLarger) {
    struct LargeArc : KyGraphArc {
        char m_padding[2 * sizeof(KyGraphArc)];
    };
    static_assert(sizeof(LargeArc) == 3 * sizeof(KyGraphArc));
    const std::vector<LargeArc> arcs(3);

    EXPECT_EQ(arcs[2].CmpArc(arcs[0]), 6);
    EXPECT_EQ(arcs[0].CmpArc(arcs[1]), -3);
}

TEST(KyGraphArc, TheDefaultCmpArcDividesTheDistanceBeforeItNarrowsIt) {
    const KyGraphArc arc;
    constexpr long nApart = 200'000'003;  // arcs; more bytes than an int holds

    EXPECT_EQ(arc.CmpArc(PlaceBehind(arc, -nApart)), 200'000'003);
    EXPECT_EQ(arc.CmpArc(PlaceBehind(arc, nApart)), -200'000'003);
}

TEST(KyGraphArc, TheDefaultCmpArcNarrowsToInt) {
    const KyGraphArc arc;
    constexpr long nApart = (1L << 32) + 5;

    EXPECT_EQ(arc.CmpArc(PlaceBehind(arc, -nApart)), 5);
    EXPECT_EQ(arc.CmpArc(PlaceBehind(arc, nApart)), -5);
}

TEST(KyGraphArc, CmpForwardsToCmpArc) {
    const NumberedArc two(2);
    const NumberedArc five(5);

    EXPECT_EQ(two.Cmp(five), -3);
    EXPECT_EQ(five.Cmp(two), 3);
    EXPECT_EQ(two.Cmp(two), 0);
}

TEST(KyGraphArc, IsLessAndGreaterByCmpArc) {
    const NumberedArc two(2);
    const NumberedArc three(3);

    EXPECT_TRUE(two < three);
    EXPECT_FALSE(two > three);
    EXPECT_TRUE(three > two);
    EXPECT_FALSE(three < two);
    EXPECT_FALSE(two < two);
    EXPECT_FALSE(two > two);
}

// Flag bits -------------------------------------------------------------------------------------------------

TEST(KyGraphArc, FlagBitsOfArcsAndNodesAreLeftAlone) {
    KyGraphNode start;
    KyGraphNode end;
    KyGraphArc arc(&start, &end);
    start.m_nBits = 0x8000'0000'0000'0001;
    end.m_nBits = ~0UL;
    arc.m_nBits = 42;

    arc.Connect();
    delete arc.FindMesh(KyGraphArc::Forward);
    start.Conbine(&end);
    start.UnConnect();
    arc.UnConnect();

    EXPECT_EQ(start.m_nBits, 0x8000'0000'0000'0001);
    EXPECT_EQ(end.m_nBits, ~0UL);
    EXPECT_EQ(arc.m_nBits, 42U);
}

}  // namespace
