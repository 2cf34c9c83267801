// Scripts and edits: what each does, what undo and redo make of it, and every line that is refused.

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <utility>
#include <vector>

#include "JournalKit.h"
#include "examples/journal/DocumentFile.h"
#include "examples/journal/Shapes.h"

namespace journal {
namespace {

using testing::HasSubstr;

std::string WhyRefused(const std::string& strScript) {
    Desk desk;
    try {
        desk.Run(strScript);
    } catch (const Refusal& refusal) {
        return refusal.what();
    }
    return "not refused";
}

TEST(JournalScript, AnEmptyScriptMakesAnEmptyDrawing) {
    Desk desk;

    desk.Run("");
    desk.Run("\n  \n# nothing but this\n\t# and that\r\n");

    EXPECT_EQ(desk.Names(), "");
    EXPECT_EQ(Listing(desk.m_document), "0 shapes\n");
}

TEST(JournalScript, ACommentBeginsTheLineOrStandsAlone) {
    Desk desk;

    desk.Run("#!journal\n#add Circle x 0 0 1\nadd Circle a 0 0 1 # a circle\ncolour a #00ff00 #\n");

    EXPECT_EQ(Listing(desk.m_document), "Circle a at 0, 0, radius 1, #00ff00\n1 shape: 1 Circle\n");
    EXPECT_THAT(WhyRefused("add Circle a 0 0 1 #tight"),
                HasSubstr("line 1: there is more than expected: '#tight'"));
}

TEST(JournalScript, AddMakesAShapeOfTheNamedClassThroughItsDescriptor) {
    Desk desk;

    desk.Run("add Circle sun 100 80 40");

    ASSERT_EQ(desk.Names(), "sun");
    const Shape& shape = desk.m_document.At(0);
    EXPECT_EQ(shape.GetCI(), Circle::GetStaticCI());
    EXPECT_EQ(shape.m_position.x, 100);
    EXPECT_EQ(shape.m_position.y, 80);
    EXPECT_EQ(shape.m_strColour, "gold") << "what InitObject gives a circle";
    EXPECT_EQ(static_cast<const Circle&>(shape).m_dRadius, 40);
}

TEST(JournalScript, TheListingNamesEveryShapeAndCountsThemByClass) {
    Desk desk;

    desk.Run(OneOfEach);
    desk.Run("add Circle moon 1 2 3");

    EXPECT_EQ(Listing(desk.m_document),
              "Circle sun at 100, 80, radius 40, gold\n"
              "Rectangle wall at 10.5, 20, 300 x 200.25, #12ab00\n"
              "Line roof at -5, 0, to 65, -60, black\n"
              "Label sign at 30, 40, height 12, \"A & B #1 <größer>\", black\n"
              "Circle moon at 1, 2, radius 3, gold\n"
              "5 shapes: 2 Circles, 1 Label, 1 Line, 1 Rectangle\n");
}

TEST(JournalScript, EveryEditDoesWhatItSays) {
    Desk desk;
    desk.Run("add Circle a 0 0 1\nadd Circle b 0 0 1\nadd Circle c 0 0 1\n");

    desk.Run("move b 2.5 -1");
    EXPECT_EQ(desk.m_document.At(1).m_position.x, 2.5);
    EXPECT_EQ(desk.m_document.At(1).m_position.y, -1);

    desk.Run("colour c red");
    EXPECT_EQ(desk.m_document.At(2).m_strColour, "red");

    desk.Run("raise a");
    EXPECT_EQ(desk.Names(), "b c a");
    desk.Run("raise a");
    EXPECT_EQ(desk.Names(), "b c a");

    desk.Run("remove c");
    EXPECT_EQ(desk.Names(), "b a");
}

TEST(JournalScript, UndoAndRedoWalkThroughTheEdits) {
    Desk desk;
    desk.Run("add Circle a 0 0 1\nadd Circle b 0 0 1\nadd Circle c 0 0 1\nraise a\nremove b\n");
    ASSERT_EQ(desk.Names(), "c a");

    desk.Run("undo");
    EXPECT_EQ(desk.Names(), "b c a");
    desk.Run("undo 2");
    EXPECT_EQ(desk.Names(), "a b");
    desk.Run("redo");
    EXPECT_EQ(desk.Names(), "a b c");
    desk.Run("redo 2");
    EXPECT_EQ(desk.Names(), "c a");
    desk.Run("undo 5");
    EXPECT_EQ(desk.Names(), "");
}

TEST(JournalScript, ANewEditForgetsWhatWasUndone) {
    Desk desk;
    desk.Run("add Circle a 0 0 1\nundo\nadd Circle b 0 0 1\n");

    EXPECT_THROW(desk.Run("redo"), Refusal);
    EXPECT_EQ(desk.Names(), "b");
}

TEST(JournalScript, AnUndoneMoveIsBackToTheLastBit) {
    Desk desk;
    desk.Run("add Circle a 0.1 0.7 1\nmove a 0.2 123456.789\n");

    desk.Run("undo");

    EXPECT_EQ(desk.m_document.At(0).m_position.x, 0.1);
    EXPECT_EQ(desk.m_document.At(0).m_position.y, 0.7);
}

TEST(JournalScript, WhatComesBeforeABadLineIsDoneAndTheRestIsNot) {
    Desk desk;

    EXPECT_THROW(desk.Run("add Circle a 0 0 1\nremove nobody\nadd Circle b 0 0 1\n"), Refusal);
    EXPECT_EQ(desk.Names(), "a");

    desk.Run("undo");
    EXPECT_EQ(desk.Names(), "");
}

TEST(JournalScript, EveryBadLineIsRefusedWithItsNumberAndTheReason) {
    const std::vector<std::pair<const char*, const char*>> cases = {
        {"paint a red", "line 1: unknown edit 'paint' (known: add, move, colour, raise, remove, undo, redo)"},
        {"\xff\x01", "line 1: unknown edit '\\xff\\x01'"},
        {"add", "line 1: class is missing"},
        {"add # Circle", "line 1: class is missing"},
        {"add Ellipse a 0 0 1", "line 1: unknown class 'Ellipse' (known: Circle, Label, Line, Rectangle)"},
        {"add circle a 0 0 1", "line 1: unknown class 'circle'"},
        {"add Shape a 0 0", "line 1: unknown class 'Shape'"},
        {"add Circle", "line 1: name is missing"},
        {"add Circle a/b 0 0 1", "line 1: name is not made of letters, digits, - and _: 'a/b'"},
        {"add Circle a", "line 1: position is missing"},
        {"add Circle a 0", "line 1: position is missing"},
        {"add Circle a 0 x 1", "line 1: position is not a number: 'x'"},
        {"add Circle a 0 1x 1", "line 1: position is not a number: '1x'"},
        {"add Circle a 0 1e999 1", "line 1: position is not a number: '1e999'"},
        {"add Circle a 0 inf 1", "line 1: position is not between -1000000 and 1000000"},
        {"add Circle a nan 0 1", "line 1: position is not between -1000000 and 1000000"},
        {"add Circle a 1000001 0 1", "line 1: position is not between -1000000 and 1000000"},
        {"add Circle a 0 0", "line 1: radius is missing"},
        {"add Circle a 0 0 0", "line 1: radius is not above 0"},
        {"add Circle a 0 0 -1", "line 1: radius is not above 0"},
        {"add Circle a 0 0 1 2", "line 1: there is more than expected: '2'"},
        {"add Rectangle a 0 0 1", "line 1: height is missing"},
        {"add Rectangle a 0 0 0 1", "line 1: width is not above 0"},
        {"add Line a 0 0 1", "line 1: extent down is missing"},
        {"add Label a 0 0 1", "line 1: text is missing"},
        {"add Label a 0 0 1 \xc3(", "line 1: text is not plain UTF-8 text: '\\xc3('"},
        {"add Label a 0 0 1 cut \xc3", "line 1: text is not plain UTF-8 text: 'cut \\xc3'"},
        {"add Label a 0 0 1 \xed\xa0\x80", "line 1: text is not plain UTF-8 text"},
        {"add Label a 0 0 1 \xef\xbf\xbf", "line 1: text is not plain UTF-8 text"},
        {"add Label a 0 0 1 be\x07ll", "line 1: text is not plain UTF-8 text: 'be\\x07ll'"},
        {"add Circle a 0 0 1\n\nadd Label a 0 0 1 a", "line 3: there is a shape 'a' already"},
        {"move", "line 1: name is missing"},
        {"move a 1 1", "line 1: there is no shape 'a'"},
        {"add Circle a 0 0 1\nmove a 1", "line 2: way is missing"},
        {"add Circle a 600000 0 1\nmove a 600000 0",
         "line 2: new position is not between -1000000 and 1000000"},
        {"add Circle a 0 0 1\ncolour a", "line 2: colour is missing"},
        {"add Circle a 0 0 1\ncolour a mauve",
         "line 2: colour 'mauve' is neither #rrggbb nor one of black, blue, brown, gold, gray, green, "
         "orange, purple, red, white"},
        {"add Circle a 0 0 1\ncolour a #12345g", "line 2: colour '#12345g' is neither"},
        {"add Circle a 0 0 1\ncolour a #123", "line 2: colour '#123' is neither"},
        {"colour a red", "line 1: there is no shape 'a'"},
        {"raise a", "line 1: there is no shape 'a'"},
        {"remove a", "line 1: there is no shape 'a'"},
        {"remove a b", "line 1: there is more than expected: 'b'"},
        {"undo", "line 1: there are 0 edits to undo"},
        {"redo", "line 1: there are 0 edits to redo"},
        {"add Circle a 0 0 1\nundo 2", "line 2: there are 1 edits to undo"},
        {"undo 0", "line 1: count is not above 0"},
        {"undo 1.5", "line 1: count is not a whole number"},
        {"undo x", "line 1: count is not a number: 'x'"},
        {"redo 1 1", "line 1: there is more than expected: '1'"},
    };
    for (const auto& [pszScript, pszReason] : cases) {
        EXPECT_THAT(WhyRefused(pszScript), HasSubstr(pszReason)) << pszScript;
        EXPECT_THAT(WhyRefused(pszScript), testing::Not(HasSubstr("\n"))) << pszScript;
    }
}

TEST(JournalEditor, TellsOfEveryEditThroughTheChannel) {
    std::ostringstream told;
    Chronicle chronicle(told);
    const KyScopedReactor telling(chronicle);
    Desk desk;

    desk.Run("add Circle a 0 0 1\nmove a 1 1\nundo 2\nredo\n");

    EXPECT_EQ(told.str(), "add a\nmove a\nundo move a, add a\nredo add a\n");
}

TEST(JournalEditor, DoesEachEditOnceWhoeverListens) {
    std::ostringstream told;
    Chronicle before(told), after(told);
    const KyScopedReactor tellingBefore(before);
    Desk desk;
    const KyScopedReactor tellingAfter(after);

    desk.Run("add Circle a 0 0 1\nmove a 1 1\n");

    EXPECT_EQ(desk.m_document.At(0).m_position.x, 1);
    EXPECT_EQ(told.str(), "add a\nadd a\nmove a\nmove a\n");
}

/// A line that may well be refused.
std::string AnyLine() {
    const std::string strName = *rc::gen::element<std::string>("a", "b", "c", "d");
    const int n = *rc::gen::inRange(1, 9);
    switch (*rc::gen::inRange(0, 10)) {
        case 0:
            return "add Circle " + strName + " 1.5 2 " + std::to_string(n);
        case 1:
            return "add Rectangle " + strName + " -3 4 5 " + std::to_string(n);
        case 2:
            return "add Line " + strName + " 0 0 5 " + std::to_string(-n);
        case 3:
            return "add Label " + strName + " 0 0 5 text " + std::to_string(n);
        case 4:
            return "move " + strName + " 0.1 " + std::to_string(n);
        case 5:
            return "colour " + strName + " " + *rc::gen::element<std::string>("red", "blue");
        case 6:
            return "raise " + strName;
        case 7:
            return "remove " + strName;
        case 8:
            return "undo " + std::to_string(*rc::gen::inRange(1, 3));
        default:
            return "redo " + std::to_string(*rc::gen::inRange(1, 3));
    }
}

RC_GTEST_PROP(JournalHistory, EveryStateIsFoundAgainByteForByteOnTheWayBackAndForth, ()) {
    Desk desk;
    std::vector<std::string> states = {BytesOf(desk.m_document)};  // after 0, 1, 2 ... edits
    std::size_t nNow = 0;
    const int nLines = *rc::gen::inRange(0, 60);
    for (int i = 0; i < nLines; ++i) {
        const std::string strLine = AnyLine();
        const std::string strVerb = strLine.substr(0, 4);
        const auto nSteps = static_cast<std::size_t>(strLine.back() - '0');
        bool bRefused = false;
        try {
            desk.Run(strLine);
        } catch (const Refusal&) {
            bRefused = true;
        }

        if (strVerb == "undo") {
            RC_ASSERT(bRefused == (nSteps > nNow));
            if (!bRefused) nNow -= nSteps;
        } else if (strVerb == "redo") {
            RC_ASSERT(bRefused == (nNow + nSteps >= states.size()));
            if (!bRefused) nNow += nSteps;
        } else if (!bRefused) {
            states.resize(++nNow);
            states.push_back(BytesOf(desk.m_document));
        }
        RC_ASSERT(BytesOf(desk.m_document) == states[nNow]);
    }
}

}  // namespace
}  // namespace journal
