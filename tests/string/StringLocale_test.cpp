// Format and << follow the caller's locale. The comma of the decimal fractions comes from a locale of the
// tests' own, compiled from comma.locale.

#include <gmock/gmock.h>

#include <clocale>
#include <cstdlib>
#include <string>

#include "StringKit.h"
#include "VexaBase/string/KyString.h"

namespace {

/// One category of the program's locale, until the end of the scope.
class Locale {
public:
    Locale(int nCategory, const char* pszName)
        : m_nCategory(nCategory), m_sOld(std::setlocale(nCategory, nullptr)) {
        m_bSet = std::setlocale(nCategory, pszName) != nullptr;
    }
    Locale(const Locale&) = delete;
    Locale& operator=(const Locale&) = delete;
    ~Locale() { std::setlocale(m_nCategory, m_sOld.c_str()); }

    bool IsSet() const { return m_bSet; }

private:
    int m_nCategory;
    std::string m_sOld;
    bool m_bSet;
};

/// LC_NUMERIC with a decimal comma.
class KyStringDecimalComma : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_comma.IsSet()) << "no locale 'comma' in " << std::getenv("LOCPATH");
    }

    Locale m_comma{LC_NUMERIC, "comma"};
};

TEST_F(KyStringDecimalComma, FormatWritesIt) {
    KyString s;

    s.Format(L"%.2f", 2.5);

    EXPECT_THAT(s, IsString(L"2,50", 1025));
}

TEST_F(KyStringDecimalComma, ANumberIsAppendedWithItAndStrippedOfAllItsZeros) {
    KyString half;
    KyString whole;

    half << 2.5;
    whole << 100;

    EXPECT_EQ(Text(half), L"2,5");
    EXPECT_EQ(Text(whole), L"100,") << "no full stop keeps a zero";
}

TEST(KyStringMultibyte, FormatDecodesItByTheLocale) {
    const Locale utf8(LC_CTYPE, "C.UTF-8");
    ASSERT_TRUE(utf8.IsSet());
    KyString s;

    s.Format(L"<%s>", "\xc3\xa9\xe2\x82\xac");

    EXPECT_THAT(s, IsString(L"<\u00e9\u20ac>", 1025));
}

TEST(KyStringMultibyte, AConversionErrorLeavesWhatWasWrittenBeforeIt) {
    KyString s(L"before");

    s.Format(L"ab%d%scd", 7, "x\xff");

    EXPECT_THAT(s, IsString(L"ab7", 1025));
    EXPECT_EQ(s.m_pData[1024], 0);
}

TEST(KyStringMultibyte, AConversionErrorAtOnceLeavesAnEmptyString) {
    KyString s;
    s.Format(L"before");

    s.Format(L"%s", "\xff");

    EXPECT_THAT(s, IsString(L"", 1025));
}

TEST(KyStringMultibyte, AConversionErrorBehindTheLimitLeavesTheCutText) {
    KyString s;

    s.Format(L"%2000d%s", 5, "\xff");

    EXPECT_THAT(s, IsString(std::wstring(1023, L' '), 1025));
}

TEST(KyStringMultibyte, UpperCaseIsTheSameInEveryLocale) {
    const Locale utf8(LC_CTYPE, "C.UTF-8");
    ASSERT_TRUE(utf8.IsSet());
    KyString s(L"a\u00e9");

    s.MakeUpper();

    EXPECT_EQ(Text(s), L"A\u00e9");
}

}  // namespace
