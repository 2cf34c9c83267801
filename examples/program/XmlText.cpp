#include "examples/program/XmlText.h"

#include "VexaBase/string/KyUtf8.h"

namespace program {
namespace {

wchar_t XmlCharacter(wchar_t ch) {
    if (ch < 0x20) return L' ';
    return ch == 0xFFFE || ch == 0xFFFF ? KyReplacementCharacter : ch;
}

}  // namespace

std::string XmlText(const std::string& strText) {
    KyString text = KyFromUtf8(strText);
    for (wchar_t& ch : text) ch = XmlCharacter(ch);

    std::string strXml;
    for (const char c : KyToUtf8(text)) {
        switch (c) {
            case '<':
                strXml += "&lt;";
                break;
            case '>':
                strXml += "&gt;";
                break;
            case '&':
                strXml += "&amp;";
                break;
            case '"':
                strXml += "&quot;";
                break;
            default:
                strXml += c;
        }
    }
    return strXml;
}

}  // namespace program
