// Writes a file whole or not at all.
#pragma once

#include <functional>
#include <string>

namespace program {

/// Writes to an open file of the operating system; throws std::runtime_error if it cannot.
using FileWriter = std::function<void(int nDescriptor)>;

/// Replaces a file by what `write` makes of an empty one: written beside it under another name, then renamed.
/// What is no regular file, like a device or a pipe, is written to directly; "-" is standard output. Throws
/// std::runtime_error with the reason, and then leaves no file behind and an old one as it was.
void WriteWhole(const std::string& strFile, const FileWriter& write);

/// The same with a text.
void WriteWhole(const std::string& strFile, const std::string& strText);

/// What the file is called in a message.
inline std::string NameOfOutput(const std::string& strFile) {
    return strFile == "-" ? "standard output" : strFile;
}

}  // namespace program
