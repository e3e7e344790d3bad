#include "support/FakeDesktop.h"
#include "ui/vocabulary/SymbolTable.h"
#include "ui/vocabulary/Theme.h"

#include <QDir>
#include <QEventLoop>
#include <QGuiApplication>
#include <QQuickView>
#include <QTimer>

// Saves each page in light and dark as a picture, then ends. The scale factor of Qt sets the ratio.
int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    if (argc != 2)
        qFatal("usage: ui_vocabulary_gallery FOLDER");
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    quillbay::testing::FakeAppearance appearance;
    quillbay::testing::FakeWindowEffects effects;
    quillbay::Theme theme(appearance, effects);

    for (const QString &page : {QStringLiteral("Controls"), QStringLiteral("SymbolSheet")}) {
        for (const bool dark : {false, true}) {
            appearance.setDark(dark);
            QQuickView view;
            view.setInitialProperties({{QStringLiteral("names"), quillbay::SymbolTable::names()}});
            view.setSource(QUrl(QStringLiteral("qrc:/gallery/%1.qml").arg(page)));
            view.setColor(theme.windowBackground());
            view.show();
            // Long enough for the pressed look to settle.
            QEventLoop settling;
            QTimer::singleShot(400, &settling, &QEventLoop::quit);
            settling.exec();
            const QString file = folder.filePath(page + QLatin1String(dark ? "-dark.png" : "-light.png"));
            if (!view.grabWindow().save(file))
                qFatal("cannot write %s", qPrintable(file));
        }
    }
}
