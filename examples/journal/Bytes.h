// Values in and out of a stream, with a clear word when the stream ends too early. Text is its length in
// bytes and the bytes.
#pragma once

#include <string>

#include "VexaBase/stream/KyStream.h"
#include "examples/journal/Text.h"

namespace journal {

class ByteWriter {
public:
    explicit ByteWriter(KyStream& stream) : m_pStream(&stream) {}

    void WriteCount(long n) { *m_pStream << n; }
    void WriteNumber(double d) { *m_pStream << d; }
    void WriteText(const std::string& strText);

private:
    KyStream* m_pStream;
};

/// Reads from the stream's position on. Throws Refusal where the bytes do not suffice.
class ByteReader {
public:
    explicit ByteReader(KyStream& stream) : m_pStream(&stream) {}

    long NextCount(What what);
    double NextNumber(What what);
    std::string NextText(What what);

    long BytesLeft() const { return m_pStream->GetLength() - m_pStream->GetPosition(); }

private:
    template <class Value>
    Value Next(What what);

    KyStream* m_pStream;
};

}  // namespace journal
