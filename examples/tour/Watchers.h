// The program's ears on the event channel: one keeps the history for the picture, the others tell of the progress.
#pragma once

#include <unistd.h>

#include <cstdio>
#include <vector>

#include "VexaBase/event/KyScopedReactor.h"
#include "examples/tour/Tour.h"

namespace tour {

/// Keeps the progress of every generation.
class History : public KyEventReactor {
public:
    History() : KyEventReactor(GenerationMask) {}

    void React(const wchar_t*, void* pData) override {
        m_generations.push_back(*static_cast<Progress*>(pData));
    }

    std::vector<Progress> m_generations;

private:
    KyScopedReactor m_registration{*this};
};

/// Tells of every generation in a line of its own on standard error.
class Chronicle : public KyEventReactor {
public:
    Chronicle() : KyEventReactor(GenerationMask) {}

    void React(const wchar_t*, void* pData) override {
        const Progress& progress = *static_cast<Progress*>(pData);
        std::fprintf(stderr, "generation %ld: best %ld, mean %.1f\n", progress.m_nGeneration,
                     progress.m_nBest, progress.m_dMean);
    }

private:
    KyScopedReactor m_registration{*this};
};

/// Shows the progress in one line on standard error, which is wiped out at the end. Nothing if that is no
/// terminal.
class StatusLine : public KyEventReactor {
public:
    explicit StatusLine(bool bWanted)
        : KyEventReactor(ShorterTourMask | GenerationMask), m_bShown(bWanted && isatty(STDERR_FILENO) == 1) {}
    StatusLine(const StatusLine&) = delete;
    StatusLine& operator=(const StatusLine&) = delete;
    ~StatusLine() override {
        if (m_bShown) {
            std::fprintf(stderr, "\r%70s\r", "");
        }
    }

    void React(const wchar_t*, void* pData) override {
        if (m_bShown) {
            const Progress& progress = *static_cast<Progress*>(pData);
            std::fprintf(stderr, "\rgeneration %-8ld best %-12ld mean %-14.1f", progress.m_nGeneration,
                         progress.m_nBest, progress.m_dMean);
            std::fflush(stderr);
        }
    }

private:
    bool m_bShown;
    KyScopedReactor m_registration{*this};
};

}  // namespace tour
