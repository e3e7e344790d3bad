#pragma once

#include "platform/ApplicationSource.h"
#include "platform/linux/applications/ApplicationEnvironment.h"

#include <QMutex>

namespace quillbay::platform {

/// Desktop entries, application bundles and AppImages of a Linux desktop.
///
/// An entry is read by our own parser and scanner, not by GIO, which takes ten times as long per entry and
/// drops entries for reasons of its own.
class LinuxApplicationSource final : public ApplicationSource
{
public:
    explicit LinuxApplicationSource(ApplicationEnvironment environment);
    static LinuxApplicationSource fromEnvironment();

    /// `/Applications`, `/System/Applications`, `~/Applications`, then the folders of desktop entries, then
    /// their subfolders as the scan that ended last found them.
    QStringList folders() const override;
    std::vector<InstalledApplication> scan() const override;
    FileDates dates(const QString &path) const override;
    /// Tells the three kinds apart by the extension. An entry that is hidden now is still read.
    std::optional<ApplicationDetails> read(const QString &path) const override;

private:
    QString desktopFileId(const QString &path) const;
    std::optional<ApplicationDetails> readEntry(const QString &path) const;

    const ApplicationEnvironment m_environment;
    mutable QMutex m_mutex;
    mutable QStringList m_subfolders; ///< Of the scan that ended last; guarded by the mutex.
};

} // namespace quillbay::platform
