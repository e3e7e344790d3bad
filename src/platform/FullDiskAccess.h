#pragma once

namespace quillbay::platform {

/// Whether this process may see what applications leave behind, and where the user grants it.
///
/// Thread: main.
class FullDiskAccess
{
public:
    virtual ~FullDiskAccess() = default;

    /// Cheap: asked again and again while the user is at the settings.
    virtual bool hasAccess() const = 0;

    /// Opens the place where the access is granted. Nothing happens where there is none.
    virtual void openSystemSettings() = 0;
};

} // namespace quillbay::platform
