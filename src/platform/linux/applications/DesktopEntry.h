#pragma once

#include <QString>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillbay::platform {

/// The keys of one desktop entry that decide whether, where and how it is shown and started. The views point
/// into the text that was parsed and hold values as written there: string escapes are undone by `entryString`
/// and `entryListNames`, which most entries of a scan never need.
struct DesktopEntry
{
    std::string_view type;
    std::string_view name; ///< The best of the localised names; valid UTF-8, or empty.
    std::string_view icon;
    std::string_view exec;
    std::string_view tryExec;
    std::string_view workingDirectory; ///< `Path`
    std::string_view categories;
    std::string_view flatpakId;                 ///< `X-Flatpak`
    std::string_view snapName;                  ///< `X-SnapInstanceName`
    std::optional<std::string_view> onlyShowIn; ///< An empty list is not the same as none.
    std::optional<std::string_view> notShowIn;
    std::optional<bool> startupNotify;
    bool hidden = false;
    bool noDisplay = false;
    bool dbusActivatable = false;
    bool terminal = false;
};

/// Parses the main group of a desktop entry (Desktop Entry specification 1.5) and reads no further than its
/// end. `locales` as in `ApplicationEnvironment`. Nothing where the first group is not `[Desktop Entry]`.
///
/// Tolerant where a desktop is: a byte order mark, CR LF, blanks around `=` and lines that are no `key=value`
/// do no harm; of a key that comes twice the last one counts; a name that is not UTF-8 is passed over for the
/// next best.
///
/// This is the inner loop of a scan: it looks at each line's first bytes and allocates nothing.
std::optional<DesktopEntry> parseDesktopEntry(std::string_view text, const std::vector<std::string> &locales);

/// A value of type string with `\s`, `\n`, `\t`, `\r` and `\\` undone; other escapes stay as written. What is
/// not UTF-8 comes out as replacement characters. Never null.
QString entryString(std::string_view value);

/// Calls `visit` with each element of the semicolon list `list`, as written there.
template <typename Visit>
void forEachInEntryList(std::string_view list, const Visit &visit)
{
    while (!list.empty()) {
        size_t end = 0;
        while (end < list.size() && list[end] != ';')
            end += list[end] == '\\' ? 2 : 1;
        visit(list.substr(0, end));
        list.remove_prefix(end < list.size() ? end + 1 : list.size());
    }
}

} // namespace quillbay::platform
