#include "library/AppSorting.h"

#include "support/TestLibrary.h"

#include <gtest/gtest.h>

using namespace quillbay;
using quillbay::testing::names;

namespace {

/// "Name:Category" each; the case of a name does not count for its order, its path is unique.
QList<AppItem> list(const QString &texts)
{
    QList<AppItem> apps;
    for (const QString &text : texts.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        AppItem app;
        app.name = text.section(QLatin1Char(':'), 0, 0);
        app.category = text.section(QLatin1Char(':'), 1);
        app.path = QLatin1String("/apps/") + app.name;
        app.sortKey = app.name.toLower().toUtf8();
        apps.append(app);
    }
    return apps;
}

struct Case
{
    AppSortOption option;
    const char *input;
    const char *recents;
    const char *sorted;
};

class AppSorting : public ::testing::TestWithParam<Case>
{
};

} // namespace

TEST_P(AppSorting, IsStableAndByTheOption)
{
    const auto &[option, input, recents, sorted] = GetParam();
    QSet<QString> urls;
    for (const AppItem &app : list(QString::fromUtf8(recents)))
        urls.insert(app.absoluteString());
    const QList<AppItem> apps = list(QString::fromUtf8(input));
    EXPECT_EQ(names(sortedApps(apps, option, urls)), QString::fromUtf8(sorted));
    EXPECT_EQ(names(apps), names(list(QString::fromUtf8(input)))) << "the argument is untouched";
}

using enum AppSortOption;
INSTANTIATE_TEST_SUITE_P(
    Cases, AppSorting,
    ::testing::Values(
        Case{nameAscending, "b C a B A", "", "a A b B C"}, Case{nameAscending, "", "a", ""},
        Case{nameDescending, "b C a B A", "", "C b B a A"}, Case{nameDescending, "a A b B", "", "b B a A"},
        Case{nameDescending, "C b B a A", "", "C b B a A"},
        Case{category, "z:Office y:games x:Other b:Games a:Office c:", "", "c y b z a x"},
        Case{category, "b:É a:F c:e", "", "c b a"}, Case{recentlyUsed, "d c b a", "c gone d", "c d a b"},
        Case{recentlyUsed, "a b c", "", "a b c"}, Case{recentlyUsed, "B b a A", "b A", "A b a B"}));

TEST(AppSortingCost, AListInOrderIsNotCopied)
{
    const QList<AppItem> apps = list(QStringLiteral("a:x b:y c:z"));
    for (const AppSortOption option : {nameAscending, category, recentlyUsed})
        EXPECT_TRUE(sortedApps(apps, option, {apps[0].absoluteString()}).isSharedWith(apps));
}
