#include "examples/faces/MapReader.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>

namespace faces {
namespace {

using Json = nlohmann::ordered_json;

struct Position {
    double x;
    double y;
};

/// The step from a quantized TopoJSON file's integers to the map's coordinates.
struct Transform {
    Position m_scale;
    Position m_translate;
};

/// A map as the file gives it, before it is laid on the grid. Positions are integers if there is a transform
/// and the file keeps to the format.
struct RawMap {
    std::vector<std::vector<Position>> m_lines;
    std::vector<Area> m_areas;
    std::optional<Transform> m_transform;
};

struct Bounds {
    Position m_low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    Position m_high{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

    explicit Bounds(const std::vector<std::vector<Position>>& lines) {
        for (const auto& line : lines) {
            for (const Position position : line) {
                m_low = {std::min(m_low.x, position.x), std::min(m_low.y, position.y)};
                m_high = {std::max(m_high.x, position.x), std::max(m_high.y, position.y)};
            }
        }
    }

    double Extent() const { return std::max(m_high.x - m_low.x, m_high.y - m_low.y); }
};

constexpr int MaxNesting = 100;

Position ReadPosition(const Json& json, const std::string& strWhere) {
    if (!json.is_array() || json.size() < 2 || !json[0].is_number() || !json[1].is_number()) {
        throw MapError(strWhere + ": a position is not two numbers");
    }
    const Position position{json[0].get<double>(), json[1].get<double>()};
    if (!std::isfinite(position.x) || !std::isfinite(position.y)) {
        throw MapError(strWhere + ": a position is not finite");
    }
    return position;
}

const Json& Array(const Json& json, const std::string& strWhere) {
    if (!json.is_array()) throw MapError(strWhere + ": an array is missing");
    return json;
}

/// A member that must be there.
const Json& Member(const Json& json, const char* pszName, const std::string& strWhere) {
    const auto it = json.find(pszName);
    if (it == json.end()) throw MapError(strWhere + " has no \"" + pszName + "\"");
    return *it;
}

std::string TypeOf(const Json& json) {
    if (!json.is_object()) return "";
    const auto it = json.find("type");
    return it != json.end() && it->is_string() ? it->get<std::string>() : "";
}

/// Names end up on terminals and in XML: control characters become blanks.
std::string Printable(std::string strText) {
    for (char& c : strText) {
        const auto n = static_cast<unsigned char>(c);
        if (n < 0x20 || n == 0x7f) c = ' ';
    }
    return strText;
}

std::string TextOf(const Json& json) {
    if (json.is_string()) return Printable(json.get<std::string>());
    return json.is_number() ? json.dump() : "";
}

/// The name a feature or geometry bears: its property "name" (in the usual spellings), or else its id.
std::string NameOf(const Json& json) {
    const auto itProperties = json.find("properties");
    if (itProperties != json.end() && itProperties->is_object()) {
        for (const char* pszKey : {"name", "NAME", "Name"}) {
            const auto it = itProperties->find(pszKey);
            if (it != itProperties->end() && !TextOf(*it).empty()) return TextOf(*it);
        }
    }
    const auto itId = json.find("id");
    return itId != json.end() ? TextOf(*itId) : "";
}

/// Walks the geometries of either format. What a line and a ring look like there is the derived reader's
/// business.
class GeometryReader {
public:
    virtual ~GeometryReader() = default;

protected:
    explicit GeometryReader(const char* pszLines) : m_pszLines(pszLines) {}

    virtual Ring ReadLine(const Json& json) = 0;
    virtual Ring ReadRing(const Json& json) = 0;

    void ReadGeometry(const Json& json, const std::string& strName, int nDepth = 0) {
        if (json.is_null()) return;
        if (nDepth > MaxNesting) throw MapError("geometry collections are nested too deeply");

        const std::string strType = TypeOf(json);
        if (strType == "GeometryCollection") {
            for (const Json& member : Array(Member(json, "geometries", "a collection"), "a collection")) {
                const std::string strMember = member.is_object() ? NameOf(member) : "";
                ReadGeometry(member, strMember.empty() ? strName : strMember, nDepth + 1);
            }
            return;
        }
        if (strType.empty() && json.is_object() && json.contains("type") && json["type"].is_null()) return;
        if (strType == "Point" || strType == "MultiPoint") return;
        const bool bLine = strType == "LineString";
        const bool bLines = strType == "MultiLineString";
        const bool bPolygon = strType == "Polygon";
        const bool bPolygons = strType == "MultiPolygon";
        if (!bLine && !bLines && !bPolygon && !bPolygons) {
            throw MapError(strType.empty() ? "a geometry has no type"
                                           : "unknown geometry type \"" + Printable(strType) + "\"");
        }

        const std::string strWhere = "a " + strType;
        const Json& shape = Array(Member(json, m_pszLines, strWhere), strWhere);
        if (bLine) {
            ReadLine(shape);
        } else if (bLines) {
            for (const Json& line : shape) ReadLine(Array(line, strWhere));
        } else if (bPolygon) {
            ReadPolygon(shape, strName, strWhere);
        } else {
            for (const Json& polygon : shape) ReadPolygon(Array(polygon, strWhere), strName, strWhere);
        }
    }

    std::vector<Area> m_areas;

private:
    void ReadPolygon(const Json& json, const std::string& strName, const std::string& strWhere) {
        if (json.empty()) return;
        Area area;
        area.m_strName = strName.empty() ? "area " + std::to_string(m_areas.size() + 1) : strName;
        for (const Json& ring : json) area.m_rings.push_back(ReadRing(Array(ring, strWhere)));
        m_areas.push_back(std::move(area));
    }

    const char* m_pszLines;
};

class TopoJsonReader : public GeometryReader {
public:
    TopoJsonReader() : GeometryReader("arcs") {}

    RawMap Read(const Json& json, const std::string& strObject) {
        ReadTransform(json);
        ReadArcs(Array(Member(json, "arcs", "the topology"), "\"arcs\""));
        const Json& objects = Member(json, "objects", "the topology");
        if (!objects.is_object()) throw MapError("\"objects\" is no object");

        m_used.assign(m_map.m_lines.size(), strObject.empty());
        bool bFound = strObject.empty();
        for (const auto& object : objects.items()) {
            if (!strObject.empty() && object.key() != strObject) continue;
            bFound = true;
            m_areas.clear();
            ReadGeometry(object.value(), NameOf(object.value()));
            if (m_areas.size() > m_map.m_areas.size()) m_map.m_areas.swap(m_areas);
        }
        if (!bFound) throw MapError("there is no object \"" + Printable(strObject) + "\"");
        for (std::size_t i = 0; i < m_used.size(); ++i) {
            if (!m_used[i]) m_map.m_lines[i].clear();
        }
        return std::move(m_map);
    }

private:
    void ReadTransform(const Json& json) {
        const auto it = json.find("transform");
        if (it == json.end() || it->is_null()) return;
        const Transform transform{
            ReadPosition(Member(*it, "scale", "the transform"), "the transform's scale"),
            ReadPosition(Member(*it, "translate", "the transform"), "the transform's translation")};
        if (transform.m_scale.x == 0 || transform.m_scale.y == 0)
            throw MapError("the transform's scale is 0");
        m_map.m_transform = transform;
    }

    void ReadArcs(const Json& json) {
        for (const Json& arc : json) {
            const std::string strWhere = "arc " + std::to_string(m_map.m_lines.size());
            std::vector<Position> line;
            Position at{0, 0};
            for (const Json& position : Array(arc, strWhere)) {
                const Position read = ReadPosition(position, strWhere);
                at = m_map.m_transform ? Position{at.x + read.x, at.y + read.y} : read;
                line.push_back(at);
            }
            m_map.m_lines.push_back(std::move(line));
        }
    }

    Ring ReadLine(const Json& json) override {
        Ring ring;
        for (const Json& reference : json) {
            if (!reference.is_number_integer()) throw MapError("an arc index is not an integer");
            const long nReference = reference.get<long>();
            const auto nLine = static_cast<std::size_t>(nReference < 0 ? ~nReference : nReference);
            const bool bFits = !reference.is_number_unsigned() || reference.get<unsigned long>() <= LONG_MAX;
            if (nLine >= m_map.m_lines.size() || !bFits) {
                throw MapError("arc index " + reference.dump() + " is out of range: there are " +
                               std::to_string(m_map.m_lines.size()) + " arcs");
            }
            m_used[nLine] = true;
            ring.push_back(nReference);
        }
        return ring;
    }

    Ring ReadRing(const Json& json) override { return ReadLine(json); }

    RawMap m_map;
    std::vector<bool> m_used;
};

class GeoJsonReader : public GeometryReader {
public:
    GeoJsonReader() : GeometryReader("coordinates") {}

    RawMap Read(const Json& json) {
        if (TypeOf(json) == "FeatureCollection") {
            for (const Json& feature : Array(Member(json, "features", "the collection"), "\"features\"")) {
                ReadFeature(feature);
            }
        } else if (TypeOf(json) == "Feature") {
            ReadFeature(json);
        } else {
            ReadGeometry(json, NameOf(json));
        }
        m_map.m_areas.swap(m_areas);
        return std::move(m_map);
    }

private:
    void ReadFeature(const Json& json) {
        if (TypeOf(json) != "Feature") throw MapError("a member of the collection is no feature");
        ReadGeometry(Member(json, "geometry", "a feature"), NameOf(json));
    }

    Ring ReadLine(const Json& json) override {
        std::vector<Position> line;
        for (const Json& position : json) {
            line.push_back(ReadPosition(position, "line " + std::to_string(m_map.m_lines.size())));
        }
        m_map.m_lines.push_back(std::move(line));
        return {static_cast<long>(m_map.m_lines.size()) - 1};
    }

    /// A ring that the file leaves open is closed.
    Ring ReadRing(const Json& json) override {
        Ring ring = ReadLine(json);
        auto& line = m_map.m_lines.back();
        if (!line.empty() && (line.front().x != line.back().x || line.front().y != line.back().y)) {
            line.push_back(line.front());
        }
        return ring;
    }

    RawMap m_map;
};

RawMap ReadRaw(const Json& json, const std::string& strObject) {
    const std::string strType = TypeOf(json);
    if (strType == "Topology") return TopoJsonReader().Read(json, strObject);
    for (const char* pszKind : {"FeatureCollection", "Feature", "GeometryCollection", "LineString",
                                "MultiLineString", "Polygon", "MultiPolygon", "Point", "MultiPoint"}) {
        if (strType != pszKind) continue;
        if (!strObject.empty()) throw MapError("only TopoJSON has named objects, and this is GeoJSON");
        return GeoJsonReader().Read(json);
    }
    throw MapError("this is neither TopoJSON nor GeoJSON");
}

bool IsGrid(const RawMap& raw, const Bounds& bounds) {
    if (!raw.m_transform || !(bounds.Extent() <= MaxCoordinate)) return false;
    for (const auto& line : raw.m_lines) {
        for (const Position position : line) {
            if (position.x != std::floor(position.x) || position.y != std::floor(position.y)) return false;
            if (std::abs(position.x) > 0x1p53 || std::abs(position.y) > 0x1p53) return false;
        }
    }
    return true;
}

void ApplyTransform(RawMap& raw) {
    const Transform transform = *raw.m_transform;
    for (auto& line : raw.m_lines) {
        for (Position& position : line) {
            position = {position.x * transform.m_scale.x + transform.m_translate.x,
                        position.y * transform.m_scale.y + transform.m_translate.y};
            if (!std::isfinite(position.x) || !std::isfinite(position.y)) {
                throw MapError("a transformed position is not finite");
            }
        }
    }
}

std::vector<Line> Snap(const RawMap& raw, Position origin, double dCell) {
    std::vector<Line> lines;
    lines.reserve(raw.m_lines.size());
    for (const auto& line : raw.m_lines) {
        Line& snapped = lines.emplace_back();
        snapped.reserve(line.size());
        for (const Position position : line) {
            snapped.push_back({static_cast<int>(std::lround((position.x - origin.x) / dCell)),
                               static_cast<int>(std::lround((position.y - origin.y) / dCell))});
        }
    }
    return lines;
}

/// Longitude and latitude by the look of it.
bool LooksGeographic(const Grid& grid, const std::vector<Line>& lines) {
    for (const Line& line : lines) {
        for (const GridPoint point : line) {
            if (std::abs(grid.X(point)) > 180.01 || std::abs(grid.Y(point)) > 90.01) return false;
        }
    }
    return true;
}

BorderMap LayOnGrid(RawMap raw, int nGrid) {
    Bounds bounds(raw.m_lines);
    BorderMap map;
    if (nGrid == 0 && IsGrid(raw, bounds)) {
        const Transform transform = *raw.m_transform;
        map.m_grid = {transform.m_translate.x + bounds.m_low.x * transform.m_scale.x,
                      transform.m_translate.y + bounds.m_low.y * transform.m_scale.y, transform.m_scale.x,
                      transform.m_scale.y};
        map.m_lines = Snap(raw, bounds.m_low, 1);
    } else {
        if (raw.m_transform) ApplyTransform(raw);
        bounds = Bounds(raw.m_lines);
        const double dExtent = bounds.Extent();
        if (!std::isfinite(dExtent)) throw MapError("the positions lie too far apart");
        const int nCells = nGrid == 0 ? DefaultGrid : nGrid;
        const double dCell = dExtent > 0 ? dExtent / nCells : 1;
        if (!(dCell >= std::numeric_limits<double>::min()))
            throw MapError("the positions lie too close together");
        map.m_grid = {bounds.m_low.x, bounds.m_low.y, dCell, dCell};
        map.m_lines = Snap(raw, bounds.m_low, dCell);
    }
    if (!std::isfinite(map.m_grid.m_dX) || !std::isfinite(map.m_grid.m_dY)) {
        throw MapError("a transformed position is not finite");
    }
    map.m_bYUp = LooksGeographic(map.m_grid, map.m_lines);
    map.m_areas = std::move(raw.m_areas);
    return map;
}

/// nlohmann's messages without their own prefix in brackets.
std::string Reason(const Json::exception& error) {
    const std::string strWhat = error.what();
    const auto nEnd = strWhat.find("] ");
    return Printable(nEnd == std::string::npos ? strWhat : strWhat.substr(nEnd + 2));
}

}  // namespace

Line BorderMap::PointsOf(const Ring& ring) const {
    Line points;
    for (const long nReference : ring) {
        const Line& line = m_lines[static_cast<std::size_t>(nReference < 0 ? ~nReference : nReference)];
        if (nReference < 0) {
            points.insert(points.end(), line.rbegin(), line.rend());
        } else {
            points.insert(points.end(), line.begin(), line.end());
        }
    }
    points.erase(std::unique(points.begin(), points.end()), points.end());
    if (points.size() > 1 && points.front() == points.back()) points.pop_back();
    return points;
}

BorderMap ReadMap(const std::string& strText, const ReadOptions& options) {
    RawMap raw;
    try {
        raw = ReadRaw(Json::parse(strText), options.m_strObject);
    } catch (const Json::exception& error) {
        throw MapError(Reason(error));
    }
    const auto hasSegment = [](const auto& line) { return line.size() > 1; };
    if (std::none_of(raw.m_lines.begin(), raw.m_lines.end(), hasSegment)) {
        throw MapError("the map is empty: it has no border lines");
    }
    return LayOnGrid(std::move(raw), options.m_nGrid);
}

}  // namespace faces
