#include "uninstaller/ResidualRowsModel.h"

#include "uninstaller/RowIcons.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QFile>
#include <QSignalSpy>

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace quillbay::testing {

namespace {

using enum ResidualCategory;

AppResidualFile row(const QByteArray &path, ResidualCategory category, quint32 kind = S_IFREG)
{
    AppResidualFile file;
    file.id = QUuid::createUuid();
    file.path = path;
    file.displayName = QFile::decodeName(path);
    file.category = category;
    file.isUserDeletable = true;
    file.isSelected = true;
    file.identity = FileIdentity{1, 1, kind};
    return file;
}

std::vector<std::string> names(const ResidualRowsModel &model)
{
    std::vector<std::string> result;
    for (int i = 0; i < model.count(); ++i)
        result.push_back(model.index(i).data(ResidualRowsModel::NameRole).toString().toStdString());
    return result;
}

TEST(ResidualRows, AreInTheOrderOfTheirCategoriesAndOfTheScanWithin)
{
    ResidualRowsModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    QList<AppResidualFile> files = {row("/l2", logs), row("/c", caches), row("/l1", logs),
                                    row("/a", appBundle)};
    model.setFiles(files);
    EXPECT_THAT(names(model), ::testing::ElementsAre("/a", "/c", "/l2", "/l1"));

    const QSignalSpy removals(&model, &ResidualRowsModel::rowsRemoved);
    const QSignalSpy insertions(&model, &ResidualRowsModel::rowsInserted);
    const QSignalSpy resets(&model, &ResidualRowsModel::modelReset);
    const QSignalSpy changes(&model, &ResidualRowsModel::dataChanged);
    const QSignalSpy counts(&model, &ResidualRowsModel::countChanged);
    files[0].isSelected = false;
    files[3].isSelected = false;
    model.setFiles(files);
    ASSERT_EQ(changes.size(), 2) << "one for each run of rows";
    EXPECT_EQ(changes[1][0].toModelIndex().row(), 2);
    EXPECT_EQ(changes[1][2].value<QList<int>>(), QList<int>{ResidualRowsModel::IsSelectedRole});
    EXPECT_FALSE(model.index(2).data(ResidualRowsModel::IsSelectedRole).toBool());
    EXPECT_EQ(counts.size(), 0);

    files.remove(2);
    files.remove(0);
    files[0].isSelected = false;
    model.setFiles(files);
    EXPECT_THAT(names(model), ::testing::ElementsAre("/a", "/c"));
    EXPECT_EQ(removals.size(), 1) << "neighbours go at once";
    EXPECT_EQ(changes.size(), 3);
    EXPECT_EQ(insertions.size() + resets.size(), 0);
    EXPECT_EQ(counts.size(), 1);

    model.setFiles({row("/new", caches)});
    EXPECT_THAT(names(model), ::testing::ElementsAre("/new"));
    model.setFiles({});
    EXPECT_EQ(model.count(), 0);
}

TEST(ResidualRows, RemovalsOfEveryShapeLeaveTheRightRows)
{
    constexpr int size = 7;
    for (int mask = 0; mask < 1 << size; ++mask) {
        ResidualRowsModel model;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
        QList<AppResidualFile> files;
        QList<AppResidualFile> kept;
        std::vector<std::string> expected;
        for (int i = 0; i < size; ++i) {
            files.append(row('/' + QByteArray::number(i), i < 3 ? caches : logs));
            if ((mask >> i) % 2 == 1) {
                kept.append(files.last());
                expected.push_back('/' + std::to_string(i));
            }
        }
        model.setFiles(files);
        model.setFiles(kept);
        ASSERT_EQ(names(model), expected) << mask;
    }
}

TEST(ResidualRows, ShowPathsAndIconsForPeople)
{
    ResidualRowsModel model;
    AppResidualFile package = row("", appBundle);
    package.packageReference = QStringLiteral("x");
    package.identity.reset();
    model.setFiles({package, row(QFile::encodeName(QDir::homePath()) + "/.config/a", preferences)});
    EXPECT_EQ(model.index(0).data(ResidualRowsModel::PathRole), QString());
    EXPECT_EQ(model.index(0).data(ResidualRowsModel::IconRole), QStringLiteral("shippingbox.fill"));
    EXPECT_EQ(model.index(1).data(ResidualRowsModel::PathRole), QStringLiteral("~/.config/a"));
    EXPECT_EQ(shownPath(QStringLiteral("/h/u/a/h/u"), QStringLiteral("/h/u")), QStringLiteral("~/a~"));
    EXPECT_EQ(shownPath(QStringLiteral("/a/b"), QStringLiteral("/")), QStringLiteral("/a/b"));

    const std::pair<const char *, const char *> icons[] = {
        {"/x/a.plist", "doc.text.fill"},
        {"/x/a.LOG", "doc.plaintext.fill"},
        {"/x/a.crash", "exclamationmark.triangle.fill"},
        {"/x/a.pem", "lock.doc.fill"},
        {"/x/a.Cer", "lock.doc.fill"},
        {"/x.log/a", "doc.fill"},
        {"/x/.log", "doc.fill"},
        {"/x/log", "doc.fill"},
    };
    for (const auto &[path, icon] : icons)
        EXPECT_EQ(rowIcon(row(path, logs)), QLatin1String(icon)) << path;
    EXPECT_EQ(rowIcon(row("/x/a.log", logs, S_IFDIR)), QStringLiteral("folder.fill"));
    EXPECT_EQ(rowIcon(row("/x/a", logs, S_IFLNK)), QStringLiteral("doc.fill"));
}

} // namespace

} // namespace quillbay::testing
