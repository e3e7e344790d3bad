#pragma once

#include <QString>

#include <optional>
#include <string_view>

namespace quillbay::platform {

/// The strings of the outermost dictionary of a bundle's `Info.plist`, in the XML or the binary form.
///
/// XML goes through libplist, unless it is simple enough to do without (`plainPropertyListString`). The
/// binary form is looked up in place: objects of a binary list may share and contain each other, and libplist
/// copies and descends into them, so that a file of a few kilobytes can keep it busy for ever or overrun the
/// stack.
class InformationList
{
public:
    /// Ample for what an application says about itself. libplist frees an XML list by recursion, and this
    /// many bytes do not nest deep enough to overrun a stack of two megabytes.
    static constexpr size_t MaximumSize = size_t(1) << 18;

    /// `bytes` must outlive the list. What is no property list, or a larger one, is a list without strings.
    explicit InformationList(std::string_view bytes);
    ~InformationList();
    InformationList(const InformationList &) = delete;
    InformationList &operator=(const InformationList &) = delete;

    /// The string under `key` (ASCII); null if there is none or it is not a string, empty but not null if it
    /// is the empty string.
    QString string(std::string_view key);

private:
    std::string_view m_bytes;
    void *m_tree = nullptr; ///< Of libplist; made when the first string needs it.
};

} // namespace quillbay::platform
