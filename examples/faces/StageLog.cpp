#include "examples/faces/StageLog.h"

#include <fcntl.h>

#include <array>
#include <cstdio>
#include <string_view>

#include "examples/program/FileError.h"

namespace faces {
namespace {

std::string WithOneDecimal(const char* pszFormat, double d) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), pszFormat, d);
    return text.data();
}

int OpenAnew(const std::string& strFile) {
    const int nDescriptor = ::open(strFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (nDescriptor < 0) throw program::FileError(strFile, std::generic_category().message(errno));
    return nDescriptor;
}

}  // namespace

StageLog::StageLog(const std::string& strFile)
    : KyEventReactor(StageMask), m_strName(strFile), m_file(OpenAnew(strFile)) {}

void StageLog::React(const wchar_t* pszName, void* pData) {
    const std::wstring_view name = pszName;
    if (name == StageBegins) {
        WriteLine(std::string(static_cast<StageNews*>(pData)->m_pszStage) + " begins");
    } else if (name == StageEnds) {
        const StageNews& news = *static_cast<StageNews*>(pData);
        WriteLine(std::string(news.m_pszStage) + " ends after " +
                  WithOneDecimal("%.1f ms", news.m_dMilliseconds));
    } else if (name == WorkEnds) {
        WriteLine("done");
    } else if (name == WorkFails) {
        WriteLine(std::string("failed: ") + static_cast<const char*>(pData));
    }
}

void StageLog::WriteLine(const std::string& strText) {
    if (m_bFailed) return;
    const std::chrono::duration<double, std::milli> since = std::chrono::steady_clock::now() - m_begin;
    try {
        m_file.Write(WithOneDecimal("[%10.1f ms] ", since.count()) + strText + "\n");
    } catch (const std::exception& error) {
        m_bFailed = true;
        throw program::FileError(m_strName, error.what());
    }
}

}  // namespace faces
