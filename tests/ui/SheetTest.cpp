#include "ui/ScreenTest.h"

namespace quillbay::testing {
namespace {

using SheetTest = ScreenTest;

TEST_F(SheetTest, KeepsTheKeyboardAndGivesItBack)
{
    show("Item { id: top; property int answers: 0; property bool open: sheet.opened\n"
         "CustomTextField { id: field; placeholder: 'Behind'; width: 100; Component.onCompleted: "
         "requestFocus() }\n"
         "function ask() { sheet.open() }\n"
         "Sheet { id: sheet; title: 'Question'; onAccepted: top.answers += 1\n"
         "  CustomTextField { placeholder: 'Inside'; focus: true } } }");
    ASSERT_TRUE(waitFor([&] { return window->activeFocusItem() == find("Behind"); }));
    QMetaObject::invokeMethod(screen, "ask");
    ASSERT_TRUE(waitFor([&] { return screen->property("open").toBool(); }));
    EXPECT_TRUE(find("Question"));
    press(Qt::Key_Tab);
    EXPECT_NE(window->activeFocusItem(), find("Behind"));
    press(Qt::Key_Return);
    EXPECT_EQ(screen->property("answers").toInt(), 1);
    press(Qt::Key_Escape);
    ASSERT_TRUE(waitFor([&] { return !find("Question"); }));
    EXPECT_TRUE(waitFor([&] { return window->activeFocusItem() == find("Behind"); }));
}

} // namespace
} // namespace quillbay::testing
