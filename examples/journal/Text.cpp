#include "examples/journal/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cwchar>
#include <locale>
#include <vector>

namespace journal {
namespace {

constexpr std::array<std::string_view, 10> Colours = {"black", "blue",   "brown",  "gold", "gray",
                                                      "green", "orange", "purple", "red",  "white"};

bool IsIn(std::string_view characters, char ch) { return characters.find(ch) != std::string_view::npos; }

constexpr std::string_view HexDigits = "0123456789abcdef";
constexpr std::string_view NameCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";

bool IsHexColour(std::string_view text) {
    return text.size() == 7 && text.front() == '#' &&
           std::all_of(text.begin() + 1, text.end(), [](char ch) { return IsIn(HexDigits, ch); });
}

/// Whether all of it is UTF-8 and every character may stand in a line of XML.
bool IsPlainText(const std::string& strText) {
    using Utf8 = std::codecvt<char32_t, char, std::mbstate_t>;
    std::vector<char32_t> characters(strText.size());
    std::mbstate_t state{};
    const char* pFrom = strText.data();
    char32_t* pTo = characters.data();
    const auto result =
        std::use_facet<Utf8>(std::locale::classic())
            .in(state, pFrom, pFrom + strText.size(), pFrom, pTo, pTo + characters.size(), pTo);
    if (result != std::codecvt_base::ok || pFrom != strText.data() + strText.size()) return false;
    return std::all_of(characters.data(), pTo, [](char32_t ch) {
        const bool bControl = ch < 0x20 || (ch >= 0x7F && ch < 0xA0);
        const bool bSurrogate = ch >= 0xD800 && ch < 0xE000;
        return !bControl && !bSurrogate && ch != 0xFFFE && ch != 0xFFFF;
    });
}

}  // namespace

double CheckedNumber(double d, What what) {
    if (std::isfinite(d) && std::abs(d) <= MaxNumber) return d;
    throw Refusal(std::string(what) + " is not between -" + ToText(MaxNumber) + " and " + ToText(MaxNumber));
}

double CheckedSize(double d, What what) {
    if (CheckedNumber(d, what) > 0) return d;
    throw Refusal(std::string(what) + " is not above 0");
}

std::string CheckedText(std::string strText, What what) {
    if (strText.empty()) throw Refusal(std::string(what) + " is empty");
    if (!IsPlainText(strText))
        throw Refusal(std::string(what) + " is not plain UTF-8 text: " + Quoted(strText));
    return strText;
}

std::string CheckedName(std::string strName, What what) {
    const bool bName = !strName.empty() && std::all_of(strName.begin(), strName.end(),
                                                       [](char ch) { return IsIn(NameCharacters, ch); });
    if (!bName)
        throw Refusal(std::string(what) + " is not made of letters, digits, - and _: " + Quoted(strName));
    return strName;
}

std::string CheckedColour(std::string strColour, What what) {
    const bool bKnown = std::find(Colours.begin(), Colours.end(), strColour) != Colours.end();
    if (bKnown || IsHexColour(strColour)) return strColour;
    throw Refusal(std::string(what) + " " + Quoted(strColour) + " is neither #rrggbb nor one of " +
                  ColourNames());
}

std::string ColourNames() {
    std::string strNames;
    for (const std::string_view colour : Colours) {
        if (!strNames.empty()) strNames += ", ";
        strNames += colour;
    }
    return strNames;
}

std::string ToText(double d) {
    char szText[64];
    const auto result = std::to_chars(std::begin(szText), std::end(szText), d, std::chars_format::fixed, 2);
    std::string strText(szText, result.ptr);
    strText.erase(strText.find_last_not_of('0') + 1);
    if (strText.back() == '.') strText.pop_back();
    return strText == "-0" ? "0" : strText;
}

std::string Quoted(std::string_view text) {
    std::string strQuoted = "'";
    for (const char ch : text) {
        const auto nCode = static_cast<unsigned char>(ch);
        if (nCode >= 0x20 && nCode < 0x7F) {
            strQuoted += ch;
        } else {
            strQuoted += "\\x";
            strQuoted += HexDigits[nCode / 16];
            strQuoted += HexDigits[nCode % 16];
        }
    }
    return strQuoted + "'";
}

}  // namespace journal
