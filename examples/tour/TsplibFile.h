// The TSPLIB format: instances are read, tours are written.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "examples/tour/Instance.h"

namespace tour {

/// What is wrong with a file, in one line, led by the number of the line it was found in where there is one.
class FormatError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads a symmetric instance (TYPE: TSP) with the weights EUC_2D, CEIL_2D, GEO or ATT, or an EXPLICIT
/// matrix: full, upper or lower, by rows or by columns, with the diagonal or without. strName names what has
/// no NAME. Throws FormatError.
Instance ReadTsplib(const std::string& strText, const std::string& strName);

/// A tour file (TYPE: TOUR) of the cities in this order. It begins with the first city and goes towards the
/// lower of that one's two neighbours, so that one tour has one file.
std::string TsplibTour(const Instance& instance, std::vector<int> order);

}  // namespace tour
