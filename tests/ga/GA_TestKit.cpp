#include "GA_TestKit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace {

std::vector<int> g_script;
std::size_t g_nDrawn = 0;

const NamedIndividual& Named(const GA_Individual& individual) {
    return dynamic_cast<const NamedIndividual&>(individual);
}

}  // namespace

// The library's calls end here: the program's symbol goes before the C library's.
extern "C" int rand() noexcept {
    Journal::Note("rand");
    if (g_nDrawn >= g_script.size()) {
        ADD_FAILURE() << "rand() was called once too often";
        return 0;
    }
    return g_script[g_nDrawn++];
}

void ScriptedRand::Set(std::vector<int> numbers) {
    g_script = std::move(numbers);
    g_nDrawn = 0;
}

long ScriptedRand::Drawn() { return static_cast<long>(g_nDrawn); }

void Journal::Clear() {
    // rand() writes a line too, and must not throw where an allocation fails.
    s_lines.reserve(1 << 15);
    s_lines.clear();
    s_nUntilFailure = 0;
    s_nChildren = 0;
}

std::vector<std::string> Journal::LinesWith(const std::string& strText) {
    std::vector<std::string> lines;
    std::copy_if(
        s_lines.begin(), s_lines.end(), std::back_inserter(lines),
        [&strText](const std::string& strLine) { return strLine.find(strText) != std::string::npos; });
    return lines;
}

void Journal::Hook(const std::string& strLine) {
    Note(strLine);
    if (s_nUntilFailure != 0 && --s_nUntilFailure == 0) {
        throw HookFailure();
    }
}

NamedIndividual::NamedIndividual(std::string strName, long nGenes, long nRank)
    : m_strName(std::move(strName)), m_nRank(nRank) {
    ReAllocate(nGenes);
    for (long i = 0; i < nGenes; ++i) {
        *GetAt(i) = new NamedGene(m_strName + std::to_string(i));
    }
}

GA_Individual* NamedIndividual::New() const {
    Journal::Hook(m_strName + ".New");
    return new NamedIndividual(Journal::NextChild(), 0, m_nRank);
}

GA_Individual* NamedIndividual::Mutation() const {
    Journal::Hook(m_strName + ".Mutation");
    return m_bMutates ? new NamedIndividual(m_strName + "*", m_nLength, m_nRank) : nullptr;
}

bool NamedIndividual::operator<(const GA_Individual& other) const {
    Journal::Hook(m_strName + "<" + Named(other).m_strName);
    return m_nRank < Named(other).m_nRank;
}

bool NamedIndividual::operator>(const GA_Individual& other) const {
    Journal::Hook(m_strName + ">" + Named(other).m_strName);
    return m_nRank > Named(other).m_nRank;
}

std::vector<std::string> NamedIndividual::Genes() const {
    std::vector<std::string> names;
    for (const GA_Gene* pGene : *this) {
        names.push_back(pGene == nullptr ? "null" : dynamic_cast<const NamedGene&>(*pGene).m_strName);
    }
    return names;
}

GA_Individual* TracedIndividual::New() const {
    Journal::Hook(m_strName + ".New");
    return new TracedIndividual(Journal::NextChild(), 0, m_nRank);
}

void TracedIndividual::SetLength(long n, bool bKeep) {
    Journal::Hook(m_strName + ".SetLength(" + std::to_string(n) + (bKeep ? ", true)" : ", false)"));
    NamedIndividual::SetLength(n, bKeep);
}

GA_Gene*& TracedIndividual::operator[](long i) {
    Journal::Hook(m_strName + "[" + std::to_string(i) + "]");
    return NamedIndividual::operator[](i);
}

GA_Gene** TracedIndividual::GetAt(long i) const {
    Journal::Hook(m_strName + ".GetAt(" + std::to_string(i) + ")");
    return NamedIndividual::GetAt(i);
}

int Mate::Multiply(const GA_Individual& other, GA_Population&) const {
    Journal::Hook(m_strName + " x " + Named(other).m_strName);
    return 0;
}

std::vector<std::string> NamedPopulation::Names() const {
    std::vector<std::string> names;
    for (const GA_Individual* pIndividual : *this) {
        names.push_back(Named(*pIndividual).m_strName);
    }
    return names;
}

class TracedPopulation::Call {
public:
    Call(TracedPopulation& population, const std::string& strLine) : m_nDepth(population.m_nDepth) {
        if (m_nDepth == 0) {
            Journal::Hook(strLine);
        }
        ++m_nDepth;
    }
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;
    ~Call() { --m_nDepth; }

private:
    long& m_nDepth;
};

GA_Individual*& TracedPopulation::GetCurData() {
    const Call call(*this, "GetCurData");
    return NamedPopulation::GetCurData();
}

void TracedPopulation::MoveToFirst() {
    const Call call(*this, "MoveToFirst");
    NamedPopulation::MoveToFirst();
}

void TracedPopulation::MoveToNext() {
    const Call call(*this, "MoveToNext");
    NamedPopulation::MoveToNext();
}

void TracedPopulation::MoveToPre() {
    const Call call(*this, "MoveToPre");
    NamedPopulation::MoveToPre();
}

void TracedPopulation::MoveToLast() {
    const Call call(*this, "MoveToLast");
    NamedPopulation::MoveToLast();
}

void TracedPopulation::MoveTo(long i) {
    const Call call(*this, "MoveTo(" + std::to_string(i) + ")");
    NamedPopulation::MoveTo(i);
}

void TracedPopulation::InsertCur(GA_Individual* const& p) {
    const Call call(*this, "InsertCur(" + Named(*p).m_strName + ")");
    NamedPopulation::InsertCur(p);
}

void TracedPopulation::Insert(long i, GA_Individual* const& p) {
    const Call call(*this, "Insert(" + std::to_string(i) + ", " + Named(*p).m_strName + ")");
    NamedPopulation::Insert(i, p);
}

void TracedPopulation::DelCur() {
    const Call call(*this, "DelCur");
    NamedPopulation::DelCur();
}

GA_Individual** TracedPopulation::InsertAfterCur(GA_Individual* const& p) {
    const Call call(*this, "InsertAfterCur(" + Named(*p).m_strName + ")");
    return NamedPopulation::InsertAfterCur(p);
}
