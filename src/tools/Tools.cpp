#include "tools/Tools.h"

namespace quillbay {

Tools::Tools(const PreferenceStore &preferences, const WorkspaceManager &workspaces,
             NotificationCenter &notifications)
    : m_preferences(preferences)
    , m_workspaces(workspaces)
    , m_notifications(notifications)
{
}

Tools::~Tools() = default;

WorkspaceStorage &Tools::storage()
{
    if (!m_storage)
        m_storage = std::make_unique<WorkspaceStorage>(m_preferences, m_workspaces, m_notifications);
    return *m_storage;
}

} // namespace quillbay
