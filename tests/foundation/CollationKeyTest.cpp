#include "foundation/CollationKey.h"

#include <QCollator>
#include <QStringList>

#include <algorithm>
#include <numeric>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace quillbay {
namespace {

int sign(int value)
{
    return (value > 0) - (value < 0);
}

const QStringList Names =
    QStringLiteral("|a|A|b|B|aa|Zebra|zebra|\u00c4pfel|Apfel|\u00e4pfel|\u00d6l|Ol|Oz|chata|cz|citron|hrad|"
                   "lj|Ljubljana|Lz|\u00c5ngstrom|Angstrom|A\u030angstrom|co-op|coop|co op|7-Zip|10|9|"
                   "\u0416\u0443\u043a|\u0436\u0443\u043a|\u65e5\u672c|stra\u00dfe|STRASSE|strasse|_x|.x")
        .split(u'|');

TEST(CollationKeyTest, OrdersAsTheCollatorOfTheLocaleDoes)
{
    for (const char *name : {"en_US", "de_DE", "sv_SE", "cs_CZ", "hr_HR", "ja_JP", "sr_Latn_RS", "tr_TR"}) {
        const QLocale locale(QString::fromLatin1(name));
        QCollator collator(locale);
        collator.setCaseSensitivity(Qt::CaseInsensitive);
        const CollationKey::Maker key(locale);
        for (const QString &a : Names) {
            for (const QString &b : Names) {
                EXPECT_EQ(sign(key(a).compare(key(b))), sign(collator.compare(a, b)))
                    << name << ": " << a.toStdString() << " and " << b.toStdString();
            }
        }
    }
}

TEST(CollationKeyTest, LocalesDiffer)
{
    const CollationKey::Maker german(QLocale(QLocale::German));
    const CollationKey::Maker swedish(QLocale(QLocale::Swedish));
    EXPECT_LT(german(u"\u00c4pfel"), german(u"Zebra"));
    EXPECT_GT(swedish(u"\u00c4pfel"), swedish(u"Zebra"));
}

TEST(CollationKeyTest, TheCLocaleOrdersWordsLikeADictionaryToo)
{
    const CollationKey::Maker key(QLocale::c());
    EXPECT_LT(key(u"apple"), key(u"Zebra"));
    EXPECT_LT(key(u"\u00e4pfel"), key(u"zebra"));
}

TEST(CollationKeyTest, LongTextsAndSeveralThreads)
{
    const CollationKey::Maker key(QLocale(QLocale::English));
    const QString text = QString(5000, u'x') + u'a';
    const QByteArray expected = key(text);
    EXPECT_GT(expected.size(), 5000);
    EXPECT_FALSE(expected.contains('\0'));
    std::vector<QByteArray> keys(4);
    {
        std::vector<std::jthread> threads;
        for (QByteArray &each : keys) {
            threads.emplace_back([&] {
                for (int i = 0; i < 50; ++i)
                    each = key(text);
            });
        }
    }
    for (const QByteArray &each : keys)
        EXPECT_EQ(each, expected);
    EXPECT_TRUE(key(u"").isEmpty());
}

TEST(CollationKeyTest, SortedOrderIsThatOfAStableSort)
{
    std::vector<QByteArray> texts;
    for (const char *text :
         {"b", "", "abcdefgh2", "abcdefgh", "a", "abcdefgh1", "b", "\xff", "a", "abcdefgh2", "ab", ""})
        texts.emplace_back(text);
    const std::vector<QByteArrayView> keys(texts.begin(), texts.end());
    std::vector<size_t> expected(keys.size());
    std::iota(expected.begin(), expected.end(), size_t(0));
    std::stable_sort(expected.begin(), expected.end(),
                     [&](size_t a, size_t b) { return texts[a] < texts[b]; });
    EXPECT_EQ(CollationKey::sortedOrder(keys), expected);
    EXPECT_TRUE(CollationKey::sortedOrder({}).empty());
}

} // namespace
} // namespace quillbay
