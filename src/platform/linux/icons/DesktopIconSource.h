#pragma once

#include "platform/IconSource.h"
#include "platform/linux/icons/AppImagePictures.h"
#include "platform/linux/icons/IconThemeIndex.h"

namespace quillbay::platform {

class ApplicationSource;

/// The icon that an application names: a picture file, or a name in the desktop's icon theme; of an AppImage
/// the one that it carries. Whatever cannot be read gives way to the next best file of that name. An edge
/// below 1 or above 4096 is brought within.
///
/// Thread: any, `setTheme` and `refresh` included, which return at once.
class DesktopIconSource final : public IconSource
{
public:
    /// `applications` must outlive this and is asked from the threads that ask for icons.
    explicit DesktopIconSource(const ApplicationSource &applications,
                               IconThemeIndex::Folders folders = IconThemeIndex::standardFolders());

    /// The icon theme by the name of its folder; empty while the desktop's choice is unknown. Icons asked for
    /// from now on come from it.
    void setTheme(const QString &name);

    QImage icon(const QString &path, int edge) const override;
    QImage documentIcon(const QString &path, int edge) const override;
    QImage genericIcon(int edge) const override;
    void refresh() const override;

private:
    QImage namedIcon(const QString &name, int edge) const;

    const ApplicationSource &m_applications;
    mutable IconThemeIndex m_index;
    mutable AppImagePictures m_appImages;
};

} // namespace quillbay::platform
