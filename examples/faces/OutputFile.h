// Writes a file whole or not at all.
#pragma once

#include <string>

namespace faces {

/// Replaces a file by one with the given text: written beside it under another name, then renamed. What is no
/// regular file, like a device or a pipe, is written to directly; "-" is standard output. Throws
/// std::runtime_error with the reason, and then leaves no file behind and an old one as it was.
void WriteWhole(const std::string& strFile, const std::string& strText);

}  // namespace faces
