// What an indexed list knows of its nodes' positions: right against a plain vector, and never seen from
// outside. A list that knows does what one without memory to know does, and a search on the nodes does what
// the search by moves of the cursor does.
#include <algorithm>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "ListProbes.h"
#include "ShortMemory.h"
#include "VexaBase/containers/KyNodePositions.h"
#include "VexaBase/containers/KyXList.h"

using testing::ElementsAre;
using testing::ElementsAreArray;

namespace {

using Node = KyDListNode<long>;

/// Nodes without a list: what is known of positions is about addresses alone.
class NodeStore {
public:
    Node* New() {
        m_nodes.push_back(std::make_unique<Node>());
        return m_nodes.back().get();
    }

    /// So many new nodes, each linked to the next one.
    std::vector<Node*> Chain(long n) {
        std::vector<Node*> chain;
        for (long i = 0; i < n; ++i) {
            chain.push_back(New());
            if (i > 0) {
                chain[static_cast<std::size_t>(i - 1)]->m_pNext = chain.back();
            }
        }
        return chain;
    }

private:
    std::vector<std::unique_ptr<Node>> m_nodes;
};

template <class Positions>
std::vector<Node*> InOrder(const Positions& positions, std::size_t n) {
    std::vector<Node*> nodes;
    for (std::size_t i = 0; i < n; ++i) {
        nodes.push_back(positions.At(static_cast<long>(i)));
    }
    return nodes;
}

/// Random insertions and removals, many of them at one place, on a vector and on what is known.
template <long nMaxRoom>
void RunBesideAVector() {
    NodeStore nodes;
    const long nAtFirst = *rc::gen::inRange(1L, 4 * nMaxRoom);
    std::vector<Node*> expected = nodes.Chain(nAtFirst);
    KyNodePositions<long, nMaxRoom> positions;
    positions.Learn(expected.front(), nAtFirst);

    const auto runs = *rc::gen::container<std::vector<std::pair<bool, long>>>(
        rc::gen::pair(rc::gen::arbitrary<bool>(), rc::gen::inRange(0L, 1L << 20)));
    for (const auto& [bInserts, nRandom] : runs) {
        const long nPlaces = static_cast<long>(expected.size()) + 1;
        const long i = nRandom % 5 == 0 ? nPlaces - 1 : nRandom % nPlaces;
        for (long k = nRandom % (2 * nMaxRoom); k >= 0; --k) {
            if (bInserts) {
                Node* const pNode = nodes.New();
                expected.insert(expected.begin() + i, pNode);
                positions.Insert(i, pNode);
            } else if (i < static_cast<long>(expected.size())) {
                expected.erase(expected.begin() + i);
                positions.Remove(i);
            }
        }
        if (positions.IsKnown()) {
            RC_ASSERT(InOrder(positions, expected.size()) == expected);
        } else if (!expected.empty()) {
            const auto nLength = static_cast<long>(expected.size());
            for (long k = 0; k + 1 < nLength; ++k) {
                expected[static_cast<std::size_t>(k)]->m_pNext = expected[static_cast<std::size_t>(k + 1)];
            }
            positions.Learn(expected.front(), nLength);
            RC_ASSERT(positions.IsKnown());
        } else {
            return;
        }
    }
}

/// Looks at what a list knows, without being one of its classes.
template <class List>
struct Inside : List {
    static bool KnowsPositions(const List& list) { return (list.*(&Inside::Positions))().IsKnown(); }
};

/// Moves the cursor about until the list knows its positions. Leaves the cursor on none.
template <class List>
void Teach(List& list) {
    for (long i = 0; !Inside<List>::KnowsPositions(list) && i < 100 * list.m_nLength; ++i) {
        list.MoveTo(i % list.m_nLength);
    }
    list.MoveTo(-1);
}

/// An owning list whose class is not the library's: its search moves the cursor.
class MovingList : public KyPXList<Token> {
public:
    using KyPXList<Token>::KyPXList;
};

/// All that a search leaves behind.
struct Found {
    bool bFound;
    long nCursor;
    long nCursorOfIndex;
    bool bNodeIsRight;
    Comparisons compared;

    friend bool operator==(const Found& a, const Found& b) {
        return a.bFound == b.bFound && a.nCursor == b.nCursor && a.nCursorOfIndex == b.nCursorOfIndex &&
               a.bNodeIsRight == b.bNodeIsRight && a.compared == b.compared;
    }
    friend std::ostream& operator<<(std::ostream& os, const Found& x) {
        return os << x.bFound << " at " << x.nCursor << ", index at " << x.nCursorOfIndex << ", node right "
                  << x.bNodeIsRight << ", compared " << testing::PrintToString(x.compared);
    }
};

Found FindIn(KyPXList<Token>& list, long x, long first, long last) {
    Token::s_compared.clear();
    const bool bFound = list.BFindDataTo(Token(x, -1), first, last);
    return {bFound, list.m_nCurIndex, list.m_arrIndex.m_nCurIndex, CursorPosition(list) == list.m_nCurIndex,
            Token::s_compared};
}

/// Appends n tokens to both lists, ascending, with equal neighbours here and there.
void SowBoth(KyPXList<Token>& a, KyPXList<Token>& b, long n) {
    for (long i = 0; i < n; ++i) {
        const long nKey = 2 * (i - (i % 7 == 3 ? 1 : 0));
        a.Append(new Token(nKey, i));
        b.Append(new Token(nKey, i));
    }
}

/// One random operation on a list of numbers; `other` is there to be spliced with.
struct Change {
    int nOperation;
    long a;
    long b;
};

rc::Gen<Change> AnyChange() {
    return rc::gen::construct<Change>(rc::gen::inRange(0, 12), rc::gen::inRange(0L, 1L << 20),
                                      rc::gen::inRange(0L, 1L << 20));
}

void Make(const Change& change, KyXList<long>& list, KyXList<long>& other) {
    const long n = list.m_nLength;
    const long i = change.a % (n + 1);
    const long nBurst = change.b % 700;
    switch (change.nOperation) {
        case 0:
            for (long k = 0; k < nBurst; ++k) {
                list.Append(k);
            }
            break;
        case 1:
        case 2:
            for (long k = 0; k < nBurst; ++k) {
                list.Insert((i + k * 37) % (n + 1), k);
            }
            break;
        case 3:
        case 4:
            for (long k = 0; k < nBurst && list.m_nLength != 0; ++k) {
                list.MoveTo((i + k * 37) % list.m_nLength);
                list.DelCur();
            }
            break;
        case 5:
            list.MoveTo(i);
            list.ReverseList();
            list.InsertAfterCur(change.b);
            break;
        case 6:
            if (n != 0) {
                list.Rotate(i % n, change.b % n);
            }
            break;
        case 7:
            other.Conbine(list, i);
            break;
        case 8:
            list.Conbine(other, change.b % (other.m_nLength + 1));
            break;
        case 9:
            list.SetLength(i, true);
            break;
        case 10:
            if (n != 0) {
                list.Move(i % n, change.b % (n + 1));
            }
            break;
        default:
            for (long k = 0; k < nBurst && n != 0; ++k) {
                list.MoveTo((i + k * 53) % n);
            }
    }
}

}  // namespace

TEST(KyNodePositions, KnowNothingAtFirstAndAfterForgetting) {
    NodeStore nodes;
    KyNodePositions<long> positions;
    EXPECT_FALSE(positions.IsKnown());

    positions.Learn(nodes.New(), 1);
    EXPECT_TRUE(positions.IsKnown());

    positions.Forget();
    EXPECT_FALSE(positions.IsKnown());
    positions.Insert(0, nodes.New());
    positions.Remove(0);
    EXPECT_FALSE(positions.IsKnown());
}

TEST(KyNodePositions, LearnChainsOfEveryLengthAroundTheBlocksRoom) {
    for (long n = 1; n < 40; ++n) {
        NodeStore nodes;
        const std::vector<Node*> chain = nodes.Chain(n);
        KyNodePositions<long, 8> positions;

        positions.Learn(chain.front(), n);

        EXPECT_THAT(InOrder(positions, chain.size()), ElementsAreArray(chain));
    }
}

TEST(KyNodePositions, FindTheBlockOfAPositionBetweenAnyTwoBlocksAroundIt) {
    constexpr long nLength = 100;
    NodeStore nodes;
    const std::vector<Node*> chain = nodes.Chain(nLength);
    KyNodePositions<long, 8> positions;
    positions.Learn(chain.front(), nLength);

    for (long i = 0; i < nLength; ++i) {
        const long b = positions.BlockOf(i);
        for (long bLow = 0; bLow <= b; ++bLow) {
            for (long bHigh = b; bHigh <= positions.BlockOf(nLength - 1); ++bHigh) {
                ASSERT_EQ(positions.BlockOf(i, bLow, bHigh), b) << i << " in " << bLow << " .. " << bHigh;
            }
        }
        EXPECT_EQ(positions.At(i, b), chain[static_cast<std::size_t>(i)]);
    }
}

TEST(KyNodePositions, AreForgottenWhenTheBlocksHaveBecomeNearlyEmpty) {
    constexpr long nLength = 240;
    NodeStore nodes;
    KyNodePositions<long, 32> positions;
    positions.Learn(nodes.Chain(nLength).front(), nLength);  // ten blocks of 24

    // One node a block goes in turn, so that all blocks stay.
    long nLeft = nLength;
    while (positions.IsKnown() && nLeft > 0) {
        positions.Remove(nLeft * 7 / 10);
        --nLeft;
    }

    EXPECT_GT(nLeft, 0);
    EXPECT_LT(nLeft, 20);
}

TEST(KyNodePositions, AreKnownUntilTheLastBlockHasGone) {
    const long nBefore = ReallocatedBlocks();
    NodeStore nodes;
    const std::vector<Node*> chain = nodes.Chain(6);
    KyNodePositions<long, 4> positions;
    positions.Learn(chain.front(), 6);  // two blocks of 3

    for (int i = 0; i < 3; ++i) {
        positions.Remove(0);
    }

    ASSERT_TRUE(positions.IsKnown());
    EXPECT_THAT(InOrder(positions, 3), ElementsAre(chain[3], chain[4], chain[5]));
    for (int i = 0; i < 3; ++i) {
        positions.Remove(0);
    }
    EXPECT_FALSE(positions.IsKnown());
    EXPECT_EQ(ReallocatedBlocks(), nBefore);
}

TEST(KyNodePositions, OfFewNodesInOneBlockStayKnown) {
    NodeStore nodes;
    const std::vector<Node*> chain = nodes.Chain(3);
    KyNodePositions<long> positions;
    positions.Learn(chain.front(), 3);

    positions.Remove(1);

    ASSERT_TRUE(positions.IsKnown());
    EXPECT_THAT(InOrder(positions, 2), ElementsAre(chain[0], chain[2]));
}

TEST(KyNodePositions, LearnAnewWhatTheyKnewOtherwise) {
    NodeStore nodes;
    KyNodePositions<long, 4> positions;
    positions.Learn(nodes.Chain(6).front(), 6);
    const std::vector<Node*> chain = nodes.Chain(9);

    positions.Learn(chain.front(), 9);

    EXPECT_THAT(InOrder(positions, chain.size()), ElementsAreArray(chain));
}

TEST(KyNodePositions, GiveAllTheirMemoryBack) {
    const long nBefore = ReallocatedBlocks();
    NodeStore nodes;
    {
        KyNodePositions<long, 4> positions;
        positions.Learn(nodes.Chain(30).front(), 30);
        for (int i = 0; i < 10; ++i) {
            positions.Remove(5);
        }
        EXPECT_GT(ReallocatedBlocks(), nBefore);

        positions.Forget();
        EXPECT_EQ(ReallocatedBlocks(), nBefore);

        positions.Learn(nodes.New(), 1);
        EXPECT_GT(ReallocatedBlocks(), nBefore);
    }
    EXPECT_EQ(ReallocatedBlocks(), nBefore);
}

TEST(KyNodePositions, AreNotHalfLearntWhereMemoryRunsOut) {
    NodeStore nodes;
    const std::vector<Node*> chain = nodes.Chain(30);
    bool bIsKnown = false;
    for (long nFirst = 0; !bIsKnown; ++nFirst) {
        KyNodePositions<long, 8> positions;
        const ShortMemory memory(nFirst);

        positions.Learn(chain.front(), 30);

        bIsKnown = positions.IsKnown();
        ASSERT_EQ(bIsKnown, !memory.HasRefused());
    }
}

TEST(KyNodePositions, AreForgottenWhereverMemoryRunsOut) {
    for (long nFirst = 0;; ++nFirst) {
        NodeStore nodes;
        std::vector<Node*> expected = nodes.Chain(3);
        KyNodePositions<long, 8> positions;
        const ShortMemory memory(nFirst);

        positions.Learn(expected.front(), 3);
        for (long i = 0; i < 100 && positions.IsKnown(); ++i) {
            Node* const pNode = nodes.New();
            expected.insert(expected.begin() + i * 37 % (i + 3), pNode);
            positions.Insert(i * 37 % (i + 3), pNode);
        }

        EXPECT_EQ(positions.IsKnown(), !memory.HasRefused());
        if (!memory.HasRefused()) {
            EXPECT_THAT(InOrder(positions, expected.size()), ElementsAreArray(expected));
            break;
        }
    }
}

RC_GTEST_PROP(KyNodePositions, OfFourABlockAgreeWithAVector, ()) { RunBesideAVector<4>(); }
RC_GTEST_PROP(KyNodePositions, OfThirtyTwoABlockAgreeWithAVector, ()) { RunBesideAVector<32>(); }

TEST(KnownPositions, AreLearntOnceTheWalksHavePassedAsManyNodesAsThereAre) {
    KyXList<long> list(1000);
    list.ReAllocate(100);
    using In = Inside<KyXList<long>>;

    list.MoveTo(50);  // 49 nodes from the tail
    list.MoveTo(50);
    list.MoveTo(2);
    EXPECT_FALSE(In::KnowsPositions(list));

    list.GetAt(1);
    EXPECT_TRUE(In::KnowsPositions(list));

    // Forgotten, they are learnt again no sooner.
    list.ReverseList();
    list.MoveTo(50);
    list.MoveTo(50);
    EXPECT_FALSE(In::KnowsPositions(list));
}

TEST(KnownPositions, AreForgottenWhenTheListIsCut) {
    using In = Inside<KyXList<long>>;
    KyXList<long> list;
    list.ReAllocate(100);
    Teach(list);
    std::vector<std::unique_ptr<Node>> cutOff;
    for (long i = 40; i < 100; ++i) {
        cutOff.emplace_back(reinterpret_cast<Node*>(list.GetAt(i)));
    }
    list.MoveTo(39);

    list.DetachAfterCur();

    EXPECT_FALSE(In::KnowsPositions(list));
}

TEST(KnownPositions, AreForgottenWhenTheListIsEmptied) {
    using In = Inside<KyXList<long>>;
    KyXList<long> list;
    list.ReAllocate(100);
    Teach(list);

    list.Reset();

    EXPECT_FALSE(In::KnowsPositions(list));
}

TEST(KnownPositions, ComeThroughTakingNodesOutAndPuttingThemBack) {
    struct Open : KyXList<long> {
        using KyXList<long>::KyXList;
        using KyXList<long>::PutBack;
        using KyXList<long>::TakeOutCur;
    };
    Open list(1000);
    for (long i = 0; i < 100; ++i) {
        list.Append(i);
    }
    Teach<KyXList<long>>(list);
    list.MoveTo(10);

    Node* const pNode = list.TakeOutCur();

    EXPECT_EQ(*list.GetAt(10), 11);
    EXPECT_EQ(*list.GetAt(98), 99);
    list.PutBack(pNode, 50);
    EXPECT_EQ(*list.GetAt(49), 50);
    EXPECT_EQ(*list.GetAt(50), 10);
    EXPECT_EQ(*list.GetAt(51), 51);
}

TEST(KnownPositions, AreWalkedToFromTheNearerOfTwoEntries) {
    KyXList<long> list(10);
    list.ReAllocate(100);
    using In = Inside<KyXList<long>>;

    for (int i = 0; i < 50; ++i) {
        list.MoveTo(19);  // one node before the entry behind
        list.MoveTo(21);  // one behind the entry before
    }
    EXPECT_FALSE(In::KnowsPositions(list));

    list.MoveTo(98);
    EXPECT_TRUE(In::KnowsPositions(list));
}

TEST(KnownPositions, GoWithTheList) {
    using In = Inside<KyXList<long>>;
    const long nBefore = ReallocatedBlocks();
    {
        KyXList<long> list(1000);
        list.ReAllocate(100);
        for (int i = 0; i < 3; ++i) {
            list.MoveTo(50);
        }
        ASSERT_TRUE(In::KnowsPositions(list));
    }
    EXPECT_EQ(ReallocatedBlocks(), nBefore);
}

TEST(KnownPositions, AreNotLearntByAppendingNorInAShortList) {
    using In = Inside<KyXList<long>>;
    KyXList<long> appended(10);
    appended.ReAllocate(5000);
    EXPECT_FALSE(In::KnowsPositions(appended));

    KyXList<long> brief(1000);
    brief.ReAllocate(31);
    for (long i = 0; i < 1000; ++i) {
        brief.MoveTo(i % 31);
    }
    EXPECT_FALSE(In::KnowsPositions(brief));
}

TEST(KnownPositions, ComeThroughInsertingRemovingAndSplicingBehind) {
    using In = Inside<KyXList<long>>;
    KyXList<long> list(1000);
    KyXList<long> other(1000);
    list.ReAllocate(100);
    other.ReAllocate(100);
    Teach(list);

    list.Insert(7, 1);
    list.MoveTo(50);
    list.DelCur();
    list.Append(2);
    list.Conbine(other, 10);
    EXPECT_TRUE(In::KnowsPositions(list));
    EXPECT_TRUE(IsSound(list));

    list.ReverseList();
    EXPECT_FALSE(In::KnowsPositions(list));
}

RC_GTEST_PROP(KnownPositions, AListThatKnowsThemAndOneWithoutTheMemoryAgree, ()) {
    const long nStep = *rc::gen::element(1L, 7L, 64L, 1000L);
    KyXList<long> knowing(nStep);
    KyXList<long> knowingOther(nStep);
    KyXList<long> plain(nStep);
    KyXList<long> plainOther(nStep);
    for (const Change& change : *rc::gen::container<std::vector<Change>>(AnyChange())) {
        Make(change, knowing, knowingOther);
        {
            const ShortMemory memory;
            Make(change, plain, plainOther);
        }

        RC_ASSERT(!Inside<KyXList<long>>::KnowsPositions(plain));
        RC_ASSERT(Elements(knowing) == Elements(plain));
        RC_ASSERT(Elements(knowingOther) == Elements(plainOther));
        RC_ASSERT(knowing.m_nCurIndex == plain.m_nCurIndex);
        RC_ASSERT(CursorPosition(knowing) == CursorPosition(plain));
        RC_ASSERT(knowing.m_arrIndex.m_nCurIndex == plain.m_arrIndex.m_nCurIndex);
        RC_ASSERT(knowing.m_arrIndex.m_nCapacity == plain.m_arrIndex.m_nCapacity);
        RC_ASSERT(RingIsSound(knowing));
        RC_ASSERT(RingIsSound(plain));
        const std::vector<KyListNode<long>*> nodes = Nodes(knowing);
        for (long i = 0; i < knowing.m_nLength; i += 1 + change.a % 13) {
            RC_ASSERT(knowing.GetAt(i) == &nodes[static_cast<std::size_t>(i)]->m_data);
        }
    }
}

TEST(KnownPositions, ASearchOnTheNodesIsTheSearchByMovesForEveryKeyInListsOfEveryLength) {
    for (long nLength = 32; nLength < 50; ++nLength) {
        KyPXList<Token> list(5);
        MovingList moving(5);
        SowBoth(list, moving, nLength);
        Teach(list);
        ASSERT_TRUE(Inside<KyPXList<Token>>::KnowsPositions(list));
        for (long x = -1; x <= 2 * nLength; ++x) {
            ASSERT_EQ(FindIn(list, x, 0, nLength - 1), FindIn(moving, x, 0, nLength - 1))
                << nLength << " elements, " << x;
        }
    }
}

TEST(KnownPositions, ASearchOnTheNodesIsTheSearchByMovesInEveryShortRange) {
    constexpr long nLength = 1000;
    KyPXList<Token> list(64);
    MovingList moving(64);
    SowBoth(list, moving, nLength);
    Teach(list);
    for (long first = 0; first < nLength; ++first) {
        for (long last = first; last < first + 3; ++last) {
            const long x = 2 * first + last % 3;
            ASSERT_EQ(FindIn(list, x, first, last), FindIn(moving, x, first, last))
                << x << " in " << first << " .. " << last;
        }
    }
}

RC_GTEST_PROP(KnownPositions, ASearchOnTheNodesIsTheSearchByMovesInAnyRange, ()) {
    const long nLength = *rc::gen::inRange(32L, 5000L);
    const long nStep = *rc::gen::element(2L, 7L, 64L, 1024L);
    KyPXList<Token> list(nStep);
    MovingList moving(nStep);
    SowBoth(list, moving, nLength);
    Teach(list);
    RC_ASSERT(Inside<KyPXList<Token>>::KnowsPositions(list));

    for (int i = 0; i < 50; ++i) {
        const long x = *rc::gen::inRange(-2L, 2 * nLength + 2);
        const long first = *rc::gen::inRange(-2L, nLength + 2);
        const long last = *rc::gen::inRange(-2L, nLength + 2);
        // The whole list first: a range outside it leaves the index where the last search did.
        RC_ASSERT(FindIn(list, x, 0, nLength - 1) == FindIn(moving, x, 0, nLength - 1));
        RC_ASSERT(FindIn(list, x, first, last) == FindIn(moving, x, first, last));
    }
}

TEST(KnownPositions, AComparisonThatThrowsLeavesTheCursorOnTheElementCompared) {
    struct Weary {
        explicit Weary(long nKey) : m_nKey(nKey) {}
        int Cmp(const Weary& other) const {
            if (m_nLeft-- == 0) {
                throw std::runtime_error("tired");
            }
            return m_nKey < other.m_nKey ? -1 : m_nKey > other.m_nKey ? 1 : 0;
        }
        long m_nKey;
        mutable long m_nLeft = -1;
    };
    class MovingWeary : public KyPXList<Weary> {
    public:
        using KyPXList<Weary>::KyPXList;
    };
    KyPXList<Weary> list(7);
    MovingWeary moving(7);
    for (long i = 0; i < 100; ++i) {
        list.Append(new Weary(i));
        moving.Append(new Weary(i));
    }
    Teach(list);

    for (long nLeft = 0; nLeft < 5; ++nLeft) {
        Weary x(42);
        x.m_nLeft = nLeft;
        EXPECT_THROW(list.BFindDataTo(x), std::runtime_error);
        x.m_nLeft = nLeft;
        EXPECT_THROW(moving.BFindDataTo(x), std::runtime_error);

        EXPECT_TRUE(IsSound(list));
        EXPECT_EQ(list.m_nCurIndex, moving.m_nCurIndex);
        EXPECT_EQ(list.m_arrIndex.m_nCurIndex, moving.m_arrIndex.m_nCurIndex);
    }
}
