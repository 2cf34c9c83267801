#include "examples/faces/Utf8.h"

#include <algorithm>
#include <cwchar>

#include "VexaBase/string/CompareLabel.h"
#include "VexaBase/string/KyUtf8.h"

namespace faces {
namespace {

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

std::string ValidUtf8(const std::string& strText) { return KyToUtf8(KyFromUtf8(strText)); }

KyString FromUtf8(const std::string& strText) {
    KyString text = KyFromUtf8(strText);
    std::replace(text.begin(), text.end(), L'\0', KyReplacementCharacter);
    return text;
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
        sorted.push_back(KyToUtf8(label));
    }
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    return sorted;
}

}  // namespace faces
