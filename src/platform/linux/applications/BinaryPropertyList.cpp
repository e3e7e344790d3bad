#include "platform/linux/applications/BinaryPropertyList.h"

#include <cstdint>
#include <optional>

namespace quillbay::platform {

namespace {

constexpr std::string_view Magic = "bplist00";
constexpr size_t TrailerSize = 32;

enum Marker : uint8_t { Ascii = 0x5, Utf16 = 0x6, Dictionary = 0xD, Integer = 0x1 };

/// An object's kind and the bytes of its content on to the end of the objects; `count` is its number of
/// elements.
struct Object
{
    uint8_t kind = 0;
    uint64_t count = 0;
    std::string_view content;
};

uint64_t bigEndian(std::string_view bytes)
{
    uint64_t value = 0;
    for (const char byte : bytes)
        value = value << 8 | uint8_t(byte);
    return value;
}

class Reader
{
public:
    /// Nothing where the trailer does not fit the bytes.
    static std::optional<Reader> open(std::string_view bytes)
    {
        if (!isBinaryPropertyList(bytes) || bytes.size() < Magic.size() + TrailerSize)
            return std::nullopt;
        const std::string_view trailer = bytes.substr(bytes.size() - TrailerSize);
        Reader reader;
        reader.m_offsetSize = uint8_t(trailer[6]);
        reader.m_referenceSize = uint8_t(trailer[7]);
        reader.m_count = bigEndian(trailer.substr(8, 8));
        reader.m_root = bigEndian(trailer.substr(16, 8));
        const uint64_t table = bigEndian(trailer.substr(24, 8));
        const uint64_t end = bytes.size() - TrailerSize;
        if (reader.m_offsetSize < 1 || reader.m_offsetSize > 8 || reader.m_referenceSize < 1 ||
            reader.m_referenceSize > 8)
            return std::nullopt;
        if (table < Magic.size() || table > end || reader.m_count > (end - table) / reader.m_offsetSize)
            return std::nullopt;
        reader.m_objects = bytes.substr(0, table);
        reader.m_offsets = bytes.substr(table, end - table);
        return reader;
    }

    uint64_t root() const { return m_root; }
    size_t referenceSize() const { return m_referenceSize; }

    std::optional<Object> object(uint64_t index) const
    {
        if (index >= m_count)
            return std::nullopt;
        const uint64_t offset = bigEndian(m_offsets.substr(index * m_offsetSize, m_offsetSize));
        if (offset < Magic.size() || offset >= m_objects.size())
            return std::nullopt;
        const auto marker = uint8_t(m_objects[offset]);
        Object result{uint8_t(marker >> 4), uint64_t(marker & 0xF), m_objects.substr(offset + 1)};
        // Fifteen means that the count is too large for the marker and follows as an integer object.
        if (result.count == 0xF) {
            if (result.content.empty() || uint8_t(result.content[0]) >> 4 != Integer)
                return std::nullopt;
            const size_t size = size_t(1) << (uint8_t(result.content[0]) & 0xF);
            if (size > 8 || result.content.size() < 1 + size)
                return std::nullopt;
            result.count = bigEndian(result.content.substr(1, size));
            result.content.remove_prefix(1 + size);
        }
        return result;
    }

    uint64_t reference(const Object &container, uint64_t position) const
    {
        return bigEndian(container.content.substr(position * m_referenceSize, m_referenceSize));
    }

private:
    std::string_view m_objects;
    std::string_view m_offsets;
    size_t m_offsetSize = 0;
    size_t m_referenceSize = 0;
    uint64_t m_count = 0;
    uint64_t m_root = 0;
};

bool isAscii(const Object &object, std::string_view text)
{
    return object.kind == Ascii && object.count == text.size() &&
           object.content.substr(0, text.size()) == text;
}

QString toString(const Object &object)
{
    if (object.kind == Ascii && object.count <= object.content.size())
        return QString::fromLatin1(object.count ? object.content.data() : "", qsizetype(object.count));
    if (object.kind != Utf16 || object.count > object.content.size() / 2)
        return {};
    QString result = QStringLiteral("");
    result.reserve(qsizetype(object.count));
    for (uint64_t i = 0; i < object.count; ++i)
        result += QChar(char16_t(bigEndian(object.content.substr(i * 2, 2))));
    return result;
}

} // namespace

bool isBinaryPropertyList(std::string_view bytes)
{
    return bytes.substr(0, Magic.size()) == Magic;
}

QString binaryPropertyListString(std::string_view bytes, std::string_view key)
{
    const std::optional<Reader> reader = Reader::open(bytes);
    if (!reader)
        return {};
    const std::optional<Object> root = reader->object(reader->root());
    if (!root || root->kind != Dictionary ||
        root->count > root->content.size() / (2 * reader->referenceSize()))
        return {};
    // References to the keys come first, then those to the values.
    for (uint64_t i = 0; i < root->count; ++i) {
        const std::optional<Object> candidate = reader->object(reader->reference(*root, i));
        if (!candidate || !isAscii(*candidate, key))
            continue;
        const std::optional<Object> value = reader->object(reader->reference(*root, root->count + i));
        return value ? toString(*value) : QString();
    }
    return {};
}

} // namespace quillbay::platform
