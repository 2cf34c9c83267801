#include "examples/tour/Picture.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

#include "examples/program/XmlText.h"

namespace tour {
namespace {

constexpr double PageWidth = 1440;
constexpr double Margin = 40;
constexpr double PanelTop = 104;
constexpr double MapWidth = 880;
constexpr double MaxMapHeight = 760;
constexpr double ChartLeft = Margin + MapWidth + 110;
constexpr double ChartRight = PageWidth - Margin;
constexpr double MinChartHeight = 360;
constexpr double Infinity = std::numeric_limits<double>::infinity();

constexpr const char* Paper = "#fbfaf7";
constexpr const char* Ink = "#2b2f36";
constexpr const char* FaintInk = "#6b7280";
constexpr const char* GridInk = "#e3e1da";
constexpr const char* TourInk = "#1f6feb";
constexpr const char* CityInk = "#c2410c";
constexpr const char* MeanInk = "#d97706";

std::string Number(double d) {
    char sz[32];
    std::snprintf(sz, sizeof(sz), "%.2f", d);
    return sz;
}

/// 1234567 as 1 234 567.
std::string Grouped(long n) {
    std::string str = std::to_string(n);
    for (auto i = static_cast<long>(str.size()) - 3; i > (n < 0 ? 1 : 0); i -= 3) {
        str.insert(static_cast<std::size_t>(i), " ");
    }
    return str;
}

/// A step of 1, 2 or 5 times a power of ten that divides the range into five parts or so.
double TickStep(double dRange) {
    const double dRough = std::max(dRange / 5, 1.0);
    const double dPower = std::pow(10, std::floor(std::log10(dRough)));
    for (const double dFactor : {1, 2, 5}) {
        if (dFactor * dPower >= dRough) {
            return dFactor * dPower;
        }
    }
    return 10 * dPower;
}

/// Points on the great circle from a to b, both included, a few degrees apart.
std::vector<Point> GreatCircle(Point a, Point b) {
    const auto vector = [](Point p, double xyz[3]) {
        const double dLongitude = p.x * M_PI / 180;
        const double dLatitude = p.y * M_PI / 180;
        xyz[0] = std::cos(dLatitude) * std::cos(dLongitude);
        xyz[1] = std::cos(dLatitude) * std::sin(dLongitude);
        xyz[2] = std::sin(dLatitude);
    };
    double from[3];
    double to[3];
    vector(a, from);
    vector(b, to);
    const double dAngle =
        std::acos(std::clamp(from[0] * to[0] + from[1] * to[1] + from[2] * to[2], -1.0, 1.0));
    std::vector<Point> points = {a};
    const int nParts = static_cast<int>(std::ceil(dAngle * 180 / M_PI / 2));
    // Antipodes have no great circle of their own.
    for (int i = 1; i < nParts && std::sin(dAngle) > 1e-6; ++i) {
        const double dFrom = std::sin(dAngle * (nParts - i) / nParts) / std::sin(dAngle);
        const double dTo = std::sin(dAngle * i / nParts) / std::sin(dAngle);
        const double x = dFrom * from[0] + dTo * to[0];
        const double y = dFrom * from[1] + dTo * to[1];
        const double z = dFrom * from[2] + dTo * to[2];
        points.push_back({std::atan2(y, x) * 180 / M_PI, std::atan2(z, std::hypot(x, y)) * 180 / M_PI});
    }
    points.push_back(b);
    return points;
}

/// The part of the plane that the map shows.
struct Extent {
    double m_dLeft = Infinity;
    double m_dRight = -Infinity;
    double m_dLow = Infinity;
    double m_dHigh = -Infinity;

    explicit Extent(const Places& places) {
        for (const Point point : places.m_points) {
            m_dLeft = std::min(m_dLeft, point.x);
            m_dRight = std::max(m_dRight, point.x);
            m_dLow = std::min(m_dLow, point.y);
            m_dHigh = std::max(m_dHigh, point.y);
        }
        if (places.m_bGlobe && m_dRight - m_dLeft > 180) {
            m_dLeft = -180;
            m_dRight = 180;
            m_dLow = std::max(m_dLow - 5, -90.0);
            m_dHigh = std::min(m_dHigh + 5, 90.0);
        }
    }
};

class Drawing {
public:
    explicit Drawing(const Picture& picture) : m_picture(picture), m_extent(picture.m_instance.Map()) {
        const double dWidth = std::max(m_extent.m_dRight - m_extent.m_dLeft, 1e-9);
        const double dHeight = std::max(m_extent.m_dHigh - m_extent.m_dLow, 1e-9);
        m_dScale = std::min(MapWidth / dWidth, MaxMapHeight / dHeight);
        m_dMapHeight = HasMap() ? (m_extent.m_dHigh - m_extent.m_dLow) * m_dScale : 0;
        m_dPanelHeight = std::max(m_dMapHeight, MinChartHeight);
    }

    std::string Draw() {
        const double dHeight = PanelTop + m_dPanelHeight + 70;
        m_strSvg = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + Number(PageWidth) + " " +
                   Number(dHeight) + "\" width=\"" + Number(PageWidth) + "\" height=\"" + Number(dHeight) +
                   "\" font-family=\"system-ui, 'Segoe UI', 'DejaVu Sans', sans-serif\">\n<title>" +
                   program::XmlText(m_picture.m_strTitle) +
                   "</title>\n<rect width=\"100%\" height=\"100%\" fill=\"" + Paper + "\"/>\n";
        Text({Margin, 50}, 28, Ink, m_picture.m_strTitle, "font-weight=\"600\"");
        Text({Margin, 76}, 15, FaintInk, m_picture.m_strSubtitle);
        if (HasMap()) {
            DrawMap();
        } else {
            Text({Margin, PanelTop + 20}, 15, FaintInk, "The file gives distances, but no places to draw.");
        }
        DrawChart();
        return std::move(m_strSvg) + "</svg>\n";
    }

private:
    bool HasMap() const { return !m_picture.m_instance.Map().m_points.empty(); }
    bool IsGlobe() const { return m_picture.m_instance.Map().m_bGlobe; }

    void Text(Point at, int nSize, const char* pszFill, const std::string& strText,
              const std::string& strMore = "") {
        m_strSvg += "<text x=\"" + Number(at.x) + "\" y=\"" + Number(at.y) + "\" font-size=\"" +
                    std::to_string(nSize) + "\" fill=\"" + pszFill + "\" " + strMore + ">" +
                    program::XmlText(strText) + "</text>\n";
    }

    void Line(Point a, Point b, const char* pszInk) {
        m_strSvg +=
            "<path d=\"M" + Pair(a) + "L" + Pair(b) + "\" stroke=\"" + pszInk + "\" fill=\"none\"/>\n";
    }

    void Path(const std::string& strData, const char* pszInk, double dWidth) {
        m_strSvg += "<path d=\"" + strData + "\" fill=\"none\" stroke=\"" + pszInk + "\" stroke-width=\"" +
                    Number(dWidth) + "\" stroke-linejoin=\"round\" stroke-linecap=\"round\"/>\n";
    }

    static std::string Pair(Point p) { return Number(p.x) + " " + Number(p.y); }

    Point OnPage(Point p) const {
        const double dLeft = Margin + (MapWidth - (m_extent.m_dRight - m_extent.m_dLeft) * m_dScale) / 2;
        return {dLeft + (p.x - m_extent.m_dLeft) * m_dScale, PanelTop + (m_extent.m_dHigh - p.y) * m_dScale};
    }

    void DrawMap() {
        if (IsGlobe()) {
            DrawGraticule();
        }
        const auto& points = m_picture.m_instance.Map().m_points;
        const Order& order = m_picture.m_order;
        std::string strRoads;
        for (std::size_t i = 0; i < order.size(); ++i) {
            const Point from = points[static_cast<std::size_t>(order[i])];
            const Point to = points[static_cast<std::size_t>(order[(i + 1) % order.size()])];
            strRoads += IsGlobe() ? GlobeRoad(from, to) : "M" + Pair(OnPage(from)) + "L" + Pair(OnPage(to));
        }
        Path(strRoads, TourInk, 1.4);
        const double dRadius = std::clamp(40 / std::sqrt(static_cast<double>(points.size())), 0.8, 3.0);
        m_strSvg += std::string("<g fill=\"") + CityInk + "\">\n";
        for (const Point point : points) {
            const Point at = OnPage(point);
            m_strSvg += "<circle cx=\"" + Number(at.x) + "\" cy=\"" + Number(at.y) + "\" r=\"" +
                        Number(dRadius) + "\"/>\n";
        }
        m_strSvg += "</g>\n";
    }

    void DrawGraticule() {
        constexpr int step = 30;
        for (int nLongitude = -180; nLongitude <= 180; nLongitude += step) {
            if (nLongitude >= m_extent.m_dLeft && nLongitude <= m_extent.m_dRight) {
                const double x = nLongitude;
                Line(OnPage({x, m_extent.m_dLow}), OnPage({x, m_extent.m_dHigh}), GridInk);
            }
        }
        for (int nLatitude = -90; nLatitude <= 90; nLatitude += step) {
            if (nLatitude >= m_extent.m_dLow && nLatitude <= m_extent.m_dHigh) {
                const double y = nLatitude;
                Line(OnPage({m_extent.m_dLeft, y}), OnPage({m_extent.m_dRight, y}), GridInk);
            }
        }
    }

    /// Where a road passes the map's edge, it goes on at the other one.
    std::string GlobeRoad(Point from, Point to) const {
        std::string strRoad = "M" + Pair(OnPage(from));
        const std::vector<Point> points = GreatCircle(from, to);
        for (std::size_t i = 1; i < points.size(); ++i) {
            const Point a = points[i - 1];
            const Point b = points[i];
            if (std::abs(a.x - b.x) > 180) {
                const double dEdge = a.x > 0 ? 180 : -180;
                const double dBeyond = b.x + 2 * dEdge;
                const double dShare = dBeyond == a.x ? 0 : (dEdge - a.x) / (dBeyond - a.x);
                const double y = a.y + dShare * (b.y - a.y);
                strRoad += "L" + Pair(OnPage({dEdge, y})) + "M" + Pair(OnPage({-dEdge, y}));
            }
            strRoad += "L" + Pair(OnPage(b));
        }
        return strRoad;
    }

    void DrawChart() {
        const auto& history = m_picture.m_history;
        if (history.empty()) {
            return;
        }
        double dLow = Infinity;
        double dHigh = 0;
        for (const Progress& progress : history) {
            dLow = std::min(dLow, static_cast<double>(progress.m_nBest));
            dHigh = std::max(dHigh, std::max(progress.m_dMean, static_cast<double>(progress.m_nBest)));
        }
        const double dStep = TickStep(dHigh - dLow);
        dLow = std::floor(dLow / dStep) * dStep;
        dHigh = std::max(std::ceil(dHigh / dStep) * dStep, dLow + dStep);
        const double dFirst = static_cast<double>(history.front().m_nGeneration);
        const double dLast = std::max(static_cast<double>(history.back().m_nGeneration), dFirst + 1);
        const auto at = [&](double dGeneration, double dLength) {
            return Point{ChartLeft + (dGeneration - dFirst) / (dLast - dFirst) * (ChartRight - ChartLeft),
                         PanelTop + 20 + (dHigh - dLength) / (dHigh - dLow) * (m_dPanelHeight - 20)};
        };
        DrawScales(dFirst, dLast, dLow, dHigh, dStep, at);
        std::string strBest;
        std::string strMean;
        for (const Progress& progress : history) {
            const auto dGeneration = static_cast<double>(progress.m_nGeneration);
            const char* const pszVerb = strBest.empty() ? "M" : "L";
            strBest += pszVerb + Pair(at(dGeneration, static_cast<double>(progress.m_nBest)));
            strMean += pszVerb + Pair(at(dGeneration, progress.m_dMean));
        }
        Path(strMean, MeanInk, 1.6);
        Path(strBest, TourInk, 2);
        Text({ChartLeft, PanelTop + 4}, 14, FaintInk, "length");
        Text({ChartRight - 150, PanelTop + 4}, 14, TourInk, "best",
             "font-weight=\"600\" text-anchor=\"end\"");
        Text({ChartRight, PanelTop + 4}, 14, MeanInk, "population mean",
             "font-weight=\"600\" text-anchor=\"end\"");
    }

    template <class At>
    void DrawScales(double dFirst, double dLast, double dLow, double dHigh, double dStep, const At& at) {
        for (double d = dLow; d <= dHigh + dStep / 2; d += dStep) {
            Line(at(dFirst, d), at(dLast, d), GridInk);
            const Point label = at(dFirst, d);
            Text({label.x - 8, label.y + 4}, 12, FaintInk, Grouped(std::lround(d)), "text-anchor=\"end\"");
        }
        const double dGenerations = TickStep(dLast - dFirst);
        for (double d = std::ceil(dFirst / dGenerations) * dGenerations; d <= dLast; d += dGenerations) {
            const Point label = at(d, dLow);
            Text({label.x, label.y + 20}, 12, FaintInk, Grouped(std::lround(d)), "text-anchor=\"middle\"");
        }
        const Point middle = at((dFirst + dLast) / 2, dLow);
        Text({middle.x, middle.y + 44}, 14, FaintInk, "generation", "text-anchor=\"middle\"");
    }

    const Picture& m_picture;
    Extent m_extent;
    double m_dScale;
    double m_dMapHeight;
    double m_dPanelHeight;
    std::string m_strSvg;
};

}  // namespace

std::string DrawSvg(const Picture& picture) { return Drawing(picture).Draw(); }

}  // namespace tour
