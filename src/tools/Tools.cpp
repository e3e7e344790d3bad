#include "tools/Tools.h"

namespace quillbay {

Tools::Tools(const PreferenceStore &preferences, const WorkspaceManager &workspaces,
             NotificationCenter &notifications, platform::ColorSampler &colorSampler,
             const platform::WindowEffects &windowEffects)
    : m_preferences(preferences)
    , m_workspaces(workspaces)
    , m_notifications(notifications)
    , m_colorSampler(colorSampler)
    , m_windowEffects(windowEffects)
{
}

Tools::~Tools() = default;

WorkspaceStorage &Tools::storage()
{
    if (!m_storage)
        m_storage = std::make_unique<WorkspaceStorage>(m_preferences, m_workspaces, m_notifications,
                                                       std::move(m_archive));
    return *m_storage;
}

void Tools::loadStorage()
{
    if (m_storage || m_archive)
        return;
    m_archive = std::make_unique<StickyNotesArchive>(m_preferences, m_workspaces);
    m_archive->readAhead([this] { storage(); });
}

ColorPicker &Tools::colorPicker()
{
    if (!m_colorPicker)
        m_colorPicker = std::make_unique<ColorPicker>(m_colorSampler, storage());
    return *m_colorPicker;
}

RulerManager &Tools::rulerManager()
{
    if (!m_rulerManager)
        m_rulerManager = std::make_unique<RulerManager>(storage(), m_windowEffects);
    return *m_rulerManager;
}

} // namespace quillbay
