// A drawing as a file: eight characters that say so, the number of shapes and, shape by shape, the name of
// its class, the version of what the class writes, the shape's name, position, colour and measures. The bytes
// are collected in a chunked stream.
#pragma once

#include <string>

#include "examples/journal/Document.h"

namespace journal {

void WriteDocument(const std::string& strFile, const Document& document);

/// Reads a file into an empty document. Throws std::runtime_error with the reason if it cannot be read,
/// Refusal if it is no drawing, is truncated or damaged, or holds a shape of a class or version that this
/// program does not know.
void ReadDocument(const std::string& strFile, Document& document);

/// The same on bytes.
std::string BytesOf(const Document& document);
void ReadBytes(const std::string& strBytes, Document& document);

}  // namespace journal
