// Text for the pictures, which are XML.
#pragma once

#include <string>

namespace program {

/// UTF-8 text as it may stand in XML, between tags and in an attribute: markup escaped, control characters as spaces,
/// U+FFFD for what is no character.
std::string XmlText(const std::string& strText);

}  // namespace program
