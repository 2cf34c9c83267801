#include "VexaBase/task/KyPlatform.h"

bool IsWow64() { return false; }

bool IsOS64() { return true; }
