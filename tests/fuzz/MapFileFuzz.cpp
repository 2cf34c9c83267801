// The loading of saved maps: bytes are refused in one line, or make a map that can be drawn and that is saved
// to the same bytes again.
//
// Few random bytes get past the header. So an input is taken as a file, as what follows a header, or as a
// number of changes to the file of a small map.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>

#include "ByteSource.h"
#include "VexaBase/stream/KyDynArrayStream.h"
#include "examples/faces/MapFile.h"
#include "examples/faces/SvgWriter.h"

namespace {

using faces::ArcKind;
using faces::DrawnMap;

std::string BytesOf(const DrawnMap& map) {
    KyDynArrayStream stream;
    faces::SaveMap(map, stream);
    return {stream.m_bytes.m_pData, static_cast<std::size_t>(stream.GetLength())};
}

/// Two named triangles with a common side, and a dead end.
std::string SmallMap() {
    DrawnMap map;
    map.m_strTitle = "t";
    map.m_high = {9, 9};
    map.m_nComponents = 1;
    map.m_points = {{0, 0}, {0, 9}, {9, 0}, {9, 8}, {9, 9}};
    map.m_arcs = {{0, 1, ArcKind::Border}, {0, 2, ArcKind::Border}, {1, 2, ArcKind::Border},
                  {1, 3, ArcKind::Border}, {2, 3, ArcKind::Border}, {3, 4, ArcKind::DeadEnd}};
    map.m_names = {"Ward 9", "Ward 10"};
    map.m_sides = {2, 5, 1, 4, 8, 7, 0, 6, 9, 3};
    map.m_walks = {{0, 3}, {3, 3}, {6, 4}};
    map.m_faces = {{0, 0, {}}, {1, 1, {}}};
    return BytesOf(map);
}

bool IsLoaded(std::string strBytes) {
    KyDynArrayStream stream;
    stream.Write(strBytes.data(), static_cast<long>(strBytes.size()));
    try {
        faces::LoadMap(stream);
        return true;
    } catch (const faces::MapError&) {
        return false;
    }
}

void PutLength(std::string& strBytes) {
    const auto nLength = static_cast<long>(strBytes.size());
    constexpr std::size_t lengthPos = 16;
    if (strBytes.size() >= lengthPos + sizeof nLength)
        std::memcpy(&strBytes[lengthPos], &nLength, sizeof nLength);
}

std::string File(ByteSource& source) {
    static const std::string strSmall = SmallMap();
    static const bool bSmallIsLoaded = IsLoaded(strSmall);
    FUZZ_CHECK(bSmallIsLoaded);
    constexpr long headerSize = 24;
    const long nWay = source.Number(0, 7);
    std::string strBytes;
    if (nWay == 0) {
        while (!source.IsEmpty()) strBytes += static_cast<char>(source.Byte());
    } else if (nWay == 1) {
        strBytes = strSmall.substr(0, headerSize);
        while (!source.IsEmpty()) strBytes += static_cast<char>(source.Byte());
        PutLength(strBytes);
    } else {
        strBytes = strSmall;
        for (long n = source.Number(0, 5); n > 0; --n) {
            const std::size_t nPos = (source.Byte() * 256U + source.Byte()) % strSmall.size();
            strBytes[nPos] = static_cast<char>(source.Byte());
        }
    }
    return strBytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
    ByteSource source(pData, nSize);
    std::string strBytes = File(source);
    KyDynArrayStream stream;
    stream.Write(strBytes.data(), static_cast<long>(strBytes.size()));
    try {
        const DrawnMap map = faces::LoadMap(stream);

        std::string strAgain = BytesOf(map);
        const std::size_t yUpPos = 24 + 8 + map.m_strTitle.size() + 32;
        FUZZ_CHECK(strAgain.size() == strBytes.size());
        FUZZ_CHECK(strBytes[yUpPos] == 0 || strAgain[yUpPos] == 1);
        strAgain[yUpPos] = strBytes[yUpPos];  // any byte but 0 is true
        FUZZ_CHECK(strAgain == strBytes);
        try {
            FUZZ_CHECK(faces::DrawSvg(map).find("</svg>") != std::string::npos);
        } catch (const std::logic_error&) {
            // More than six colours: the map is not plane.
            FUZZ_CHECK(map.m_faces.size() > 6);
        }
    } catch (const faces::MapError& error) {
        FUZZ_CHECK(std::strchr(error.what(), '\n') == nullptr);
        FUZZ_CHECK(stream.GetLength() == static_cast<long>(strBytes.size()));
    }
    return 0;
}
