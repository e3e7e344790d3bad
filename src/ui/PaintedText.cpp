#include "ui/PaintedText.h"

#include <QCache>
#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QHash>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace quillbay {

// Found by QCache through the look's namespace.
size_t qHash(const TextLook &look, size_t seed = 0)
{
    return qHashMulti(seed, look.text, look.color, look.pixelSize, look.weight, look.maximumLineCount,
                      look.isCentered, look.width, look.ratio);
}

namespace {

constexpr int keptBytes = 4 << 20;
/// For what letters have beyond their advance and their line.
constexpr int overhang = 3;

QFont fontOf(int pixelSize, int weight)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(pixelSize);
    font.setWeight(QFont::Weight(weight));
    return font;
}

int lineHeightOf(const QFontMetricsF &metrics)
{
    return int(std::ceil(metrics.height()));
}

struct Line
{
    QString text;
    qreal width;
};

/// Cuts the text into lines as wide as the room, the last one with an ellipsis where there is more.
QList<Line> linesOf(const TextLook &look, const QFont &font, const QFontMetricsF &metrics)
{
    QTextLayout layout(look.text.simplified(), font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QList<Line> lines;
    layout.beginLayout();
    while (lines.size() < look.maximumLineCount) {
        QTextLine line = layout.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(look.width);
        const bool isLast = lines.size() + 1 == look.maximumLineCount;
        const QString text =
            isLast ? metrics.elidedText(layout.text().mid(line.textStart()), Qt::ElideRight, look.width)
                   : layout.text().mid(line.textStart(), line.textLength()).trimmed();
        lines.append({text, metrics.horizontalAdvance(text)});
    }
    layout.endLayout();
    return lines;
}

PaintedText paint(const TextLook &look)
{
    const QFont font = fontOf(look.pixelSize, look.weight);
    const QFontMetricsF metrics(font);
    const QList<Line> lines = linesOf(look, font, metrics);
    qreal widest = 0;
    for (const Line &line : lines)
        widest = std::max(widest, line.width);
    if (widest <= 0)
        return {};

    const qreal left = look.isCentered ? (look.width - widest) / 2 : 0;
    const qreal lineHeight = lineHeightOf(metrics);
    const QPoint place(int(std::floor(left * look.ratio)) - overhang, -overhang);
    const QSizeF size(widest, lineHeight * double(lines.size()));
    PaintedText painted{QImage((size * look.ratio).toSize() + QSize(2 * overhang + 1, 2 * overhang + 1),
                               QImage::Format_ARGB32_Premultiplied),
                        place};
    painted.picture.fill(Qt::transparent);
    QPainter painter(&painted.picture);
    painter.translate(-place);
    painter.scale(look.ratio, look.ratio);
    painter.setFont(font);
    painter.setPen(QColor::fromRgba(look.color));
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const qreal x = look.isCentered ? (look.width - lines[i].width) / 2 : 0;
        // Letters begin on a pixel of the screen.
        painter.drawText(QPointF(std::round(x * look.ratio) / look.ratio,
                                 std::round(metrics.ascent()) + lineHeight * double(i)),
                         lines[i].text);
    }
    return painted;
}

} // namespace

int textLineHeight(int pixelSize, int weight)
{
    return lineHeightOf(QFontMetricsF(fontOf(pixelSize, weight)));
}

PaintedText paintText(const TextLook &look)
{
    static QCache<TextLook, PaintedText> cache(keptBytes);
    if (const PaintedText *kept = cache.object(look))
        return *kept;
    const PaintedText painted = paint(look);
    cache.insert(look, new PaintedText(painted), int(painted.picture.sizeInBytes()) + 1);
    return painted;
}

} // namespace quillbay
