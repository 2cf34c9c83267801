// Names out of files: in valid UTF-8, and in the order of labels.
#pragma once

#include <string>
#include <vector>

#include "VexaBase/string/KyString.h"

namespace faces {

/// The text with U+FFFD in place of whatever is no UTF-8.
std::string ValidUtf8(const std::string& strText);

/// Never fails: U+FFFD takes the place of what is no UTF-8, and of U+0000, at which a wide string would end.
KyString FromUtf8(const std::string& strText);

/// The names in the order of labels ("Ward 9" before "Ward 10"), those that order equal by character code;
/// each once, control characters replaced by spaces so that each fits a line.
std::vector<std::string> SortedAsLabels(const std::vector<std::string>& names);

}  // namespace faces
