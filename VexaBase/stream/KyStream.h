// The binary stream: a sequence of bytes addressed by a position, and typed values on top of it.
//
//     KyDynArrayStream stream;
//     stream << 'v' << 1L << 2.5;             // 17 bytes
//     stream.MoveTo(1);
//     long nVersion = 0;
//     stream >> nVersion;                     // 1; the position is 9
//
// On the wire a value is its in-memory representation: little-endian two's complement for the integers, IEEE
// 754 binary64 for double, one byte 0 or 1 for bool. Nothing else is written: no tag, no length, no padding.
// A reader reads the types that were written, in the same order.
//
// The contract that every stream keeps:
//   (1) Write and Read transfer raw bytes at the position and never move it; only MoveTo does
//   (2) a typed operation is one Write or Read and then one MoveTo past the value's full width, all through
//       the virtual table, so that a derived stream's own versions take part. The sequence of positions
//       depends on the types alone, never on the data: reading past the end moves on as well, and leaves the
//       missing bytes of the destination alone
//   (3) nothing is reported; to detect the end compare the position with the length
//
// The memory streams do a typed operation without those calls where nothing can tell: in an object of exactly
// their class, which overrides nothing, for a value that lies in the storage at hand.
//
// A stream of one's own overrides Write and Read (they do nothing here) and, where needed, MoveTo and Reset.
// It keeps m_nLength.
#pragma once

#include <typeinfo>

#include "VexaBase/KyConfig.h"

class KY_API KyStream {
public:
    KyStream() = default;
    KyStream(const KyStream&) = delete;
    KyStream& operator=(const KyStream&) = delete;

    // The virtual operations stand in the order of their slots, which derived streams rely on.

    /// Sets the position; a negative one becomes 0. A position past the length is allowed.
    virtual void MoveTo(long nPos);

    /// Empties the stream: MoveTo(0), then length 0.
    virtual void Reset();

    /// Stores nCount bytes at the position, which stays. Here: does nothing.
    virtual void Write(void* pData, long nCount);

    /// Copies as many of nCount bytes as there are from the position on; the rest of the destination stays as
    /// it was, and so does the position. Here: does nothing.
    virtual void Read(void* pData, long nCount);

    /// Write of the value's bytes, then MoveTo past them.
    /// @{
    virtual void WriteChar(char value);
    virtual void WriteBool(bool value);
    virtual void WriteShort(short value);
    virtual void WriteLong(long value);
    virtual void WriteDouble(double value);
    /// @}

    /// Read into the value's bytes, then MoveTo past its full width.
    virtual void ReadChar(char& value);

    /// As every typed read; then any byte but 0 is true, so that foreign bytes make no invalid bool.
    virtual void ReadBool(bool& value);

    /// Read into the value's bytes, then MoveTo past its full width.
    /// @{
    virtual void ReadShort(short& value);
    virtual void ReadLong(long& value);
    virtual void ReadDouble(double& value);
    /// @}

    virtual ~KyStream();

    // The operators call the typed operation of their type. An int is ambiguous, deliberately: the width on
    // the wire is the caller's decision.

    /// Calls the typed write of its type.
    /// @{
    KyStream& operator<<(char value);
    KyStream& operator<<(bool value);
    KyStream& operator<<(short value);
    KyStream& operator<<(long value);
    KyStream& operator<<(double value);
    /// @}

    /// Calls the typed read of its type.
    /// @{
    KyStream& operator>>(char& value);
    KyStream& operator>>(bool& value);
    KyStream& operator>>(short& value);
    KyStream& operator>>(long& value);
    KyStream& operator>>(double& value);
    /// @}

    /// A pointer would silently be written as a bool: a compile error instead.
    template <class T>
    KyStream& operator<<(T*) = delete;
    template <class T, class C>
    KyStream& operator<<(T C::*) = delete;

    /// Index of the next byte that a typed operation transfers.
    long GetPosition() const { return m_nPos; }

    /// Number of bytes in the stream.
    long GetLength() const { return m_nLength; }

    long m_nPos = 0;     // index of the next byte that a typed operation transfers
    long m_nLength = 0;  // number of bytes, kept by the derived stream

protected:
    /// The index past nCount bytes at the position; the largest long when it does not fit.
    long PastTheNext(long nCount) const;

    /// Whether this is a Stream and of no class derived from it: none of its operations is overridden, and
    /// what they do may be done without calling them. False wherever code is compiled without type
    /// information.
    template <class Stream>
    bool IsExactly() const {
#if defined(__GXX_RTTI)
        return &typeid(*this) == &typeid(Stream);
#else
        return false;
#endif
    }

private:
    template <class T>
    void WriteValue(T value);
    template <class T>
    void ReadValue(T& value);
    template <class T>
    bool WriteToMemory(T value);
    template <class T>
    bool ReadFromMemory(T& value);
};
