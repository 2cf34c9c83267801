// A script of edits, one a line; # begins a comment, in front of the line or behind a space and with one
// behind it:
//
//     add Circle NAME X Y RADIUS
//     add Rectangle NAME X Y WIDTH HEIGHT
//     add Line NAME X Y EXTENT-TO-THE-RIGHT EXTENT-DOWN
//     add Label NAME X Y HEIGHT TEXT...
//     move NAME TO-THE-RIGHT DOWN
//     colour NAME COLOUR
//     raise NAME
//     remove NAME
//     undo [COUNT]
//     redo [COUNT]
#pragma once

#include <istream>
#include <string>

namespace journal {

/// Posts line by line and drains the event channel after each. Throws Refusal, with the line's number, at the
/// first line that cannot be read or done; what comes before it is done.
void RunScript(std::istream& script);

}  // namespace journal
