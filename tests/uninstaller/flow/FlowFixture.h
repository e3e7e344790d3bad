#pragma once

#include "support/FakeFullDiskAccess.h"
#include "support/FakePackageManager.h"
#include "support/FakeRemoval.h"
#include "uninstaller/ReceiptStore.h"
#include "uninstaller/ResidualFixture.h"
#include "uninstaller/Uninstaller.h"

#include <QSignalSpy>
#include <QTest>

#include <map>
#include <memory>
#include <string>

#include <gmock/gmock.h>

namespace quillbay::testing {

using Stage = UninstallerFlow::Stage;

/// A flow over a made home, with real files and a real Trash. The application is a folder with four rows
/// beside its own: preferences, a cache, and a log that is found twice.
class FlowTest : public ::testing::Test
{
protected:
    FlowTest();
    ~FlowTest() override;

    void begin();
    /// Begins and waits for the review.
    void review();
    bool waitForStage(Stage stage);
    /// Until the worker's task is done.
    bool settle();
    bool waitForQuestion();

    void removeToTrash();
    void removeForGood();

    bool exists(const QByteArray &path) const;
    /// Makes the application one of a package; returns its file.
    platform::Package &ownApplication(const QStringList &others = {});
    platform::RemovalPreview &preview() { return packages->installed.begin()->preview; }
    /// All that is in the made home: content by path.
    std::map<std::string, std::string> homeContent() const;
    /// What all receipts together tell, the oldest first.
    QList<RemovalRecord> receipts() const;
    QString rowId(const QString &name) const;

    MadeTree tree;
    AppItem app;
    QByteArray appFolder;
    QByteArray preferences;
    QByteArray cache;
    QByteArray log;
    FakeFullDiskAccess access;
    std::shared_ptr<FakePackageManager> packages = std::make_shared<FakePackageManager>();
    FakeFileRemoval files;
    FakeTrash trash;
    FakeElevation elevation;
    AdminPrivileges admin{elevation};
    platform::ElevatedRun runElevated;
    std::unique_ptr<Uninstaller> uninstaller;
    std::unique_ptr<UninstallerFlow> flow;
};

} // namespace quillbay::testing
