// A progress bar on standard error, in one line that is wiped out at the end. None if standard error is no
// terminal.
#pragma once

#include <unistd.h>

#include <cstdio>
#include <string>
#include <string_view>

#include "VexaBase/event/KyScopedReactor.h"
#include "examples/faces/Events.h"

namespace faces {

class ProgressBar : public KyEventReactor {
public:
    explicit ProgressBar(bool bWanted)
        : KyEventReactor(StageMask | PartMask), m_bShown(bWanted && isatty(STDERR_FILENO) == 1) {}
    ~ProgressBar() override { Clear(); }
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void React(const wchar_t* pszName, void* pData) override {
        const std::wstring_view name = pszName;
        if (name == StageBegins) {
            m_news = *static_cast<StageNews*>(pData);
            Show(0);
        } else if (name == PartDone) {
            Show(*static_cast<double*>(pData));
        } else if (name == WorkEnds || name == WorkFails) {
            Clear();
        }
    }

private:
    void Show(double dDone) const {
        if (!m_bShown || m_news.m_nStages == 0) return;
        constexpr int width = 40;
        const int nFull = static_cast<int>(width * (m_news.m_nStage - 1 + dDone) / m_news.m_nStages);
        const std::string strBar = std::string(static_cast<std::size_t>(nFull), '#') +
                                   std::string(static_cast<std::size_t>(width - nFull), '.');
        std::fprintf(stderr, "\r[%s] %-12s", strBar.c_str(), m_news.m_pszStage);
        std::fflush(stderr);
    }

    void Clear() {
        if (m_bShown) std::fprintf(stderr, "\r%60s\r", "");
        m_bShown = false;
    }

    bool m_bShown;
    StageNews m_news{"", 0, 0, 0};
    KyScopedReactor m_registration{*this};
};

}  // namespace faces
