#include "platform/linux/applications/DesktopEntryRules.h"

#include <algorithm>
#include <iterator>

#include <sys/stat.h>
#include <unistd.h>

namespace quillbay::platform {

namespace {

bool isExecutable(const std::string &file)
{
    struct stat status = {};
    return ::access(file.c_str(), X_OK) == 0 && ::stat(file.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool listNames(std::string_view list, std::string_view name)
{
    bool found = false;
    forEachInEntryList(list, [&](std::string_view each) { found = found || each == name; });
    return found;
}

bool isForDesktop(const DesktopEntry &entry, const std::vector<std::string> &currentDesktop)
{
    for (const std::string &desktop : currentDesktop) {
        if (entry.onlyShowIn && listNames(*entry.onlyShowIn, desktop))
            return true;
        if (entry.notShowIn && listNames(*entry.notShowIn, desktop))
            return false;
    }
    return !entry.onlyShowIn;
}

} // namespace

ProgramLookup::ProgramLookup(const std::vector<std::string> &path)
    : m_path(path)
{
}

bool ProgramLookup::has(const std::string &program)
{
    if (const auto known = m_answers.find(program); known != m_answers.end())
        return known->second;
    const bool found = program.starts_with('/')
                           ? isExecutable(program)
                           : std::any_of(m_path.begin(), m_path.end(), [&](const std::string &folder) {
                                 return isExecutable(folder + '/' + program);
                             });
    m_answers.emplace(program, found);
    return found;
}

bool isShown(const DesktopEntry &entry, const std::vector<std::string> &currentDesktop,
             ProgramLookup &programs)
{
    if (entry.type != "Application" || entry.name.empty() || entry.hidden || entry.noDisplay)
        return false;
    if (entry.exec.empty() && !entry.dbusActivatable)
        return false;
    if ((entry.onlyShowIn || entry.notShowIn) && !isForDesktop(entry, currentDesktop))
        return false;
    return entry.tryExec.empty() || programs.has(entryString(entry.tryExec).toStdString());
}

QString displayCategory(std::string_view categories)
{
    struct Category
    {
        std::string_view registered;
        QString name;
    };
    static const Category table[] = {
        {"Development", QStringLiteral("Development")}, {"Game", QStringLiteral("Games")},
        {"Graphics", QStringLiteral("Graphics")},       {"Network", QStringLiteral("Internet")},
        {"AudioVideo", QStringLiteral("Multimedia")},   {"Audio", QStringLiteral("Multimedia")},
        {"Video", QStringLiteral("Multimedia")},        {"Office", QStringLiteral("Office")},
        {"Education", QStringLiteral("Education")},     {"Science", QStringLiteral("Science")},
        {"Settings", QStringLiteral("Settings")},       {"System", QStringLiteral("System")},
        {"Utility", QStringLiteral("Utilities")},
    };
    const Category *best = std::end(table);
    forEachInEntryList(categories, [&](std::string_view name) {
        best = std::find_if(std::begin(table), best,
                            [&](const Category &each) { return each.registered == name; });
    });
    return best == std::end(table) ? QStringLiteral("Other") : best->name;
}

} // namespace quillbay::platform
