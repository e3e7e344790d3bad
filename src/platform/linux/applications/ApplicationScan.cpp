#include "platform/linux/applications/ApplicationScan.h"

#include "elevate/Descriptor.h"
#include "foundation/CollationKey.h"
#include "platform/linux/applications/DesktopEntryRules.h"
#include "platform/linux/applications/InformationList.h"
#include "platform/linux/applications/ScanQueue.h"

#include <cstring>
#include <system_error>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbay::platform {

namespace {

/// What one thread of a scan works with.
class Worker
{
public:
    Worker(const ApplicationEnvironment &environment, const CollationKey::Maker &sortKey)
        : m_environment(environment)
        , m_sortKey(sortKey)
        , m_programs(environment.path)
    {
    }

    void look(ScanTask &task)
    {
        const ScanBatch &batch = task.batch;
        const elevate::Descriptor folder(::open(batch.folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (!folder)
            return;
        task.found.reserve(batch.names.size());
        for (const ScanBatch::Name &entry : batch.names) {
            const char *file = batch.text.c_str() + entry.at;
            InstalledApplication application;
            const bool accepted = batch.content == ScanBatch::Content::Entries
                                      ? readEntry(folder.get(), file, entry.kind, application)
                                      : readBundleOrImage(folder.get(), file, application);
            if (!accepted)
                continue;
            m_path.assign(batch.folder).append(file);
            application.path = QString::fromUtf8(m_path.data(), qsizetype(m_path.size()));
            application.sortKey = m_sortKey(application.name);
            task.found.push_back(std::move(application));
        }
    }

private:
    bool readEntry(int folder, const char *file, BoundedFile::Kind kind, InstalledApplication &result)
    {
        const auto text = m_file.read(folder, file, kind);
        if (!text)
            return false;
        const auto entry = parseDesktopEntry(*text, m_environment.locales);
        if (!entry || !isShown(*entry, m_environment.currentDesktop, m_programs))
            return false;
        result.name = entryString(entry->name);
        result.category = displayCategory(entry->categories);
        return true;
    }

    /// A bundle that cannot be opened is an application all the same, one without a category type.
    bool readBundleOrImage(int folder, const char *file, InstalledApplication &result)
    {
        const char *extension = std::strrchr(file, '.');
        result.name = QString::fromUtf8(file, extension - file);
        if (std::strcmp(extension, ".app") != 0) {
            struct stat status = {};
            result.category = QStringLiteral("Other");
            return ::fstatat(folder, file, &status, 0) == 0 && S_ISREG(status.st_mode);
        }
        m_path.assign(file).append("/Contents/Info.plist");
        if (const auto bytes = m_file.read(folder, m_path.c_str()))
            result.categoryType = InformationList(*bytes).string("LSApplicationCategoryType");
        return true;
    }

    const ApplicationEnvironment &m_environment;
    const CollationKey::Maker &m_sortKey;
    ProgramLookup m_programs;
    BoundedFile m_file;
    std::string m_path;
};

/// Gives this thread a table of descriptors of its own, without those of the program: opening and closing
/// take a lock of the table, for which the threads of a scan would wait half of the time they gain. Where the
/// kernel is too old for it they share the table and do wait.
bool leaveDescriptorTable()
{
    return ::close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_UNSHARE) == 0;
}

} // namespace

ApplicationScan scanApplications(const ApplicationEnvironment &environment)
{
    const CollationKey::Maker sortKey;
    ScanQueue queue;
    QStringList subfolders;
    const auto work = [&] {
        Worker worker(environment, sortKey);
        while (ScanTask *task = queue.take())
            worker.look(*task);
    };
    {
        std::vector<std::jthread> helpers;
        try {
            for (unsigned cores = std::thread::hardware_concurrency(); cores > 1; --cores) {
                helpers.emplace_back([&work] {
                    leaveDescriptorTable();
                    work();
                });
            }
        } catch (const std::system_error &) {
            // No more threads to be had: those there are, and this one, do it.
        }
        subfolders =
            listApplications(environment, [&queue](ScanBatch &&batch) { queue.add(std::move(batch)); });
        queue.close();
        work();
    }
    return {queue.found(), std::move(subfolders)};
}

} // namespace quillbay::platform
