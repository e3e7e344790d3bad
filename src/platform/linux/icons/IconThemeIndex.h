#pragma once

#include "platform/linux/icons/IconListing.h"

#include <QMutex>
#include <QString>
#include <QStringList>

#include <chrono>
#include <memory>
#include <vector>

namespace quillbay::platform {

/// Finds the picture files of a named icon: in the chosen theme, in those it inherits from, in "hicolor", and
/// at last in the folders of unthemed pictures.
///
/// Names match exactly: the specification's shortening of a name at its dashes shows one application's icon
/// for another. A theme is read when the first search reaches it; a name that is not found then costs a look
/// into a sorted array for each theme. Such a miss also looks whether a folder has changed, at most once in
/// `recheckInterval`, and reads all again if one has: applications get installed while the program runs.
///
/// Thread: any. `setTheme` and `refresh` never wait for a reading in progress.
class IconThemeIndex
{
public:
    struct Folders
    {
        QStringList themes;   ///< That hold themes, and unthemed pictures; earlier ones win.
        QStringList pictures; ///< That hold unthemed pictures only.
    };
    /// Those that the environment names: `~/.icons`, `icons` and `pixmaps` of the data folders, with
    /// flatpak's and snap's added where missing.
    static Folders standardFolders();

    explicit IconThemeIndex(Folders folders,
                            std::chrono::milliseconds recheckInterval = std::chrono::seconds(2));

    /// The theme by the name of its folder. Where it is empty or not installed, one that is takes its place.
    void setTheme(const QString &name);

    /// The next search looks first whether a folder has changed, and reads all again if one has.
    void refresh();

    /// The files of icon `name` that are worth trying for a square of `edge` device pixels, best first, at
    /// most eight. A ".png", ".svg" or ".xpm" at the end of the name is cut off first.
    QStringList find(const QString &name, int edge);

private:
    struct Theme
    {
        QString name;
        IconTheme description;
        std::unique_ptr<IconListing> listing; ///< None before the first search.
    };

    void reset();
    void openTheme(const QString &name, int depth);
    QString fallbackTheme() const;
    bool isInstalled(const QString &name) const;
    IconTheme describe(const QString &name) const;
    IconListing &listing(Theme &theme) const;
    QStringList look(const QByteArray &name, int edge);
    bool changedOnDisk();
    bool isDueForCheck() const;

    const Folders m_folders;
    const std::chrono::milliseconds m_recheckInterval;

    QMutex m_wishes; ///< Held for moments only: guards the next three.
    QString m_wantedTheme;
    bool m_mayHaveChanged = false;
    bool m_outdated = true;

    QMutex m_reading; ///< Held while folders are read: guards the rest.
    QString m_theme;
    std::vector<Theme> m_chain;
    std::unique_ptr<IconListing> m_unthemed;
    std::chrono::steady_clock::time_point m_lastCheck;
};

} // namespace quillbay::platform
