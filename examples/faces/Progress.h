// A progress bar on standard error, in one line that is wiped out at the end. None if standard error is no
// terminal.
#pragma once

#include <unistd.h>

#include <cstdio>
#include <string>

namespace faces {

class Progress {
public:
    /// Of a work of so many stages.
    Progress(bool bWanted, int nStages)
        : m_bShown(bWanted && isatty(STDERR_FILENO) == 1), m_nStages(nStages) {}
    ~Progress() { Clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Begins the next stage.
    void Next(const std::string& strStage) {
        ++m_nStage;
        m_strStage = strStage;
        Show(0);
    }

    /// Shows how much of the stage is done, 0 to 1.
    void Show(double dDone) {
        if (!m_bShown) return;
        constexpr int width = 40;
        const int nFull = static_cast<int>(width * (m_nStage - 1 + dDone) / m_nStages);
        const std::string strBar = std::string(static_cast<std::size_t>(nFull), '#') +
                                   std::string(static_cast<std::size_t>(width - nFull), '.');
        std::fprintf(stderr, "\r[%s] %-12s", strBar.c_str(), m_strStage.c_str());
        std::fflush(stderr);
    }

    void Clear() {
        if (m_bShown) std::fprintf(stderr, "\r%60s\r", "");
        m_bShown = false;
    }

private:
    bool m_bShown;
    int m_nStages;
    int m_nStage = 0;
    std::string m_strStage;
};

}  // namespace faces
