// Long random runs of operations on the arrays and queues, each beside a plain model; every field is compared
// after every operation.

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <deque>
#include <iterator>
#include <memory>
#include <ostream>
#include <type_traits>
#include <utility>
#include <vector>

#include "ArrayModel.h"
#include "TestElements.h"
#include "VexaBase/containers/KyArray.h"
#include "VexaBase/containers/KyDList.h"
#include "VexaBase/containers/KyDynArray.h"
#include "VexaBase/containers/KyDynPArray.h"
#include "VexaBase/containers/KyList.h"
#include "VexaBase/containers/KyQuene.h"

namespace {

// One random step: which operation, and what its arguments are made of.
struct Step {
    int m_nOperation;
    long m_nFirst;
    long m_nSecond;

    friend std::ostream& operator<<(std::ostream& os, const Step& step) {
        return os << step.m_nOperation << "(" << step.m_nFirst << ", " << step.m_nSecond << ")";
    }
};

rc::Gen<std::vector<Step>> Steps(int nOperations) {
    return rc::gen::scale(5.0, rc::gen::container<std::vector<Step>>(rc::gen::build<Step>(
                                   rc::gen::set(&Step::m_nOperation, rc::gen::inRange(0, nOperations)),
                                   rc::gen::set(&Step::m_nFirst, rc::gen::inRange(0L, 5040L)),
                                   rc::gen::set(&Step::m_nSecond, rc::gen::inRange(0L, 5040L)))));
}

template <class Container, class T>
void CompareFields(const Container& array, const ArrayModel<T>& model) {
    RC_ASSERT(array.m_nLength == model.Length());
    RC_ASSERT(array.m_nCurIndex == model.m_nCurIndex);
    RC_ASSERT(array.m_nCapacity == model.m_nCapacity);
    RC_ASSERT(array.m_nGrowBy == model.m_nGrowBy);
    RC_ASSERT((array.m_pData == nullptr) == (model.m_nCapacity == 0));
}

// The walks by address, there and back.
template <class Container>
void CompareWalks(const Container& array) {
    long nSteps = 0;
    for (const auto* p = array.GetFirst(); p != nullptr; p = array.GetNext(p)) {
        RC_ASSERT((p == array.m_pData + nSteps));
        RC_ASSERT((p == array.GetAt(nSteps)));
        ++nSteps;
    }
    RC_ASSERT(nSteps == array.m_nLength);
    for (const auto* p = array.GetLast(); p != nullptr; p = array.GetPre(p)) {
        --nSteps;
        RC_ASSERT((p == array.m_pData + nSteps));
    }
    RC_ASSERT(nSteps == 0);
}

int CompareKeys(const Keyed& a, const Keyed& b) { return static_cast<int>(a.m_nKey - b.m_nKey); }

// A random run on a KyDynArray.
class DynArrayRun {
public:
    DynArrayRun(long nCapacity, long nGrowBy) : m_array(nCapacity, nGrowBy) {
        m_model.m_nCapacity = nCapacity;
        m_model.m_nGrowBy = nGrowBy;
    }

    static constexpr int nOperations = 21;

    void Apply(const Step& step) {
        const long nLength = m_model.Length();
        const long nAnywhere = step.m_nFirst % (nLength + 5) - 2;
        const long nPlace = step.m_nFirst % (nLength + 1);
        const Keyed value{step.m_nSecond % 5, ++m_nTags};
        switch (step.m_nOperation) {
            case 0:
                m_array.MoveToFirst();
                m_model.m_nCurIndex = 0;
                break;
            case 1:
                m_array.MoveToNext();
                ++m_model.m_nCurIndex;
                break;
            case 2:
                m_array.MoveToPre();
                --m_model.m_nCurIndex;
                break;
            case 3:
                m_array.MoveToLast();
                m_model.m_nCurIndex = nLength - 1;
                break;
            case 4:
                m_array.MoveTo(nAnywhere);
                m_model.m_nCurIndex = nAnywhere;
                break;
            case 5:
                if (m_model.HasCurrent()) {
                    RC_ASSERT(m_array.GetCurData() == m_model.Current());
                    m_array.SetCurData(value);
                    m_model.Current() = value;
                }
                break;
            case 6:
                Index(step.m_nFirst % (nLength + 4), value);
                break;
            case 7:
                m_array.Insert(nPlace, value);
                m_model.InsertAt(nPlace, value);
                break;
            case 8:
                m_array.InsertHead(value);
                m_model.InsertAt(0, value);
                break;
            case 9:
            case 10:
                RC_ASSERT(m_array.Append(value) == nLength);
                m_model.InsertAt(nLength, value);
                break;
            case 11:
                if (m_model.m_nCurIndex >= 0 && m_model.m_nCurIndex <= nLength) {
                    m_array.InsertCur(value);
                    m_model.InsertAt(m_model.m_nCurIndex, value);
                }
                break;
            case 12:
                if (m_model.HasCurrent()) {
                    m_array.DelCur();
                    m_model.Delete();
                }
                break;
            case 13:
                Sort(step.m_nFirst % 3);
                break;
            case 14:
                if (nLength > 0) {
                    Move(step.m_nFirst % nLength, step.m_nSecond % (nLength + 1));
                }
                break;
            case 15:
                ReAllocate(step.m_nFirst % (nLength + 6));
                break;
            case 16:
            case 17:
                SetLength(step.m_nFirst % (nLength + 6), step.m_nSecond % 2 == 0);
                break;
            case 18:
                m_array.Reset();
                m_model.m_elements.clear();
                m_model.m_nCurIndex = -1;
                break;
            case 19:
                m_array.m_nGrowBy = m_model.m_nGrowBy = step.m_nFirst % 4;
                break;
            default:
                if (nLength > 0) {
                    InsertOwnElement(nPlace, step.m_nSecond % nLength);
                }
                break;
        }
    }

    void Compare() const {
        CompareFields(m_array, m_model);
        RC_ASSERT(std::vector<Keyed>(m_array.begin(), m_array.end()) == m_model.m_elements);
        CompareWalks(m_array);
    }

private:
    // New elements hold nothing in particular, so both sides get one value.
    void FillFrom(long nFirst) {
        std::fill(m_array.begin() + nFirst, m_array.end(), m_fill);
        std::fill(m_model.m_elements.begin() + nFirst, m_model.m_elements.end(), m_fill);
    }
    void Index(long i, const Keyed& value) {
        const long nLength = m_model.Length();
        m_model.Resize(std::max(nLength, i + 1), m_fill);
        m_model.m_nCurIndex = i;
        m_model.Current() = value;
        Keyed& element = m_array[i];
        RC_ASSERT((&element == m_array.m_pData + i));
        FillFrom(std::min(nLength, i));
        element = value;
        m_model.Current() = value;
        if (i < nLength) {
            std::copy(m_array.begin(), m_array.end(), m_model.m_elements.begin());
        }
    }
    void ReAllocate(long n) {
        const long nLength = m_model.Length();
        m_array.ReAllocate(n);
        m_model.Resize(n, m_fill);
        FillFrom(std::min(nLength, n));
    }
    void SetLength(long n, bool bKeep) {
        const long nKept = bKeep || n == m_model.m_nCapacity ? std::min(m_model.Length(), n) : 0;
        m_array.SetLength(n, bKeep);
        m_model.m_elements.resize(static_cast<std::size_t>(n), m_fill);
        m_model.m_nCapacity = n;
        FillFrom(nKept);
    }
    void Sort(long nKind) {
        if (nKind == 0) {
            m_array.Sort(CompareKeys);
        } else {
            m_array.Sort(nKind == 1);
        }
        std::stable_sort(m_model.m_elements.begin(), m_model.m_elements.end(),
                         [nKind](const Keyed& a, const Keyed& b) { return nKind == 2 ? a > b : a < b; });
    }
    void Move(long nFrom, long nTo) {
        const bool bStandsThere = nTo == nFrom || nTo == nFrom + 1;
        RC_ASSERT(m_array.Move(nFrom, nTo) == !bStandsThere);
        if (bStandsThere) {
            return;
        }
        m_model.GrowFor(m_model.Length() + 1);
        std::vector<Keyed>& elements = m_model.m_elements;
        // Backwards it is the element before the one at nFrom that arrives, and the one at nFrom that is
        // lost.
        const Keyed arrives = elements[static_cast<std::size_t>(nFrom < nTo ? nFrom : nFrom - 1)];
        const long nEnd = nFrom < nTo ? nTo - 1 : nTo;
        elements.erase(elements.begin() + nFrom);
        elements.insert(elements.begin() + nEnd, arrives);
        m_model.m_nCurIndex = nEnd;
    }
    void InsertOwnElement(long nTarget, long nSource) {
        m_array.Insert(nTarget, m_array.m_pData[nSource]);
        // Read after the shift: what stood one before, where the source itself has moved up.
        const Keyed x =
            m_model.m_elements[static_cast<std::size_t>(nSource > nTarget ? nSource - 1 : nSource)];
        m_model.InsertAt(nTarget, x);
    }

    KyDynArray<Keyed> m_array;
    ArrayModel<Keyed> m_model;
    long m_nTags = 0;
    const Keyed m_fill{2, -1};
};

RC_GTEST_PROP(ArrayModel, ADynamicArrayAgreesWithItsModel, ()) {
    DynArrayRun run(*rc::gen::inRange(0L, 6L), *rc::gen::inRange(0L, 6L));
    const std::vector<Step> steps = *Steps(DynArrayRun::nOperations);

    run.Compare();
    for (const Step& step : steps) {
        run.Apply(step);
        run.Compare();
    }
}

// A random run on a KyDynPArray. The model holds ids, and the ids of the objects that must have been
// destroyed, in order.
class OwningArrayRun {
public:
    OwningArrayRun(long nCapacity, long nGrowBy)
        : m_array(std::make_unique<KyDynPArray<Owned>>(nCapacity, nGrowBy)) {
        m_model.m_nCapacity = nCapacity;
        m_model.m_nGrowBy = nGrowBy;
    }

    static constexpr int nOperations = 23;

    void Apply(const Step& step) {
        KyDynPArray<Owned>& array = *m_array;
        const long nLength = m_model.Length();
        const long nPlace = step.m_nFirst % (nLength + 1);
        switch (step.m_nOperation) {
            case 0:
                array.MoveToFirst();
                m_model.m_nCurIndex = 0;
                break;
            case 1:
                array.MoveToNext();
                ++m_model.m_nCurIndex;
                break;
            case 2:
                array.MoveToPre();
                --m_model.m_nCurIndex;
                break;
            case 3:
                array.MoveToLast();
                m_model.m_nCurIndex = nLength - 1;
                break;
            case 4:
                m_model.m_nCurIndex = step.m_nFirst % (nLength + 5) - 2;
                array.MoveTo(m_model.m_nCurIndex);
                break;
            case 5:
                array.ReleaseCur();
                if (m_model.HasCurrent()) {
                    Destroy(std::exchange(m_model.Current(), nNullId));
                }
                break;
            case 6:
                TakeOff();
                break;
            case 7: {
                const long i = step.m_nFirst % (nLength + 4);
                Owned*& slot = array[i];
                RC_ASSERT((&slot == array.m_pData + i));
                m_model.Resize(std::max(nLength, i + 1), nNullId);
                m_model.m_nCurIndex = i;
                break;
            }
            case 8:
                array.Insert(nPlace, New(step));
                m_model.InsertAt(nPlace, m_nId);
                break;
            case 9:
                array.InsertHead(New(step));
                m_model.InsertAt(0, m_nId);
                break;
            case 10:
            case 11:
                RC_ASSERT(array.Append(New(step)) == nLength);
                m_model.InsertAt(nLength, m_nId);
                break;
            case 12:
                if (m_model.m_nCurIndex >= 0 && m_model.m_nCurIndex <= nLength) {
                    array.InsertCur(New(step));
                    m_model.InsertAt(m_model.m_nCurIndex, m_nId);
                }
                break;
            case 13:
                if (m_model.HasCurrent()) {
                    array.DelCur();
                    Destroy(m_model.Current());
                    m_model.Delete();
                }
                break;
            case 14:
                Sort(step.m_nFirst % 4);
                break;
            case 15:
                if (nLength > 0) {
                    Move(step.m_nFirst % nLength, step.m_nSecond % (nLength + 1));
                }
                break;
            case 16:
                array.ReAllocate(nPlace);
                DestroyFrom(nPlace);
                m_model.Resize(nPlace, nNullId);
                break;
            case 17:
                array.ReAllocate(nLength + step.m_nFirst % 5);
                m_model.Resize(nLength + step.m_nFirst % 5, nNullId);
                break;
            case 18:
            case 19:
                SetLength(step.m_nFirst % (nLength + 6), step.m_nSecond % 2 == 0);
                break;
            case 20:
                array.ReleaseAll();
                DestroyFrom(0);
                std::fill(m_model.m_elements.begin(), m_model.m_elements.end(), nNullId);
                m_model.m_nCurIndex = nLength;
                break;
            case 21:
                array.Reset();
                DestroyFrom(0);
                m_model.m_elements.clear();
                m_model.m_nCurIndex = -1;
                break;
            default:
                array.m_nGrowBy = m_model.m_nGrowBy = step.m_nFirst % 4;
                break;
        }
    }

    void Compare() const {
        CompareFields(*m_array, m_model);
        RC_ASSERT(Ids(*m_array) == m_model.m_elements);
        RC_ASSERT(m_watch.Destroyed() == m_destroyed);
        RC_ASSERT(m_watch.Live() == std::count_if(m_model.m_elements.begin(), m_model.m_elements.end(),
                                                  [](long nId) { return nId != nNullId; }));
        CompareWalks(*m_array);
    }

    void End() {
        m_array.reset();
        DestroyFrom(0);
        RC_ASSERT(m_watch.Destroyed() == m_destroyed);
        RC_ASSERT(m_watch.Live() == 0);
    }

private:
    // A new object, now and then none; m_nId is its id.
    Owned* New(const Step& step) {
        if (step.m_nSecond % 5 == 0) {
            m_nId = nNullId;
            return nullptr;
        }
        // Not in the order of their making, so that sorts have work to do.
        m_nId = ++m_nObjects * 7 % 1009;
        return new Owned(m_nId);
    }
    void Destroy(long nId) {
        if (nId != nNullId) {
            m_destroyed.push_back(nId);
        }
    }
    void DestroyFrom(long nFirst) {
        std::for_each(m_model.m_elements.begin() + nFirst, m_model.m_elements.end(),
                      [this](long nId) { Destroy(nId); });
    }
    void TakeOff() {
        const std::unique_ptr<Owned> pTaken(m_array->TakeOffCur());
        const long nExpected = m_model.HasCurrent() ? std::exchange(m_model.Current(), nNullId) : nNullId;
        RC_ASSERT((pTaken == nullptr ? nNullId : pTaken->m_nId) == nExpected);
        Destroy(nExpected);
    }
    void SetLength(long n, bool bKeep) {
        m_array->SetLength(n, bKeep);
        if (!bKeep) {
            DestroyFrom(0);
            m_model.m_elements.assign(static_cast<std::size_t>(n), nNullId);
            m_model.m_nCapacity = n;
        } else if (n != m_model.Length()) {
            DestroyFrom(std::min(n, m_model.Length()));
            m_model.m_elements.resize(static_cast<std::size_t>(n), nNullId);
            m_model.m_nCapacity = n;
        }
    }
    void Move(long nFrom, long nTo) {
        const bool bStandsThere = nTo == nFrom || nTo == nFrom + 1;
        RC_ASSERT(m_array->Move(nFrom, nTo) == !bStandsThere);
        if (bStandsThere) {
            return;
        }
        m_model.GrowFor(m_model.Length() + 1);
        std::vector<long>& ids = m_model.m_elements;
        const long nMoved = ids[static_cast<std::size_t>(nFrom)];
        m_model.m_nCurIndex = nFrom < nTo ? nTo - 1 : nTo;
        ids.erase(ids.begin() + nFrom);
        ids.insert(ids.begin() + m_model.m_nCurIndex, nMoved);
    }
    void Sort(long nKind) {
        // A null's id, -1, orders before every object's, as a null slot does.
        std::vector<long>& ids = m_model.m_elements;
        const auto third = [](long nId) { return nId == nNullId ? nNullId : nId / 3; };
        switch (nKind) {
            case 0:
                m_array->Sort(true);
                std::stable_sort(ids.begin(), ids.end());
                break;
            case 1:
                m_array->Sort(false);
                std::stable_sort(ids.begin(), ids.end(), std::greater<>());
                break;
            case 2:
                m_array->Sort([](const Owned& a, const Owned& b) {
                    return static_cast<int>(a.m_nId / 3 - b.m_nId / 3);
                });
                std::stable_sort(ids.begin(), ids.end(),
                                 [third](long a, long b) { return third(a) < third(b); });
                break;
            default:
                m_array->Sort([](Owned* const& a, Owned* const& b) {
                    return (a == nullptr ? 1 : 0) - (b == nullptr ? 1 : 0);
                });
                std::stable_partition(ids.begin(), ids.end(), [](long nId) { return nId != nNullId; });
                break;
        }
    }

    const OwnedWatch m_watch;
    std::unique_ptr<KyDynPArray<Owned>> m_array;
    ArrayModel<long> m_model;
    std::vector<long> m_destroyed;
    long m_nId = nNullId;
    long m_nObjects = 0;
};

RC_GTEST_PROP(ArrayModel, AnOwningArrayAgreesWithItsModelAndDestroysInItsOrder, ()) {
    OwningArrayRun run(*rc::gen::inRange(0L, 6L), *rc::gen::inRange(0L, 6L));
    const std::vector<Step> steps = *Steps(OwningArrayRun::nOperations);

    run.Compare();
    for (const Step& step : steps) {
        run.Apply(step);
        run.Compare();
    }
    run.End();
}

RC_GTEST_PROP(ArrayModel, FixedArraysAgreeWithVectors, ()) {
    std::array<KyArray<long>, 3> arrays;
    std::array<std::vector<long>, 3> models;
    long nValue = 0;

    for (const Step& step : *Steps(8)) {
        const auto nTarget = static_cast<std::size_t>(step.m_nFirst % 3);
        const auto nSource = static_cast<std::size_t>(step.m_nFirst / 3 % 3);
        KyArray<long>& array = arrays[nTarget];
        std::vector<long>& model = models[nTarget];
        switch (step.m_nOperation) {
            case 0:
            case 1:
            case 2: {
                const long n = step.m_nSecond % 9 - 1;
                const bool bKeep = step.m_nOperation != 0;
                const std::size_t nKept = bKeep || n == array.m_nLength ? model.size() : 0;
                array.ReAllocate(n, bKeep);
                model.resize(static_cast<std::size_t>(std::max(n, 0L)));
                for (std::size_t i = std::min(nKept, model.size()); i < model.size(); ++i) {
                    array.m_pData[i] = model[i] = ++nValue;
                }
                break;
            }
            case 3: {
                const KyArray<long>& source = arrays[nSource];
                array = source;
                models[nTarget] = std::vector<long>(models[nSource]);
                break;
            }
            case 4: {
                KyArray<long>& source = arrays[nSource];
                array = std::move(source);
                if (nSource != nTarget) {
                    models[nTarget] = std::exchange(models[nSource], {});
                }
                break;
            }
            case 5:
                swap(array, arrays[nSource]);
                std::swap(model, models[nSource]);
                break;
            case 6: {
                KyList<long> list;
                for (const long x : model) {
                    list.InsertHead(x);
                }
                array = KyArray<long>(list);
                std::reverse(model.begin(), model.end());
                break;
            }
            default:
                if (!model.empty()) {
                    const long i = step.m_nSecond % array.GetLength();
                    array[i] = model[static_cast<std::size_t>(i)] = ++nValue;
                }
                break;
        }
        for (std::size_t i = 0; i < arrays.size(); ++i) {
            RC_ASSERT(arrays[i].m_nLength == static_cast<long>(models[i].size()));
            RC_ASSERT((arrays[i].m_pData == nullptr) == models[i].empty());
            RC_ASSERT(std::vector<long>(arrays[i].begin(), arrays[i].end()) == models[i]);
        }
    }
}

// A random run on a queue of pointers, which owns its objects or, for the plain queue, gets null entries
// only.
template <class Queue>
void RunQueue() {
    constexpr bool bOwning = std::is_same_v<Queue, KyPDListQuene<Owned>>;
    const OwnedWatch watch;
    auto pQueue = std::make_unique<Queue>(*rc::gen::inRange(-2L, 6L));
    Queue& queue = *pQueue;
    long nMaxLength = queue.m_nMaxLength;
    std::deque<Owned*> model;
    std::vector<long> destroyed;
    long nObjects = 0;
    const auto destroyAll = [&] {
        for (const Owned* p : model) {
            if (p != nullptr) {
                destroyed.push_back(p->m_nId);
            }
        }
    };

    for (const Step& step : *Steps(10)) {
        Owned unread(0);
        Owned* pOut = &unread;
        switch (step.m_nOperation) {
            case 0:
            case 1:
            case 2:
            case 3: {
                auto pObject =
                    bOwning && step.m_nSecond % 4 != 0 ? std::make_unique<Owned>(++nObjects) : nullptr;
                const bool bRoom = nMaxLength < 0 || static_cast<long>(model.size()) < nMaxLength;
                RC_ASSERT(queue.EnQuene(pObject.get()) == bRoom);
                if (bRoom) {
                    model.push_back(pObject.release());
                } else if (pObject != nullptr) {
                    destroyed.push_back(pObject->m_nId);
                }
                break;
            }
            case 4:
            case 5: {
                RC_ASSERT(queue.DeQuene(pOut) == !model.empty());
                RC_ASSERT((pOut == (model.empty() ? &unread : model.front())));
                if (!model.empty()) {
                    model.pop_front();
                    if (pOut != nullptr) {
                        destroyed.push_back(pOut->m_nId);
                        delete pOut;
                    }
                }
                break;
            }
            case 6:
                RC_ASSERT(queue.GetHeadData(pOut) == !model.empty());
                RC_ASSERT((pOut == (model.empty() ? &unread : model.front())));
                break;
            case 7:
                RC_ASSERT(queue.GetTailData(pOut) == !model.empty());
                RC_ASSERT((pOut == (model.empty() ? &unread : model.back())));
                break;
            case 8: {
                const auto i = static_cast<std::size_t>(step.m_nFirst) % (model.size() + 2);
                model.resize(std::max(model.size(), i + 1), nullptr);
                RC_ASSERT((queue[static_cast<long>(i)] == model[i]));
                RC_ASSERT(queue.m_list.m_nCurIndex == static_cast<long>(i));
                break;
            }
            default:
                if (step.m_nFirst % 3 == 0) {
                    destroyAll();
                    model.clear();
                    queue.Reset();
                } else {
                    queue.m_nMaxLength = nMaxLength = step.m_nSecond % 8 - 2;
                }
                break;
        }
        RC_ASSERT(queue.GetLength() == static_cast<long>(model.size()));
        RC_ASSERT(queue.m_nMaxLength == nMaxLength);
        RC_ASSERT(std::equal(queue.begin(), queue.end(), model.begin(), model.end()));
        std::vector<long> died = watch.Destroyed();
        died.erase(std::remove(died.begin(), died.end(), 0L), died.end());
        RC_ASSERT(died == destroyed);
    }
    destroyAll();
    pQueue.reset();
    std::vector<long> died = watch.Destroyed();
    died.erase(std::remove(died.begin(), died.end(), 0L), died.end());
    RC_ASSERT(died == destroyed);
    RC_ASSERT(watch.Live() == 0);
}

RC_GTEST_PROP(ArrayModel, AQueueOfValuesAgreesWithADeque, ()) { RunQueue<KyListQuene<Owned*>>(); }

RC_GTEST_PROP(ArrayModel, AnOwningQueueAgreesWithADequeAndDestroysInItsOrder, ()) {
    RunQueue<KyPDListQuene<Owned>>();
}

RC_GTEST_PROP(ArrayModel, SortsLikeAStableSort, ()) {
    const auto keys =
        *rc::gen::scale(3.0, rc::gen::container<std::vector<long>>(rc::gen::inRange(-20L, 20L)));
    const bool bAscending = *rc::gen::arbitrary<bool>();
    KyDynArray<Keyed> array(0, 7);
    std::vector<Keyed> model;
    for (const long nKey : keys) {
        array.Append({nKey, array.m_nLength});
        model.push_back({nKey, static_cast<long>(model.size())});
    }

    array.Sort(bAscending);
    std::stable_sort(model.begin(), model.end(),
                     [bAscending](const Keyed& a, const Keyed& b) { return bAscending ? a < b : a > b; });

    RC_ASSERT(std::vector<Keyed>(array.begin(), array.end()) == model);
}

RC_GTEST_PROP(ArrayModel, AnyAnswersWhateverToAComparisonLoseNoElement, ()) {
    static std::vector<bool> answers;
    static std::size_t nAsked;
    const long nLength = *rc::gen::inRange(0L, 40L);
    answers = *rc::gen::container<std::vector<bool>>(static_cast<std::size_t>(nLength * (nLength - 1) / 2),
                                                     rc::gen::arbitrary<bool>());
    nAsked = 0;
    KyDynArray<long> array;
    std::vector<long> elements;
    for (long i = 0; i < nLength; ++i) {
        array.Append(i);
        elements.push_back(i);
    }

    array.Sort([](const long&, const long&) { return answers[nAsked++] ? 1 : -1; });

    RC_ASSERT(nAsked == answers.size());
    RC_ASSERT(std::is_permutation(array.begin(), array.end(), elements.begin(), elements.end()));
}

}  // namespace
