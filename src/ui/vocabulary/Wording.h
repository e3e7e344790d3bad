#pragma once

#include "platform/DesktopWording.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace quillbay {

/// The running desktop's words for what a text calls by its macOS name (`platform::desktopWording`). Thread:
/// main thread.
class Wording : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    Q_INVOKABLE static QString of(const QString &text) { return platform::desktopWording(text); }
};

} // namespace quillbay
