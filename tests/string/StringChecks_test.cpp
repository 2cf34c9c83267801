// What the checked build stops on.

#include <gmock/gmock.h>

#include <climits>

#include "VexaBase/containers/KyQuene.h"
#include "VexaBase/string/CompareLabel.h"
#include "VexaBase/string/KyString.h"

namespace {

TEST(KyStringChecksDeathTest, ATextAtANegativePositionIsStopped) {
    KyString s(L"abc");

    EXPECT_DEATH(s.Copy(L"x", -1),
                 "^VexaBase/string/KyString.cpp:[0-9]+: KyString::Copy: negative position \\(-1\\)\n$");
}

TEST(KyStringChecksDeathTest, ARunOutsideTheBufferIsStopped) {
    KyString s(L"abc");

    EXPECT_DEATH(s.Copy(-1, 1, 1),
                 "KyString::Copy: run outside the buffer \\(from -1, to 1, count 1, buffer size 4\\)");
    EXPECT_DEATH(s.Copy(1, -1, 1),
                 "KyString::Copy: run outside the buffer \\(from 1, to -1, count 1, buffer size 4\\)");
    EXPECT_DEATH(s.Copy(4, 0, 1),
                 "KyString::Copy: run outside the buffer \\(from 4, to 0, count 1, buffer size 4\\)");
    EXPECT_DEATH(s.Copy(LONG_MAX, 0, 1), "KyString::Copy: run outside the buffer");
}

TEST(KyStringChecksDeathTest, ANullFormatIsStopped) {
    KyString s;

    EXPECT_DEATH(s.Format(nullptr), "KyString::Format: no format");
}

TEST(KyStringChecksDeathTest, ASearchFromANegativeStartIsStopped) {
    KyString s(L"abc");
    KyListQuene<long> queue;

    EXPECT_DEATH(s.Find(L"a", -1), "KyString::Find: negative start \\(-1\\)");
    EXPECT_DEATH(s.Find(L"a", queue, -2, 1), "KyString::Find: negative start \\(-2\\)");
    EXPECT_DEATH(s.Replace(L"a", L"b", -3), "KyString::Find: negative start \\(-3\\)");
}

TEST(KyStringChecksDeathTest, ANextTableWithoutMemoryIsStopped) {
    KyString s(L"ab");

    EXPECT_DEATH(s.CreateNextTable(nullptr), "KyString::CreateNextTable: no table \\(length 2\\)");
}

TEST(KyStringChecksDeathTest, ANullTextToCloneIsStopped) {
    EXPECT_DEATH(CloneString(nullptr), "KyString.cpp:[0-9]+: CloneString: no string");
}

TEST(CompareLabelChecksDeathTest, ANullLabelIsStopped) {
    EXPECT_DEATH(CompareLabel(nullptr, L"a"),
                 "VexaBase/string/CompareLabel.cpp:[0-9]+: CompareLabel: no label");
    EXPECT_DEATH(CompareLabel(L"a", nullptr), "CompareLabel: no label");
}

TEST(KyStringChecks, WhatIsDefinedIsNotStopped) {
    KyString s(nullptr);
    KyListQuene<long> queue;

    s.CreateNextTable(nullptr);
    s.Copy(nullptr, -1);
    s.Copy(L"", -1);
    s.Copy(L"ab", 0);
    s.Copy(L"", 4);
    s.Copy(5, 5, 3);
    s.Copy(-1, 0, 0);
    s.Copy(9, 3, -1);
    s.Copy(3, 2, 6);

    EXPECT_FALSE(s.Insert(-1, s));
    EXPECT_EQ(s.Find(L"", -1), -1);
    EXPECT_EQ(s.Find(L"a", -1, -2), -1);
    EXPECT_EQ(s.Find(L"a", queue, -1, -2), 0);
    EXPECT_EQ(s.Find(L"b", 0, LONG_MAX), 1);
    EXPECT_EQ(s.Replace(L"", L"", -1), -1);
    EXPECT_EQ(s.GetLength(), 8);
    EXPECT_EQ(CompareLabel(L"", L""), 0);
}

}  // namespace
