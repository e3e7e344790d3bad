#pragma once

#include "platform/Trash.h"

#include <QDateTime>

#include <functional>

namespace quillbay::platform {

/// The Trash of the freedesktop.org specification. What goes there as the user goes by GIO, as the desktop's
/// own file manager does it: it picks the Trash of the right file system and refuses what is none of the
/// person's.
class XdgTrash : public Trash
{
public:
    using Clock = std::function<QDateTime()>;
    explicit XdgTrash(Clock now = &QDateTime::currentDateTime);

    FileResult moveToTrash(const QByteArray &path) const override;
    TrashReservation reserve(const QByteArray &name, const QByteArray &origin) const override;
    bool release(const TrashedFile &place) const override;
    std::optional<TrashedFile> find(const QByteArray &origin, const FileStamp &file) const override;

private:
    Clock m_now;
};

} // namespace quillbay::platform
