#pragma once

#include "library/AppFolder.h"

#include <QString>

#include <variant>

namespace quillbay {

/// What the sidebar has selected. Equality is by case, for a folder by its `id`, for a category by its
/// string; the hash of a folder selection changes with the folder, so such a selection must not be a key of a
/// hashed table across folder edits.
class SidebarSelection
{
public:
    enum class Case : quint8 {
        allApps = 0,
        recents = 1,
        favorites = 2,
        folder = 3,
        newlyAdded = 4,
        category = 5,
        hidden = 6
    };

    /// A case without payload.
    SidebarSelection(Case which = Case::allApps);
    static SidebarSelection ofFolder(const AppFolder &folder);
    static SidebarSelection ofCategory(const QString &name);

    Case which() const { return m_case; }
    /// Null unless the case is `folder`.
    const AppFolder *folder() const { return std::get_if<AppFolder>(&m_payload); }
    /// Null unless the case is `category`.
    QString categoryName() const;
    /// The title shown for the selection.
    QString title() const;

    friend bool operator==(const SidebarSelection &a, const SidebarSelection &b)
    {
        return a.m_case == b.m_case && a.m_payload == b.m_payload;
    }
    friend size_t qHash(const SidebarSelection &selection, size_t seed = 0) noexcept
    {
        const AppFolder *folder = selection.folder();
        return qHashMulti(seed, quint8(selection.m_case), folder ? qHash(*folder) : 0,
                          selection.categoryName());
    }

private:
    Case m_case;
    std::variant<std::monostate, AppFolder, QString> m_payload;
};

} // namespace quillbay
