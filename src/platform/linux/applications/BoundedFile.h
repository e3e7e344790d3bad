#pragma once

#include <memory>
#include <optional>
#include <string_view>

namespace quillbay::platform {

/// Reads small files one after the other into one buffer. Never blocks on what is not a regular file and
/// never reads more than `MaximumSize`: such a file, or one that cannot be read, gives nothing.
///
/// Not for two threads at once; each worker of a scan has its own.
class BoundedFile
{
public:
    /// Ample for an entry or an information list (the largest that are shipped have some tens of kilobytes),
    /// and little enough that a folder full of such files does no harm.
    static constexpr size_t MaximumSize = size_t(1) << 20;

    /// What the caller knows of the file's kind, from listing its folder.
    enum class Kind {
        Regular, ///< Saves asking.
        Unknown, ///< A link, or a file system that does not tell.
    };

    BoundedFile();

    /// The bytes of `path`, which is relative to the open folder `folder` (or `AT_FDCWD`). They are valid
    /// until the next call.
    std::optional<std::string_view> read(int folder, const char *path, Kind kind = Kind::Unknown);

private:
    std::unique_ptr<char[]> m_buffer;
};

} // namespace quillbay::platform
