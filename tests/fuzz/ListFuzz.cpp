// Sequences of operations on two lists at a time, of every kind, and on the queues; some with a copy or a comparison
// that throws. Everything that can be seen is compared with the model after each.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include "ByteSource.h"
#include "CountedElements.h"
#include "VexaBase/containers/KyArray.h"
#include "VexaBase/containers/KyDList.h"
#include "VexaBase/containers/KyList.h"
#include "VexaBase/containers/KyPDList.h"
#include "VexaBase/containers/KyQuene.h"
#include "VexaBase/containers/KyXList.h"
#include "tests/containers/ListModel.h"

namespace {

constexpr int nMostSteps = 300;
constexpr int nMostStepsOfLong = 50;

/// What the model holds of an element: a value's label, an object's address.
Label Known(const Element& element) { return element.m_label; }
Object* Known(Object* p) { return p; }
template <class T>
using KnownOf = decltype(Known(std::declval<const T&>()));

long KeyOf(const Label& label) { return label.m_nKey; }
long KeyOf(const Object* p) { return p->m_label.m_nKey; }

constexpr auto isParityAfter = [](const auto& e, const auto& x) { return KeyOf(e) % 2 > KeyOf(x) % 2; };
int CompareParities(const Element& a, const Element& b) {
    OrderedFault::Pass();
    return isParityAfter(a.m_label, b.m_label) ? 1 : 0;
}
int CompareParities(const Object& a, const Object& b) {
    OrderedFault::Pass();
    return isParityAfter(&a, &b) ? 1 : 0;
}

/// Two lists and their models.
template <class T>
class ListsRun {
public:
    using Model = ListModel<KnownOf<T>, T>;
    static constexpr bool IsOwning = std::is_pointer_v<T>;

    ListsRun(std::unique_ptr<KyList<T>> pFirst, std::unique_ptr<KyList<T>> pSecond, bool bLong)
        : m_nMostElements(bLong ? 2500 : 80), m_nMostSteps(bLong ? nMostStepsOfLong : nMostSteps) {
        m_lists[0] = std::move(pFirst);
        m_lists[1] = std::move(pSecond);
        for (int i = 0; i < 2; ++i) {
            if (const auto* pIndexed = dynamic_cast<const KyXList<T>*>(m_lists[i].get())) {
                m_models[i].kind = ModelKind::Indexed;
                m_models[i].nStep = pIndexed->m_nStep;
            } else if (dynamic_cast<const KyDList<T>*>(m_lists[i].get()) != nullptr) {
                m_models[i].kind = ModelKind::Doubly;
            }
            m_models[i].slots.resize(static_cast<std::size_t>(m_lists[i]->m_nLength));
            m_nSentinels += IsOwning ? 0 : 1;
        }
    }

    void Take(ByteSource& source) {
        Compare();
        for (int nSteps = 0; !source.IsEmpty() && nSteps < m_nMostSteps; ++nSteps) {
            const std::uint8_t nOperation = source.Byte();
            const bool bSecond = nOperation % 2 != 0;
            KyList<T>& list = *m_lists[bSecond];
            Model& model = m_models[bSecond];
            if (model.Length() > m_nMostElements) {
                list.SetLength(model.Length() / 3, true);
                model.SetLength(model.Length() / 3);
            } else {
                const long nFault = nOperation >= 240 ? source.Number(1, 16) : 0;
                const bool bWasStale = model.IsStale();
                try {
                    const OrderedFault fault(nFault);
                    Step(nOperation / 2 % nOperations, source, list, model, bSecond);
                } catch (const Fault&) {
                    LearnAfterFault(list, model);
                    FUZZ_CHECK(bWasStale || !model.IsStale());
                }
            }
            Compare();
        }
    }

private:
    static constexpr int nOperations = 35;

    T NewValue(ByteSource& source) {
        const Label label{source.Number(0, 7), ++m_nTags};
        if constexpr (IsOwning) {
            return label.m_nKey == 7 ? nullptr : new Object(label);
        } else {
            return label;
        }
    }

    static bool HasNull(const Model& model) {
        if constexpr (IsOwning) {
            return std::any_of(model.slots.begin(), model.slots.end(),
                               [](const auto& slot) { return slot.value == nullptr; });
        } else {
            return false;
        }
    }

    /// One operation on the list, then on its model. A call that throws leaves the model behind.
    void Step(int nOperation, ByteSource& source, KyList<T>& list, Model& model, bool bSecond) {
        KyList<T>& other = *m_lists[!bSecond];
        Model& otherModel = m_models[!bSecond];
        const long nLength = model.Length();
        // Where ReverseList left the cursor's index behind, only the indexed lists position exactly.
        const bool bExact = !model.IsStale() || model.kind == ModelKind::Indexed;
        const bool bOtherExact = !otherModel.IsStale() || otherModel.kind == ModelKind::Indexed;
        switch (nOperation) {
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
                const long i = Position(source, nLength + 4) - 2;
                list.MoveTo(i);
                return model.MoveTo(i);
            }
            case 6:
                if (bExact) {
                    const long i = Position(source, nLength + 3);
                    const T* const p = std::addressof(list[i]);
                    model.ReAllocate(i + 1);
                    model.MoveTo(i);
                    FUZZ_CHECK(p == list.GetAt(i));
                }
                return;
            case 7:
                if (model.nPosition != -1) SetCurrent(source, list, model);
                return;
            case 8: {
                const T x = NewValue(source);
                list.InsertCur(x);
                return model.InsertCur(Known(x));
            }
            case 9: {
                const T x = NewValue(source);
                const long i = Position(source, nLength + 5) - 2;
                list.Insert(i, x);
                return model.Insert(i, Known(x));
            }
            case 10: {
                const T x = NewValue(source);
                list.InsertHead(x);
                return model.Insert(0, Known(x));
            }
            case 11:
            case 12: {
                const T x = NewValue(source);
                const long i = list.Append(x);
                FUZZ_CHECK(i == model.Append(Known(x)));
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
            case 16:
                return Sort(list, model, nOperation == 15);
            case 17:
                return SortByFunction(list, model);
            case 18:
                if (bExact && nLength != 0) {
                    const long from = Position(source, nLength);
                    const long to = Position(source, nLength + 1);
                    const bool bMoved = list.Move(from, to);
                    FUZZ_CHECK(bMoved == model.Move(from, to));
                }
                return;
            case 19:
            case 20: {
                const T x = NewValue(source);
                const T* const p = list.InsertAfterCur(x);
                model.InsertAfterCur(Known(x));
                FUZZ_CHECK(p == std::addressof(list.m_pCurNode->m_data));
                return;
            }
            case 21:
                if (bExact) Detach(list, model);
                return;
            case 22:
            case 23:
                if (bOtherExact) {
                    const long pos = Position(source, otherModel.Length() + 3) - 1;
                    FUZZ_CHECK(list.Conbine(other, pos) == model.Conbine(otherModel, pos));
                }
                return;
            case 24:
                FUZZ_CHECK(list.Conbine(list, Position(source, nLength + 1)) == nLength);
                return;
            case 25:
                list.ReverseList();
                return model.ReverseList();
            case 26:
                if (bExact && nLength != 0) {
                    const long from = Position(source, nLength);
                    const long to = Position(source, nLength);
                    list.Rotate(from, to);
                    model.Rotate(from, to);
                }
                return;
            case 27: {
                const long n = Position(source, nLength + 4) - 1;
                list.ReAllocate(n);
                return model.ReAllocate(n);
            }
            case 28: {
                const long n = Position(source, nLength + 4);
                list.SetLength(n, n % 2 == 0);
                return model.SetLength(n);
            }
            case 29: {
                const long n = source.Number(0, 255) * m_nMostElements / 255;
                list.SetLength(n, true);
                return model.SetLength(n);
            }
            case 30:
                if (source.Number(0, 3) == 0) {
                    list.Reset();
                    model.Reset();
                }
                return;
            case 31:
                if (nLength != 0) InsertOwnElement(Position(source, nLength), list, model);
                return;
            case 32:
                return TakeSnapshot(list, model);
            default:
                if constexpr (IsOwning) StepOfObjects(nOperation == 33, source, list, model);
                return;
        }
    }

    /// A number in 0 .. n - 1, even where a byte does not reach that far.
    static long Position(ByteSource& source, long n) {
        const long i = source.Byte();
        return (n > 256 ? i * 256 + source.Byte() : i) % n;
    }

    void SetCurrent(ByteSource& source, KyList<T>& list, Model& model) {
        const T x = NewValue(source);
        if constexpr (IsOwning) delete list.GetCurData();
        list.SetCurData(x);
        model.Current() = Known(x);
        FUZZ_CHECK(Known(list.GetCurData()) == Known(x));
    }

    static void Sort(KyList<T>& list, Model& model, bool bAscending) {
        list.Sort(bAscending);
        if (model.Length() < 2) return;
        const auto isAfter = [bAscending](const auto& e, const auto& x) {
            return bAscending ? KeyOf(e) > KeyOf(x) : KeyOf(e) < KeyOf(x);
        };
        if constexpr (IsOwning) {
            model.SortObjects(isAfter);
        } else {
            model.Sort(isAfter);
        }
    }

    static void SortByFunction(KyList<T>& list, Model& model) {
        int (*const pfnCompare)(const std::remove_pointer_t<T>&, const std::remove_pointer_t<T>&) =
            CompareParities;
        if constexpr (!IsOwning) {
            list.Sort(pfnCompare);
        } else if (HasNull(model)) {
            // Through this slot an owning list is left alone by a comparison that knows no order, no other.
            list.Sort([](Object* const&, Object* const&) { return 0; });
            if (model.Length() >= 2) model.Stand(-1);
            return;
        } else if (auto* const pIndexed = dynamic_cast<KyPXList<Object>*>(&list)) {
            pIndexed->Sort(pfnCompare);
        } else {
            static_cast<KyPDList<Object>&>(list).Sort(pfnCompare);
        }
        if (model.Length() >= 2) model.Sort(isParityAfter);
    }

    /// Cuts the list and frees what was cut off, as whoever cuts must.
    static void Detach(KyList<T>& list, Model& model) {
        std::vector<KyListNode<T>*> nodes;
        for (KyListNode<T>* p = list.m_pHead->m_pNext; p != list.m_pHead; p = p->m_pNext) nodes.push_back(p);
        const long nNewLength = list.DetachAfterCur();
        FUZZ_CHECK(nNewLength == model.DetachAfterCur());
        for (auto i = static_cast<std::size_t>(nNewLength); i < nodes.size(); ++i) {
            if constexpr (IsOwning) delete nodes[i]->m_data;
            if (model.kind == ModelKind::Singly) {
                delete nodes[i];
            } else {
                delete static_cast<KyDListNode<T>*>(nodes[i]);
            }
        }
    }

    static void InsertOwnElement(long i, KyList<T>& list, Model& model) {
        if constexpr (!IsOwning) {
            const KnownOf<T> x = model.slots[static_cast<std::size_t>(i)].value;
            list.InsertHead(*model.SlotAddress(i));
            model.Insert(0, x);
        }
    }

    static void TakeSnapshot(const KyList<T>& list, const Model& model) {
        const KyArray<T> snapshot(list);
        FUZZ_CHECK(snapshot.m_nLength == model.Length());
        const KyDynArrayBase<T>& base = list;
        FUZZ_CHECK(std::equal(base.begin(), base.end(), snapshot.begin(), snapshot.end(),
                              [](const T& a, const T& b) { return Known(a) == Known(b); }));
    }

    /// The operations of the owning lists alone.
    static void StepOfObjects(bool bFind, ByteSource& source, KyList<T>& list, Model& model) {
        auto* const pIndexed = dynamic_cast<KyPXList<Object>*>(&list);
        if (!bFind && pIndexed != nullptr) {
            pIndexed->ReleaseAll();
        } else if (!bFind) {
            static_cast<KyPDList<Object>&>(list).ReleaseAll();
        }
        if (!bFind) {
            for (auto& slot : model.slots) slot.value = nullptr;
            return model.Stand(-1);
        }
        if (pIndexed == nullptr || HasNull(model)) return;
        const long nLength = model.Length();
        const Object x({source.Number(0, 7), 0});
        const auto orderOf = [&x](const Object* p) { return KeyOf(&x) - KeyOf(p); };
        if (source.Number(0, 1) == 0) {
            const bool bFound = pIndexed->BFindDataTo(x);
            FUZZ_CHECK(bFound == model.Find(orderOf, 0, nLength - 1));
        } else {
            const long first = Position(source, nLength + 4) - 2;
            const long last = Position(source, nLength + 4) - 2;
            const bool bFound = pIndexed->BFindDataTo(x, first, last);
            FUZZ_CHECK(bFound ==
                       model.Find(orderOf, std::clamp(first, 0L, nLength), std::min(last, nLength - 1)));
        }
    }

    /// Makes the model what the list has become by a call that threw, which is checked where it must be something
    /// in particular.
    static void LearnAfterFault(const KyList<T>& list, Model& model) {
        const long nOldLength = model.Length();
        FUZZ_CHECK(list.m_nLength >= nOldLength);
        FUZZ_CHECK(!IsOwning || list.m_nLength == nOldLength);
        model.slots.clear();
        model.nPosition = -1;
        for (KyListNode<T>* p = list.m_pHead->m_pNext; p != list.m_pHead; p = p->m_pNext) {
            if (p == list.m_pCurNode) model.nPosition = model.Length();
            model.slots.push_back({Known(p->m_data), &p->m_data});
        }
        model.nIndex = list.m_nCurIndex;
        if (const auto* pIndexed = dynamic_cast<const KyXList<T>*>(&list)) {
            model.nEntry = pIndexed->m_arrIndex.m_nCurIndex;
        }
    }

    void Compare() {
        long nLive = m_nSentinels;
        for (int i = 0; i < 2; ++i) {
            Compare(*m_lists[i], m_models[i]);
            if constexpr (IsOwning) {
                nLive += std::count_if(m_models[i].slots.begin(), m_models[i].slots.end(),
                                       [](const auto& slot) { return slot.value != nullptr; });
            } else {
                nLive += m_models[i].Length();
            }
        }
        FUZZ_CHECK(std::remove_pointer_t<T>::s_nLive == nLive);
    }

    static void Compare(const KyList<T>& list, Model& model) {
        const long nLength = model.Length();
        FUZZ_CHECK(list.GetLength() == nLength && list.GetCurIndex() == model.nIndex);
        CompareRing(list, model);
        if (const auto* pIndexed = dynamic_cast<const KyXList<T>*>(&list)) {
            CompareIndex(*pIndexed, model);
        }
        const long nAllWalked = 20;
        const long nStride = nLength <= nAllWalked ? 1 : nLength / 5;
        for (long i = -2; i < nLength + 3; i += nStride) {
            const long nPosition = model.PositionOf(i);
            FUZZ_CHECK(list.GetAt(i) == AddressAt(list, model, nPosition));
            if (!model.IsPosition(i)) continue;
            FUZZ_CHECK(list.GetNext(model.SlotAddress(i)) == AddressOrNull(model, i + 1));
            FUZZ_CHECK(list.GetPre(model.SlotAddress(i)) == AddressOrNull(model, i - 1));
        }
        FUZZ_CHECK(list.GetFirst() == AddressOrNull(model, 0));
        FUZZ_CHECK(list.GetLast() == AddressOrNull(model, nLength - 1));
        FUZZ_CHECK(list.GetNext(nullptr) == nullptr && list.GetPre(nullptr) == nullptr);
        FUZZ_CHECK(nLength == 0 || std::addressof(*--list.end()) == list.GetLast());
        FUZZ_CHECK(list.GetCurIndex() == model.nIndex);
        FUZZ_CHECK(CursorNode(list, model) == list.m_pCurNode);
    }

    static const T* AddressOrNull(const Model& model, long i) {
        return model.IsPosition(i) ? model.SlotAddress(i) : nullptr;
    }
    static const T* AddressAt(const KyList<T>& list, const Model& model, long i) {
        return i == -1 ? &list.m_pHead->m_data : model.SlotAddress(i);
    }
    static const KyListNode<T>* CursorNode(const KyList<T>& list, const Model& model) {
        return reinterpret_cast<const KyListNode<T>*>(AddressAt(list, model, model.nPosition));
    }

    /// The elements, that those that stay keep their nodes, and the links both ways.
    static void CompareRing(const KyList<T>& list, Model& model) {
        const KyListNode<T>* pBefore = list.m_pHead;
        auto it = list.begin();
        for (auto& slot : model.slots) {
            const KyListNode<T>* const p = pBefore->m_pNext;
            FUZZ_CHECK(p != list.m_pHead);
            FUZZ_CHECK(Known(p->m_data) == slot.value);
            FUZZ_CHECK(std::addressof(*it++) == &p->m_data);
            if (slot.pAddress == nullptr) slot.pAddress = &p->m_data;
            FUZZ_CHECK(slot.pAddress == &p->m_data);
            CompareBackLink(model, p, pBefore);
            pBefore = p;
        }
        FUZZ_CHECK(it == list.end() && pBefore == list.m_pTail && pBefore->m_pNext == list.m_pHead);
        CompareBackLink(model, list.m_pHead, pBefore);
    }
    static void CompareBackLink(const Model& model, const KyListNode<T>* p, const KyListNode<T>* pBefore) {
        FUZZ_CHECK(model.kind == ModelKind::Singly ||
                   static_cast<const KyDListNode<T>*>(p)->m_pPre == pBefore);
    }

    static void CompareIndex(const KyXList<T>& list, const Model& model) {
        const KyDynArray<KyDListNode<T>*>& index = list.m_arrIndex;
        FUZZ_CHECK(index.m_nLength == (model.Length() + model.nStep - 1) / model.nStep);
        FUZZ_CHECK(index.m_nCurIndex == model.nEntry);
        for (long j = 0; j < index.m_nLength; ++j) {
            FUZZ_CHECK(&index.m_pData[j]->m_data == model.SlotAddress(j * model.nStep));
        }
    }

    std::unique_ptr<KyList<T>> m_lists[2];
    Model m_models[2];
    const long m_nMostElements;
    const int m_nMostSteps;
    long m_nSentinels = 0;
    long m_nTags = 0;
};

template <class T>
void RunLists(std::unique_ptr<KyList<T>> pFirst, std::unique_ptr<KyList<T>> pSecond, bool bLong,
              ByteSource& source) {
    ListsRun<T>(std::move(pFirst), std::move(pSecond), bLong).Take(source);
    FUZZ_CHECK(std::remove_pointer_t<T>::s_nLive == 0);
}

/// A queue and its model.
template <class T, class Queue>
class QueueRun {
public:
    static constexpr bool IsOwning = std::is_pointer_v<T>;

    explicit QueueRun(long nMaxLength) : m_queue(nMaxLength) {}

    void Take(ByteSource& source) {
        for (int nSteps = 0; !source.IsEmpty() && nSteps < nMostSteps; ++nSteps) {
            const std::uint8_t nByte = source.Byte();
            const int nOperation = nByte % 9;
            try {
                const OrderedFault fault(nByte >= 240 ? source.Number(1, 4) : 0);
                Step(nOperation, source);
            } catch (const Fault&) {
                // A failed growth stays as far as it came; nothing else has happened.
                FUZZ_CHECK(nOperation == 6 || m_queue.GetLength() == Length());
                m_model.resize(static_cast<std::size_t>(m_queue.GetLength()));
            }
            FUZZ_CHECK(m_queue.GetLength() == Length());
            FUZZ_CHECK(std::equal(m_queue.begin(), m_queue.end(), m_model.begin(), m_model.end(),
                                  [](const T& x, const KnownOf<T>& known) { return Known(x) == known; }));
        }
    }

private:
    long Length() const { return static_cast<long>(m_model.size()); }

    void Step(int nOperation, ByteSource& source) {
        const bool bAny = !m_model.empty();
        T out{};
        switch (nOperation) {
            case 0:
            case 1:
            case 2:
                return Enter(Label{source.Number(0, 7), ++m_nTags});
            case 3:
                FUZZ_CHECK(m_queue.DeQuene(out) == bAny);
                FUZZ_CHECK(Known(out) == (bAny ? m_model.front() : KnownOf<T>()));
                if (bAny) m_model.pop_front();
                if constexpr (IsOwning) delete out;
                return;
            case 4:
                FUZZ_CHECK(m_queue.GetHeadData(out) == bAny);
                FUZZ_CHECK(Known(out) == (bAny ? m_model.front() : KnownOf<T>()));
                return;
            case 5:
                FUZZ_CHECK(m_queue.GetTailData(out) == bAny);
                FUZZ_CHECK(Known(out) == (bAny ? m_model.back() : KnownOf<T>()));
                return;
            case 6: {
                const long i = source.Byte() % (Length() % 100 + 4) - 1;
                const T* const p = std::addressof(m_queue[i]);
                if (i >= Length()) m_model.resize(static_cast<std::size_t>(i + 1));
                FUZZ_CHECK(p == (i < 0 ? &m_queue.m_list.m_pHead->m_data : m_queue.m_list.GetAt(i)));
                return;
            }
            case 7:
                m_queue.m_nMaxLength = source.Number(-2, 20);
                return;
            default:
                if (source.Number(0, 3) == 0) {
                    m_queue.Reset();
                    m_model.clear();
                }
                return;
        }
    }

    void Enter(const Label& label) {
        const bool bHasRoom = m_queue.m_nMaxLength < 0 || Length() < m_queue.m_nMaxLength;
        if constexpr (IsOwning) {
            auto pObject = std::make_unique<Object>(label);
            FUZZ_CHECK(m_queue.EnQuene(pObject.get()) == bHasRoom);
            if (bHasRoom) m_model.push_back(pObject.release());
        } else {
            FUZZ_CHECK(m_queue.EnQuene(label) == bHasRoom);
            if (bHasRoom) m_model.push_back(label);
        }
    }

    Queue m_queue;
    std::deque<KnownOf<T>> m_model;
    long m_nTags = 0;
};

template <class T, class Queue>
void RunQueue(ByteSource& source) {
    const long nMaxLength = source.Number(-1, 20);
    QueueRun<T, Queue>(nMaxLength).Take(source);
    FUZZ_CHECK(std::remove_pointer_t<T>::s_nLive == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
    ByteSource source(pData, nSize);
    const long nKinds = source.Number(0, 8);
    const long nStart = source.Number(0, 15);
    const bool bLong = nStart == 15;  // an indexed list: longer than a block of KyNodePositions
    const long nFirst = nStart % 4;
    const long nStep = 1 + (nStart * nStart + nStart) % 17;
    switch (nKinds) {
        case 0:
            RunLists<Element>(std::make_unique<KyList<Element>>(nFirst), std::make_unique<KyList<Element>>(),
                              false, source);
            break;
        case 1:
            RunLists<Element>(std::make_unique<KyDList<Element>>(nFirst),
                              std::make_unique<KyDList<Element>>(), false, source);
            break;
        case 2:
            RunLists<Element>(std::make_unique<KyXList<Element>>(nStep), std::make_unique<KyXList<Element>>(),
                              bLong, source);
            break;
        case 3:
            RunLists<Element>(std::make_unique<KyXList<Element>>(nStep), std::make_unique<KyDList<Element>>(),
                              bLong, source);
            break;
        case 4:
            RunLists<Object*>(std::make_unique<KyPDList<Object>>(nFirst),
                              std::make_unique<KyPDList<Object>>(), false, source);
            break;
        case 5:
            RunLists<Object*>(std::make_unique<KyPXList<Object>>(nStep), std::make_unique<KyPXList<Object>>(),
                              bLong, source);
            break;
        case 6:
            RunLists<Object*>(std::make_unique<KyPXList<Object>>(nStep),
                              std::make_unique<KyPDList<Object>>(nFirst), bLong, source);
            break;
        case 7:
            RunQueue<Element, KyListQuene<Element>>(source);
            break;
        default:
            RunQueue<Object*, KyPDListQuene<Object>>(source);
            break;
    }
    return 0;
}
