// A drawn map as a file, usually named *.vxb.
//
//     magic       8 bytes, MapFileMagic
//     version     long, MapFileVersion
//     length      long, of the whole file in bytes
//     title       text: its length in bytes (long), and the bytes, which are UTF-8
//     grid        4 doubles: x and y of the point (0, 0), the steps in x and in y
//     y up        bool
//     extent      4 longs: the least x and y of the map's lines on the grid, then the greatest
//     components  long
//     points      long, how many; each: x and y (long), ascending
//     arcs        long, how many; each: indices of two points (long), ascending, and the kind (char):
//                 b border, d dead end, i bridge
//     names       long, how many; each a text, no two the same
//     walks       long, how many; each: long, how many sides; the sides (long)
//     faces       long, how many; each: its outer walk, its name or -1, how many holes (long); their walks
//
// Values are as streams have them. The same map gives the same bytes.
#pragma once

#include <string>

#include "VexaBase/stream/KyStream.h"
#include "examples/faces/DrawnMap.h"

namespace faces {

inline const std::string MapFileMagic = "\x89VXB\r\n\x1a\n";
constexpr long MapFileVersion = 1;

/// Writes the map to an empty stream.
void SaveMap(const DrawnMap& map, KyStream& stream);

/// Reads a stream from its beginning. Every number is checked before it is used, and a count against the
/// bytes that are left before anything is made for it. Throws MapError if the stream holds no map, one of a
/// newer version, or one that is truncated or damaged. There is no checksum: a changed letter or coordinate
/// that makes sense as well goes unnoticed.
DrawnMap LoadMap(KyStream& stream);

/// Whether a file is to be read by LoadMapFile: a regular file that begins with the magic or is named *.vxb.
bool IsMapFile(const std::string& strFile);

/// As LoadMap; throws std::runtime_error with the reason if the file cannot be read.
DrawnMap LoadMapFile(const std::string& strFile);

/// Writes the file whole or not at all; throws std::runtime_error with the reason.
void SaveMapFile(const DrawnMap& map, const std::string& strFile);

}  // namespace faces
