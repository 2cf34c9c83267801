// Every list against a model: a vector and a cursor. Random operations run on both, two lists at a time so
// that they can be spliced, and after each one all that a caller can see is compared: elements, addresses,
// length, cursor, index.
#include <algorithm>
#include <iterator>
#include <memory>
#include <ostream>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "ListProbes.h"
#include "TestElements.h"
#include "VexaBase/containers/KyDList.h"
#include "VexaBase/containers/KyList.h"
#include "VexaBase/containers/KyPDList.h"
#include "VexaBase/containers/KyXList.h"

namespace {

enum class Kind { Singly, Doubly, Indexed };

/// What a list must look like. Its cursor is kept twice, as ReverseList parts the node from the index.
template <class T>
class Model {
public:
    struct Slot {
        T value;
        const T* pAddress = nullptr;  // null until the element has been seen in the list
    };

    Kind kind = Kind::Singly;
    long nStep = 0;
    std::vector<Slot> slots;
    long nPosition = -1;  // of the node under the cursor
    long nIndex = -1;     // m_nCurIndex
    long nEntry = -1;     // the cursor of the list's index

    long Length() const { return static_cast<long>(slots.size()); }
    bool IsStale() const { return nPosition != nIndex; }
    bool IsPosition(long i) const { return i >= 0 && i < Length(); }
    T& Current() { return slots[static_cast<std::size_t>(nPosition)].value; }
    const T* SlotAddress(long i) const { return slots[static_cast<std::size_t>(i)].pAddress; }

    void Stand(long nWhere) { nPosition = nIndex = nWhere; }
    void MoveToFirst() { Stand(slots.empty() ? -1 : 0); }
    void MoveToLast() { Stand(Length() - 1); }
    void MoveToNext() {
        nPosition = nPosition + 1 == Length() ? -1 : nPosition + 1;
        nIndex = nPosition == -1 ? -1 : nIndex + 1;
    }
    void MoveToPre() {
        if (kind == Kind::Singly) {
            nIndex == -1 ? MoveToLast() : MoveTo(nIndex - 1);
            return;
        }
        nPosition = nPosition == -1 ? Length() - 1 : nPosition - 1;
        nIndex = nPosition == Length() - 1 ? nPosition : nIndex - 1;
    }
    void MoveTo(long i) {
        if (kind == Kind::Indexed) {
            const long k = i / nStep;
            if (k >= 0 && k * nStep < Length()) {
                nEntry = k;
            }
            Stand(IsPosition(i) ? i : -1);
        } else if (!IsPosition(i)) {
            Stand(-1);
        } else if (i == Length() - 1 || (i == 0 && kind == Kind::Doubly)) {
            Stand(i);
        } else if (i < nIndex && kind == Kind::Singly) {
            Stand(i);
        } else if (i < nIndex) {
            while (nIndex != i) {
                MoveToPre();
            }
        } else {
            while (nIndex != i) {
                MoveToNext();
            }
        }
    }

    /// The position that GetAt(i) reaches, -1 for the sentinel.
    long PositionOf(long i) const {
        if (kind == Kind::Indexed && IsPosition(i)) {
            return i;
        }
        const long nRing = Length() + 1;
        if (kind == Kind::Singly && i < nIndex) {
            return i < 0 ? -1 : (i + 1) % nRing - 1;
        }
        return ((nPosition + 1 + i - nIndex) % nRing + nRing) % nRing - 1;
    }

    void InsertAfterCur(const T& x) {
        ++nPosition;
        ++nIndex;
        slots.insert(slots.begin() + nPosition, Slot{x});
    }
    void DelCur() {
        const long nRemoved = nPosition;
        MoveToPre();
        slots.erase(slots.begin() + nRemoved);
    }
    long Append(const T& x) {
        MoveToLast();
        InsertAfterCur(x);
        return Length() - 1;
    }
    void Insert(long i, const T& x) {
        MoveTo(i - 1);
        InsertAfterCur(x);
    }
    void InsertCur(const T& x) {
        MoveToPre();
        InsertAfterCur(x);
    }
    void ReAllocate(long n) {
        const std::pair cursor(nPosition, nIndex);
        while (Length() < n) {
            Append(T());
            std::tie(nPosition, nIndex) = cursor;
        }
    }
    void SetLength(long n) {
        ReAllocate(n);
        while (Length() > n) {
            MoveToLast();
            DelCur();
        }
    }
    void Reset() {
        slots.clear();
        Stand(-1);
        nEntry = -1;
    }
    bool Move(long from, long to) {
        if (from == to || from == to - 1) {
            return false;
        }
        MoveTo(from);
        const T x = Current();
        Insert(to, x);
        MoveTo(from > to ? from + 1 : from);
        DelCur();
        MoveTo(from > to ? to : to - 1);
        return true;
    }
    void ReverseList() {
        if (Length() > 1) {
            std::reverse(slots.begin(), slots.end());
            nPosition = nPosition == -1 ? -1 : Length() - 1 - nPosition;
        }
    }
    void Rotate(long from, long to) {
        if (from == to) {
            return;
        }
        const long nShift = (from - to + Length()) % Length();
        MoveTo((Length() + nShift - 1) % Length());
        MoveTo(nShift);
        std::rotate(slots.begin(), slots.begin() + nShift, slots.end());
        Stand(0);
    }
    long DetachAfterCur() {
        nIndex = nPosition;
        slots.resize(static_cast<std::size_t>(nPosition + 1));
        return Length();
    }
    long Conbine(Model& other, long pos) {
        if (&other != this && other.IsPosition(pos)) {
            other.MoveTo(pos);
            slots.insert(slots.end(), other.slots.begin() + pos, other.slots.end());
            other.MoveToLast();
            other.MoveTo(pos - 1);
            other.DetachAfterCur();
        }
        return Length();
    }

    /// isAfter(e, x): x moves in front of e.
    template <class IsAfter>
    void Sort(IsAfter isAfter) {
        for (auto x = slots.begin(); x != slots.end(); ++x) {
            const auto place =
                std::find_if_not(std::make_reverse_iterator(x), slots.rend(), [&](const Slot& e) {
                    return isAfter(e.value, x->value);
                }).base();
            if (place != x) {
                x->pAddress = nullptr;
                std::rotate(place, x, x + 1);
            }
        }
        Stand(-1);
    }
};

/// One step of a random run. The numbers are brought into range by the list's state when the step is taken.
struct Step {
    int nOperation;
    bool bSecond;  // on the second list
    long a;
    long b;

    friend std::ostream& operator<<(std::ostream& os, const Step& step) {
        return os << "{" << step.nOperation << ", " << step.bSecond << ", " << step.a << ", " << step.b
                  << "}";
    }
};

rc::Gen<std::vector<Step>> Steps() {
    const auto step =
        rc::gen::construct<Step>(rc::gen::inRange(0, 30), rc::gen::arbitrary<bool>(),
                                 rc::gen::inRange(0L, 1L << 20), rc::gen::inRange(0L, 1L << 20));
    return rc::gen::scale(4.0, rc::gen::container<std::vector<Step>>(step));
}

long KeyOf(const Card& x) { return x.m_nKey; }
long KeyOf(const Token* x) { return x->m_nKey; }

/// Compares addresses; an assertion of the property's own would print what they point to.
void ExpectSame(const void* pActual, const void* pExpected, const char* pszWhat) {
    if (pActual != pExpected) {
        RC_FAIL(std::string(pszWhat) + " leads to another address");
    }
}

/// Two lists and their models, side by side.
template <class T>
class Run {
public:
    static constexpr bool IsOwning = std::is_pointer_v<T>;

    Run(std::unique_ptr<KyList<T>> pFirst, std::unique_ptr<KyList<T>> pSecond) {
        m_lists[0] = std::move(pFirst);
        m_lists[1] = std::move(pSecond);
        for (int i = 0; i < 2; ++i) {
            if (const auto* pIndexed = dynamic_cast<const KyXList<T>*>(m_lists[i].get())) {
                m_models[i].kind = Kind::Indexed;
                m_models[i].nStep = pIndexed->m_nStep;
            } else if (dynamic_cast<const KyDList<T>*>(m_lists[i].get()) != nullptr) {
                m_models[i].kind = Kind::Doubly;
            }
        }
    }

    void Take(const std::vector<Step>& steps) {
        Compare();
        for (const Step& step : steps) {
            Take(step);
            Compare();
        }
    }

private:
    static constexpr long MaxLength = 40;

    T NewValue(long nKey) {
        if constexpr (IsOwning) {
            return nKey % 5 == 0 ? nullptr : new Token(nKey % 5, m_nNext++);
        } else {
            return {nKey % 4, m_nNext++};
        }
    }

    bool HasNull(const Model<T>& model) const {
        if constexpr (IsOwning) {
            return std::any_of(model.slots.begin(), model.slots.end(),
                               [](const auto& s) { return s.value == nullptr; });
        } else {
            return false;
        }
    }

    void Take(const Step& step) {
        KyList<T>& list = *m_lists[step.bSecond];
        KyList<T>& other = *m_lists[!step.bSecond];
        Model<T>& model = m_models[step.bSecond];
        Model<T>& otherModel = m_models[!step.bSecond];
        const long nLength = model.Length();
        // Where ReverseList left the cursor's index behind, only the indexed lists position exactly.
        const bool bExact = !model.IsStale() || model.kind == Kind::Indexed;
        const bool bOtherExact = !otherModel.IsStale() || otherModel.kind == Kind::Indexed;
        const long i = nLength != 0 ? step.a % nLength : 0;
        const long j = nLength != 0 ? step.b % nLength : 0;

        if (nLength >= MaxLength) {
            list.SetLength(nLength / 3, true);
            model.SetLength(nLength / 3);
            return;
        }
        switch (step.nOperation) {
            case 0:
                list.MoveToFirst();
                return model.MoveToFirst();
            case 1:
                list.MoveToNext();
                return model.MoveToNext();
            case 2:
                list.MoveToPre();
                return model.MoveToPre();
            case 3:
                list.MoveToLast();
                return model.MoveToLast();
            case 4:
            case 5: {
                const long nTarget = step.a % (nLength + 4) - 2;
                list.MoveTo(nTarget);
                return model.MoveTo(nTarget);
            }
            case 6:
                if (bExact) {
                    const long nTarget = step.a % (nLength + 3);
                    T& element = list[nTarget];
                    model.ReAllocate(nTarget + 1);
                    model.MoveTo(nTarget);
                    ExpectSame(&element, std::addressof(list.m_pCurNode->m_data), "operator[]");
                }
                return;
            case 7:
                if (model.nPosition != -1) {
                    if constexpr (IsOwning) {
                        delete list.GetCurData();
                    }
                    const T x = NewValue(step.a);
                    list.SetCurData(x);
                    model.Current() = x;
                }
                return;
            case 8: {
                const T x = NewValue(step.a);
                list.InsertCur(x);
                return model.InsertCur(x);
            }
            case 9: {
                const T x = NewValue(step.a);
                const long nTarget = step.b % (nLength + 5) - 2;
                list.Insert(nTarget, x);
                return model.Insert(nTarget, x);
            }
            case 10: {
                const T x = NewValue(step.a);
                list.InsertHead(x);
                return model.Insert(0, x);
            }
            case 11:
            case 12: {
                const T x = NewValue(step.a);
                RC_ASSERT(list.Append(x) == model.Append(x));
                return;
            }
            case 13:
            case 14:
                if (model.nPosition != -1 && (bExact || model.kind == Kind::Doubly)) {
                    list.DelCur();
                    model.DelCur();
                }
                return;
            case 15:
                list.Sort(step.a % 2 == 0);
                return SortModel(model, step.a % 2 == 0);
            case 16:
                return SortByFunction(list, model);
            case 17:
                if (bExact && nLength != 0) {
                    const long to = step.b % (nLength + 1);
                    RC_ASSERT(list.Move(i, to) == model.Move(i, to));
                }
                return;
            case 18:
            case 19: {
                const T x = NewValue(step.a);
                const T* const p = list.InsertAfterCur(x);
                model.InsertAfterCur(x);
                ExpectSame(p, std::addressof(list.m_pCurNode->m_data), "InsertAfterCur");
                return;
            }
            case 20:
                if (bExact) {
                    Detach(list, model);
                }
                return;
            case 21:
            case 22:
                if (bOtherExact) {
                    const long pos = step.a % (otherModel.Length() + 3) - 1;
                    RC_ASSERT(list.Conbine(other, pos) == model.Conbine(otherModel, pos));
                }
                return;
            case 23:
                RC_ASSERT(list.Conbine(list, i) == nLength);
                return;
            case 24:
            case 25:
                list.ReverseList();
                return model.ReverseList();
            case 26:
                if (bExact && nLength != 0) {
                    list.Rotate(i, j);
                    model.Rotate(i, j);
                }
                return;
            case 27: {
                const long n = step.a % (nLength + 4) - 1;
                list.ReAllocate(n);
                return model.ReAllocate(n);
            }
            case 28: {
                const long n = step.a % (nLength + 4);
                list.SetLength(n, step.b % 2 == 0);
                return model.SetLength(n);
            }
            default:
                return TakeOwn(step, list, model);
        }
    }

    /// The operations that only some lists have; Reset for the others.
    void TakeOwn(const Step& step, KyList<T>& list, Model<T>& model) {
        if constexpr (IsOwning) {
            if (step.b % 4 == 0) {
                return Release(list, model);
            }
            auto* const pIndexed = dynamic_cast<KyPXList<Token>*>(&list);
            if (pIndexed != nullptr && !HasNull(model)) {
                return Find(step, *pIndexed, model);
            }
        }
        if (step.b % 3 == 0) {
            list.Reset();
            model.Reset();
        }
    }

    void Release(KyList<T>& list, Model<T>& model) {
        if constexpr (IsOwning) {
            if (auto* const pIndexed = dynamic_cast<KyPXList<Token>*>(&list)) {
                pIndexed->ReleaseAll();
            } else {
                static_cast<KyPDList<Token>&>(list).ReleaseAll();
            }
            for (auto& slot : model.slots) {
                slot.value = nullptr;
            }
            model.Stand(-1);
        }
    }

    void Find(const Step& step, KyPXList<Token>& list, Model<T>& model) {
        const long nLength = model.Length();
        const Token x(step.a % 6, -1);
        const long first = step.a % (nLength + 2);
        const long last = step.b % (nLength + 2) - 1;
        const bool bFound = list.BFindDataTo(x, first, last);
        RC_ASSERT(bFound == FindInModel(model, x, std::min(first, nLength), std::min(last, nLength - 1)));
    }

    static bool FindInModel(Model<T>& model, const Token& x, long first, long last) {
        const auto order = [&] { return x.m_nKey - KeyOf(model.Current()); };
        model.MoveTo(first);
        if (first > last || order() < 0) {
            return false;
        }
        model.MoveTo(last);
        if (order() > 0) {
            model.MoveToNext();
            return false;
        }
        while (first < last) {
            const long nMiddle = (first + last) / 2;
            model.MoveTo(nMiddle);
            if (order() == 0) {
                return true;
            }
            (order() > 0 ? first : last) = nMiddle + (order() > 0 ? 1 : -1);
        }
        if (last < first) {
            return false;
        }
        model.MoveTo(last);
        const long nOrder = order();
        if (nOrder > 0) {
            model.MoveToNext();
        }
        return nOrder == 0;
    }

    static void SortModel(Model<T>& model, bool bAscending) {
        if (model.Length() < 2) {
            return;
        }
        const long nLength = model.Length();
        if constexpr (IsOwning) {
            model.slots.erase(std::remove_if(model.slots.begin(), model.slots.end(),
                                             [](const auto& slot) { return slot.value == nullptr; }),
                              model.slots.end());
        }
        model.Sort([bAscending](const T& e, const T& x) {
            return bAscending ? KeyOf(e) > KeyOf(x) : KeyOf(e) < KeyOf(x);
        });
        while (model.Length() < nLength) {
            model.Append(T());
        }
    }

    void SortByFunction(KyList<T>& list, Model<T>& model) {
        if constexpr (!IsOwning) {
            list.Sort([](const Card& a, const Card& b) { return a.m_nKey % 2 - b.m_nKey % 2 > 0 ? 1 : 0; });
        } else if (HasNull(model)) {
            return;
        } else if (auto* const pIndexed = dynamic_cast<KyPXList<Token>*>(&list)) {
            pIndexed->Sort(ByParity);
        } else {
            static_cast<KyPDList<Token>&>(list).Sort(ByParity);
        }
        if (model.Length() >= 2) {
            model.Sort([](const T& e, const T& x) { return KeyOf(e) % 2 > KeyOf(x) % 2; });
        }
    }
    static int ByParity(const Token& a, const Token& b) { return a.m_nKey % 2 > b.m_nKey % 2 ? 1 : 0; }

    /// Cuts the list and frees what was cut off, as whoever cuts must.
    void Detach(KyList<T>& list, Model<T>& model) {
        std::vector<KyListNode<T>*> nodes = Nodes(list);
        const long nNewLength = list.DetachAfterCur();
        RC_ASSERT(nNewLength == model.DetachAfterCur());
        nodes.erase(nodes.begin(), nodes.begin() + nNewLength);
        for (KyListNode<T>* p : nodes) {
            if constexpr (IsOwning) {
                delete p->m_data;
            }
            if (model.kind == Kind::Singly) {
                delete p;
            } else {
                delete static_cast<KyDListNode<T>*>(p);
            }
        }
    }

    void Compare() {
        long nObjects = 0;
        for (int i = 0; i < 2; ++i) {
            Compare(*m_lists[i], m_models[i]);
            if constexpr (IsOwning) {
                nObjects += std::count_if(m_models[i].slots.begin(), m_models[i].slots.end(),
                                          [](const auto& slot) { return slot.value != nullptr; });
            }
        }
        RC_ASSERT(m_watch.Live() == nObjects);
    }

    static void Compare(const KyList<T>& list, Model<T>& model) {
        const long nLength = model.Length();
        const auto sound = RingIsSound(list);
        if (!sound) {
            RC_FAIL(sound.message());
        }
        RC_ASSERT(list.m_nLength == nLength);
        RC_ASSERT(list.m_nCurIndex == model.nIndex);
        RC_ASSERT(CursorPosition(list) == model.nPosition);
        if (const auto* pIndexed = dynamic_cast<const KyXList<T>*>(&list)) {
            RC_ASSERT(pIndexed->m_arrIndex.m_nCurIndex == model.nEntry);
        }
        const std::vector<KyListNode<T>*> nodes = Nodes(list);
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            if (!(nodes[i]->m_data == model.slots[i].value)) {
                RC_FAIL("element " + std::to_string(i) + " is another");
            }
            if (model.slots[i].pAddress == nullptr) {
                model.slots[i].pAddress = &nodes[i]->m_data;
            }
            ExpectSame(&nodes[i]->m_data, model.slots[i].pAddress, "an element that stays");
        }
        CompareReading(list, model);
        RC_ASSERT(list.m_nCurIndex == model.nIndex);
        RC_ASSERT(CursorPosition(list) == model.nPosition);
    }

    /// The reading operations, which leave the cursor where it is.
    static void CompareReading(const KyList<T>& list, const Model<T>& model) {
        const long nLength = model.Length();
        const auto address = [&](long i) { return model.IsPosition(i) ? model.SlotAddress(i) : nullptr; };
        ExpectSame(list.GetFirst(), address(0), "GetFirst");
        ExpectSame(list.GetLast(), address(nLength - 1), "GetLast");
        for (long i = 0; i < nLength; ++i) {
            ExpectSame(list.GetNext(address(i)), address(i + 1), "GetNext");
            ExpectSame(list.GetPre(address(i)), address(i - 1), "GetPre");
        }
        for (long i = -2; i < nLength + 3; ++i) {
            const long nPosition = model.PositionOf(i);
            ExpectSame(list.GetAt(i), nPosition == -1 ? &list.m_pHead->m_data : address(nPosition), "GetAt");
        }
        long nForward = 0;
        for (const T& x : list) {
            ExpectSame(std::addressof(x), address(nForward++), "a step forward");
        }
        long nBackward = nLength;
        for (auto it = list.end(); it != list.begin();) {
            ExpectSame(std::addressof(*--it), address(--nBackward), "a step back");
        }
        RC_ASSERT(nForward == nLength);
        RC_ASSERT(nBackward == 0);
    }

    const OwnedWatch m_watch;
    std::unique_ptr<KyList<T>> m_lists[2];
    Model<T> m_models[2];
    long m_nNext = 0;
};

template <class T>
void RunAgainstTheModel(std::unique_ptr<KyList<T>> pFirst, std::unique_ptr<KyList<T>> pSecond) {
    const std::vector<Step> steps = *Steps();
    Run<T>(std::move(pFirst), std::move(pSecond)).Take(steps);
}

long AnyStep() { return *rc::gen::element(1L, 2L, 3L, 7L, 64L); }

}  // namespace

RC_GTEST_PROP(ListModel, KyListAgreesWithAVectorAndACursor, ()) {
    RunAgainstTheModel<Card>(std::make_unique<KyList<Card>>(), std::make_unique<KyList<Card>>());
}

RC_GTEST_PROP(ListModel, KyDListAgreesWithAVectorAndACursor, ()) {
    RunAgainstTheModel<Card>(std::make_unique<KyDList<Card>>(), std::make_unique<KyDList<Card>>());
}

RC_GTEST_PROP(ListModel, KyXListAgreesWithAVectorAndACursor, ()) {
    RunAgainstTheModel<Card>(std::make_unique<KyXList<Card>>(AnyStep()),
                             std::make_unique<KyXList<Card>>(AnyStep()));
}

RC_GTEST_PROP(ListModel, KyXListAndKyDListAgreeTogether, ()) {
    RunAgainstTheModel<Card>(std::make_unique<KyXList<Card>>(AnyStep()), std::make_unique<KyDList<Card>>());
}

RC_GTEST_PROP(ListModel, KyPDListAgreesWithAVectorAndACursor, ()) {
    RunAgainstTheModel<Token*>(std::make_unique<KyPDList<Token>>(), std::make_unique<KyPDList<Token>>());
}

RC_GTEST_PROP(ListModel, KyPXListAgreesWithAVectorAndACursor, ()) {
    RunAgainstTheModel<Token*>(std::make_unique<KyPXList<Token>>(AnyStep()),
                               std::make_unique<KyPXList<Token>>(AnyStep()));
}

RC_GTEST_PROP(ListModel, KyPXListAndKyPDListAgreeTogether, ()) {
    RunAgainstTheModel<Token*>(std::make_unique<KyPXList<Token>>(AnyStep()),
                               std::make_unique<KyPDList<Token>>());
}
