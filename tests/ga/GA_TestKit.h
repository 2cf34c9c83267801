// What the tests of the genetic algorithm share: rand() in their hands, and genes, individuals and
// populations that write down the hooks that the library calls, in order, and throw where a test wants it.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "VexaBase/ga/GA_Population.h"

/// rand() of this program, and so the library's. It hands out the numbers of the script, one too many fails
/// the test.
class ScriptedRand {
public:
    static void Set(std::vector<int> numbers);

    /// How many numbers were drawn since Set.
    static long Drawn();
};

struct HookFailure {};

/// Everything that a test's classes were called for, in order.
class Journal {
public:
    static void Clear();
    static const std::vector<std::string>& Lines() { return s_lines; }

    /// The lines with this text in them.
    static std::vector<std::string> LinesWith(const std::string& strText);

    /// The nth hook from now on throws HookFailure instead, none with 0.
    static void FailAt(long n) { s_nUntilFailure = n; }

    /// Writes a line, and throws if this is the hook that fails.
    static void Hook(const std::string& strLine);

    /// Writes a line.
    static void Note(const std::string& strLine) { s_lines.push_back(strLine); }

    /// A name for the next child: c1, c2, ...
    static std::string NextChild() { return "c" + std::to_string(++s_nChildren); }

private:
    static inline std::vector<std::string> s_lines;
    static inline long s_nUntilFailure = 0;
    static inline long s_nChildren = 0;
};

/// Counts the objects of each class derived from it.
template <class T>
class Counted {
public:
    Counted() { ++s_nAlive; }
    Counted(const Counted&) { ++s_nAlive; }
    Counted& operator=(const Counted&) = default;
    ~Counted() { --s_nAlive; }

    static inline long s_nAlive = 0;
};

class NamedGene : public GA_Gene, public Counted<NamedGene> {
public:
    explicit NamedGene(std::string strName) : m_strName(std::move(strName)) {}

    GA_Gene* Clone() const override {
        Journal::Hook("clone " + m_strName);
        return new NamedGene(m_strName);
    }

    std::string m_strName;
};

/// An individual with a name and a rank, the smaller the fitter. Its genes are called after it: A0, A1, ...
class NamedIndividual : public GA_Individual, public Counted<NamedIndividual> {
public:
    explicit NamedIndividual(std::string strName, long nGenes = 0, long nRank = 0);

    GA_Individual* New() const override;
    void Initialize() override { Journal::Hook(m_strName + ".Initialize"); }
    GA_Individual* Mutation() const override;
    bool operator<(const GA_Individual& other) const override;
    bool operator>(const GA_Individual& other) const override;

    /// The names of the genes, "null" for none.
    std::vector<std::string> Genes() const;

    std::string m_strName;
    long m_nRank;
    bool m_bMutates = true;
};

/// Writes down the array operations too.
class TracedIndividual : public NamedIndividual {
public:
    using NamedIndividual::NamedIndividual;

    GA_Individual* New() const override;
    void SetLength(long n, bool bKeep) override;
    GA_Gene*& operator[](long i) override;
    GA_Gene** GetAt(long i) const override;
};

/// Writes down a breeding and has no children.
class Mate : public NamedIndividual {
public:
    explicit Mate(std::string strName, long nRank = 0) : NamedIndividual(std::move(strName), 0, nRank) {}

    int Multiply(const GA_Individual& other, GA_Population& pop) const override;
};

/// A population that goes on for a number of questions and writes down its hooks.
class NamedPopulation : public GA_Population {
public:
    using GA_Population::GA_Population;

    bool IsContinue() override {
        Journal::Hook("IsContinue");
        return m_nContinues-- > 0;
    }
    void Step() override { Journal::Hook("Step"); }

    std::vector<std::string> Names() const;

    long m_nContinues = 1000000;
};

/// Writes down the cursor operations that the population asks of itself, not those that these are made of.
class TracedPopulation : public NamedPopulation {
public:
    using NamedPopulation::NamedPopulation;

    GA_Individual*& GetCurData() override;
    void MoveToFirst() override;
    void MoveToNext() override;
    void MoveToPre() override;
    void MoveToLast() override;
    void MoveTo(long i) override;
    void InsertCur(GA_Individual* const& p) override;
    void Insert(long i, GA_Individual* const& p) override;
    void DelCur() override;
    GA_Individual** InsertAfterCur(GA_Individual* const& p) override;

private:
    class Call;

    long m_nDepth = 0;
};
