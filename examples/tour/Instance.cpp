#include "examples/tour/Instance.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <stdexcept>

namespace tour {
namespace {

constexpr int MaxCitiesInMatrix = 4000;

/// From degrees.minutes.
double DegreesOf(double d) {
    const double dDegrees = std::trunc(d);
    return dDegrees + 5 * (d - dDegrees) / 3;
}

double Radians(double dDegrees, double dPi) { return dPi * dDegrees / 180; }

/// TSPLIB's own value of pi, radius and formula: other ones give other integers.
long GeographicalDistance(Point a, Point b) {
    constexpr double pi = 3.141592;
    constexpr double radius = 6378.388;
    const double dLatitudeA = Radians(DegreesOf(a.x), pi);
    const double dLatitudeB = Radians(DegreesOf(b.x), pi);
    const double q1 = std::cos(Radians(DegreesOf(a.y), pi) - Radians(DegreesOf(b.y), pi));
    const double q2 = std::cos(dLatitudeA - dLatitudeB);
    const double q3 = std::cos(dLatitudeA + dLatitudeB);
    const double dCosine = std::clamp(0.5 * ((1 + q1) * q2 - (1 - q1) * q3), -1.0, 1.0);
    return static_cast<long>(radius * std::acos(dCosine) + 1);
}

long GreatCircleDistance(Point a, Point b) {
    constexpr double meanRadius = 6371.0088;
    const double dSinX = std::sin(Radians(a.x - b.x, M_PI) / 2);
    const double dSinY = std::sin(Radians(a.y - b.y, M_PI) / 2);
    const double dHaversine =
        dSinY * dSinY + std::cos(Radians(a.y, M_PI)) * std::cos(Radians(b.y, M_PI)) * dSinX * dSinX;
    return std::lround(2 * meanRadius * std::asin(std::sqrt(std::min(dHaversine, 1.0))));
}

long PseudoEuclideanDistance(double dEuclidean) {
    const double d = dEuclidean / std::sqrt(10.0);
    const double dRounded = std::floor(d + 0.5);
    return static_cast<long>(dRounded < d ? dRounded + 1 : dRounded);
}

Places PlacesOf(Metric metric, const std::vector<Point>& points) {
    Places places{points, metric == Metric::Geographical || metric == Metric::GreatCircle};
    if (metric == Metric::Geographical) {
        for (Point& point : places.m_points) {
            point = {DegreesOf(point.y), DegreesOf(point.x)};
        }
    }
    return places;
}

}  // namespace

long Distance(Metric metric, Point a, Point b) {
    if (metric == Metric::Geographical) {
        return GeographicalDistance(a, b);
    }
    if (metric == Metric::GreatCircle) {
        return GreatCircleDistance(a, b);
    }
    const double dEuclidean = std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y));
    if (metric == Metric::PseudoEuclidean) {
        return PseudoEuclideanDistance(dEuclidean);
    }
    return static_cast<long>(metric == Metric::EuclideanCeiling ? std::ceil(dEuclidean)
                                                                : std::floor(dEuclidean + 0.5));
}

Instance::Instance(std::string strName, Metric metric, std::vector<Point> points)
    : m_strName(std::move(strName)),
      m_nCities(static_cast<int>(std::min<std::size_t>(points.size(), MaxCities + 1))),
      m_metric(metric),
      m_points(std::move(points)),
      m_places(PlacesOf(metric, m_points)) {
    CheckSize();
    CheckExtent();
    if (m_nCities > MaxCitiesInMatrix) {
        return;
    }
    m_matrix.resize(Index(m_nCities) * Index(m_nCities));
    for (int a = 0; a < m_nCities; ++a) {
        for (int b = 0; b < a; ++b) {
            const auto nDistance =
                static_cast<int>(tour::Distance(metric, m_points[Index(a)], m_points[Index(b)]));
            m_matrix[Index(a) * Index(m_nCities) + Index(b)] = nDistance;
            m_matrix[Index(b) * Index(m_nCities) + Index(a)] = nDistance;
        }
    }
}

Instance::Instance(std::string strName, int nCities, std::vector<int> distances, std::vector<Point> places)
    : m_strName(std::move(strName)),
      m_nCities(nCities),
      m_matrix(std::move(distances)),
      m_places{std::move(places), false} {
    CheckSize();
}

long Instance::Length(const std::vector<int>& order) const {
    long nLength = order.empty() ? 0 : Distance(order.back(), order.front());
    for (std::size_t i = 1; i < order.size(); ++i) {
        nLength += Distance(order[i - 1], order[i]);
    }
    return nLength;
}

std::vector<int> Instance::Neighbours(int k) const {
    std::vector<int> neighbours;
    neighbours.reserve(Index(m_nCities) * Index(k));
    std::vector<std::pair<long, int>> others;
    for (int city = 0; city < m_nCities; ++city) {
        others.clear();
        for (int other = 0; other < m_nCities; ++other) {
            if (other != city) {
                others.emplace_back(Distance(city, other), other);
            }
        }
        std::partial_sort(others.begin(), others.begin() + k, others.end());
        std::transform(others.begin(), others.begin() + k, std::back_inserter(neighbours),
                       [](const auto& other) { return other.second; });
    }
    return neighbours;
}

void Instance::CheckSize() const {
    if (m_nCities < 1) {
        throw std::runtime_error("there is no city");
    }
    if (m_nCities > MaxCities) {
        throw std::runtime_error("there are more than " + std::to_string(MaxCities) + " cities");
    }
}

/// Makes sure that every distance fits an int.
void Instance::CheckExtent() const {
    if (m_places.m_bGlobe) {
        const auto isAngle = [](double d) { return std::abs(d) <= 360; };
        if (!std::all_of(m_points.begin(), m_points.end(),
                         [&](Point point) { return isAngle(point.x) && isAngle(point.y); })) {
            throw std::runtime_error("a city is not on the globe");
        }
        return;
    }
    const auto [pLeft, pRight] =
        std::minmax_element(m_points.begin(), m_points.end(), [](Point a, Point b) { return a.x < b.x; });
    const auto [pLow, pHigh] =
        std::minmax_element(m_points.begin(), m_points.end(), [](Point a, Point b) { return a.y < b.y; });
    if (!(std::hypot(pRight->x - pLeft->x, pHigh->y - pLow->y) < std::numeric_limits<int>::max() - 1)) {
        throw std::runtime_error("the cities are too far apart");
    }
}

}  // namespace tour
