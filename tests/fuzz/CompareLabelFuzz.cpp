// Comparisons of any two labels, against the definition with its temporary strings.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <string>

#include "ByteSource.h"
#include "VexaBase/string/CompareLabel.h"

namespace {

struct Parts {
    explicit Parts(const std::wstring& label) {
        for (std::size_t i = 0; i < label.size(); ++i) {
            if (label[i] >= 48 && label[i] <= 57) {
                m_digits += label[i];
                continue;
            }
            m_text += label[i];
            if (static_cast<std::int32_t>(label[i]) < 0) {
                ++i;
                m_text += label.c_str()[i];
            }
        }
    }

    std::wstring m_text;
    std::wstring m_digits;
};

int CompareByTheRule(const std::wstring& a, const std::wstring& b) {
    const Parts partsA(a);
    const Parts partsB(b);
    const int nText = std::wcscmp(partsA.m_text.c_str(), partsB.m_text.c_str());
    if (nText != 0) return nText < 0 ? -1 : 1;
    const auto nA = static_cast<std::int32_t>(std::wcstol(partsA.m_digits.c_str(), nullptr, 10));
    const auto nB = static_cast<std::int32_t>(std::wcstol(partsB.m_digits.c_str(), nullptr, 10));
    return nA < nB ? -1 : nA > nB ? 1 : 0;
}

/// Mostly digits and letters, sometimes any character but 0.
std::wstring AnyLabel(ByteSource& source) {
    std::wstring label;
    for (long n = source.Number(0, 40); n > 0; --n) {
        const std::uint8_t nByte = source.Byte();
        std::uint32_t nCode = nByte % 2 == 0 ? L'0' + nByte / 2 % 10 : L'a' + nByte / 2 % 3;
        if (nByte > 200) {
            nCode = 0;
            for (int i = 0; i < 4; ++i) {
                nCode = nCode * 256 + source.Byte();
            }
        }
        if (nCode != 0) label += static_cast<wchar_t>(nCode);
    }
    return label;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
    ByteSource source(pData, nSize);
    const std::wstring start = AnyLabel(source);
    const std::wstring a = start + AnyLabel(source);
    const std::wstring b = start + AnyLabel(source);

    const int n = CompareLabel(a.c_str(), b.c_str());

    FUZZ_CHECK(n == CompareByTheRule(a, b));
    FUZZ_CHECK(CompareLabel(b.c_str(), a.c_str()) == -n);
    FUZZ_CHECK(CompareLabel(a.c_str(), a.c_str()) == 0);
    return 0;
}
