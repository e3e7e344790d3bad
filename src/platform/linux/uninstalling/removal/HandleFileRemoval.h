#pragma once

#include "platform/FileRemoval.h"

namespace quillbay::platform {

/// By folder handles, step by step: the same code that the root helper is made of.
class HandleFileRemoval : public FileRemoval
{
public:
    QByteArray resolved(const QByteArray &path) const override;
    bool holdsMount(const QByteArray &path) const override;
    FileResult remove(const QByteArray &path, const FileStamp &expected) const override;
    FileResult move(const QByteArray &from, const QByteArray &to, const FileStamp &expected) const override;
};

} // namespace quillbay::platform
