#pragma once

#include "foundation/NotificationCenter.h"
#include "foundation/PreferenceStore.h"
#include "library/AppFinder.h"
#include "support/FakePlatform.h"
#include "workspaces/WorkspaceManager.h"

#include <QTemporaryDir>

#include <memory>

namespace quillbay::testing {

/// An application library on fakes, with preferences of its own, a clock that the test sets, and the one
/// default workspace.
struct TestLibrary
{
    TestLibrary();

    /// Ends the library and the workspaces and makes them anew on the same preferences, as a start does.
    /// Without a scan.
    void restart();
    /// Scans and waits for the hand-over; false where none came.
    bool scan();
    /// Sets what is installed, a name each: "/apps/" and the name is its path, "Other" its category unless
    /// the name says "Name:Category". Then scans.
    bool install(const QStringList &names);
    /// The installed application with that name; the test fails where there is none.
    AppItem app(const QString &name) const;
    /// The folder with that name; the test fails where there is none.
    AppFolder folder(const QString &name) const;

    QTemporaryDir home;
    FakePlatform fakes;
    PreferenceStore preferences;
    NotificationCenter notifications;
    double now = 1'700'000'000; ///< Seconds since 1970.
    std::unique_ptr<WorkspaceManager> workspaces;
    std::unique_ptr<AppFinder> finder;
};

/// The names in order, with a space between.
QString names(const QList<AppItem> &apps);
QString names(const QList<AppFolder> &folders);

} // namespace quillbay::testing
