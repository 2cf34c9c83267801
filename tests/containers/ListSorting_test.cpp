// The operations on whole lists: insertion sorts, reversal, rotation and combination. The sorts are held
// against a transcription of their steps on a plain vector: the same order, the same comparisons in the same
// sequence, and new nodes for exactly the elements that the transcription moves.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "AllocationLog.h"
#include "ListProbes.h"
#include "TestElements.h"
#include "VexaBase/containers/KyDList.h"
#include "VexaBase/containers/KyList.h"
#include "VexaBase/containers/KyPDList.h"
#include "VexaBase/containers/KyXList.h"

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::UnorderedElementsAreArray;

namespace {

template <class T>
struct IndexedOwningList : KyPXList<T> {
    IndexedOwningList() : KyPXList<T>(2) {}
};

class WholeList : public ListTest<long> {};
INSTANTIATE_TEST_SUITE_P(Lists, WholeList, testing::ValuesIn(ListKind<long>::All()), ListKind<long>::NameOf);

class WholeCardList : public ListTest<Card> {};
INSTANTIATE_TEST_SUITE_P(Lists, WholeCardList, testing::ValuesIn(ListKind<Card>::All()),
                         ListKind<Card>::NameOf);

template <class List>
class WholeTokenList : public testing::Test {};
using TokenLists = testing::Types<KyPDList<Token>, IndexedOwningList<Token>>;
TYPED_TEST_SUITE(WholeTokenList, TokenLists, );

/// The lists' insertion sort, step by step. isAfter(e, x): x moves in front of e.
template <class T, class IsAfter>
std::vector<bool> InsertionSort(std::vector<T>& elements, IsAfter isAfter) {
    std::vector<bool> isMoved(elements.size());
    for (std::size_t i = 1; i < elements.size(); ++i) {
        const T x = elements[i];
        if (!isAfter(elements[i - 1], x)) {
            continue;
        }
        std::size_t j = i - 1;
        while (j > 0 && isAfter(elements[j - 1], x)) {
            --j;
        }
        std::rotate(elements.begin() + static_cast<long>(j), elements.begin() + static_cast<long>(i),
                    elements.begin() + static_cast<long>(i) + 1);
        isMoved.erase(isMoved.begin() + static_cast<long>(i));
        isMoved.insert(isMoved.begin() + static_cast<long>(j), true);
    }
    return isMoved;
}

/// Calls the function with every word of every length up to the one given, over the letters 0 .. nLetters
/// - 1.
template <class Function>
void ForEveryWord(long nLetters, std::size_t nMaxLength, Function function) {
    std::vector<std::vector<long>> words(1);
    while (!words.empty()) {
        const std::vector<long> word = std::move(words.back());
        words.pop_back();
        function(word);
        if (word.size() < nMaxLength) {
            for (long nLetter = 0; nLetter < nLetters; ++nLetter) {
                words.push_back(word);
                words.back().push_back(nLetter);
            }
        }
    }
}

std::vector<Card> Deal(const std::vector<long>& keys) {
    std::vector<Card> cards;
    for (const long nKey : keys) {
        cards.push_back({nKey, static_cast<long>(cards.size())});
    }
    return cards;
}

enum class Way { Ascending, Descending, Function };
constexpr Way EveryWay[] = {Way::Ascending, Way::Descending, Way::Function};

template <class List, class Function>
void SortBy(List& list, Way way, Function pfnCompare) {
    if (way == Way::Function) {
        list.Sort(pfnCompare);
    } else {
        list.Sort(way == Way::Ascending);
    }
}

/// The comparison that a way of sorting makes, for the transcription.
template <class T>
bool IsAfter(Way way, const T& e, const T& x) {
    return way == Way::Descending ? T::Compare(e, x) < 0 : T::Compare(e, x) > 0;
}

/// Forgets the comparisons so far and makes room for more, so that noting them allocates nothing.
void ForgetComparisons() {
    for (Comparisons* p : {&Card::s_compared, &Token::s_compared}) {
        p->clear();
        p->reserve(4096);
    }
}

/// Fills the list with tokens that carry their position as name; the letter 0 stands for null.
template <class List>
std::vector<Token*> AdoptTokens(List& list, const std::vector<long>& letters, long nNullLetter = 0) {
    std::vector<Token*> tokens;
    for (const long nLetter : letters) {
        tokens.push_back(nLetter == nNullLetter ? nullptr
                                                : new Token(nLetter, static_cast<long>(tokens.size())));
        list.Append(tokens.back());
    }
    return tokens;
}

/// A doubly linked list that is not exactly a KyDList, so that its sort goes by the virtual operations.
template <class T>
class VirtualDList : public KyDList<T> {};

/// An element that notes all that a sort does with it, and throws when its patience is over.
class Witness {
public:
    explicit Witness(long nKey = 0, long nTag = 0) : m_nKey(nKey), m_nTag(nTag) {}
    Witness(const Witness& other) : m_nKey(other.m_nKey), m_nTag(other.m_nTag) { Note("copy", m_nTag); }
    Witness& operator=(const Witness&) = default;
    ~Witness() {
        if (s_bSorting) {
            s_seen.push_back("destroy " + std::to_string(m_nTag) + " in " +
                             std::to_string(s_pList->m_nLength) + " at " +
                             std::to_string(s_pList->m_nCurIndex));
        }
    }

    static int Compare(const Witness& a, const Witness& b) {
        Note("compare", a.m_nTag, b.m_nTag);
        return a.m_nKey < b.m_nKey ? -1 : static_cast<int>(a.m_nKey > b.m_nKey);
    }
    friend bool operator>(const Witness& a, const Witness& b) { return Compare(a, b) > 0; }
    friend bool operator<(const Witness& a, const Witness& b) { return Compare(a, b) < 0; }

    long m_nKey;
    long m_nTag;

    inline static const KyList<Witness>* s_pList;
    inline static bool s_bSorting = false;
    inline static long s_nPatience;
    inline static std::vector<std::string> s_seen;

private:
    /// Notes an event, the length of the list and its cursor.
    template <class... Tags>
    static void Note(std::string sEvent, Tags... tags) {
        ((sEvent += ' ' + std::to_string(tags)), ...);
        sEvent += " in " + std::to_string(s_pList->m_nLength) + " at " + std::to_string(s_pList->m_nCurIndex);
        s_seen.push_back(sEvent + " on " + std::to_string(CursorPosition(*s_pList)));
        if (s_nPatience-- == 0) {
            throw std::runtime_error("no patience");
        }
    }
};

/// What a caller sees of a sort that is interrupted at the step given: every event, then the tags in order,
/// those of the nodes that stayed starred, and the cursor.
template <class List>
std::vector<std::string> SortWitnesses(const std::vector<long>& keys, Way way, long nPatience) {
    List list;
    Witness::s_pList = &list;
    Witness::s_nPatience = -1;
    for (const long nKey : keys) {
        list.Append(Witness(nKey, list.m_nLength));
    }
    const std::vector<KyListNode<Witness>*> before = Nodes(list);
    Witness::s_nPatience = nPatience;
    Witness::s_seen.clear();
    Witness::s_bSorting = true;
    try {
        SortBy(list, way, Witness::Compare);
    } catch (const std::runtime_error&) {
        Witness::s_seen.emplace_back("thrown");
    }
    Witness::s_bSorting = false;
    std::vector<std::string> seen = Witness::s_seen;
    for (const KyListNode<Witness>* p : Nodes(list)) {
        const auto nTag = static_cast<std::size_t>(p->m_data.m_nTag);
        seen.push_back(std::to_string(nTag) + (p == before[nTag] ? "*" : ""));
    }
    seen.push_back(std::to_string(list.m_nCurIndex));
    EXPECT_TRUE(IsSound(list));
    return seen;
}

constexpr long NoNulls = -1;

/// The calls but the reading ones, of which a sort may make as many as it likes.
std::vector<std::string> WithoutReads(std::vector<std::string> calls) {
    calls.erase(std::remove(calls.begin(), calls.end(), "GetCurData"), calls.end());
    return calls;
}

}  // namespace

TEST_P(WholeCardList, TheInsertionSortsFollowTheirStepsOnEveryShortList) {
    ForgetComparisons();
    ForEveryWord(3, 7, [](const std::vector<long>& word) {
        for (const Way way : EveryWay) {
            const std::unique_ptr<KyList<Card>> pList = GetParam().m_pfnMake();
            KyList<Card>& list = *pList;
            std::vector<Card> expected = Deal(word);
            for (const Card& card : expected) {
                list.Append(card);
            }
            list.MoveToFirst();
            const long nOldIndex = list.m_nCurIndex;
            const std::vector<KyListNode<Card>*> nodeOfTag = Nodes(list);
            Card::s_compared.clear();
            const std::vector<bool> isMoved =
                InsertionSort(expected, [way](const Card& e, const Card& x) { return IsAfter(way, e, x); });
            const Comparisons expectedComparisons = Card::s_compared;
            Card::s_compared.clear();
            std::vector<std::size_t> allocated;

            {
                const AllocationLog log;
                SortBy(list, way, Card::Compare);
                allocated = log.Singles();
            }

            EXPECT_EQ(Card::s_compared, expectedComparisons) << testing::PrintToString(word);
            EXPECT_EQ(Elements(list), expected) << testing::PrintToString(word);
            EXPECT_EQ(list.m_nCurIndex, word.size() < 2 ? nOldIndex : -1);
            EXPECT_TRUE(IsSound(list)) << testing::PrintToString(word);
            const std::vector<KyListNode<Card>*> nodes = Nodes(list);
            for (std::size_t i = 0; i < nodes.size(); ++i) {
                if (!isMoved[i]) {
                    EXPECT_EQ(nodes[i], nodeOfTag[static_cast<std::size_t>(expected[i].m_nTag)]);
                }
            }
            const auto nMoves = static_cast<std::size_t>(std::count(isMoved.begin(), isMoved.end(), true));
            EXPECT_EQ(allocated, std::vector<std::size_t>(nMoves, GetParam().m_nNodeBytes));
        }
    });
}

TEST_P(WholeCardList, TheInsertionSortsFollowTheirStepsUnderAnyAnswers) {
    static unsigned s_nSeed;
    const auto pfnAny = [](const Card& e, const Card& x) {
        Card::s_compared.emplace_back(e.m_nTag, x.m_nTag);
        const auto nPair = static_cast<unsigned>(e.m_nTag * 8 + x.m_nTag);
        return static_cast<int>((nPair * 2654435761U + s_nSeed * 40503U) >> 13U & 3U) - 1;
    };
    for (s_nSeed = 0; s_nSeed < 400; ++s_nSeed) {
        KyList<Card>& list = New();
        std::vector<Card> expected = Deal(std::vector<long>(s_nSeed % 9));
        for (const Card& card : expected) {
            list.Append(card);
        }
        Card::s_compared.clear();
        InsertionSort(expected, [pfnAny](const Card& e, const Card& x) { return pfnAny(e, x) > 0; });
        const Comparisons expectedComparisons = Card::s_compared;
        Card::s_compared.clear();

        list.Sort(pfnAny);

        EXPECT_EQ(Elements(list), expected);
        EXPECT_EQ(Card::s_compared, expectedComparisons);
        EXPECT_TRUE(IsSound(list));
    }
}

TEST_P(WholeCardList, EqualElementsKeepTheirOrderEitherWay) {
    KyList<Card>& list = New();
    Fill(list, {Card{3, 0}, Card{1, 1}, Card{2, 2}, Card{1, 3}});

    list.Sort(true);
    EXPECT_THAT(Elements(list), ElementsAre(Card{1, 1}, Card{1, 3}, Card{2, 2}, Card{3, 0}));

    list.Sort(false);
    EXPECT_THAT(Elements(list), ElementsAre(Card{3, 0}, Card{2, 2}, Card{1, 1}, Card{1, 3}));
}

TEST_P(WholeCardList, APairIsComparedOnceWithTheEarlierElementFirst) {
    KyList<Card>& list = New();
    Fill(list, {Card{1, 0}, Card{3, 1}, Card{2, 2}});
    Card::s_compared.clear();

    list.Sort(true);

    EXPECT_THAT(Card::s_compared, ElementsAre(std::pair(0, 1), std::pair(1, 2), std::pair(0, 2)));
}

TEST_P(WholeCardList, AComparisonThatThrowsLosesNoElement) {
    static long s_nUntilThrow;
    for (long n = 0; n < 10; ++n) {
        KyList<Card>& list = New();
        const std::vector<Card> cards = Deal({5, 4, 3, 2, 1});
        for (const Card& card : cards) {
            list.Append(card);
        }
        s_nUntilThrow = n;

        EXPECT_THROW(list.Sort([](const Card& a, const Card& b) {
            if (s_nUntilThrow-- == 0) {
                throw std::runtime_error("no answer");
            }
            return Card::Compare(a, b);
        }),
                     std::runtime_error);

        EXPECT_THAT(Elements(list), UnorderedElementsAreArray(cards));
        EXPECT_TRUE(IsSound(list));
    }
}

TEST_P(WholeCardList, ASortThatFindsNoMemoryLosesNoElement) {
    for (long n = 0; n < 4; ++n) {
        KyList<Card>& list = New();
        const std::vector<Card> cards = Deal({5, 4, 3, 2, 1});
        for (const Card& card : cards) {
            list.Append(card);
        }
        ForgetComparisons();

        {
            const FailingAllocation failing(n);
            EXPECT_THROW(list.Sort(true), std::bad_alloc);
        }

        EXPECT_THAT(Elements(list), UnorderedElementsAreArray(cards));
        EXPECT_TRUE(IsSound(list));
    }
}

TEST_P(WholeList, SortsAscendingAndDescending) {
    KyList<long>& list = New();
    Fill(list, {3, 1, 2, 1});

    list.Sort(true);
    EXPECT_THAT(Elements(list), ElementsAre(1, 1, 2, 3));

    list.Sort(false);
    EXPECT_THAT(Elements(list), ElementsAre(3, 2, 1, 1));
}

TEST_P(WholeList, IntegersSortAsSignedNumbers) {
    KyList<long>& list = New();
    Fill(list, {1, -1, 0, std::numeric_limits<long>::min(), std::numeric_limits<long>::max()});

    list.Sort(true);

    EXPECT_THAT(Elements(list),
                ElementsAre(std::numeric_limits<long>::min(), -1, 0, 1, std::numeric_limits<long>::max()));
}

TEST_P(WholeList, SortingASortedListKeepsEveryNodeAndEndsOnTheSentinel) {
    KyList<long>& list = New();
    Fill(list, {1, 2, 2, 3});
    list.MoveTo(1);
    const std::vector<KyListNode<long>*> nodes = Nodes(list);
    const AllocationLog log;

    list.Sort(true);

    EXPECT_THAT(log.Singles(), ElementsAre());
    EXPECT_EQ(Nodes(list), nodes);
    EXPECT_EQ(list.m_nCurIndex, -1);
    EXPECT_EQ(list.m_pCurNode, list.m_pHead);
}

TEST_P(WholeList, SortingOneElementOrNoneLeavesTheCursorWhereItWas) {
    KyList<long>& empty = New();
    empty.Sort(true);
    EXPECT_EQ(empty.m_nCurIndex, -1);

    KyList<long>& list = New();
    list.Append(1);
    list.Sort(false);
    list.Sort([](const long&, const long&) { return 1; });
    EXPECT_EQ(list.m_nCurIndex, 0);

    list.MoveTo(-1);
    list.Sort(true);
    EXPECT_EQ(list.m_nCurIndex, -1);
}

TEST_P(WholeList, SortsThroughTheProtocol) {
    KyList<long>& list = New();
    Fill(list, {2, 3, 1});
    KyDynArrayBase<long>& container = list;

    container.Sort([](const long& a, const long& b) { return a < b ? 1 : -1; });
    EXPECT_THAT(Elements(list), ElementsAre(3, 2, 1));

    container.Sort(true);
    EXPECT_THAT(Elements(list), ElementsAre(1, 2, 3));
}

TEST(ListSorting, TheDoublyLinkedSortIsBuiltFromCursorOperations) {
    Recorded<KyDList<long>> list;
    Fill(list, {2, 3, 1});
    list.TakeCalls();

    list.Sort(true);

    EXPECT_THAT(WithoutReads(list.TakeCalls()),
                ElementsAre("Sort 1", "MoveToFirst", "MoveToNext",  //
                            "MoveToPre", "MoveToNext", "MoveToNext",
                            // 1 passes 3, then 2, then meets the sentinel
                            "MoveToPre", "MoveToPre", "MoveToPre", "InsertAfterCur", "DelCur", "MoveToPre",
                            "MoveToNext"));
}

RC_GTEST_PROP(ListSorting, APlainDoublyLinkedListSortsStepByStepAsOneWithVirtualOperationsDoes, ()) {
    const auto keys = *rc::gen::container<std::vector<long>>(rc::gen::inRange(0L, 6L));
    const auto way = *rc::gen::elementOf(std::vector<Way>(std::begin(EveryWay), std::end(EveryWay)));
    const auto nPatience = *rc::gen::weightedOneOf<long>(
        {{1, rc::gen::just(-1L)},
         {1, rc::gen::inRange(0L, 1 + static_cast<long>(keys.size() * keys.size()))}});

    RC_ASSERT(SortWitnesses<KyDList<Witness>>(keys, way, nPatience) ==
              SortWitnesses<VirtualDList<Witness>>(keys, way, nPatience));
}

TEST(ListSorting, TheSinglyLinkedSortTakesNoFasterPath) {
    Recorded<KyList<long>> list;
    Fill(list, {2, 1});
    list.TakeCalls();

    list.Sort(true);

    EXPECT_THAT(
        WithoutReads(list.TakeCalls()),
        ElementsAre("Sort 1", "MoveToFirst", "MoveToNext",                                               //
                    "MoveToPre", "MoveTo 0", "MoveToFirst", "MoveToPre", "MoveTo -1", "InsertAfterCur",  //
                    "DelCur", "MoveToPre", "MoveTo 1", "MoveToFirst", "MoveToNext", "MoveToNext"));
}

TEST(ListSorting, TheOwningSortHandsTheObjectOverBeforeItRemovesTheNode) {
    Recorded<KyPDList<Token>> list;
    AdoptTokens(list, {2, 1});
    list.TakeCalls();
    const OwnedWatch watch;

    list.Sort(true);

    const std::vector<std::string> calls = WithoutReads(list.TakeCalls());
    const std::vector<std::string> expectedEnd = {"MoveToFirst", "MoveToNext",     "MoveToPre",
                                                  "MoveToPre",   "InsertAfterCur", "SetCurData",
                                                  "DelCur",      "MoveToPre",      "MoveToNext"};
    ASSERT_GE(calls.size(), expectedEnd.size());
    EXPECT_THAT(std::vector<std::string>(calls.end() - static_cast<long>(expectedEnd.size()), calls.end()),
                ElementsAreArray(expectedEnd));
    EXPECT_THAT(watch.Destroyed(), ElementsAre());
}

TYPED_TEST(WholeTokenList, TheSortByObjectsFollowsItsStepsAndPutsNullsLast) {
    ForgetComparisons();
    ForEveryWord(4, 6, [](const std::vector<long>& word) {
        for (const bool bAscending : {true, false}) {
            TypeParam list;
            std::vector<Token*> expected = AdoptTokens(list, word);
            list.MoveToFirst();
            const auto nNulls =
                static_cast<std::size_t>(std::count(expected.begin(), expected.end(), nullptr));
            Token::s_compared.clear();
            if (word.size() >= 2) {
                expected.erase(std::remove(expected.begin(), expected.end(), nullptr), expected.end());
                InsertionSort(expected, [bAscending](const Token* e, const Token* x) {
                    return IsAfter(bAscending ? Way::Ascending : Way::Descending, *e, *x);
                });
                expected.insert(expected.end(), nNulls, nullptr);
            }
            const Comparisons expectedComparisons = Token::s_compared;
            Token::s_compared.clear();
            const OwnedWatch watch;

            list.Sort(bAscending);

            const auto nLength = static_cast<long>(word.size());
            EXPECT_EQ(Elements(list), expected) << testing::PrintToString(word);
            EXPECT_EQ(Token::s_compared, expectedComparisons) << testing::PrintToString(word);
            EXPECT_THAT(watch.Destroyed(), ElementsAre());
            EXPECT_EQ(list.m_nCurIndex, nLength < 2 ? nLength - 1 : nNulls != 0 ? nLength - 1 : -1);
            EXPECT_TRUE(IsSound(list)) << testing::PrintToString(word);
        }
    });
}

TYPED_TEST(WholeTokenList, TheSortByAFunctionOfObjectsFollowsItsSteps) {
    ForgetComparisons();
    ForEveryWord(3, 7, [](const std::vector<long>& word) {
        TypeParam list;
        std::vector<Token*> expected = AdoptTokens(list, word, NoNulls);
        list.MoveToFirst();
        const long nOldIndex = list.m_nCurIndex;
        Token::s_compared.clear();
        const std::vector<bool> isMoved = InsertionSort(
            expected, [](const Token* e, const Token* x) { return IsAfter(Way::Function, *e, *x); });
        const Comparisons expectedComparisons = Token::s_compared;
        Token::s_compared.clear();
        const OwnedWatch watch;
        std::vector<std::size_t> allocated;

        {
            const AllocationLog log;
            list.Sort(Token::Compare);
            allocated = log.Singles();
        }

        EXPECT_EQ(Elements(list), expected) << testing::PrintToString(word);
        EXPECT_EQ(Token::s_compared, expectedComparisons) << testing::PrintToString(word);
        EXPECT_EQ(allocated.size(),
                  static_cast<std::size_t>(std::count(isMoved.begin(), isMoved.end(), true)));
        EXPECT_THAT(watch.Destroyed(), ElementsAre());
        EXPECT_EQ(list.m_nCurIndex, word.size() < 2 ? nOldIndex : -1);
        EXPECT_TRUE(IsSound(list)) << testing::PrintToString(word);
    });
}

TYPED_TEST(WholeTokenList, NullsEndUpBehindEveryObjectAndTheCursorOnTheLastOfThem) {
    TypeParam list;
    const std::vector<Token*> tokens = AdoptTokens(list, {0, 2, 0, 1});

    list.Sort(true);
    EXPECT_THAT(Elements(list), ElementsAre(tokens[3], tokens[1], nullptr, nullptr));
    EXPECT_EQ(list.m_nCurIndex, 3);

    list.Sort(false);
    EXPECT_THAT(Elements(list), ElementsAre(tokens[1], tokens[3], nullptr, nullptr));
    EXPECT_EQ(list.m_nCurIndex, 3);
}

TYPED_TEST(WholeTokenList, AListOfNullsOnlySortsToItself) {
    TypeParam list;
    list.SetLength(3, false);

    list.Sort(true);

    EXPECT_THAT(Elements(list), ElementsAre(nullptr, nullptr, nullptr));
    EXPECT_EQ(list.m_nCurIndex, 2);
    EXPECT_TRUE(IsSound(list));
}

TYPED_TEST(WholeTokenList, TheSortOfPointersDestroysTheObjectsThatMove) {
    TypeParam list;
    AdoptTokens(list, {1, 2, 3}, NoNulls);
    static std::vector<const Token*> s_wanted;
    s_wanted = {*list.GetAt(2), *list.GetAt(0), *list.GetAt(1)};
    const OwnedWatch watch;

    list.Sort([](Token* const& a, Token* const& b) {
        const auto rank = [](const Token* p) {
            return std::find(s_wanted.begin(), s_wanted.end(), p) - s_wanted.begin();
        };
        return rank(a) < rank(b) ? -1 : 1;
    });

    EXPECT_THAT(watch.Destroyed(), ElementsAre(2));
    EXPECT_EQ(list.m_nLength, 3);
    EXPECT_EQ((*list.GetAt(1))->m_nKey, 1);
    EXPECT_EQ((*list.GetAt(2))->m_nKey, 2);
    EXPECT_TRUE(IsSound(list));
    list.MoveToFirst();
    list.SetCurData(nullptr);
}

TYPED_TEST(WholeTokenList, TheSortOfPointersDestroysNothingThatStays) {
    TypeParam list;
    AdoptTokens(list, {1, 2, 3}, NoNulls);
    const std::vector<Token*> tokens = Elements(list);
    const OwnedWatch watch;

    list.Sort([](Token* const&, Token* const&) { return 0; });

    EXPECT_THAT(watch.Destroyed(), ElementsAre());
    EXPECT_EQ(Elements(list), tokens);
}

TYPED_TEST(WholeTokenList, ASortThatFindsNoMemoryLosesNoObject) {
    const OwnedWatch watch;
    for (long n = 0; n < 3; ++n) {
        TypeParam list;
        const std::vector<Token*> tokens = AdoptTokens(list, {4, 3, 2, 1}, NoNulls);
        ForgetComparisons();

        {
            const FailingAllocation failing(n);
            EXPECT_THROW(list.Sort(true), std::bad_alloc);
        }

        EXPECT_THAT(Elements(list), UnorderedElementsAreArray(tokens));
        EXPECT_EQ(watch.Live(), 4);
        EXPECT_TRUE(IsSound(list));
    }
    EXPECT_EQ(watch.Live(), 0);
}

TEST(ListSorting, PointersSortAsUnsignedAddresses) {
    int numbers[3];
    const auto pHigh = reinterpret_cast<int*>(~std::uintptr_t{7});
    KyList<int*> singly;
    KyDList<int*> doubly;
    for (KyList<int*>* pList : {&singly, static_cast<KyList<int*>*>(&doubly)}) {
        Fill(*pList, {pHigh, &numbers[2], nullptr, &numbers[0], &numbers[1]});

        pList->Sort(true);
        EXPECT_THAT(*pList, ElementsAre(nullptr, &numbers[0], &numbers[1], &numbers[2], pHigh));

        pList->Sort(false);
        EXPECT_THAT(*pList, ElementsAre(pHigh, &numbers[2], &numbers[1], &numbers[0], nullptr));
    }
}

TEST(ListSorting, NotANumberNeitherLoopsNorLosesElements) {
    const double nan = std::nan("");
    for (const bool bAscending : {true, false}) {
        KyDList<double> list;
        Fill(list, {nan, 3.0, nan, 1.0, 2.0, nan});

        list.Sort(bAscending);

        std::vector<double> numbers = Elements(list);
        EXPECT_EQ(numbers.size(), 6U);
        EXPECT_EQ(std::count_if(numbers.begin(), numbers.end(), [](double x) { return std::isnan(x); }), 3);
        for (const double x : {1.0, 2.0, 3.0}) {
            EXPECT_EQ(std::count(numbers.begin(), numbers.end(), x), 1);
        }
        EXPECT_TRUE(IsSound(list));
    }
}

TEST(ListSorting, ACycleOfComparisonsNeitherLoopsNorLosesElements) {
    KyList<long> list;
    Fill(list, {0, 1, 2, 0, 1, 2, 2, 1, 0});

    list.Sort([](const long& a, const long& b) { return (a - b + 3) % 3 == 1 ? 1 : a == b ? 0 : -1; });

    EXPECT_THAT(Elements(list), UnorderedElementsAreArray({0, 0, 0, 1, 1, 1, 2, 2, 2}));
    EXPECT_TRUE(IsSound(list));
}

TEST(ListSorting, ElementsWithoutAnOrderStayAsTheyAre) {
    KyList<Unordered> list;
    Fill(list, {{3}, {1}, {2}});
    const std::vector<KyListNode<Unordered>*> nodes = Nodes(list);

    list.Sort(true);
    list.Sort(false);

    EXPECT_EQ(Nodes(list), nodes);
    EXPECT_EQ(list.m_nCurIndex, -1);

    list.Sort([](const Unordered& a, const Unordered& b) { return a.m_nKey > b.m_nKey ? 1 : 0; });
    EXPECT_THAT(Elements(list), ElementsAre(Unordered{1}, Unordered{2}, Unordered{3}));
}

TEST(ListSorting, ObjectsWithoutAnOrderStayAsTheyAreBeforeTheNulls) {
    KyPDList<Unordered> list;
    Fill(list, {nullptr, new Unordered{2}, nullptr, new Unordered{1}});
    const std::vector<Unordered*> objects = Elements(list);

    list.Sort(true);

    EXPECT_THAT(Elements(list), ElementsAre(objects[1], objects[3], nullptr, nullptr));
    EXPECT_EQ(list.m_nCurIndex, 3);
}

TEST(ListSorting, EachDirectionNeedsItsOwnOperator) {
    struct LessOnly {
        long m_nKey;
        bool operator<(const LessOnly& other) const { return m_nKey < other.m_nKey; }
    };
    KyDList<LessOnly> list;
    Fill(list, {{1}, {3}, {2}});
    const auto keys = [&list] {
        std::vector<long> result;
        for (const LessOnly& x : list) {
            result.push_back(x.m_nKey);
        }
        return result;
    };

    list.Sort(true);
    EXPECT_THAT(keys(), ElementsAre(1, 3, 2));

    list.Sort(false);
    EXPECT_THAT(keys(), ElementsAre(3, 2, 1));
}

TEST(ListSorting, OperatorsOnElementsThatAreNotConstServeToo) {
    KyList<NonConstOrdered> list;
    Fill(list, {{2}, {1}});
    list.Sort(true);
    EXPECT_THAT(Elements(list), ElementsAre(NonConstOrdered{1}, NonConstOrdered{2}));

    KyPDList<NonConstOrdered> owning;
    Fill(owning, {new NonConstOrdered{1}, new NonConstOrdered{2}});
    owning.Sort(false);
    EXPECT_EQ((*owning.GetFirst())->m_nKey, 2);
}

namespace {

template <class List, class Argument, class = void>
struct CanSort : std::false_type {};
template <class List, class Argument>
struct CanSort<List, Argument, std::void_t<decltype(std::declval<List&>().Sort(std::declval<Argument>()))>>
    : std::true_type {};

}  // namespace

TEST(ListSorting, AFunctionOfTheWrongTypeDoesNotCompile) {
    using OfLong = int (*)(const long&, const long&);
    using OfInt = int (*)(const int&, const int&);
    using Predicate = bool (*)(const long&, const long&);
    const auto wrongLambda = [](long, long) { return 0; };
    const auto rightLambda = [](const long&, const long&) { return 0; };

    EXPECT_TRUE((CanSort<KyList<long>, bool>::value));
    EXPECT_TRUE((CanSort<KyList<long>, OfLong>::value));
    EXPECT_TRUE((CanSort<KyXList<long>, decltype(rightLambda)>::value));
    EXPECT_FALSE((CanSort<KyList<long>, OfInt>::value));
    EXPECT_FALSE((CanSort<KyDList<long>, Predicate>::value));
    EXPECT_FALSE((CanSort<KyDList<long>, decltype(wrongLambda)>::value));
    EXPECT_FALSE((CanSort<KyXList<long>, long*>::value));
}

TEST(ListSorting, AnOwningListSortsByPointersOrByObjects) {
    using OfObjects = int (*)(const Owned&, const Owned&);
    using OfPointers = int (*)(Owned* const&, Owned* const&);
    using OfPointerValues = int (*)(Owned*, Owned*);

    EXPECT_TRUE((CanSort<KyPDList<Owned>, bool>::value));
    EXPECT_TRUE((CanSort<KyPDList<Owned>, OfObjects>::value));
    EXPECT_TRUE((CanSort<KyPXList<Owned>, OfPointers>::value));
    EXPECT_FALSE((CanSort<KyPDList<Owned>, OfPointerValues>::value));
    EXPECT_FALSE((CanSort<KyPXList<Owned>, OfPointerValues>::value));
    EXPECT_FALSE((CanSort<KyDList<Owned*>, OfObjects>::value));
}

TEST_P(WholeList, ReverseListTurnsTheNodesAndLeavesTheCursorsNodeAndIndex) {
    for (long nLength = 0; nLength <= 7; ++nLength) {
        for (long nCursor = -1; nCursor < nLength; ++nCursor) {
            KyList<long>& list = New();
            for (long i = 0; i < nLength; ++i) {
                list.Append(i);
            }
            list.MoveTo(nCursor);
            std::vector<KyListNode<long>*> nodes = Nodes(list);
            const KyListNode<long>* const pCurNode = list.m_pCurNode;

            list.ReverseList();

            std::reverse(nodes.begin(), nodes.end());
            EXPECT_EQ(Nodes(list), nodes) << nLength;
            EXPECT_EQ(list.m_pCurNode, pCurNode);
            EXPECT_EQ(list.m_nCurIndex, nCursor);
            EXPECT_TRUE(RingIsSound(list)) << nLength;
        }
    }
}

TEST_P(WholeList, MoveToFirstAndMoveToLastAreExactAfterReverseList) {
    KyList<long>& list = New();
    Fill(list, {1, 2, 3});
    list.MoveToFirst();

    list.ReverseList();
    EXPECT_THAT(Elements(list), ElementsAre(3, 2, 1));
    EXPECT_EQ(list.GetCurData(), 1);
    EXPECT_EQ(list.m_nCurIndex, 0);

    list.MoveToFirst();
    EXPECT_EQ(list.GetCurData(), 3);
    EXPECT_TRUE(IsSound(list));
    list.MoveToLast();
    EXPECT_EQ(list.GetCurData(), 1);
    EXPECT_TRUE(IsSound(list));
}

TEST_P(WholeList, ReversingTwiceRestoresEverything) {
    KyList<long>& list = New();
    Fill(list, {1, 2, 3, 4});
    list.MoveTo(1);
    const std::vector<KyListNode<long>*> nodes = Nodes(list);

    list.ReverseList();
    list.ReverseList();

    EXPECT_EQ(Nodes(list), nodes);
    EXPECT_TRUE(IsSound(list));
}

TEST_P(WholeList, ReverseListAllocatesNothing) {
    KyList<long>& list = New();
    Fill(list, {1, 2, 3});
    const AllocationLog log;

    list.ReverseList();

    EXPECT_THAT(log.Singles(), ElementsAre());
    EXPECT_THAT(log.Arrays(), ElementsAre());
}

TEST(ListReversal, MoveToTrustsTheIndexThatReverseListLeft) {
    KyList<long> singly;
    KyDList<long> doubly;
    for (KyList<long>* pList : {&singly, static_cast<KyList<long>*>(&doubly)}) {
        Fill(*pList, {0, 1, 2, 3, 4});
        pList->MoveTo(1);
        pList->ReverseList();

        pList->MoveTo(2);

        EXPECT_EQ(pList->m_nCurIndex, 2);
        EXPECT_EQ(pList->GetCurData(), 0) << "one node behind the cursor's, which is the last";
    }
}

TEST(ListReversal, AnIndexedListMovesExactlyEvenSo) {
    for (const long nStep : {1L, 2L, 3L, 64L}) {
        KyXList<long> list(nStep);
        Fill(list, {0, 1, 2, 3, 4});
        list.MoveTo(1);
        list.ReverseList();

        EXPECT_EQ(*list.GetAt(2), 2);
        EXPECT_EQ(list.GetCurData(), 1);
        list.MoveTo(2);

        EXPECT_EQ(list.GetCurData(), 2);
        EXPECT_TRUE(IsSound(list));
    }
}

TEST_P(WholeList, RotateBringsTheElementToItsPositionForAllPositions) {
    for (long nLength = 1; nLength <= 7; ++nLength) {
        for (long from = 0; from < nLength; ++from) {
            for (long to = 0; to < nLength; ++to) {
                for (long nCursor = -1; nCursor < nLength; ++nCursor) {
                    KyList<long>& list = New();
                    for (long i = 0; i < nLength; ++i) {
                        list.Append(i);
                    }
                    list.MoveTo(nCursor);
                    std::vector<KyListNode<long>*> nodes = Nodes(list);
                    std::rotate(nodes.begin(), nodes.begin() + (from - to + nLength) % nLength, nodes.end());

                    list.Rotate(from, to);

                    EXPECT_EQ(Nodes(list), nodes) << nLength << ": " << from << " to " << to;
                    EXPECT_EQ(*list.GetAt(to), from) << nLength << ": " << from << " to " << to;
                    EXPECT_EQ(list.m_nCurIndex, from == to ? nCursor : 0);
                    EXPECT_TRUE(IsSound(list)) << nLength << ": " << from << " to " << to;
                }
            }
        }
    }
}

TEST_P(WholeList, RotateEndsOnTheNewFirstElement) {
    KyList<long>& list = New();
    Fill(list, {0, 1, 2, 3, 4});

    list.Rotate(3, 0);
    EXPECT_THAT(Elements(list), ElementsAre(3, 4, 0, 1, 2));
    EXPECT_EQ(list.GetCurData(), 3);
    EXPECT_EQ(list.m_nCurIndex, 0);

    KyList<long>& other = New();
    Fill(other, {0, 1, 2, 3, 4});
    other.Rotate(0, 3);
    EXPECT_THAT(Elements(other), ElementsAre(2, 3, 4, 0, 1));
}

#if !defined(KY_CHECKED)
TEST_P(WholeList, RotateOutsideTheListChangesNothing) {
    for (long nLength = 0; nLength <= 3; ++nLength) {
        for (long from = -2; from <= nLength + 1; ++from) {
            for (long to = -2; to <= nLength + 1; ++to) {
                const auto bInside = [nLength](long i) { return i >= 0 && i < nLength; };
                if (bInside(from) && bInside(to)) {
                    continue;
                }
                KyList<long>& list = New();
                for (long i = 0; i < nLength; ++i) {
                    list.Append(i);
                }
                const std::vector<KyListNode<long>*> nodes = Nodes(list);

                list.Rotate(from, to);

                EXPECT_EQ(Nodes(list), nodes) << nLength << ": " << from << " to " << to;
                EXPECT_EQ(list.m_nCurIndex, nLength - 1);
                EXPECT_TRUE(IsSound(list)) << nLength << ": " << from << " to " << to;
            }
        }
    }
}
#endif

TEST(ListRotation, IsBuiltFromTwoCursorMoves) {
    Recorded<KyDList<long>> list;
    Fill(list, {0, 1, 2, 3, 4});
    list.TakeCalls();

    list.Rotate(3, 0);
    EXPECT_THAT(list.TakeCalls(),
                ElementsAre("Rotate 3 0", "MoveTo 2", "MoveToPre", "MoveToPre", "MoveTo 3", "MoveToNext"));

    list.Rotate(0, 1);
    EXPECT_THAT(list.TakeCalls(),
                ElementsAre("Rotate 0 1", "MoveTo 3", "MoveToNext", "MoveToNext", "MoveToNext", "MoveTo 4"));

    list.Rotate(2, 2);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("Rotate 2 2"));
}

TEST_P(WholeList, ConbineTakesTheOthersElementsFromEveryPosition) {
    for (long nLength = 0; nLength <= 4; ++nLength) {
        for (long nOther = 0; nOther <= 5; ++nOther) {
            for (long pos = -2; pos <= nOther + 1; ++pos) {
                KyList<long>& list = New();
                KyList<long>& other = New();
                for (long i = 0; i < nLength; ++i) {
                    list.Append(i);
                }
                for (long i = 0; i < nOther; ++i) {
                    other.Append(10 + i);
                }
                const bool bTakes = pos >= 0 && pos < nOther;
                list.MoveTo(nLength / 2);
                other.MoveTo(nOther / 3);
                const long nCursor = list.m_nCurIndex;
                std::vector<KyListNode<long>*> nodes = Nodes(list);
                std::vector<KyListNode<long>*> otherNodes = Nodes(other);
                if (bTakes) {
                    nodes.insert(nodes.end(), otherNodes.begin() + pos, otherNodes.end());
                    otherNodes.resize(static_cast<std::size_t>(pos));
                }

                const long nResult = list.Conbine(other, pos);

                EXPECT_EQ(nResult, static_cast<long>(nodes.size()));
                EXPECT_EQ(Nodes(list), nodes);
                EXPECT_EQ(Nodes(other), otherNodes);
                EXPECT_EQ(list.m_nCurIndex, nCursor);
                EXPECT_EQ(other.m_nCurIndex, bTakes ? pos - 1 : nOther == 0 ? -1 : nOther / 3);
                EXPECT_TRUE(IsSound(list)) << nLength << ", " << nOther << " from " << pos;
                EXPECT_TRUE(IsSound(other)) << nLength << ", " << nOther << " from " << pos;
            }
        }
    }
}

TEST_P(WholeList, ConbineReturnsTheNewLength) {
    KyList<long>& list = New();
    Fill(list, {1, 2});
    KyList<long>& other = New();
    Fill(other, {3, 4, 5, 6});

    EXPECT_EQ(list.Conbine(other, 2), 4);
    EXPECT_THAT(Elements(list), ElementsAre(1, 2, 5, 6));
    EXPECT_THAT(Elements(other), ElementsAre(3, 4));

    EXPECT_EQ(list.Conbine(other, 4), 4);
    EXPECT_THAT(Elements(other), ElementsAre(3, 4));

    EXPECT_EQ(list.Conbine(other, 0), 6);
    EXPECT_THAT(Elements(list), ElementsAre(1, 2, 5, 6, 3, 4));
    EXPECT_EQ(other.m_nLength, 0);
    EXPECT_EQ(other.m_nCurIndex, -1);
}

TEST_P(WholeList, ConbineWithItselfChangesNothing) {
    KyList<long>& list = New();
    Fill(list, {1, 2, 3});
    list.MoveTo(1);
    const std::vector<KyListNode<long>*> nodes = Nodes(list);

    for (const long pos : {-1L, 0L, 1L, 2L, 3L}) {
        EXPECT_EQ(list.Conbine(list, pos), 3);

        EXPECT_EQ(Nodes(list), nodes);
        EXPECT_EQ(list.m_nCurIndex, 1);
        EXPECT_TRUE(IsSound(list));
    }
}

TEST(ListCombination, ThatCombinesNothingLeavesTheIndexItsRoom) {
    KyXList<long> list(1);
    Fill(list, {1, 2, 3});
    KyXList<long> other(1);
    Fill(other, {4, 5});
    const long nCapacity = list.m_arrIndex.m_nCapacity;

    list.Conbine(other, -10 * nCapacity);
    list.Conbine(other, 2);
    list.ReAllocate(nCapacity * 9 / 10);
    list.Conbine(list, 0);

    EXPECT_EQ(list.m_arrIndex.m_nCapacity, nCapacity);
    EXPECT_EQ(other.m_nLength, 2);
}

TEST(ListCombination, GivesTheIndexRoomForWhatMovesOnly) {
    KyXList<long> list(1);
    list.ReAllocate(1000);
    KyXList<long> other(1);
    other.ReAllocate(1000);
    const long nCapacity = list.m_arrIndex.m_nCapacity;

    list.Conbine(other, 980);

    ASSERT_LT(list.m_nLength, nCapacity);
    EXPECT_EQ(list.m_arrIndex.m_nCapacity, nCapacity);
}

TEST_P(WholeList, BothListsLiveOnAfterConbine) {
    KyList<long>& list = New();
    Fill(list, {1});
    {
        const std::unique_ptr<KyList<long>> pOther = GetParam().m_pfnMake();
        Fill(*pOther, {2, 3});
        list.Conbine(*pOther, 1);
        pOther->Append(4);
        EXPECT_THAT(Elements(*pOther), ElementsAre(2, 4));
        EXPECT_TRUE(IsSound(*pOther));
    }
    list.Append(5);

    EXPECT_THAT(Elements(list), ElementsAre(1, 3, 5));
    EXPECT_TRUE(IsSound(list));
}

TEST(ListCombination, CopiesAndAllocatesNothing) {
    KyDList<Fragile> list;
    KyDList<Fragile> other;
    Fill(other, {1, 2, 3});
    const FragileWatch watch;
    const AllocationLog log;

    list.Conbine(other, 0);

    EXPECT_THAT(log.Singles(), ElementsAre());
    EXPECT_EQ(watch.Copies(), 0);
    EXPECT_EQ(watch.Live(), 0);
}

TEST(ListCombination, AsksTheOtherListThroughItsOwnOperations) {
    KyDList<long> list;
    list.Append(0);
    Recorded<KyDList<long>> other;
    Fill(other, {1, 2, 3, 4});
    other.TakeCalls();

    list.Conbine(other, 2);

    EXPECT_THAT(other.TakeCalls(), ElementsAre("MoveTo 2", "MoveToPre", "MoveToLast", "MoveTo 1", "MoveToPre",
                                               "MoveToPre", "DetachAfterCur"));
    EXPECT_THAT(Elements(list), ElementsAre(0, 3, 4));
}

TEST(ListCombination, CallsNothingVirtualOnTheListThatGrows) {
    Recorded<KyList<long>> list;
    KyList<long> other;
    Fill(list, {1});
    Fill(other, {2});
    list.TakeCalls();

    list.Conbine(other, 0);

    EXPECT_THAT(list.TakeCalls(), ElementsAre("Conbine 0"));
}

TEST(ListCombination, IndexedAndPlainListsMixAndEveryIndexIsExact) {
    for (const long nStep : {1L, 2L, 3L, 7L}) {
        for (const long nOtherStep : {1L, 2L, 5L}) {
            for (long pos = 0; pos < 6; ++pos) {
                KyXList<long> indexed(nStep);
                KyXList<long> other(nOtherStep);
                KyDList<long> plain;
                Fill(indexed, {0, 1, 2});
                Fill(other, {10, 11, 12, 13, 14, 15});
                Fill(plain, {20, 21, 22, 23, 24, 25});

                indexed.Conbine(other, pos);
                EXPECT_TRUE(IsSound(indexed));
                EXPECT_TRUE(IsSound(other));
                EXPECT_EQ(other.m_nLength, pos);

                indexed.Conbine(plain, pos);
                EXPECT_TRUE(IsSound(indexed));
                EXPECT_TRUE(IsSound(plain));

                plain.Conbine(indexed, pos);
                EXPECT_TRUE(IsSound(indexed));
                EXPECT_TRUE(IsSound(plain));
                EXPECT_EQ(indexed.m_nLength, pos);
                EXPECT_EQ(plain.m_nLength, pos + 3 + 2 * (6 - pos) - pos);
            }
        }
    }
}

TEST(ListCombination, OwningListsOfBothKindsMix) {
    const OwnedWatch watch;
    {
        KyPDList<Owned> plain;
        KyPXList<Owned> indexed(2);
        Adopt(plain, {1, 2, 3});
        Adopt(indexed, {4, 5, 6});

        indexed.Conbine(plain, 1);
        plain.Conbine(indexed, 2);

        EXPECT_THAT(Ids(indexed), ElementsAre(4, 5));
        EXPECT_THAT(Ids(plain), ElementsAre(1, 6, 2, 3));
        EXPECT_TRUE(IsSound(indexed));
        EXPECT_TRUE(IsSound(plain));
        EXPECT_EQ(watch.Live(), 6);
    }
    EXPECT_EQ(watch.Live(), 0);
}

TEST(ListCombination, AnIndexThatCannotGrowLeavesBothListsAsTheyWere) {
    KyXList<long> list(1);
    KyDList<long> other;
    Fill(other, {1, 2});

    {
        const FailingAllocation failing(0);
        EXPECT_THROW(list.Conbine(other, 0), std::bad_alloc);
    }

    EXPECT_THAT(Elements(list), ElementsAre());
    EXPECT_THAT(Elements(other), ElementsAre(1, 2));
    EXPECT_TRUE(IsSound(list));
    EXPECT_TRUE(IsSound(other));
}
