// One sequence of operations on a contiguous and on a chunked stream, each followed by its model.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "ByteSource.h"
#include "VexaBase/stream/KyDynArrayStream.h"
#include "VexaBase/stream/KyDynArrayStreamEx.h"
#include "tests/stream/ByteModel.h"

namespace {

/// What arrives is the model's bytes, where it knows them, and the rest of the destination is untouched.
void CheckRead(const std::string& data, const ReadResult& result) {
    FUZZ_CHECK(BytesAgree(data.data(), result.m_bytes));
    FUZZ_CHECK(std::all_of(data.begin() + static_cast<long>(result.m_bytes.size()), data.end(),
                           [](char c) { return c == '.'; }));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
    ByteSource source(pData, nSize);
    const long nCapacity = source.Number(0, 30);
    const long nChunkSize = source.Number(1, 40);
    KyDynArrayStream stream(nCapacity);
    ByteModel model(nCapacity);
    stream.m_bytes.m_nGrowBy = model.m_nGrowBy = source.Number(0, 40);
    KyDynArrayStreamEx chunked(nChunkSize);
    ChunkModel chunkModel(nChunkSize);

    while (!source.IsEmpty()) {
        const long nNumber = source.Number(-20, 230);
        switch (source.Number(0, 5)) {
            case 0:
                stream.MoveTo(nNumber);
                model.MoveTo(nNumber);
                chunked.MoveTo(nNumber);
                chunkModel.MoveTo(nNumber);
                break;
            case 1: {
                std::string data = source.Bytes(100);
                const long nCount = data.empty() ? nNumber % 20 - 20 : static_cast<long>(data.size());
                stream.Write(data.data(), nCount);
                model.Write(data);
                chunked.Write(data.data(), nCount);
                chunkModel.Write(data, nCount);
                break;
            }
            case 2: {
                std::string data(Size(nNumber), '.');
                stream.Read(data.data(), nNumber);
                CheckRead(data, model.Read(nNumber));
                data.assign(data.size(), '.');
                chunked.Read(data.data(), nNumber);
                CheckRead(data, chunkModel.Read(nNumber));
                break;
            }
            case 3: {
                const std::string data(reinterpret_cast<const char*>(&nNumber), sizeof(nNumber));
                stream << nNumber;
                model.Write(data);
                model.MoveTo(model.m_nPos + 8);
                chunked << nNumber;
                chunkModel.Write(data, 8);
                chunkModel.MoveTo(chunkModel.m_nPos + 8);
                break;
            }
            case 4:
                stream.SetLength(nNumber);
                model.SetLength(nNumber);
                break;
            default:
                stream.Reset();
                model.Reset();
                chunked.Reset();
                chunkModel.Reset();
                break;
        }
        FUZZ_CHECK(stream.m_nPos == model.m_nPos && stream.m_nLength == model.m_nLength);
        FUZZ_CHECK(stream.m_bytes.m_nLength == model.m_nCount &&
                   stream.m_bytes.m_nCurIndex == model.m_nCursor);
        FUZZ_CHECK(stream.m_bytes.m_nCapacity == model.m_nCapacity);
        FUZZ_CHECK(BytesAgree(stream.m_bytes.m_pData, model.m_bytes));
        FUZZ_CHECK(chunked.m_nPos == chunkModel.m_nPos && chunked.m_nLength == chunkModel.m_nLength);
        FUZZ_CHECK(chunked.m_chunks.m_nLength == static_cast<long>(chunkModel.m_chunks.size()));
        FUZZ_CHECK(chunked.m_chunks.m_nCurIndex == chunkModel.m_nCursor);
        for (std::size_t i = 0; i < chunkModel.m_chunks.size(); ++i) {
            const KyDynArrayStream& chunk = *chunked.m_chunks.m_pData[i];
            FUZZ_CHECK(BytesAgree(chunk.m_bytes.m_pData, chunkModel.m_chunks[i].m_bytes));
        }
    }
    return 0;
}
