#pragma once

#include <QObject>
#include <QtQmlIntegration>

namespace quillbay {

/// The columns of a grid of equal cells, in whole device-independent pixels.
struct GridColumns
{
    int count = 1;
    int columnWidth = 0; ///< Width of one column, spacing not included.
    int spacing = 0;     ///< Between columns.
    int leading = 0;     ///< From the left edge of the area to the first column: the columns stand centred.

    friend bool operator==(const GridColumns &, const GridColumns &) = default;
};

/// Columns of the tile grid in an area of that width, its padding of 32 on both sides included. More than
/// 1000 wide, tiles stand wider apart. There is always one column, even where it does not fit.
GridColumns appColumns(qreal width);

/// Columns of the card grid in an area of that width, its padding of 32 on both sides included. There is
/// always one column, even where it does not fit.
GridColumns cardColumns(qreal width);
/// As many columns of at least `minimum` as fit between the paddings, spread over the whole width; at least
/// one.
GridColumns adaptiveColumns(qreal width, qreal minimum, qreal spacing, qreal padding);

/// Columns for QML: give them the width of the area and bind to the rest.
class ColumnsOfWidth : public QObject
{
    Q_OBJECT
    Q_PROPERTY(qreal width READ width WRITE setWidth NOTIFY widthChanged)
    Q_PROPERTY(int count READ count NOTIFY changed)
    Q_PROPERTY(int columnWidth READ columnWidth NOTIFY changed)
    Q_PROPERTY(int spacing READ spacing NOTIFY changed)
    Q_PROPERTY(int leading READ leading NOTIFY changed)
    QML_ELEMENT
    QML_UNCREATABLE("One of the ways to lay out columns")

public:
    using QObject::QObject;

    qreal width() const { return m_width; }
    void setWidth(qreal width);
    int count() const { return m_columns.count; }
    int columnWidth() const { return m_columns.columnWidth; }
    int spacing() const { return m_columns.spacing; }
    int leading() const { return m_columns.leading; }

Q_SIGNALS:
    void widthChanged();
    void changed();

protected:
    void update();

private:
    virtual GridColumns columns(qreal width) const = 0;

    qreal m_width = 0;
    GridColumns m_columns;
};

/// `appColumns`.
class AppColumns : public quillbay::ColumnsOfWidth
{
    Q_OBJECT
    QML_ELEMENT

private:
    GridColumns columns(qreal width) const override { return appColumns(width); }
};

/// `cardColumns`.
class CardColumns : public quillbay::ColumnsOfWidth
{
    Q_OBJECT
    QML_ELEMENT

private:
    GridColumns columns(qreal width) const override { return cardColumns(width); }
};

/// `adaptiveColumns`.
class AdaptiveColumns : public quillbay::ColumnsOfWidth
{
    Q_OBJECT
    Q_PROPERTY(qreal minimum MEMBER m_minimum NOTIFY askedChanged)
    Q_PROPERTY(qreal gap MEMBER m_gap NOTIFY askedChanged)
    Q_PROPERTY(qreal padding MEMBER m_padding NOTIFY askedChanged)
    QML_ELEMENT

public:
    explicit AdaptiveColumns(QObject *parent = nullptr);

Q_SIGNALS:
    void askedChanged();

private:
    GridColumns columns(qreal width) const override
    {
        return adaptiveColumns(width, m_minimum, m_gap, m_padding);
    }

    qreal m_minimum = 100;
    qreal m_gap = 0;
    qreal m_padding = 0;
};

} // namespace quillbay
