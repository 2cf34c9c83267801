// Sequences of operations on the arrays of the container protocol, of values, of built-in values and of owned objects,
// and on three fixed arrays; some with a copy or a comparison that throws. Everything that can be seen is compared with
// the model after each.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include "ByteSource.h"
#include "CountedElements.h"
#include "VexaBase/containers/KyArray.h"
#include "VexaBase/containers/KyDList.h"
#include "VexaBase/containers/KyDynArray.h"
#include "VexaBase/containers/KyDynPArray.h"
#include "tests/containers/ArrayModel.h"

namespace {

constexpr int nMostSteps = 300;
constexpr long nMostElements = 100;

/// What the model holds of an element: a value's label, anything else itself.
template <class T>
T Known(const T& x) {
    return x;
}
Label Known(const Element& element) { return element.m_label; }
template <class T>
using KnownOf = decltype(Known(std::declval<const T&>()));

/// Stores without passing a fault.
template <class T>
void Store(T& x, const T& known) {
    x = known;
}
void Store(Element& element, const Label& label) { element.m_label = label; }

/// What the sorts go by. Null comes before every object.
template <class T>
long KeyOf(const T& x) {
    return static_cast<long>(x);
}
long KeyOf(const Label& label) { return label.m_nKey; }
long KeyOf(Object* const& p) { return p == nullptr ? -1 : p->m_label.m_nKey; }
template <class T>
long HalfKeyOf(const T& x) {
    return KeyOf(x) == -1 ? -1 : KeyOf(x) / 2;
}

template <class T>
int CompareHalves(const T& a, const T& b) {
    OrderedFault::Pass();
    return static_cast<int>(HalfKeyOf(Known(a)) - HalfKeyOf(Known(b)));
}
int CompareObjectHalves(const Object& a, const Object& b) {
    OrderedFault::Pass();
    return static_cast<int>(a.m_label.m_nKey / 2 - b.m_label.m_nKey / 2);
}
int PutNullsLast(Object* const& a, Object* const& b) {
    OrderedFault::Pass();
    return (a == nullptr ? 1 : 0) - (b == nullptr ? 1 : 0);
}

/// Not the library's very own array, which takes other ways.
class DerivedArray : public KyDynArray<long> {
public:
    using KyDynArray<long>::KyDynArray;
};

/// An array and its model.
template <class Array>
class ArrayRun {
public:
    using T = typename Array::value_type;
    using K = KnownOf<T>;
    static constexpr bool IsOwning = std::is_pointer_v<T>;

    ArrayRun(long nCapacity, long nGrowBy) : m_array(nCapacity, nGrowBy) {
        m_model.m_nCapacity = nCapacity;
        m_model.m_nGrowBy = nGrowBy;
    }

    void Take(ByteSource& source) {
        Compare();
        for (int nSteps = 0; !source.IsEmpty() && nSteps < nMostSteps; ++nSteps) {
            const std::uint8_t nOperation = source.Byte();
            if (m_model.Length() > nMostElements) {
                m_array.ReAllocate(nMostElements / 3);
                m_model.Resize(nMostElements / 3, K());
            } else {
                try {
                    const OrderedFault fault(nOperation >= 240 ? source.Number(1, 16) : 0);
                    Step(nOperation % nOperations, source);
                } catch (const Fault&) {
                    if (!LearnAfterFault()) return;
                }
            }
            Compare();
        }
    }

private:
    static constexpr int nOperations = 28;

    T NewValue(ByteSource& source) {
        const Label label{source.Number(0, 7), ++m_nTags};
        if constexpr (IsOwning) {
            return label.m_nKey == 7 ? nullptr : new Object(label);
        } else if constexpr (std::is_arithmetic_v<T>) {
            return static_cast<T>(label.m_nKey < 4 ? label.m_nKey : source.Number(-128, 127));
        } else {
            return label;
        }
    }

    /// One operation on the array, then on its model. A call that throws leaves the model behind.
    void Step(int nOperation, ByteSource& source) {
        const long nLength = m_model.Length();
        switch (nOperation) {
            case 0:
                m_array.MoveToFirst();
                m_model.m_nCurIndex = 0;
                return;
            case 1:
                m_array.MoveToNext();
                ++m_model.m_nCurIndex;
                return;
            case 2:
                m_array.MoveToPre();
                --m_model.m_nCurIndex;
                return;
            case 3:
                m_array.MoveToLast();
                m_model.m_nCurIndex = nLength - 1;
                return;
            case 4:
            case 5:
                m_model.m_nCurIndex = source.Byte() % (nLength + 5) - 2;
                return m_array.MoveTo(m_model.m_nCurIndex);
            case 6:
                if (m_model.HasCurrent()) SetCurrent(source);
                return;
            case 7:
                return Index(source.Byte() % (nLength + 4));
            case 8: {
                const T x = NewValue(source);
                const long i = source.Byte() % (nLength + 1);
                m_array.Insert(i, x);
                return m_model.InsertAt(i, Known(x));
            }
            case 9: {
                const T x = NewValue(source);
                m_array.InsertHead(x);
                return m_model.InsertAt(0, Known(x));
            }
            case 10:
            case 11: {
                const T x = NewValue(source);
                const long i = m_array.Append(x);
                FUZZ_CHECK(i == nLength);
                return m_model.InsertAt(nLength, Known(x));
            }
            case 12:
                if (m_model.m_nCurIndex >= 0 && m_model.m_nCurIndex <= nLength) {
                    const T x = NewValue(source);
                    m_array.InsertCur(x);
                    m_model.InsertAt(m_model.m_nCurIndex, Known(x));
                }
                return;
            case 13:
            case 14:
                if (m_model.HasCurrent()) {
                    m_array.DelCur();
                    m_model.Delete();
                }
                return;
            case 15:
                m_array.Sort(true);
                return SortModel([](const K& a, const K& b) { return KeyOf(a) < KeyOf(b); });
            case 16:
                m_array.Sort(false);
                return SortModel([](const K& a, const K& b) { return KeyOf(a) > KeyOf(b); });
            case 17:
                return SortByFunction();
            case 18:
                if (nLength != 0) {
                    const long from = source.Byte() % nLength;
                    Move(from, source.Byte() % (nLength + 1));
                }
                return;
            case 19:
                return ReAllocate(source.Byte() % (nLength + 6));
            case 20:
                return ReAllocate(source.Byte() % nMostElements);
            case 21:
            case 22:
                return SetLength(source.Byte() % (nLength + 6), nOperation == 21);
            case 23:
                m_array.Reset();
                m_model.m_elements.clear();
                m_model.m_nCurIndex = -1;
                return;
            case 24:
                m_array.m_nGrowBy = m_model.m_nGrowBy = source.Number(0, 5);
                return;
            case 25:
                return TakeSnapshot();
            default:
                if constexpr (IsOwning) {
                    StepOfObjects(nOperation, source);
                } else if (nLength != 0) {
                    const long i = source.Byte() % (nLength + 1);
                    InsertOwn(i, source.Byte() % (nLength + 1));
                }
                return;
        }
    }

    void SetCurrent(ByteSource& source) {
        FUZZ_CHECK(Known(m_array.GetCurData()) == m_model.Current());
        const T x = NewValue(source);
        if constexpr (IsOwning) delete m_array.GetCurData();
        m_array.SetCurData(x);
        m_model.Current() = Known(x);
    }

    /// New elements hold nothing in particular, but null where they are pointers: both sides get one value.
    void FillFrom(long nFirst) {
        for (long i = nFirst; i < m_array.m_nLength && !IsOwning; ++i) {
            Store(m_array.m_pData[i], K());
        }
        std::fill(m_model.m_elements.begin() + nFirst, m_model.m_elements.end(), K());
    }
    void Index(long i) {
        const long nLength = m_model.Length();
        const T* const p = std::addressof(m_array[i]);
        FUZZ_CHECK(p == m_array.m_pData + i);
        m_model.Resize(std::max(nLength, i + 1), K());
        m_model.m_nCurIndex = i;
        FillFrom(nLength);
    }
    void ReAllocate(long n) {
        const long nLength = m_model.Length();
        m_array.ReAllocate(n);
        m_model.Resize(n, K());
        FillFrom(std::min(nLength, n));
    }
    void SetLength(long n, bool bKeep) {
        const long nLength = m_model.Length();
        m_array.SetLength(n, bKeep);
        if (IsOwning && bKeep && n == nLength) return;
        const bool bStays = bKeep || (!IsOwning && n == m_model.m_nCapacity);
        m_model.m_elements.resize(static_cast<std::size_t>(n));
        m_model.m_nCapacity = n;
        FillFrom(bStays ? std::min(nLength, n) : 0);
    }

    template <class IsBefore>
    void SortModel(IsBefore isBefore) {
        std::stable_sort(m_model.m_elements.begin(), m_model.m_elements.end(), isBefore);
    }
    void SortByFunction() {
        if constexpr (IsOwning) {
            m_array.Sort(PutNullsLast);
            SortModel([](const K& a, const K& b) { return a != nullptr && b == nullptr; });
            m_array.Sort(CompareObjectHalves);
        } else {
            m_array.Sort(CompareHalves<T>);
        }
        SortModel([](const K& a, const K& b) { return HalfKeyOf(a) < HalfKeyOf(b); });
    }

    void Move(long from, long to) {
        const bool bStandsThere = to == from || to == from + 1;
        const bool bMoved = m_array.Move(from, to);
        FUZZ_CHECK(bMoved == !bStandsThere);
        if (bStandsThere) return;
        m_model.GrowFor(m_model.Length() + 1);
        // In an array of values the shift comes first: backwards it is the element before the one at `from` that
        // arrives, and the one at `from` that is lost.
        const long nArrives = IsOwning || from < to ? from : from - 1;
        const K x = m_model.m_elements[static_cast<std::size_t>(nArrives)];
        m_model.m_nCurIndex = from < to ? to - 1 : to;
        m_model.m_elements.erase(m_model.m_elements.begin() + from);
        m_model.m_elements.insert(m_model.m_elements.begin() + m_model.m_nCurIndex, x);
    }

    /// Inserts an element of the array's own, which is read after the shift, or the array's own length.
    void InsertOwn(long i, long nSource) {
        if (nSource < m_model.Length()) {
            m_array.Insert(i, m_array.m_pData[nSource]);
            const long nRead = nSource > i ? nSource - 1 : nSource;
            m_model.InsertAt(i, K(m_model.m_elements[static_cast<std::size_t>(nRead)]));
        } else if constexpr (std::is_same_v<T, long>) {
            m_array.Insert(i, m_array.m_nLength);
            m_model.InsertAt(i, m_model.Length() + 1);
        }
    }

    void TakeSnapshot() {
        const KyArray<T> snapshot(m_array);
        FUZZ_CHECK(IsWhatTheModelHolds(snapshot));
        const KyDynArrayBase<T>& base = m_array;
        FUZZ_CHECK(IsWhatTheModelHolds(base));
    }

    /// The operations of the owning array alone.
    void StepOfObjects(int nOperation, ByteSource& source) {
        if (nOperation == 27) {
            const std::unique_ptr<Object> pTaken(m_array.TakeOffCur());
            FUZZ_CHECK(pTaken.get() == (m_model.HasCurrent() ? m_model.Current() : nullptr));
        } else if (source.Number(0, 3) != 0) {
            m_array.ReleaseCur();
        } else {
            m_array.ReleaseAll();
            std::fill(m_model.m_elements.begin(), m_model.m_elements.end(), nullptr);
            m_model.m_nCurIndex = m_model.Length();
        }
        if (m_model.HasCurrent()) m_model.Current() = nullptr;
    }

    /// Makes the model what the array has become by a call that threw. False when a failed growth has left the
    /// raised capacity behind: such an array is good for destruction only.
    bool LearnAfterFault() {
        if constexpr (!IsOwning) {  // else nothing has happened
            if constexpr (std::is_same_v<T, Element>) {
                if (Element::s_nLive != m_array.m_nCapacity) {
                    FUZZ_CHECK(m_array.m_nCapacity > m_model.m_nCapacity);
                    FUZZ_CHECK(Element::s_nLive == m_model.m_nCapacity);
                    return false;
                }
            }
            FUZZ_CHECK(m_array.m_nLength >= m_model.Length());
            m_model.m_elements.clear();
            for (const T& x : m_array) m_model.m_elements.push_back(Known(x));
            m_model.m_nCurIndex = m_array.m_nCurIndex;
            m_model.m_nCapacity = m_array.m_nCapacity;
        }
        return true;
    }

    template <class Range>
    bool IsWhatTheModelHolds(const Range& range) const {
        return std::equal(range.begin(), range.end(), m_model.m_elements.begin(), m_model.m_elements.end(),
                          [](const T& x, const K& known) { return Known(x) == known; });
    }

    void Compare() const {
        const long nLength = m_model.Length();
        FUZZ_CHECK(m_array.GetLength() == nLength && m_array.GetCurIndex() == m_model.m_nCurIndex);
        FUZZ_CHECK(m_array.m_nCapacity == m_model.m_nCapacity && m_array.m_nGrowBy == m_model.m_nGrowBy);
        FUZZ_CHECK((m_array.m_pData == nullptr) == (m_model.m_nCapacity == 0));
        FUZZ_CHECK(IsWhatTheModelHolds(m_array));
        if constexpr (IsOwning) {
            FUZZ_CHECK(Object::s_nLive == nLength - std::count(m_array.begin(), m_array.end(), nullptr));
        } else if constexpr (std::is_same_v<T, Element>) {
            FUZZ_CHECK(Element::s_nLive == m_array.m_nCapacity);
        }
        CompareWalks();
    }

    void CompareWalks() const {
        const long nLength = m_model.Length();
        const auto addressOrNull = [&](long i) {
            return i >= 0 && i < nLength ? m_array.m_pData + i : nullptr;
        };
        FUZZ_CHECK(m_array.GetFirst() == addressOrNull(0) && m_array.GetLast() == addressOrNull(nLength - 1));
        FUZZ_CHECK(m_array.GetNext(nullptr) == nullptr && m_array.GetPre(nullptr) == nullptr);
        for (long i = 0; i < nLength; ++i) {
            FUZZ_CHECK(m_array.GetAt(i) == addressOrNull(i));
            FUZZ_CHECK(m_array.GetNext(addressOrNull(i)) == addressOrNull(i + 1));
            FUZZ_CHECK(m_array.GetPre(addressOrNull(i)) == addressOrNull(i - 1));
        }
    }

    Array m_array;
    ArrayModel<K> m_model;
    long m_nTags = 0;
};

template <class Array>
void RunArray(ByteSource& source) {
    const long nCapacity = source.Number(0, 6);
    const long nGrowBy = source.Number(0, 5);
    ArrayRun<Array>(nCapacity, nGrowBy).Take(source);
    FUZZ_CHECK(Element::s_nLive == 0 && Object::s_nLive == 0);
}

/// Three fixed arrays and their models. A call that throws changes none of them.
class FixedArraysRun {
public:
    void Take(ByteSource& source) {
        for (int nSteps = 0; !source.IsEmpty() && nSteps < nMostSteps; ++nSteps) {
            const std::uint8_t nByte = source.Byte();
            const std::size_t nTarget = nByte % 3;
            const std::size_t nSource = source.Byte() % 3;
            try {
                const OrderedFault fault(nByte >= 225 ? source.Number(1, 16) : 0);
                Step(nByte / 3 % 10, nTarget, nSource, source);
            } catch (const Fault&) {
            }
            Compare();
        }
    }

private:
    void Step(int nOperation, std::size_t nTarget, std::size_t nSource, ByteSource& source) {
        KyArray<Element>& array = m_arrays[nTarget];
        KyArray<Element>& other = m_arrays[nSource];
        std::vector<Label>& model = m_models[nTarget];
        std::vector<Label>& otherModel = m_models[nSource];
        switch (nOperation) {
            case 0:
            case 1:
            case 2:
                return ReAllocate(nTarget, source.Number(-1, 12), nOperation != 0);
            case 3: {
                array = other;
                model = std::vector<Label>(otherModel);
                return;
            }
            case 4:
                array = std::move(other);
                if (nSource != nTarget) model = std::exchange(otherModel, {});
                return;
            case 5:
                swap(array, other);
                return std::swap(model, otherModel);
            case 6: {
                const KyArray<Element> copy(other);
                array = copy;
                model = std::vector<Label>(otherModel);
                return;
            }
            case 7: {
                KyArray<Element> moved(std::move(array));
                FUZZ_CHECK(array.m_nLength == 0 && array.m_pData == nullptr);
                array.swap(moved);
                return;
            }
            case 8: {
                KyDList<Element> list;
                for (const Label& label : otherModel) list.InsertHead(label);
                array = KyArray<Element>(list);
                model = std::vector<Label>(otherModel.rbegin(), otherModel.rend());
                return;
            }
            default:
                if (!model.empty()) {
                    const long i = source.Byte() % array.GetLength();
                    const Element x(Label{source.Number(0, 7), ++m_nTags});
                    array[i] = x;
                    model[static_cast<std::size_t>(i)] = x.m_label;
                    FUZZ_CHECK(std::as_const(array)[i].m_label == x.m_label);
                }
                return;
        }
    }

    void ReAllocate(std::size_t nTarget, long n, bool bKeep) {
        KyArray<Element>& array = m_arrays[nTarget];
        std::vector<Label>& model = m_models[nTarget];
        const std::size_t nKept = bKeep || n == array.m_nLength ? model.size() : 0;
        array.ReAllocate(n, bKeep);
        model.resize(static_cast<std::size_t>(std::max(n, 0L)));
        for (std::size_t i = std::min(nKept, model.size()); i < model.size(); ++i) {
            array.m_pData[i].m_label = model[i] = Label{0, ++m_nTags};
        }
    }

    void Compare() const {
        long nLive = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            const KyArray<Element>& array = m_arrays[i];
            FUZZ_CHECK(array.GetLength() == static_cast<long>(m_models[i].size()));
            FUZZ_CHECK((array.m_pData == nullptr) == m_models[i].empty());
            FUZZ_CHECK(std::equal(array.begin(), array.end(), m_models[i].begin(), m_models[i].end(),
                                  [](const Element& x, const Label& label) { return x.m_label == label; }));
            nLive += array.m_nLength;
        }
        FUZZ_CHECK(Element::s_nLive == nLive);
    }

    KyArray<Element> m_arrays[3];
    std::vector<Label> m_models[3];
    long m_nTags = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
    ByteSource source(pData, nSize);
    switch (source.Number(0, 6)) {
        case 0:
            RunArray<KyDynArray<Element>>(source);
            break;
        case 1:
            RunArray<KyDynArray<long>>(source);
            break;
        case 2:
            RunArray<KyDynArray<char>>(source);
            break;
        case 3:
            RunArray<KyDynArray<double>>(source);
            break;
        case 4:
            RunArray<DerivedArray>(source);
            break;
        case 5:
            RunArray<KyDynPArray<Object>>(source);
            break;
        default:
            FixedArraysRun().Take(source);
            FUZZ_CHECK(Element::s_nLive == 0);
            break;
    }
    return 0;
}
