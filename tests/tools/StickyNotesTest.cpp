#include "tools/StickyNotes.h"

#include "tools/ToolFixture.h"

#include <QSignalSpy>

namespace quillbay::testing {
namespace {

class StickyNotesTest : public ToolFixture
{
protected:
    StickyNotesTest() { notes.setStorage(&storage); }

    void keep(std::initializer_list<const char *> texts)
    {
        QList<StickyNote> list;
        for (const char *text : texts)
            list.append({QUuid::createUuid(), QString::fromUtf8(text), QStringLiteral("#30D158")});
        storage.setStickyNotes(list);
        storage.saveNotes();
    }
    void showAt(int index)
    {
        while (notes.activeIndex() > index)
            notes.showPrevious();
        while (notes.activeIndex() < index)
            notes.showNext();
    }
    QString storedTexts()
    {
        QStringList texts;
        const QList<StickyNote> kept = stored().stickyNotes();
        for (const StickyNote &note : kept)
            texts.append(note.text);
        return texts.join(QLatin1Char('|'));
    }

    StickyNotes notes;
};

TEST_F(StickyNotesTest, ANewNoteIsYellowAtTheEndAndOnShow)
{
    showAt(1);
    notes.setColorHex(QStringLiteral("#BF5AF2"));
    notes.add();
    EXPECT_EQ(notes.activeIndex(), 2);
    EXPECT_EQ(notes.colorHex(), QStringLiteral("#FFD60A"));
    EXPECT_TRUE(notes.text().isEmpty());
    ASSERT_EQ(stored().stickyNotes().size(), 3);
    EXPECT_EQ(stored().stickyNotes()[1].colorHex, QStringLiteral("#BF5AF2"));
    EXPECT_NE(stored().stickyNotes()[2].id, stored().stickyNotes()[1].id);

    keep({});
    notes.add();
    EXPECT_EQ(notes.activeIndex(), 0);
    EXPECT_TRUE(notes.hasActive());
}

TEST_F(StickyNotesTest, RemovalShowsTheNextOneAndAtTheEndThePreviousOne)
{
    keep({"a", "b", "c"});
    showAt(1);
    notes.removeActive();
    EXPECT_EQ(notes.text(), QStringLiteral("c"));
    EXPECT_EQ(notes.activeIndex(), 1);
    notes.removeActive();
    EXPECT_EQ(notes.text(), QStringLiteral("a"));
    EXPECT_EQ(storedTexts(), QStringLiteral("a"));
    notes.removeActive();
    EXPECT_EQ(notes.activeIndex(), 0);
    EXPECT_FALSE(notes.hasActive());
    notes.removeActive();
    EXPECT_EQ(storedTexts(), QString());
}

TEST_F(StickyNotesTest, PagingStopsAtTheEnds)
{
    keep({"a", "b"});
    notes.showPrevious();
    EXPECT_EQ(notes.text(), QStringLiteral("a"));
    notes.showNext();
    notes.showNext();
    EXPECT_EQ(notes.activeIndex(), 1);
    EXPECT_EQ(notes.text(), QStringLiteral("b"));
    keep({});
    showAt(0);
    notes.showNext();
    EXPECT_EQ(notes.activeIndex(), 0);
}

TEST_F(StickyNotesTest, EachChangeOfTheTextIsStoredAtOnceInItsNoteAlone)
{
    keep({"a", "b"});
    showAt(1);
    QSignalSpy changes(&notes, &StickyNotes::textChanged);
    notes.setText(QStringLiteral("b\nmore"));
    EXPECT_EQ(storedTexts(), QStringLiteral("a|b\nmore"));
    EXPECT_EQ(notes.text(), QStringLiteral("b\nmore"));
    EXPECT_EQ(changes.count(), 1);
    notes.setText(QStringLiteral("b\nmore"));
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(StickyNotesTest, AnotherWorkspaceLeavesTheIndexAndWhatIsBeyondItsNotesCannotBeChanged)
{
    keep({"a", "b", "c", "d"});
    showAt(3);
    QSignalSpy changes(&notes, &StickyNotes::textChanged);
    switchAway();
    EXPECT_GE(changes.count(), 1);
    EXPECT_EQ(notes.activeIndex(), 3);
    EXPECT_EQ(notes.count(), 2);
    EXPECT_FALSE(notes.hasActive());
    EXPECT_TRUE(notes.text().isEmpty() && notes.colorHex().isEmpty());
    const QList<StickyNote> before = storage.stickyNotes();
    notes.setText(QStringLiteral("lost"));
    notes.setColorHex(QStringLiteral("#64D2FF"));
    notes.removeActive();
    EXPECT_EQ(storage.stickyNotes(), before);
    notes.showNext();
    EXPECT_EQ(notes.activeIndex(), 1);

    switchBack();
    EXPECT_EQ(notes.text(), QStringLiteral("b"));
    EXPECT_EQ(storedTexts(), QStringLiteral("a|b|c|d"));
}

} // namespace
} // namespace quillbay::testing
