// A drawing as a file: eight characters that say so, the number of shapes and, shape by shape, the name of
// its class, the version of what the class writes, the shape's name, position, colour and measures. The bytes
// are collected in a chunked stream.
#pragma once

#include <string>

#include "examples/journal/Document.h"

namespace journal {

std::string BytesOf(const Document& document);

/// Reads a file's bytes into an empty document. Throws Refusal if they are no drawing, are truncated or damaged, or
/// hold a shape of a class or version that this program does not know.
void ReadBytes(const std::string& strBytes, Document& document);

}  // namespace journal
