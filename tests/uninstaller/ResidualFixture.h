#pragma once

#include "platform/linux/uninstalling/LinuxResidualLayout.h"
#include "support/FakeApplications.h"
#include "uninstaller/ResidualScan.h"

#include <QDir>
#include <QTemporaryDir>

#include <string>
#include <vector>

namespace quillbay::testing {

/// The layout of a macOS home below a made root folder.
platform::ResidualLayout macLayout(const QByteArray &root);

/// Answers with what the test set. Thread: any, while nothing is set.
class MadeRoots final : public platform::ResidualRoots
{
public:
    platform::ResidualLayout places;
    platform::ApplicationFacts facts;
    std::optional<QList<QByteArray>> mounts = QList<QByteArray>{"/"};
    Gate gate; ///< Closed: `factsOf` waits.

    platform::ResidualLayout layout() const override { return places; }
    platform::ApplicationFacts factsOf(const QString &path, const QString &name) const override;
    std::optional<QList<QByteArray>> mountPoints() const override { return mounts; }
};

/// For trees by the hundred: a folder in memory where the machine has one, else that for temporary files. A
/// disk that others use makes such a test wait for its journal, and shows nothing more.
QString memoryFolder();

/// A root folder of a test's own, with a home in it, and scans of it.
class MadeTree
{
public:
    explicit MadeTree(const QString &place = QDir::tempPath());
    ~MadeTree();
    MadeTree(const MadeTree &) = delete;
    MadeTree &operator=(const MadeTree &) = delete;

    /// The layouts have the tree's own home and its root in front of what all users share.
    void useMacLayout() { roots->places = macLayout(root); }
    void useLinuxLayout() { roots->places = platform::linuxResidualLayout(linuxFolders()); }
    platform::LinuxBaseFolders linuxFolders() const;

    /// "~/x" is below the home, "/x" below the root.
    QByteArray path(const QByteArray &path) const;
    /// Makes a file of so many bytes, and the folders in the way to it. Names are any bytes.
    QByteArray file(const QByteArray &path, int size = 1) const;
    QByteArray folder(const QByteArray &path) const;
    QByteArray link(const QByteArray &path, const QByteArray &target) const;

    std::vector<AppResidualFile> scan(const QString &name, const QString &appPath = {}) const;
    /// The rows of the steps after the first, a line each: "Caches ~/.cache/acme 12".
    std::vector<std::string> rows(const QString &name) const;
    std::string line(const AppResidualFile &row) const;

    QByteArray root;
    QByteArray home;
    std::shared_ptr<MadeRoots> roots = std::make_shared<MadeRoots>();
    PackageQueries packages;

private:
    QTemporaryDir m_folder;
};

/// Makes this process an ordinary user while it lives, where it is not one already: files that root made in
/// folders without write permission are then out of reach.
class OrdinaryUser
{
public:
    OrdinaryUser();
    ~OrdinaryUser();
    OrdinaryUser(const OrdinaryUser &) = delete;
    OrdinaryUser &operator=(const OrdinaryUser &) = delete;

private:
    bool m_wasRoot;
};

} // namespace quillbay::testing
