// Reads a file whole.
#pragma once

#include <string>

namespace program {

/// The contents of a file, or of standard input for "-". Throws std::runtime_error with the reason, which does not name
/// the file.
std::string ReadWhole(const std::string& strFile);

/// What the file is called in a message.
inline std::string NameOfInput(const std::string& strFile) {
    return strFile == "-" ? "standard input" : strFile;
}

}  // namespace program
