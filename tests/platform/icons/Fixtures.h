#pragma once

#include "support/TestHome.h"

#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QSize>
#include <QString>

#include <vector>

namespace quillbay::testing {

/// A PNG file's content: one colour all over.
QByteArray png(QSize size, const QColor &color);
inline QByteArray png(int edge, const QColor &color)
{
    return png(QSize(edge, edge), color);
}

/// A drawing that fills its square view box with one colour.
QByteArray svg(const QColor &color);

/// Puts `body` into an SVG document with a view box of 100 by 100.
QByteArray svgDocument(const QByteArray &body);

/// A folder of a theme, as its index describes it.
struct ThemeFolder
{
    QByteArray path;
    QByteArray keys; ///< Lines of its group.
};

/// An `index.theme` file's content.
QByteArray themeIndex(const std::vector<ThemeFolder> &folders, const QByteArray &inherits = {});

/// The colour in the middle of a picture.
QColor middle(const QImage &image);

} // namespace quillbay::testing
