#pragma once

#include <QString>

#include <chrono>

namespace quillbay {

/// A lock between processes on a folder, held until the object goes or its process ends, however that
/// happens. The kernel keeps it, so there is no lock file that a killed process could leave behind, and a
/// folder without write permission can be locked too.
///
/// Thread: any; two objects exclude each other within one process as well.
class FolderLock
{
public:
    /// Tries for at most `patience`, without running an event loop.
    FolderLock(const QString &folder, std::chrono::milliseconds patience);
    ~FolderLock();
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

    bool isHeld() const { return m_isHeld; }

private:
    int m_descriptor;
    bool m_isHeld = false;
};

} // namespace quillbay
