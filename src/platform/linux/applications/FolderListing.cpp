#include "platform/linux/applications/FolderListing.h"

#include "platform/linux/applications/FileDescriptor.h"

#include <QByteArrayView>
#include <QFile>

#include <cstring>
#include <deque>
#include <memory>
#include <set>
#include <string_view>
#include <unordered_set>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace quillbay::platform {

namespace {

constexpr size_t BatchSize = 32;
constexpr int MaximumDepth = 32;

bool isUtf8(std::string_view text)
{
    return QByteArrayView(text.data(), qsizetype(text.size())).isValidUtf8();
}

bool endsWith(std::string_view text, std::string_view end)
{
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

/// A folder that is being read. Not open if it could not be.
class Folder
{
public:
    explicit Folder(const std::string &path)
    {
        FileDescriptor descriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (!descriptor)
            return;
        m_stream.reset(::fdopendir(descriptor.get()));
        if (m_stream)
            descriptor.release();
    }

    explicit operator bool() const { return m_stream != nullptr; }
    /// The next child; null at the end and where the folder cannot be read on.
    const dirent *next() { return ::readdir(m_stream.get()); }
    int descriptor() const { return ::dirfd(m_stream.get()); }

private:
    struct Close
    {
        void operator()(DIR *stream) const { ::closedir(stream); }
    };
    std::unique_ptr<DIR, Close> m_stream;
};

class Lister
{
public:
    void listBundles(const QString &path, bool withImages)
    {
        const std::string folder = QFile::encodeName(path).toStdString() + '/';
        Folder children(folder);
        if (!children)
            return;
        beginFolder(folder, ScanBatch::Content::Applications);
        while (const dirent *child = children.next()) {
            const std::string_view name = child->d_name;
            if (name.front() != '.' &&
                (endsWith(name, ".app") || (withImages && endsWith(name, ".AppImage"))))
                add(name, child->d_type);
        }
    }

    void listEntries(const QString &path)
    {
        std::set<std::pair<dev_t, ino_t>> visited;
        std::deque<Pending> pending{{QFile::encodeName(path).toStdString() + '/', {}, 0}};
        for (; !pending.empty(); pending.pop_front()) {
            Folder children(pending.front().path);
            struct stat status = {};
            if (!children || ::fstat(children.descriptor(), &status) != 0)
                continue;
            if (visited.emplace(status.st_dev, status.st_ino).second)
                listEntryFolder(children, pending);
        }
    }

    std::vector<ScanBatch> take() { return std::move(m_batches); }

private:
    struct Pending
    {
        std::string path;
        std::string idPrefix;
        int depth;
    };

    /// Lists the first of `pending` and puts its subfolders at the end.
    void listEntryFolder(Folder &children, std::deque<Pending> &pending)
    {
        const Pending folder = pending.front();
        beginFolder(folder.path, ScanBatch::Content::Entries);
        while (const dirent *child = children.next()) {
            const std::string_view name = child->d_name;
            if (child->d_type != DT_DIR && endsWith(name, ".desktop")) {
                if (m_ids.insert(folder.idPrefix + child->d_name).second)
                    add(name, child->d_type);
            } else if (name != "." && name != ".." && folder.depth < MaximumDepth && isUtf8(name) &&
                       isFolder(children.descriptor(), *child)) {
                pending.push_back({folder.path + child->d_name + '/', folder.idPrefix + child->d_name + '-',
                                   folder.depth + 1});
            }
        }
    }

    static bool isFolder(int parent, const dirent &child)
    {
        if (child.d_type != DT_LNK && child.d_type != DT_UNKNOWN)
            return child.d_type == DT_DIR;
        struct stat status = {};
        return ::fstatat(parent, child.d_name, &status, 0) == 0 && S_ISDIR(status.st_mode);
    }

    void beginFolder(const std::string &path, ScanBatch::Content content)
    {
        m_folder = path;
        m_content = content;
        m_batchOpen = false;
    }

    void add(std::string_view name, unsigned char type)
    {
        if (!isUtf8(name))
            return;
        if (!m_batchOpen || m_batches.back().names.size() == BatchSize) {
            m_batches.push_back({m_folder, m_content, {}, {}});
            m_batches.back().names.reserve(BatchSize);
            m_batches.back().text.reserve(BatchSize * 32);
            m_batchOpen = true;
        }
        ScanBatch &batch = m_batches.back();
        const auto kind = type == DT_REG ? BoundedFile::Kind::Regular : BoundedFile::Kind::Unknown;
        batch.names.push_back({uint32_t(batch.text.size()), kind});
        batch.text.append(name).push_back('\0');
    }

    std::vector<ScanBatch> m_batches;
    std::unordered_set<std::string> m_ids;
    std::string m_folder;
    ScanBatch::Content m_content = ScanBatch::Content::Entries;
    bool m_batchOpen = false;
};

} // namespace

std::vector<ScanBatch> listApplications(const ApplicationEnvironment &environment)
{
    Lister lister;
    for (const QString &folder : environment.systemBundleDirs)
        lister.listBundles(folder, false);
    lister.listBundles(environment.userBundleDir(), true);
    for (const QString &folder : environment.entryDirs())
        lister.listEntries(folder);
    return lister.take();
}

} // namespace quillbay::platform
