#include "ui/vocabulary/QmlScreen.h"
#include "ui/vocabulary/SymbolNames.h"
#include "ui/vocabulary/Symbols.h"

#include <QFile>
#include <QHash>
#include <QPainterPath>
#include <QRawFont>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace quillbay {
namespace {

using testing::QmlScreen;

// Glyph name to code point, as the font's maker publishes them.
QHash<QString, char16_t> published(const char *weight)
{
    QFile file(QStringLiteral(SYMBOL_FONT_FOLDER "/%1/style.css").arg(QLatin1String(weight)));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s is not there", qPrintable(file.fileName()));
    QHash<QString, char16_t> glyphs;
    static const QRegularExpression rule(
        QStringLiteral("\\.ph-([a-z0-9-]+):before\\s*\\{\\s*content:\\s*\"\\\\([0-9a-f]+)\""));
    auto matches = rule.globalMatch(QString::fromUtf8(file.readAll()));
    while (matches.hasNext()) {
        const auto match = matches.next();
        glyphs.insert(match.captured(1), char16_t(match.captured(2).toUInt(nullptr, 16)));
    }
    return glyphs;
}

TEST(SymbolTable, hasAGlyphForEveryNameTheProgramShows)
{
    for (const QString &name : testing::shownSymbols()) {
        for (const int weight : {QFont::Light, QFont::Normal, QFont::Medium, QFont::Bold}) {
            const QString text = Symbols::text(name);
            ASSERT_EQ(text.size(), 1) << qPrintable(name);
            const QRawFont font = QRawFont::fromFont(Symbols::font(name, 16, weight));
            EXPECT_TRUE(font.familyName().startsWith(QLatin1String("Phosphor")));
            EXPECT_TRUE(font.supportsCharacter(text[0])) << qPrintable(name);
            EXPECT_FALSE(font.pathForGlyph(font.glyphIndexesForString(text).value(0)).isEmpty())
                << qPrintable(name);
        }
    }
}

TEST(SymbolTable, pointsAtTheGlyphItNames)
{
    for (const char *weight : {"regular", "bold", "light", "fill"}) {
        const auto glyphs = published(weight);
        for (const QString &name : SymbolTable::names()) {
            const auto symbol = SymbolTable::find(name);
            ASSERT_TRUE(symbol) << qPrintable(name);
            EXPECT_EQ(glyphs.value(QLatin1String(symbol->glyph)), symbol->codePoint) << qPrintable(name);
        }
    }
}

TEST(SymbolTable, knowsNoOtherNames)
{
    for (const char *name : {"", "folder.", "Folder", "folder.fill.fill", "zzz", "square.fill"})
        EXPECT_FALSE(SymbolTable::contains(QString::fromLatin1(name))) << name;
    EXPECT_TRUE(Symbols::text(QStringLiteral("zzz")).isEmpty());
}

TEST(SymbolTable, takesTheFontFromFormAndWeight)
{
    EXPECT_EQ(SymbolTable::face(u"plus.circle", QFont::Light), SymbolFace::Light);
    EXPECT_EQ(SymbolTable::face(u"plus.circle", QFont::Medium), SymbolFace::Regular);
    EXPECT_EQ(SymbolTable::face(u"plus.circle", QFont::DemiBold), SymbolFace::Bold);
    EXPECT_EQ(SymbolTable::face(u"plus.circle.fill", QFont::Light), SymbolFace::Fill);
}

TEST(Symbol, drawsRoundSymbolsAsWideAsTheirSize)
{
    QmlScreen screen(R"(Symbol { name: "plus.circle.fill"; size: 40; color: "#ff0000"; padding: 10 })");
    screen.window.setColor(Qt::white);
    const QImage image = screen.window.grabWindow();
    QRect drawn;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).green() < 128)
                drawn |= QRect(x, y, 1, 1);
        }
    }
    const double ratio = image.devicePixelRatio();
    EXPECT_NEAR(drawn.width() / ratio, 40, 1);
    EXPECT_NEAR(drawn.height() / ratio, 40, 1);
    // In the middle of its square, or rows of symbol and text stand crooked.
    EXPECT_NEAR(drawn.center().x() / ratio, 10 + (screen.item->width() - 20) / 2, 1);
    EXPECT_NEAR(drawn.center().y() / ratio, 10 + (screen.item->height() - 20) / 2, 1);
}

} // namespace
} // namespace quillbay
