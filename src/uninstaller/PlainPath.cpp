#include "uninstaller/PlainPath.h"

#include <QByteArray>
#include <QList>

#include <algorithm>

namespace quillbay {

bool isPlainPath(const QByteArray &path)
{
    if (path.size() < 2 || !path.startsWith('/') || path.contains('\0'))
        return false;
    const QList<QByteArray> steps = path.mid(1).split('/');
    return std::none_of(steps.begin(), steps.end(),
                        [](const QByteArray &step) { return step.isEmpty() || step == "." || step == ".."; });
}

} // namespace quillbay
