#include "VexaBase/string/CompareLabel.h"

#include <cstdint>
#include <limits>

namespace {

/// Takes a label apart from front to back.
class LabelReader {
public:
    explicit LabelReader(const wchar_t* pLabel) : m_p(pLabel) {}

    /// The next character of the text part, 0 at its end, behind which there is none to ask for. The digits
    /// before it go into the number.
    wchar_t NextOfText() {
        if (!m_bTakeAlong) {
            for (; *m_p >= L'0' && *m_p <= L'9'; ++m_p) {
                AddDigit(*m_p - L'0');
            }
        }
        // A terminator that was to be taken along ends the text like any other.
        const wchar_t ch = *m_p++;
        m_bTakeAlong = !m_bTakeAlong && ch < 0;
        return ch;
    }

    /// The low half of the number, complete once the text has ended.
    std::int32_t Number() const { return static_cast<std::int32_t>(m_nNumber); }

private:
    void AddDigit(long nDigit) {
        constexpr long nMax = std::numeric_limits<long>::max();
        const bool bFits = m_nNumber < nMax / 10 || (m_nNumber == nMax / 10 && nDigit <= nMax % 10);
        m_nNumber = bFits ? m_nNumber * 10 + nDigit : nMax;
    }

    const wchar_t* m_p;
    bool m_bTakeAlong = false;
    long m_nNumber = 0;
};

template <class Value>
int ThreeWay(Value a, Value b) {
    return a < b ? -1 : static_cast<int>(b < a);
}

}  // namespace

int CompareLabel(const wchar_t* a, const wchar_t* b) {
    KY_CHECK(a != nullptr && b != nullptr, "CompareLabel", "no label");
    LabelReader readerA(a);
    LabelReader readerB(b);
    for (;;) {
        const wchar_t chA = readerA.NextOfText();
        const wchar_t chB = readerB.NextOfText();
        if (chA != chB) {
            return ThreeWay(chA, chB);
        }
        if (chA == 0) {
            return ThreeWay(readerA.Number(), readerB.Number());
        }
    }
}
