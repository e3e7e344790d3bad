#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

namespace quillbay::platform {

/// Variables by name, in the bytes of the system.
using Environment = QMap<QByteArray, QByteArray>;

/// The environment that this process was started with. What the program has set for itself since is not in
/// it.
Environment startEnvironment();

/// The block of `NAME=value`, each ended by a zero byte, as the kernel shows it. Of a name that comes twice
/// the first counts, as for `getenv`.
Environment parseEnvironment(const QByteArray &block);

/// What a launched program gets of `ours`: the user's session, without what was meant for this program alone.
///
/// Left out are the handshakes of its own start (startup ids and activation tokens, `DBUS_STARTER_*`, the
/// service manager's sockets and watchdog, an image's mount point, an inherited Wayland connection), `LD_*`,
/// and the settings of its toolkit (`QT_*`, `QML*`, `QSG_*`, `QV4_*`): somebody who starts this program under
/// another backend does not mean all others. Of the toolkit's variables those stay that sessions set for
/// everybody: input method, theme, style, scale, accessibility.
Environment childEnvironment(const Environment &ours);

/// Absolute path of the program `name` for a process with this environment: by its `PATH`, or, if the name
/// has a slash, relative to `workingDirectory`. Empty if there is none that may be run.
QString findProgram(const QString &name, const Environment &environment, const QString &workingDirectory);

} // namespace quillbay::platform
