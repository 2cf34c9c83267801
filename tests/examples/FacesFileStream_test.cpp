#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdio>
#include <memory>
#include <stdexcept>

#include "VexaBase/stream/KyDynArrayStream.h"
#include "examples/faces/FileStream.h"
#include "examples/program/Descriptor.h"

namespace faces {
namespace {

using testing::Each;

/// A file that is gone with the test.
class TemporaryFile {
public:
    TemporaryFile() : m_pFile(std::tmpfile(), &std::fclose) {}

    int Get() const { return ::fileno(m_pFile.get()); }

    std::string Contents() const {
        std::string strBytes(1 << 20, '\0');
        const ssize_t n = ::pread(Get(), strBytes.data(), strBytes.size(), 0);
        return strBytes.substr(0, static_cast<std::size_t>(n));
    }

private:
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> m_pFile;
};

std::string ReadAll(KyStream& stream) {
    std::string strBytes(static_cast<std::size_t>(stream.GetLength()), '.');
    stream.MoveTo(0);
    stream.Read(strBytes.data(), stream.GetLength());
    return strBytes;
}

TEST(FacesFileStream, TypedValuesAreTheSameBytesAsInMemory) {
    const TemporaryFile file;
    FileStream stream(file.Get());
    KyDynArrayStream memory;

    stream << 'v' << 1L << 2.5 << true << static_cast<short>(-3);
    memory << 'v' << 1L << 2.5 << true << static_cast<short>(-3);
    stream.Flush();

    EXPECT_EQ(stream.GetPosition(), 20);
    EXPECT_EQ(stream.GetLength(), 20);
    EXPECT_EQ(file.Contents(), ReadAll(memory));
}

TEST(FacesFileStream, WriteAndReadLeaveThePosition) {
    const TemporaryFile file;
    FileStream stream(file.Get());
    char bytes[] = "abc";

    stream.MoveTo(2);
    stream.Write(bytes, 3);
    EXPECT_EQ(stream.GetPosition(), 2);
    stream.Read(bytes, 2);
    EXPECT_EQ(stream.GetPosition(), 2);
    EXPECT_EQ(stream.GetLength(), 5);
    EXPECT_EQ(ReadAll(stream), std::string("\0\0abc", 5));
}

TEST(FacesFileStream, AnEarlierPlaceCanBeWrittenAfterALaterOne) {
    const TemporaryFile file;
    FileStream stream(file.Get());

    stream << 0L << 7L;
    stream.MoveTo(0);
    stream << stream.GetLength();

    stream.MoveTo(0);
    long nLength = 0;
    long nValue = 0;
    stream >> nLength >> nValue;
    EXPECT_EQ(nLength, 16);
    EXPECT_EQ(nValue, 7);
}

TEST(FacesFileStream, ReadingPastTheEndLeavesTheRestAndMovesOn) {
    const TemporaryFile file;
    FileStream stream(file.Get());
    stream << static_cast<short>(0x4142);
    stream.MoveTo(0);
    long nValue = -1;

    stream >> nValue;

    EXPECT_EQ(nValue, ~0xFFFFL | 0x4142L);
    EXPECT_EQ(stream.GetPosition(), 8);
    stream >> nValue;
    EXPECT_EQ(nValue, ~0xFFFFL | 0x4142L);
}

TEST(FacesFileStream, ACountBelowOneDoesNothing) {
    const TemporaryFile file;
    FileStream stream(file.Get());
    char ch = 'a';

    stream.Write(&ch, 0);
    stream.Write(&ch, -1);
    stream.Read(&ch, -1);

    EXPECT_EQ(ch, 'a');
    EXPECT_EQ(stream.GetLength(), 0);
}

TEST(FacesFileStream, AFileThatIsThereIsReadFromItsBeginning) {
    const TemporaryFile file;
    ASSERT_EQ(::write(file.Get(), "hello", 5), 5);

    FileStream stream(file.Get());

    EXPECT_EQ(stream.GetLength(), 5);
    EXPECT_EQ(stream.GetPosition(), 0);
    EXPECT_EQ(ReadAll(stream), "hello");
}

TEST(FacesFileStream, ResetEmptiesTheFile) {
    const TemporaryFile file;
    FileStream stream(file.Get());
    stream << 1L;
    stream.Flush();
    stream << 2L;

    stream.Reset();
    stream.Flush();

    EXPECT_EQ(stream.GetLength(), 0);
    EXPECT_EQ(stream.GetPosition(), 0);
    EXPECT_EQ(file.Contents(), "");
}

TEST(FacesFileStream, AMegabyteAtOnceAndByteByByteIsTheSame) {
    const TemporaryFile file;
    FileStream stream(file.Get());
    std::string strBytes(300'000, 'x');

    stream.Write(strBytes.data(), 300'000);
    stream.MoveTo(300'000);
    for (int i = 0; i < 200'000; ++i) stream << 'x';
    stream.Flush();

    EXPECT_EQ(file.Contents().size(), 500'000U);
    EXPECT_THAT(file.Contents(), Each('x'));
    EXPECT_EQ(ReadAll(stream), file.Contents());
}

TEST(FacesFileStream, AFullDiskIsAnErrorWithTheReason) {
    const program::Descriptor full(::open("/dev/full", O_WRONLY));
    FileStream stream(full.Get());

    stream << 1L;

    EXPECT_THROW(stream.Flush(), std::runtime_error);
    EXPECT_THROW(FileStream(-1), std::runtime_error);
}

RC_GTEST_PROP(FacesFileStream, AgreesWithAStringInEveryOperation, ()) {
    const TemporaryFile file;
    FileStream stream(file.Get());
    std::string strModel;
    const auto nSteps = *rc::gen::inRange(0, 60);
    for (int i = 0; i < nSteps; ++i) {
        const auto nPos = static_cast<std::size_t>(*rc::gen::inRange(0, 200'000));
        const auto nCount =
            static_cast<std::size_t>(*rc::gen::element(0, 1, 8, 8, 8, 3000, 65'536, 65'537, 90'000));
        const bool bMove = *rc::gen::inRange(0, 3) == 0;
        if (bMove) stream.MoveTo(static_cast<long>(nPos));
        const auto nAt = static_cast<std::size_t>(stream.GetPosition());
        if (*rc::gen::arbitrary<bool>()) {
            std::string strBytes(nCount, static_cast<char>('a' + i % 26));
            stream.Write(strBytes.data(), static_cast<long>(nCount));
            if (nCount > 0) {
                if (strModel.size() < nAt + nCount) strModel.resize(nAt + nCount, '\0');
                strModel.replace(nAt, nCount, strBytes);
            }
        } else {
            std::string strRead(nCount, '.');
            stream.Read(strRead.data(), static_cast<long>(nCount));
            std::string strExpected(nCount, '.');
            if (nAt < strModel.size()) {
                const std::string strThere = strModel.substr(nAt, nCount);
                strExpected.replace(0, strThere.size(), strThere);
            }
            RC_ASSERT(strRead == strExpected);
        }
        stream.MoveTo(static_cast<long>(nAt + nCount));
        RC_ASSERT(stream.GetLength() == static_cast<long>(strModel.size()));
    }
    stream.Flush();
    RC_ASSERT(file.Contents() == strModel);
}

}  // namespace
}  // namespace faces
