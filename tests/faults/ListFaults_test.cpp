// The lists and the queues over them.

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <type_traits>
#include <utility>

#include "Elements.h"
#include "VexaBase/containers/KyDList.h"
#include "VexaBase/containers/KyList.h"
#include "VexaBase/containers/KyPDList.h"
#include "VexaBase/containers/KyQuene.h"
#include "VexaBase/containers/KyXList.h"
#include "tests/containers/ListProbes.h"

namespace {

template <class T>
std::string FaultIn(const KyList<T>& list) {
    const testing::AssertionResult sound = IsSound(list);
    return sound ? "" : sound.message();
}

template <class List>
class ListSubject : public Subject {
public:
    std::string Words() const {
        return WordsOf(m_list) + "at " + std::to_string(m_list.m_nCurIndex) + " and " + WordsOf(m_other) +
               "at " + std::to_string(m_other.m_nCurIndex) + " gives " + std::to_string(m_nResult);
    }
    std::string Contents() const { return WordsOf(m_list) + "and " + WordsOf(m_other); }
    std::string Fault() const { return FaultIn(m_list) + FaultIn(m_other) + FaultInSentinel(); }
    bool IsLost() const {
        if constexpr (bHasIndex) {
            return ::IsLost(m_list.m_arrIndex);
        } else {
            return false;
        }
    }

    /// Leaves the index, where there is one, no room.
    void FillIndex() {
        if constexpr (bHasIndex) {
            m_list.m_arrIndex.SetLength(m_list.m_arrIndex.m_nLength, true);
            m_list.m_arrIndex.m_nGrowBy = 0;
        }
    }

    using T = typename List::value_type;
    static constexpr bool bHasIndex = std::is_base_of_v<KyXList<T>, List>;

    List m_list = List(bHasIndex ? 2 : 0);
    List m_other = List(bHasIndex ? 2 : 0);

private:
    std::string FaultInSentinel() const {
        if constexpr (std::is_pointer_v<T>) {
            if (m_list.m_pHead->m_data != nullptr) return "the sentinel holds an object";
        }
        return "";
    }
};

// Lists of values

template <class List>
class Values : public ListSubject<List> {
public:
    Value m_x{9};
};
using Singly = Values<KyList<Value>>;
using Doubly = Values<KyDList<Value>>;
using Indexed = Values<KyXList<Value>>;

/// Fills the two lists; the cursors stand on the third element. The index is full.
template <class State>
void FourAndThree(State& s) {
    for (const long n : {3, 1, 2, 1}) {
        s.m_list.Append(Value(n));
    }
    for (const long n : {5, 6, 7}) {
        s.m_other.Append(Value(n));
    }
    s.m_list.MoveTo(2);
    s.m_other.MoveTo(2);
    s.FillIndex();
}

template <class State>
void Sorted(State& s) {
    for (const long n : {1, 2, 3}) {
        s.m_list.Append(Value(n));
    }
}

template <class State>
const Operation<State> g_values[] = {
    {"Make", FourAndThree<State>, [](State& s) { s.m_nResult = decltype(s.m_list)(3).m_nLength; }, Same},
    {"ReAllocate", FourAndThree<State>, [](State& s) { s.m_list.ReAllocate(7); }, Sound.OrLost()},
    {"ReAllocateShorter", FourAndThree<State>, [](State& s) { s.m_list.ReAllocate(2); }, CannotFail},
    {"SetLengthToLonger", FourAndThree<State>, [](State& s) { s.m_list.SetLength(7, true); }, Sound.OrLost()},
    {"SetLengthToShorter", FourAndThree<State>, [](State& s) { s.m_list.SetLength(2, true); }, CannotFail},
    {"Reset", FourAndThree<State>, [](State& s) { s.m_list.Reset(); }, CannotFail},
    {"GetCurData", FourAndThree<State>, [](State& s) { s.m_nResult = s.m_list.GetCurData().m_n; },
     CannotFail},
    {"SetCurData", FourAndThree<State>, [](State& s) { s.m_list.SetCurData(s.m_x); }, Same},
    {"MoveTheCursor", FourAndThree<State>,
     [](State& s) {
         s.m_list.MoveToFirst();
         s.m_list.MoveToNext();
         s.m_list.MoveToLast();
         s.m_list.MoveToPre();
         s.m_list.MoveTo(1);
     },
     CannotFail},
    {"Index", FourAndThree<State>, [](State& s) { s.m_nResult = s.m_list[1].m_n; }, CannotFail},
    {"IndexPastTheEnd", FourAndThree<State>, [](State& s) { s.m_nResult = s.m_list[6].m_n; }, Sound.OrLost()},
    {"WalkByAddress", FourAndThree<State>,
     [](State& s) {
         s.m_nResult = s.m_list.GetNext(s.m_list.GetFirst())->m_n + s.m_list.GetPre(s.m_list.GetLast())->m_n +
                       s.m_list.GetAt(3)->m_n + std::distance(s.m_list.begin(), s.m_list.end()) +
                       s.m_list.GetLength() + s.m_list.GetCurIndex();
     },
     CannotFail},
    {"InsertCur", FourAndThree<State>, [](State& s) { s.m_list.InsertCur(s.m_x); }, Same.OrLost()},
    {"InsertCurWithoutACurrentElement",
     [](State& s) {
         FourAndThree(s);
         s.m_list.MoveTo(-1);
     },
     [](State& s) { s.m_list.InsertCur(s.m_x); }, Same.OrLost()},
    {"InsertCurInFrontOfTheFirst",
     [](State& s) {
         FourAndThree(s);
         s.m_list.MoveToFirst();
     },
     [](State& s) { s.m_list.InsertCur(s.m_x); }, Same.OrLost()},
    {"Insert", FourAndThree<State>, [](State& s) { s.m_list.Insert(1, s.m_x); }, Kept.OrLost()},
    {"InsertHead", FourAndThree<State>, [](State& s) { s.m_list.InsertHead(s.m_x); }, Kept.OrLost()},
    {"Append", FourAndThree<State>, [](State& s) { s.m_nResult = s.m_list.Append(s.m_x); }, Kept.OrLost()},
    {"AppendToNothing", [](State&) {}, [](State& s) { s.m_nResult = s.m_list.Append(s.m_x); }, Kept.OrLost()},
    {"InsertAfterCur", FourAndThree<State>,
     [](State& s) { s.m_nResult = s.m_list.InsertAfterCur(s.m_x)->m_n; }, Same.OrLost()},
    {"DelCur", FourAndThree<State>, [](State& s) { s.m_list.DelCur(); }, CannotFail},
    {"SortAscending", FourAndThree<State>, [](State& s) { s.m_list.Sort(true); }, Sound.OrLost()},
    {"SortDescending", FourAndThree<State>, [](State& s) { s.m_list.Sort(false); }, Sound.OrLost()},
    {"SortByAFunction", FourAndThree<State>, [](State& s) { s.m_list.Sort(Value::Compare); }, Sound.OrLost()},
    {"SortWhatIsSorted", Sorted<State>, [](State& s) { s.m_list.Sort(true); }, Kept},
    {"MoveForward", FourAndThree<State>, [](State& s) { s.m_nResult = s.m_list.Move(0, 3); }, Kept.OrLost()},
    {"MoveBackward", FourAndThree<State>, [](State& s) { s.m_nResult = s.m_list.Move(3, 1); }, Kept.OrLost()},
    {"MoveToWhereItStands", FourAndThree<State>, [](State& s) { s.m_nResult = s.m_list.Move(2, 3); },
     CannotFail},
    {"ReverseList", FourAndThree<State>, [](State& s) { s.m_list.ReverseList(), s.m_list.MoveToFirst(); },
     CannotFail},
    {"Rotate", FourAndThree<State>, [](State& s) { s.m_list.Rotate(3, 1); }, CannotFail},
    {"DetachAfterCur",
     [](State& s) {
         FourAndThree(s);
         s.m_list.MoveToLast();
     },
     [](State& s) { s.m_nResult = s.m_list.DetachAfterCur(); }, CannotFail},
};
RUN_UNDER_FAULTS(KyList, g_values<Singly>);
RUN_UNDER_FAULTS(KyDList, g_values<Doubly>);
RUN_UNDER_FAULTS(KyXList, g_values<Indexed>);

/// A list that the library does not know, whose operations it has to call.
template <class List>
class Derived : public List {
public:
    using List::List;
};
RUN_UNDER_FAULTS(DerivedFromKyList, g_values<Values<Derived<KyList<Value>>>>);
RUN_UNDER_FAULTS(DerivedFromKyDList, g_values<Values<Derived<KyDList<Value>>>>);
RUN_UNDER_FAULTS(DerivedFromKyXList, g_values<Values<Derived<KyXList<Value>>>>);

/// What only a list without an index does without memory.
template <class State>
const Operation<State> g_splices[] = {
    {"Conbine", FourAndThree<State>, [](State& s) { s.m_nResult = s.m_list.Conbine(s.m_other, 1); },
     CannotFail},
};
RUN_UNDER_FAULTS(KyListSplice, g_splices<Singly>);
RUN_UNDER_FAULTS(KyDListSplice, g_splices<Doubly>);

const Operation<Indexed> g_indexedSplices[] = {
    {"Conbine", FourAndThree<Indexed>, [](Indexed& s) { s.m_nResult = s.m_list.Conbine(s.m_other, 1); },
     Same.OrLost()},
};
RUN_UNDER_FAULTS(KyXListSplice, g_indexedSplices);

// Owning lists

template <class List>
class Objects : public ListSubject<List> {
public:
    ~Objects() {
        if (std::find(this->m_list.begin(), this->m_list.end(), m_pLoose) == this->m_list.end()) {
            delete m_pLoose;
        }
    }

    Object* m_pLoose = new Object(9);  // the list's, once it is in there
};
using Owner = Objects<KyPDList<Object>>;
using IndexedOwner = Objects<KyPXList<Object>>;

/// A 0 stands for null. The cursor stands on the third element; the index is full.
template <class State>
void Make(State& s, std::initializer_list<long> numbers) {
    for (const long n : numbers) {
        s.m_list.Append(n != 0 ? new Object(n) : nullptr);
    }
    s.m_other.Append(new Object(5));
    s.m_list.MoveTo(2);
    s.FillIndex();
}
template <class State>
void Four(State& s) {
    Make(s, {3, 1, 2, 1});
}
template <class State>
void SixWithNulls(State& s) {
    Make(s, {0, 3, 1, 0, 2, 1});
}
template <class State>
void Ascending(State& s) {
    Make(s, {10, 20, 30, 40});
}

// A sort puts nulls, which it has removed, back as far as there is memory for them.
template <class State>
const Operation<State> g_objects[] = {
    {"Make", Four<State>, [](State& s) { s.m_nResult = decltype(s.m_list)(3).m_nLength; }, Same},
    {"ReAllocate", Four<State>, [](State& s) { s.m_list.ReAllocate(7); }, Sound.OrLost()},
    {"SetLengthToLonger", Four<State>, [](State& s) { s.m_list.SetLength(7, true); }, Sound.OrLost()},
    {"SetLengthToShorter", Four<State>, [](State& s) { s.m_list.SetLength(2, true); }, CannotFail},
    {"Reset", SixWithNulls<State>, [](State& s) { s.m_list.Reset(); }, CannotFail},
    {"IndexPastTheEnd", Four<State>, [](State& s) { s.m_nResult = s.m_list[6] == nullptr; }, Sound.OrLost()},
    {"InsertCur", Four<State>, [](State& s) { s.m_list.InsertCur(s.m_pLoose); }, Same.OrLost()},
    {"Insert", Four<State>, [](State& s) { s.m_list.Insert(1, s.m_pLoose); }, Kept.OrLost()},
    {"InsertHead", Four<State>, [](State& s) { s.m_list.InsertHead(s.m_pLoose); }, Kept.OrLost()},
    {"Append", Four<State>, [](State& s) { s.m_nResult = s.m_list.Append(s.m_pLoose); }, Kept.OrLost()},
    {"InsertAfterCur", Four<State>,
     [](State& s) { s.m_nResult = (*s.m_list.InsertAfterCur(s.m_pLoose))->m_n; }, Same.OrLost()},
    {"DelCur", Four<State>, [](State& s) { s.m_list.DelCur(); }, CannotFail},
    {"SortAscending", Four<State>, [](State& s) { s.m_list.Sort(true); }, Sound.OrLost()},
    {"SortDescending", Four<State>, [](State& s) { s.m_list.Sort(false); }, Sound.OrLost()},
    {"SortAscendingWithNulls", SixWithNulls<State>, [](State& s) { s.m_list.Sort(true); },
     Sound.ButWithoutMemory(Left::Changed).OrLost()},
    {"SortDescendingWithNulls", SixWithNulls<State>, [](State& s) { s.m_list.Sort(false); },
     Sound.ButWithoutMemory(Left::Changed).OrLost()},
    {"SortByAFunctionOfObjects", Four<State>, [](State& s) { s.m_list.Sort(Object::Compare); },
     Sound.OrLost()},
    {"SortByAFunctionOfPointersWhatIsSorted", Ascending<State>,
     [](State& s) { s.m_list.Sort(Object::ComparePointers); }, Kept},
    {"MoveForward", Four<State>, [](State& s) { s.m_nResult = s.m_list.Move(0, 3); }, Kept.OrLost()},
    {"MoveBackward", Four<State>, [](State& s) { s.m_nResult = s.m_list.Move(3, 1); }, Kept.OrLost()},
    {"ReverseList", Four<State>, [](State& s) { s.m_list.ReverseList(), s.m_list.MoveToFirst(); },
     CannotFail},
    {"Rotate", Four<State>, [](State& s) { s.m_list.Rotate(3, 1); }, CannotFail},
    {"ReleaseAll", SixWithNulls<State>, [](State& s) { s.m_list.ReleaseAll(); }, CannotFail},
    {"MoveTheCursorAndWalkByAddress", Four<State>,
     [](State& s) {
         s.m_list.MoveToFirst();
         s.m_list.MoveToNext();
         s.m_list.MoveToLast();
         s.m_list.MoveToPre();
         s.m_list.MoveTo(1);
         std::swap(s.m_list[1], s.m_list[2]);
         s.m_list.SetCurData(s.m_list.GetCurData());
         s.m_nResult = (*s.m_list.GetNext(s.m_list.GetFirst()))->m_n +
                       (*s.m_list.GetPre(s.m_list.GetLast()))->m_n + (*s.m_list.GetAt(3))->m_n;
     },
     CannotFail},
};
RUN_UNDER_FAULTS(KyPDList, g_objects<Owner>);
RUN_UNDER_FAULTS(KyPXList, g_objects<IndexedOwner>);
RUN_UNDER_FAULTS(DerivedFromKyPDList, g_objects<Objects<Derived<KyPDList<Object>>>>);
RUN_UNDER_FAULTS(DerivedFromKyPXList, g_objects<Objects<Derived<KyPXList<Object>>>>);

const Operation<Owner> g_ownerSplices[] = {
    {"Conbine", Four<Owner>, [](Owner& s) { s.m_nResult = s.m_list.Conbine(s.m_other, 0); }, CannotFail},
};
RUN_UNDER_FAULTS(KyPDListSplice, g_ownerSplices);

const Operation<IndexedOwner> g_indexedOwnerSplices[] = {
    {"Conbine", Four<IndexedOwner>, [](IndexedOwner& s) { s.m_nResult = s.m_list.Conbine(s.m_other, 0); },
     Same.OrLost()},
};
RUN_UNDER_FAULTS(KyPXListSplice, g_indexedOwnerSplices);

/// Searches for a number, with a key object of its own.
template <long n>
void Search(IndexedOwner& s) {
    const Object key(n);
    s.m_nResult = s.m_list.BFindDataTo(key);
}

const Operation<IndexedOwner> g_searches[] = {
    {"First", Ascending<IndexedOwner>, Search<10>, Kept},
    {"Last", Ascending<IndexedOwner>, Search<40>, Kept},
    {"Middle", Ascending<IndexedOwner>, Search<30>, Kept},
    {"BelowAll", Ascending<IndexedOwner>, Search<5>, Kept},
    {"AboveAll", Ascending<IndexedOwner>, Search<50>, Kept},
    {"Between", Ascending<IndexedOwner>, Search<35>, Kept},
    {"InNothing", [](IndexedOwner&) {}, Search<1>, CannotFail},
    {"InPart", Ascending<IndexedOwner>,
     [](IndexedOwner& s) { s.m_nResult = s.m_list.BFindDataTo(*s.m_pLoose, 1, 2); }, Kept},
};
RUN_UNDER_FAULTS(BFindDataTo, g_searches);

// Queues

class Queue : public Subject {
public:
    std::string Words() const {
        return Contents() + "gives " + std::to_string(m_nResult) + " " + Word(m_out);
    }
    std::string Contents() const { return WordsOf(m_queue); }
    std::string Fault() const { return FaultIn(m_queue.m_list); }

    KyListQuene<Value> m_queue;
    Value m_x{9};
    Value m_out;
};

void Three(Queue& q) {
    for (const long n : {1, 2, 3}) {
        q.m_queue.EnQuene(Value(n));
    }
}

const Operation<Queue> g_queue[] = {
    {"Make", Three, [](Queue& q) { q.m_nResult = KyListQuene<Value>(2).m_nMaxLength; }, Same},
    {"Reset", Three, [](Queue& q) { q.m_queue.Reset(); }, CannotFail},
    {"GetLength", Three, [](Queue& q) { q.m_nResult = q.m_queue.GetLength(); }, CannotFail},
    {"Index", Three, [](Queue& q) { q.m_nResult = q.m_queue[1].m_n; }, CannotFail},
    {"IndexPastTheEnd", Three, [](Queue& q) { q.m_nResult = q.m_queue[5].m_n; }, Sound},
    {"GetHeadData", Three, [](Queue& q) { q.m_nResult = q.m_queue.GetHeadData(q.m_out); }, Same},
    {"GetTailData", Three, [](Queue& q) { q.m_nResult = q.m_queue.GetTailData(q.m_out); }, Same},
    {"EnQuene", Three, [](Queue& q) { q.m_nResult = q.m_queue.EnQuene(q.m_x); }, Same},
    {"EnQueneInAFullQueue", [](Queue& q) { Three(q), q.m_queue.m_nMaxLength = 3; },
     [](Queue& q) { q.m_nResult = q.m_queue.EnQuene(q.m_x); }, CannotFail},
    {"DeQuene", Three, [](Queue& q) { q.m_nResult = q.m_queue.DeQuene(q.m_out); }, Same},
};
RUN_UNDER_FAULTS(KyListQuene, g_queue);

class OwningQueue : public Subject {
public:
    ~OwningQueue() {
        if (std::find(m_queue.begin(), m_queue.end(), m_pLoose) == m_queue.end()) {
            delete m_pLoose;
        }
        delete m_pOut;
    }

    std::string Words() const {
        return Contents() + "gives " + std::to_string(m_nResult) + " " + Word(m_pOut);
    }
    std::string Contents() const { return WordsOf(m_queue); }
    std::string Fault() const { return FaultIn(m_queue.m_list); }

    KyPDListQuene<Object> m_queue;
    Object* m_pLoose = new Object(9);  // the queue's, once it is in there
    Object* m_pOut = nullptr;          // taken out
};

void Three(OwningQueue& q) {
    for (const long n : {1, 2, 3}) {
        q.m_queue.EnQuene(new Object(n));
    }
}

const Operation<OwningQueue> g_owningQueue[] = {
    {"Make", Three, [](OwningQueue& q) { q.m_nResult = KyPDListQuene<Object>(2).m_nMaxLength; }, Same},
    {"Reset", Three, [](OwningQueue& q) { q.m_queue.Reset(); }, CannotFail},
    {"IndexPastTheEnd", Three, [](OwningQueue& q) { q.m_nResult = q.m_queue[5] == nullptr; }, Sound},
    {"EnQuene", Three, [](OwningQueue& q) { q.m_nResult = q.m_queue.EnQuene(q.m_pLoose); }, Same},
    {"DeQuene", Three, [](OwningQueue& q) { q.m_nResult = q.m_queue.DeQuene(q.m_pOut); }, CannotFail},
};
RUN_UNDER_FAULTS(KyPDListQuene, g_owningQueue);

}  // namespace
