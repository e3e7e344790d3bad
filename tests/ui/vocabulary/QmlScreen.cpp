#include "ui/vocabulary/QmlScreen.h"

#include <QQmlComponent>
#include <QTest>

namespace quillbay::testing {

QmlScreen::QmlScreen(const QByteArray &qml)
{
    QQmlComponent component(&engine);
    component.setData("import QtQuick\nimport Quillbay.Vocabulary\n" + qml, {});
    item.reset(qobject_cast<QQuickItem *>(component.create()));
    if (!item)
        qFatal("%s", qPrintable(component.errorString()));
    window.resize(400, 300);
    item->setParentItem(window.contentItem());
    window.show();
    window.requestActivate();
    if (!QTest::qWaitForWindowActive(&window))
        qFatal("the window does not become active");
}

bool QmlScreen::waitFor(const std::function<bool()> &condition, int milliseconds)
{
    return QTest::qWaitFor(condition, milliseconds);
}

} // namespace quillbay::testing
