// Tours on their way between populations, as bytes.
#pragma once

#include <memory>
#include <optional>

#include "VexaBase/stream/KyDynArrayStream.h"
#include "examples/tour/Tour.h"

namespace tour {

/// Writes a tour at the stream's position: a mark, the number of cities, the length, the cities.
void WriteMigrant(KyStream& stream, const Tour& tour);

/// Reads a whole stream as one tour of the instance. Nothing if it is anything else: a byte too few or too
/// many, another number of cities, a city that is missing, another length than the tour has.
std::optional<Order> ReadMigrant(KyStream& stream, const Instance& instance);

}  // namespace tour
