#include "ui/ScreenTest.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>

namespace quillbay::testing {
namespace {

/// A tool's button near the right edge of a small window, with a field beside it that has the keyboard.
class ToolsTest : public ScreenTest
{
protected:
    void showTool(const char *popover)
    {
        show("Item { property bool open: tool.showing; property alias popover: tool.popover\n"
             "CustomTextField { placeholder: 'Behind'; width: 100; Component.onCompleted: requestFocus() }\n"
             "ToolbarTool { id: tool; x: 560; symbol: 'terminal'; label: 'Tool'; popover: '" +
                 QByteArray(popover) + "' } }",
             {600, 700});
        ASSERT_TRUE(waitFor([&] { return window->activeFocusItem() == find("Behind"); }));
    }
    void open()
    {
        click("Tool");
        ASSERT_TRUE(waitFor([&] { return panel() && panel()->property("opened").toBool(); }));
    }
    bool isOpen() const { return screen->property("open").toBool(); }
    void waitUntilGone()
    {
        ASSERT_TRUE(waitFor([&] { return !panel(); })) << "it is dropped once it has closed";
        EXPECT_TRUE(waitFor([&] { return window->activeFocusItem() == find("Behind"); }));
    }
    QObject *panel() const
    {
        const QList<QObject *> found = screen->findChildren<QObject *>();
        const auto isPopover = [](const QObject *o) {
            return o->inherits("QQuickPopup") && o->property("opened").isValid();
        };
        const auto popup = std::find_if(found.begin(), found.end(), isPopover);
        return popup == found.end() ? nullptr : *popup;
    }

    void keepNotes(const QStringList &texts)
    {
        QList<StickyNote> notes;
        for (const QString &text : texts)
            notes.append({QUuid::createUuid(), text, QStringLiteral("#30D158")});
        tools.storage().setStickyNotes(notes);
        tools.storage().saveNotes();
    }
    const QList<StickyNote> &notes() { return tools.storage().stickyNotes(); }
    const QList<CodeSnippet> &snippets() { return tools.storage().codeSnippets(); }
};

TEST_F(ToolsTest, EachToolOpensBelowItsButtonInsideTheWindowAndGivesTheKeyboardBack)
{
    const struct
    {
        const char *popover;
        const char *title;
        const char *first; ///< What has the keyboard.
    } popovers[] = {{"ColorPickerPopoverView.qml", "Color Picker", "Pick Color"},
                    {"MeasurePopoverView.qml", "Measure Ruler", "Open Screen Ruler"},
                    {"QRGeneratorPopoverView.qml", "QR Generator", "Type URL or text..."},
                    {"StickyNotesPopoverView.qml", "Sticky Notes", "Note"},
                    {"CodeSnippetsPopoverView.qml", "Code Snippets", "Search snippets..."}};
    showTool(popovers[0].popover);
    const QQuickItem *button = find("Tool");
    const QRectF anchor = button->mapRectToScene(QRectF(0, 0, button->width(), button->height()));
    for (const auto &[popover, title, first] : popovers) {
        SCOPED_TRACE(title);
        screen->setProperty("popover", QString::fromLatin1(popover));
        ASSERT_NO_FATAL_FAILURE(open());
        const QQuickItem *dialog = find(title);
        ASSERT_TRUE(dialog);
        const auto *frame = panel()->property("background").value<QQuickItem *>();
        const QRectF place = frame->mapRectToScene(QRectF(0, 0, frame->width(), frame->height()));
        EXPECT_TRUE(QRectF(0, 0, 600, 700).contains(place));
        EXPECT_EQ(place.top(), anchor.bottom() + 8);
        EXPECT_TRUE(place.left() < anchor.left() && place.right() >= anchor.center().x());
        EXPECT_TRUE(waitFor([&] { return window->activeFocusItem() == find(first); }));
        press(Qt::Key_Escape);
        EXPECT_FALSE(isOpen());
        ASSERT_NO_FATAL_FAILURE(waitUntilGone());

        ASSERT_NO_FATAL_FAILURE(open());
        QTest::mouseClick(window.get(), Qt::LeftButton, {}, {20, 600});
        EXPECT_FALSE(isOpen()) << "by a press outside";
        ASSERT_NO_FATAL_FAILURE(waitUntilGone());
    }
}

TEST_F(ToolsTest, TheRulersPopoverComesBackWithTheProgramAndKeepsTheKeyboard)
{
    show("AppGridView { hostWindow: Window.window; isBrowsing: false }");
    const auto hasKeyboard = [this](const char *name) { return window->activeFocusItem() == find(name); };
    ASSERT_TRUE(waitFor([&] { return hasKeyboard("Search Apps..."); }));
    Q_EMIT library.notifications.quillbayAppReopened();
    ASSERT_TRUE(waitFor([&] { return find("Open Screen Ruler") && hasKeyboard("Open Screen Ruler"); }));

    QWindow other;
    other.show();
    other.requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    window->requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    QCoreApplication::processEvents();
    EXPECT_TRUE(hasKeyboard("Open Screen Ruler"));
    press(Qt::Key_Escape);
    EXPECT_TRUE(waitFor([&] { return hasKeyboard("Search Apps..."); }));

    // One popover after the other by presses that the desktop has not made the window the active one for.
    click("QR Generator");
    ASSERT_TRUE(waitFor([&] { return hasKeyboard("Type URL or text..."); }));
    other.requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    click("Code Snippets");
    ASSERT_TRUE(waitFor([&] { return find("Search snippets...") && !find("Type URL or text..."); }));
    window->requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    QCoreApplication::processEvents();
    EXPECT_TRUE(hasKeyboard("Search snippets..."));
}

TEST_F(ToolsTest, EachOpeningBeginsAnewAndTheButtonCloses)
{
    keepNotes({QStringLiteral("a"), QStringLiteral("b")});
    showTool("StickyNotesPopoverView.qml");
    open();
    click("Next Note");
    EXPECT_TRUE(find("2 / 2"));
    press(Qt::Key_Escape);
    waitUntilGone();

    open();
    EXPECT_TRUE(find("1 / 2"));
    click("Tool");
    EXPECT_FALSE(isOpen());
    waitUntilGone();
}

TEST_F(ToolsTest, WhatIsTypedInANoteIsStoredKeyByKey)
{
    keepNotes({});
    showTool("StickyNotesPopoverView.qml");
    open();
    EXPECT_TRUE(find("No notes found. Create one!"));
    click("New Note");
    ASSERT_TRUE(await("Note"));
    for (const char *text : {"m", "mi", "mil", "milk"}) {
        press(Qt::Key(text[qstrlen(text) - 1] - 'a' + Qt::Key_A));
        ASSERT_EQ(notes().size(), 1);
        EXPECT_EQ(notes().first().text, QString::fromLatin1(text));
    }
    press(Qt::Key_Return);
    EXPECT_EQ(notes().first().text, QStringLiteral("milk\n"));
    EXPECT_EQ(decodedValue(decodeStickyNotes(
                               library.preferences
                                   .data(library.workspaces->key(QStringLiteral("quillbay_sticky_notes")))
                                   .value_or(QByteArray())))
                  ->first()
                  .text,
              QStringLiteral("milk\n"));

    press(Qt::Key_Tab);
    EXPECT_EQ(window->activeFocusItem(), find("Yellow")) << "Tab leaves the text";
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    press(Qt::Key_Space);
    EXPECT_EQ(notes().first().colorHex, QStringLiteral("#30D158"));
    click("Delete Note");
    EXPECT_TRUE(notes().isEmpty());
    EXPECT_TRUE(find("No notes found. Create one!"));
}

TEST_F(ToolsTest, LookingAtANoteChangesNothing)
{
    // What an editor of plain text has no way to show as it is.
    const QStringList texts{QStringLiteral("a\u00a0b\r\nc\u2028d"), QStringLiteral("e\rf"),
                            QStringLiteral("g")};
    keepNotes(texts);
    const QList<StickyNote> before = notes();
    showTool("StickyNotesPopoverView.qml");
    open();
    click("Next Note");
    click("Next Note");
    click("Previous Note");
    click("Blue");
    EXPECT_EQ(notes()[1].colorHex, QStringLiteral("#64D2FF"));
    for (int i = 0; i < texts.size(); ++i)
        EXPECT_EQ(notes()[i].text, texts[i]);
}

TEST_F(ToolsTest, AnOpenToolFollowsTheWorkspace)
{
    keepNotes({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    showTool("StickyNotesPopoverView.qml");
    open();
    click("Next Note");
    click("Next Note");
    library.workspaces->createWorkspace(QStringLiteral("Other"), {}, {});
    EXPECT_TRUE(await("3 / 2"));
    click("Note");
    type("lost");
    EXPECT_EQ(notes().size(), 2);
    EXPECT_FALSE(notes()[1].text.contains(QStringLiteral("lost")));
    library.workspaces->setActiveWorkspaceID(library.workspaces->workspaces().first().id);
    EXPECT_TRUE(await("3 / 3"));
    click("Note");
    press(Qt::Key_End, Qt::ControlModifier);
    type("d");
    EXPECT_EQ(notes()[2].text, QStringLiteral("cd"));
}

TEST_F(ToolsTest, SnippetsAreFoundCopiedOpenedAndDeletedByKeyboard)
{
    showTool("CodeSnippetsPopoverView.qml");
    open();
    type("html");
    ASSERT_TRUE(waitFor([&] { return !find("Swift Print"); }));
    press(Qt::Key_Down);
    EXPECT_EQ(window->activeFocusItem(), find("HTML Quick Start"));
    press(Qt::Key_Return);
    ASSERT_TRUE(waitFor([&] { return find(snippets()[1].code); }));
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), snippets()[1].code);
    EXPECT_TRUE(find("Snippet Copied!"));
    press(Qt::Key_Tab);
    EXPECT_EQ(window->activeFocusItem(), find("Delete HTML Quick Start"));
    press(Qt::Key_Return);
    ASSERT_EQ(snippets().size(), 1);
    EXPECT_EQ(snippets().first().title, QStringLiteral("Swift Print"));
    press(Qt::Key_Escape);
    waitUntilGone();
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith(QStringLiteral("<!DOCTYPE html>")));
}

TEST_F(ToolsTest, ASnippetIsMadeInTheForm)
{
    showTool("CodeSnippetsPopoverView.qml");
    open();
    click("New Snippet");
    ASSERT_TRUE(waitFor([&] { return panel()->property("formOpened").toDouble() == 1; }));
    const auto top = [this] { return find("Code Snippets")->mapToScene({0, 0}).y(); };
    const qreal usualTop = top();
    window->resize(600, 500);
    EXPECT_TRUE(waitFor([&] { return panel()->property("height").toDouble() < 460; })) << "a lower list";
    EXPECT_EQ(top(), usualTop) << "does not rise over its button";
    window->resize(600, 700);
    EXPECT_EQ(window->activeFocusItem(), find("Snippet Title (e.g. Fetch API)"));
    type("Greet");
    press(Qt::Key_Return);
    EXPECT_EQ(snippets().size(), 2) << "without code";
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    EXPECT_EQ(window->activeFocusItem(), find("Code"));
    type("a");
    press(Qt::Key_Return);
    type("b");
    click("Save Snippet");
    ASSERT_EQ(snippets().size(), 3);
    EXPECT_EQ(snippets().last().code, QStringLiteral("a\nb"));
    EXPECT_EQ(snippets().last().language, QStringLiteral("Swift"));
    ASSERT_TRUE(await("Greet"));
    EXPECT_TRUE(waitFor([&] { return !find("Save Snippet"); }));

    click("New Snippet");
    ASSERT_TRUE(await("Code"));
    EXPECT_EQ(find("Code")->property("text"), QString()) << "the form is empty again";
}

} // namespace
} // namespace quillbay::testing
