// A genetic algorithm that finds a word: a gene is a letter, and an individual
// is the fitter the more letters are right.

#include <VexaBase/ga/GA_Population.h>

#include <cstdlib>
#include <iostream>
#include <string>

namespace {

const std::string Target = "PLANAR GRAPH";
const std::string Letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ ";

char RandomLetter() {
    return Letters[static_cast<std::size_t>(std::rand()) % Letters.size()];
}

class Letter : public GA_Gene {
public:
    explicit Letter(char c) : m_c(c) {}
    GA_Gene* Clone() const override { return new Letter(m_c); }
    const char m_c;
};

class Phrase : public GA_Individual {
public:
    /// Crossover makes its children with this one...
    GA_Individual* New() const override { return new Phrase; }

    /// ... fills them, and calls this before they enter the population.
    void Initialize() override {
        m_nWrong = 0;
        for (std::size_t i = 0; i < Target.size(); ++i)
            m_nWrong += Text()[i] != Target[i] ? 1 : 0;
    }

    /// A copy with one letter thrown anew.
    GA_Individual* Mutation() const override {
        auto* const mutant = new Phrase;
        const long nChanged = std::rand() % m_nLength;
        for (long i = 0; i < m_nLength; ++i) {
            mutant->Append(i == nChanged ? new Letter(RandomLetter())
                                         : (*GetAt(i))->Clone());
        }
        mutant->Initialize();
        return mutant;
    }

    /// Less means fitter. Both operators are asked.
    bool operator<(const GA_Individual& other) const override {
        return m_nWrong < Of(other).m_nWrong;
    }
    bool operator>(const GA_Individual& other) const override {
        return m_nWrong > Of(other).m_nWrong;
    }

    std::string Text() const {
        std::string text;
        for (const GA_Gene* gene : *this)
            text += static_cast<const Letter*>(gene)->m_c;
        return text;
    }

    long m_nWrong = 0;

private:
    static const Phrase& Of(const GA_Individual& other) {
        return static_cast<const Phrase&>(other);
    }
};

}  // namespace

int main() {
    std::srand(7);  // the library never seeds

    // 60 survive a generation, half as many mutants join.
    GA_Population population(60, 50);
    for (int i = 0; i < 60; ++i) {
        auto* const phrase = new Phrase;
        for (std::size_t k = 0; k < Target.size(); ++k)
            phrase->Append(new Letter(RandomLetter()));
        phrase->Initialize();
        // At its sorted place; the population owns it now.
        population.Append(phrase);
    }

    while (population.m_nGeneration < 500) {
        const auto* best = static_cast<const Phrase*>(*population.GetFirst());
        if (population.m_nGeneration % 5 == 0 || best->m_nWrong == 0) {
            std::cout << "generation " << population.m_nGeneration << ": "
                      << best->Text() << ", " << best->m_nWrong << " wrong\n";
        }
        if (best->m_nWrong == 0) break;
        population.Evolve();
    }
}
