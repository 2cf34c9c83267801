// Typed records and raw blocks through the memory streams beside std::stringstream, cereal and a plain loop
// of memcpy. A case's name is job/case/library.
#include <benchmark/benchmark.h>

#include <cstring>
#include <sstream>
#include <vector>

#include "VexaBase/stream/KyDynArrayStream.h"
#include "VexaBase/stream/KyDynArrayStreamEx.h"

#if defined(VEXABASE_HAS_CEREAL)
#include <cereal/archives/binary.hpp>
#endif

namespace {

constexpr long nRecords = 100'000;
constexpr long nBlock = 1 << 20;
constexpr long nChunk = 1 << 16;

struct Record {
    char kind = 'r';
    bool marked = true;
    short layer = 7;
    long id = 0;
    double length = 0.5;
};

template <class Stream>
void WriteRecords(Stream& stream) {
    Record record;
    for (record.id = 0; record.id < nRecords; ++record.id) {
        stream << record.kind << record.marked << record.layer << record.id << record.length;
    }
}

template <class Stream>
long ReadRecords(Stream& stream) {
    Record record;
    long nSum = 0;
    for (long i = 0; i < nRecords; ++i) {
        stream >> record.kind >> record.marked >> record.layer >> record.id >> record.length;
        nSum += record.id;
    }
    return nSum;
}

void WriteOurs(benchmark::State& state) {
    for (auto _ : state) {
        KyDynArrayStream stream(nRecords * 20);
        WriteRecords(stream);
        benchmark::DoNotOptimize(stream.GetLength());
    }
}
BENCHMARK(WriteOurs)->Name("stream/write records/ours, contiguous");

void WriteOursChunked(benchmark::State& state) {
    for (auto _ : state) {
        KyDynArrayStreamEx stream(nChunk);
        WriteRecords(stream);
        benchmark::DoNotOptimize(stream.GetLength());
    }
}
BENCHMARK(WriteOursChunked)->Name("stream/write records/ours, chunked");

template <class Stream>
void Read(benchmark::State& state, Stream& stream) {
    WriteRecords(stream);
    for (auto _ : state) {
        stream.MoveTo(0);
        benchmark::DoNotOptimize(ReadRecords(stream));
    }
}

void ReadOurs(benchmark::State& state) {
    KyDynArrayStream stream;
    Read(state, stream);
}
BENCHMARK(ReadOurs)->Name("stream/read records/ours, contiguous");

void ReadOursChunked(benchmark::State& state) {
    KyDynArrayStreamEx stream(nChunk);
    Read(state, stream);
}
BENCHMARK(ReadOursChunked)->Name("stream/read records/ours, chunked");

template <class T>
void Put(std::ostream& stream, const T& x) {
    stream.write(reinterpret_cast<const char*>(&x), sizeof x);
}
template <class T>
void Get(std::istream& stream, T& x) {
    stream.read(reinterpret_cast<char*>(&x), sizeof x);
}

void PutRecords(std::ostream& stream) {
    Record record;
    for (record.id = 0; record.id < nRecords; ++record.id) {
        Put(stream, record.kind);
        Put(stream, record.marked);
        Put(stream, record.layer);
        Put(stream, record.id);
        Put(stream, record.length);
    }
}

void WriteStd(benchmark::State& state) {
    for (auto _ : state) {
        std::stringstream stream;
        PutRecords(stream);
        benchmark::DoNotOptimize(stream.tellp());
    }
}
BENCHMARK(WriteStd)->Name("stream/write records/std::stringstream");

void ReadStd(benchmark::State& state) {
    std::stringstream stream;
    PutRecords(stream);
    Record record;
    for (auto _ : state) {
        stream.seekg(0);
        long nSum = 0;
        for (long i = 0; i < nRecords; ++i) {
            Get(stream, record.kind);
            Get(stream, record.marked);
            Get(stream, record.layer);
            Get(stream, record.id);
            Get(stream, record.length);
            nSum += record.id;
        }
        benchmark::DoNotOptimize(nSum);
    }
}
BENCHMARK(ReadStd)->Name("stream/read records/std::stringstream");

#if defined(VEXABASE_HAS_CEREAL)

void WriteCereal(benchmark::State& state) {
    for (auto _ : state) {
        std::stringstream stream;
        cereal::BinaryOutputArchive archive(stream);
        Record record;
        for (record.id = 0; record.id < nRecords; ++record.id) {
            archive(record.kind, record.marked, record.layer, record.id, record.length);
        }
        benchmark::DoNotOptimize(stream.tellp());
    }
}
BENCHMARK(WriteCereal)->Name("stream/write records/cereal");

void ReadCereal(benchmark::State& state) {
    std::stringstream stream;
    Record record;
    {
        cereal::BinaryOutputArchive archive(stream);
        for (record.id = 0; record.id < nRecords; ++record.id) {
            archive(record.kind, record.marked, record.layer, record.id, record.length);
        }
    }
    for (auto _ : state) {
        stream.seekg(0);
        cereal::BinaryInputArchive archive(stream);
        long nSum = 0;
        for (long i = 0; i < nRecords; ++i) {
            archive(record.kind, record.marked, record.layer, record.id, record.length);
            nSum += record.id;
        }
        benchmark::DoNotOptimize(nSum);
    }
}
BENCHMARK(ReadCereal)->Name("stream/read records/cereal");

#endif

/// The bound: the same bytes by memcpy into a block that is large enough.
void WriteMemcpy(benchmark::State& state) {
    std::vector<char> bytes(static_cast<std::size_t>(nRecords) * 20);
    for (auto _ : state) {
        char* p = bytes.data();
        const auto put = [&p](const auto& x) {
            std::memcpy(p, &x, sizeof x);
            p += sizeof x;
        };
        Record record;
        for (record.id = 0; record.id < nRecords; ++record.id) {
            put(record.kind);
            put(record.marked);
            put(record.layer);
            put(record.id);
            put(record.length);
        }
        benchmark::ClobberMemory();
    }
}
BENCHMARK(WriteMemcpy)->Name("stream/write records/memcpy");

template <class MakeStream, class Write>
void Blocks(benchmark::State& state, MakeStream makeStream, Write write) {
    std::vector<char> block(nBlock, 'x');
    for (auto _ : state) {
        auto stream = makeStream();
        for (int i = 0; i < 8; ++i) {
            write(stream, block.data());
        }
        benchmark::ClobberMemory();
    }
}

void WriteBlock(KyStream& stream, char* pBlock) {
    stream.Write(pBlock, nBlock);
    stream.MoveTo(stream.GetPosition() + nBlock);
}

void BlocksOurs(benchmark::State& state) {
    Blocks(
        state, [] { return KyDynArrayStream(8 * nBlock); }, WriteBlock);
}
BENCHMARK(BlocksOurs)->Name("stream/write megabyte blocks/ours, contiguous");

void BlocksOursChunked(benchmark::State& state) {
    Blocks(
        state, [] { return KyDynArrayStreamEx(nBlock); }, WriteBlock);
}
BENCHMARK(BlocksOursChunked)->Name("stream/write megabyte blocks/ours, chunked");

void BlocksStd(benchmark::State& state) {
    Blocks(
        state, [] { return std::stringstream(); },
        [](std::stringstream& stream, const char* pBlock) { stream.write(pBlock, nBlock); });
}
BENCHMARK(BlocksStd)->Name("stream/write megabyte blocks/std::stringstream");

}  // namespace
