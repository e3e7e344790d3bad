#pragma once

#include "platform/FileRemoval.h"
#include "platform/FullDiskAccess.h"
#include "platform/PackageManager.h"
#include "platform/ResidualRoots.h"
#include "platform/Trash.h"
#include "uninstaller/AdminPrivileges.h"

#include <QString>

#include <memory>

namespace quillbay {

/// What uninstalling works with. The shared ones may be kept by a worker that still runs; all others outlive
/// the `Uninstaller` that was made of them.
struct UninstallerServices
{
    std::shared_ptr<const platform::ResidualRoots> roots;
    std::shared_ptr<platform::PackageManager> packages; ///< Null: there are none.
    /// For package managers that do not ask for authority themselves; may be empty.
    platform::ElevatedRun runElevated;
    const platform::FileRemoval &files;
    const platform::Trash &trash;
    AdminPrivileges &admin;
    platform::FullDiskAccess &access;
    QString receiptFolder; ///< See `ReceiptStore`.
};

} // namespace quillbay
