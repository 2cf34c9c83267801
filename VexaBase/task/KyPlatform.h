// Two questions about the platform, answered when the library is built: it is a 64-bit library. Nothing is
// asked of the system.
#pragma once

#include "VexaBase/KyConfig.h"

/// Whether this is a 32-bit process on a 64-bit system: false.
KY_API bool IsWow64();

/// Whether the operating system is 64-bit: true.
KY_API bool IsOS64();
