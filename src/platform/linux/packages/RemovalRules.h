#pragma once

#include "platform/linux/packages/SystemPackages.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

namespace quillbay::platform {

/// Why these packages must not be removed together; empty where they may be. In this order:
/// - one of them is essential to the system;
/// - one of them is in `ownPackages`, which this program runs on;
/// - one of them is a display server or manager, or a part that every session needs;
/// - one of them is the shell, the session, the window manager or the meta package of a desktop in `desktops`
///   (as in `XDG_CURRENT_DESKTOP`). Removing only the meta package would leave the rest for the next cleaning
///   up.
/// Where none of `desktops` is known, all known desktops count as the running one, and so does whatever says
/// that it is a window or session manager.
QString refusalOf(const QList<PackageFacts> &packages, const QStringList &desktops,
                  const QSet<QString> &ownPackages);

} // namespace quillbay::platform
