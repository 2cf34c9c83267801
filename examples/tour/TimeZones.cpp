#include "examples/tour/TimeZones.h"

#include <algorithm>
#include <optional>
#include <sstream>

#include "examples/tour/TsplibFile.h"

namespace tour {
namespace {

/// A sign and two to three digits of degrees, two of minutes, two or none of seconds. In degrees, nothing if
/// it is not that.
std::optional<double> Angle(const std::string& str, std::size_t nDegreeDigits, int nMaxDegrees) {
    const bool bSeconds = str.size() == 1 + nDegreeDigits + 4;
    const bool bDigits = str.size() > 1 &&
                         std::all_of(str.begin() + 1, str.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (!bDigits || (!bSeconds && str.size() != 1 + nDegreeDigits + 2)) {
        return std::nullopt;
    }
    const int nMinutes = std::stoi(str.substr(1 + nDegreeDigits, 2));
    const int nSeconds = bSeconds ? std::stoi(str.substr(3 + nDegreeDigits, 2)) : 0;
    const double d = std::stoi(str.substr(1, nDegreeDigits)) + nMinutes / 60.0 + nSeconds / 3600.0;
    if (nMinutes > 59 || nSeconds > 59 || d > nMaxDegrees) {
        return std::nullopt;
    }
    return str[0] == '-' ? -d : d;
}

/// ISO 6709: ±DDMM±DDDMM or ±DDMMSS±DDDMMSS, the latitude first.
std::optional<Point> Coordinates(const std::string& str) {
    const auto nSecondSign = str.find_first_of("+-", 1);
    if (nSecondSign == std::string::npos || (str[0] != '+' && str[0] != '-')) {
        return std::nullopt;
    }
    const auto latitude = Angle(str.substr(0, nSecondSign), 2, 90);
    const auto longitude = Angle(str.substr(nSecondSign), 3, 180);
    if (!latitude || !longitude) {
        return std::nullopt;
    }
    return Point{*longitude, *latitude};
}

}  // namespace

Instance ReadTimeZones(const std::string& strText) {
    std::vector<Point> points;
    std::istringstream lines(strText);
    std::string strLine;
    for (long nLine = 1; std::getline(lines, strLine); ++nLine) {
        if (strLine.empty() || strLine[0] == '#') {
            continue;
        }
        std::istringstream columns(strLine);
        std::string strCountries;
        std::string strCoordinates;
        std::getline(columns, strCountries, '\t');
        std::getline(columns, strCoordinates, '\t');
        const std::optional<Point> point = Coordinates(strCoordinates);
        if (!point) {
            throw FormatError("line " + std::to_string(nLine) +
                              ": the second column is no pair of coordinates");
        }
        points.push_back(*point);
    }
    if (points.empty()) {
        throw FormatError("there is no time zone");
    }
    return {"time-zones", Metric::GreatCircle, std::move(points)};
}

}  // namespace tour
