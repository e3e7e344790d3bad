#pragma once

#include <QImage>
#include <QObject>
#include <QVariant>
#include <QtQmlIntegration>

namespace quillbay {

/// A disc of all hues, red on the right and clockwise from there, that goes to white in its centre.
QImage colorWheel(int pixels);

/// `colorWheel` for a `PictureItem`: painted once for an edge and a device pixel ratio. Thread: main thread.
class ColorWheel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    Q_INVOKABLE QVariant picture(qreal edge, qreal ratio) { return colorWheel(qRound(edge * ratio)); }
};

} // namespace quillbay
