// Wide strings (searching, replacing, building, copying) beside the standard library and Boost, and the order
// of labels beside ICU. A case's name is job/case/library/size; the results of all libraries are compared
// before anything is timed.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <boost/algorithm/searching/boyer_moore_horspool.hpp>
#include <boost/algorithm/searching/knuth_morris_pratt.hpp>
#include <boost/algorithm/string/replace.hpp>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <functional>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "VexaBase/string/CompareLabel.h"
#include "VexaBase/string/KyString.h"

#if defined(VEXABASE_HAS_ICU)
#include <unicode/coll.h>
#include <unicode/unistr.h>
#endif

namespace {

/// Ends the program when what two libraries define to be the same is not.
void Agree(bool bAgreed, const std::string& name) {
    if (!bAgreed) {
        std::fprintf(stderr, "%s: the libraries disagree\n", name.c_str());
        std::exit(EXIT_FAILURE);
    }
}

template <class Operation>
void Register(const std::string& name, long nSize, Operation operation) {
    benchmark::RegisterBenchmark(name.c_str(), [operation](benchmark::State& state) {
        for (auto _ : state) {
            benchmark::DoNotOptimize(operation());
        }
    })->Arg(nSize);
}

// Finding

struct Search {
    std::string name;
    std::wstring text;
    std::wstring pattern;
};

constexpr std::size_t nText = 1'000'000;

std::wstring RandomText(std::size_t nLength, const std::wstring& letters) {
    std::mt19937 engine(1);
    std::wstring text(nLength, L'.');
    for (wchar_t& ch : text) {
        ch = letters[engine() % letters.size()];
    }
    return text;
}

/// The text with the pattern shortly before its end.
Search With(const std::string& name, std::wstring text, const std::wstring& pattern) {
    text.replace(text.size() - 30, pattern.size(), pattern);
    return {name, std::move(text), pattern};
}

std::vector<Search> Searches() {
    const std::wstring manyA(nText, L'a');
    const std::wstring fox = L"the quick brown fox jumps over the other dog and runs away; ";
    return {
        With("find, rare first letter", RandomText(nText, L"fghijklm"), L"needle"),
        With("find, frequent first letter", RandomText(nText, L"ac"), L"aabab"),
        With("find, frequent ends", RandomText(nText, L"ac"), L"aacacaccbaca"),
        {"find, adversarial", manyA + L'b', std::wstring(100, L'a') + L'b'},
        {"find, adversarial inside", manyA, std::wstring(50, L'a') + L'b' + std::wstring(50, L'a')},
        With("find, short text", (fox + fox + fox + fox).substr(0, 200), L"lazy"),
    };
}

long FindOurs(const KyString& text, const KyString& pattern) { return text.Find(pattern); }
long FindStd(const std::wstring& text, const std::wstring& pattern) {
    return static_cast<long>(text.find(pattern));
}
long FindWcsstr(const std::wstring& text, const std::wstring& pattern) {
    const wchar_t* const pFound = std::wcsstr(text.c_str(), pattern.c_str());
    return pFound == nullptr ? -1 : pFound - text.c_str();
}
template <class Searcher>
long FindStdSearcher(const std::wstring& text, const std::wstring& pattern) {
    const auto found = std::search(text.begin(), text.end(), Searcher(pattern.begin(), pattern.end()));
    return found == text.end() ? -1 : found - text.begin();
}
template <class Searcher>
long FindBoostSearcher(const std::wstring& text, const std::wstring& pattern) {
    const auto found = Searcher(pattern.begin(), pattern.end())(text.begin(), text.end()).first;
    return found == text.end() ? -1 : found - text.begin();
}

void RegisterSearches() {
    using Iterator = std::wstring::const_iterator;
    using Find = long (*)(const std::wstring&, const std::wstring&);
    const std::pair<const char*, Find> peers[] = {
        {"std::wstring", FindStd},
        {"wcsstr", FindWcsstr},
        {"std::default_searcher", FindStdSearcher<std::default_searcher<Iterator>>},
        {"std::boyer_moore_searcher", FindStdSearcher<std::boyer_moore_searcher<Iterator>>},
        {"std::boyer_moore_horspool_searcher", FindStdSearcher<std::boyer_moore_horspool_searcher<Iterator>>},
        {"boost::knuth_morris_pratt", FindBoostSearcher<boost::algorithm::knuth_morris_pratt<Iterator>>},
        {"boost::boyer_moore_horspool", FindBoostSearcher<boost::algorithm::boyer_moore_horspool<Iterator>>},
    };
    for (const Search& search : Searches()) {
        const long nSize = static_cast<long>(search.text.size());
        const std::string name = "wide strings/" + search.name + "/";
        const KyString text(search.text.c_str());
        const KyString pattern(search.pattern.c_str());
        Register(name + "ours", nSize, [text, pattern] { return FindOurs(text, pattern); });
        for (const auto& [peer, find] : peers) {
            Agree(FindOurs(text, pattern) == find(search.text, search.pattern), name + peer);
            Register(name + peer, nSize, [search, find = find] { return find(search.text, search.pattern); });
        }
    }
}

// Replacing

std::wstring ReplaceStd(const std::wstring& text, const std::wstring& from, const std::wstring& to) {
    std::wstring edited;
    std::size_t nDone = 0;
    for (std::size_t i = text.find(from); i != std::wstring::npos; i = text.find(from, nDone)) {
        edited.append(text, nDone, i - nDone).append(to);
        nDone = i + from.size();
    }
    return edited.append(text, nDone);
}

KyString ReplaceOurs(const KyString& text, const KyString& from, const KyString& to) {
    KyString edited(text);
    edited.Replace(from, to);
    return edited;
}

void RegisterReplacements() {
    const std::tuple<const char*, std::wstring, std::wstring> replacements[] = {
        {"replace all, longer", L"ac", L"xyz"},
        {"replace all, shorter", L"ac", L"x"},
        {"replace all, rare", L"acacacac", L"rare"},
    };
    const std::wstring text = RandomText(nText, L"ac");
    const KyString ourText(text.c_str());
    for (const auto& [what, from, to] : replacements) {
        const std::string name = std::string("wide strings/") + what + "/";
        const KyString ourFrom(from.c_str());
        const KyString ourTo(to.c_str());
        const KyString ours = ReplaceOurs(ourText, ourFrom, ourTo);
        const std::wstring edited = ReplaceStd(text, from, to);
        Agree(ours.c_str() == edited && boost::replace_all_copy(text, from, to) == edited, name);
        Register(name + "ours", nText, [=] { return ReplaceOurs(ourText, ourFrom, ourTo); });
        Register(name + "std::wstring, find and append", nText,
                 [=, from = from, to = to] { return ReplaceStd(text, from, to); });
        Register(name + "boost::replace_all", nText, [=, from = from, to = to] {
            std::wstring copy = text;
            boost::replace_all(copy, from, to);
            return copy;
        });
        Register(name + "boost::replace_all_copy", nText,
                 [=, from = from, to = to] { return boost::replace_all_copy(text, from, to); });
    }
}

// Building and copying

constexpr const wchar_t* apszPieces[] = {L"ward ", L"14", L", precinct of ", L"Saint Andrew", L" (north)"};

KyString BuildOurs() {
    KyString s(apszPieces[0]);
    for (std::size_t i = 1; i < std::size(apszPieces); ++i) {
        s.Copy(apszPieces[i], s.GetLength());
    }
    return s;
}
std::wstring BuildStd() {
    std::wstring s(apszPieces[0]);
    for (std::size_t i = 1; i < std::size(apszPieces); ++i) {
        s += apszPieces[i];
    }
    return s;
}
/// The limit: a new block of the exact size for every piece.
std::unique_ptr<wchar_t[]> BuildLimit() {
    std::unique_ptr<wchar_t[]> text;
    std::size_t nLength = 0;
    for (const wchar_t* pszPiece : apszPieces) {
        const std::size_t nPiece = std::wcslen(pszPiece);
        std::unique_ptr<wchar_t[]> longer(new wchar_t[nLength + nPiece + 1]);
        std::copy_n(text.get(), nLength, longer.get());
        std::copy_n(pszPiece, nPiece + 1, longer.get() + nLength);
        nLength += nPiece;
        text = std::move(longer);
    }
    return text;
}
template <class Value>
std::wstring Streamed(const Value* pBegin, const Value* pEnd) {
    std::wostringstream stream;
    for (const Value* p = pBegin; p != pEnd; ++p) {
        stream << *p;
    }
    return stream.str();
}

constexpr double aNumbers[] = {7.5, 1024, 0.125, 31.25};

KyString NumbersOurs() {
    KyString s(L"at");
    for (const double d : aNumbers) {
        s.Copy(L" ", s.GetLength());
        s << d;
    }
    return s;
}
std::wstring NumbersStd() {
    std::wstring s(L"at");
    for (const double d : aNumbers) {
        s += L' ';
        s += std::to_wstring(d);
        while (s.back() == L'0' && s[s.size() - 2] != L'.') {
            s.pop_back();
        }
    }
    return s;
}
std::wstring NumbersStreamed() {
    std::wostringstream stream;
    stream << L"at" << std::fixed;
    for (const double d : aNumbers) {
        stream << L' ' << d;
    }
    return stream.str();
}

void RegisterBuilding() {
    const std::string pieces = "wide strings/build from pieces/";
    const long nPieces = static_cast<long>(std::size(apszPieces));
    Agree(BuildOurs().c_str() == BuildStd() && BuildStd() == Streamed(apszPieces, std::end(apszPieces)),
          pieces);
    Register(pieces + "ours", nPieces, BuildOurs);
    Register(pieces + "std::wstring", nPieces, BuildStd);
    Register(pieces + "limit", nPieces, BuildLimit);
    Register(pieces + "std::wostringstream", nPieces,
             [] { return Streamed(apszPieces, std::end(apszPieces)); });

    const std::string numbers = "wide strings/build from numbers/";
    const long nNumbers = static_cast<long>(std::size(aNumbers));
    Agree(NumbersOurs().c_str() == NumbersStd(), numbers);
    Register(numbers + "ours", nNumbers, NumbersOurs);
    Register(numbers + "std::wstring", nNumbers, NumbersStd);
    Register(numbers + "std::wostringstream", nNumbers, NumbersStreamed);

    for (const long nSize : {20L, 200L, 100'000L}) {
        const std::string copy = "wide strings/copy/";
        const std::wstring text(static_cast<std::size_t>(nSize), L'x');
        const KyString ourText(text.c_str());
        Register(copy + "ours", nSize, [ourText] { return KyString(ourText); });
        Register(copy + "limit", nSize, [text] {
            std::unique_ptr<wchar_t[]> pszCopy(new wchar_t[text.size() + 1]);
            std::wmemcpy(pszCopy.get(), text.c_str(), text.size() + 1);
            benchmark::DoNotOptimize(pszCopy.get());
            return pszCopy != nullptr;
        });
        Register(copy + "std::wstring", nSize, [text] { return std::wstring(text); });
    }
}

// Labels of one prefix of small letters and one number, of which both libraries define the same order

std::vector<std::wstring> Labels(std::size_t nCount) {
    std::mt19937 engine(1);
    std::vector<std::wstring> labels;
    for (std::size_t i = 0; i < nCount; ++i) {
        labels.push_back(std::wstring(1 + engine() % 3, static_cast<wchar_t>(L'a' + engine() % 26)) +
                         std::to_wstring(engine() % 10'000));
    }
    return labels;
}

std::vector<const std::wstring*> SortedByOurs(const std::vector<std::wstring>& labels) {
    std::vector<const std::wstring*> sorted;
    for (const std::wstring& label : labels) {
        sorted.push_back(&label);
    }
    std::stable_sort(sorted.begin(), sorted.end(), [](const std::wstring* a, const std::wstring* b) {
        return CompareLabel(a->c_str(), b->c_str()) < 0;
    });
    return sorted;
}

#if defined(VEXABASE_HAS_ICU)

std::unique_ptr<icu::Collator> NumericCollator() {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Collator> pCollator(
        icu::Collator::createInstance(icu::Locale::getEnglish(), status));
    pCollator->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, status);
    Agree(U_SUCCESS(status), "labels: no collator");
    return pCollator;
}

/// The labels' indices in the collator's order.
std::vector<std::size_t> SortedByCollation(const icu::Collator& collator,
                                           const std::vector<icu::UnicodeString>& labels) {
    std::vector<const icu::UnicodeString*> sorted;
    for (const icu::UnicodeString& label : labels) {
        sorted.push_back(&label);
    }
    std::stable_sort(sorted.begin(), sorted.end(),
                     [&](const icu::UnicodeString* a, const icu::UnicodeString* b) {
                         return collator.compare(*a, *b) == icu::Collator::LESS;
                     });
    std::vector<std::size_t> order;
    for (const icu::UnicodeString* pLabel : sorted) {
        order.push_back(static_cast<std::size_t>(pLabel - labels.data()));
    }
    return order;
}

using SortKeys = std::vector<std::pair<std::string, std::size_t>>;

/// Each label's sort key, with its index.
SortKeys MakeSortKeys(const icu::Collator& collator, const std::vector<icu::UnicodeString>& labels) {
    SortKeys keys;
    std::uint8_t key[256];
    for (const icu::UnicodeString& label : labels) {
        const auto nLength = collator.getSortKey(label, key, sizeof(key));
        keys.emplace_back(std::string(reinterpret_cast<const char*>(key), static_cast<std::size_t>(nLength)),
                          keys.size());
    }
    return keys;
}

std::vector<std::size_t> SortedByKeys(const SortKeys& keys) {
    std::vector<const SortKeys::value_type*> sorted;
    for (const auto& key : keys) {
        sorted.push_back(&key);
    }
    std::stable_sort(
        sorted.begin(), sorted.end(),
        [](const SortKeys::value_type* a, const SortKeys::value_type* b) { return a->first < b->first; });
    std::vector<std::size_t> order;
    for (const SortKeys::value_type* pKey : sorted) {
        order.push_back(pKey->second);
    }
    return order;
}

#endif

void RegisterLabels() {
    static const std::vector<std::wstring> labels = Labels(100'000);
    const long nSize = static_cast<long>(labels.size());
    const std::string name = "labels/sort/";
    Register(name + "ours", nSize, [] { return SortedByOurs(labels); });
#if defined(VEXABASE_HAS_ICU)
    static const std::unique_ptr<icu::Collator> pCollator = NumericCollator();
    static std::vector<icu::UnicodeString> icuLabels;
    std::vector<std::size_t> order;
    for (const std::wstring& label : labels) {
        icuLabels.push_back(icu::UnicodeString::fromUTF32(reinterpret_cast<const UChar32*>(label.data()),
                                                          static_cast<int32_t>(label.size())));
    }
    for (const std::wstring* pLabel : SortedByOurs(labels)) {
        order.push_back(static_cast<std::size_t>(pLabel - labels.data()));
    }
    static const SortKeys madeBefore = MakeSortKeys(*pCollator, icuLabels);
    Agree(order == SortedByCollation(*pCollator, icuLabels), name + "ICU collation");
    Agree(order == SortedByKeys(madeBefore), name + "ICU sort keys");
    Register(name + "ICU collation", nSize, [] { return SortedByCollation(*pCollator, icuLabels); });
    Register(name + "ICU sort keys", nSize, [] { return SortedByKeys(MakeSortKeys(*pCollator, icuLabels)); });
    Register("labels/sort, keys made before/ours", nSize, [] { return SortedByOurs(labels); });
    Register("labels/sort, keys made before/ICU sort keys", nSize, [] { return SortedByKeys(madeBefore); });
#endif
}

}  // namespace

int main(int argc, char** argv) {
    RegisterSearches();
    RegisterReplacements();
    RegisterBuilding();
    RegisterLabels();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return EXIT_FAILURE;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return EXIT_SUCCESS;
}
