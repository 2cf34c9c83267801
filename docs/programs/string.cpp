// Wide strings: edits by position, search, replacement, and the order of
// labels.

#include <VexaBase/string/CompareLabel.h>
#include <VexaBase/string/KyString.h>
#include <VexaBase/string/KyUtf8.h>

#include <algorithm>
#include <iostream>
#include <vector>

namespace {

void Print(const char* what, const KyString& text) {
    std::cout << what << " \"" << KyToUtf8(text) << "\"\n";
}

}  // namespace

int main() {
    KyString name(L"area ");
    name << 7.5;
    Print("appended:", name);
    name.Copy(L"zone", 0);
    Print("written over:", name);
    name.Insert(0, L"the ");
    Print("inserted:", name);
    name.MakeUpper();
    Print("upper case:", name);

    KyString line(L"to be or not to be");
    std::cout << "\"be\" first at " << line.Find(L"be") << ", from 5 on at "
              << line.Find(L"be", 5) << ", last b at " << line.ReverseFind(L'b')
              << '\n';
    KyListQuene<long> places;
    line.Find(L"to", places);
    std::cout << "\"to\" at";
    for (const long at : places) std::cout << ' ' << at;
    std::cout << '\n';
    const long count = line.Replace(L"be", L"sleep");
    std::cout << count << " replaced:\n";
    Print("", line);

    Print("formatted:", KyString().Format(L"%ls has %ld characters", L"it",
                                          line.GetLength()));

    std::vector<const wchar_t*> wards = {L"Ward 10", L"Ward 9", L"Annex 2",
                                         L"Ward 1"};
    std::sort(wards.begin(), wards.end(),
              [](const wchar_t* a, const wchar_t* b) {
                  return CompareLabel(a, b) < 0;
              });
    for (const wchar_t* ward : wards) Print("-", ward);
}
