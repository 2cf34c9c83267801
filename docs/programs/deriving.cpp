// Hooks at work: what a positional operation calls, and what a generation
// calls.

#include <VexaBase/containers/KyDList.h>
#include <VexaBase/ga/GA_Population.h>

#include <iostream>

namespace {

/// A list that tells of the calls it gets. Positional operations are composed
/// of cursor operations, all virtual.
class LoudList : public KyDList<char> {
public:
    void MoveTo(long i) override {
        std::cout << "  MoveTo(" << i << ")\n";
        KyDList::MoveTo(i);
    }
    void MoveToLast() override {
        std::cout << "  MoveToLast()\n";
        KyDList::MoveToLast();
    }
    char* InsertAfterCur(const char& c) override {
        std::cout << "  InsertAfterCur('" << c << "')\n";
        return KyDList::InsertAfterCur(c);
    }
    void DelCur() override {
        std::cout << "  DelCur()\n";
        KyDList::DelCur();
    }
};

/// The least that can breed, telling of its hooks. The comparisons stay the
/// library's: nobody is fitter.
class Gene : public GA_Gene {
    GA_Gene* Clone() const override { return new Gene; }
};
class Individual : public GA_Individual {
public:
    GA_Individual* New() const override {
        std::cout << "  New()\n";
        return new Individual;
    }
    void Initialize() override { std::cout << "  Initialize()\n"; }
    GA_Individual* Mutation() const override {
        std::cout << "  Mutation()\n";
        return nullptr;  // no mutant this time
    }
};
class Population : public GA_Population {
public:
    Population() : GA_Population(1, 100) {}
    bool IsContinue() override {
        std::cout << "  IsContinue()\n";
        return true;
    }
    void Step() override { std::cout << "  Step()\n"; }
};

}  // namespace

int main() {
    LoudList list;
    std::cout << "Append('a'):\n";
    list.Append('a');
    std::cout << "Append('c'):\n";
    list.Append('c');
    std::cout << "Insert(1, 'b'):\n";
    list.Insert(1, 'b');
    std::cout << "Move(0, 3):\n";
    list.Move(0, 3);
    std::cout << "SetLength(2, true):\n";
    list.SetLength(2, true);

    Population population;
    auto* const individual = new Individual;
    individual->Append(new Gene);
    population.Append(individual);
    std::cout << "Evolve(), one individual:\n";
    population.Evolve();
}
