// Every list against a model: a vector and a cursor. Random operations run on both, two lists at a time so
// that they can be spliced, and after each one all that a caller can see is compared: elements, addresses,
// length, cursor, index.
#include <algorithm>
#include <memory>
#include <ostream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "ListModel.h"
#include "ListProbes.h"
#include "TestElements.h"
#include "VexaBase/containers/KyDList.h"
#include "VexaBase/containers/KyList.h"
#include "VexaBase/containers/KyPDList.h"
#include "VexaBase/containers/KyXList.h"

namespace {

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
                m_models[i].kind = ModelKind::Indexed;
                m_models[i].nStep = pIndexed->m_nStep;
            } else if (dynamic_cast<const KyDList<T>*>(m_lists[i].get()) != nullptr) {
                m_models[i].kind = ModelKind::Doubly;
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

    bool HasNull(const ListModel<T>& model) const {
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
        ListModel<T>& model = m_models[step.bSecond];
        ListModel<T>& otherModel = m_models[!step.bSecond];
        const long nLength = model.Length();
        // Where ReverseList left the cursor's index behind, only the indexed lists position exactly.
        const bool bExact = !model.IsStale() || model.kind == ModelKind::Indexed;
        const bool bOtherExact = !otherModel.IsStale() || otherModel.kind == ModelKind::Indexed;
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
                if (model.nPosition != -1 && (bExact || model.kind == ModelKind::Doubly)) {
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
    void TakeOwn(const Step& step, KyList<T>& list, ListModel<T>& model) {
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

    void Release(KyList<T>& list, ListModel<T>& model) {
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

    void Find(const Step& step, KyPXList<Token>& list, ListModel<T>& model) {
        const long nLength = model.Length();
        const Token x(step.a % 6, -1);
        const long first = step.a % (nLength + 2);
        const long last = step.b % (nLength + 2) - 1;
        const bool bFound = list.BFindDataTo(x, first, last);
        RC_ASSERT(bFound == model.Find([&x](const T& e) { return x.m_nKey - KeyOf(e); },
                                       std::min(first, nLength), std::min(last, nLength - 1)));
    }

    static void SortModel(ListModel<T>& model, bool bAscending) {
        if (model.Length() < 2) {
            return;
        }
        const auto isAfter = [bAscending](const T& e, const T& x) {
            return bAscending ? KeyOf(e) > KeyOf(x) : KeyOf(e) < KeyOf(x);
        };
        if constexpr (IsOwning) {
            model.SortObjects(isAfter);
        } else {
            model.Sort(isAfter);
        }
    }

    void SortByFunction(KyList<T>& list, ListModel<T>& model) {
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
    void Detach(KyList<T>& list, ListModel<T>& model) {
        std::vector<KyListNode<T>*> nodes = Nodes(list);
        const long nNewLength = list.DetachAfterCur();
        RC_ASSERT(nNewLength == model.DetachAfterCur());
        nodes.erase(nodes.begin(), nodes.begin() + nNewLength);
        for (KyListNode<T>* p : nodes) {
            if constexpr (IsOwning) {
                delete p->m_data;
            }
            if (model.kind == ModelKind::Singly) {
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

    static void Compare(const KyList<T>& list, ListModel<T>& model) {
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
    static void CompareReading(const KyList<T>& list, const ListModel<T>& model) {
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
    ListModel<T> m_models[2];
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
