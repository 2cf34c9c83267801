#include "examples/faces/Utf8.h"

#include <algorithm>
#include <cwchar>
#include <locale>
#include <nlohmann/json.hpp>

#include "VexaBase/string/CompareLabel.h"

namespace faces {
namespace {

using Utf8 = std::codecvt<char32_t, char, std::mbstate_t>;
constexpr char32_t Replacement = 0xFFFD;

bool IsCharacter(char32_t ch) { return ch <= 0x10FFFF && (ch < 0xD800 || ch >= 0xE000); }

KyString InOneLine(KyString text) {
    std::replace_if(
        text.begin(), text.end(), [](wchar_t ch) { return (ch >= 0 && ch < 0x20) || ch == 0x7F; }, L' ');
    return text;
}

bool ComesBefore(const KyString& a, const KyString& b) {
    const int nOrder = CompareLabel(a.c_str(), b.c_str());
    return nOrder != 0 ? nOrder < 0 : std::wcscmp(a.c_str(), b.c_str()) < 0;
}

}  // namespace

std::string ValidUtf8(const std::string& strText) {
    // The JSON writer knows how to replace what is no UTF-8.
    using Json = nlohmann::json;
    return Json::parse(Json(strText).dump(-1, ' ', false, Json::error_handler_t::replace)).get<std::string>();
}

KyString FromUtf8(const std::string& strText) {
    const std::string strValid = ValidUtf8(strText);
    std::vector<char32_t> characters(strValid.size());
    std::mbstate_t state{};
    const char* pFrom = strValid.data();
    char32_t* pTo = characters.data();
    std::use_facet<Utf8>(std::locale::classic())
        .in(state, pFrom, pFrom + strValid.size(), pFrom, pTo, pTo + characters.size(), pTo);
    std::wstring text(characters.data(), pTo);
    std::replace(text.begin(), text.end(), L'\0', static_cast<wchar_t>(Replacement));
    return {text.c_str()};
}

std::string ToUtf8(const KyString& text) {
    std::u32string characters(text.begin(), text.end());
    std::replace_if(
        characters.begin(), characters.end(), [](char32_t ch) { return !IsCharacter(ch); }, Replacement);
    std::string strText(4 * characters.size(), '\0');
    std::mbstate_t state{};
    const char32_t* pFrom = characters.data();
    char* pTo = strText.data();
    std::use_facet<Utf8>(std::locale::classic())
        .out(state, pFrom, pFrom + characters.size(), pFrom, pTo, pTo + strText.size(), pTo);
    strText.resize(static_cast<std::size_t>(pTo - strText.data()));
    return strText;
}

std::vector<std::string> SortedAsLabels(const std::vector<std::string>& names) {
    std::vector<KyString> labels;
    labels.reserve(names.size());
    for (const std::string& strName : names) {
        labels.push_back(InOneLine(FromUtf8(strName)));
    }
    std::sort(labels.begin(), labels.end(), ComesBefore);
    std::vector<std::string> sorted;
    sorted.reserve(labels.size());
    for (const KyString& label : labels) {
        sorted.push_back(ToUtf8(label));
    }
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    return sorted;
}

}  // namespace faces
