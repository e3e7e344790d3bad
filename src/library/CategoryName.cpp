#include "library/CategoryName.h"

#include <QLocale>

namespace quillbay {

QString otherCategory()
{
    return QStringLiteral("Other");
}

QString categoryName(const QString &categoryType)
{
    if (categoryType.isNull())
        return otherCategory();
    const QString component = categoryType.mid(categoryType.lastIndexOf(QLatin1Char('.')) + 1);
    const QLocale locale;
    QString name;
    name.reserve(component.size());
    bool insideWord = false;
    for (qsizetype i = 0; i < component.size();) {
        const qsizetype length = component[i].isHighSurrogate() && i + 1 < component.size() ? 2 : 1;
        const QString character = component.mid(i, length);
        const char32_t code = character.toUcs4().value(0);
        name += insideWord ? locale.toLower(character) : locale.toUpper(character);
        insideWord = QChar::isLetterOrNumber(code);
        i += length;
    }
    return name;
}

} // namespace quillbay
