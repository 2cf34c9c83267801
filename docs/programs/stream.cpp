// Typed values as bytes: written, looked at, read back; in one block, in
// chunks, and through a stream of one's own.

#include <VexaBase/stream/KyDynArrayStream.h>
#include <VexaBase/stream/KyDynArrayStreamEx.h>

#include <cstdio>

namespace {

/// Keeps nothing but a sum of the bytes that pass; the typed operations are
/// inherited.
class Checksum : public KyStream {
public:
    void Write(void* pData, long nCount) override {
        const auto* pBytes = static_cast<const unsigned char*>(pData);
        for (long i = 0; i < nCount; ++i) m_nSum += pBytes[i];
        m_nLength += nCount;
    }
    unsigned long m_nSum = 0;
};

/// The same record into any stream.
void WriteRecord(KyStream& stream) {
    stream << 'v' << true << short{2} << 300L << 0.5;
}

}  // namespace

int main() {
    KyDynArrayStream stream;
    WriteRecord(stream);
    for (const char c : stream.m_bytes)
        std::printf("%02x ", static_cast<unsigned>(c) & 0xffu);
    std::printf("\n%ld bytes, position %ld\n", stream.GetLength(),
                stream.GetPosition());

    stream.MoveTo(4);  // past the char, the bool and the short
    long nNumber = 0;
    double dHalf = 0;
    stream >> nNumber >> dHalf;
    std::printf("read %ld and %g\n", nNumber, dHalf);

    nNumber = -1;
    // Nothing is left: the position moves on all the same, the destination
    // keeps its bytes.
    stream >> nNumber;
    std::printf("past the end: %ld, position %ld of %ld\n", nNumber,
                stream.GetPosition(), stream.GetLength());

    KyDynArrayStreamEx chunked(8);
    WriteRecord(chunked);
    std::printf("in chunks of 8: %ld bytes in %ld chunks\n",
                chunked.GetLength(), chunked.m_chunks.GetLength());

    Checksum checksum;
    WriteRecord(checksum);
    std::printf("checksum: %lu over %ld bytes\n", checksum.m_nSum,
                checksum.GetLength());
}
