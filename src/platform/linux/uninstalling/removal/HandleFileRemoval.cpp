#include "platform/linux/uninstalling/removal/HandleFileRemoval.h"

#include "elevate/MountTable.h"
#include "elevate/TreeMove.h"
#include "elevate/TreeRemoval.h"

#include <cerrno>
#include <cstring>

namespace quillbay::platform {

namespace {

FileResult resultOf(const elevate::Outcome &outcome)
{
    using Outcome = FileResult::Outcome;
    const auto reason = [&](const char *otherwise) {
        return QString::fromLocal8Bit(outcome.error != 0 ? std::strerror(outcome.error) : otherwise);
    };
    switch (outcome.status) {
    case elevate::Status::Done:
        return {};
    case elevate::Status::Missing:
        return {Outcome::Missing, reason("No such file or directory")};
    case elevate::Status::Changed:
        return {Outcome::Changed, reason("Stale file handle")};
    case elevate::Status::Mounted:
        return {Outcome::Mounted, reason("Device or resource busy")};
    case elevate::Status::Occupied:
        return {Outcome::Occupied, reason("File exists")};
    case elevate::Status::Unsafe:
        return {Outcome::Failed, reason("Invalid argument")};
    case elevate::Status::Failed:
        break;
    }
    const bool notPermitted = outcome.error == EACCES || outcome.error == EPERM;
    return {notPermitted ? Outcome::NotPermitted : Outcome::Failed, reason("Input/output error")};
}

elevate::FileMark markOf(const FileStamp &stamp)
{
    return {stamp.device, stamp.inode, stamp.kind};
}

elevate::OpenedEntry open(const QByteArray &path)
{
    const std::string resolved = elevate::withoutLinks(path.toStdString());
    if (!resolved.empty())
        return elevate::openEntry(resolved);
    return {errno == ENOENT ? elevate::Outcome{elevate::Status::Missing, errno}
                            : elevate::Outcome::failed(errno),
            {}};
}

} // namespace

QByteArray HandleFileRemoval::resolved(const QByteArray &path) const
{
    return QByteArray::fromStdString(elevate::withoutLinks(path.toStdString()));
}

bool HandleFileRemoval::holdsMount(const QByteArray &path) const
{
    return elevate::holdsMount(path.toStdString());
}

FileResult HandleFileRemoval::remove(const QByteArray &path, const FileStamp &expected) const
{
    const elevate::OpenedEntry file = open(path);
    if (!file.outcome.done())
        return resultOf(file.outcome);
    // Before anything is gone: the walk itself would only stop once it gets there.
    if (holdsMount(resolved(path)))
        return resultOf({elevate::Status::Mounted, 0});
    return resultOf(elevate::removeTree(file.entry, markOf(expected)));
}

FileResult HandleFileRemoval::move(const QByteArray &from, const QByteArray &to,
                                   const FileStamp &expected) const
{
    const elevate::OpenedEntry source = open(from);
    if (!source.outcome.done())
        return resultOf(source.outcome);
    if (holdsMount(resolved(from)))
        return resultOf({elevate::Status::Mounted, 0});
    const elevate::OpenedEntry target = open(to);
    // A folder that is not there is the destination's fault, not the file's.
    if (target.outcome.status == elevate::Status::Missing)
        return resultOf(elevate::Outcome::failed(ENOENT));
    return resultOf(target.outcome.done() ? elevate::moveTree(source.entry, target.entry, markOf(expected))
                                          : target.outcome);
}

} // namespace quillbay::platform
