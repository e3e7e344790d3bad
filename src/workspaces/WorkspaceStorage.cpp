#include "workspaces/WorkspaceStorage.h"

#include "foundation/NotificationCenter.h"
#include "workspaces/WorkspaceManager.h"

namespace quillbay {

namespace {

const QString snippetsKey = QStringLiteral("quillbay_code_snippets");
const QString colorsKey = QStringLiteral("quillbay_recent_colors");
const QString measurementsKey = QStringLiteral("quillbay_recent_measurements");

QList<StickyNote> firstNotes()
{
    return {{QUuid::createUuid(),
             QStringLiteral("Welcome to Sticky Notes! Click '+' above to add a new note."),
             QStringLiteral("#FFD60A")},
            {QUuid::createUuid(),
             QStringLiteral("Tasks for today:\n- Organize app grid\n- Pick a nice sidebar folder color"),
             QStringLiteral("#30D158")}};
}

QList<CodeSnippet> firstSnippets()
{
    return {{QUuid::createUuid(), QStringLiteral("Swift Print"), QStringLiteral("print(\"Hello, World!\")"),
             QStringLiteral("Swift")},
            {QUuid::createUuid(), QStringLiteral("HTML Quick Start"),
             QStringLiteral("<!DOCTYPE html>\n<html>\n<head>\n  <title>Quillbay</title>\n</head>\n<body>\n"
                            "</body>\n</html>"),
             QStringLiteral("HTML")}};
}

} // namespace

WorkspaceStorage::WorkspaceStorage(const PreferenceStore &preferences, const WorkspaceManager &workspaces,
                                   NotificationCenter &notifications,
                                   std::unique_ptr<StickyNotesArchive> archive)
    : m_preferences(preferences)
    , m_workspaces(workspaces)
    , m_archive(archive ? std::move(archive) : std::make_unique<StickyNotesArchive>(preferences, workspaces))
{
    load();
    connect(&notifications, &NotificationCenter::quillbayWorkspaceChanged, this, &WorkspaceStorage::load);
}

void WorkspaceStorage::load()
{
    loadNotes();
    loadSnippets();
    loadRecentColors();
    loadRecentMeasurements();
}

void WorkspaceStorage::setStickyNotes(const QList<StickyNote> &notes)
{
    publish(m_stickyNotes, notes, &WorkspaceStorage::stickyNotesChanged);
}

void WorkspaceStorage::setCodeSnippets(const QList<CodeSnippet> &snippets)
{
    publish(m_codeSnippets, snippets, &WorkspaceStorage::codeSnippetsChanged);
}

void WorkspaceStorage::setRecentColors(const QStringList &colors)
{
    publish(m_recentColors, colors, &WorkspaceStorage::recentColorsChanged);
}

void WorkspaceStorage::setRecentMeasurements(const QStringList &measurements)
{
    publish(m_recentMeasurements, measurements, &WorkspaceStorage::recentMeasurementsChanged);
}

void WorkspaceStorage::loadNotes()
{
    const std::optional<QList<StickyNote>> notes = m_archive->load();
    setStickyNotes(notes ? *notes : firstNotes());
    saveNotes();
}

void WorkspaceStorage::saveNotes()
{
    m_archive->save(m_stickyNotes);
}

void WorkspaceStorage::loadSnippets()
{
    const std::optional<QByteArray> stored = m_preferences.data(m_workspaces.key(snippetsKey));
    const auto decoded = stored ? decodeCodeSnippets(*stored) : Decoded<QList<CodeSnippet>>(DecodeError{});
    const QList<CodeSnippet> *snippets = decodedValue(decoded);
    setCodeSnippets(snippets ? *snippets : firstSnippets());
    saveSnippets();
}

void WorkspaceStorage::saveSnippets()
{
    m_preferences.setData(m_workspaces.key(snippetsKey), encodeCodeSnippets(m_codeSnippets));
}

void WorkspaceStorage::loadRecentColors()
{
    setRecentColors(m_preferences.stringArray(m_workspaces.key(colorsKey)).value_or(QStringList()));
    saveRecentColors();
}

void WorkspaceStorage::saveRecentColors()
{
    m_preferences.setStringArray(m_workspaces.key(colorsKey), m_recentColors);
}

void WorkspaceStorage::loadRecentMeasurements()
{
    setRecentMeasurements(
        m_preferences.stringArray(m_workspaces.key(measurementsKey)).value_or(QStringList()));
    saveRecentMeasurements();
}

void WorkspaceStorage::saveRecentMeasurements()
{
    m_preferences.setStringArray(m_workspaces.key(measurementsKey), m_recentMeasurements);
}

} // namespace quillbay
