#include "ui/ColorWheel.h"
#include "ui/FolderColorEditor.h"
#include "ui/IconChoices.h"
#include "ui/ScreenTest.h"
#include "ui/vocabulary/SymbolTable.h"

#include <QTest>

namespace quillbay::testing {
namespace {

QString text(const ColorComponents &color)
{
    return QStringLiteral("%1 %2 %3").arg(byteOf(color.red)).arg(byteOf(color.green)).arg(byteOf(color.blue));
}

TEST(FolderColorTest, ReadsThreeAndSixDigitsAndTakesTheRestForGrey)
{
    for (const auto &[hex, components] : {std::pair("#1a2B3c", "26 43 60"),
                                          {" f80 ", "255 136 0"},
                                          {"#FF007AFF", "128 128 128"},
                                          {"", "128 128 128"},
                                          {"#12C0000", "128 128 128"},
                                          {"zzz", "0 0 0"}})
        EXPECT_EQ(text(folderColorFromHex(QString::fromLatin1(hex))), QLatin1String(components)) << hex;
    for (int byte = 0; byte < 256; ++byte) {
        const QString hex = QString::asprintf("#%02X%02X00", byte, 255 - byte);
        EXPECT_EQ(colorToHex(folderColorFromHex(hex)), hex);
    }
    EXPECT_EQ(colorToHex({300 / 255.0, -1 / 255.0, 0.5}), QStringLiteral("#12CFFFFFFFF7F"));
}

TEST(FolderColorTest, TheWheelGoesClockwiseFromRedAndHoldsAtItsEdge)
{
    struct Case
    {
        QPointF offset;
        double hue;
        double saturation;
        const char *hex;
    };
    for (const Case &c : {Case{{70, 0}, 0, 1, "#FF0000"},
                          {{0, 700}, 0.25, 1, "#7FFF00"},
                          {{-35, 0}, 0.5, 0.5, "#7FFFFF"},
                          {{0, -70}, 0.75, 1, "#7F00FF"},
                          {{0, 0}, 0, 0, "#FFFFFF"}}) {
        const WheelPlace place = wheelPlaceAt(c.offset, 70);
        EXPECT_DOUBLE_EQ(place.hue, c.hue) << c.hex;
        EXPECT_DOUBLE_EQ(place.saturation, c.saturation) << c.hex;
        EXPECT_EQ(colorToHex(colorAt(place)).toStdString(), c.hex);
        EXPECT_NEAR(wheelPlaceOf(colorAt(place)).hue, c.hue, 1e-9) << c.hex;
        EXPECT_NEAR(wheelPlaceOf(colorAt(place)).saturation, c.saturation, 1e-9) << c.hex;
    }
    // The picture shows at a place what dragging there gives.
    const QImage wheel = colorWheel(140);
    for (const QPoint offset : {QPoint(40, 10), QPoint(-20, 50), QPoint(5, -60)}) {
        const QColor painted = wheel.pixelColor(QPoint(70, 70) + offset);
        const ColorComponents color = colorAt(wheelPlaceAt(offset, 70));
        EXPECT_NEAR(painted.red(), byteOf(color.red), 6);
        EXPECT_NEAR(painted.green(), byteOf(color.green), 6);
        EXPECT_NEAR(painted.blue(), byteOf(color.blue), 6);
    }
    EXPECT_EQ(wheel.pixelColor(2, 2).alpha(), 0);
}

/// An editor that notes what it stores.
struct FolderColorEditorTest : ::testing::Test
{
    FolderColorEditorTest()
    {
        QObject::connect(&editor, &FolderColorEditor::chosen, [this](const QString &c) { stored.append(c); });
        editor.setFolderColor(QStringLiteral("#00FF00"));
    }
    void set(const char *field, const char *value) { editor.setProperty(field, QString::fromLatin1(value)); }
    QString fields() const
    {
        QStringList texts;
        for (const char *field : {"hexText", "rText", "gText", "bText", "aText"})
            texts.append(editor.property(field).toString());
        return texts.join(QLatin1Char(' '));
    }

    FolderColorEditor editor;
    QStringList stored;
};

TEST_F(FolderColorEditorTest, TakesAHexTextAsItStands)
{
    EXPECT_EQ(fields(), QStringLiteral("#00FF00 0 255 0 1.0"));
    set("aText", "0.3");
    set("hexText", "f00");
    editor.handleHexInput();
    EXPECT_EQ(fields(), QStringLiteral("#f00 255 0 0 0.3"));
    EXPECT_EQ(editor.current(), QColor(Qt::red));
    set("hexText", "#nonsense");
    editor.handleHexInput();
    EXPECT_EQ(fields(), QStringLiteral("#nonsense 128 128 128 0.3"));
    EXPECT_EQ(editor.saturation(), 0);
    EXPECT_EQ(stored, (QStringList{QStringLiteral("#f00"), QStringLiteral("#nonsense")}));
}

TEST_F(FolderColorEditorTest, TakesNumbersWithoutALimitAndWhatIsNoneAsNothing)
{
    set("rText", "300");
    set("gText", "x");
    set("bText", " 16 ");
    set("aText", "");
    editor.handleRGBAInput();
    EXPECT_EQ(fields(), QStringLiteral("#12C0010 300 x  16  "));
    set("rText", "0");
    set("aText", "0.5");
    editor.handleRGBAInput();
    EXPECT_EQ(stored, (QStringList{QStringLiteral("#12C0010"), QStringLiteral("#000010")}));
    EXPECT_NEAR(editor.hue(), 2 / 3.0, 1e-9);
}

TEST_F(FolderColorEditorTest, KeepsTheHueWhereThereIsNoColorAndGoesRound)
{
    editor.dragTo(-10, 0);
    editor.moveBy(0, -1);
    EXPECT_EQ(stored.last(), QStringLiteral("#FFFFFF"));
    editor.moveBy(-0.75, 0);
    EXPECT_DOUBLE_EQ(editor.hue(), 0.75);
    editor.moveBy(0, 2);
    EXPECT_EQ(stored.last(), QStringLiteral("#7F00FF"));
    EXPECT_EQ(fields(), QStringLiteral("#7F00FF 127 0 255 1.0"));
}

TEST(IconChoicesTest, EveryChoiceHasASymbol)
{
    for (const QStringList &icons : {IconChoices::folderIcons(), IconChoices::workspaceIcons()}) {
        EXPECT_EQ(icons.size(), 20);
        for (const QString &icon : icons)
            EXPECT_TRUE(SymbolTable::contains(icon)) << qPrintable(icon);
    }
    EXPECT_EQ(IconChoices::forms(true).size(), 43);
    EXPECT_EQ(IconChoices::label(QStringLiteral("doc.richtext.fill")), QStringLiteral("Doc richtext"));
}

class CustomizersTest : public ScreenTest
{
protected:
    bool isChecked(const char *name)
    {
        return QAccessible::queryAccessibleInterface(await(name))->state().checked;
    }
    QString stored(const char *field)
    {
        const AppFolder folder = library.folder(QStringLiteral("Work"));
        return qstrcmp(field, "icon") == 0 ? folder.icon : folder.color;
    }
    void showPopover(const QByteArray &type)
    {
        library.finder->createFolder(QStringLiteral("Work"), QStringLiteral("tag.fill"),
                                     QStringLiteral("#FF9500"));
        show("Item { id: top; function ask() { popover.open() }\n" + type +
             " { id: popover; parent: top; folderId: '" + folderId("Work").toUtf8() + "' } }");
        QMetaObject::invokeMethod(screen, "ask");
    }
    QQuickItem *focused() const { return window->activeFocusItem(); }
};

TEST_F(CustomizersTest, ACustomiserChangesItsPropertiesByPointerAndKeys)
{
    show("FolderCustomizerView { name: 'Old'; selectedIcon: 'star.fill'; selectedColor: '#34C759' }");
    QMetaObject::invokeMethod(screen, "focusName");
    ASSERT_TRUE(waitFor([&] { return focused() == find("Folder Name"); }));
    type("New");
    EXPECT_EQ(screen->property("name"), QStringLiteral("New"));
    EXPECT_TRUE(isChecked("Green"));
    click("Pink");
    EXPECT_EQ(screen->property("selectedColor"), QStringLiteral("#FF2D55"));
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), find("Pink"));
    press(Qt::Key_Right);
    press(Qt::Key_Space);
    EXPECT_EQ(screen->property("selectedColor"), QStringLiteral("#8E8E93"));
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), find("Star"));
    press(Qt::Key_Up);
    press(Qt::Key_Left);
    press(Qt::Key_Return);
    EXPECT_EQ(screen->property("selectedIcon"), QStringLiteral("terminal.fill"));
    EXPECT_TRUE(isChecked("Terminal"));
    EXPECT_FALSE(isChecked("Star"));
}

TEST_F(CustomizersTest, TheIconPopoverWritesEachChoice)
{
    showPopover("FolderIconPickerPopoverView");
    ASSERT_TRUE(await("House"));
    for (const QString &icon : shown(QAccessible::RadioButton))
        EXPECT_EQ(isChecked(qPrintable(icon)), icon == QLatin1String("Filled")) << qPrintable(icon);
    click("Heart");
    EXPECT_EQ(stored("icon"), QStringLiteral("heart.fill"));
    click("Outline");
    EXPECT_FALSE(isChecked("Heart"));
    click("Heart");
    EXPECT_EQ(stored("icon"), QStringLiteral("heart"));
    EXPECT_TRUE(isChecked("Heart"));
    // What is out of sight comes into it with the keyboard.
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), find("Heart"));
    for (int column = 0; column < 10; ++column)
        press(Qt::Key_Right);
    EXPECT_EQ(focused(), find("Cube"));
    EXPECT_LT(focused()->mapToScene({}).x(), find("Select Folder Icon")->mapToScene({}).x() + 336);
}

TEST_F(CustomizersTest, TheColorPopoverWritesEachChoice)
{
    showPopover("FolderColorPickerPopoverView");
    EXPECT_TRUE(isChecked("Orange"));
    click("Purple");
    EXPECT_EQ(stored("color"), QStringLiteral("#AF52DE"));
    EXPECT_EQ(await("Hex value")->property("text"), QStringLiteral("#AF52DE"));
    click("Color wheel");
    EXPECT_EQ(stored("color"), QStringLiteral("#FFFFFF"));
    await("Color wheel")->forceActiveFocus();
    for (int i = 0; i < 20; ++i)
        press(Qt::Key_Up);
    EXPECT_EQ(stored("color"), QStringLiteral("#FF0000"));
    press(Qt::Key_Left);
    EXPECT_EQ(stored("color"), QStringLiteral("#FF0015"));

    const auto enter = [this](const char *field, const char *text) {
        click(field);
        press(Qt::Key_A, Qt::ControlModifier);
        type(text);
        press(Qt::Key_Return);
    };
    enter("Hex value", "0a0");
    EXPECT_EQ(stored("color"), QStringLiteral("#0a0"));
    enter("Blue", "17");
    EXPECT_EQ(stored("color"), QStringLiteral("#00AA11"));
}

} // namespace
} // namespace quillbay::testing
