// Searching, replacing and label order beside std::wstring, Boost and ICU. A case's name is job/case/library;
// the results of all libraries are compared before anything is timed.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <boost/algorithm/string/replace.hpp>
#include <cstdlib>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "VexaBase/string/CompareLabel.h"
#include "VexaBase/string/KyString.h"

#if defined(VEXABASE_HAS_ICU)
#include <unicode/coll.h>
#include <unicode/unistr.h>
#endif

namespace {

struct Search {
    std::wstring text;
    std::wstring pattern;
};

/// A million characters with the pattern once, at the end.
Search RareFirstLetter() {
    Search search{std::wstring(1'000'000, L'.'), L"needle"};
    for (std::size_t i = 0; i < search.text.size(); ++i) {
        search.text[i] = static_cast<wchar_t>(L'f' + i * 7 % 8);
    }
    search.text.replace(search.text.size() - 100, 6, search.pattern);
    return search;
}

Search FrequentFirstLetter() {
    Search search{std::wstring(1'000'000, L'.'), L"aabab"};
    std::mt19937 engine(1);
    for (wchar_t& ch : search.text) {
        ch = engine() % 2 == 0 ? L'a' : L'c';
    }
    search.text.replace(search.text.size() - 100, 5, search.pattern);
    return search;
}

Search Adversarial() {
    Search search{std::wstring(100'000, L'a'), std::wstring(100, L'a') + L'b'};
    search.text += L'b';
    return search;
}

Search Short() { return {L"The quick brown fox jumps over the lazy dog and runs away", L"lazy"}; }

void FindOurs(benchmark::State& state, const Search& search) {
    const KyString text(search.text.c_str());
    const KyString pattern(search.pattern.c_str());
    if (text.Find(pattern) != static_cast<long>(search.text.find(search.pattern))) {
        state.SkipWithError("the libraries disagree");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(text.Find(pattern));
    }
}

void FindStd(benchmark::State& state, const Search& search) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(search.text.find(search.pattern));
    }
}

void FindBoyerMoore(benchmark::State& state, const Search& search) {
    for (auto _ : state) {
        const std::boyer_moore_searcher searcher(search.pattern.begin(), search.pattern.end());
        benchmark::DoNotOptimize(std::search(search.text.begin(), search.text.end(), searcher));
    }
}

void ReplaceOurs(benchmark::State& state) {
    const Search search = FrequentFirstLetter();
    const KyString text(search.text.c_str());
    const KyString from(L"ac");
    const KyString to(L"xyz");
    std::wstring expected = search.text;
    boost::replace_all(expected, L"ac", L"xyz");
    for (auto _ : state) {
        KyString edited(text);
        edited.Replace(from, to);
        benchmark::DoNotOptimize(edited.c_str());
        if (edited.GetLength() != static_cast<long>(expected.size())) {
            state.SkipWithError("the libraries disagree");
        }
    }
}
BENCHMARK(ReplaceOurs)->Name("string/replace all/ours");

void ReplaceBoost(benchmark::State& state) {
    const Search search = FrequentFirstLetter();
    for (auto _ : state) {
        std::wstring edited = search.text;
        boost::replace_all(edited, L"ac", L"xyz");
        benchmark::DoNotOptimize(edited.data());
    }
}
BENCHMARK(ReplaceBoost)->Name("string/replace all/boost");

std::vector<std::wstring> Labels() {
    std::mt19937 engine(1);
    std::vector<std::wstring> labels;
    for (int i = 0; i < 20'000; ++i) {
        labels.push_back(std::wstring(1 + engine() % 3, static_cast<wchar_t>(L'a' + engine() % 26)) +
                         std::to_wstring(engine() % 10'000));
    }
    return labels;
}

void LabelsOurs(benchmark::State& state) {
    const std::vector<std::wstring> labels = Labels();
    for (auto _ : state) {
        std::vector<const wchar_t*> sorted;
        for (const std::wstring& label : labels) {
            sorted.push_back(label.c_str());
        }
        std::stable_sort(sorted.begin(), sorted.end(),
                         [](const wchar_t* a, const wchar_t* b) { return CompareLabel(a, b) < 0; });
        benchmark::DoNotOptimize(sorted.data());
    }
}
BENCHMARK(LabelsOurs)->Name("labels/sort 20000/ours");

#if defined(VEXABASE_HAS_ICU)

std::unique_ptr<icu::Collator> NumericCollator() {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Collator> pCollator(
        icu::Collator::createInstance(icu::Locale::getEnglish(), status));
    pCollator->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, status);
    return U_SUCCESS(status) ? std::move(pCollator) : nullptr;
}

void LabelsIcu(benchmark::State& state) {
    const std::unique_ptr<icu::Collator> pCollator = NumericCollator();
    std::vector<icu::UnicodeString> labels;
    const std::vector<std::wstring> wide = Labels();
    for (const std::wstring& label : wide) {
        labels.push_back(icu::UnicodeString::fromUTF32(reinterpret_cast<const UChar32*>(label.data()),
                                                       static_cast<int32_t>(label.size())));
    }
    // Between two labels of one prefix of small letters and one number, both libraries define the same order.
    for (std::size_t i = 1; i < labels.size(); ++i) {
        const int nOurs = CompareLabel(wide[i - 1].c_str(), wide[i].c_str());
        if (nOurs != static_cast<int>(pCollator->compare(labels[i - 1], labels[i]))) {
            state.SkipWithError("the libraries disagree");
            return;
        }
    }
    for (auto _ : state) {
        std::vector<const icu::UnicodeString*> sorted;
        for (const icu::UnicodeString& label : labels) {
            sorted.push_back(&label);
        }
        std::stable_sort(sorted.begin(), sorted.end(),
                         [&](const icu::UnicodeString* a, const icu::UnicodeString* b) {
                             return pCollator->compare(*a, *b) == icu::Collator::LESS;
                         });
        benchmark::DoNotOptimize(sorted.data());
    }
}
BENCHMARK(LabelsIcu)->Name("labels/sort 20000/icu");

#endif

const bool bRegistered = [] {
    const std::pair<const char*, Search> searches[] = {{"rare first letter", RareFirstLetter()},
                                                       {"frequent first letter", FrequentFirstLetter()},
                                                       {"adversarial", Adversarial()},
                                                       {"short text", Short()}};
    for (const auto& [name, search] : searches) {
        const std::string prefix = std::string("string/find, ") + name + "/";
        benchmark::RegisterBenchmark((prefix + "ours").c_str(), FindOurs, search);
        benchmark::RegisterBenchmark((prefix + "std::wstring").c_str(), FindStd, search);
        benchmark::RegisterBenchmark((prefix + "std::boyer_moore_searcher").c_str(), FindBoyerMoore, search);
    }
    return true;
}();

}  // namespace
