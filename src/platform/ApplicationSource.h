#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <limits>
#include <optional>
#include <vector>

namespace quillbay::platform {

/// One installed application as a scan finds it.
struct InstalledApplication
{
    /// Absolute path of the bundle, desktop entry or image. Not canonicalised: it is the application's
    /// identity.
    QString path;
    /// Display name: the localised name of an entry, the file name without extension of a bundle or image.
    QString name;
    /// Display name of the category, where the platform decides it (desktop entries, images); else null.
    QString category;
    /// The category type that a bundle declares ("public.app-category.games"); null where it declares none.
    QString categoryType;
    /// Binary sort key of `name` in the collation of the current locale, case ignored: `memcmp` order is the
    /// order of names.
    QByteArray sortKey;
};

/// When a file was made and last written: seconds since 1970, not a number where the file system does not
/// say or the file could not be asked.
struct FileDates
{
    double created = std::numeric_limits<double>::quiet_NaN();
    double modified = std::numeric_limits<double>::quiet_NaN();
};

/// What one application says about itself beyond the scan: enough to launch it and to find its icon.
struct ApplicationDetails
{
    /// Desktop file id without ".desktop", flatpak application id, or bundle identifier; empty where there is
    /// none.
    QString identifier;
    /// `Icon` of an entry (theme name or absolute path), absolute path of a bundle's icon file; may be empty.
    QString icon;
    /// Absolute path of the program of a bundle or image; empty for a desktop entry.
    QString executable;
    /// `Exec` of a desktop entry, string escapes undone, quoting and field codes as written.
    QString exec;
    /// Localised name, for the field code `%c`.
    QString name;
    /// `Path`: working directory; empty means the home folder.
    QString workingDirectory;
    bool dbusActivatable = false;
    bool terminal = false;
    /// `StartupNotify`; unset where the entry does not say.
    std::optional<bool> startupNotify;
};

/// Which applications are installed, and what each says about itself.
///
/// Thread: every function may be called from any thread, several at a time; a call works on values and keeps
/// nothing but the list of `folders`. Bad input (unreadable, truncated, not text, enormous, not a regular
/// file) is skipped silently.
class ApplicationSource
{
public:
    virtual ~ApplicationSource() = default;

    /// The folders that are read, in scan order, whether they exist or not; then those below them that the
    /// scan that ended last has read. Cheap. A watch looks at the same list, taken anew after each scan.
    virtual QStringList folders() const = 0;

    /// Every application that the desktop would show, in scan order: folder by folder, unsorted, not
    /// de-duplicated beyond the desktop's own rule (an earlier folder's entry shadows a later one of its id).
    /// Uses up to as many threads as there are cores and blocks until all is read.
    virtual std::vector<InstalledApplication> scan() const = 0;

    /// The dates of the file at the path of a scan's result.
    virtual FileDates dates(const QString &path) const = 0;

    /// Reads one application, at the path of a scan's result; nothing if it cannot be read any more.
    virtual std::optional<ApplicationDetails> read(const QString &path) const = 0;
};

} // namespace quillbay::platform
