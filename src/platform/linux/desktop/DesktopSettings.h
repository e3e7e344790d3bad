#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace quillbay::platform {

/// What the configuration files of the desktops say about looks; unset where they say nothing.
struct DesktopSettings
{
    std::optional<bool> dark;
    std::optional<bool> reducedMotion;
    QString iconTheme; ///< Directory name, checked by `isThemeName`; empty while unknown.

    friend bool operator==(const DesktopSettings &, const DesktopSettings &) = default;
};

/// Where to look.
struct DesktopSettingsSource
{
    QString configFolder; ///< $XDG_CONFIG_HOME or its default.
    QByteArray gtkTheme;  ///< GTK_THEME: "Name", "Name-dark" or "Name:dark".
    bool kde = false;     ///< Whether KDE's file is asked before GTK's.

    static DesktopSettingsSource fromEnvironment();
};

/// Whether `name` can be the directory name of an icon theme: no separator, not hidden, of sane length.
bool isThemeName(const QString &name);

/// GTK's `settings.ini`, version 4 or 3.
DesktopSettings parseGtkSettings(const QByteArray &content);
/// KDE's `kdeglobals`.
DesktopSettings parseKdeGlobals(const QByteArray &content);

/// Reads the files that are there: GTK_THEME decides on dark, then the running desktop's own file, then the
/// others, each for what is still unset. Only regular files are read, and of each the first 256 KiB. Thread:
/// any; for a worker, since a home folder may be on a network.
DesktopSettings readDesktopSettings(const DesktopSettingsSource &source);

} // namespace quillbay::platform
