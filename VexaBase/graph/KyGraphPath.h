// A path through a planar graph: an ordered list of arcs, which it does not own, and the node at which it
// begins.
#pragma once

#include "VexaBase/containers/KyDList.h"
#include "VexaBase/graph/KyGraphArc.h"

class KY_API KyGraphPath : public KyDList<KyGraphArc*> {
public:
    KyGraphPath();
    ~KyGraphPath() override;

    KyGraphNode* m_pBeginNode = nullptr;  // the node from which the first arc is entered; not owned
};
