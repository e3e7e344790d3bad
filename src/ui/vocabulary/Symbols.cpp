#include "ui/vocabulary/Symbols.h"

#include <QFontDatabase>

#include <algorithm>
#include <array>
#include <cmath>

namespace quillbay {

namespace {

// A circle of the icon fonts fills 208 of the 256 units of its square.
constexpr double squareOverCircle = 256.0 / 208.0;

constexpr std::array files = {":/quillbay/fonts/Phosphor.ttf", ":/quillbay/fonts/Phosphor-Bold.ttf",
                              ":/quillbay/fonts/Phosphor-Light.ttf", ":/quillbay/fonts/Phosphor-Fill.ttf"};

} // namespace

QString Symbols::text(const QString &name)
{
    const auto symbol = SymbolTable::find(name);
    return symbol ? QString(QChar(symbol->codePoint)) : QString();
}

QFont Symbols::font(const QString &name, double size, int weight)
{
    if (!contains(name))
        return {};
    QFont font(family(SymbolTable::face(name, weight)));
    font.setPixelSize(std::max(1, int(std::lround(size * squareOverCircle))));
    font.setStyleStrategy(QFont::NoFontMerging);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

QString Symbols::family(SymbolFace face)
{
    static std::array<QString, files.size()> families;
    QString &family = families[size_t(face)];
    if (family.isEmpty()) {
        const int id = QFontDatabase::addApplicationFont(QLatin1String(files[size_t(face)]));
        const QStringList loaded = QFontDatabase::applicationFontFamilies(id);
        if (loaded.isEmpty())
            qFatal("The symbol font %s cannot be read", files[size_t(face)]);
        family = loaded.first();
    }
    return family;
}

} // namespace quillbay
