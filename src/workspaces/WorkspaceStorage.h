#pragma once

#include "foundation/ObservableObject.h"
#include "foundation/PreferenceStore.h"
#include "workspaces/CodeSnippet.h"
#include "workspaces/StickyNote.h"
#include "workspaces/StickyNotesArchive.h"

#include <QList>
#include <QStringList>

#include <memory>

namespace quillbay {

class NotificationCenter;
class WorkspaceManager;

/// What the tools keep in the active workspace: notes, snippets, recent colours and recent measurements. It
/// knows no order and no limits, which are the tools' own: they set a list and call its save.
///
/// Kept in the preferences under the workspace's keys "quillbay_sticky_notes" and "quillbay_code_snippets"
/// (data, JSON), "quillbay_recent_colors" and "quillbay_recent_measurements" (string arrays). Each save
/// writes the whole list, at once. Another workspace, or a change of the active one, loads all four anew.
///
/// Nothing here fails visibly: notes or snippets that cannot be read are replaced by the first ones, and
/// colours or measurements by none.
///
/// Thread: main thread. One instance.
class WorkspaceStorage : public ObservableObject
{
    Q_OBJECT
    Q_PROPERTY(QStringList recentColors READ recentColors NOTIFY recentColorsChanged)
    Q_PROPERTY(QStringList recentMeasurements READ recentMeasurements NOTIFY recentMeasurementsChanged)

public:
    /// Loads everything. Both references must outlive this object. `archive` is one of the same preferences
    /// that may have read ahead; without it one is made.
    WorkspaceStorage(const PreferenceStore &preferences, const WorkspaceManager &workspaces,
                     NotificationCenter &notifications, std::unique_ptr<StickyNotesArchive> archive = {});

    const QList<StickyNote> &stickyNotes() const { return m_stickyNotes; }
    void setStickyNotes(const QList<StickyNote> &notes);
    const QList<CodeSnippet> &codeSnippets() const { return m_codeSnippets; }
    void setCodeSnippets(const QList<CodeSnippet> &snippets);
    const QStringList &recentColors() const { return m_recentColors; }
    void setRecentColors(const QStringList &colors);
    const QStringList &recentMeasurements() const { return m_recentMeasurements; }
    void setRecentMeasurements(const QStringList &measurements);

    /// Each load ends with a save, so that a workspace that had nothing stored has it from then on.
    void loadNotes();
    void saveNotes();
    void loadSnippets();
    void saveSnippets();
    void loadRecentColors();
    void saveRecentColors();
    void loadRecentMeasurements();
    void saveRecentMeasurements();

Q_SIGNALS:
    void stickyNotesChanged();
    void codeSnippetsChanged();
    void recentColorsChanged();
    void recentMeasurementsChanged();

private:
    void load();

    PreferenceStore m_preferences;
    const WorkspaceManager &m_workspaces;
    std::unique_ptr<StickyNotesArchive> m_archive;
    QList<StickyNote> m_stickyNotes;
    QList<CodeSnippet> m_codeSnippets;
    QStringList m_recentColors;
    QStringList m_recentMeasurements;
};

} // namespace quillbay
