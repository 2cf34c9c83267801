#include "examples/journal/Bytes.h"

namespace journal {

void ByteWriter::WriteText(const std::string& strText) {
    std::string strBytes = strText;
    const auto nBytes = static_cast<long>(strBytes.size());
    WriteCount(nBytes);
    m_pStream->Write(strBytes.data(), nBytes);
    m_pStream->MoveTo(m_pStream->GetPosition() + nBytes);
}

/// A stream says nothing when it ends; the position does.
template <class Value>
Value ByteReader::Next(What what) {
    if (BytesLeft() < static_cast<long>(sizeof(Value)))
        throw Refusal(std::string("truncated: it ends in the ") + what);
    Value value{};
    *m_pStream >> value;
    return value;
}

long ByteReader::NextCount(What what) {
    const long n = Next<long>(what);
    if (n < 0) throw Refusal(std::string("damaged: the ") + what + " is counted below 0");
    return n;
}

double ByteReader::NextNumber(What what) { return Next<double>(what); }

std::string ByteReader::NextText(What what) {
    const long nBytes = NextCount(what);
    if (BytesLeft() < nBytes) throw Refusal(std::string("truncated: it ends in the ") + what);
    std::string strText(static_cast<std::size_t>(nBytes), '\0');
    m_pStream->Read(strText.data(), nBytes);
    m_pStream->MoveTo(m_pStream->GetPosition() + nBytes);
    return strText;
}

}  // namespace journal
