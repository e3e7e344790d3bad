#include "platform/linux/applications/InformationList.h"

#include "platform/linux/applications/BinaryPropertyList.h"
#include "platform/linux/applications/PlainPropertyList.h"

#include <string>

#include <plist/plist.h>

namespace quillbay::platform {

InformationList::InformationList(std::string_view bytes)
    : m_bytes(bytes.size() > MaximumSize ? std::string_view() : bytes)
{
}

InformationList::~InformationList()
{
    if (m_tree)
        plist_free(m_tree);
}

QString InformationList::string(std::string_view key)
{
    if (m_bytes.empty())
        return {};
    if (isBinaryPropertyList(m_bytes))
        return binaryPropertyListString(m_bytes, key);
    if (const auto plain = plainPropertyListString(m_bytes, key))
        return *plain;
    if (!m_tree)
        plist_from_xml(m_bytes.data(), uint32_t(m_bytes.size()), &m_tree);
    if (!m_tree || plist_get_node_type(m_tree) != PLIST_DICT)
        return {};
    plist_t item = plist_dict_get_item(m_tree, std::string(key).c_str());
    if (!item || plist_get_node_type(item) != PLIST_STRING)
        return {};
    uint64_t size = 0;
    const char *text = plist_get_string_ptr(item, &size);
    return QString::fromUtf8(text && size ? text : "", qsizetype(size));
}

} // namespace quillbay::platform
