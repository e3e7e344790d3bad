#pragma once

#include "app/AppListModel.h"
#include "foundation/ObservableObject.h"
#include "library/AppFinder.h"

#include <QString>

class QWindow;

namespace quillbay {

namespace platform {
class ApplicationLauncher;
}

/// The one object that every screen holds: what is searched, what the grid therefore lists, and the actions
/// of the tiles. It owns no data: the library does.
///
/// Thread: main thread. One instance, from the start of the program to its end.
class QuillbayViewModel : public ObservableObject
{
    Q_OBJECT
    Q_PROPERTY(quillbay::AppFinder *appFinder READ appFinder CONSTANT)
    Q_PROPERTY(quillbay::AppListModel *filteredApps READ filteredApps CONSTANT)
    Q_PROPERTY(QString searchQuery READ searchQuery WRITE setSearchQuery NOTIFY searchQueryChanged)
    Q_PROPERTY(bool searchFocusTrigger READ searchFocusTrigger WRITE setSearchFocusTrigger NOTIFY
                   searchFocusTriggerChanged)

public:
    /// Starts the first scan and the folder watch. Both arguments must outlive this object.
    QuillbayViewModel(AppFinder &appFinder, platform::ApplicationLauncher &launcher,
                      QObject *parent = nullptr);

    AppFinder *appFinder() const { return &m_appFinder; }
    AppListModel *filteredApps() { return &m_filteredApps; }
    /// Text of the search field. Writing it recomputes the list before the call returns.
    QString searchQuery() const { return m_searchQuery; }
    void setSearchQuery(const QString &query);
    /// Each change asks the search field to take the keyboard; the value itself means nothing.
    bool searchFocusTrigger() const { return m_searchFocusTrigger; }
    void setSearchFocusTrigger(bool trigger);

    /// Recomputes `filteredApps` from the library as it stands. A result that looks the same assigns nothing.
    Q_INVOKABLE void updateFilteredApps();

    /// Opens an application of the library. A failure is printed; the user sees that nothing came.
    void launchApp(const AppItem &app);
    /// The same for the application with that path; an unknown path does nothing. `window` is the one clicked
    /// in.
    Q_INVOKABLE void launchApp(const QString &path, QWindow *window = nullptr);

Q_SIGNALS:
    void searchQueryChanged();
    void searchFocusTriggerChanged();

private:
    void open(const AppItem &app, QWindow *window);

    AppFinder &m_appFinder;
    platform::ApplicationLauncher &m_launcher;
    AppListModel m_filteredApps;
    QString m_searchQuery;
    bool m_searchFocusTrigger = false;
};

/// The applications whose name contains the query, without regard to case in the locale's way, in their
/// order; all of them for an empty query.
QList<AppItem> appsMatching(const QList<AppItem> &apps, const QString &query);

} // namespace quillbay
