#include "platform/linux/applications/ApplicationScan.h"

#include "foundation/CollationKey.h"
#include "platform/linux/applications/DesktopEntryRules.h"
#include "platform/linux/applications/FileDescriptor.h"
#include "platform/linux/applications/InformationList.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <iterator>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>

namespace quillbay::platform {

namespace {

using Applications = std::vector<InstalledApplication>;

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

    Applications look(const ScanBatch &batch)
    {
        Applications found;
        const FileDescriptor folder(::open(batch.folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (!folder)
            return found;
        found.reserve(batch.names.size());
        const QString folderPath = QString::fromStdString(batch.folder);
        for (const ScanBatch::Name &entry : batch.names) {
            const char *file = batch.text.c_str() + entry.at;
            InstalledApplication application;
            const bool accepted = batch.content == ScanBatch::Content::Entries
                                      ? readEntry(folder.get(), file, entry.kind, application)
                                      : readBundleOrImage(folder.get(), file, application);
            if (!accepted)
                continue;
            application.path = folderPath + QString::fromUtf8(file);
            application.sortKey = m_sortKey(application.name);
            found.push_back(std::move(application));
        }
        return found;
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

/// Runs `work` on up to `count` threads, this one among them, until all have ended.
template <typename Work>
void runOnThreads(size_t count, const Work &work)
{
    std::vector<std::jthread> threads;
    try {
        while (threads.size() + 1 < count)
            threads.emplace_back(work);
    } catch (const std::system_error &) {
        // No more threads to be had: those there are, and this one, do it.
    }
    work();
}

} // namespace

std::vector<InstalledApplication> scanBatches(const std::vector<ScanBatch> &batches,
                                              const ApplicationEnvironment &environment)
{
    std::vector<Applications> found(batches.size());
    const CollationKey::Maker sortKey;
    std::atomic_size_t next = 0;
    const size_t cores = std::max(1U, std::thread::hardware_concurrency());
    runOnThreads(std::min(cores, batches.size()), [&] {
        Worker worker(environment, sortKey);
        for (size_t i = next++; i < batches.size(); i = next++)
            found[i] = worker.look(batches[i]);
    });

    Applications result;
    size_t total = 0;
    for (const Applications &part : found)
        total += part.size();
    result.reserve(total);
    for (Applications &part : found)
        std::move(part.begin(), part.end(), std::back_inserter(result));
    return result;
}

} // namespace quillbay::platform
