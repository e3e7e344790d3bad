#pragma once

#include "platform/linux/applications/DesktopEntry.h"

#include <QString>

#include <string>
#include <unordered_map>
#include <vector>

namespace quillbay::platform {

/// Looks programs up in the folders of a `PATH`, remembering every answer: `TryExec` names few programs
/// often. Not for two threads at once.
class ProgramLookup
{
public:
    explicit ProgramLookup(const std::vector<std::string> &path);

    /// Whether `program` (absolute, or a name to look up) is a regular file that this process may execute.
    bool has(const std::string &program);

private:
    const std::vector<std::string> &m_path;
    std::unordered_map<std::string, bool> m_answers;
};

/// Whether the desktop lists the entry as an application: `Type=Application`, a name, neither `Hidden` nor
/// `NoDisplay`, something to start (`Exec`, or `DBusActivatable`), `TryExec` found where given, and not kept
/// from this desktop: the first element of `currentDesktop` that `OnlyShowIn` or `NotShowIn` names decides;
/// if none is named, the entry is shown unless it has an `OnlyShowIn`. Whether the program of `Exec` exists
/// is not asked.
bool isShown(const DesktopEntry &entry, const std::vector<std::string> &currentDesktop,
             ProgramLookup &programs);

/// The display name of the category of an entry whose `Categories` is `categories`: the first of Development,
/// Games, Graphics, Internet, Multimedia, Office, Education, Science, Settings, System, Utilities whose
/// registered main category the entry names, in this order whatever the entry's own; else "Other".
QString displayCategory(std::string_view categories);

} // namespace quillbay::platform
