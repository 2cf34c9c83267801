#include "VexaBase/graph/KyGraphPath.h"

KyGraphPath::KyGraphPath() = default;

KyGraphPath::~KyGraphPath() = default;
