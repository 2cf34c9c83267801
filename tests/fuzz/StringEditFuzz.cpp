// Edits in any order, many with the string's own text, against the standard's string.

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "ByteSource.h"
#include "VexaBase/string/KyString.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
    ByteSource source(pData, nSize);
    KyString s;
    std::wstring model;
    while (!source.IsEmpty() && model.size() < 5000) {
        const std::size_t nPos = model.empty() ? 0 : source.Byte() % (model.size() + 1);
        const std::wstring own = model.substr(nPos);
        const std::wstring text = source.Text(15, L"ab0.");
        const auto nAt = static_cast<long>(nPos);
        switch (source.Number(0, 6)) {
            case 0:
                s.Copy(text.c_str(), nAt);
                model.replace(nPos, text.size(), text);
                break;
            case 1: {
                const std::size_t nTo = source.Byte() % (model.size() + 1);
                s.Copy(s.c_str() + nPos, static_cast<long>(nTo));
                model.replace(nTo, own.size(), own);
                break;
            }
            case 2: {
                const std::size_t nTo = source.Byte() % (model.size() + 1);
                const std::size_t nCount = source.Byte() % (own.size() + 1);
                s.Copy(nAt, static_cast<long>(nTo), static_cast<long>(nCount));
                model.replace(nTo, nCount, own.substr(0, nCount));
                break;
            }
            case 3:
                FUZZ_CHECK(s.Insert(nAt, s));
                model.insert(nPos, std::wstring(model));
                break;
            case 4:
                FUZZ_CHECK(s.Insert(nAt, text.c_str()));
                model.insert(nPos, text);
                break;
            case 5:
                s.Format(L"%ls%ls", text.c_str(), s.c_str() + nPos);
                model = (text + own).substr(0, 1023);
                break;
            default: {
                KyString moved(std::move(s));
                FUZZ_CHECK(s.m_nStrLength == 0 && s.m_nLength == 1 && s.c_str()[0] == 0);
                s = moved;
                break;
            }
        }
        FUZZ_CHECK(s.GetLength() == static_cast<long>(model.size()) && s.GetLength() < s.m_nLength);
        FUZZ_CHECK(s.c_str()[s.GetLength()] == 0);
        FUZZ_CHECK(std::wstring(s.begin(), s.end()) == model);
    }
    return 0;
}
