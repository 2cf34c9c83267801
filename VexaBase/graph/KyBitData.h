// The common base of the planar graph's nodes and arcs: a word of flag bits for the application.
#pragma once

#include "VexaBase/KyConfig.h"

class KY_API KyBitData {
public:
    virtual ~KyBitData() = default;

    /// The application's marks (visited, selected, ...); the library neither reads nor writes them.
    unsigned long m_nBits = 0;
};
