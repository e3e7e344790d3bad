#include "app/AppListModel.h"

#include "app/ListSteps.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QSignalSpy>

#include <algorithm>

#include <gtest/gtest.h>

using namespace quillbay;

namespace {

/// Each letter an application.
QList<AppItem> list(const QString &letters)
{
    QList<AppItem> items;
    for (const QChar letter : letters)
        items.append(AppItem{letter, QLatin1Char('/') + letter, QStringLiteral("Other"), {}, {}});
    return items;
}

QString letters(const QList<AppItem> &items)
{
    QString text;
    for (const AppItem &item : items)
        text += item.name;
    return text;
}

/// What the model tells its views, as text: "-2x3" for three rows removed from row 2 on, "+2x3", "~2".
class Steps : public QObject
{
public:
    explicit Steps(const AppListModel &model)
    {
        connect(&model, &AppListModel::rowsRemoved, this, [this](const QModelIndex &, int first, int last) {
            text += QStringLiteral("-%1x%2 ").arg(first).arg(last - first + 1);
        });
        connect(&model, &AppListModel::rowsInserted, this, [this](const QModelIndex &, int first, int last) {
            text += QStringLiteral("+%1x%2 ").arg(first).arg(last - first + 1);
        });
        connect(&model, &AppListModel::dataChanged, this,
                [this](const QModelIndex &first) { text += QStringLiteral("~%1 ").arg(first.row()); });
        connect(&model, &AppListModel::rowsMoved, this,
                [this](const QModelIndex &, int first, int last, const QModelIndex &, int target) {
                    text += QStringLiteral("%1x%2>%3 ").arg(first).arg(last - first + 1).arg(target);
                });
        connect(&model, &AppListModel::modelReset, this, [this] { text += QStringLiteral("reset "); });
    }
    QString text;
};

QString stepsBetween(const char16_t *from, const char16_t *to)
{
    AppListModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.setItems(list(QString::fromUtf16(from)));
    const Steps steps(model);
    model.setItems(list(QString::fromUtf16(to)));
    EXPECT_EQ(letters(model.items()), QString::fromUtf16(to));
    return steps.text.trimmed();
}

} // namespace

TEST(AppListModel, ChangesByTheSmallestStep)
{
    EXPECT_EQ(stepsBetween(u"", u"abc"), QStringLiteral("+0x3"));
    EXPECT_EQ(stepsBetween(u"abc", u""), QStringLiteral("-0x3"));
    EXPECT_EQ(stepsBetween(u"abc", u"abc"), QString());
    EXPECT_EQ(stepsBetween(u"abcdef", u"aef"), QStringLiteral("-1x3"));
    EXPECT_EQ(stepsBetween(u"aef", u"abcdefg"), QStringLiteral("+1x3 +6x1"));
    EXPECT_EQ(stepsBetween(u"abcd", u"axcy"), QStringLiteral("-1x1 -2x1 +1x1 +3x1"));
    EXPECT_EQ(stepsBetween(u"abcde", u"acdbe"), QStringLiteral("1x1>4"));
    EXPECT_EQ(stepsBetween(u"abcde", u"dabce"), QStringLiteral("3x1>0"));
    EXPECT_EQ(stepsBetween(u"gabcd", u"bcadx"), QStringLiteral("-0x1 0x1>3 +4x1"));
}

TEST(AppListModel, ReplacesTheMiddleWhereStepsWouldBeManyOrOrderChanges)
{
    EXPECT_EQ(stepsBetween(u"xabcy", u"xcbay"), QStringLiteral("-1x3 +1x3"));
    EXPECT_EQ(stepsBetween(u"aab", u"abb"), QStringLiteral("-1x1 +1x1"));

    QString all;
    QString everyOther;
    for (int i = 0; i < 4 * AppListModel::mostSteps; ++i) {
        all += QChar(u'一' + i);
        everyOther += i % 2 ? QString() : QString(QChar(u'一' + i));
    }
    AppListModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.setItems(list(all));
    const Steps steps(model);
    QSignalSpy counted(&model, &AppListModel::countChanged);
    model.setItems(list(everyOther));
    EXPECT_EQ(letters(model.items()), everyOther);
    EXPECT_LE(steps.text.trimmed().split(QLatin1Char(' ')).size(), 2);
    EXPECT_EQ(counted.count(), 1);
}

TEST(AppListModel, ShowsANewNameInPlace)
{
    AppListModel model;
    model.setItems(list(QStringLiteral("abc")));
    const Steps steps(model);
    QList<AppItem> renamed = list(QStringLiteral("abc"));
    renamed[1].name = QStringLiteral("Beta");
    model.setItems(renamed);
    EXPECT_EQ(steps.text.trimmed(), QStringLiteral("~1"));
    EXPECT_EQ(model.index(1).data(AppListModel::NameRole).toString(), QStringLiteral("Beta"));
    EXPECT_EQ(model.index(1).data(AppListModel::PathRole).toString(), QStringLiteral("/b"));
}

TEST(AppListModel, ArrivesFromAnyListAtAnyOther)
{
    QRandomGenerator random(7);
    AppListModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    for (int round = 0; round < 400; ++round) {
        QString pool = QStringLiteral("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789");
        if (round % 5 == 0)
            std::shuffle(pool.begin(), pool.end(), random);
        else if (round % 5 == 1)
            std::rotate(pool.begin() + 3, pool.begin() + 20, pool.begin() + 20 + random.bounded(9));
        else if (round % 5 == 2)
            pool += QStringLiteral("aab");
        pool.removeIf([&random](QChar) { return random.bounded(3) == 0; });
        model.setItems(list(pool));
        ASSERT_EQ(letters(model.items()), pool);
    }
}
