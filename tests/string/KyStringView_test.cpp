#include "VexaBase/string/KyStringView.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cwchar>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

#include "StringKit.h"

namespace {

using testing::ElementsAre;

template <class A, class B, class = void>
struct Compares : std::false_type {};
template <class A, class B>
struct Compares<A, B, std::void_t<decltype(std::declval<A>() == std::declval<B>())>> : std::true_type {};

struct Bare {};
enum class Colour { Red };

static_assert(Compares<KyString, KyString>::value);
static_assert(Compares<KyString, const wchar_t*>::value && Compares<const wchar_t*, KyString>::value);
static_assert(Compares<KyString, std::wstring>::value && Compares<std::wstring_view, KyString>::value);
static_assert(!Compares<KyString, int>::value && !Compares<KyString, char>::value);
static_assert(!Compares<KyString, std::string>::value && !Compares<KyString, Bare>::value);
static_assert(!Compares<Bare, Bare>::value && !Compares<Bare, std::wstring>::value);
static_assert(Compares<Colour, Colour>::value && !Compares<Colour, KyString>::value);

/// Converts to a KyString and to much else, and has a comparison of its own.
struct Chameleon {
    operator KyString() const { return L"green"; }
    operator const wchar_t*() const { return L"green"; }
    operator std::wstring_view() const { return L"green"; }
    friend bool operator==(const Chameleon&, const Chameleon&) { return false; }
};

/// Converts to the characters of a wide string only.
struct Name {
    operator const wchar_t*() const { return m_szName; }

    const wchar_t* m_szName;
};

class Label : public KyString {
public:
    using KyString::KyString;
};

TEST(KyStringView, TheViewIsTheCharactersWithoutTheTerminator) {
    const KyString s(L"zone");

    const std::wstring_view view = KyViewOf(s);

    EXPECT_EQ(view, L"zone");
    EXPECT_EQ(view.data(), s.c_str());
    EXPECT_TRUE(KyViewOf(KyString()).empty());
}

TEST(KyStringView, ZerosAreCharacters) {
    const std::wstring text(L"a\0b", 3);

    EXPECT_EQ(KyViewOf(Make(text)), text);
}

TEST(KyStringView, NullIsEmpty) {
    const wchar_t* const pszNone = nullptr;

    EXPECT_TRUE(KyViewOf(pszNone).empty());
    EXPECT_TRUE(KyString() == pszNone);
    EXPECT_TRUE(pszNone < KyString(L"a"));
}

TEST(KyStringComparison, TextThatIsTheSameIsEqualWhateverTheBuffers) {
    KyString wide;
    wide.Format(L"a%d", 1);

    EXPECT_TRUE(wide == KyString(L"a1"));
    EXPECT_FALSE(wide != KyString(L"a1"));
    EXPECT_TRUE(wide == L"a1" && L"a1" == wide);
    EXPECT_TRUE(wide == std::wstring(L"a1") && std::wstring_view(L"a1") == wide);
    EXPECT_TRUE(wide != L"a2" && L"a" != wide);
}

TEST(KyStringComparison, OrdersByCharacterCodeABeginningFirst) {
    std::vector<KyString> strings{L"b", L"ab", L"", L"B", L"a", L"a1"};

    std::sort(strings.begin(), strings.end());

    std::vector<std::wstring> sorted;
    for (const KyString& s : strings) sorted.push_back(Text(s));
    EXPECT_THAT(sorted, ElementsAre(L"", L"B", L"a", L"a1", L"ab", L"b"));
}

TEST(KyStringComparison, AStringOfADerivedClassComparesAsAString) {
    EXPECT_TRUE(Label(L"a") == KyString(L"a"));
    EXPECT_TRUE(Label(L"a") < Label(L"b"));
    EXPECT_TRUE(Label(L"a") != L"b");
}

TEST(KyStringComparison, OtherTypesKeepTheirOwnComparisons) {
    EXPECT_FALSE(Chameleon() == Chameleon());
    EXPECT_TRUE(std::wstring(L"a") == L"a");
    EXPECT_TRUE(std::wstring_view(L"a") < L"b");
    EXPECT_TRUE(Name{L"x"} != nullptr);
    EXPECT_TRUE(KyString(L"x") == Name{L"x"});
}

RC_GTEST_PROP(KyStringComparison, AgreesWithStdWstring, (std::wstring a, std::wstring b)) {
    if (*rc::gen::arbitrary<bool>()) b = a + b;
    const KyString s = Make(a);
    const KyString t = Make(b);

    RC_ASSERT((s == t) == (a == b));
    RC_ASSERT((s != t) == (a != b));
    RC_ASSERT((s < t) == (a < b));
    RC_ASSERT((s > t) == (a > b));
    RC_ASSERT((s <= t) == (a <= b));
    RC_ASSERT((s >= t) == (a >= b));
    RC_ASSERT((s < b) == (a < b));
    RC_ASSERT((a >= t) == (a >= b));
}

RC_GTEST_PROP(KyStringComparison, OfCharactersOrdersAsWcscmpDoes, ()) {
    const auto character = rc::gen::element(L'a', L'b', L'\x10FFFF');
    const KyString s((*rc::gen::container<std::wstring>(character)).c_str());
    const KyString t((*rc::gen::container<std::wstring>(character)).c_str());

    RC_ASSERT((s < t) == (std::wcscmp(s.c_str(), t.c_str()) < 0));
    RC_ASSERT((s == t) == (std::wcscmp(s.c_str(), t.c_str()) == 0));
}

RC_GTEST_PROP(KyStringHash, IsThatOfTheView, (const std::wstring& text)) {
    RC_ASSERT(std::hash<KyString>()(Make(text)) == std::hash<std::wstring_view>()(text));
}

TEST(KyStringHash, StringsAreKeys) {
    std::unordered_map<KyString, int> wards{{L"Ward 9", 9}, {L"Ward 10", 10}};
    wards[L"Ward 9"] += 100;
    std::set<KyString, std::less<>> names{L"b", L"a"};

    EXPECT_EQ(wards.size(), 2U);
    EXPECT_EQ(wards.at(L"Ward 9"), 109);
    EXPECT_EQ(names.count(L"a"), 1U);
    EXPECT_TRUE(*names.begin() == L"a");
}

}  // namespace
