// The channel's own objects, for programs that are built from the library's sources: the shared library hides
// them.
#pragma once

#include "VexaBase/containers/KyDList.h"
#include "VexaBase/containers/KyQuene.h"
#include "VexaBase/event/KyEventReactor.h"

extern KyPDListQuene<KyEvent> g_queneEvent;
extern KyDList<KyEventReactor*> g_lstReactor;
