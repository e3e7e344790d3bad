#include "ui/ScreenTest.h"

#include "foundation/Uuid.h"
#include "library/AppIconLoader.h"

#include <QAccessible>
#include <QDeadlineTimer>
#include <QQmlComponent>
#include <QTest>

#include <private/qquickwindow_p.h>

namespace quillbay::testing {

namespace {

bool isShown(QAccessibleInterface &node)
{
    const auto *item = qobject_cast<QQuickItem *>(node.object());
    return !item || item->isVisible();
}

void walk(QAccessibleInterface *node, const std::function<bool(QAccessibleInterface &)> &visit, bool &isDone)
{
    if (!node || isDone || !isShown(*node))
        return;
    isDone = visit(*node);
    for (int i = 0; i < node->childCount() && !isDone; ++i)
        walk(node->child(i), visit, isDone);
}

QPoint middle(const QQuickItem &item)
{
    return item.mapToScene(QPointF(item.width() / 2, item.height() / 2)).toPoint();
}

} // namespace

ScreenTest::ScreenTest()
{
    EXPECT_TRUE(library.install({QStringLiteral("Ada:Office"), QStringLiteral("Bix:Games"),
                                 QStringLiteral("Cut:Office"), QStringLiteral("Dot")}));
    AppIconLoader::setSource(library.fakes.icons);
    QSignalSpy scanned(library.finder.get(), &AppFinder::scanFinished);
    viewModel = std::make_unique<QuillbayViewModel>(*library.finder, *library.fakes.launcher,
                                                    *library.fakes.biometrics, library.preferences);
    EXPECT_TRUE(scanned.wait());
    useUninstaller(nullptr, nullptr);
    engine = std::make_unique<QQmlEngine>();
    QAccessible::setActive(true);
}

ScreenTest::~ScreenTest()
{
    window.reset();
    engine.reset();
    AppIconLoader::shutDown();
}

void ScreenTest::useUninstaller(std::shared_ptr<const platform::ResidualRoots> roots,
                                std::shared_ptr<platform::PackageManager> packages)
{
    const FakePlatform &fakes = library.fakes;
    models.reset();
    uninstaller =
        std::make_unique<Uninstaller>(UninstallerServices{std::move(roots),
                                                          std::move(packages),
                                                          {},
                                                          *fakes.fileRemoval,
                                                          *fakes.trash,
                                                          admin,
                                                          *fakes.fullDiskAccess,
                                                          library.home.filePath(QStringLiteral("receipts"))});
    models = std::make_unique<ScreenModels>(*viewModel, *library.workspaces, library.notifications,
                                            *uninstaller, tools);
}

void ScreenTest::show(const QByteArray &qml, QSize size)
{
    QQmlComponent component(engine.get());
    component.setData("import QtQuick\nimport Quillbay.Ui\nimport Quillbay.Vocabulary\n" + qml, {});
    screen = qobject_cast<QQuickItem *>(component.create());
    if (!screen)
        qFatal("%s", qPrintable(component.errorString()));
    QQmlComponent frame(engine.get());
    frame.setData("import QtQuick\nWindow {}", {});
    window.reset(qobject_cast<QQuickWindow *>(frame.create()));
    window->resize(size);
    screen->setParent(window.get());
    screen->setParentItem(window->contentItem());
    screen->setSize(size);
    window->show();
    window->requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
}

QQuickItem *ScreenTest::find(const QString &name) const
{
    QQuickItem *found = nullptr;
    bool isDone = false;
    walk(
        QAccessible::queryAccessibleInterface(window.get()),
        [&](QAccessibleInterface &node) {
            if (node.text(QAccessible::Name) == name)
                found = qobject_cast<QQuickItem *>(node.object());
            return found != nullptr;
        },
        isDone);
    return found;
}

QQuickItem *ScreenTest::await(const char *name)
{
    EXPECT_TRUE(waitFor([&] { return find(name) != nullptr; })) << "no " << name;
    return find(name);
}

QStringList ScreenTest::shown(QAccessible::Role role) const
{
    QStringList names;
    bool isDone = false;
    walk(
        QAccessible::queryAccessibleInterface(window.get()),
        [&](QAccessibleInterface &node) {
            if (node.role() == role)
                names.append(node.text(QAccessible::Name));
            return false;
        },
        isDone);
    return names;
}

void ScreenTest::click(const char *name, Qt::MouseButton button)
{
    const QQuickItem *item = await(name);
    // What is laid out for the next frame is where it will be.
    QQuickWindowPrivate::get(window.get())->polishItems();
    if (item)
        QTest::mouseClick(window.get(), button, {}, middle(*item));
}

void ScreenTest::doubleClick(const char *name)
{
    if (const QQuickItem *item = await(name)) {
        const QPoint place = middle(*item);
        QTest::mouseClick(window.get(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(window.get(), Qt::LeftButton, {}, place);
    }
}

void ScreenTest::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(window.get(), key, modifiers);
}

void ScreenTest::type(const char *text)
{
    for (; *text; ++text)
        QTest::keyClick(window.get(), *text);
}

bool ScreenTest::waitFor(const std::function<bool()> &condition)
{
    // Without a display's pace an endless animation never leaves the queue empty, and QTest::qWaitFor would
    // look again only when all its time is over.
    for (const QDeadlineTimer end(10000); !condition(); QTest::qWait(10)) {
        if (end.hasExpired())
            return false;
    }
    return true;
}

QString ScreenTest::folderId(const char *name) const
{
    return uuidString(library.folder(QString::fromUtf8(name)).id);
}

QString ScreenTest::members(const char *folder) const
{
    return names(library.finder->getAppsInFolder(library.folder(QString::fromUtf8(folder))));
}

} // namespace quillbay::testing
