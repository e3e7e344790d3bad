#pragma once

#include "ui/vocabulary/SymbolTable.h"

#include <QFont>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace quillbay {

/// The symbol fonts, each read from the program's own data when its first symbol is drawn: a start that shows
/// no light symbol pays for no light font.
///
/// Thread: main thread.
class Symbols : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    Q_INVOKABLE static bool contains(const QString &name) { return SymbolTable::contains(name); }
    /// The character to draw in `font`; empty for a name without a symbol.
    Q_INVOKABLE static QString text(const QString &name);
    /// A font in which round symbols are `size` device-independent pixels across, as the glyphs leave a
    /// margin in their square. `weight` is a `Font` weight. A name without a symbol loads nothing.
    Q_INVOKABLE static QFont font(const QString &name, double size, int weight);
    /// The family of a face, loaded on the first call.
    static QString family(SymbolFace face);
};

} // namespace quillbay
