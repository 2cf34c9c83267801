#include "examples/journal/DocumentFile.h"

#include "VexaBase/stream/KyDynArrayStreamEx.h"
#include "examples/journal/Bytes.h"
#include "examples/journal/Text.h"

namespace journal {
namespace {

constexpr long ChunkSize = 4096;
const std::string Signature = "JOURNAL\n";

void WriteShape(ByteWriter& writer, const Shape& shape) {
    const KyRxClassInfo& info = *shape.GetCI();
    writer.WriteText(info.m_pszName);
    writer.WriteCount(info.m_nNumber);
    writer.WriteText(shape.m_strName);
    writer.WriteNumber(shape.m_position.x);
    writer.WriteNumber(shape.m_position.y);
    writer.WriteText(shape.m_strColour);
    shape.WriteMeasures(writer);
}

const KyRxClassInfo& ReadClass(ByteReader& reader) {
    const std::string strClass = reader.NextText("class name");
    const KyRxClassInfo* const pInfo = FindShapeClass(strClass);
    if (pInfo == nullptr)
        throw Refusal("unknown class " + Quoted(strClass) + " (known: " + ShapeClassNames() + ")");
    const long nVersion = reader.NextCount("class version");
    if (nVersion != pInfo->m_nNumber) {
        throw Refusal(strClass + " in version " + std::to_string(nVersion) +
                      " (known: " + std::to_string(pInfo->m_nNumber) + ")");
    }
    return *pInfo;
}

std::unique_ptr<Shape> ReadShape(ByteReader& reader) {
    std::unique_ptr<Shape> shape = NewShape(ReadClass(reader));
    shape->m_strName = CheckedName(reader.NextText("name"), "name");
    shape->m_position.x = CheckedNumber(reader.NextNumber("position"), "position");
    shape->m_position.y = CheckedNumber(reader.NextNumber("position"), "position");
    shape->m_strColour = CheckedColour(reader.NextText("colour"), "colour");
    shape->ReadMeasures(reader);
    return shape;
}

}  // namespace

std::string BytesOf(const Document& document) {
    KyDynArrayStreamEx stream(ChunkSize);
    for (const char ch : Signature) {
        stream << ch;
    }
    ByteWriter writer(stream);
    writer.WriteCount(document.m_shapes.GetLength());
    for (const Shape* pShape : document.m_shapes) {
        WriteShape(writer, *pShape);
    }

    std::string strBytes(static_cast<std::size_t>(stream.GetLength()), '\0');
    stream.MoveTo(0);
    stream.Read(strBytes.data(), stream.GetLength());
    return strBytes;
}

void ReadBytes(const std::string& strBytes, Document& document) {
    const auto nSignature = static_cast<long>(Signature.size());
    if (strBytes.compare(0, Signature.size(), Signature) != 0) throw Refusal("not a drawing of this program");
    KyDynArrayStreamEx stream(ChunkSize);
    std::string strCopy = strBytes;
    stream.Write(strCopy.data(), static_cast<long>(strCopy.size()));
    stream.MoveTo(nSignature);

    ByteReader reader(stream);
    const long nShapes = reader.NextCount("number of shapes");
    for (long i = 0; i < nShapes; ++i) {
        try {
            std::unique_ptr<Shape> shape = ReadShape(reader);
            document.Insert(i, shape);
        } catch (const Refusal& refusal) {
            throw Refusal("shape " + std::to_string(i + 1) + " of " + std::to_string(nShapes) + ": " +
                          refusal.what());
        }
    }
    if (reader.BytesLeft() != 0) {
        throw Refusal("damaged: there are " + std::to_string(reader.BytesLeft()) +
                      " bytes behind the last shape");
    }
}

}  // namespace journal
