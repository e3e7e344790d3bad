#pragma once

#include "platform/ApplicationSource.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace quillbay::platform {

/// The program that an application starts, as its command line names it: `env` with its options and
/// assignments is passed over. Empty if there is none.
QString programOf(const ApplicationDetails &details);

/// Whether a program of this name mostly runs what its arguments say (shells, interpreters, package systems):
/// its name tells nothing about an application.
bool runsOthers(const QString &baseName);

/// The folder that a self-installed program has to itself, for example `~/opt/paint-2.1` of
/// `~/opt/paint-2.1/bin/paint`; empty if there is none.
///
/// It is the nearest folder above the program that is called by one of `names`, or by one with a version
/// after it, reached through nothing but `bin`, `lib` and the like, and inside `home`, which it never is
/// itself. All are the file system's own bytes, links resolved. Looks at no file.
QByteArray ownFolderOf(const QByteArray &program, const QByteArray &home, const QStringList &names);

} // namespace quillbay::platform
