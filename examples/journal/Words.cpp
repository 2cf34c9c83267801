#include "examples/journal/Words.h"

#include <charconv>
#include <system_error>

namespace journal {
namespace {

constexpr const char* Spaces = " \t\r";

}  // namespace

void Words::SkipSpaces() { m_nPos = std::min(m_strLine.find_first_not_of(Spaces, m_nPos), m_strLine.size()); }

bool Words::HasMore() {
    SkipSpaces();
    if (m_nPos == m_strLine.size()) return false;
    if (m_strLine[m_nPos] != '#') return true;
    const bool bFirst = m_strLine.find_first_not_of(Spaces) == m_nPos;
    const bool bAlone =
        m_strLine.find_first_of(Spaces, m_nPos) == m_nPos + 1 || m_nPos + 1 == m_strLine.size();
    return !bFirst && !bAlone;
}

std::string Words::Next(What what) {
    if (!HasMore()) throw Refusal(std::string(what) + " is missing");
    const std::size_t nEnd = std::min(m_strLine.find_first_of(Spaces, m_nPos), m_strLine.size());
    std::string strWord = m_strLine.substr(m_nPos, nEnd - m_nPos);
    m_nPos = nEnd;
    return strWord;
}

double Words::NextNumber(What what) {
    const std::string strWord = Next(what);
    double d = 0;
    const auto [pEnd, error] = std::from_chars(strWord.data(), strWord.data() + strWord.size(), d);
    if (error != std::errc() || pEnd != strWord.data() + strWord.size()) {
        throw Refusal(std::string(what) + " is not a number: " + Quoted(strWord));
    }
    return d;
}

std::string Words::Rest(What what) {
    SkipSpaces();
    std::string strRest = m_strLine.substr(m_nPos);
    m_nPos = m_strLine.size();
    strRest.erase(strRest.find_last_not_of(Spaces) + 1);
    if (strRest.empty()) throw Refusal(std::string(what) + " is missing");
    return strRest;
}

void Words::End() {
    if (HasMore()) throw Refusal("there is more than expected: " + Quoted(Rest("the rest")));
}

}  // namespace journal
