// Another program's window, for the end-to-end tests: it takes drops and writes a line for each file of them.

#include <QDropEvent>
#include <QGuiApplication>
#include <QMimeData>
#include <QPainter>
#include <QRasterWindow>
#include <QUrl>

#include <cstdio>

namespace {

class DropWindow : public QRasterWindow
{
protected:
    bool event(QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::DragEnter:
        case QEvent::DragMove:
            static_cast<QDropEvent *>(event)->acceptProposedAction();
            return true;
        case QEvent::Drop: {
            auto *drop = static_cast<QDropEvent *>(event);
            drop->acceptProposedAction();
            for (const QUrl &url : drop->mimeData()->urls())
                std::printf("dropped %s\n", qPrintable(url.toLocalFile()));
            std::fflush(stdout);
            return true;
        }
        default:
            return QRasterWindow::event(event);
        }
    }
    void paintEvent(QPaintEvent *) override { QPainter(this).fillRect(0, 0, width(), height(), Qt::gray); }
};

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    DropWindow window;
    window.setTitle(QStringLiteral("Drop target"));
    window.setGeometry(20, 600, 200, 200);
    window.show();
    return app.exec();
}
