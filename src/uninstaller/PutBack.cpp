#include "uninstaller/PutBack.h"

#include "foundation/Console.h"

#include <algorithm>
#include <cerrno>
#include <optional>

#include <sys/stat.h>

namespace quillbay {

namespace {

using platform::ElevationResult;
using platform::FileResult;
using platform::TrashedFile;
using Reason = PutBackFailure::Reason;

QString describe(Reason reason)
{
    switch (reason) {
    case Reason::Gone:
        return QStringLiteral("It is no longer in the Trash.");
    case Reason::Occupied:
        return QStringLiteral("Something else is in its place now.");
    case Reason::Refused:
        return QStringLiteral("Administrator access was denied or cancelled.");
    case Reason::Failed:
        break;
    }
    return QStringLiteral("It could not be moved back.");
}

// 0, or the error; the folders that are there stay as they are.
int makeFolder(const QByteArray &path)
{
    struct stat status = {};
    if (path.isEmpty() || stat(path.constData(), &status) == 0)
        return 0;
    if (errno != ENOENT)
        return errno;
    const int above = makeFolder(path.left(path.lastIndexOf('/')));
    if (above != 0)
        return above;
    return mkdir(path.constData(), S_IRWXU) == 0 || errno == EEXIST ? 0 : errno;
}

std::optional<Reason> moveElevated(const QByteArray &from, const QByteArray &to, const FileIdentity &file,
                                   const RemovalServices &services)
{
    const QByteArray source = services.files.resolved(from);
    const QByteArray target = services.files.resolved(to);
    if (source.isEmpty() || target.isEmpty())
        return Reason::Failed;
    const ElevationResult moved = services.admin.moveWithAdminPrivileges(source, target, file);
    switch (moved.outcome) {
    case ElevationResult::Outcome::Done:
        return std::nullopt;
    case ElevationResult::Outcome::Changed:
        return Reason::Gone;
    case ElevationResult::Outcome::CommandFailed:
        return FileIdentity::of(to) ? Reason::Occupied : Reason::Failed;
    default:
        return Reason::Refused;
    }
}

// Why it stays in the Trash; nothing when it is back.
std::optional<Reason> moveBack(const RemovalRecord &record, const RemovalServices &services)
{
    const auto place =
        services.trash.find(record.path, {record.file.device, record.file.inode, record.file.kind});
    const auto file = place ? FileIdentity::of(place->file) : std::nullopt;
    if (!file)
        return Reason::Gone;
    if (FileIdentity::of(record.path))
        return Reason::Occupied;
    // What cannot be made shows when moving.
    static_cast<void>(makeFolder(record.path.left(record.path.lastIndexOf('/'))));
    const FileResult moved =
        services.files.move(place->file, record.path, {file->device, file->inode, file->kind});
    std::optional<Reason> reason;
    switch (moved.outcome) {
    case FileResult::Outcome::Done:
        break;
    case FileResult::Outcome::Missing:
    case FileResult::Outcome::Changed:
        reason = Reason::Gone;
        break;
    case FileResult::Outcome::Occupied:
        reason = Reason::Occupied;
        break;
    case FileResult::Outcome::NotPermitted:
        reason = moveElevated(place->file, record.path, *file, services);
        break;
    default:
        reason = Reason::Failed;
    }
    if (!reason && !services.trash.release(*place))
        printLine(QStringLiteral("⚠️ Failed to take a record back out of the Trash"));
    return reason;
}

} // namespace

PutBackResult putBack(const Receipt &receipt, const RemovalServices &services)
{
    PutBackResult result;
    for (auto record = receipt.records.crbegin(); record != receipt.records.crend(); ++record) {
        if (services.stop.stop_requested())
            break;
        if (record->method != DeletionMethod::Trash)
            continue;
        if (const auto reason = moveBack(*record, services))
            result.left.append(
                {record->path, *reason, record->displayName + QStringLiteral(": ") + describe(*reason)});
        else
            result.restored.append(record->path);
    }
    return result;
}

} // namespace quillbay
