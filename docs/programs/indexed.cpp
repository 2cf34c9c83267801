// A sorted list with an index: look-up by bisection, insertion at the place
// that the look-up found.

#include <VexaBase/containers/KyXList.h>

#include <iostream>
#include <sstream>
#include <string>

namespace {

struct Word {
    explicit Word(std::string text) : m_strText(std::move(text)) {}
    /// What BFindDataTo asks for: negative, 0 or positive as this word comes
    /// before, equals, or comes after.
    int Cmp(const Word& other) const {
        return m_strText.compare(other.m_strText);
    }
    std::string m_strText;
    long m_nCount = 1;
};

}  // namespace

int main() {
    std::istringstream text(
        "the ring closes the walk and the walk closes the face");
    // An index entry for every fourth word; the list owns the words.
    KyPXList<Word> words(4);

    for (std::string spelling; text >> spelling;) {
        const Word key(spelling);
        // Found, the cursor stands on it; otherwise it stands where the word
        // belongs.
        if (words.BFindDataTo(key)) {
            ++words.GetCurData()->m_nCount;
        } else {
            words.InsertCur(new Word(spelling));
        }
    }
    for (const Word* word : words)
        std::cout << word->m_strText << ' ' << word->m_nCount << '\n';

    std::cout << words.m_arrIndex.GetLength() << " index entries for "
              << words.GetLength() << " words; at 5: " << words[5]->m_strText
              << '\n';
}
