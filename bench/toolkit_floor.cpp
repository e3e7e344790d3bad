// What the toolkit alone costs: toolkit_floor CORPUS [--hidden]
//
// A window with a filter field and a grid of names and icons, written the plain way with nothing tuned. It
// parses nothing: the names are those of the corpus's files, without their suffix. SIGUSR1 hides the window
// or brings it back; with --hidden it waits for that.

#include <QDir>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <cstdio>

#include <unistd.h>

namespace {

std::array<int, 2> wake;

const char *const interface = R"(
import QtQuick

Window {
    id: root

    required property var names
    required property string icons
    readonly property string query: field.text.toLowerCase()

    width: 900
    height: 640
    color: "#fafafa"
    onVisibleChanged: if (visible) field.forceActiveFocus()

    TextInput {
        id: field
        x: 20
        y: 16
        width: parent.width - 40
        height: 28
        focus: true
        font.pixelSize: 18
        // No cursor: a blinking one would draw for ever.
        cursorDelegate: Item {}
    }
    Rectangle {
        x: 20
        y: 48
        width: parent.width - 40
        height: 1
        color: "#888"
    }
    GridView {
        x: 20
        y: 60
        width: parent.width - 40
        height: parent.height - 70
        cellWidth: 120
        cellHeight: 112
        clip: true
        model: root.query ? root.names.filter(name => name.includes(root.query)) : root.names
        delegate: Item {
            required property string modelData
            width: 116
            height: 108
            Image {
                x: 26
                width: 64
                height: 64
                sourceSize: Qt.size(64, 64)
                asynchronous: true
                source: root.icons + modelData + ".png"
            }
            Text {
                y: 68
                width: 116
                text: modelData
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                maximumLineCount: 2
                elide: Text.ElideRight
            }
        }
    }
})";

void toggle(QQuickWindow &window)
{
    char byte = 0;
    if (read(wake[0], &byte, 1) != 1)
        return;
    if (window.isVisible()) {
        window.hide();
    } else {
        window.show();
        window.requestActivate();
    }
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    if (argc < 2 || pipe(wake.data()) != 0) {
        std::fputs("usage: toolkit_floor CORPUS [--hidden]\n", stderr);
        return 2;
    }
    const QDir corpus(QString::fromLocal8Bit(argv[1]));
    QStringList names = QDir(corpus.filePath(QStringLiteral("applications")))
                            .entryList({QStringLiteral("*.desktop")}, QDir::Files);
    for (QString &name : names)
        name.chop(qsizetype(sizeof ".desktop") - 1);

    QQmlApplicationEngine engine;
    const QUrl icons =
        QUrl::fromLocalFile(corpus.absoluteFilePath(QStringLiteral("icons/hicolor/256x256/apps/")));
    engine.setInitialProperties({{QStringLiteral("names"), names},
                                 {QStringLiteral("icons"), icons.toString()},
                                 {QStringLiteral("visible"), argc == 2}});
    engine.loadData(interface);
    QQuickWindow *window =
        engine.rootObjects().isEmpty() ? nullptr : qobject_cast<QQuickWindow *>(engine.rootObjects().first());
    if (!window)
        return 1;

    std::signal(SIGUSR1, [](int) { [[maybe_unused]] const ssize_t written = write(wake[1], "x", 1); });
    const QSocketNotifier notifier(wake[0], QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, window, [window] { toggle(*window); });
    return application.exec();
}
