#include "examples/tour/Migration.h"

namespace tour {
namespace {

constexpr long Mark = 0x52554f5441584556;  // VEXATOUR

long BytesOf(int nCities) { return static_cast<long>(sizeof(long)) * (3 + nCities); }

}  // namespace

void WriteMigrant(KyStream& stream, const Tour& tour) {
    const Order order = tour.Cities();
    stream << Mark << static_cast<long>(order.size()) << tour.Total();
    for (const int city : order) {
        stream << static_cast<long>(city);
    }
}

std::optional<Order> ReadMigrant(KyStream& stream, const Instance& instance) {
    if (stream.GetLength() != BytesOf(instance.Cities())) {
        return std::nullopt;
    }
    stream.MoveTo(0);
    long nMark = 0;
    long nCities = 0;
    long nTotal = 0;
    stream >> nMark >> nCities >> nTotal;
    if (nMark != Mark || nCities != instance.Cities()) {
        return std::nullopt;
    }
    Order order;
    std::vector<bool> isThere(static_cast<std::size_t>(nCities), false);
    for (long i = 0; i < nCities; ++i) {
        long nCity = 0;
        stream >> nCity;
        if (nCity < 0 || nCity >= nCities || isThere[static_cast<std::size_t>(nCity)]) {
            return std::nullopt;
        }
        isThere[static_cast<std::size_t>(nCity)] = true;
        order.push_back(static_cast<int>(nCity));
    }
    if (instance.Length(order) != nTotal) {
        return std::nullopt;
    }
    return order;
}

}  // namespace tour
