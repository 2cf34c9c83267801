#include "examples/tour/TsplibFile.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <optional>

namespace tour {
namespace {

const std::map<std::string, Metric> Metrics = {{"EUC_2D", Metric::Euclidean},
                                               {"CEIL_2D", Metric::EuclideanCeiling},
                                               {"GEO", Metric::Geographical},
                                               {"ATT", Metric::PseudoEuclidean}};

/// Which entries of a matrix stand in a file: of row i those from m_nFirst(i, n) to before m_nEnd(i, n).
struct MatrixFormat {
    std::function<int(int, int)> m_first;
    std::function<int(int, int)> m_end;
};

/// A symmetric matrix by columns is its transpose by rows.
const std::map<std::string, MatrixFormat> MatrixFormats = [] {
    const auto zero = [](int, int) { return 0; };
    const auto row = [](int i, int) { return i; };
    const auto behindRow = [](int i, int) { return i + 1; };
    const auto all = [](int, int n) { return n; };
    const MatrixFormat upper = {behindRow, all};
    const MatrixFormat upperWithDiagonal = {row, all};
    const MatrixFormat lower = {zero, row};
    const MatrixFormat lowerWithDiagonal = {zero, behindRow};
    return std::map<std::string, MatrixFormat>{{"FULL_MATRIX", {zero, all}},
                                               {"UPPER_ROW", upper},
                                               {"LOWER_COL", upper},
                                               {"UPPER_DIAG_ROW", upperWithDiagonal},
                                               {"LOWER_DIAG_COL", upperWithDiagonal},
                                               {"LOWER_ROW", lower},
                                               {"UPPER_COL", lower},
                                               {"LOWER_DIAG_ROW", lowerWithDiagonal},
                                               {"UPPER_DIAG_COL", lowerWithDiagonal}};
}();

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v'; }

std::string Trimmed(const std::string& str) {
    const auto first = std::find_if_not(str.begin(), str.end(), IsSpace);
    const auto last = std::find_if_not(str.rbegin(), std::make_reverse_iterator(first), IsSpace);
    return {first, last.base()};
}

/// For a message: short, and nothing that a terminal would obey.
std::string Quoted(std::string str) {
    constexpr std::size_t longest = 40;
    if (str.size() > longest) {
        str.resize(longest);
        str += "...";
    }
    std::replace_if(
        str.begin(), str.end(), [](char c) { return c >= 0 && c < ' '; }, '?');
    return "'" + str + "'";
}

class Reader {
public:
    Reader(const std::string& strText, std::string strName)
        : m_strText(strText), m_strName(std::move(strName)) {}

    Instance Read() {
        while (const std::optional<std::string> line = NextLine()) {
            const auto nColon = line->find(':');
            const std::string strKey = Trimmed(line->substr(0, nColon));
            if (strKey == "EOF") {
                break;
            }
            if (nColon == std::string::npos || strKey == "NODE_COORD_SECTION" ||
                strKey == "DISPLAY_DATA_SECTION" || strKey == "EDGE_WEIGHT_SECTION") {
                ReadSection(strKey);
            } else {
                ReadSetting(strKey, Trimmed(line->substr(nColon + 1)));
            }
        }
        return Made();
    }

private:
    /// Names the line of what was read last.
    [[noreturn]] void Fail(const std::string& strWhat) const {
        const auto nLine =
            1 + std::count(m_strText.begin(), m_strText.begin() + static_cast<long>(m_nRead), '\n');
        throw FormatError("line " + std::to_string(nLine) + ": " + strWhat);
    }

    /// The next line with something in it.
    std::optional<std::string> NextLine() {
        while (m_nAt < m_strText.size()) {
            const std::size_t nEnd = std::min(m_strText.find('\n', m_nAt), m_strText.size());
            std::string strLine = Trimmed(m_strText.substr(m_nAt, nEnd - m_nAt));
            m_nRead = m_nAt;
            m_nAt = std::min(nEnd + 1, m_strText.size());
            if (!strLine.empty()) {
                return strLine;
            }
        }
        return std::nullopt;
    }

    /// The next word, wherever the lines end.
    std::string NextWord(const char* pszWanted) {
        const auto begin =
            std::find_if_not(m_strText.begin() + static_cast<long>(m_nAt), m_strText.end(), IsSpace);
        const auto end = std::find_if(begin, m_strText.end(), IsSpace);
        if (begin == end) {
            Fail(std::string("the file ends where ") + pszWanted + " should stand");
        }
        m_nRead = static_cast<std::size_t>(begin - m_strText.begin());
        m_nAt = static_cast<std::size_t>(end - m_strText.begin());
        return {begin, end};
    }

    double NextNumber(const char* pszWanted) {
        const std::string strWord = NextWord(pszWanted);
        const std::size_t nSign = strWord[0] == '+' ? 1 : 0;
        double d = 0;
        const char* const pEnd = strWord.data() + strWord.size();
        const auto [p, error] = std::from_chars(strWord.data() + nSign, pEnd, d);
        if (error != std::errc() || p != pEnd || !std::isfinite(d)) {
            Fail(Quoted(strWord) + " is not " + pszWanted);
        }
        return d;
    }

    int NextInteger(const char* pszWanted, int nFirst, int nLast) {
        const double d = NextNumber(pszWanted);
        if (d != std::floor(d) || d < nFirst || d > nLast) {
            Fail(std::string(pszWanted) + " from " + std::to_string(nFirst) + " to " + std::to_string(nLast) +
                 " is wanted");
        }
        return static_cast<int>(d);
    }

    void ReadSetting(const std::string& strKey, const std::string& strValue) {
        if (strKey == "NAME") {
            m_strName = strValue;
        } else if (strKey == "TYPE") {
            // Some files say more behind it.
            if (strValue.substr(0, strValue.find_first_of(" \t")) != "TSP") {
                Fail("TYPE " + Quoted(strValue) + " is not TSP");
            }
        } else if (strKey == "DIMENSION") {
            ReadDimension(strValue);
        } else if (strKey == "EDGE_WEIGHT_TYPE") {
            m_strWeightType = strValue;
            if (strValue != "EXPLICIT" && Metrics.count(strValue) == 0) {
                Fail("EDGE_WEIGHT_TYPE " + Quoted(strValue) +
                     " is not EUC_2D, CEIL_2D, GEO, ATT or EXPLICIT");
            }
        } else if (strKey == "EDGE_WEIGHT_FORMAT") {
            m_strFormat = strValue;
        } else if (strKey != "COMMENT" && strKey != "NODE_COORD_TYPE" && strKey != "DISPLAY_DATA_TYPE") {
            Fail(Quoted(strKey) + " is not known");
        }
    }

    void ReadDimension(const std::string& strValue) {
        int n = 0;
        const char* const pEnd = strValue.data() + strValue.size();
        const auto [p, error] = std::from_chars(strValue.data(), pEnd, n);
        if (error != std::errc() || p != pEnd || n < 1 || n > Instance::MaxCities) {
            Fail("DIMENSION " + Quoted(strValue) + " is not from 1 to " +
                 std::to_string(Instance::MaxCities));
        }
        if (m_nCities != 0 && m_nCities != n) {
            Fail("a second DIMENSION");
        }
        m_nCities = n;
    }

    void ReadSection(const std::string& strKey) {
        const bool bWeights = strKey == "EDGE_WEIGHT_SECTION";
        if (!bWeights && strKey != "NODE_COORD_SECTION" && strKey != "DISPLAY_DATA_SECTION") {
            Fail(Quoted(strKey) + " is not known");
        }
        if (m_nCities == 0) {
            Fail(strKey + " stands before DIMENSION");
        }
        if (bWeights) {
            ReadWeights();
        } else {
            (strKey == "NODE_COORD_SECTION" ? m_points : m_display) = ReadPoints();
        }
    }

    std::vector<Point> ReadPoints() {
        const auto n = static_cast<std::size_t>(m_nCities);
        std::vector<Point> points(n);
        std::vector<bool> isGiven(n, false);
        for (std::size_t i = 0; i < n; ++i) {
            const auto nCity = static_cast<std::size_t>(NextInteger("the number of a city", 1, m_nCities));
            if (isGiven[nCity - 1]) {
                Fail("city " + std::to_string(nCity) + " stands there twice");
            }
            isGiven[nCity - 1] = true;
            const double x = NextNumber("a coordinate");
            points[nCity - 1] = {x, NextNumber("a coordinate")};
        }
        return points;
    }

    void ReadWeights() {
        const auto format = MatrixFormats.find(m_strFormat);
        if (format == MatrixFormats.end()) {
            Fail("EDGE_WEIGHT_FORMAT " + Quoted(m_strFormat) + " is no matrix that this program reads");
        }
        const auto n = static_cast<std::size_t>(m_nCities);
        constexpr int none = -1;
        m_matrix.clear();
        for (int i = 0; i < m_nCities; ++i) {
            // Row by row: a file may claim more cities than it has distances for.
            m_matrix.resize(m_matrix.size() + n, none);
            for (int j = format->second.m_first(i, m_nCities); j < format->second.m_end(i, m_nCities); ++j) {
                // So that a tour's length fits whatever the file says.
                const int nDistance = NextInteger("a distance", 0, std::numeric_limits<int>::max());
                const auto nHere = static_cast<std::size_t>(i) * n + static_cast<std::size_t>(j);
                const auto nThere = static_cast<std::size_t>(j) * n + static_cast<std::size_t>(i);
                if (j < i && m_matrix[nThere] != none && m_matrix[nThere] != nDistance) {
                    Fail("the distance from city " + std::to_string(i + 1) + " to " + std::to_string(j + 1) +
                         " is another one than back");
                }
                m_matrix[nHere] = nDistance;
            }
        }
        for (std::size_t i = 0; i < n; ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                int& nLower = m_matrix[i * n + j];
                int& nUpper = m_matrix[j * n + i];
                nLower = nUpper = nLower != none ? nLower : nUpper;
            }
            m_matrix[i * n + i] = 0;
        }
    }

    Instance Made() {
        if (m_nCities == 0) {
            throw FormatError("there is no DIMENSION");
        }
        if (m_strWeightType.empty()) {
            throw FormatError("there is no EDGE_WEIGHT_TYPE");
        }
        try {
            if (m_strWeightType == "EXPLICIT") {
                if (m_matrix.empty()) {
                    throw FormatError("there is no EDGE_WEIGHT_SECTION");
                }
                return {m_strName, m_nCities, std::move(m_matrix),
                        std::move(m_display.empty() ? m_points : m_display)};
            }
            if (m_points.empty()) {
                throw FormatError("there is no NODE_COORD_SECTION");
            }
            return {m_strName, Metrics.at(m_strWeightType), std::move(m_points)};
        } catch (const FormatError&) {
            throw;
        } catch (const std::runtime_error& error) {
            throw FormatError(error.what());
        }
    }

    const std::string& m_strText;
    std::size_t m_nAt = 0;    // where reading goes on
    std::size_t m_nRead = 0;  // where the last word or line that was read begins

    std::string m_strName;
    std::string m_strWeightType;
    std::string m_strFormat;
    int m_nCities = 0;
    std::vector<Point> m_points;
    std::vector<Point> m_display;
    std::vector<int> m_matrix;
};

}  // namespace

Instance ReadTsplib(const std::string& strText, const std::string& strName) {
    return Reader(strText, strName).Read();
}

std::string TsplibTour(const Instance& instance, std::vector<int> order) {
    std::rotate(order.begin(), std::find(order.begin(), order.end(), 0), order.end());
    if (order.size() > 2 && order.back() < order[1]) {
        std::reverse(order.begin() + 1, order.end());
    }
    std::string strFile = "NAME : " + instance.Name() + ".tour\nCOMMENT : Length " +
                          std::to_string(instance.Length(order)) +
                          "\nTYPE : TOUR\nDIMENSION : " + std::to_string(order.size()) + "\nTOUR_SECTION\n";
    for (const int city : order) {
        strFile += std::to_string(city + 1) + '\n';
    }
    return strFile + "-1\nEOF\n";
}

}  // namespace tour
