#include "platform/linux/applications/FolderListing.h"

#include "elevate/Descriptor.h"

#include <QByteArrayView>
#include <QFile>

#include <cstring>
#include <deque>
#include <memory>
#include <memory_resource>
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
        elevate::Descriptor descriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
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

/// The desktop file ids met so far.
class IdSet
{
public:
    /// False if the id that is made of these two parts was there already.
    bool insert(std::string_view prefix, std::string_view name)
    {
        const size_t size = prefix.size() + name.size();
        char *text = static_cast<char *>(m_memory.allocate(size, 1));
        prefix.copy(text, prefix.size());
        name.copy(text + prefix.size(), name.size());
        return m_ids.emplace(text, size).second;
    }

private:
    // Thousands of small pieces that go all at once.
    std::pmr::monotonic_buffer_resource m_memory{size_t(1) << 14};
    std::pmr::unordered_set<std::string_view> m_ids{&m_memory};
};

class Lister
{
public:
    explicit Lister(const std::function<void(ScanBatch &&)> &take)
        : m_take(take)
    {
    }

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
        handOver();
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
            if (!visited.emplace(status.st_dev, status.st_ino).second)
                continue;
            if (pending.front().depth > 0 && m_subfolders.size() < MostSubfolders)
                m_subfolders.append(QString::fromStdString(pending.front().path).chopped(1));
            listEntryFolder(children, pending);
        }
    }

    QStringList takeSubfolders() { return std::move(m_subfolders); }

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
                if (m_ids.insert(folder.idPrefix, name))
                    add(name, child->d_type);
            } else if (name != "." && name != ".." && folder.depth < MaximumDepth && isUtf8(name) &&
                       isFolder(children.descriptor(), *child)) {
                pending.push_back({folder.path + child->d_name + '/', folder.idPrefix + child->d_name + '-',
                                   folder.depth + 1});
            }
        }
        handOver();
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
        m_batch.folder = path;
        m_batch.content = content;
    }

    void add(std::string_view name, unsigned char type)
    {
        if (!isUtf8(name))
            return;
        if (m_batch.names.empty()) {
            m_batch.names.reserve(BatchSize);
            m_batch.text.reserve(BatchSize * 48);
        }
        const auto kind = type == DT_REG ? BoundedFile::Kind::Regular : BoundedFile::Kind::Unknown;
        m_batch.names.push_back({uint32_t(m_batch.text.size()), kind});
        m_batch.text.append(name).push_back('\0');
        if (m_batch.names.size() == BatchSize)
            handOver();
    }

    void handOver()
    {
        if (m_batch.names.empty())
            return;
        ScanBatch next{m_batch.folder, m_batch.content, {}, {}};
        m_take(std::exchange(m_batch, std::move(next)));
    }

    const std::function<void(ScanBatch &&)> &m_take;
    IdSet m_ids;
    QStringList m_subfolders;
    ScanBatch m_batch; ///< What was listed since the last was handed over.
};

} // namespace

QStringList listApplications(const ApplicationEnvironment &environment,
                             const std::function<void(ScanBatch &&)> &take)
{
    Lister lister(take);
    for (const QString &folder : environment.systemBundleDirs)
        lister.listBundles(folder, false);
    lister.listBundles(environment.userBundleDir(), true);
    for (const QString &folder : environment.entryDirs())
        lister.listEntries(folder);
    return lister.takeSubfolders();
}

} // namespace quillbay::platform
