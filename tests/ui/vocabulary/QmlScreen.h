#pragma once

#include "support/FakeDesktop.h"
#include "ui/vocabulary/Theme.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

#include <functional>
#include <memory>

namespace quillbay::testing {

/// A window with one item of QML text in it, on a desktop that the test sets.
class QmlScreen
{
public:
    /// `qml` is an object, without imports. A mistake in it ends the test program.
    explicit QmlScreen(const QByteArray &qml);

    /// Turns the event loop until `condition` holds; false if it does not within the bound.
    static bool waitFor(const std::function<bool()> &condition, int milliseconds = 5000);

    FakeAppearance appearance;
    FakeWindowEffects effects;
    Theme theme{appearance, effects};
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QQuickItem> item;
};

} // namespace quillbay::testing
