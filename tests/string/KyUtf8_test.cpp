#include "VexaBase/string/KyUtf8.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "StringKit.h"

namespace {

TEST(KyUtf8, AsciiIsItself) {
    EXPECT_THAT(KyFromUtf8("Ward 9"), IsString(L"Ward 9", 7));
    EXPECT_EQ(KyToUtf8(L"Ward 9"), "Ward 9");
    EXPECT_THAT(KyFromUtf8(""), IsString(L"", 1));
    EXPECT_EQ(KyToUtf8(L""), "");
}

TEST(KyUtf8, ACharacterIsOneElementHoweverManyBytesItHas) {
    const std::string strBytes =
        "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF"
        "\xBF";
    const std::wstring text = L"\x7F\x80\x7FF\x800\xD7FF\xE000\xFFFF\x10000\x10FFFF";

    EXPECT_EQ(Text(KyFromUtf8(strBytes)), text);
    EXPECT_EQ(KyToUtf8(text.c_str()), strBytes);
}

TEST(KyUtf8, ZerosAndAByteOrderMarkAreCharacters) {
    const std::string strBytes(
        "\xEF\xBB\xBF"
        "a\0b",
        6);

    const KyString text = KyFromUtf8(strBytes);

    EXPECT_EQ(Text(text), std::wstring(L"\xFEFF\x0061\0b", 4));
    EXPECT_EQ(KyToUtf8(text), strBytes);
}

struct Invalid {
    const char* m_pszBytes;
    const wchar_t* m_pszText;
};

class KyUtf8Invalid : public testing::TestWithParam<Invalid> {};

TEST_P(KyUtf8Invalid, EachBeginningOfACharacterAndEachStrayByteIsOneReplacement) {
    EXPECT_EQ(Text(KyFromUtf8(GetParam().m_pszBytes)), GetParam().m_pszText);
}

INSTANTIATE_TEST_SUITE_P(
    Bytes, KyUtf8Invalid,
    testing::Values(Invalid{"\x80", L"\xFFFD"},                                // continuation alone
                    Invalid{"a\xBF\x62", L"a\xFFFD\x62"},                      // between characters
                    Invalid{"\xC3", L"\xFFFD"},                                // cut off after one byte
                    Invalid{"\xE2\x82", L"\xFFFD"},                            // after two
                    Invalid{"\xF0\x9F\x98", L"\xFFFD"},                        // after three
                    Invalid{"\xE2\x82z", L"\xFFFDz"},                          // before another character
                    Invalid{"\xE2\xE2\x82\xAC", L"\xFFFD\x20AC"},              // before one that is whole
                    Invalid{"\xC0\xAF", L"\xFFFD\xFFFD"},                      // overlong
                    Invalid{"\xC1\xBF", L"\xFFFD\xFFFD"},                      //
                    Invalid{"\xE0\x9F\xBF", L"\xFFFD\xFFFD\xFFFD"},            //
                    Invalid{"\xF0\x8F\xBF\xBF", L"\xFFFD\xFFFD\xFFFD\xFFFD"},  //
                    Invalid{"\xED\xA0\x80", L"\xFFFD\xFFFD\xFFFD"},            // surrogate
                    Invalid{"\xF4\x90\x80\x80", L"\xFFFD\xFFFD\xFFFD\xFFFD"},  // past the last character
                    Invalid{"\xF5\xFE\xFF", L"\xFFFD\xFFFD\xFFFD"},            // bytes of no character
                    Invalid{"\xF5\x80\xFF\xBF", L"\xFFFD\xFFFD\xFFFD\xFFFD"},  //
                    Invalid{"\xC3\xC0", L"\xFFFD\xFFFD"},                      // one where another is due
                    Invalid{"\xE2\x82\xC0", L"\xFFFD\xFFFD"},                  //
                    Invalid{"\x61\xF1\x80\x80\xE1\x80\xC2\x62\x80\x63\x80\xBF\x64",  // Unicode's own example
                            L"\x61\xFFFD\xFFFD\xFFFD\x62\xFFFD\x63\xFFFD\xFFFD\x64"}));

TEST(KyUtf8, WhatIsNoCharacterIsWrittenAsAReplacement) {
    const std::wstring text{static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0xDFFF),
                            static_cast<wchar_t>(0x110000), static_cast<wchar_t>(-1), L'.'};

    EXPECT_EQ(KyToUtf8(text.c_str()), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD.");
}

/// Any character of Unicode, all lengths of UTF-8 about as often.
rc::Gen<wchar_t> Characters() {
    const auto range = [](wchar_t nFirst, wchar_t nEnd) {
        return rc::gen::resize(100, rc::gen::inRange(nFirst, nEnd));
    };
    return rc::gen::oneOf(range(0, 0x80), range(0x80, 0x800), range(0x800, 0xD800), range(0xE000, 0x10000),
                          range(0x10000, 0x110000));
}

RC_GTEST_PROP(KyUtf8, AnyTextComesBackAsItWas, ()) {
    const auto text = *rc::gen::container<std::wstring>(Characters());

    RC_ASSERT(Text(KyFromUtf8(KyToUtf8(Make(text)))) == text);
}

RC_GTEST_PROP(KyUtf8, AnyBytesBecomeValidInABufferThatFits, ()) {
    const auto strBytes = *rc::gen::container<std::string>(rc::gen::resize(100, rc::gen::arbitrary<char>()));

    const KyString text = KyFromUtf8(strBytes);

    RC_ASSERT(text.m_nLength == text.m_nStrLength + 1);
    RC_ASSERT(text.c_str()[text.GetLength()] == 0);
    RC_ASSERT(Text(KyFromUtf8(KyToUtf8(text))) == Text(text));
}

}  // namespace
