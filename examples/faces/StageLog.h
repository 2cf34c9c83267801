// Writes what the stages tell of themselves to a file, line by line, each with the milliseconds since the log
// was begun:
//
//     [       0.0 ms] read begins
//     [      58.1 ms] read ends after 58.0 ms
#pragma once

#include <chrono>
#include <string>

#include "VexaBase/event/KyScopedReactor.h"
#include "examples/faces/Events.h"
#include "examples/program/Descriptor.h"

namespace faces {

class StageLog : public KyEventReactor {
public:
    /// Begins the file anew. Throws FileError if it cannot be written, as React does.
    explicit StageLog(const std::string& strFile);

    void React(const wchar_t* pszName, void* pData) override;

private:
    void WriteLine(const std::string& strText);

    std::string m_strName;
    program::Descriptor m_file;
    std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
    bool m_bFailed = false;  // nothing is written any more
    KyScopedReactor m_registration{*this};
};

}  // namespace faces
