#include "tools/CodeSnippets.h"

#include "tools/ToolFixture.h"

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QMimeData>
#include <QSignalSpy>
#include <QTimer>

namespace quillbay::testing {
namespace {

class CodeSnippetsTest : public ToolFixture
{
protected:
    CodeSnippetsTest()
    {
        snippets.setStorage(&storage);
        keep({"Fetch API", "Émile", "fetch again"});
    }

    void keep(std::initializer_list<const char *> titles)
    {
        QList<CodeSnippet> list;
        for (const char *title : titles)
            list.append({QUuid::createUuid(), QString::fromUtf8(title),
                         QStringLiteral("code of ") + QString::fromUtf8(title),
                         QStringLiteral("JavaScript")});
        storage.setCodeSnippets(list);
        storage.saveSnippets();
    }
    QString listed() const
    {
        QStringList titles;
        for (int row = 0; row < snippets.count(); ++row)
            titles.append(snippets.data(snippets.index(row), CodeSnippets::TitleRole).toString());
        return titles.join(QLatin1Char('|'));
    }
    QString found(const char *text)
    {
        snippets.setSnippetSearch(QString::fromUtf8(text));
        return listed();
    }
    QString expanded() const
    {
        QStringList titles;
        for (int row = 0; row < snippets.count(); ++row) {
            if (snippets.data(snippets.index(row), CodeSnippets::IsExpandedRole).toBool())
                titles.append(snippets.data(snippets.index(row), CodeSnippets::TitleRole).toString());
        }
        return titles.join(QLatin1Char('|'));
    }
    void fill(const char *title, const char *language, const char *code)
    {
        snippets.setProperty("showCreateForm", true);
        snippets.setProperty("newTitle", QString::fromUtf8(title));
        snippets.setProperty("newLanguage", QString::fromUtf8(language));
        snippets.setProperty("newCode", QString::fromUtf8(code));
    }

    CodeSnippets snippets;
    QAbstractItemModelTester tester{&snippets, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(CodeSnippetsTest, OnlyTitlesAreSearchedWithoutRegardToCase)
{
    EXPECT_EQ(found("FETCH"), QStringLiteral("Fetch API|fetch again"));
    EXPECT_EQ(found("éM"), QStringLiteral("Émile"));
    EXPECT_EQ(found("em"), QString()) << "an accent is a difference";
    EXPECT_EQ(found("code of"), QString());
    EXPECT_EQ(found("javascript"), QString());
    EXPECT_EQ(found("h a"), QStringLiteral("Fetch API|fetch again"));
    EXPECT_EQ(found(""), QStringLiteral("Fetch API|Émile|fetch again"));
}

TEST_F(CodeSnippetsTest, TheFormNeedsATitleAndCodeAndNoLanguage)
{
    fill("", "C", "x");
    snippets.saveForm();
    fill("t", "C", "");
    snippets.saveForm();
    EXPECT_EQ(snippets.count(), 3);
    EXPECT_EQ(snippets.property("newTitle"), QStringLiteral("t"));
    EXPECT_TRUE(snippets.property("showCreateForm").toBool());

    fill("New", "", "a\n\tb");
    snippets.saveForm();
    const CodeSnippet saved = stored().codeSnippets().last();
    EXPECT_EQ(saved.title, QStringLiteral("New"));
    EXPECT_EQ(saved.code, QStringLiteral("a\n\tb"));
    EXPECT_TRUE(saved.language.isEmpty());
    EXPECT_FALSE(saved.id.isNull());
    EXPECT_EQ(listed(), QStringLiteral("Fetch API|Émile|fetch again|New"));
    EXPECT_TRUE(snippets.property("newTitle").toString().isEmpty());
    EXPECT_TRUE(snippets.property("newCode").toString().isEmpty());
    EXPECT_EQ(snippets.property("newLanguage"), QStringLiteral("Swift"));
    EXPECT_FALSE(snippets.property("showCreateForm").toBool());

    snippets.setSnippetSearch(QStringLiteral("fetch"));
    fill("Hidden by the search", "C", "x");
    snippets.saveForm();
    EXPECT_EQ(listed(), QStringLiteral("Fetch API|fetch again"));
    EXPECT_EQ(stored().codeSnippets().size(), 5);
}

TEST_F(CodeSnippetsTest, AtMostOneRowIsOpenAndDeletingAnotherLeavesItOpen)
{
    snippets.toggleExpanded(0);
    snippets.toggleExpanded(2);
    EXPECT_EQ(expanded(), QStringLiteral("fetch again"));
    snippets.remove(0);
    EXPECT_EQ(expanded(), QStringLiteral("fetch again"));
    EXPECT_EQ(stored().codeSnippets().size(), 2);
    EXPECT_EQ(found("ém"), QStringLiteral("Émile"));
    EXPECT_EQ(found(""), QStringLiteral("Émile|fetch again"));
    EXPECT_EQ(expanded(), QStringLiteral("fetch again")) << "out of the list for a while";
    snippets.remove(1);
    EXPECT_EQ(expanded(), QString());
    snippets.toggleExpanded(0);
    snippets.toggleExpanded(0);
    EXPECT_EQ(expanded(), QString());
}

TEST_F(CodeSnippetsTest, RowsAreThoseOfTheSearch)
{
    snippets.setSnippetSearch(QStringLiteral("again"));
    snippets.copy(0);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("code of fetch again"));
    EXPECT_FALSE(QGuiApplication::clipboard()->mimeData()->hasHtml());
    snippets.remove(0);
    for (const int row : {-1, 0, 7}) {
        snippets.copy(row);
        snippets.remove(row);
        snippets.toggleExpanded(row);
    }
    EXPECT_EQ(found(""), QStringLiteral("Fetch API|Émile"));
}

TEST_F(CodeSnippetsTest, ASecondCopyDoesNotExtendTheMessageOfTheFirst)
{
    QElapsedTimer sinceFirst;
    QElapsedTimer sinceSecond;
    QSignalSpy changes(&snippets, &CodeSnippets::copyMessageChanged);
    sinceFirst.start();
    snippets.copy(0);
    EXPECT_EQ(snippets.copyMessage(), QStringLiteral("Snippet Copied!"));
    QTimer::singleShot(CodeSnippets::messageTime / 2, &snippets, [&] {
        snippets.copy(1);
        sinceSecond.start();
    });
    ASSERT_EQ(changes.count(), 1);
    ASSERT_TRUE(changes.wait(10 * CodeSnippets::messageTime));
    EXPECT_TRUE(snippets.copyMessage().isEmpty());
    EXPECT_GE(sinceFirst.elapsed(), CodeSnippets::messageTime * 9 / 10);
    ASSERT_TRUE(sinceSecond.isValid());
    EXPECT_LT(sinceSecond.elapsed(), CodeSnippets::messageTime);
}

TEST_F(CodeSnippetsTest, AnotherWorkspaceBringsItsOwn)
{
    snippets.setSnippetSearch(QStringLiteral("t"));
    switchAway();
    EXPECT_EQ(listed(), QStringLiteral("Swift Print|HTML Quick Start"));
    snippets.remove(0);
    switchBack();
    EXPECT_EQ(listed(), QStringLiteral("Fetch API|fetch again"));
}

} // namespace
} // namespace quillbay::testing
