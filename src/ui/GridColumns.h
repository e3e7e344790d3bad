#pragma once

#include <QObject>
#include <QtQmlIntegration>

namespace quillbay {

/// The columns of a grid of equal cells, in whole device-independent pixels.
struct GridColumns
{
    Q_GADGET
    Q_PROPERTY(int count MEMBER count)
    Q_PROPERTY(int columnWidth MEMBER columnWidth)
    Q_PROPERTY(int spacing MEMBER spacing)
    Q_PROPERTY(int leading MEMBER leading)
    QML_VALUE_TYPE(gridColumns)

public:
    int count = 1;
    int columnWidth = 0; ///< Width of one column, spacing not included.
    int spacing = 0;     ///< Between columns.
    int leading = 0;     ///< From the left edge of the area to the first column: the columns stand centred.

    friend bool operator==(const GridColumns &, const GridColumns &) = default;
};

/// Columns of the tile grid in an area of that width, its padding of 32 on both sides included. More than
/// 1000 wide, tiles stand wider apart. There is always one column, even where it does not fit.
GridColumns appColumns(qreal width);

/// The same for QML.
class GridLayouts : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;
    Q_INVOKABLE quillbay::GridColumns appColumns(qreal width) const { return quillbay::appColumns(width); }
};

} // namespace quillbay
