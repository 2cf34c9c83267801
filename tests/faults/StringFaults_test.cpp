// The string and the free functions about strings.

#include <memory>
#include <utility>

#include "EveryOperation.h"
#include "VexaBase/containers/KyQuene.h"
#include "VexaBase/string/CompareLabel.h"
#include "VexaBase/string/KyString.h"

namespace {

std::string Word(const KyString& s) {
    return std::string(s.begin(), s.end()) + " in " + std::to_string(s.m_nLength) + " ";
}

class Text : public Subject {
public:
    std::string Words() const {
        std::string words = Word(m_s) + Word(m_other) + Word(m_out) + "gives " + std::to_string(m_nResult);
        for (const long n : m_queue) {
            words += " " + std::to_string(n);
        }
        return words;
    }
    std::string Contents() const { return Words(); }
    std::string Fault() const {
        for (const KyString* p : {&m_s, &m_other, &m_out}) {
            if (p->m_pData == nullptr) return "no buffer";
            if (p->m_nStrLength < 0 || p->m_nStrLength >= p->m_nLength)
                return "the text is longer than the buffer";
            if (p->m_pData[p->m_nStrLength] != 0) return "the text is not terminated";
        }
        return "";
    }

    KyString m_s{L"abcabc"};
    KyString m_other{L"xyz"};
    KyString m_bc{L"bc"};
    KyString m_empty;
    KyString m_out;
    KyListQuene<long> m_queue;
};

void AsItIs(Text&) {}

/// A pattern whose next table is longer than any that a search might keep elsewhere than on the heap.
void LongPattern(Text& t) {
    const std::wstring strPattern(3000, L'p');
    t.m_bc = KyString(strPattern.c_str());
    t.m_s = KyString((L"ab" + strPattern + L"c" + strPattern).c_str());
}

const Operation<Text> g_strings[] = {
    {"Make", AsItIs, [](Text& t) { t.m_nResult = KyString(L"abc").m_nLength; }, Same},
    {"MakeEmpty", AsItIs, [](Text& t) { t.m_nResult = KyString(nullptr).m_nLength; }, Same},
    {"Copied", AsItIs, [](Text& t) { t.m_nResult = KyString(t.m_s).m_nLength; }, Same},
    {"MovedAway", AsItIs, [](Text& t) { t.m_nResult = KyString(std::move(t.m_s)).m_nLength; }, Same},
    {"AssignACopy", AsItIs, [](Text& t) { t.m_s = t.m_other; }, Same},
    {"AssignACopyOfTheSameSize", [](Text& t) { t.m_s = KyString(L"abc"); },
     [](Text& t) { t.m_s = t.m_other; }, CannotFail},
    {"AssignByMoving", AsItIs, [](Text& t) { t.m_s = std::move(t.m_other); }, CannotFail},
    {"CopyPastTheEnd", AsItIs, [](Text& t) { t.m_s.Copy(L"uvw", 5); }, Same},
    {"CopyInside", AsItIs, [](Text& t) { t.m_s.Copy(L"uvw", 1); }, CannotFail},
    {"CopyOfItself", AsItIs, [](Text& t) { t.m_s.Copy(t.m_s.c_str(), 3); }, Same},
    {"CopyWithinPastTheEnd", AsItIs, [](Text& t) { t.m_s.Copy(0, 5, 6); }, Same},
    {"CopyWithin", AsItIs, [](Text& t) { t.m_s.Copy(0, 2, 3); }, CannotFail},
    {"Insert", AsItIs, [](Text& t) { t.m_nResult = t.m_s.Insert(2, t.m_other); }, Same},
    {"InsertItself", AsItIs, [](Text& t) { t.m_nResult = t.m_s.Insert(2, t.m_s); }, Same},
    {"InsertNowhere", AsItIs, [](Text& t) { t.m_nResult = t.m_s.Insert(-1, t.m_other); }, CannotFail},
    // It is emptied first.
    {"Format", AsItIs, [](Text& t) { t.m_s.Format(L"%ld and %ls", 5L, L"six"); }, Sound},
    {"FormatInItsBuffer", [](Text& t) { t.m_s.Format(L"-"); }, [](Text& t) { t.m_s.Format(L"%d", 5); },
     CannotFail},
    {"MakeUpper", AsItIs, [](Text& t) { t.m_s.MakeUpper(); }, CannotFail},
    {"ReverseFind", AsItIs, [](Text& t) { t.m_nResult = t.m_s.ReverseFind(L'b'); }, CannotFail},
    {"AppendANumber", AsItIs, [](Text& t) { t.m_s << 2.5; }, Same},
    {"CreateNextTable", AsItIs,
     [](Text& t) {
         long next[6];
         t.m_s.CreateNextTable(next);
         t.m_nResult = next[5];
     },
     CannotFail},
    {"FindALongPattern", LongPattern, [](Text& t) { t.m_nResult = t.m_s.Find(t.m_bc); }, Same},
    // What has been found by then is in the queue.
    {"FindAll", AsItIs, [](Text& t) { t.m_nResult = t.m_s.Find(t.m_bc, t.m_queue); }, Changed},
    {"FindEx", AsItIs, [](Text& t) { t.m_nResult = t.m_s.FindEx(t.m_bc, t.m_out, 1); }, CannotFail},
    {"Replace", AsItIs, [](Text& t) { t.m_nResult = t.m_s.Replace(t.m_bc, t.m_other); }, Same},
    {"ReplaceByNothing", AsItIs, [](Text& t) { t.m_nResult = t.m_s.Replace(t.m_bc, t.m_empty); }, Same},
    {"ReplaceNothing", AsItIs, [](Text& t) { t.m_nResult = t.m_s.Replace(t.m_empty, t.m_other); }, Same},
    {"ReplaceALongPattern", LongPattern, [](Text& t) { t.m_nResult = t.m_s.Replace(t.m_bc, t.m_other); },
     Same},
    {"ReplaceEx", AsItIs, [](Text& t) { t.m_s.ReplaceEx(t.m_bc, t.m_other, 1); }, CannotFail},
    {"Swap", AsItIs, [](Text& t) { swap(t.m_s, t.m_other); }, CannotFail},
    {"GetLength", AsItIs, [](Text& t) { t.m_nResult = t.m_s.GetLength(); }, CannotFail},
    {"CloneString", AsItIs, [](Text& t) { t.m_nResult = std::unique_ptr<wchar_t[]>(CloneString(L"abc"))[2]; },
     Same},
};
RUN_UNDER_FAULTS(KyString, g_strings);

/// Searches and comparisons are free to allocate: the result is what counts.
TEST(StringFaults, ASearchOrAComparisonThatIsRefusedMemoryThrowsOrAnswers) {
    const KyString s(L"abcabc");
    const KyString bc(L"bc");
    for (long k = 1; k < 20; ++k) {
        const long nBlocks = LiveBlocks();
        {
            const FaultAt fault(FaultKind::Allocation, k);
            try {
                EXPECT_EQ(s.Find(bc), 1);
                EXPECT_EQ(CompareLabel(L"item9", L"item12"), -1);
            } catch (const std::bad_alloc&) {
            }
        }
        EXPECT_EQ(LiveBlocks(), nBlocks);
    }
}

}  // namespace
