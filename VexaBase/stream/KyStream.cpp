#include "VexaBase/stream/KyStream.h"

#include <algorithm>
#include <limits>

#include "VexaBase/stream/KyDynArrayStream.h"
#include "VexaBase/stream/KyDynArrayStreamEx.h"

static_assert(sizeof(char) == 1 && sizeof(bool) == 1 && sizeof(short) == 2 && sizeof(long) == 8 &&
                  sizeof(double) == 8,
              "the widths on the wire");
static_assert(std::numeric_limits<double>::is_iec559, "the representation of double on the wire");

void KyStream::MoveTo(long nPos) { m_nPos = std::max(nPos, 0L); }

void KyStream::Reset() {
    MoveTo(0);
    m_nLength = 0;
}

void KyStream::Write(void* /*pData*/, long /*nCount*/) {}
void KyStream::Read(void* /*pData*/, long /*nCount*/) {}

/// Writes directly into a memory stream; false, and nothing happens, when that cannot be done.
template <class T>
bool KyStream::WriteToMemory(T value) {
    if (IsExactly<KyDynArrayStream>()) {
        return static_cast<KyDynArrayStream*>(this)->WriteDirectly(value);
    }
    return IsExactly<KyDynArrayStreamEx>() && static_cast<KyDynArrayStreamEx*>(this)->WriteDirectly(value);
}

/// Reads directly from a memory stream; false, and nothing happens, when that cannot be done.
template <class T>
bool KyStream::ReadFromMemory(T& value) {
    if (IsExactly<KyDynArrayStream>()) {
        return static_cast<KyDynArrayStream*>(this)->ReadDirectly(value);
    }
    return IsExactly<KyDynArrayStreamEx>() && static_cast<KyDynArrayStreamEx*>(this)->ReadDirectly(value);
}

template <class T>
void KyStream::WriteValue(T value) {
    if (!WriteToMemory(value)) {
        Write(&value, sizeof(T));
        MoveTo(PastTheNext(sizeof(T)));
    }
}

template <class T>
void KyStream::ReadValue(T& value) {
    if (!ReadFromMemory(value)) {
        Read(&value, sizeof(T));
        MoveTo(PastTheNext(sizeof(T)));
    }
}

void KyStream::WriteChar(char value) { WriteValue(value); }
void KyStream::WriteBool(bool value) { WriteValue(value); }
void KyStream::WriteShort(short value) { WriteValue(value); }
void KyStream::WriteLong(long value) { WriteValue(value); }
void KyStream::WriteDouble(double value) { WriteValue(value); }

void KyStream::ReadChar(char& value) { ReadValue(value); }

void KyStream::ReadBool(bool& value) {
    if (ReadFromMemory(value)) {
        return;
    }
    Read(&value, sizeof(bool));
    value = reinterpret_cast<const unsigned char&>(value) != 0;
    MoveTo(PastTheNext(sizeof(bool)));
}

void KyStream::ReadShort(short& value) { ReadValue(value); }
void KyStream::ReadLong(long& value) { ReadValue(value); }
void KyStream::ReadDouble(double& value) { ReadValue(value); }

KyStream::~KyStream() = default;

KyStream& KyStream::operator<<(char value) {
    WriteChar(value);
    return *this;
}

KyStream& KyStream::operator<<(bool value) {
    WriteBool(value);
    return *this;
}

KyStream& KyStream::operator<<(short value) {
    WriteShort(value);
    return *this;
}

KyStream& KyStream::operator<<(long value) {
    WriteLong(value);
    return *this;
}

KyStream& KyStream::operator<<(double value) {
    WriteDouble(value);
    return *this;
}

KyStream& KyStream::operator>>(char& value) {
    ReadChar(value);
    return *this;
}

KyStream& KyStream::operator>>(bool& value) {
    ReadBool(value);
    return *this;
}

KyStream& KyStream::operator>>(short& value) {
    ReadShort(value);
    return *this;
}

KyStream& KyStream::operator>>(long& value) {
    ReadLong(value);
    return *this;
}

KyStream& KyStream::operator>>(double& value) {
    ReadDouble(value);
    return *this;
}

long KyStream::PastTheNext(long nCount) const {
    constexpr long nMax = std::numeric_limits<long>::max();
    return nCount > 0 && m_nPos > nMax - nCount ? nMax : m_nPos + nCount;
}
