#include "examples/program/XmlText.h"

#include <gtest/gtest.h>

namespace program {
namespace {

TEST(XmlText, MarkupIsEscaped) {
    EXPECT_EQ(XmlText("<a href=\"b\"> & c"), "&lt;a href=&quot;b&quot;&gt; &amp; c");
}

TEST(XmlText, WhatIsNoCharacterOfXmlIsReplaced) {
    EXPECT_EQ(XmlText("a\x01z\n\xc3\xa9"), "a z \xc3\xa9");
    EXPECT_EQ(XmlText("a\xff"), "a\xef\xbf\xbd");
    EXPECT_EQ(XmlText("a\xef\xbf\xbf"), "a\xef\xbf\xbd");
    EXPECT_EQ(XmlText("a\xef\xbf\xbe"), "a\xef\xbf\xbd");
}

TEST(XmlText, OtherCharactersStayAsTheyAre) {
    const std::string strText = "Ward 9, \xc3\x85land, \xe6\x9d\xb1\xe4\xba\xac, \xf0\x9f\x8c\x8d, \x7f";

    EXPECT_EQ(XmlText(strText), strText);
    EXPECT_EQ(XmlText(""), "");
}

}  // namespace
}  // namespace program
