#include "library/AppFinder.h"
#include "support/TestLibrary.h"

#include <QTest>

#include <gtest/gtest.h>

using namespace quillbay;
using namespace quillbay::testing;

TEST(RecentFiles, AreAskedForAfterEachScanAndEachChangeOfTheRecord)
{
    TestLibrary library;
    FakeRecentDocuments &record = *library.fakes.recentDocuments;
    ASSERT_TRUE(record.queries.empty());
    ASSERT_TRUE(library.scan());
    ASSERT_EQ(record.queries.size(), 1u);
    EXPECT_EQ(record.queries[0].cutoff, library.now - 259200);
    EXPECT_EQ(record.queries[0].most, 30);
    record.change();
    EXPECT_EQ(record.queries.size(), 2u);
}

TEST(RecentFiles, AreTheFirstThirtyOfTheAnswerThatHaveAName)
{
    TestLibrary library;
    qsizetype seen = -1;
    QObject::connect(library.finder.get(), &ObservableObject::objectWillChange,
                     [&] { seen = library.finder->recentFiles().size(); });
    QList<platform::RecentDocument> documents;
    for (int i = 0; i < 40; ++i)
        documents.append({QStringLiteral("/d/%1 %").arg(i), QStringLiteral("D%1").arg(i), 0});
    documents[1].displayName.clear();
    documents[2].path.clear();
    library.fakes.icons->setColor(documents[3].path, Qt::red);
    library.fakes.recentDocuments->answer(documents);
    // The icons are read off the main thread.
    EXPECT_TRUE(library.finder->recentFiles().isEmpty());
    ASSERT_TRUE(QTest::qWaitFor([&] { return seen == 28; }));
    const QList<FileItem> files = library.finder->recentFiles();
    ASSERT_EQ(files.size(), 28);
    EXPECT_EQ(files[0].name, QStringLiteral("D0"));
    EXPECT_EQ(files[1].name, QStringLiteral("D3"));
    EXPECT_EQ(files[1].url.toLocalFile(), QStringLiteral("/d/3 %"));
    EXPECT_EQ(files[1].icon.pixelColor(0, 0), QColor(Qt::red));
    EXPECT_FALSE(files[0] == files[1]);

    library.fakes.recentDocuments->answer({});
    EXPECT_TRUE(QTest::qWaitFor([&] { return library.finder->recentFiles().isEmpty(); }));
}
