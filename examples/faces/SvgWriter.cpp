#include "examples/faces/SvgWriter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "examples/faces/Colouring.h"
#include "examples/program/XmlText.h"

namespace faces {
namespace {

constexpr double PageWidth = 1280;
constexpr double Margin = 40;
constexpr double MapTop = 104;
constexpr double MaxMapHeight = 1000;
constexpr double LegendHeight = 64;
constexpr int UnitsAPixel = 20;  // of the paths' integer coordinates

constexpr std::array<const char*, Colours> Fills = {"#8fb8de", "#f2c57c", "#a5cf9b",
                                                    "#e8a29b", "#c3aedb", "#e9e29c"};
constexpr const char* UnnamedFill = "#dcdcdc";
constexpr const char* Paper = "#fbfaf7";
constexpr const char* Ink = "#2b2f36";
constexpr const char* FaintInk = "#6b7280";
constexpr const char* InnerBorder = "#ffffff";
constexpr const char* OuterBorder = "#4b5563";
constexpr const char* DeadEndInk = "#c2410c";
constexpr const char* BridgeInk = "#7c3aed";

std::string Number(double d) {
    std::string strNumber = std::to_string(std::round(d * 10) / 10);
    strNumber.erase(strNumber.find('.') + 2);
    return strNumber;
}

/// From the grid to the page's units.
class Projection {
public:
    explicit Projection(const DrawnMap& map) : m_grid(map.m_grid) {
        const auto [dLowX, dHighX] = std::minmax({m_grid.X(map.m_low), m_grid.X(map.m_high)});
        const auto [dLowY, dHighY] = std::minmax({m_grid.Y(map.m_low), m_grid.Y(map.m_high)});
        const double dWidth = dHighX - dLowX;
        const double dHeight = dHighY - dLowY;
        constexpr double maxWidth = PageWidth - 2 * Margin;
        m_dScale = dWidth > 0 ? maxWidth / dWidth : MaxMapHeight / dHeight;
        if (dHeight > 0) m_dScale = std::min(m_dScale, MaxMapHeight / dHeight);
        m_dHeight = dHeight * m_dScale;
        m_dLeft = Margin + (maxWidth - dWidth * m_dScale) / 2;
        m_dOriginX = dLowX;
        m_dOriginY = map.m_bYUp ? dHighY : dLowY;
        m_dScaleY = map.m_bYUp ? -m_dScale : m_dScale;
    }

    double Height() const { return m_dHeight; }

    GridPoint operator()(GridPoint point) const {
        const double dX = m_dLeft + (m_grid.X(point) - m_dOriginX) * m_dScale;
        const double dY = MapTop + (m_grid.Y(point) - m_dOriginY) * m_dScaleY;
        return {static_cast<int>(std::lround(dX * UnitsAPixel)),
                static_cast<int>(std::lround(dY * UnitsAPixel))};
    }

private:
    Grid m_grid;
    double m_dScale;
    double m_dScaleY;
    double m_dHeight;
    double m_dLeft;
    double m_dOriginX;
    double m_dOriginY;
};

class SvgDrawing {
public:
    explicit SvgDrawing(const DrawnMap& map) : m_map(map), m_project(map) {}

    std::string Draw() {
        const double dLegendTop = MapTop + m_project.Height() + 28;
        const double dHeight = dLegendTop + LegendHeight;
        m_strSvg = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + Number(PageWidth) + " " +
                   Number(dHeight) + "\" width=\"" + Number(PageWidth) + "\" height=\"" + Number(dHeight) +
                   "\" font-family=\"system-ui, 'Segoe UI', 'DejaVu Sans', sans-serif\">\n";
        m_strSvg += "<title>" + program::XmlText(m_map.m_strTitle) + "</title>\n";
        m_strSvg += std::string("<rect width=\"100%\" height=\"100%\" fill=\"") + Paper + "\"/>\n";
        Text(Margin, 50, 28, Ink, m_map.m_strTitle, " font-weight=\"600\"");
        Text(Margin, 76, 15, FaintInk, m_map.Subtitle());

        m_strSvg += "<g transform=\"scale(" + std::to_string(1.0 / UnitsAPixel) +
                    ")\" stroke-linejoin=\"round\" stroke-linecap=\"round\" fill-rule=\"evenodd\">\n";
        DrawFaces();
        DrawOuterBorder();
        DrawLines(ArcKind::DeadEnd, DeadEndInk);
        DrawLines(ArcKind::Bridge, BridgeInk);
        m_strSvg += "</g>\n";
        DrawLegend(dLegendTop);
        m_strSvg += "</svg>\n";
        return std::move(m_strSvg);
    }

private:
    void Text(double dX, double dY, int nSize, const char* pszFill, const std::string& strText,
              const char* pszMore = "") {
        m_strSvg += "<text x=\"" + Number(dX) + "\" y=\"" + Number(dY) + "\" font-size=\"" +
                    std::to_string(nSize) + "\" fill=\"" + pszFill + "\"" + pszMore + ">" +
                    program::XmlText(strText) + "</text>\n";
    }

    /// Thinner borders where there are many faces.
    double BorderWidth() const {
        const auto nFaces = static_cast<double>(std::max<std::size_t>(m_map.m_faces.size(), 1));
        return std::clamp(30 / std::sqrt(nFaces), 0.4, 2.0);
    }

    std::string Stroke(const char* pszColour, double dPixels) const {
        return std::string(" stroke=\"") + pszColour + "\" stroke-width=\"" + Number(dPixels * UnitsAPixel) +
               "\"";
    }

    void AppendPath(const Line& points) {
        GridPoint at = m_project(points.front());
        m_strSvg += "M" + std::to_string(at.x) + " " + std::to_string(at.y) + "l";
        for (std::size_t i = 1; i < points.size(); ++i) {
            const GridPoint to = m_project(points[i]);
            if (to == at) continue;
            AppendStep(to.x - at.x);
            AppendStep(to.y - at.y);
            at = to;
        }
        if (m_strSvg.back() == 'l') m_strSvg += "0 0";
    }

    void AppendStep(int n) {
        if (n >= 0 && m_strSvg.back() != 'l') m_strSvg += ' ';
        m_strSvg += std::to_string(n);
    }

    void AppendRing(const DrawnWalk& walk) {
        AppendPath(m_map.PointsOf(walk));
        m_strSvg += "z";
    }

    void DrawFaces() {
        std::vector<std::vector<std::size_t>> facesOfFill(Colours + 1);
        const std::vector<int> colours = ColourFaces(m_map.m_faces.size(), m_map.Neighbours());
        for (std::size_t i = 0; i < colours.size(); ++i) {
            facesOfFill[IsUnnamed(i) ? Colours : static_cast<std::size_t>(colours[i])].push_back(i);
        }
        m_strSvg += "<g" + Stroke(InnerBorder, BorderWidth()) + ">\n";
        for (std::size_t n = 0; n < facesOfFill.size(); ++n) {
            if (facesOfFill[n].empty()) continue;
            m_strSvg += std::string("<g fill=\"") + (n < Colours ? Fills[n] : UnnamedFill) + "\">\n";
            for (const std::size_t nFace : facesOfFill[n]) DrawFace(nFace);
            m_strSvg += "</g>\n";
        }
        m_strSvg += "</g>\n";
    }

    bool HasNames() const { return !m_map.m_names.empty(); }

    bool IsUnnamed(std::size_t nFace) const {
        return HasNames() && m_map.m_faces[nFace].m_nName == DrawnFace::NoName;
    }

    void DrawFace(std::size_t nFace) {
        m_strSvg += "<path d=\"";
        const DrawnFace& face = m_map.m_faces[nFace];
        AppendRing(m_map.m_walks[face.m_nOuterWalk]);
        for (const unsigned int nHole : face.m_holes) AppendRing(m_map.m_walks[nHole]);
        if (face.m_nName == DrawnFace::NoName) {
            m_strSvg += "\"/>\n";
        } else {
            const std::string& strName = m_map.m_names[static_cast<std::size_t>(face.m_nName)];
            m_strSvg += "\"><title>" + program::XmlText(strName) + "</title></path>\n";
        }
    }

    void DrawOuterBorder() {
        m_strSvg += "<path fill=\"none\"" + Stroke(OuterBorder, 1.5 * BorderWidth()) + " d=\"";
        const std::vector<long> faceOfWalks = m_map.FaceOfWalks();
        for (std::size_t i = 0; i < faceOfWalks.size(); ++i) {
            if (faceOfWalks[i] == FaceMap::Outside) AppendRing(m_map.m_walks[i]);
        }
        m_strSvg += "\"/>\n";
    }

    void DrawLines(ArcKind kind, const char* pszColour) {
        if (m_map.CountArcs(kind) == 0) return;
        m_strSvg += "<path fill=\"none\"" + Stroke(pszColour, 2 * BorderWidth()) + " d=\"";
        for (const DrawnArc& arc : m_map.m_arcs) {
            if (arc.m_kind == kind) AppendPath({m_map.m_points[arc.m_nFrom], m_map.m_points[arc.m_nTo]});
        }
        m_strSvg += "\"/>\n";
    }

    void DrawLegend(double dTop) {
        double dX = Margin;
        const auto label = [&](const std::string& strText) {
            Text(dX, dTop + 13, 14, Ink, strText);
            dX += 7.4 * static_cast<double>(strText.size()) + 34;
        };
        const auto swatch = [&](const char* pszFill) {
            m_strSvg += "<rect x=\"" + Number(dX) + "\" y=\"" + Number(dTop) +
                        "\" width=\"18\" height=\"18\" rx=\"3\" fill=\"" + pszFill + "\"/>\n";
            dX += 21;
        };
        const auto stroke = [&](const char* pszColour) {
            m_strSvg += "<path d=\"M" + Number(dX) + " " + Number(dTop + 9) +
                        "h26\" stroke-width=\"3\" stroke=\"" + pszColour + "\"/>\n";
            dX += 34;
        };
        for (const char* pszFill : Fills) swatch(pszFill);
        dX += 5;
        label("Faces; no two neighbours share a colour");
        const auto isNamed = [](const DrawnFace& face) { return face.m_nName != DrawnFace::NoName; };
        if (HasNames() && !std::all_of(m_map.m_faces.begin(), m_map.m_faces.end(), isNamed)) {
            swatch(UnnamedFill);
            dX += 5;
            label("Face without a name");
        }
        stroke(OuterBorder);
        label("Outer border");
        DrawLegendLine(ArcKind::DeadEnd, DeadEndInk, "Dead end", stroke, label);
        DrawLegendLine(ArcKind::Bridge, BridgeInk, "Bridge", stroke, label);
    }

    template <class Stroke, class Label>
    void DrawLegendLine(ArcKind kind, const char* pszColour, const char* pszText, const Stroke& stroke,
                        const Label& label) {
        if (m_map.CountArcs(kind) == 0) return;
        stroke(pszColour);
        label(pszText);
    }

    const DrawnMap& m_map;
    Projection m_project;
    std::string m_strSvg;
};

}  // namespace

std::string DrawSvg(const DrawnMap& map) { return SvgDrawing(map).Draw(); }

std::string WithCommas(long n) {
    std::string strDigits = std::to_string(n);
    for (std::size_t i = strDigits.size(); i > 3; i -= 3) {
        if (strDigits[i - 4] != '-') strDigits.insert(i - 3, ",");
    }
    return strDigits;
}

}  // namespace faces
