#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "VexaBase/string/KyUtf8.h"
#include "examples/faces/Utf8.h"

namespace faces {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string replacement = "\xef\xbf\xbd";

TEST(FacesUtf8, ACharacterOfUnicodeIsOneElementHoweverManyBytesItHas) {
    const KyString text = FromUtf8("a\xc3\x8e\xe2\x82\xac\xf0\x9f\x97\xba");

    EXPECT_EQ(std::wstring(text.c_str()), L"a\u00ce\u20ac\U0001f5fa");
    EXPECT_EQ(text.GetLength(), 4);
    EXPECT_EQ(KyToUtf8(text), "a\xc3\x8e\xe2\x82\xac\xf0\x9f\x97\xba");
}

TEST(FacesUtf8, NothingIsNothing) {
    EXPECT_EQ(FromUtf8("").GetLength(), 0);
    EXPECT_EQ(KyToUtf8(KyString()), "");
}

TEST(FacesUtf8, WhatIsNoUtf8IsReplaced) {
    EXPECT_EQ(KyToUtf8(FromUtf8("a\xffz")), "a" + replacement + "z");
    EXPECT_EQ(KyToUtf8(FromUtf8("a\xc3")), "a" + replacement);
    EXPECT_EQ(ValidUtf8("a\xc3z"), "a" + replacement + "z");
    EXPECT_EQ(ValidUtf8("\xc3\x8e"), "\xc3\x8e");
}

TEST(FacesUtf8, ANullCharacterIsReplacedAndEndsNothing) {
    EXPECT_EQ(KyToUtf8(FromUtf8(std::string("a\0z", 3))), "a" + replacement + "z");
}

TEST(FacesUtf8, AnElementThatIsNoCharacterIsReplaced) {
    const wchar_t text[] = {
        L'a', static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0x110000), static_cast<wchar_t>(-1), L'z',
        0};

    EXPECT_EQ(KyToUtf8(text), "a" + replacement + replacement + replacement + "z");
}

RC_GTEST_PROP(FacesUtf8, EveryTextThatIsUtf8ComesBack, ()) {
    std::wstring text;
    for (const int n : *rc::gen::container<std::vector<int>>(rc::gen::inRange(1, 0x110000))) {
        if (n < 0xD800 || n >= 0xE000) text += static_cast<wchar_t>(n);
    }

    const std::string strText = KyToUtf8(text.c_str());

    RC_ASSERT(std::wstring(FromUtf8(strText).c_str()) == text);
    RC_ASSERT(ValidUtf8(strText) == strText);
}

RC_GTEST_PROP(FacesUtf8, AnyBytesBecomeValidOnes, (const std::string& strBytes)) {
    const std::string strValid = ValidUtf8(strBytes);

    RC_ASSERT(ValidUtf8(strValid) == strValid);
    RC_ASSERT(ValidUtf8(KyToUtf8(FromUtf8(strBytes))) == KyToUtf8(FromUtf8(strBytes)));
}

TEST(FacesUtf8, NamesAreSortedAsLabels) {
    EXPECT_THAT(SortedAsLabels({}), IsEmpty());
    EXPECT_THAT(SortedAsLabels({"Ward 10", "Ward 9", "Annex", "Ward 100", "\xc3\x8ele"}),
                ElementsAre("Annex", "Ward 9", "Ward 10", "Ward 100", "\xc3\x8ele"));
}

TEST(FacesUtf8, NamesThatOrderEqualAsLabelsStandByTheirCharacters) {
    EXPECT_THAT(SortedAsLabels({"Ward 7", "Ward 07"}), ElementsAre("Ward 07", "Ward 7"));
    EXPECT_THAT(SortedAsLabels({"Ward 07", "Ward 7"}), ElementsAre("Ward 07", "Ward 7"));
}

TEST(FacesUtf8, EachSortedNameIsThereOnceAndFitsALine) {
    EXPECT_THAT(SortedAsLabels({"a\nb", "a b", "a\x7f", "a b"}), ElementsAre("a ", "a b"));
}

}  // namespace
}  // namespace faces
