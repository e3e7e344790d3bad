#include "analytics/ArchiveReader.h"

#include <cstdlib>
#include <memory>
#include <utility>

#include <plist/plist.h>

namespace quillbay {

namespace {

constexpr int MaximumDepth = 128;
constexpr int MaximumValues = 1'000'000;
/// Seconds from 1970 to 2001, from where property lists count.
constexpr std::int64_t ReferenceDate = 978'307'200;

constexpr std::string_view BinaryMagic = "bplist00";

/// A walk through a binary list that only counts.
class BinaryWalk
{
public:
    explicit BinaryWalk(std::string_view bytes)
        : m_bytes(bytes)
    {
    }

    bool isBounded()
    {
        constexpr std::size_t TrailerSize = 32;
        if (m_bytes.size() < BinaryMagic.size() + TrailerSize)
            return false;
        const std::size_t trailer = m_bytes.size() - TrailerSize;
        m_offsetSize = byteAt(trailer + 6);
        m_referenceSize = byteAt(trailer + 7);
        m_count = numberAt(trailer + 8, 8).value_or(0);
        m_table = numberAt(trailer + 24, 8).value_or(m_bytes.size());
        return isSize(m_offsetSize) && isSize(m_referenceSize) &&
               visit(numberAt(trailer + 16, 8).value_or(m_count), 0);
    }

private:
    static bool isSize(std::size_t size) { return size >= 1 && size <= 8; }

    std::size_t byteAt(std::size_t at) const { return static_cast<unsigned char>(m_bytes[at]); }

    std::optional<std::size_t> numberAt(std::size_t at, std::size_t size) const
    {
        if (at > m_bytes.size() || m_bytes.size() - at < size)
            return {};
        std::size_t value = 0;
        for (std::size_t i = 0; i < size; ++i)
            value = value << 8 | byteAt(at + i);
        return value;
    }

    bool visit(std::size_t object, int depth)
    {
        if (object >= m_count || depth > MaximumDepth || ++m_visited > MaximumValues ||
            m_table > m_bytes.size() || object > m_bytes.size())
            return false;
        const auto at = numberAt(m_table + object * m_offsetSize, m_offsetSize);
        if (!at || *at >= m_table)
            return false;
        const std::size_t kind = byteAt(*at) >> 4;
        if (kind < 0xA)
            return true;
        std::size_t next = *at + 1;
        std::optional<std::size_t> count = byteAt(*at) & 0xF;
        if (count == 0xFU) {
            const auto marker = numberAt(next, 1);
            if (!marker || (*marker >> 4) != 1 || (*marker & 0xF) > 3)
                return false;
            const std::size_t size = std::size_t(1) << (*marker & 0xF);
            count = numberAt(next + 1, size);
            next += 1 + size;
        }
        if (!count || *count > m_bytes.size())
            return false;
        const std::size_t references = kind == 0xD ? *count * 2 : *count;
        for (std::size_t i = 0; i < references; ++i) {
            const auto reference = numberAt(next + i * m_referenceSize, m_referenceSize);
            if (!reference || !visit(*reference, depth + 1))
                return false;
        }
        return true;
    }

    std::string_view m_bytes;
    std::size_t m_offsetSize = 0;
    std::size_t m_referenceSize = 0;
    std::size_t m_count = 0;
    std::size_t m_table = 0;
    int m_visited = 0;
};

/// Whether no more containers are open at once than allowed. Comments and the like count as well: no archive
/// has them.
bool isBoundedXml(std::string_view text)
{
    int depth = 0;
    int tags = 0;
    for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at + 1)) {
        const std::string_view tag = text.substr(at);
        if (tag.starts_with("</dict") || tag.starts_with("</array"))
            --depth;
        else if (tag.starts_with("<dict") || tag.starts_with("<array"))
            depth += tag.substr(0, tag.find('>')).ends_with('/') ? 0 : 1;
        if (depth > MaximumDepth || ++tags > 4 * MaximumValues)
            return false;
    }
    return true;
}

std::optional<MarlpostType> valueOf(plist_t node);

MarlpostType arrayOf(plist_t node)
{
    MarlpostArray values;
    const std::uint32_t size = plist_array_get_size(node);
    values.reserve(size);
    for (std::uint32_t i = 0; i < size; ++i) {
        if (auto value = valueOf(plist_array_get_item(node, i)))
            values.push_back(*std::move(value));
    }
    return values;
}

MarlpostType dictionaryOf(plist_t node)
{
    MarlpostDictionary values;
    plist_dict_iter position = nullptr;
    plist_dict_new_iter(node, &position);
    const std::unique_ptr<void, decltype(&std::free)> guard(position, &std::free);
    for (char *key = nullptr;; std::free(std::exchange(key, nullptr))) {
        plist_t item = nullptr;
        plist_dict_next_item(node, position, &key, &item);
        if (!item || !key)
            return values;
        if (auto value = valueOf(item))
            values.set(key, *std::move(value));
    }
}

std::optional<MarlpostType> valueOf(plist_t node)
{
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        std::uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return value != 0;
    }
    case PLIST_UINT: {
        std::uint64_t value = 0;
        plist_get_uint_val(node, &value);
        return std::int64_t(value);
    }
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return value;
    }
    case PLIST_STRING: {
        std::uint64_t size = 0;
        const char *text = plist_get_string_ptr(node, &size);
        return text ? std::string(text, size) : std::string();
    }
    case PLIST_DATE: {
        std::int32_t seconds = 0;
        std::int32_t microseconds = 0;
        plist_get_date_val(node, &seconds, &microseconds);
        return MarlpostType::Date(std::chrono::seconds(ReferenceDate + seconds) +
                                  std::chrono::milliseconds(microseconds / 1000));
    }
    case PLIST_ARRAY:
        return arrayOf(node);
    case PLIST_DICT:
        return dictionaryOf(node);
    default:
        return {};
    }
}

} // namespace

std::optional<MarlpostType> readPropertyList(std::string_view bytes)
{
    if (bytes.empty() || bytes.size() > LongestPropertyList)
        return {};
    plist_t root = nullptr;
    if (bytes.starts_with(BinaryMagic)) {
        if (BinaryWalk(bytes).isBounded())
            plist_from_bin(bytes.data(), std::uint32_t(bytes.size()), &root);
    } else if (isBoundedXml(bytes)) {
        plist_from_xml(bytes.data(), std::uint32_t(bytes.size()), &root);
    }
    const std::unique_ptr<void, decltype(&plist_free)> guard(root, &plist_free);
    return root ? valueOf(root) : std::nullopt;
}

} // namespace quillbay
