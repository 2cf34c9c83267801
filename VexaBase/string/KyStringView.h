// Strings as std::wstring_view, and so among the standard library's own: compared, hashed, searched, printed.
//
//     std::unordered_map<KyString, long> wards;
//     if (name < other || name == L"Ward 9") ...
//     std::wstring text(KyViewOf(name));
//
// Whatever converts to std::wstring_view compares with a KyString, and none of it is copied. The comparisons
// are templates that take part only where one operand is a KyString, so that no other comparison of a program
// becomes ambiguous or means something else.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <type_traits>
#include <utility>

#include "VexaBase/string/KyString.h"

/// The characters of s without the terminator, zeros among them included. Valid until the next edit of s.
/// O(1).
inline std::wstring_view KyViewOf(const KyString& s) {
    return {s.c_str(), static_cast<std::size_t>(s.GetLength())};
}

/// The text of s, null being empty. O(length).
inline std::wstring_view KyViewOf(const wchar_t* s) {
    return s != nullptr ? std::wstring_view(s) : std::wstring_view();
}

/// The view itself, or that of any string that converts to one. O(1).
inline std::wstring_view KyViewOf(std::wstring_view s) { return s; }

/// True for a KyString and whatever KyViewOf takes.
template <class T, class = void>
struct KyHasView : std::false_type {};
template <class T>
struct KyHasView<T, std::void_t<decltype(KyViewOf(std::declval<const T&>()))>> : std::true_type {};

/// True when one of two operands is a KyString and both have a view. The first is asked first: of a type that
/// has nothing to do with strings nothing more is asked.
template <class A, class B>
using KyIsStringComparison =
    std::conjunction<std::disjunction<std::is_convertible<const A*, const KyString*>,
                                      std::is_convertible<const B*, const KyString*>>,
                     KyHasView<A>, KyHasView<B>>;

/// The type of a string comparison's result; only where it is one.
template <class A, class B>
using KyStringComparison = std::enable_if_t<KyIsStringComparison<A, B>::value, bool>;

// Strings order as std::wstring does: by character code, a beginning before the whole. That is wcscmp's order
// too, as long as no element is 0 or negative. O(length of the shorter).

template <class A, class B>
KyStringComparison<A, B> operator==(const A& a, const B& b) {
    return KyViewOf(a) == KyViewOf(b);
}
template <class A, class B>
KyStringComparison<A, B> operator!=(const A& a, const B& b) {
    return KyViewOf(a) != KyViewOf(b);
}
template <class A, class B>
KyStringComparison<A, B> operator<(const A& a, const B& b) {
    return KyViewOf(a) < KyViewOf(b);
}
template <class A, class B>
KyStringComparison<A, B> operator>(const A& a, const B& b) {
    return KyViewOf(a) > KyViewOf(b);
}
template <class A, class B>
KyStringComparison<A, B> operator<=(const A& a, const B& b) {
    return KyViewOf(a) <= KyViewOf(b);
}
template <class A, class B>
KyStringComparison<A, B> operator>=(const A& a, const B& b) {
    return KyViewOf(a) >= KyViewOf(b);
}

/// The hash of the string's view, so that equal text hashes equal whichever of the two holds it. O(length).
template <>
struct std::hash<KyString> {
    std::size_t operator()(const KyString& s) const noexcept {
        return std::hash<std::wstring_view>()(KyViewOf(s));
    }
};
