// A line of a script, taken word by word.
#pragma once

#include <string>

#include "examples/journal/Text.h"

namespace journal {

class Words {
public:
    explicit Words(std::string strLine) : m_strLine(std::move(strLine)) {}

    /// Whether there is another word. A # at the beginning of the line, or as a word of its own, begins a
    /// comment.
    bool HasMore();

    /// The next word, or number. Throw Refusal if it is missing or no number.
    std::string Next(What what);
    double NextNumber(What what);

    /// All the rest of the line, a # included, without spaces around it.
    std::string Rest(What what);

    /// Throws Refusal if there is more.
    void End();

private:
    void SkipSpaces();

    std::string m_strLine;
    std::size_t m_nPos = 0;
};

}  // namespace journal
