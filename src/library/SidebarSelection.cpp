#include "library/SidebarSelection.h"

namespace quillbay {

SidebarSelection::SidebarSelection(Case which)
    : m_case(which)
{
    Q_ASSERT(which != Case::folder && which != Case::category);
}

SidebarSelection SidebarSelection::ofFolder(const AppFolder &folder)
{
    SidebarSelection selection;
    selection.m_case = Case::folder;
    selection.m_payload = folder;
    return selection;
}

SidebarSelection SidebarSelection::ofCategory(const QString &name)
{
    SidebarSelection selection;
    selection.m_case = Case::category;
    selection.m_payload = name;
    return selection;
}

QString SidebarSelection::categoryName() const
{
    const QString *name = std::get_if<QString>(&m_payload);
    return name ? *name : QString();
}

QString SidebarSelection::title() const
{
    switch (m_case) {
    case Case::allApps:
        return QStringLiteral("All Apps");
    case Case::recents:
        return QStringLiteral("Recent Apps");
    case Case::favorites:
        return QStringLiteral("Favorites");
    case Case::folder:
        return folder()->name;
    case Case::newlyAdded:
        return QStringLiteral("Newly Added");
    case Case::category:
        return categoryName();
    case Case::hidden:
        return QStringLiteral("Hidden Apps");
    }
    Q_UNREACHABLE();
}

} // namespace quillbay
