#pragma once

#include "app/QuillbayViewModel.h"
#include "support/FakeDesktop.h"
#include "support/TestLibrary.h"
#include "tools/Tools.h"
#include "ui/Screens.h"
#include "ui/vocabulary/Theme.h"
#include "uninstaller/Uninstaller.h"

#include <QAccessible>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>

#include <functional>
#include <memory>

#include <gtest/gtest.h>

namespace quillbay::testing {

/// One screen of the program in a window, over a library of fakes with Ada and Cut (Office), Bix (Games) and
/// Dot (Other) in it. Set the library up, then `show`. Items are found by their accessible names, as a person
/// finds them.
class ScreenTest : public ::testing::Test
{
protected:
    ScreenTest();
    ~ScreenTest() override;

    /// What the uninstaller works with besides the fakes of the library. Before `show`.
    void useUninstaller(std::shared_ptr<const platform::ResidualRoots> roots,
                        std::shared_ptr<platform::PackageManager> packages);

    /// `qml` is one object, with Qt Quick and the program's modules imported, for instance
    /// "SidebarView { width: 240; height: 600 }". A mistake in it ends the test program.
    void show(const QByteArray &qml, QSize size = {1200, 800});

    /// The shown item with that accessible name; null where there is none.
    QQuickItem *find(const QString &name) const;
    QQuickItem *find(const char *name) const { return find(QString::fromUtf8(name)); }
    /// Waits for it; the test fails where it does not come.
    QQuickItem *await(const char *name);
    /// The names of all shown items of an accessible role, in tree order.
    QStringList shown(QAccessible::Role role) const;
    void click(const char *name, Qt::MouseButton button = Qt::LeftButton);
    void doubleClick(const char *name);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void type(const char *text);
    /// Turns the event loop until the condition holds; false if it does not within ten seconds.
    static bool waitFor(const std::function<bool()> &condition);

    QString folderId(const char *name) const;
    /// Names of the folder's members.
    QString members(const char *folder) const;

    TestLibrary library;
    FakeAppearance appearance;
    FakeWindowEffects effects;
    Theme theme{appearance, effects};
    std::unique_ptr<QuillbayViewModel> viewModel;
    AdminPrivileges admin{*library.fakes.elevation};
    std::unique_ptr<Uninstaller> uninstaller;
    Tools tools{library.preferences, *library.workspaces, library.notifications, *library.fakes.colorSampler,
                effects};
    std::unique_ptr<ScreenModels> models;
    std::unique_ptr<QQmlEngine> engine;
    std::unique_ptr<QQuickWindow> window;
    QQuickItem *screen = nullptr; ///< What `qml` made.
};

} // namespace quillbay::testing
