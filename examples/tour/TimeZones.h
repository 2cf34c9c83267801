// The cities of the time-zone database, as the tzdata package installs them.
#pragma once

#include <string>

#include "examples/tour/Instance.h"

namespace tour {

/// Where the package puts its table.
inline constexpr const char* TimeZoneTable = "/usr/share/zoneinfo/zone1970.tab";

/// Reads a table of time zones: the principal city of each, with great-circle distances. Throws FormatError.
Instance ReadTimeZones(const std::string& strText);

}  // namespace tour
