#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

#include "GA_TestKit.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using Names = std::vector<std::string>;

const NamedIndividual& At(const GA_Population& population, long i) {
    return dynamic_cast<const NamedIndividual&>(**population.GetAt(i));
}

/// Genes of both children of one crossover, in the order in which the children were made.
struct Children {
    Names first;
    Names second;
};

bool operator==(const Children& a, const Children& b) { return a.first == b.first && a.second == b.second; }

std::ostream& operator<<(std::ostream& stream, const Children& children) {
    return stream << testing::PrintToString(children.first) << testing::PrintToString(children.second);
}

Children ChildrenIn(const GA_Population& population) {
    Children children;
    for (const GA_Individual* p : population) {
        const auto& child = dynamic_cast<const NamedIndividual&>(*p);
        (child.m_strName == "c1" ? children.first : children.second) = child.Genes();
    }
    return children;
}

/// The crossover as a table of ranges, for parents of nA >= nB genes.
Children Transcription(const std::string& a, long nA, const std::string& b, long nB, long r) {
    Children children;
    const auto give = [&](long nFrom, long nTo, bool bFirstFromB, bool bSecondFromB) {
        for (long i = nFrom; i <= nTo; ++i) {
            children.first.push_back((bFirstFromB ? b : a) + std::to_string(i));
            children.second.push_back((bSecondFromB ? b : a) + std::to_string(i));
        }
    };
    const long p1 = r % nB;
    const long p2 = (p1 + nB / 2 - 1) % nB;
    if (p1 <= p2) {
        give(0, p1 - 1, false, true);
        give(p1, p2, true, false);
        give(p2 + 1, nB - 1, false, true);
    } else {
        give(0, p2, true, false);
        give(p2 + 1, p1 - 1, false, true);
        give(p1, nB - 1, true, false);
    }
    give(nB, nA - 1, false, false);
    return children;
}

/// Has its own idea of breeding.
class Stubborn : public NamedIndividual {
public:
    using NamedIndividual::NamedIndividual;

    int Multiply(const GA_Individual& other, GA_Population&) const override {
        Journal::Note("asked with " + dynamic_cast<const NamedIndividual&>(other).m_strName);
        return -7;
    }
};

class Crossover : public testing::Test {
protected:
    void SetUp() override { Journal::Clear(); }

    /// a.Multiply(b) with one draw r.
    static Children Cross(const GA_Individual& a, const GA_Individual& b, int r) {
        NamedPopulation population;
        ScriptedRand::Set({r});
        a.Multiply(b, population);
        return ChildrenIn(population);
    }
};

TEST(GA_Individual, StartsWithoutGenes) {
    const GA_Individual individual;

    EXPECT_EQ(individual.m_nLength, 0);
    EXPECT_EQ(individual.m_nCurIndex, -1);
    EXPECT_EQ(individual.m_pData, nullptr);
    EXPECT_EQ(individual.m_nCapacity, 0);
}

TEST(GA_Individual, HasHooksThatDoNothing) {
    GA_Individual individual;
    const GA_Individual other;

    individual.Initialize();

    EXPECT_EQ(individual.m_nLength, 0);
    EXPECT_EQ(individual.New(), nullptr);
    EXPECT_EQ(individual.Mutation(), nullptr);
    EXPECT_FALSE(individual < other);
    EXPECT_FALSE(individual > other);
    EXPECT_FALSE(individual < individual);
    EXPECT_FALSE(individual > individual);
}

TEST(GA_Individual, DeletesItsGenesThroughTheirBase) {
    const long nGenes = NamedGene::s_nAlive;
    const GA_Individual* const pIndividual = new NamedIndividual("A", 3);

    delete pIndividual;

    EXPECT_EQ(NamedGene::s_nAlive, nGenes);
}

TEST(GA_Individual, IsAnOwningArrayOfGenes) {
    EXPECT_TRUE((std::is_base_of_v<KyDynPArray<GA_Gene>, GA_Individual>));
    EXPECT_FALSE(std::is_abstract_v<GA_Individual>);
    EXPECT_FALSE(std::is_copy_constructible_v<GA_Individual>);
    EXPECT_FALSE(std::is_copy_assignable_v<GA_Individual>);
}

TEST_F(Crossover, ReturnsTwoAndPutsTwoChildrenIntoThePopulation) {
    const NamedIndividual a("A", 4);
    const NamedIndividual b("B", 4);
    NamedPopulation population;
    ScriptedRand::Set({0});

    const int nChildren = a.Multiply(b, population);

    EXPECT_EQ(nChildren, 2);
    EXPECT_EQ(population.m_nLength, 2);
}

TEST_F(Crossover, ExchangesARunOfHalfTheGenes) {
    const NamedIndividual a("A", 6);
    const NamedIndividual b("B", 6);

    const Children children = Cross(a, b, 1);

    EXPECT_THAT(children.first, ElementsAre("A0", "B1", "B2", "B3", "A4", "A5"));
    EXPECT_THAT(children.second, ElementsAre("B0", "A1", "A2", "A3", "B4", "B5"));
}

TEST_F(Crossover, WrapsTheRunAroundTheEnd) {
    const NamedIndividual a("A", 4);
    const NamedIndividual b("B", 4);

    const Children children = Cross(a, b, 7);

    EXPECT_THAT(children.first, ElementsAre("B0", "A1", "A2", "B3"));
    EXPECT_THAT(children.second, ElementsAre("A0", "B1", "B2", "A3"));
}

TEST_F(Crossover, KeepsTheReceiverFirstOnEqualLengths) {
    const NamedIndividual a("A", 2);
    const NamedIndividual b("B", 2);

    const Children children = Cross(b, a, 0);

    EXPECT_THAT(children.first, ElementsAre("A0", "B1"));
    EXPECT_THAT(children.second, ElementsAre("B0", "A1"));
}

TEST_F(Crossover, ExchangesTheOnlyGeneOfAOneGeneParent) {
    const NamedIndividual a("A", 3);
    const NamedIndividual b("B", 1);

    const Children children = Cross(a, b, 12345);

    EXPECT_THAT(children.first, ElementsAre("B0", "A1", "A2"));
    EXPECT_THAT(children.second, ElementsAre("A0", "A1", "A2"));
}

TEST_F(Crossover, ExchangesOnePositionOfTwoOrThree) {
    const NamedIndividual a2("A", 2);
    const NamedIndividual b2("B", 2);
    const NamedIndividual a3("A", 3);
    const NamedIndividual b3("B", 3);

    EXPECT_THAT(Cross(a2, b2, 1).first, ElementsAre("A0", "B1"));
    Journal::Clear();
    EXPECT_THAT(Cross(a3, b3, 2).first, ElementsAre("A0", "A1", "B2"));
}

TEST_F(Crossover, GivesTheLongerParentsSurplusToBothChildren) {
    const NamedIndividual a("A", 5);
    const NamedIndividual b("B", 2);

    const Children children = Cross(a, b, 0);

    EXPECT_THAT(children.first, ElementsAre("B0", "A1", "A2", "A3", "A4"));
    EXPECT_THAT(children.second, ElementsAre("A0", "B1", "A2", "A3", "A4"));
}

TEST_F(Crossover, OfTheShorterParentIsForwardedToTheLonger) {
    const NamedIndividual a("A", 5);
    const NamedIndividual b("B", 4);
    const Children direct = Cross(a, b, 3);
    Journal::Clear();

    const Children forwarded = Cross(b, a, 3);

    EXPECT_EQ(forwarded, direct);
    EXPECT_THAT(Journal::LinesWith("New"), ElementsAre("A.New", "A.New"));
    EXPECT_EQ(ScriptedRand::Drawn(), 1);
}

TEST_F(Crossover, IsForwardedThroughTheLongerParentsOverride) {
    const Stubborn longer("A", 2);
    const NamedIndividual shorter("B", 1);
    NamedPopulation population;
    ScriptedRand::Set({});

    const int nChildren = shorter.Multiply(longer, population);

    EXPECT_EQ(nChildren, -7);
    EXPECT_EQ(population.m_nLength, 0);
    EXPECT_THAT(Journal::Lines(), ElementsAre("asked with B"));
}

TEST_F(Crossover, IsNotForwardedOnEqualLengths) {
    const NamedIndividual receiver("A", 1);
    const Stubborn other("B", 1);
    NamedPopulation population;
    ScriptedRand::Set({0});

    const int nChildren = receiver.Multiply(other, population);

    EXPECT_EQ(nChildren, 2);
    EXPECT_THAT(Journal::LinesWith("asked"), ElementsAre());
    EXPECT_THAT(Journal::LinesWith("New"), ElementsAre("A.New", "A.New"));
}

TEST_F(Crossover, WithItselfMakesCopies) {
    const NamedIndividual a("A", 5);

    const Children children = Cross(a, a, 4);

    EXPECT_EQ(children.first, a.Genes());
    EXPECT_EQ(children.second, a.Genes());
}

TEST_F(Crossover, LeavesTheParentsAsTheyWere) {
    NamedIndividual a("A", 3);
    NamedIndividual b("B", 2);
    a.MoveTo(2);
    b.MoveTo(1);
    const std::vector<GA_Gene*> before(a.begin(), a.end());

    Cross(a, b, 1);

    EXPECT_THAT(a, ElementsAreArray(before));
    EXPECT_EQ(a.m_nCurIndex, 2);
    EXPECT_EQ(b.m_nCurIndex, 1);
    EXPECT_EQ(b.m_nLength, 2);
}

TEST_F(Crossover, GivesTheChildrenGenesOfTheirOwn) {
    const long nGenes = NamedGene::s_nAlive;
    const NamedIndividual a("A", 3);
    const NamedIndividual b("B", 3);
    NamedPopulation population;
    ScriptedRand::Set({0});

    a.Multiply(b, population);

    EXPECT_EQ(NamedGene::s_nAlive, nGenes + 12);
    EXPECT_NE(*At(population, 0).GetAt(1), *a.GetAt(1));
}

TEST_F(Crossover, LeavesAChildsCursorOnItsLastGeneAndItsBlockExact) {
    const NamedIndividual a("A", 3);
    const NamedIndividual b("B", 2);
    NamedPopulation population;
    ScriptedRand::Set({0});

    a.Multiply(b, population);

    EXPECT_EQ(At(population, 0).m_nCurIndex, 2);
    EXPECT_EQ(At(population, 1).m_nCurIndex, 2);
    EXPECT_EQ(At(population, 0).m_nCapacity, 3);
    EXPECT_EQ(At(population, 0).m_nLength, 3);
}

TEST_F(Crossover, DiscardsGenesThatNewPutIntoAChild) {
    class Prefilled : public NamedIndividual {
    public:
        using NamedIndividual::NamedIndividual;
        GA_Individual* New() const override { return new NamedIndividual(Journal::NextChild(), 9); }
    };
    const long nGenes = NamedGene::s_nAlive;
    const Prefilled a("A", 2);
    const NamedIndividual b("B", 2);
    NamedPopulation population;
    ScriptedRand::Set({0});

    a.Multiply(b, population);

    EXPECT_THAT(ChildrenIn(population).first, ElementsAre("B0", "A1"));
    EXPECT_EQ(NamedGene::s_nAlive, nGenes + 8);
}

TEST_F(Crossover, StoresANullClone) {
    class Barren : public GA_Individual {
    public:
        GA_Individual* New() const override { return new NamedIndividual(Journal::NextChild()); }
    };
    Barren a;
    a.Append(new GA_Gene);
    a.Append(new GA_Gene);
    NamedPopulation population;
    ScriptedRand::Set({1});

    a.Multiply(a, population);

    EXPECT_THAT(ChildrenIn(population).first, ElementsAre("null", "null"));
    EXPECT_THAT(ChildrenIn(population).second, ElementsAre("null", "null"));
}

TEST_F(Crossover, TakesEachStepInItsPlace) {
    const TracedIndividual a("A", 3);
    const TracedIndividual b("B", 2);
    TracedPopulation population;
    ScriptedRand::Set({1});

    a.Multiply(b, population);

    EXPECT_THAT(Journal::Lines(),
                ElementsAre("A.New", "A.New",                                    // the children
                            "c1.SetLength(3, false)", "c2.SetLength(3, false)",  // their size
                            "rand",                                              // the segment
                            "A.GetAt(0)", "clone A0", "c1[0]",                   // outside it
                            "B.GetAt(0)", "clone B0", "c2[0]",                   //
                            "B.GetAt(1)", "clone B1", "c1[1]",                   // inside
                            "A.GetAt(1)", "clone A1", "c2[1]",                   //
                            "A.GetAt(2)", "clone A2", "c1[2]",                   // the surplus
                            "A.GetAt(2)", "clone A2", "c2[2]",                   //
                            "c1.Initialize", "c2.Initialize",                    // both, then both enter
                            "MoveTo(0)", "InsertCur(c1)",                        //
                            "MoveTo(0)", "GetCurData", "c2<c1",                  //
                            "MoveTo(0)", "GetCurData", "c2>c1",                  //
                            "MoveTo(0)", "GetCurData", "c2>c1", "c2<c1", "InsertCur(c2)"));
}

TEST_F(Crossover, EntersChildrenBySortedInsertion) {
    class Ranked : public NamedIndividual {
    public:
        using NamedIndividual::NamedIndividual;
        GA_Individual* New() const override {
            const std::string strName = Journal::NextChild();
            return new NamedIndividual(strName, 0, strName == "c1" ? 30 : 10);
        }
    };
    const Ranked a("A", 1);
    NamedPopulation population;
    population.Append(new NamedIndividual("R", 0, 20));
    ScriptedRand::Set({0});

    a.Multiply(a, population);

    EXPECT_THAT(population.Names(), ElementsAre("c2", "R", "c1"));
}

TEST_F(Crossover, PlacesChildrenThatCannotBeComparedInTheMiddle) {
    class Incomparable : public GA_Individual {
    public:
        GA_Individual* New() const override { return new Incomparable; }
    };
    Incomparable a;
    a.Append(new NamedGene("a"));
    GA_Population population;
    std::vector<GA_Individual*> residents;
    for (long i = 0; i < 4; ++i) {
        residents.push_back(new Incomparable);
        static_cast<KyPDList<GA_Individual>&>(population).Append(residents.back());
    }
    ScriptedRand::Set({0});

    a.Multiply(a, population);

    // The first goes before index 1 of four, the second before index 2 of five.
    EXPECT_EQ(population.m_nLength, 6);
    EXPECT_EQ(*population.GetAt(0), residents[0]);
    EXPECT_EQ(*population.GetAt(3), residents[1]);
    EXPECT_EQ(*population.GetAt(4), residents[2]);
    EXPECT_EQ(*population.GetAt(5), residents[3]);
}

TEST_F(Crossover, AgreesWithTheTableForEveryPairOfLengthsAndEveryDraw) {
    for (long nA = 1; nA <= 9; ++nA) {
        for (long nB = 1; nB <= nA; ++nB) {
            const NamedIndividual a("A", nA);
            const NamedIndividual b("B", nB);
            for (int r = 0; r <= 2 * nB; ++r) {
                SCOPED_TRACE(testing::Message() << nA << " genes with " << nB << ", draw " << r);
                const Children expected = Transcription("A", nA, "B", nB, r);

                Journal::Clear();
                EXPECT_EQ(Cross(a, b, r), expected);
                Journal::Clear();
                EXPECT_EQ(Cross(b, a, r), nA == nB ? Transcription("B", nB, "A", nA, r) : expected);
            }
        }
    }
}

TEST_F(Crossover, TakesTheGreatestDraw) {
    const NamedIndividual a("A", 7);
    const NamedIndividual b("B", 5);

    EXPECT_EQ(Cross(a, b, RAND_MAX), Transcription("A", 7, "B", 5, RAND_MAX));
}

TEST_F(Crossover, LeavesNothingBehindWithThePopulation) {
    const long nGenes = NamedGene::s_nAlive;
    const long nIndividuals = NamedIndividual::s_nAlive;
    {
        const NamedIndividual a("A", 4);
        const NamedIndividual b("B", 3);

        Cross(a, b, 2);
    }

    EXPECT_EQ(NamedGene::s_nAlive, nGenes);
    EXPECT_EQ(NamedIndividual::s_nAlive, nIndividuals);
}

}  // namespace
