// A population: an owning list of individuals, kept sorted best first, that evolves by generations.
//
// The application derives from it to say when to stop (IsContinue) and to watch (Step), fills it with Append
// and calls Evolve once a generation. In a generation every individual breeds twice, the list is cut back to
// m_nPopSize from its worst end, and m_nMutationRate percent of m_nPopSize mutants join.
//
// Invariant: from the head on, no individual compares as less than one before it, as far as the comparisons
// are consistent and the application enters individuals through GA_Population::Append only.
//
// Sorted insertion and the generation are written in the list's cursor operations, so a derived population
// that overrides them sees each as a call. A population of no derived class has nobody to see them: while it
// evolves it jumps to its elements instead of walking, which at a thousand individuals makes it more than ten
// times as fast. Nothing else about it differs.
//
// Random numbers come from rand(), which the library never seeds: srand makes a run repeatable.
#pragma once

#include "VexaBase/containers/KyArray.h"
#include "VexaBase/containers/KyPDList.h"
#include "VexaBase/ga/GA_Individual.h"

// GA_Population::Append hides the list's virtual Append on purpose. Compilers report that either at the
// hiding function or at the hidden one: both stand between these pragmas.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"

/// The list under a population. It is KyPDList<GA_Individual>, and besides tells a running generation, which
/// notes where the nodes stand, of every change to the chain of nodes.
class KY_API GA_IndividualList : public KyPDList<GA_Individual> {
public:
    /// The list's own Append: at the end, unsorted. The cursor ends on p; returns its index. O(1).
    long Append(GA_Individual* const& p) override;

    // Each is the list's own operation, followed by the notice.

    /// See KyPDList::Reset.
    void Reset() override;

    /// See KyPDList::DelCur.
    void DelCur() override;

    /// See KyDList::InsertAfterCur.
    GA_Individual** InsertAfterCur(GA_Individual* const& p) override;

    /// See KyDList::DetachAfterCur.
    long DetachAfterCur() override;

    /// See KyDList::Conbine.
    long Conbine(KyList<GA_Individual*>& other, long pos) override;

    /// See KyDList::ReverseList.
    void ReverseList() override;

    /// See KyDList::Rotate.
    void Rotate(long from, long to) override;
};

class KY_API GA_Population : public GA_IndividualList {
public:
    /// Starts empty, at generation 0, with both settings 0.
    GA_Population() : GA_Population(0) {}

    /// Starts empty, at generation 0.
    explicit GA_Population(long nPopSize, long nMutationRate = 0);

    ~GA_Population() override;

    /// Inserts p where it belongs and owns it from now on; a null p is ignored. An individual that is neither
    /// fitter nor less fit than a resident one is placed before the one that the search meets, which need not
    /// be an end of the run of equals. The cursor ends on p.
    ///
    /// Deliberately not virtual and by value: it hides the list's Append from users of a population, while
    /// container code that reaches that slot through a base class still appends at the end, unsorted.
    ///
    /// When a comparison or the allocation throws, p is deleted and the population holds what it held; the
    /// cursor may have moved. O(log length) comparisons. Each is a cursor walk of at most half the length, but
    /// while a population of no derived class evolves none up to 8192 individuals, and beyond that one of at
    /// most length / 512. Requires an individual in every element that the search meets.
    void Append(GA_Individual* p);

    // The virtual operations stand in the order of their slots, behind those of the list.

    /// Asked before every breeding pass and before every mutant; false ends that phase at once. The library's
    /// version returns true.
    virtual bool IsContinue();

    /// Called after every breeding pass and after every mutant. The library's version does nothing.
    virtual void Step();

    /// Runs one generation:
    ///
    /// 1. Breeding. Each individual that is in the population now, best first, is the argument of two
    ///    Multiply calls. One rand() draw chooses both receivers: the first favours the head linearly (the
    ///    best of n with probability (2n - 1) / n², the worst with 1 / n²), the second is uniform. Either
    ///    may be the individual itself. Children enter the list at once but do not breed before the next
    ///    generation.
    /// 2. Truncation. The worst are deleted until m_nPopSize are left, even if IsContinue ended the
    ///    breeding.
    /// 3. Mutation. m_nPopSize * m_nMutationRate / 100 times, one rand() draw chooses an individual whose
    ///    Mutation joins the population. The one that was asked stays.
    ///
    /// Then m_nGeneration grows by one, also when a phase was stopped early. The cursor ends where the last
    /// operation left it. When a hook throws, nothing leaks and the individuals entered so far stay. Requires
    /// m_nPopSize >= 0, an individual in every element, at least one whenever a mutant is due, and a length
    /// whose square a long can hold. A population of no derived class takes 72 KiB of stack.
    virtual void Evolve();

    long m_nPopSize;         // how many individuals survive a generation; a setting, not negative
    long m_nMutationRate;    // mutants a generation, in percent of m_nPopSize; a setting
    long m_nGeneration = 0;  // how many times Evolve has run to its end

private:
    template <class Cursor>
    void EvolveBy(Cursor cursor);
    void Breed();
    void Mutate();
};

#pragma GCC diagnostic pop
