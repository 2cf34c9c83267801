// What a tour is to be found for: cities and the distances between them.
#pragma once

#include <string>
#include <vector>

namespace tour {

struct Point {
    double x;
    double y;
};

/// How a distance follows from two points. The first four are the rules of the TSPLIB format, rounding
/// included.
enum class Metric {
    Euclidean,         // EUC_2D: to the nearest integer
    EuclideanCeiling,  // CEIL_2D: rounded up
    PseudoEuclidean,   // ATT
    Geographical,      // GEO: kilometres; x is the latitude and y the longitude, as degrees.minutes
    GreatCircle,       // kilometres, to the nearest; x is the longitude and y the latitude, in degrees
};

long Distance(Metric metric, Point a, Point b);

/// Where a picture shows the cities.
struct Places {
    std::vector<Point> m_points;  // one a city, none when nothing is known; x to the right, y upwards
    bool m_bGlobe = false;        // the points are longitudes and latitudes in degrees
};

class Instance {
public:
    static constexpr int MaxCities = 20000;

    /// Cities at points. Throws std::runtime_error when there is none, or too many, or two are too far apart
    /// for a distance, or one is not on the globe although the metric's points are.
    Instance(std::string strName, Metric metric, std::vector<Point> points);

    /// Cities known by their distances: the rows of a full symmetric matrix, one behind the other.
    Instance(std::string strName, int nCities, std::vector<int> distances, std::vector<Point> places);

    const std::string& Name() const { return m_strName; }
    int Cities() const { return m_nCities; }
    const Places& Map() const { return m_places; }

    long Distance(int a, int b) const {
        return m_matrix.empty() ? tour::Distance(m_metric, m_points[Index(a)], m_points[Index(b)])
                                : m_matrix[Index(a) * Index(m_nCities) + Index(b)];
    }

    /// The length of the closed tour through the cities in this order.
    long Length(const std::vector<int>& order) const;

    /// The k nearest other cities of each city, nearest first, one city's behind the other's. Requires k below the
    /// number of cities.
    std::vector<int> Neighbours(int k) const;

private:
    static std::size_t Index(int i) { return static_cast<std::size_t>(i); }
    void CheckSize() const;
    void CheckExtent() const;

    std::string m_strName;
    int m_nCities;
    Metric m_metric = Metric::Euclidean;
    std::vector<Point> m_points;
    std::vector<int> m_matrix;
    Places m_places;
};

}  // namespace tour
