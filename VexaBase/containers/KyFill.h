// Containers from a list of elements in braces:
//
//     KyDList<long> list;
//     KyFill(list, {3, 1, 2});
//     KyPDList<Shape> shapes;
//     KyFill(shapes, {new Circle(2), nullptr, new Square(3)});
//
// A container with a cursor is neither copied nor moved, so it is made first and then filled.
#pragma once

#include <algorithm>
#include <initializer_list>
#include <type_traits>

#include "VexaBase/containers/KyArray.h"
#include "VexaBase/containers/KyDynPArray.h"
#include "VexaBase/containers/KyPDList.h"
#include "VexaBase/containers/KyQuene.h"

/// Tells the containers that own the objects of their elements from those that don't.
class KyOwnership {
    template <class T>
    static std::true_type Of(const KyDynPArray<T>*);
    template <class T, class List>
    static std::true_type Of(const KyOwningList<T, List>*);
    template <class T>
    static std::true_type Of(const KyPDListQuene<T>*);
    static std::false_type Of(const void*);

public:
    /// True for a container that deletes its objects.
    template <class Container>
    static constexpr bool bOwning = decltype(Of(static_cast<Container*>(nullptr)))::value;
};

/// Deletes the objects in a run of elements as it goes out of scope, those that were handed on excepted.
template <class T, bool bOwning>
struct KyFillRest {
    ~KyFillRest() {
        if constexpr (bOwning) {
            for (; m_pFirst != m_pEnd; ++m_pFirst) {
                delete *m_pFirst;
            }
        }
    }

    const T* m_pFirst;  // the first that was not handed on
    const T* m_pEnd;    // behind the last
};

/// Makes the container, an array or a list, hold exactly these elements, as Reset and then the container's
/// own Append of each would (a population, for instance, sorts its individuals in). The cursor ends where the
/// last Append leaves it, on none without elements. Returns the container.
///
/// An owning container owns the objects from the call on, also those that it cannot take because memory runs
/// out: they are deleted. Objects made inside the braces are nobody's until all are made; where making the
/// second may throw, append them one by one. O(elements), for the library's own containers.
template <class Container>
auto KyFill(Container& container, std::initializer_list<typename Container::value_type> elements)
    -> std::enable_if_t<std::is_base_of_v<KyDynArrayBase<typename Container::value_type>, Container>,
                        Container&> {
    KyFillRest<typename Container::value_type, KyOwnership::bOwning<Container>> rest{elements.begin(),
                                                                                     elements.end()};
    container.Reset();
    for (; rest.m_pFirst != rest.m_pEnd; ++rest.m_pFirst) {
        container.Append(*rest.m_pFirst);
    }
    return container;
}

/// Makes the queue hold exactly these entries, head first. A bounded one refuses those that it has no room
/// for, and an owning one deletes their objects. Otherwise as above.
template <class Quene>
auto KyFill(Quene& quene, std::initializer_list<typename Quene::value_type> entries)
    -> std::enable_if_t<std::is_base_of_v<KyQuene<typename Quene::value_type>, Quene>, Quene&> {
    KyFillRest<typename Quene::value_type, KyOwnership::bOwning<Quene>> rest{entries.begin(), entries.end()};
    quene.Reset();
    while (rest.m_pFirst != rest.m_pEnd && quene.EnQuene(*rest.m_pFirst)) {
        ++rest.m_pFirst;
    }
    return quene;
}

/// Makes the array hold exactly these elements. O(elements).
template <class Array>
auto KyFill(Array& array, std::initializer_list<typename Array::value_type> elements)
    -> std::enable_if_t<std::is_same_v<KyArray<typename Array::value_type>, Array>, Array&> {
    array.ReAllocate(static_cast<long>(elements.size()), false);
    std::copy(elements.begin(), elements.end(), array.begin());
    return array;
}
