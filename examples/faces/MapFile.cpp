#include "examples/faces/MapFile.h"

#include <fcntl.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <set>

#include "examples/faces/FileStream.h"
#include "examples/faces/Utf8.h"
#include "examples/program/Descriptor.h"
#include "examples/program/OutputFile.h"

namespace faces {
namespace {

constexpr long LongSize = sizeof(long);
constexpr long LengthPos = 8 + LongSize;  // behind magic and version
constexpr long HeaderSize = LengthPos + LongSize;

// The least that one of them takes.
constexpr long PointSize = 2 * LongSize;
constexpr long ArcSize = 2 * LongSize + 1;
constexpr long WalkSize = 2 * LongSize;
constexpr long FaceSize = 3 * LongSize;

class Writer {
public:
    explicit Writer(KyStream& stream) : m_stream(stream) {}

    void Count(std::size_t n) { m_stream << static_cast<long>(n); }
    void Bytes(std::string strBytes) {
        const auto nBytes = static_cast<long>(strBytes.size());
        m_stream.Write(strBytes.data(), nBytes);
        m_stream.MoveTo(m_stream.GetPosition() + nBytes);
    }
    void Text(const std::string& strText) {
        Count(strText.size());
        Bytes(strText);
    }
    void Point(GridPoint point) { m_stream << static_cast<long>(point.x) << static_cast<long>(point.y); }

private:
    KyStream& m_stream;
};

[[noreturn]] void RefuseDamaged(const std::string& strReason) {
    throw MapError("the saved map is damaged: " + strReason);
}

/// What a number stands for, for messages.
using What = const char*;

class Reader {
public:
    explicit Reader(KyStream& stream) : m_stream(stream) {}

    long Left() const { return m_stream.GetLength() - m_stream.GetPosition(); }

    template <class Value>
    Value Next(What what) {
        Need(sizeof(Value), what);
        Value value{};
        m_stream >> value;
        return value;
    }

    long Number(What what, long nLeast, long nMost) {
        const long n = Next<long>(what);
        if (n < nLeast || n > nMost) RefuseDamaged(std::string(what) + " " + std::to_string(n));
        return n;
    }

    unsigned int Index(What what, std::size_t nSize) {
        return static_cast<unsigned int>(Number(what, 0, static_cast<long>(nSize) - 1));
    }

    /// A number of things of at least nBytesEach bytes.
    std::size_t Count(What what, long nBytesEach) {
        constexpr long most = std::numeric_limits<int>::max();
        const long n = Number(what, 0, most);
        if (n > Left() / nBytesEach)
            RefuseDamaged(std::string(what) + " " + std::to_string(n) + ", for which the file is too short");
        return static_cast<std::size_t>(n);
    }

    std::string Bytes(What what, long nBytes) {
        Need(nBytes, what);
        std::string strBytes(static_cast<std::size_t>(nBytes), '\0');
        m_stream.Read(strBytes.data(), nBytes);
        m_stream.MoveTo(m_stream.GetPosition() + nBytes);
        return strBytes;
    }

    std::string Text(What what) {
        std::string strText = Bytes(what, static_cast<long>(Count(what, 1)));
        if (ValidUtf8(strText) != strText) RefuseDamaged(std::string(what) + " is no UTF-8");
        return strText;
    }

    GridPoint Point(What what) {
        const auto nX = static_cast<int>(Number(what, 0, MaxCoordinate));
        return {nX, static_cast<int>(Number(what, 0, MaxCoordinate))};
    }

private:
    void Need(long nBytes, What what) const {
        if (nBytes > Left()) RefuseDamaged(std::string("it ends in the ") + what);
    }

    KyStream& m_stream;
};

/// Leaves the stream behind the header, and knows that it is as long as the header says.
void ReadHeader(KyStream& stream) {
    const long nLength = stream.GetLength();
    stream.MoveTo(0);
    Reader reader(stream);
    const auto nMagic = static_cast<long>(MapFileMagic.size());
    const std::string strMagic = reader.Bytes("magic", std::min(nLength, nMagic));
    if (MapFileMagic.compare(0, strMagic.size(), strMagic) != 0)
        throw MapError("this is no map saved by faces");
    if (nLength < LengthPos) throw MapError("the saved map is truncated: it ends in the header");
    const long nVersion = reader.Next<long>("version");
    if (nVersion > MapFileVersion) {
        throw MapError("the saved map is of version " + std::to_string(nVersion) +
                       ", newer than this program's, which is " + std::to_string(MapFileVersion));
    }
    if (nVersion < 1) RefuseDamaged("version " + std::to_string(nVersion));
    if (nLength < HeaderSize) throw MapError("the saved map is truncated: it ends in the header");
    const long nStated = reader.Number("length", HeaderSize, std::numeric_limits<long>::max());
    if (nStated > nLength) {
        throw MapError("the saved map is truncated: " + std::to_string(nLength) + " bytes of " +
                       std::to_string(nStated));
    }
    if (nStated < nLength) RefuseDamaged(std::to_string(nLength - nStated) + " bytes stand behind its end");
}

void ReadGrid(Reader& reader, DrawnMap& map) {
    for (double* pValue : {&map.m_grid.m_dX, &map.m_grid.m_dY, &map.m_grid.m_dStepX, &map.m_grid.m_dStepY}) {
        *pValue = reader.Next<double>("grid");
    }
    map.m_bYUp = reader.Next<bool>("direction of y");
    map.m_low = reader.Point("extent");
    map.m_high = reader.Point("extent");
    if (map.m_low.x > map.m_high.x || map.m_low.y > map.m_high.y) RefuseDamaged("its extent is reversed");
    // So that no place on the page is out of reach.
    constexpr double least = 1e-300;
    const double dWidth = std::abs(map.m_grid.X(map.m_high) - map.m_grid.X(map.m_low));
    const double dHeight = std::abs(map.m_grid.Y(map.m_high) - map.m_grid.Y(map.m_low));
    const bool bFinite = std::isfinite(dWidth) && std::isfinite(dHeight);
    if (!bFinite || std::max(dWidth, dHeight) < least) RefuseDamaged("its grid has no extent");
}

void ReadPoints(Reader& reader, DrawnMap& map) {
    map.m_points.resize(reader.Count("number of points", PointSize));
    for (std::size_t i = 0; i < map.m_points.size(); ++i) {
        const GridPoint point = reader.Point("point");
        const bool bInside = point.x >= map.m_low.x && point.x <= map.m_high.x && point.y >= map.m_low.y &&
                             point.y <= map.m_high.y;
        if (!bInside) RefuseDamaged("a point is outside its extent");
        if (i > 0 && !(map.m_points[i - 1] < point)) RefuseDamaged("its points are out of order");
        map.m_points[i] = point;
    }
}

void ReadArcs(Reader& reader, DrawnMap& map) {
    const std::size_t nArcs = reader.Count("number of arcs", ArcSize);
    map.m_arcs.reserve(nArcs);
    std::pair<unsigned int, unsigned int> before;
    for (std::size_t i = 0; i < nArcs; ++i) {
        const unsigned int nFrom = reader.Index("arc", map.m_points.size());
        const unsigned int nTo = reader.Index("arc", map.m_points.size());
        const auto kind = static_cast<ArcKind>(reader.Next<char>("arc"));
        const std::pair ends(nFrom, nTo);
        if (nFrom >= nTo || (i > 0 && ends <= before)) RefuseDamaged("its arcs are out of order");
        if (kind != ArcKind::Border && kind != ArcKind::DeadEnd && kind != ArcKind::Bridge)
            RefuseDamaged("an arc is of an unknown kind");
        map.m_arcs.push_back({nFrom, nTo, kind});
        before = ends;
    }
}

void ReadNames(Reader& reader, DrawnMap& map) {
    const std::size_t nNames = reader.Count("number of names", LongSize);
    std::set<std::string> known;
    map.m_names.reserve(nNames);
    for (std::size_t i = 0; i < nNames; ++i) {
        map.m_names.push_back(reader.Text("name"));
        if (!known.insert(map.m_names.back()).second) RefuseDamaged("a name is there twice");
    }
}

/// Walks are closed, and every side that is no dead end is on one of them.
void ReadWalks(Reader& reader, DrawnMap& map) {
    const std::size_t nWalks = reader.Count("number of walks", WalkSize);
    std::vector<bool> isTaken(2 * map.m_arcs.size(), false);
    map.m_walks.reserve(nWalks);
    for (std::size_t i = 0; i < nWalks; ++i) {
        const std::size_t nSides = reader.Count("number of sides", LongSize);
        const std::size_t nFirst = map.m_sides.size();
        if (nSides == 0) RefuseDamaged("a walk is empty");
        for (std::size_t n = 0; n < nSides; ++n) {
            const Side nSide = reader.Index("side", isTaken.size());
            if (isTaken[nSide]) RefuseDamaged("two walks share a side");
            if (map.m_arcs[ArcOf(nSide)].m_kind == ArcKind::DeadEnd)
                RefuseDamaged("a walk goes along a dead end");
            if (n > 0 && map.Start(nSide) != map.Start(Opposite(map.m_sides.back())))
                RefuseDamaged("a walk is torn");
            isTaken[nSide] = true;
            map.m_sides.push_back(nSide);
        }
        if (map.Start(map.m_sides[nFirst]) != map.Start(Opposite(map.m_sides.back())))
            RefuseDamaged("a walk is not closed");
        map.m_walks.push_back({static_cast<unsigned int>(nFirst), static_cast<unsigned int>(nSides)});
    }
    const auto nDeadEnds = static_cast<std::size_t>(map.CountArcs(ArcKind::DeadEnd));
    if (map.m_sides.size() != 2 * (map.m_arcs.size() - nDeadEnds)) RefuseDamaged("a side is on no walk");
}

void ReadFaces(Reader& reader, DrawnMap& map) {
    const std::size_t nFaces = reader.Count("number of faces", FaceSize);
    std::vector<bool> isTaken(map.m_walks.size(), false);
    const auto nextWalk = [&] {
        const unsigned int nWalk = reader.Index("walk", map.m_walks.size());
        if (isTaken[nWalk]) RefuseDamaged("two faces share a walk");
        isTaken[nWalk] = true;
        return nWalk;
    };
    map.m_faces.reserve(nFaces);
    for (std::size_t i = 0; i < nFaces; ++i) {
        DrawnFace face{nextWalk(), 0, {}};
        face.m_nName = reader.Number("name", DrawnFace::NoName, static_cast<long>(map.m_names.size()) - 1);
        const std::size_t nHoles = reader.Count("number of holes", LongSize);
        for (std::size_t n = 0; n < nHoles; ++n) face.m_holes.push_back(nextWalk());
        map.m_faces.push_back(std::move(face));
    }
}

void CheckEuler(const DrawnMap& map) {
    std::vector<bool> isNode(map.m_points.size(), false);
    for (const DrawnArc& arc : map.m_arcs) {
        if (arc.m_kind != ArcKind::DeadEnd) isNode[arc.m_nFrom] = isNode[arc.m_nTo] = true;
    }
    const auto nArcs = static_cast<long>(map.m_arcs.size()) - map.CountArcs(ArcKind::DeadEnd);
    const EulerCount count{std::count(isNode.begin(), isNode.end(), true), nArcs,
                           static_cast<long>(map.m_walks.size()), map.m_nComponents};
    if (!count.Holds()) RefuseDamaged("Euler's formula does not hold");
}

}  // namespace

void SaveMap(const DrawnMap& map, KyStream& stream) {
    Writer writer(stream);
    writer.Bytes(MapFileMagic);
    stream << MapFileVersion << 0L;  // the length is not known yet
    writer.Text(map.m_strTitle);
    stream << map.m_grid.m_dX << map.m_grid.m_dY << map.m_grid.m_dStepX << map.m_grid.m_dStepY << map.m_bYUp;
    writer.Point(map.m_low);
    writer.Point(map.m_high);
    stream << map.m_nComponents;
    writer.Count(map.m_points.size());
    for (const GridPoint point : map.m_points) writer.Point(point);
    writer.Count(map.m_arcs.size());
    for (const DrawnArc& arc : map.m_arcs) {
        stream << static_cast<long>(arc.m_nFrom) << static_cast<long>(arc.m_nTo)
               << static_cast<char>(arc.m_kind);
    }
    writer.Count(map.m_names.size());
    for (const std::string& strName : map.m_names) writer.Text(strName);
    writer.Count(map.m_walks.size());
    for (const DrawnWalk& walk : map.m_walks) {
        writer.Count(walk.m_nLength);
        for (unsigned int n = walk.m_nFirst; n < walk.m_nFirst + walk.m_nLength; ++n) {
            stream << static_cast<long>(map.m_sides[n]);
        }
    }
    writer.Count(map.m_faces.size());
    for (const DrawnFace& face : map.m_faces) {
        stream << static_cast<long>(face.m_nOuterWalk) << face.m_nName;
        writer.Count(face.m_holes.size());
        for (const unsigned int nHole : face.m_holes) stream << static_cast<long>(nHole);
    }

    stream.MoveTo(LengthPos);
    stream << stream.GetLength();
}

DrawnMap LoadMap(KyStream& stream) {
    ReadHeader(stream);
    Reader reader(stream);
    DrawnMap map;
    map.m_strTitle = reader.Text("title");
    ReadGrid(reader, map);
    map.m_nComponents = reader.Number("number of components", 0, std::numeric_limits<int>::max());
    ReadPoints(reader, map);
    ReadArcs(reader, map);
    ReadNames(reader, map);
    ReadWalks(reader, map);
    ReadFaces(reader, map);
    if (reader.Left() != 0) RefuseDamaged("it goes on behind its faces");
    CheckEuler(map);
    return map;
}

bool IsMapFile(const std::string& strFile) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(strFile, error)) return false;
    if (std::filesystem::path(strFile).extension() == ".vxb") return true;
    std::string strBytes(MapFileMagic.size(), '\0');
    std::ifstream(strFile, std::ios::binary).read(strBytes.data(), static_cast<long>(strBytes.size()));
    return strBytes == MapFileMagic;
}

DrawnMap LoadMapFile(const std::string& strFile) {
    const program::Descriptor file(::open(strFile.c_str(), O_RDONLY | O_CLOEXEC));
    FileStream stream(file.Get());
    return LoadMap(stream);
}

void SaveMapFile(const DrawnMap& map, const std::string& strFile) {
    program::WriteWhole(strFile, [&map](int nDescriptor) {
        FileStream stream(nDescriptor);
        SaveMap(map, stream);
        stream.Flush();
    });
}

}  // namespace faces
