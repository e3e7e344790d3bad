#include "platform/linux/icons/SafeSvg.h"

#include <QHash>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <array>
#include <vector>

namespace quillbay::platform {

namespace {

constexpr int deepest = 128;
constexpr int mostElements = 100'000;

struct Element
{
    QString id;
    QString reused; ///< Id that a "use" element repeats.
    std::vector<size_t> children;
};

/// What the document draws, as far as its cost goes. The first element is the root.
struct Drawing
{
    std::vector<Element> elements;
    QHash<QString, size_t> ids;
};

/// Walks the drawing as a renderer does, reused parts each time anew, and gives up when `budget` is spent.
bool isAffordable(const Drawing &drawing, size_t index, int depth, int &budget)
{
    if (depth > deepest || --budget < 0)
        return false;
    const Element &element = drawing.elements[index];
    if (const auto target = drawing.ids.constFind(element.reused); target != drawing.ids.cend()) {
        if (!isAffordable(drawing, *target, depth + 1, budget))
            return false;
    }
    return std::all_of(element.children.cbegin(), element.children.cend(),
                       [&](size_t child) { return isAffordable(drawing, child, depth + 1, budget); });
}

QString hrefOf(const QXmlStreamAttributes &attributes)
{
    for (const QXmlStreamAttribute &attribute : attributes) {
        if (attribute.name() == QLatin1String("href"))
            return attribute.value().toString();
    }
    return {};
}

bool isEmbeddedPicture(const QString &href)
{
    constexpr std::array beginnings = {QLatin1String("iVBORw0KGgo"), QLatin1String("/9j/")};
    if (!href.startsWith(QLatin1String("data:image/")))
        return false;
    const QLatin1String encoding(";base64,");
    const qsizetype start = href.indexOf(encoding);
    if (start < 0)
        return false;
    const QStringView content = QStringView(href).sliced(start + encoding.size()).trimmed();
    return std::any_of(beginnings.cbegin(), beginnings.cend(),
                       [content](QLatin1String beginning) { return content.startsWith(beginning); });
}

bool isLeftOut(const QXmlStreamReader &reader)
{
    const QStringView name = reader.name();
    if (name == QLatin1String("image"))
        return !isEmbeddedPicture(hrefOf(reader.attributes()));
    return name.startsWith(QLatin1String("animate")) || name == QLatin1String("set") ||
           name == QLatin1String("script") || name == QLatin1String("foreignObject");
}

void addElement(const QXmlStreamReader &reader, Drawing &drawing, std::vector<size_t> &open)
{
    const size_t index = drawing.elements.size();
    const QXmlStreamAttributes attributes = reader.attributes();
    Element element;
    element.id = attributes.value(QLatin1String("id")).toString();
    if (element.id.isEmpty())
        element.id = attributes.value(QLatin1String("xml:id")).toString();
    if (reader.name() == QLatin1String("use"))
        element.reused = hrefOf(attributes).trimmed().mid(1);
    if (!element.id.isEmpty())
        drawing.ids.insert(element.id, index);
    if (!open.empty())
        drawing.elements[open.back()].children.push_back(index);
    drawing.elements.push_back(std::move(element));
    open.push_back(index);
}

/// Copies all that may stay; false when the text is broken or beyond the limits.
bool copy(QXmlStreamReader &reader, QXmlStreamWriter &writer, Drawing &drawing)
{
    std::vector<size_t> open;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::StartElement) {
            if (isLeftOut(reader)) {
                reader.skipCurrentElement();
                continue;
            }
            if (open.empty() && reader.name() != QLatin1String("svg"))
                return false;
            addElement(reader, drawing, open);
            if (open.size() > deepest || drawing.elements.size() > mostElements)
                return false;
        } else if (token == QXmlStreamReader::EndElement) {
            open.pop_back();
        } else if (token != QXmlStreamReader::Characters) {
            continue;
        }
        writer.writeCurrentToken(reader);
    }
    return !reader.hasError() && !drawing.elements.empty();
}

} // namespace

QByteArray safeSvg(const QByteArray &svg)
{
    QXmlStreamReader reader(svg);
    QByteArray result;
    QXmlStreamWriter writer(&result);
    Drawing drawing;
    int budget = mostElements;
    if (!copy(reader, writer, drawing) || !isAffordable(drawing, 0, 0, budget))
        return {};
    return result;
}

} // namespace quillbay::platform
