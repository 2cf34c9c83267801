// The events by which the program's stages tell of their progress. Whoever wants to know registers a reactor;
// the stages don't know of any.
#pragma once

#include "VexaBase/event/KyEventReactor.h"

namespace faces {

// Kinds of event, for the masks of reactors.
constexpr unsigned int StageMask = 0x1;  // StageBegins, StageEnds, WorkEnds, WorkFails
constexpr unsigned int PartMask = 0x2;   // PartDone

// Names, with what the data points at.
constexpr const wchar_t* StageBegins = L"stage begins";  // StageNews
constexpr const wchar_t* StageEnds = L"stage ends";      // StageNews
constexpr const wchar_t* PartDone = L"part done";        // double: how much of the stage, 0 to 1
constexpr const wchar_t* WorkEnds = L"work ends";        // nothing
constexpr const wchar_t* WorkFails = L"work fails";      // const char*: the reason

struct StageNews {
    const char* m_pszStage;
    int m_nStage;            // 1, 2, ...
    int m_nStages;           // how many there are, as far as is known
    double m_dMilliseconds;  // that the stage took, once it has ended
};

}  // namespace faces
