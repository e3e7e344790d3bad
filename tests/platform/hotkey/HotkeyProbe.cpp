// A window that tells what reaches it, for the tests of the global key: with `--hotkey` it registers
// Ctrl+Alt+N and comes forward by it. Each happening is a line on the standard output; a line "hide" on the
// input hides the window.

#include "platform/linux/hotkey/X11GlobalHotkey.h"

#include <QAbstractNativeEventFilter>
#include <QCommandLineParser>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QRasterWindow>
#include <QSocketNotifier>
#include <QTextStream>

#include <cstdio>
#include <iostream>
#include <string>

namespace {

constexpr QKeyCombination hotkey(Qt::ControlModifier | Qt::AltModifier, Qt::Key_N);

void tell(const QString &line)
{
    const QByteArray text = line.toUtf8();
    std::printf("%s\n", text.constData());
    std::fflush(stdout);
}

class ProbeWindow : public QRasterWindow
{
protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (!event->text().isEmpty() && event->text().at(0).isPrint())
            tell(QStringLiteral("typed ") + event->text());
        else if (event->key() == Qt::Key_N)
            tell(QStringLiteral("hotkey in the window"));
    }
    void focusInEvent(QFocusEvent *) override { tell(QStringLiteral("focused")); }
    void focusOutEvent(QFocusEvent *) override { tell(QStringLiteral("left")); }
    void mousePressEvent(QMouseEvent *) override { tell(QStringLiteral("clicked")); }
};

/// Tells every press of the key N as the X server sends it, repeats included.
class PressTeller : public QAbstractNativeEventFilter
{
    bool nativeEventFilter(const QByteArray &, void *message, qintptr *) override
    {
        const auto *event = static_cast<const xcb_generic_event_t *>(message);
        if ((event->response_type & 0x7f) == XCB_KEY_PRESS &&
            reinterpret_cast<const xcb_key_press_event_t *>(event)->detail == 57)
            tell(QStringLiteral("key event"));
        return false;
    }
};

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QCommandLineParser parser;
    const QCommandLineOption hotkeyOption(QStringLiteral("hotkey"));
    const QCommandLineOption shownOption(QStringLiteral("shown"));
    const QCommandLineOption deafOption(QStringLiteral("deaf"));
    const QCommandLineOption limitOption(QStringLiteral("hold-limit"), {}, QStringLiteral("ms"),
                                         QStringLiteral("400"));
    parser.addOptions({hotkeyOption, shownOption, deafOption, limitOption});
    parser.process(app);

    ProbeWindow window;
    window.resize(640, 480);
    quillbay::platform::X11GlobalHotkey key(std::chrono::milliseconds(parser.value(limitOption).toInt()));
    using quillbay::platform::GlobalHotkey;
    PressTeller teller;
    QObject::connect(&key, &GlobalHotkey::registered, [&](const QString &way, const QString &trigger) {
        app.installNativeEventFilter(&teller);
        tell(QStringLiteral("registered %1: %2").arg(way, trigger));
    });
    QObject::connect(&key, &GlobalHotkey::failed,
                     [](const QString &reason) { tell(QStringLiteral("failed ") + reason); });
    QObject::connect(&key, &GlobalHotkey::activated, [&] {
        tell(QStringLiteral("activated"));
        if (parser.isSet(deafOption))
            return;
        window.show();
        window.raise();
        window.requestActivate();
    });
    QObject::connect(&window, &QWindow::activeChanged, [&] {
        if (window.isActive())
            key.keyboardTaken();
    });
    QSocketNotifier input(fileno(stdin), QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, [&] {
        std::string line;
        if (!std::getline(std::cin, line))
            QCoreApplication::quit();
        else if (line == "hide")
            window.hide();
    });

    if (parser.isSet(shownOption)) {
        window.show();
        window.requestActivate();
    }
    if (parser.isSet(hotkeyOption))
        key.registerKey(hotkey);
    return app.exec();
}
