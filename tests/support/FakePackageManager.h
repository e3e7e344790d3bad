#pragma once

#include "platform/PackageManager.h"

#include <QByteArray>
#include <QList>
#include <QMap>

#include <mutex>

namespace quillbay::testing {

/// A package manager whose packages the test sets, and which records what it was asked. Like the real one it
/// removes only what was approved as it is now, and forgets what it has removed.
///
/// Thread: the functions may be called from any thread; the test looks at the fields while none is running.
class FakePackageManager final : public platform::PackageManager
{
public:
    struct Installed
    {
        platform::Package package;
        /// The package itself comes first.
        platform::RemovalPreview preview;
    };

    QMap<QByteArray, Installed> installed; ///< By application file.
    QMap<QByteArray, QString> ownerErrors; ///< By application file.
    /// What a removal comes to once it has been compared.
    platform::RemovalResult answer = {platform::RemovalOutcome::Removed, {}};
    /// If not empty this is run through the removal's `runElevated`, and its result is the answer.
    QStringList elevatedCommand;

    mutable QList<QByteArray> asked; ///< Files of `owner`.
    mutable QList<platform::Package> simulated;
    QList<platform::PackageRemoval> removals;

    /// Adds a Debian package that a removal takes together with `others`.
    platform::Package install(const QByteArray &file, const QString &name, const QStringList &others = {});

    platform::PackageOwner owner(const QByteArray &applicationFile) const override;
    QByteArrayList ofPackages(const QByteArrayList &files) const override;
    platform::RemovalPreview simulateRemoval(const platform::Package &package,
                                             platform::PackageData data) const override;
    platform::RemovalResult remove(const platform::PackageRemoval &removal) override;

private:
    platform::RemovalPreview previewOf(const platform::Package &package) const;

    mutable std::recursive_mutex m_mutex;
};

} // namespace quillbay::testing
