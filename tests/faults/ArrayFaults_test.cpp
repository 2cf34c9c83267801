// The arrays. One whose growth failed has its elements, but is good for destruction only.

#include <algorithm>
#include <utility>

#include "Elements.h"
#include "VexaBase/containers/KyArray.h"
#include "VexaBase/containers/KyDynArray.h"
#include "VexaBase/containers/KyDynPArray.h"
#include "VexaBase/containers/KyList.h"

namespace {

/// The object, which somebody has seen now: clang spares an allocation that nobody looks at.
template <class Object>
const Object& Seen(const Object& object) {
    asm volatile("" : : "r"(&object) : "memory");
    return object;
}

/// The first invariant of a contiguous array that does not hold.
template <class T>
std::string FaultIn(const KyDynArray<T>& array) {
    if ((array.m_pData == nullptr) != (array.m_nCapacity == 0)) return "the block is not of the capacity";
    if (array.m_nLength < 0 || array.m_nLength > array.m_nCapacity) return "the length is outside the block";
    return "";
}

template <class Array>
class ArraySubject : public Subject {
public:
    std::string Words() const {
        return Contents() + "at " + std::to_string(m_array.m_nCurIndex) + " of " +
               std::to_string(m_array.m_nCapacity) + " gives " + std::to_string(m_nResult);
    }
    std::string Contents() const { return WordsOf(m_array); }
    std::string Fault() const { return FaultIn(m_array); }
    bool IsLost() const { return ::IsLost(m_array); }

    Array m_array{0, 0};
};

// KyDynArray

class Values : public ArraySubject<KyDynArray<Value>> {
public:
    /// Fills the array; the cursor stands on the second element.
    void Make(long nCapacity, std::initializer_list<long> numbers) {
        m_array.SetLength(nCapacity, false);
        m_array.m_nLength = 0;
        for (const long n : numbers) {
            m_array.Append(Value(n));
        }
        m_array.m_nCurIndex = 1;
    }

    Value m_x{9};
};

void Full(Values& v) { v.Make(4, {3, 1, 2, 1}); }
void Roomy(Values& v) { v.Make(8, {3, 1, 2, 1}); }
void Sorted(Values& v) { v.Make(4, {1, 2, 3, 4}); }

const Operation<Values> g_values[] = {
    {"Make", Full, [](Values& v) { v.m_nResult = Seen(KyDynArray<Value>(3, 2)).m_nCapacity; }, Same},
    {"MakeWithoutABlock", Full, [](Values& v) { v.m_nResult = KyDynArray<Value>(0).m_nCapacity; },
     CannotFail},
    {"ReAllocateInsideTheBlock", Roomy, [](Values& v) { v.m_array.ReAllocate(7); }, CannotFail},
    {"ReAllocateShorter", Full, [](Values& v) { v.m_array.ReAllocate(2); }, CannotFail},
    {"ReAllocatePastTheBlock", Full, [](Values& v) { v.m_array.ReAllocate(5); }, Same.OrLost()},
    {"ReAllocatePastNoBlock", [](Values& v) { v.m_array.m_nGrowBy = 3; },
     [](Values& v) { v.m_array.ReAllocate(2); }, Same.OrLost()},
    {"SetLengthToLonger", Full, [](Values& v) { v.m_array.SetLength(6, true); }, Same},
    {"SetLengthToShorter", Full, [](Values& v) { v.m_array.SetLength(2, true); }, Same},
    {"SetLengthToTheCapacity", Roomy, [](Values& v) { v.m_array.SetLength(8, true); }, CannotFail},
    {"SetLengthWithoutKeeping", Full, [](Values& v) { v.m_array.SetLength(6, false); }, Same},
    {"SetLengthToNone", Full, [](Values& v) { v.m_array.SetLength(0, true); }, CannotFail},
    {"Reset", Full, [](Values& v) { v.m_array.Reset(); }, CannotFail},
    {"GetCurData", Full, [](Values& v) { v.m_nResult = v.m_array.GetCurData().m_n; }, CannotFail},
    {"SetCurData", Full, [](Values& v) { v.m_array.SetCurData(v.m_x); }, Same},
    {"MoveTheCursor", Full,
     [](Values& v) {
         v.m_array.MoveToFirst();
         v.m_array.MoveToNext();
         v.m_array.MoveToLast();
         v.m_array.MoveToPre();
         v.m_array.MoveTo(v.m_array.m_nCurIndex);
     },
     CannotFail},
    {"Index", Full, [](Values& v) { v.m_nResult = v.m_array[2].m_n; }, CannotFail},
    {"IndexPastTheEnd", Roomy, [](Values& v) { v.m_nResult = v.m_array[6].m_n; }, CannotFail},
    {"IndexPastTheBlock", Full, [](Values& v) { v.m_nResult = v.m_array[6].m_n; }, Same.OrLost()},
    {"WalkByAddress", Full,
     [](Values& v) {
         v.m_nResult = v.m_array.GetNext(v.m_array.GetFirst())->m_n +
                       v.m_array.GetPre(v.m_array.GetLast())->m_n + v.m_array.GetAt(3)->m_n +
                       (v.m_array.end() - v.m_array.begin()) + v.m_array.GetLength() +
                       v.m_array.GetCurIndex();
     },
     CannotFail},
    {"InsertCur", Roomy, [](Values& v) { v.m_array.InsertCur(v.m_x); }, Changed},
    {"InsertCurOfAnElementInside", Roomy, [](Values& v) { v.m_array.InsertCur(*v.m_array.GetAt(2)); },
     Changed},
    {"InsertCurPastTheBlock", Full, [](Values& v) { v.m_array.InsertCur(v.m_x); }, Changed.OrLost()},
    {"InsertCurOfAnElementInsidePastTheBlock", Full,
     [](Values& v) { v.m_array.InsertCur(*v.m_array.GetAt(2)); }, Changed.OrLost()},
    {"Insert", Roomy, [](Values& v) { v.m_array.Insert(2, v.m_x); }, Changed},
    {"InsertPastTheBlock", Full, [](Values& v) { v.m_array.Insert(2, v.m_x); }, Changed.OrLost()},
    {"InsertHead", Roomy, [](Values& v) { v.m_array.InsertHead(v.m_x); }, Changed},
    {"InsertHeadPastTheBlock", Full, [](Values& v) { v.m_array.InsertHead(v.m_x); }, Changed.OrLost()},
    {"Append", Roomy, [](Values& v) { v.m_nResult = v.m_array.Append(v.m_x); }, Changed},
    {"AppendPastTheBlock", Full, [](Values& v) { v.m_nResult = v.m_array.Append(v.m_x); }, Changed.OrLost()},
    {"DelCur", Full, [](Values& v) { v.m_array.MoveTo(1), v.m_array.DelCur(); }, Changed},
    {"DelCurOfTheLast", Full, [](Values& v) { v.m_array.MoveTo(3), v.m_array.DelCur(); }, CannotFail},
    {"SortAscending", Full, [](Values& v) { v.m_array.Sort(true); }, Same.ButByElements(Left::Changed)},
    {"SortDescending", Full, [](Values& v) { v.m_array.Sort(false); }, Same.ButByElements(Left::Changed)},
    {"SortByAFunction", Full, [](Values& v) { v.m_array.Sort(Value::Compare); },
     Same.ButByElements(Left::Changed)},
    {"SortWhatIsSorted", Sorted, [](Values& v) { v.m_array.Sort(true); }, Same},
    {"SortOneElement", [](Values& v) { v.Make(1, {1}); }, [](Values& v) { v.m_array.Sort(true); },
     CannotFail},
    {"MoveForward", Roomy, [](Values& v) { v.m_nResult = v.m_array.Move(0, 3); }, Changed},
    {"MoveBackward", Roomy, [](Values& v) { v.m_nResult = v.m_array.Move(2, 0); }, Changed},
    {"MovePastTheBlock", Full, [](Values& v) { v.m_nResult = v.m_array.Move(2, 0); }, Changed.OrLost()},
    {"MoveToWhereItStands", Full, [](Values& v) { v.m_nResult = v.m_array.Move(2, 3); }, CannotFail},
};
RUN_UNDER_FAULTS(KyDynArray, g_values);

// Elements that are moved in blocks and sorted without being asked one by one

class Longs : public ArraySubject<KyDynArray<long>> {
public:
    static int Compare(const long& a, const long& b) {
        FaultAt::Pass(FaultKind::Comparison);
        return a < b ? -1 : a > b ? 1 : 0;
    }
};

/// In no order; the block is full. The cursor stands on the second.
template <long nElements>
void Numbers(Longs& l) {
    l.m_array.SetLength(nElements, false);
    for (long i = 0; i < nElements; ++i) {
        l.m_array.m_pData[i] = i * 7 % nElements;
    }
    l.m_array.MoveTo(1);
}

const Operation<Longs> g_longs[] = {
    {"ReAllocate", Numbers<10>, [](Longs& l) { l.m_array.ReAllocate(11), l.m_array.ReAllocate(10); },
     Same.OrLost()},
    {"Append", Numbers<10>, [](Longs& l) { l.m_nResult = l.m_array.Append(5); }, Kept.OrLost()},
    {"InsertCur", Numbers<10>, [](Longs& l) { l.m_array.InsertCur(5); }, Same.OrLost()},
    {"Move", Numbers<10>, [](Longs& l) { l.m_nResult = l.m_array.Move(2, 0); }, Kept.OrLost()},
    {"DelCur", Numbers<10>, [](Longs& l) { l.m_array.DelCur(); }, CannotFail},
    {"SortAscending", Numbers<10>, [](Longs& l) { l.m_array.Sort(true); }, Same},
    {"SortMany", Numbers<1000>, [](Longs& l) { l.m_array.Sort(false); }, Same},
    {"SortByAFunction", Numbers<10>, [](Longs& l) { l.m_array.Sort(Longs::Compare); }, Same},
};
RUN_UNDER_FAULTS(KyDynArrayOfLongs, g_longs);

// KyDynPArray

class Objects : public ArraySubject<KyDynPArray<Object>> {
public:
    ~Objects() {
        if (std::find(m_array.begin(), m_array.end(), m_pLoose) == m_array.end()) {
            delete m_pLoose;
        }
    }

    /// Fills the array, a 0 standing for null; the cursor stands on the second element.
    void Make(long nCapacity, std::initializer_list<long> numbers) {
        m_array.SetLength(nCapacity, false);
        m_array.ReAllocate(0);
        for (const long n : numbers) {
            m_array.Append(n != 0 ? new Object(n) : nullptr);
        }
        m_array.m_nCurIndex = 1;
    }

    Object* m_pLoose = new Object(9);  // the array's, once it is in there
};

void Full(Objects& o) { o.Make(5, {3, 1, 0, 2, 1}); }
void Roomy(Objects& o) { o.Make(8, {3, 1, 0, 2, 1}); }

const Operation<Objects> g_objects[] = {
    {"Make", Full, [](Objects& o) { o.m_nResult = Seen(KyDynPArray<Object>(3, 2)).m_nCapacity; }, Same},
    {"ReAllocateInsideTheBlock", Roomy, [](Objects& o) { o.m_array.ReAllocate(7); }, CannotFail},
    {"ReAllocateShorter", Full, [](Objects& o) { o.m_array.ReAllocate(2); }, CannotFail},
    {"ReAllocatePastTheBlock", Full, [](Objects& o) { o.m_array.ReAllocate(6); }, Same.OrLost()},
    {"SetLengthToLonger", Full, [](Objects& o) { o.m_array.SetLength(7, true); }, Same},
    // What is cut off is deleted first, whatever becomes of the block.
    {"SetLengthToShorter", Full,
     [](Objects& o) { o.m_array.SetLength(3, true), o.m_array.SetLength(2, true); }, Changed},
    {"SetLengthWithoutKeeping", Full, [](Objects& o) { o.m_array.SetLength(7, false); }, Sound},
    {"SetLengthToNone", Full, [](Objects& o) { o.m_array.SetLength(0, true); }, CannotFail},
    {"Reset", Full, [](Objects& o) { o.m_array.Reset(); }, CannotFail},
    {"GetCurData", Full, [](Objects& o) { o.m_nResult = o.m_array.GetCurData()->m_n; }, CannotFail},
    {"Index", Full, [](Objects& o) { o.m_nResult = o.m_array[3]->m_n; }, CannotFail},
    {"IndexPastTheBlock", Full, [](Objects& o) { o.m_nResult = o.m_array[6] == nullptr; }, Same.OrLost()},
    {"InsertCur", Roomy, [](Objects& o) { o.m_array.InsertCur(o.m_pLoose); }, CannotFail},
    {"InsertCurPastTheBlock", Full, [](Objects& o) { o.m_array.InsertCur(o.m_pLoose); }, Same.OrLost()},
    {"InsertPastTheBlock", Full, [](Objects& o) { o.m_array.Insert(4, o.m_pLoose); }, Kept.OrLost()},
    {"InsertHeadPastTheBlock", Full, [](Objects& o) { o.m_array.InsertHead(o.m_pLoose); }, Kept.OrLost()},
    {"AppendPastTheBlock", Full, [](Objects& o) { o.m_nResult = o.m_array.Append(o.m_pLoose); },
     Kept.OrLost()},
    {"DelCur", Full, [](Objects& o) { o.m_array.DelCur(); }, CannotFail},
    {"SortAscending", Full, [](Objects& o) { o.m_array.Sort(true); }, Same},
    {"SortDescending", Full, [](Objects& o) { o.m_array.Sort(false); }, Same},
    {"SortByAFunctionOfObjects", Full, [](Objects& o) { o.m_array.Sort(Object::Compare); }, Same},
    {"SortByAFunctionOfPointers",
     [](Objects& o) {
         o.Make(3, {3, 2, 1});
     },
     [](Objects& o) { o.m_array.Sort(Object::ComparePointers); }, Same},
    {"Move", Roomy, [](Objects& o) { o.m_nResult = o.m_array.Move(0, 4); }, CannotFail},
    {"MoveForwardPastTheBlock", Full, [](Objects& o) { o.m_nResult = o.m_array.Move(0, 4); }, Kept.OrLost()},
    {"MoveBackwardPastTheBlock", Full, [](Objects& o) { o.m_nResult = o.m_array.Move(3, 0); }, Kept.OrLost()},
    {"ReleaseCur", Full, [](Objects& o) { o.m_array.ReleaseCur(); }, CannotFail},
    {"ReleaseAll", Full, [](Objects& o) { o.m_array.ReleaseAll(); }, CannotFail},
    {"TakeOffCur", Full, [](Objects& o) { delete o.m_array.TakeOffCur(); }, CannotFail},
    {"MoveTheCursorAndWalkByAddress", Full,
     [](Objects& o) {
         o.m_array.MoveToFirst();
         o.m_array.MoveToNext();
         o.m_array.MoveToLast();
         o.m_array.MoveToPre();
         o.m_array.MoveTo(1);
         o.m_array.SetCurData(o.m_array.GetCurData());
         o.m_nResult = (*o.m_array.GetNext(o.m_array.GetFirst()))->m_n +
                       (*o.m_array.GetPre(o.m_array.GetLast()))->m_n + (*o.m_array.GetAt(3))->m_n;
     },
     CannotFail},
};
RUN_UNDER_FAULTS(KyDynPArray, g_objects);

// The protocol's own operations, on a container that knows the least

/// Elements in one block of ten, with the base class's versions of all that it has versions of.
class Least : public KyDynArrayBase<Value> {
public:
    void ReAllocate(long n) override { m_nLength = n; }
    void SetLength(long n, bool) override { m_nLength = n; }
    Value& GetCurData() override { return m_elements[m_nCurIndex]; }
    void SetCurData(const Value& x) override { GetCurData() = x; }
    Value* GetFirst() const override { return m_nLength != 0 ? GetAt(0) : nullptr; }
    Value* GetNext(const Value* p) const override {
        return p == GetLast() ? nullptr : const_cast<Value*>(p) + 1;
    }
    Value* GetPre(const Value* p) const override {
        return p == GetFirst() ? nullptr : const_cast<Value*>(p) - 1;
    }
    Value* GetLast() const override { return m_nLength != 0 ? GetAt(m_nLength - 1) : nullptr; }
    Value* GetAt(long i) const override { return const_cast<Value*>(m_elements) + i; }
    void InsertCur(const Value& x) override {
        const Value copy(x);  // all that can throw
        for (long i = m_nLength; i > m_nCurIndex; --i) {
            m_elements[i].m_n = m_elements[i - 1].m_n;
        }
        m_elements[m_nCurIndex].m_n = copy.m_n;
        ++m_nLength;
    }
    void DelCur() override {
        for (long i = m_nCurIndex; i < m_nLength - 1; ++i) {
            m_elements[i].m_n = m_elements[i + 1].m_n;
        }
        --m_nLength;
        --m_nCurIndex;
    }
    void Sort(bool) override {}
    void Sort(int (*)(const Value&, const Value&)) override {}

private:
    Value m_elements[10];
};

class Protocol : public Subject {
public:
    std::string Words() const {
        return Contents() + "at " + std::to_string(m_container.m_nCurIndex) + " gives " +
               std::to_string(m_nResult);
    }
    std::string Contents() const { return WordsOf(m_container); }
    std::string Fault() const { return ""; }

    Least m_container;
    Value m_x{9};
};

void FourElements(Protocol& p) {
    for (const long n : {3, 1, 2, 1}) {
        p.m_container.Append(Value(n));
    }
    p.m_container.MoveTo(1);
}

const Operation<Protocol> g_protocol[] = {
    {"Reset", FourElements, [](Protocol& p) { p.m_container.Reset(); }, CannotFail},
    {"Index", FourElements, [](Protocol& p) { p.m_nResult = p.m_container[5].m_n; }, CannotFail},
    {"Insert", FourElements, [](Protocol& p) { p.m_container.Insert(2, p.m_x); }, Kept},
    {"InsertHead", FourElements, [](Protocol& p) { p.m_container.InsertHead(p.m_x); }, Kept},
    {"Append", FourElements, [](Protocol& p) { p.m_nResult = p.m_container.Append(p.m_x); }, Kept},
    {"MoveForward", FourElements, [](Protocol& p) { p.m_nResult = p.m_container.Move(0, 3); }, Kept},
    {"MoveBackward", FourElements, [](Protocol& p) { p.m_nResult = p.m_container.Move(3, 1); }, Kept},
};
RUN_UNDER_FAULTS(KyDynArrayBase, g_protocol);

// KyArray

class Fixed : public Subject {
public:
    std::string Words() const {
        return Contents() + "and " + WordsOf(m_other) + "gives " + std::to_string(m_nResult);
    }
    std::string Contents() const { return WordsOf(m_array); }
    std::string Fault() const {
        return (m_array.m_pData == nullptr) != (m_array.m_nLength == 0) ? "the block is not of the length"
                                                                        : "";
    }

    KyArray<Value> m_array;
    KyArray<Value> m_other;
    KyList<Value> m_list;
};

void ThreeAndTwo(Fixed& f) {
    for (const long n : {1, 2}) {
        f.m_list.Append(Value(n));
    }
    f.m_other = KyArray<Value>(f.m_list);
    f.m_list.Append(Value(3));
    f.m_array = KyArray<Value>(f.m_list);
}

const Operation<Fixed> g_fixed[] = {
    {"Make", ThreeAndTwo, [](Fixed& f) { f.m_nResult = KyArray<Value>().m_nLength; }, CannotFail},
    {"MakeASnapshot", ThreeAndTwo, [](Fixed& f) { f.m_nResult = KyArray<Value>(f.m_list).m_nLength; }, Same},
    {"MakeASnapshotOfNothing", [](Fixed&) {},
     [](Fixed& f) { f.m_nResult = KyArray<Value>(f.m_list).m_nLength; }, CannotFail},
    {"Copy", ThreeAndTwo, [](Fixed& f) { f.m_nResult = KyArray<Value>(f.m_array).m_nLength; }, Same},
    {"MoveAway", ThreeAndTwo, [](Fixed& f) { f.m_nResult = KyArray<Value>(std::move(f.m_array)).m_nLength; },
     CannotFail},
    {"AssignACopy", ThreeAndTwo, [](Fixed& f) { f.m_array = f.m_other; }, Same},
    {"AssignByMoving", ThreeAndTwo, [](Fixed& f) { f.m_array = std::move(f.m_other); }, CannotFail},
    {"ReAllocateLongerKeeping", ThreeAndTwo, [](Fixed& f) { f.m_array.ReAllocate(5, true); }, Same},
    {"ReAllocateShorterKeeping", ThreeAndTwo, [](Fixed& f) { f.m_array.ReAllocate(2, true); }, Same},
    {"ReAllocateWithoutKeeping", ThreeAndTwo, [](Fixed& f) { f.m_array.ReAllocate(5, false); }, Same},
    {"ReAllocateToNone", ThreeAndTwo, [](Fixed& f) { f.m_array.ReAllocate(0, true); }, CannotFail},
    {"Index", ThreeAndTwo, [](Fixed& f) { f.m_nResult = f.m_array[1].m_n + f.m_array.GetLength(); },
     CannotFail},
    {"Swap", ThreeAndTwo, [](Fixed& f) { swap(f.m_array, f.m_other); }, CannotFail},
};
RUN_UNDER_FAULTS(KyArray, g_fixed);

}  // namespace
