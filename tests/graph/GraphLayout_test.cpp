// Where the fields of the graph's classes stand, and their virtual operations: callers' compiled code relies
// on both.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <type_traits>

#include "VexaBase/graph/KyGraph.h"
#include "VexaBase/graph/KyGraphPath.h"

namespace {

using testing::ElementsAre;

/// Distance of a field from the beginning of its object, in bytes.
template <class Object, class Field>
long OffsetOf(const Object& object, const Field& field) {
    return reinterpret_cast<const char*>(&field) - reinterpret_cast<const char*>(&object);
}

/// Slot of a virtual operation, from 0. A pointer to one is 1 + 8 * slot in its first word.
template <class Operation>
long SlotOf(Operation pOperation) {
    static_assert(std::is_member_function_pointer_v<Operation>);
    std::ptrdiff_t nWord = 0;
    std::memcpy(&nWord, &pOperation, sizeof nWord);
    return (nWord - 1) / static_cast<long>(sizeof(void*));
}

/// Number of virtual slots of a class: the slot of the first operation that a derived class adds.
template <class Base>
long SlotsOf() {
    struct Derived : Base {
        virtual void Added() {}
    };
    return SlotOf(&Derived::Added);
}

// Fields ----------------------------------------------------------------------------------------------------

TEST(GraphLayout, FlagBitsFollowTheTablePointer) {
    const KyGraphArc arc;

    EXPECT_EQ(OffsetOf(arc, arc.m_nBits), 8);
    EXPECT_EQ(sizeof(arc.m_nBits), 8U);
    EXPECT_EQ(sizeof(KyBitData), 16U);
    static_assert(std::is_unsigned_v<decltype(KyBitData::m_nBits)>);
}

TEST(GraphLayout, AnArcHoldsItsStartThenItsEnd) {
    const KyGraphArc arc;

    EXPECT_EQ(OffsetOf(arc, arc.m_pStart), 16);
    EXPECT_EQ(OffsetOf(arc, arc.m_pEnd), 24);
    EXPECT_EQ(sizeof(KyGraphArc), 32U);
}

TEST(GraphLayout, ANodeHoldsItsArcListByValue) {
    const KyGraphNode node;

    static_assert(std::is_same_v<decltype(node.m_lstArc), KyPDList<KyGraphArc>>);
    EXPECT_EQ(OffsetOf(node, node.m_lstArc), 16);
    EXPECT_EQ(sizeof(KyGraphNode), 16 + sizeof(KyPDList<KyGraphArc>));
    EXPECT_EQ(sizeof(KyGraphNode), 64U);
}

TEST(GraphLayout, AGraphHoldsItsUserWordThenTheNodesThenTheArcs) {
    const KyGraph graph;

    static_assert(std::is_same_v<decltype(graph.m_lstNode), KyPXList<KyGraphNode>>);
    static_assert(std::is_same_v<decltype(graph.m_lstArc), KyPXList<KyGraphArc>>);
    EXPECT_EQ(OffsetOf(graph, graph.m_nUserData), 0);
    EXPECT_EQ(sizeof(graph.m_nUserData), 8U);
    EXPECT_EQ(OffsetOf(graph, graph.m_lstNode), 8);
    EXPECT_EQ(OffsetOf(graph, graph.m_lstArc), 8 + static_cast<long>(sizeof(KyPXList<KyGraphNode>)));
    EXPECT_EQ(sizeof(KyGraph), 8 + sizeof(KyPXList<KyGraphNode>) + sizeof(KyPXList<KyGraphArc>));
    EXPECT_EQ(sizeof(KyGraph), 216U);
}

TEST(GraphLayout, APathHoldsItsBeginNodeBehindTheList) {
    const KyGraphPath path;

    EXPECT_EQ(OffsetOf(path, path.m_pBeginNode), 48);
    EXPECT_EQ(sizeof(KyDList<KyGraphArc*>), 48U);
    EXPECT_EQ(sizeof(KyGraphPath), 56U);
}

TEST(GraphLayout, TheStartNodeIsStatic) {
    static_assert(std::is_same_v<decltype(&KyGraphNode::s_pStartNode), KyGraphNode**>);
    SUCCEED();
}

// Kinship ---------------------------------------------------------------------------------------------------

TEST(GraphLayout, NodesAndArcsDeriveFromTheFlagBitsAndPathsFromTheList) {
    EXPECT_TRUE((std::is_convertible_v<KyGraphNode*, KyBitData*>));
    EXPECT_TRUE((std::is_convertible_v<KyGraphArc*, KyBitData*>));
    EXPECT_TRUE((std::is_convertible_v<KyGraphPath*, KyDList<KyGraphArc*>*>));
}

TEST(GraphLayout, AGraphHasNoVirtualOperations) { EXPECT_FALSE(std::is_polymorphic_v<KyGraph>); }

TEST(GraphLayout, AGraphIsNotCopied) {
    EXPECT_FALSE(std::is_copy_constructible_v<KyGraph>);
    EXPECT_FALSE(std::is_copy_assignable_v<KyGraph>);
    EXPECT_FALSE(std::is_copy_constructible_v<KyGraphPath>);
    EXPECT_FALSE(std::is_copy_constructible_v<KyGraphNode>);
}

// Slots -----------------------------------------------------------------------------------------------------

TEST(GraphLayout, TheFlagBitsHaveTheTwoDestructorSlotsOnly) {
    EXPECT_TRUE(std::has_virtual_destructor_v<KyBitData>);
    EXPECT_EQ(SlotsOf<KyBitData>(), 2);
}

TEST(GraphLayout, CmpArcFollowsTheDestructors) {
    EXPECT_EQ(SlotOf(&KyGraphArc::CmpArc), 2);
    EXPECT_EQ(SlotsOf<KyGraphArc>(), 3);
}

TEST(GraphLayout, CmpNodeFollowsTheDestructors) {
    EXPECT_EQ(SlotOf(&KyGraphNode::CmpNode), 2);
    EXPECT_EQ(SlotsOf<KyGraphNode>(), 3);
}

TEST(GraphLayout, APathAddsNoSlotToItsList) {
    using List = KyDList<KyGraphArc*>;

    EXPECT_EQ(SlotsOf<KyGraphPath>(), SlotsOf<List>());
    EXPECT_EQ(SlotOf(&KyGraphPath::SetLength), 3);  // behind ReAllocate and the destructors
    EXPECT_EQ(SlotOf(&KyGraphPath::Rotate), SlotsOf<List>() - 1);
}

TEST(GraphLayout, ComparisonsAreConst) {
    static_assert(
        std::is_same_v<decltype(&KyGraphArc::CmpArc), int (KyGraphArc::*)(const KyGraphArc&) const>);
    static_assert(
        std::is_same_v<decltype(&KyGraphNode::CmpNode), int (KyGraphNode::*)(const KyGraphNode&) const>);
    SUCCEED();
}

TEST(GraphLayout, ForwardIsZero) {
    EXPECT_EQ(KyGraphArc::Forward, 0);
    EXPECT_EQ(KyGraphArc::Backward, 1);
}

}  // namespace
