// The reading of instances and of time-zone tables: bytes are refused in one line, or give cities whose distances are
// sound and whose tour is written.
//
// What begins with a # or with a country's code is read as a table, anything else as an instance.

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numeric>
#include <string>
#include <vector>

#include "ByteSource.h"
#include "examples/tour/TimeZones.h"
#include "examples/tour/TsplibFile.h"

namespace {

using tour::Instance;

bool IsTable(const std::string& strText) {
    return !strText.empty() && (strText[0] == '#' || (strText.size() > 2 && strText[2] == '\t'));
}

void CheckTour(const Instance& instance, const std::vector<int>& order) {
    const std::string strTour = TsplibTour(instance, order);
    const std::string strHead =
        "NAME : " + instance.Name() + ".tour\nCOMMENT : Length " + std::to_string(instance.Length(order)) +
        "\nTYPE : TOUR\nDIMENSION : " + std::to_string(order.size()) + "\nTOUR_SECTION\n1\n";
    FUZZ_CHECK(strTour.compare(0, strHead.size(), strHead) == 0);
    // The same tour from another city on, and the other way round.
    std::vector<int> other(order.rbegin(), order.rend());
    std::rotate(other.begin(), other.begin() + static_cast<long>(other.size() / 2), other.end());
    FUZZ_CHECK(TsplibTour(instance, other) == strTour);
}

void CheckInstance(const Instance& instance) {
    const int nCities = instance.Cities();
    FUZZ_CHECK(nCities >= 1 && nCities <= Instance::MaxCities);
    FUZZ_CHECK(instance.Name().find('\n') == std::string::npos);
    FUZZ_CHECK(instance.Map().m_points.empty() ||
               instance.Map().m_points.size() == static_cast<std::size_t>(nCities));
    const int nChecked = std::min(nCities, 100);
    for (int a = 0; a < nChecked; ++a) {
        for (int b = 0; b < a; ++b) {
            const long nDistance = instance.Distance(a, b);
            FUZZ_CHECK(nDistance >= 0 && nDistance <= std::numeric_limits<int>::max());
            FUZZ_CHECK(instance.Distance(b, a) == nDistance);
        }
    }
    std::vector<int> order(static_cast<std::size_t>(nCities));
    std::iota(order.begin(), order.end(), 0);
    CheckTour(instance, order);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
    const std::string strText(reinterpret_cast<const char*>(pData), nSize);
    try {
        CheckInstance(IsTable(strText) ? tour::ReadTimeZones(strText) : tour::ReadTsplib(strText, "cities"));
    } catch (const tour::FormatError& error) {
        const std::string strReason = error.what();
        FUZZ_CHECK(!strReason.empty());
        FUZZ_CHECK(
            std::none_of(strReason.begin(), strReason.end(), [](char ch) { return ch >= 0 && ch < ' '; }));
    }
    return 0;
}
