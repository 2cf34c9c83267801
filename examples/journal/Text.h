// What the journal asks of numbers and words, wherever they come from, and how it writes them.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace journal {

/// Something that a drawing cannot hold, or an edit that cannot be done. The message says what, for the user.
class Refusal : public std::runtime_error {
public:
    using runtime_error::runtime_error;
};

/// Greatest coordinate, size or distance, either way from 0.
constexpr double MaxNumber = 1e6;

/// What is being read of which value, for messages: "radius".
using What = const char*;

/// These give back what they were given, or throw Refusal.
double CheckedNumber(double d, What what);                    // finite and within MaxNumber
double CheckedSize(double d, What what);                      // and above 0
std::string CheckedText(std::string strText, What what);      // UTF-8 without control characters, not empty
std::string CheckedName(std::string strName, What what);      // letters, digits, - and _
std::string CheckedColour(std::string strColour, What what);  // a name that ColourNames lists, or #rrggbb

/// The colours that have names, with commas.
std::string ColourNames();

/// Two decimals at most: 2, 2.5, 2.25. Independent of the locale.
std::string ToText(double d);

/// Inside quotes, with anything but printable ASCII as \xNN.
std::string Quoted(std::string_view text);

}  // namespace journal
