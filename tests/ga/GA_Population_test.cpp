#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "GA_TestKit.h"

namespace {

using testing::ElementsAre;

/// Fills a population with individuals named by their ranks, which must ascend.
void Fill(GA_Population& population, const std::vector<long>& ranks) {
    KyPDList<GA_Individual>& list = population;
    for (const long nRank : ranks) {
        list.Append(new NamedIndividual(std::to_string(nRank), 0, nRank));
    }
    list.MoveTo(-1);
    Journal::Clear();
}

NamedIndividual* Newcomer(long nRank) { return new NamedIndividual(std::to_string(nRank), 0, nRank); }

const std::string& NameOf(const GA_Individual& individual) {
    return dynamic_cast<const NamedIndividual&>(individual).m_strName;
}

std::vector<std::string> NamesFromTheTail(const GA_Population& population) {
    std::vector<std::string> names;
    for (auto it = population.end(); it != population.begin();) {
        names.push_back(NameOf(**--it));
    }
    return names;
}

class Append : public testing::Test {
protected:
    void SetUp() override { Journal::Clear(); }
};

TEST(GA_Population, StartsEmptyWithoutSizeAndRateAtGenerationZero) {
    const GA_Population population;

    EXPECT_EQ(population.m_nLength, 0);
    EXPECT_EQ(population.m_nCurIndex, -1);
    EXPECT_EQ(population.m_nPopSize, 0);
    EXPECT_EQ(population.m_nMutationRate, 0);
    EXPECT_EQ(population.m_nGeneration, 0);
}

TEST(GA_Population, TakesItsSettingsFromTheConstructor) {
    const GA_Population population(40, 15);

    EXPECT_EQ(population.m_nPopSize, 40);
    EXPECT_EQ(population.m_nMutationRate, 15);
    EXPECT_EQ(population.m_nGeneration, 0);
}

TEST(GA_Population, IsAnOwningListOfIndividuals) {
    EXPECT_TRUE((std::is_base_of_v<KyPDList<GA_Individual>, GA_Population>));
    EXPECT_FALSE((std::is_convertible_v<long, GA_Population>));
    EXPECT_FALSE(std::is_copy_constructible_v<GA_Population>);
}

TEST(GA_Population, HasHooksThatGoOnAndDoNothing) {
    GA_Population population;

    population.Step();

    EXPECT_TRUE(population.IsContinue());
    EXPECT_EQ(population.m_nLength, 0);
    EXPECT_EQ(population.m_nGeneration, 0);
}

TEST(GA_Population, DeletesItsIndividualsWithTheirGenes) {
    const long nGenes = NamedGene::s_nAlive;
    const long nIndividuals = NamedIndividual::s_nAlive;
    {
        GA_Population population;
        population.Append(new NamedIndividual("A", 3));
        population.Append(new NamedIndividual("B", 2));
    }

    EXPECT_EQ(NamedGene::s_nAlive, nGenes);
    EXPECT_EQ(NamedIndividual::s_nAlive, nIndividuals);
}

TEST(GA_Population, SortsByTheIndividualsOwnComparisons) {
    NamedPopulation population;
    Fill(population, {3, 1, 2});

    population.Sort(true);

    EXPECT_THAT(population.Names(), ElementsAre("1", "2", "3"));
}

TEST(GA_Population, IsReversedWithTheCursorOnItsNodeUnderTheOldIndex) {
    NamedPopulation population;
    Fill(population, {1, 2, 3, 4});
    population.MoveTo(1);

    population.ReverseList();

    EXPECT_THAT(population.Names(), ElementsAre("4", "3", "2", "1"));
    EXPECT_THAT(NamesFromTheTail(population), ElementsAre("1", "2", "3", "4"));
    EXPECT_EQ(NameOf(*population.GetCurData()), "2");
    EXPECT_EQ(population.m_nCurIndex, 1);
    EXPECT_EQ(population.m_nLength, 4);
}

TEST(GA_Population, IsRotatedWithTheCursorOnTheFirst) {
    NamedPopulation population;
    Fill(population, {1, 2, 3, 4, 5});
    population.MoveTo(3);

    population.Rotate(3, 1);

    EXPECT_THAT(population.Names(), ElementsAre("3", "4", "5", "1", "2"));
    EXPECT_THAT(NamesFromTheTail(population), ElementsAre("2", "1", "5", "4", "3"));
    EXPECT_EQ(NameOf(*population.GetCurData()), "3");
    EXPECT_EQ(population.m_nCurIndex, 0);
    EXPECT_EQ(population.m_nLength, 5);
}

TEST(GA_Population, RotatedToWhereItIsStaysAsItIs) {
    NamedPopulation population;
    Fill(population, {1, 2, 3});
    population.MoveTo(2);

    population.Rotate(1, 1);

    EXPECT_THAT(population.Names(), ElementsAre("1", "2", "3"));
    EXPECT_EQ(population.m_nCurIndex, 2);
}

TEST_F(Append, OfNullChangesNothing) {
    TracedPopulation population;
    Fill(population, {1, 2});
    population.MoveTo(1);
    Journal::Clear();

    population.Append(nullptr);

    EXPECT_EQ(population.m_nLength, 2);
    EXPECT_EQ(population.m_nCurIndex, 1);
    EXPECT_THAT(Journal::Lines(), ElementsAre());
}

TEST_F(Append, IntoAnEmptyPopulationComparesNothing) {
    TracedPopulation population;

    population.Append(Newcomer(1));

    EXPECT_THAT(population.Names(), ElementsAre("1"));
    EXPECT_EQ(population.m_nCurIndex, 0);
    EXPECT_THAT(Journal::Lines(), ElementsAre("MoveTo(0)", "InsertCur(1)"));
}

TEST_F(Append, KeepsTheFittestAtTheHead) {
    NamedPopulation population;

    for (const long nRank : {5, 1, 3, 2, 4}) {
        population.Append(Newcomer(nRank));
    }

    EXPECT_THAT(population.Names(), ElementsAre("1", "2", "3", "4", "5"));
}

TEST_F(Append, ReturnsNothingAndTakesItsPointerByValue) {
    EXPECT_TRUE((
        std::is_same_v<decltype(static_cast<void (GA_Population::*)(GA_Individual*)>(&GA_Population::Append)),
                       void (GA_Population::*)(GA_Individual*)>));
}

TEST_F(Append, ThroughTheListsSlotAppendsUnsortedAtTheEnd) {
    NamedPopulation population;
    Fill(population, {2, 3});
    KyDynArrayBase<GA_Individual*>& container = population;

    const long nIndex = container.Append(Newcomer(1));

    EXPECT_EQ(nIndex, 2);
    EXPECT_EQ(population.m_nCurIndex, 2);
    EXPECT_THAT(population.Names(), ElementsAre("2", "3", "1"));
    EXPECT_THAT(Journal::Lines(), ElementsAre());
}

TEST_F(Append, LeavesTheCursorOnTheNewcomer) {
    NamedPopulation population;
    Fill(population, {10, 20, 30, 40});

    population.Append(Newcomer(25));

    EXPECT_EQ(population.m_nCurIndex, 2);
    EXPECT_EQ(dynamic_cast<NamedIndividual&>(*population.GetCurData()).m_strName, "25");
}

// Each row: who stands there, who comes, and every operation and comparison on the way.
struct Search {
    std::vector<long> residents;
    long nNewcomer;
    std::string strOperations;
};

std::ostream& operator<<(std::ostream& stream, const Search& search) {
    return stream << search.nNewcomer << " into " << testing::PrintToString(search.residents);
}

std::string Joined(const std::vector<std::string>& lines) {
    std::string strJoined;
    for (const std::string& strLine : lines) {
        strJoined += (strJoined.empty() ? "" : " ") + strLine;
    }
    return strJoined;
}

class AppendSearch : public testing::TestWithParam<Search> {};

TEST_P(AppendSearch, MovesAndComparesInTheStatedSequence) {
    TracedPopulation population;
    Fill(population, GetParam().residents);

    population.Append(Newcomer(GetParam().nNewcomer));

    EXPECT_EQ(Joined(Journal::Lines()), GetParam().strOperations);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, AppendSearch,
    testing::Values(
        // A new head, a new tail, and a tie with the only one.
        Search{{5}, 4, "MoveTo(0) GetCurData 4<5 InsertCur(4)"},
        Search{{5}, 6, "MoveTo(0) GetCurData 6<5 MoveTo(0) GetCurData 6>5 MoveToNext InsertCur(6)"},
        Search{{5},
               5,
               "MoveTo(0) GetCurData 5<5 MoveTo(0) GetCurData 5>5 MoveTo(0) GetCurData 5>5 5<5 InsertCur(5)"},
        // The bounds meet on an element that the newcomer goes before.
        Search{{1, 3},
               2,
               "MoveTo(0) GetCurData 2<1 MoveTo(1) GetCurData 2>3 MoveTo(0) GetCurData 2>1 MoveTo(1) "
               "GetCurData 2>3 2<3 InsertCur(2)"},
        Search{{1, 3, 5},
               4,
               "MoveTo(0) GetCurData 4<1 MoveTo(2) GetCurData 4>5 MoveTo(1) GetCurData 4>3 MoveTo(2) "
               "GetCurData 4>5 4<5 InsertCur(4)"},
        Search{{1, 2, 3, 7, 8, 9},
               6,
               "MoveTo(0) GetCurData 6<1 MoveTo(5) GetCurData 6>9 MoveTo(2) GetCurData 6>3 MoveTo(4) "
               "GetCurData 6>8 6<8 MoveTo(3) GetCurData 6>7 6<7 InsertCur(6)"},
        Search{{1, 4, 5, 6, 7, 8},
               2,
               "MoveTo(0) GetCurData 2<1 MoveTo(5) GetCurData 2>8 MoveTo(2) GetCurData 2>5 2<5 MoveTo(0) "
               "GetCurData 2>1 MoveTo(1) GetCurData 2>4 2<4 InsertCur(2)"},
        // The bounds meet on an element that it goes behind.
        Search{{1, 3, 5},
               2,
               "MoveTo(0) GetCurData 2<1 MoveTo(2) GetCurData 2>5 MoveTo(1) GetCurData 2>3 2<3 MoveTo(0) "
               "GetCurData 2>1 MoveToNext InsertCur(2)"},
        Search{{1, 2, 4, 6, 8},
               3,
               "MoveTo(0) GetCurData 3<1 MoveTo(4) GetCurData 3>8 MoveTo(2) GetCurData 3>4 3<4 MoveTo(0) "
               "GetCurData 3>1 MoveTo(1) GetCurData 3>2 MoveToNext InsertCur(3)"},
        Search{{1, 2, 4, 6, 8, 9, 10},
               5,
               "MoveTo(0) GetCurData 5<1 MoveTo(6) GetCurData 5>10 MoveTo(3) GetCurData 5>6 5<6 MoveTo(1) "
               "GetCurData 5>2 MoveTo(2) GetCurData 5>4 MoveToNext InsertCur(5)"},
        Search{{1, 2, 3, 4, 6, 7},
               5,
               "MoveTo(0) GetCurData 5<1 MoveTo(5) GetCurData 5>7 MoveTo(2) GetCurData 5>3 MoveTo(4) "
               "GetCurData 5>6 5<6 MoveTo(3) GetCurData 5>4 MoveToNext InsertCur(5)"},
        // The bounds cross: it goes before the element probed last, without another look.
        Search{{1, 2, 4, 5},
               3,
               "MoveTo(0) GetCurData 3<1 MoveTo(3) GetCurData 3>5 MoveTo(1) GetCurData 3>2 MoveTo(2) "
               "GetCurData 3>4 3<4 InsertCur(3)"},
        Search{{1, 3, 5, 7},
               4,
               "MoveTo(0) GetCurData 4<1 MoveTo(3) GetCurData 4>7 MoveTo(1) GetCurData 4>3 MoveTo(2) "
               "GetCurData 4>5 4<5 InsertCur(4)"},
        // A tie ends the search where it is met.
        Search{{1, 3, 3, 3, 5},
               3,
               "MoveTo(0) GetCurData 3<1 MoveTo(4) GetCurData 3>5 MoveTo(2) GetCurData 3>3 3<3 InsertCur(3)"},
        Search{{3, 4, 5},
               3,
               "MoveTo(0) GetCurData 3<3 MoveTo(2) GetCurData 3>5 MoveTo(1) GetCurData 3>4 3<4 MoveTo(0) "
               "GetCurData 3>3 3<3 InsertCur(3)"}));

TEST_F(Append, OfIncomparablesInsertsBeforeTheMiddle) {
    for (long nLength = 1; nLength <= 12; ++nLength) {
        GA_Population population;
        for (long i = 0; i < nLength; ++i) {
            static_cast<KyPDList<GA_Individual>&>(population).Append(new GA_Individual);
        }

        auto* const pNewcomer = new GA_Individual;
        population.Append(pNewcomer);

        EXPECT_EQ(population.m_nCurIndex, (nLength - 1) / 2) << "into " << nLength;
        EXPECT_EQ(*population.GetAt((nLength - 1) / 2), pNewcomer) << "into " << nLength;
    }
}

TEST_F(Append, OfIncomparablesGoesToIndexOneOfFourAndToTheHeadOfOne) {
    GA_Population four;
    GA_Population one;
    for (long i = 0; i < 4; ++i) {
        four.Append(new GA_Individual);
    }
    one.Append(new GA_Individual);

    four.Append(new GA_Individual);
    one.Append(new GA_Individual);

    EXPECT_EQ(four.m_nCurIndex, 1);
    EXPECT_EQ(one.m_nCurIndex, 0);
}

TEST_F(Append, HasNoSizeLimit) {
    NamedPopulation population(2, 0);

    for (long i = 0; i < 5; ++i) {
        population.Append(Newcomer(i));
    }

    EXPECT_EQ(population.m_nLength, 5);
}

/// The search on plain ranks: where the newcomer goes, and what it asked.
struct SearchModel {
    explicit SearchModel(const std::vector<long>& ranks, long x) {
        const auto less = [&](std::size_t i) { return Ask(x, '<', ranks[i]); };
        const auto greater = [&](std::size_t i) { return Ask(x, '>', ranks[i]); };
        if (ranks.empty() || less(0)) {
            return;
        }
        if (greater(ranks.size() - 1)) {
            nPlace = static_cast<long>(ranks.size());
            return;
        }
        long lo = 0;
        long hi = static_cast<long>(ranks.size()) - 1;
        while (hi > lo) {
            nPlace = (lo + hi) / 2;
            const auto mid = static_cast<std::size_t>(nPlace);
            if (greater(mid)) {
                lo = nPlace + 1;
            } else if (less(mid)) {
                hi = nPlace - 1;
            } else {
                return;
            }
        }
        if (hi == lo) {
            const auto last = static_cast<std::size_t>(lo);
            const bool bBehind = greater(last);
            nPlace = bBehind ? lo + 1 : lo;
            if (!bBehind) {
                less(last);
            }
        }
    }

    bool Ask(long x, char cRelation, long e) {
        questions.push_back(std::to_string(x) + cRelation + std::to_string(e));
        return cRelation == '<' ? x < e : x > e;
    }

    long nPlace = 0;
    std::vector<std::string> questions;
};

RC_GTEST_PROP(AppendProperty, AgreesWithABisectionOfAVector, ()) {
    const auto ranks = *rc::gen::container<std::vector<long>>(rc::gen::inRange(-20L, 20L));
    NamedPopulation population;
    std::vector<long> model;

    for (const long nRank : ranks) {
        const SearchModel search(model, nRank);
        model.insert(model.begin() + search.nPlace, nRank);
        Journal::Clear();

        auto* const pNewcomer = Newcomer(nRank);
        population.Append(pNewcomer);

        RC_ASSERT(Journal::Lines() == search.questions);
        RC_ASSERT(population.m_nCurIndex == search.nPlace);
        RC_ASSERT(population.GetCurData() == pNewcomer);
        std::vector<std::string> expected;
        std::transform(model.begin(), model.end(), std::back_inserter(expected),
                       [](long n) { return std::to_string(n); });
        RC_ASSERT(population.Names() == expected);
        RC_ASSERT(std::is_sorted(model.begin(), model.end()));
    }
}

TEST(GA_Population, IsMadeFromEmptyBraces) {
    struct Holder {
        GA_Population m_population;
    };

    const Holder holder = {};

    EXPECT_EQ(holder.m_population.m_nPopSize, 0);
    EXPECT_EQ(holder.m_population.m_nMutationRate, 0);
}

}  // namespace
