#include "workspaces/WorkspaceStorage.h"

#include "foundation/NotificationCenter.h"
#include "foundation/Uuid.h"
#include "workspaces/WorkspaceManager.h"

#include <QTemporaryDir>
#include <QTest>

#include <memory>

#include <gtest/gtest.h>

using namespace quillbay;

namespace {

const QString notesKey = QStringLiteral("quillbay_sticky_notes");
const QString snippetsKey = QStringLiteral("quillbay_code_snippets");
const QString colorsKey = QStringLiteral("quillbay_recent_colors");
const QString measurementsKey = QStringLiteral("quillbay_recent_measurements");
const QUuid someID(QStringLiteral("{0000000a-0000-4000-8000-00000000000a}"));
const QUuid otherID(QStringLiteral("{0000000b-0000-4000-8000-00000000000b}"));

class WorkspaceStorageTest : public ::testing::Test
{
protected:
    void start() { storage = std::make_unique<WorkspaceStorage>(preferences, workspaces, notifications); }
    QByteArray stored(const QString &base) const
    {
        return preferences.data(workspaces.key(base)).value_or(QByteArray("nothing"));
    }
    QList<StickyNote> storedNotes() const
    {
        const auto decoded = decodeStickyNotes(stored(notesKey));
        return decodedValue(decoded) ? *decodedValue(decoded) : QList<StickyNote>();
    }
    QList<CodeSnippet> storedSnippets() const
    {
        const auto decoded = decodeCodeSnippets(stored(snippetsKey));
        return decodedValue(decoded) ? *decodedValue(decoded) : QList<CodeSnippet>();
    }

    QTemporaryDir folder;
    PreferenceStore preferences{folder.filePath(QStringLiteral("preferences.sqlite"))};
    NotificationCenter notifications;
    WorkspaceManager workspaces{preferences, notifications};
    std::unique_ptr<WorkspaceStorage> storage;
};

} // namespace

TEST_F(WorkspaceStorageTest, AFreshWorkspaceGetsTheFirstNotesAndSnippetsAndKeepsThem)
{
    start();
    ASSERT_EQ(storage->stickyNotes().size(), 2);
    EXPECT_EQ(storage->stickyNotes()[0].text,
              QStringLiteral("Welcome to Sticky Notes! Click '+' above to add a new note."));
    EXPECT_EQ(storage->stickyNotes()[1].text.count(QLatin1Char('\n')), 2);
    ASSERT_EQ(storage->codeSnippets().size(), 2);
    EXPECT_EQ(storage->codeSnippets()[1].code.count(QLatin1Char('\n')), 7);
    EXPECT_EQ(storedNotes(), storage->stickyNotes());
    EXPECT_EQ(storedSnippets(), storage->codeSnippets());
    EXPECT_EQ(preferences.stringArray(workspaces.key(colorsKey)), QStringList());
    EXPECT_EQ(preferences.stringArray(workspaces.key(measurementsKey)), QStringList());

    const QList<StickyNote> before = storage->stickyNotes();
    start();
    EXPECT_EQ(storage->stickyNotes(), before) << "seeded once";
}

TEST_F(WorkspaceStorageTest, RecordsHaveTheirFieldsInOrderAndEachIsRequired)
{
    const StickyNote note{someID, QStringLiteral("a \"b\"\n\tü🙂"), QStringLiteral("#FF6482")};
    EXPECT_EQ(encodeStickyNote(note), "{\"id\":\"0000000A-0000-4000-8000-00000000000A\","
                                      "\"text\":\"a \\\"b\\\"\\n\\tü🙂\",\"colorHex\":\"#FF6482\"}");
    const QList<CodeSnippet> snippets{{someID, QStringLiteral("t"), QStringLiteral("c"), QString()}};
    EXPECT_EQ(encodeCodeSnippets(snippets), "[{\"id\":\"0000000A-0000-4000-8000-00000000000A\",\"title\":"
                                            "\"t\",\"code\":\"c\",\"language\":\"\"}]");
    const auto notes = decodeStickyNotes('[' + encodeStickyNote(note) + ']');
    ASSERT_TRUE(decodedValue(notes));
    EXPECT_EQ(*decodedValue(notes), QList<StickyNote>{note});
    const auto again = decodeCodeSnippets(encodeCodeSnippets(snippets));
    ASSERT_TRUE(decodedValue(again));
    EXPECT_EQ(*decodedValue(again), snippets);

    for (const char *key : {"id", "text", "colorHex"}) {
        QByteArray text = '[' + encodeStickyNote(note) + ']';
        EXPECT_FALSE(decodedValue(decodeStickyNotes(text.replace(QByteArray(key) + "\":", "x\":")))) << key;
    }
    for (const char *key : {"id", "title", "code", "language"}) {
        QByteArray text = encodeCodeSnippets(snippets);
        EXPECT_FALSE(decodedValue(decodeCodeSnippets(text.replace(QByteArray(key) + "\":", "x\":")))) << key;
    }
}

TEST_F(WorkspaceStorageTest, AnEmptiedListStaysEmptyAndOneThatCannotBeReadIsReplaced)
{
    preferences.setData(workspaces.key(notesKey), "[]");
    preferences.setData(workspaces.key(snippetsKey), "[{\"id\":4}]");
    preferences.setData(workspaces.key(colorsKey), "no array");
    start();
    EXPECT_TRUE(storage->stickyNotes().isEmpty());
    EXPECT_EQ(stored(notesKey), "[]");
    EXPECT_EQ(storage->codeSnippets().size(), 2);
    EXPECT_EQ(storedSnippets(), storage->codeSnippets()) << "over what could not be read";
    EXPECT_EQ(preferences.stringArray(workspaces.key(colorsKey)), QStringList());

    const QUuid first = storage->codeSnippets().first().id;
    preferences.setData(workspaces.key(snippetsKey), "cut sho");
    storage->loadSnippets();
    EXPECT_NE(storage->codeSnippets().first().id, first);
}

TEST_F(WorkspaceStorageTest, EachWorkspaceHasItsOwnAndTheActiveOneIsSaved)
{
    workspaces.createWorkspace(QStringLiteral("A"), {}, {});
    const Workspace a = workspaces.workspaces().last();
    start();
    storage->setStickyNotes({{someID, QStringLiteral("mine"), QStringLiteral("#FFD60A")}});
    storage->saveNotes();
    storage->setCodeSnippets({});
    storage->saveSnippets();
    storage->setRecentColors({QStringLiteral("#112233")});
    storage->saveRecentColors();
    storage->setRecentMeasurements({QStringLiteral("10 × 20")});
    storage->saveRecentMeasurements();

    workspaces.setActiveWorkspaceID(workspaces.workspaces().first().id);
    EXPECT_EQ(storage->stickyNotes().size(), 2);
    EXPECT_EQ(storage->codeSnippets().size(), 2);
    EXPECT_TRUE(storage->recentColors().isEmpty() && storage->recentMeasurements().isEmpty());
    EXPECT_EQ(storedNotes(), storage->stickyNotes());

    workspaces.setActiveWorkspaceID(a.id);
    EXPECT_EQ(storage->stickyNotes().value(0).text, QStringLiteral("mine"));
    EXPECT_TRUE(storage->codeSnippets().isEmpty());
    EXPECT_EQ(storage->recentColors(), QStringList(QStringLiteral("#112233")));
    EXPECT_EQ(storage->recentMeasurements(), QStringList(QStringLiteral("10 × 20")));

    workspaces.updateWorkspace(a, QStringLiteral("B"), {}, {});
    EXPECT_EQ(storage->stickyNotes().value(0).text, QStringLiteral("mine"));
}

TEST_F(WorkspaceStorageTest, WhatIsWrittenIsAlwaysTheListAsItIs)
{
    preferences.setData(workspaces.key(notesKey), "[]");
    start();
    const auto note = [](const QUuid &id, const char *text, const char *color) {
        return StickyNote{id, QString::fromUtf8(text), QString::fromLatin1(color)};
    };
    const QList<StickyNote> lists[] = {
        {note(someID, "a", "#1"), note(otherID, "b", "#1")},
        {note(someID, "ab", "#1"), note(otherID, "b", "#2")},
        {note(otherID, "b", "#2"), note(someID, "ab", "#1")},
        {note(otherID, "b", "#2")},
        {note(otherID, "b", "#2"), note(otherID, "twice", "#2")},
        {note(otherID, "b", "#2"), note(otherID, "b", "#2")},
        {},
        {note(someID, "", "")},
    };
    for (const QList<StickyNote> &list : lists) {
        storage->setStickyNotes(list);
        storage->saveNotes();
        EXPECT_EQ(storedNotes(), list);
    }
}

TEST_F(WorkspaceStorageTest, WhatWasReadAheadCountsUntilItIsWritten)
{
    const QUuid first = workspaces.activeWorkspaceID();
    workspaces.createWorkspace(QStringLiteral("A"), {}, {});
    const QUuid second = workspaces.activeWorkspaceID();
    const auto list = [](const char *text) {
        return QList<StickyNote>{{someID, QString::fromUtf8(text), QStringLiteral("#FFD60A")}};
    };
    const auto keep = [](const PreferenceStore &store, const QUuid &id, const QList<StickyNote> &notes) {
        PreferenceStore(store).setData(WorkspaceManager::key(notesKey, id),
                                       '[' + encodeStickyNote(notes.first()) + ']');
    };
    keep(preferences, first, list("first"));
    keep(preferences, second, list("second"));
    const auto readAhead = [this](bool *isDone) {
        auto archive = std::make_unique<StickyNotesArchive>(preferences, workspaces);
        archive->readAhead([isDone] { *isDone = true; });
        return archive;
    };

    bool isDone = false;
    auto archive = readAhead(&isDone);
    ASSERT_TRUE(QTest::qWaitFor([&] { return isDone; }));
    keep(PreferenceStore(preferences.path()), first, list("another program's"));
    storage = std::make_unique<WorkspaceStorage>(preferences, workspaces, notifications, std::move(archive));
    EXPECT_EQ(storage->stickyNotes(), list("second"));
    workspaces.setActiveWorkspaceID(first);
    EXPECT_EQ(storage->stickyNotes(), list("another program's"));

    isDone = false;
    storage = std::make_unique<WorkspaceStorage>(preferences, workspaces, notifications, readAhead(&isDone));
    storage->setStickyNotes(list("changed meanwhile"));
    storage->saveNotes();
    ASSERT_TRUE(QTest::qWaitFor([&] { return isDone; }));
    workspaces.setActiveWorkspaceID(second);
    workspaces.setActiveWorkspaceID(first);
    EXPECT_EQ(storage->stickyNotes(), list("changed meanwhile"));
}
