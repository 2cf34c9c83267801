// Runs the stages of the work one by one, takes their times, and tells of them by events.
#pragma once

#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "examples/faces/Events.h"

namespace faces {

class Stages {
public:
    explicit Stages(int nStages) : m_nStages(nStages) {}

    template <class Work>
    auto Run(const char* pszStage, const Work& work) {
        StageNews news{pszStage, ++m_nStage, m_nStages, 0};
        KySendEvent(StageBegins, &news, StageMask);
        const auto begin = std::chrono::steady_clock::now();
        auto result = work();
        const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - begin;
        m_times.emplace_back(pszStage, taken.count());
        news.m_dMilliseconds = taken.count();
        KySendEvent(StageEnds, &news, StageMask);
        return result;
    }

    int m_nStages;                                        // may become known better on the way
    std::vector<std::pair<std::string, double>> m_times;  // of the stages that ended, in milliseconds

private:
    int m_nStage = 0;
};

}  // namespace faces
