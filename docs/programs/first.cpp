#include <VexaBase/containers/KyDList.h>
#include <VexaBase/string/CompareLabel.h>

#include <iostream>

int main() {
    KyDList<const wchar_t*> wards;
    for (const wchar_t* name : {L"Ward 10", L"Ward 9", L"Ward 1"})
        wards.Append(name);

    wards.Sort([](const wchar_t* const& a, const wchar_t* const& b) {
        return CompareLabel(a, b);
    });
    for (const wchar_t* name : wards) std::wcout << name << L'\n';
}
