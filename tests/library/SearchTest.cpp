#include "foundation/CollationKey.h"
#include "library/AppFinder.h"
#include "support/TestLibrary.h"

#include <gtest/gtest.h>

using namespace quillbay;
using namespace quillbay::testing;

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

class SearchTest : public ::testing::Test
{
protected:
    /// As `TestLibrary::install`, with the sort keys of a real scan.
    void install(const QStringList &list)
    {
        const CollationKey::Maker sortKey;
        std::vector<platform::InstalledApplication> applications;
        for (const QString &entry : list) {
            const QString name = entry.section(u':', 0, 0);
            applications.push_back(
                FakeApplicationSource::application(text("/") + entry, name, entry.section(u':', 1)));
            applications.back().sortKey = sortKey(name);
        }
        library.fakes.applications->setApplications(std::move(applications));
        ASSERT_TRUE(library.scan());
    }
    QString search(const char *query) { return names(library.finder->searchApps(text(query))); }

    TestLibrary library;
};

} // namespace

TEST_F(SearchTest, RanksExactNamesThenBeginningsThenTheRest)
{
    install({text("Keynote"), text("notes"), text("Note"), text("Zettel:Noted"), text("A:noted"),
             text("Notebook"), text("Mail"), text("No te")});
    const std::pair<const char *, const char *> cases[] = {
        {"note", "Note Notebook notes A Keynote Zettel"},
        {"NOTES", "notes"},
        {"noted", "A Zettel"},
        {"note ", ""},
        {"", ""},
        {"xyz", ""},
    };
    for (const auto &[query, expected] : cases)
        EXPECT_EQ(search(query), text(expected)) << query;
}

TEST_F(SearchTest, ComparesCharactersAsTheyAreRead)
{
    install({text("Stra\u00dfe"), text("Strasse 2"), text("\u00c9clair"), text("E\u0301cole"),
             text("Eclipse"), text("e\u0302tre"), text("Zoe\u0301")});
    EXPECT_EQ(search("STRASSE"), text("Strasse 2 Stra\u00dfe"));
    EXPECT_EQ(search("STRA\u1e9eE"), text("Stra\u00dfe Strasse 2"));
    EXPECT_EQ(search("\u00e9"), text("\u00c9clair E\u0301cole Zoe\u0301"));
    EXPECT_EQ(search("e\u0301cole"), text("E\u0301cole"));
    EXPECT_EQ(search("ecole"), QString()) << "an accent is not left out";
}

TEST_F(SearchTest, GivesEachApplicationOnceAndNoneThatIsHidden)
{
    install({text("Note"), text("Notes"), text("Notepad")});
    library.finder->createFolder(text("f"), {}, {});
    library.finder->togglePinFolder(library.folder(text("f")));
    for (const char *name : {"Note", "Notes"})
        library.finder->addAppToFolder(library.app(text(name)), library.folder(text("f")));
    EXPECT_EQ(search("note"), text("Note Notepad Notes"));
    library.finder->hideApp(library.app(text("Note")));
    EXPECT_EQ(search("note"), text("Notepad Notes"));

    // Two records of one path are one application.
    install({text("Same"), text("Same")});
    EXPECT_EQ(search("same"), text("Same"));
}

TEST_F(SearchTest, SuggestsEightAtMostAndSixOfTheRecent)
{
    QStringList list;
    for (int i = 1; i <= 8; ++i)
        list.append(text("App%1").arg(i));
    install(list);
    EXPECT_EQ(library.finder->getSearchSuggestions(text("app")).size(), 8);
    list.append(text("App9"));
    install(list);
    EXPECT_EQ(library.finder->searchApps(text("app")).size(), 9);
    EXPECT_EQ(names(library.finder->getSearchSuggestions(text("app"))),
              text("App1 App2 App3 App4 App5 App6 App7 App8"));
    EXPECT_TRUE(library.finder->getSearchSuggestions({}).isEmpty());

    for (const AppItem &app : library.finder->apps())
        library.finder->addToRecents(app);
    EXPECT_EQ(library.finder->getRecentAppsForSearch(), library.finder->recentApps().mid(0, 6));
}
