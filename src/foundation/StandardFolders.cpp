#include "foundation/StandardFolders.h"

#include <QDir>

namespace quillbay {

QString stateFolder()
{
    const QString set = qEnvironmentVariable("XDG_STATE_HOME");
    const QString base = QDir::isAbsolutePath(set) ? set : QDir::homePath() + QStringLiteral("/.local/state");
    return base + QStringLiteral("/quillbay");
}

} // namespace quillbay
