#pragma once

#include "tools/ColorPicker.h"
#include "tools/RulerManager.h"
#include "workspaces/WorkspaceStorage.h"

#include <memory>

namespace quillbay {

/// What the tools of the toolbar work with. None of it is needed before one of them opens, so nothing is made
/// before it is asked for: the window's first picture waits for no tool.
///
/// Thread: main thread. `main` makes the one instance; what it is given must outlive it.
class Tools
{
public:
    Tools(const PreferenceStore &preferences, const WorkspaceManager &workspaces,
          NotificationCenter &notifications, platform::ColorSampler &colorSampler,
          const platform::WindowEffects &windowEffects);
    ~Tools();
    Tools(const Tools &) = delete;
    Tools &operator=(const Tools &) = delete;

    /// Loaded by the first call.
    WorkspaceStorage &storage();
    /// Has it loaded soon, without holding up the main thread by the decoding.
    void loadStorage();
    ColorPicker &colorPicker();
    RulerManager &rulerManager();

    /// Makes nothing.
    bool isRulerShowing() const { return m_rulerManager && m_rulerManager->isRulerShowing(); }

private:
    PreferenceStore m_preferences;
    const WorkspaceManager &m_workspaces;
    NotificationCenter &m_notifications;
    platform::ColorSampler &m_colorSampler;
    const platform::WindowEffects &m_windowEffects;
    std::unique_ptr<StickyNotesArchive> m_archive; ///< While it reads ahead of the storage.
    std::unique_ptr<WorkspaceStorage> m_storage;
    std::unique_ptr<ColorPicker> m_colorPicker;
    std::unique_ptr<RulerManager> m_rulerManager;
};

} // namespace quillbay
