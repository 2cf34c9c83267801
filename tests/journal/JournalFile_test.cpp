// Drawings as bytes: what is written is read back, and whatever else comes is refused in one line.

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <limits>

#include "JournalKit.h"
#include "VexaBase/stream/KyDynArrayStreamEx.h"
#include "examples/journal/Bytes.h"
#include "examples/journal/DocumentFile.h"
#include "examples/journal/Shapes.h"

namespace journal {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string WhyRefused(const std::string& strBytes) {
    Document document;
    try {
        ReadBytes(strBytes, document);
    } catch (const Refusal& refusal) {
        return refusal.what();
    }
    return "not refused";
}

std::string Read(const std::string& strBytes) {
    Document document;
    ReadBytes(strBytes, document);
    return Listing(document);
}

/// The bytes of a drawing put together by hand.
class Bytes {
public:
    Bytes() {
        for (const char ch : std::string("JOURNAL\n")) {
            m_stream << ch;
        }
    }
    Bytes& Count(long n) { return m_writer.WriteCount(n), *this; }
    Bytes& Number(double d) { return m_writer.WriteNumber(d), *this; }
    Bytes& Text(const std::string& strText) { return m_writer.WriteText(strText), *this; }

    std::string Take() {
        std::string strBytes(static_cast<std::size_t>(m_stream.GetLength()), '\0');
        m_stream.MoveTo(0);
        m_stream.Read(strBytes.data(), m_stream.GetLength());
        return strBytes;
    }

private:
    KyDynArrayStreamEx m_stream{64};
    ByteWriter m_writer{m_stream};
};

TEST(JournalFile, AnEmptyDrawingComesBack) {
    const Document document;

    EXPECT_EQ(BytesOf(document), Bytes().Count(0).Take());
    EXPECT_EQ(Read(BytesOf(document)), "0 shapes\n");
}

TEST(JournalFile, TheBytesAreTheSignatureTheCountAndEachShapeBehindItsClass) {
    Desk desk;
    desk.Run("add Circle sun 100 80 40");

    EXPECT_EQ(BytesOf(desk.m_document), Bytes()
                                            .Count(1)
                                            .Text("Circle")
                                            .Count(1)
                                            .Text("sun")
                                            .Number(100)
                                            .Number(80)
                                            .Text("gold")
                                            .Number(40)
                                            .Take());
}

TEST(JournalFile, OneShapeOfEachClassComesBackAsItWas) {
    Desk desk;
    desk.Run(OneOfEach);
    const std::string strBytes = BytesOf(desk.m_document);
    Document again;

    ReadBytes(strBytes, again);

    EXPECT_EQ(Listing(again), Listing(desk.m_document));
    EXPECT_EQ(BytesOf(again), strBytes);
    EXPECT_EQ(again.At(3).GetCI(), Label::GetStaticCI());
}

TEST(JournalFile, ADrawingOfManyChunksComesBack) {
    Desk desk;
    for (int i = 0; i < 500; ++i) {
        desk.Run("add Label n" + std::to_string(i) + " 0 0 5 number " + std::to_string(i));
    }
    const std::string strBytes = BytesOf(desk.m_document);
    ASSERT_GT(strBytes.size(), 5 * 4096u);

    EXPECT_EQ(Read(strBytes), Listing(desk.m_document));
}

TEST(JournalFile, AFileCutAnywhereIsRefusedInOneLine) {
    Desk desk;
    desk.Run(OneOfEach);
    const std::string strBytes = BytesOf(desk.m_document);

    for (std::size_t n = 0; n < strBytes.size(); ++n) {
        const std::string strWhy = WhyRefused(strBytes.substr(0, n));
        if (n < 8) {
            EXPECT_EQ(strWhy, "not a drawing of this program") << n;
        } else {
            EXPECT_THAT(strWhy, HasSubstr("truncated: it ends in the ")) << n;
        }
        EXPECT_THAT(strWhy, Not(HasSubstr("\n"))) << n;
    }
}

TEST(JournalFile, ACutFileSaysWhichShapeItEndsIn) {
    Desk desk;
    desk.Run(OneOfEach);
    std::string strBytes = BytesOf(desk.m_document);

    strBytes.pop_back();
    EXPECT_EQ(WhyRefused(strBytes), "shape 4 of 4: truncated: it ends in the text");
    EXPECT_EQ(WhyRefused(strBytes.substr(0, 17)), "shape 1 of 4: truncated: it ends in the class name");
    EXPECT_EQ(WhyRefused(strBytes.substr(0, 15)), "truncated: it ends in the number of shapes");
}

TEST(JournalFile, AnUnknownClassIsNamed) {
    EXPECT_EQ(WhyRefused(Bytes().Count(1).Text("Ellipse").Count(1).Take()),
              "shape 1 of 1: unknown class 'Ellipse' (known: Circle, Label, Line, Rectangle)");
    EXPECT_THAT(WhyRefused(Bytes().Count(1).Text("Shape").Count(0).Take()),
                HasSubstr("unknown class 'Shape'"));
    EXPECT_THAT(WhyRefused(Bytes().Count(1).Text("KyRxDynCreateClass").Count(1).Take()),
                HasSubstr("unknown class"));
    EXPECT_THAT(WhyRefused(Bytes().Count(1).Text("circle").Count(1).Take()),
                HasSubstr("unknown class 'circle'"));
    EXPECT_THAT(WhyRefused(Bytes().Count(1).Text("").Count(1).Take()), HasSubstr("unknown class ''"));
    EXPECT_THAT(WhyRefused(Bytes().Count(1).Text("Circle\n\xff").Count(1).Take()),
                HasSubstr("unknown class 'Circle\\x0a\\xff'"));
    EXPECT_THAT(WhyRefused(Bytes().Count(1).Text(std::string("Circle\0", 7)).Count(1).Take()),
                HasSubstr("unknown class"));
}

TEST(JournalFile, AClassInAnotherVersionIsRefused) {
    EXPECT_EQ(WhyRefused(Bytes().Count(1).Text("Circle").Count(2).Take()),
              "shape 1 of 1: Circle in version 2 (known: 1)");
}

TEST(JournalFile, WhatNoScriptCouldDrawIsRefused) {
    const auto circle = [](const std::string& strName, double x, const std::string& strColour,
                           double dRadius) {
        return WhyRefused(Bytes()
                              .Count(1)
                              .Text("Circle")
                              .Count(1)
                              .Text(strName)
                              .Number(x)
                              .Number(0)
                              .Text(strColour)
                              .Number(dRadius)
                              .Take());
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();

    EXPECT_EQ(circle("a", 0, "red", 1), "not refused");
    EXPECT_THAT(circle("", 0, "red", 1), HasSubstr("name is not made of"));
    EXPECT_THAT(circle("<a>", 0, "red", 1), HasSubstr("name is not made of"));
    EXPECT_THAT(circle("a", nan, "red", 1), HasSubstr("position is not between"));
    EXPECT_THAT(circle("a", 1e7, "red", 1), HasSubstr("position is not between"));
    EXPECT_THAT(circle("a", 0, "url(x)", 1), HasSubstr("colour 'url(x)' is neither"));
    EXPECT_THAT(circle("a", 0, "red", nan), HasSubstr("radius is not between"));
    EXPECT_THAT(circle("a", 0, "red", -1), HasSubstr("radius is not above 0"));
    EXPECT_THAT(WhyRefused(Bytes()
                               .Count(1)
                               .Text("Label")
                               .Count(1)
                               .Text("a")
                               .Number(0)
                               .Number(0)
                               .Text("red")
                               .Number(1)
                               .Text("a\nb")
                               .Take()),
                HasSubstr("text is not plain UTF-8 text: 'a\\x0ab'"));
}

TEST(JournalFile, TwoShapesOfOneNameAreRefused) {
    Bytes bytes;
    bytes.Count(2);
    for (int i = 0; i < 2; ++i) {
        bytes.Text("Circle").Count(1).Text("twin").Number(0).Number(0).Text("red").Number(1);
    }

    EXPECT_EQ(WhyRefused(bytes.Take()), "shape 2 of 2: there is a shape 'twin' already");
}

TEST(JournalFile, ImpossibleCountsAreRefused) {
    EXPECT_EQ(WhyRefused(Bytes().Count(-1).Take()), "damaged: the number of shapes is counted below 0");
    EXPECT_EQ(WhyRefused(Bytes().Count(std::numeric_limits<long>::max()).Take()),
              "shape 1 of 9223372036854775807: truncated: it ends in the class name");
    EXPECT_EQ(WhyRefused(Bytes().Count(1).Count(-5).Take()),
              "shape 1 of 1: damaged: the class name is counted below 0");
    EXPECT_EQ(WhyRefused(Bytes().Count(1).Count(std::numeric_limits<long>::max()).Take()),
              "shape 1 of 1: truncated: it ends in the class name");
}

TEST(JournalFile, BytesBehindTheLastShapeAreRefused) {
    EXPECT_EQ(WhyRefused(Bytes().Count(0).Take() + "xyz"),
              "damaged: there are 3 bytes behind the last shape");
}

TEST(JournalFile, OtherFilesAreRefused) {
    EXPECT_EQ(WhyRefused(""), "not a drawing of this program");
    EXPECT_EQ(WhyRefused("<svg xmlns=\"http://www.w3.org/2000/svg\"/>"), "not a drawing of this program");
}

RC_GTEST_PROP(JournalFile, AFileWithAnyByteChangedIsReadOrRefusedAndNothingElse, ()) {
    Desk desk;
    desk.Run(OneOfEach);
    std::string strBytes = BytesOf(desk.m_document);
    const auto nChanges = *rc::gen::inRange(1, 4);
    for (int i = 0; i < nChanges; ++i) {
        strBytes[*rc::gen::inRange<std::size_t>(0, strBytes.size())] = *rc::gen::arbitrary<char>();
    }

    Document document;
    try {
        ReadBytes(strBytes, document);
        RC_ASSERT(BytesOf(document) == strBytes);
    } catch (const Refusal& refusal) {
        RC_ASSERT(std::string(refusal.what()).find('\n') == std::string::npos);
    }
}

TEST(JournalSvg, AnEmptyDrawingIsAnEmptyPicture) {
    EXPECT_EQ(DrawSvg(Document()),
              "<svg xmlns=\"http://www.w3.org/2000/svg\" font-family=\"sans-serif\" viewBox=\"-10 -10 20 "
              "20\">\n</svg>\n");
}

TEST(JournalSvg, EveryShapeIsAnElementBackToFront) {
    Desk desk;
    desk.Run(OneOfEach);

    EXPECT_EQ(DrawSvg(desk.m_document),
              "<svg xmlns=\"http://www.w3.org/2000/svg\" font-family=\"sans-serif\" viewBox=\"-15 -70 335.5 "
              "300.25\">\n"
              "<circle cx=\"100\" cy=\"80\" r=\"40\" fill=\"gold\"><title>sun</title></circle>\n"
              "<rect x=\"10.5\" y=\"20\" width=\"300\" height=\"200.25\" "
              "fill=\"#12ab00\"><title>wall</title></rect>\n"
              "<line x1=\"-5\" y1=\"0\" x2=\"65\" y2=\"-60\" stroke=\"black\"><title>roof</title></line>\n"
              "<text x=\"30\" y=\"40\" font-size=\"12\" fill=\"black\"><title>sign</title>A &amp; B #1 "
              "&lt;größer&gt;</text>\n"
              "</svg>\n");
}

}  // namespace
}  // namespace journal
