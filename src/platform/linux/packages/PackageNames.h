#pragma once

#include "platform/PackageManager.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

namespace quillbay::platform {

// What is not a name by these rules never becomes an argument of a program or a part of a message: no leading
// dash, no path, no blank, no pattern.

/// A Debian package name, with or without an architecture: "g++", "libc6:i386".
bool isDebianName(const QString &name);
/// An rpm package name, alone or with version, release and architecture: "NetworkManager-1:1.4-2.x86_64".
bool isRpmName(const QString &name);
/// A flatpak application id: "org.foo.Bar".
bool isFlatpakId(const QString &id);
/// The full reference of the flatpak application `id`: "app/org.foo.Bar/x86_64/stable".
bool isFlatpakReference(const QString &reference, const QString &id);
/// A snap's name, or that of one of its instances: "foo", "foo_work".
bool isSnapName(const QString &name);

/// Whether both names of a package can be told to its manager.
bool hasValidNames(const Package &package);

/// How a package is named in a list: "foo", or "foo:i386" (rpm: "foo.i686") if it is not of this machine's
/// architecture.
QString listedName(PackageKind kind, const QString &name, const QString &architecture);
/// The same of a package of the system's.
QString listedName(const Package &package);

/// A package as the user reads of it.
QString packageText(PackageKind kind, const QString &name);

/// The paths by which package databases may know a file, each once.
struct FileSpellings
{
    QByteArrayList own;    ///< The file itself, links in its folder's path followed or not.
    QByteArrayList target; ///< What it leads to if it is a link; else empty.
};

/// Follows links, and adds the other form of a path in a folder that was merged into /usr (`/bin/foo` and
/// `/usr/bin/foo`), for a database knows the one that the package was made with.
FileSpellings spellingsOf(const QByteArray &path);
/// The path, and its other form where it has one.
QByteArrayList mergedForms(const QByteArray &path);

} // namespace quillbay::platform
