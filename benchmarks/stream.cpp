// Typed records and raw blocks through the memory streams beside std::stringstream, cereal, and a plain loop
// of memcpy into a block that is large enough, which is the limit. A case's name is job/case/library/size; the
// bytes of all libraries are compared before anything is timed.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "VexaBase/stream/KyDynArrayStream.h"
#include "VexaBase/stream/KyDynArrayStreamEx.h"

#if defined(VEXABASE_HAS_CEREAL)
#include <cereal/archives/binary.hpp>
#endif

namespace {

constexpr long nRecords = 1'000'000;
constexpr long nBlocks = 16;
constexpr long nBlock = 1 << 20;
constexpr long nChunk = 1 << 16;

struct Record {
    char kind = 'r';
    bool marked = true;
    short layer = 7;
    long id = 0;
    double length = 0.5;
};
constexpr long nRecordBytes = 20;

// Every library's archive writes and reads one value, and takes and gives bytes.

/// A stream of this library, its operators taken from the class Operators.
template <class Stream, class Operators>
class Ours {
public:
    explicit Ours(long nSize) : m_stream(nSize) {}

    template <class T>
    void Put(const T& value) {
        static_cast<Operators&>(m_stream) << value;
    }
    template <class T>
    void Get(T& value) {
        static_cast<Operators&>(m_stream) >> value;
    }
    void Write(std::vector<char>& bytes) {
        m_stream.Write(bytes.data(), static_cast<long>(bytes.size()));
        m_stream.MoveTo(m_stream.GetPosition() + static_cast<long>(bytes.size()));
    }
    void Read(std::vector<char>& bytes) {
        m_stream.Read(bytes.data(), static_cast<long>(bytes.size()));
        m_stream.MoveTo(m_stream.GetPosition() + static_cast<long>(bytes.size()));
    }
    void Rewind() { m_stream.MoveTo(0); }

private:
    Stream m_stream;
};

class Std {
public:
    template <class T>
    void Put(const T& value) {
        m_stream.write(reinterpret_cast<const char*>(&value), sizeof value);
    }
    template <class T>
    void Get(T& value) {
        m_stream.read(reinterpret_cast<char*>(&value), sizeof value);
    }
    void Write(const std::vector<char>& bytes) {
        m_stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    void Read(std::vector<char>& bytes) {
        m_stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    void Rewind() { m_stream.seekg(0); }

private:
    std::stringstream m_stream;
};

#if defined(VEXABASE_HAS_CEREAL)

class Cereal {
public:
    template <class T>
    void Put(const T& value) {
        m_out(value);
    }
    template <class T>
    void Get(T& value) {
        m_in(value);
    }
    void Write(const std::vector<char>& bytes) {
        m_out.saveBinary(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    void Read(std::vector<char>& bytes) {
        m_in.loadBinary(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    void Rewind() { m_stream.seekg(0); }

private:
    std::stringstream m_stream;
    cereal::BinaryOutputArchive m_out{m_stream};
    cereal::BinaryInputArchive m_in{m_stream};
};

#endif

class Memcpy {
public:
    explicit Memcpy(long nSize) : m_bytes(new char[static_cast<std::size_t>(nSize)]), m_p(m_bytes.get()) {}

    template <class T>
    void Put(const T& value) {
        std::memcpy(m_p, &value, sizeof value);
        m_p += sizeof value;
    }
    template <class T>
    void Get(T& value) {
        std::memcpy(&value, m_p, sizeof value);
        m_p += sizeof value;
    }
    void Write(const std::vector<char>& bytes) {
        std::memcpy(m_p, bytes.data(), bytes.size());
        m_p += bytes.size();
    }
    void Read(std::vector<char>& bytes) {
        std::memcpy(bytes.data(), m_p, bytes.size());
        m_p += bytes.size();
    }
    void Rewind() { m_p = m_bytes.get(); }

private:
    std::unique_ptr<char[]> m_bytes;
    char* m_p;
};

template <class Archive>
void PutRecords(Archive& archive) {
    Record record;
    for (record.id = 0; record.id < nRecords; ++record.id) {
        archive.Put(record.kind);
        archive.Put(record.marked);
        archive.Put(record.layer);
        archive.Put(record.id);
        archive.Put(record.length);
    }
}

/// A sum that takes all values in.
template <class Archive>
double GetRecords(Archive& archive) {
    Record record;
    double sum = 0;
    for (long i = 0; i < nRecords; ++i) {
        archive.Get(record.kind);
        archive.Get(record.marked);
        archive.Get(record.layer);
        archive.Get(record.id);
        archive.Get(record.length);
        sum += record.length * static_cast<double>(record.id + record.kind + record.layer) +
               (record.marked ? 1 : 0);
    }
    return sum;
}

template <class Archive>
void PutBlocks(Archive& archive, std::vector<char>& block) {
    for (long i = 0; i < nBlocks; ++i) {
        archive.Write(block);
    }
}

/// Ends the program when the library's records are other bytes than those of memcpy.
template <class MakeArchive>
void CompareBytes(const std::string& library, MakeArchive makeArchive) {
    std::vector<char> bytes(nRecords * nRecordBytes);
    std::vector<char> expected(nRecords * nRecordBytes);
    auto pArchive = makeArchive(nRecords * nRecordBytes);
    Memcpy memcpied(nRecords * nRecordBytes);
    PutRecords(*pArchive);
    PutRecords(memcpied);
    pArchive->Rewind();
    memcpied.Rewind();
    pArchive->Read(bytes);
    memcpied.Read(expected);
    if (bytes != expected) {
        std::fprintf(stderr, "%s: the libraries disagree\n", library.c_str());
        std::exit(EXIT_FAILURE);
    }
}

template <class Run>
void Register(const std::string& name, long nSize, Run run) {
    benchmark::RegisterBenchmark(name.c_str(), run)->Arg(nSize)->Unit(benchmark::kMicrosecond);
}

/// The four cases of one library. makeArchive(bytes) gives a pointer to a fresh archive.
template <class MakeArchive>
void RegisterLibrary(const std::string& library, MakeArchive makeArchive) {
    CompareBytes(library, makeArchive);
    Register("streams/write records/" + library, nRecords, [makeArchive](benchmark::State& state) {
        for (auto _ : state) {
            auto pArchive = makeArchive(nRecords * nRecordBytes);
            PutRecords(*pArchive);
            benchmark::DoNotOptimize(pArchive.get());
            benchmark::ClobberMemory();
        }
    });
    Register("streams/read records/" + library, nRecords, [makeArchive](benchmark::State& state) {
        auto pArchive = makeArchive(nRecords * nRecordBytes);
        PutRecords(*pArchive);
        for (auto _ : state) {
            pArchive->Rewind();
            benchmark::DoNotOptimize(GetRecords(*pArchive));
        }
    });
    Register("streams/write megabyte blocks/" + library, nBlocks, [makeArchive](benchmark::State& state) {
        std::vector<char> block(nBlock, 'x');
        for (auto _ : state) {
            auto pArchive = makeArchive(nBlocks * nBlock);
            PutBlocks(*pArchive, block);
            benchmark::DoNotOptimize(pArchive.get());
            benchmark::ClobberMemory();
        }
    });
    Register("streams/read megabyte blocks/" + library, nBlocks, [makeArchive](benchmark::State& state) {
        std::vector<char> block(nBlock, 'x');
        auto pArchive = makeArchive(nBlocks * nBlock);
        PutBlocks(*pArchive, block);
        for (auto _ : state) {
            pArchive->Rewind();
            for (long i = 0; i < nBlocks; ++i) {
                pArchive->Read(block);
                benchmark::DoNotOptimize(block.data());
                benchmark::ClobberMemory();
            }
        }
    });
}

template <class Stream, class Operators>
auto MakeOurs(long nSize) {
    return std::make_unique<Ours<Stream, Operators>>(nSize);
}

}  // namespace

int main(int argc, char** argv) {
    using Contiguous = KyDynArrayStream;
    using Chunked = KyDynArrayStreamEx;
    RegisterLibrary("ours, contiguous", MakeOurs<Contiguous, Contiguous>);
    RegisterLibrary("ours, chunked", [](long) { return MakeOurs<Chunked, Chunked>(nChunk); });
    RegisterLibrary("ours, contiguous, through the base", MakeOurs<Contiguous, KyStream>);
    RegisterLibrary("ours, chunked, through the base",
                    [](long) { return MakeOurs<Chunked, KyStream>(nChunk); });
    RegisterLibrary("std::stringstream", [](long) { return std::make_unique<Std>(); });
#if defined(VEXABASE_HAS_CEREAL)
    RegisterLibrary("cereal", [](long) { return std::make_unique<Cereal>(); });
#endif
    RegisterLibrary("limit", [](long nSize) { return std::make_unique<Memcpy>(nSize); });
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return EXIT_FAILURE;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return EXIT_SUCCESS;
}
