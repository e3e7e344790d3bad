#include "foundation/Uuid.h"
#include "library/AppFolder.h"
#include "library/AppItem.h"
#include "library/AppSortOption.h"
#include "library/FileItem.h"
#include "library/GridItemIdentifier.h"
#include "library/SidebarSelection.h"

#include <QSet>

#include <gtest/gtest.h>

using namespace quillbay;

namespace {

const QUuid anId = *uuidFromString(u"6f9619ff-8b86-d011-b42d-00cf4fc964ff");
const QUuid parentId = *uuidFromString(u"D3B07384-D113-4E4E-A343-A33A0A26F3D3");

AppFolder workFolder()
{
    AppFolder folder;
    folder.id = anId;
    folder.name = QStringLiteral("Wörk \"1\"");
    folder.appURLs = {QStringLiteral("file:///usr/share/applications/a.desktop")};
    folder.isPinned = true;
    folder.icon = QStringLiteral("folder");
    folder.color = QStringLiteral("#007AFF");
    folder.parentFolderID = parentId;
    folder.createdAt = 700000000.5;
    folder.sortOrder = -3;
    return folder;
}

const char workFolderJson[] = "[{\"id\":\"6F9619FF-8B86-D011-B42D-00CF4FC964FF\",\"name\":\"Wörk \\\"1\\\"\","
                              "\"appURLs\":[\"file:///usr/share/applications/a.desktop\"],\"isPinned\":true,"
                              "\"icon\":\"folder\",\"color\":\"#007AFF\","
                              "\"parentFolderID\":\"D3B07384-D113-4E4E-A343-A33A0A26F3D3\","
                              "\"createdAt\":700000000.5,\"sortOrder\":-3}]";

QByteArray withoutField(const char *field)
{
    QByteArray json = workFolderJson;
    const qsizetype from = json.indexOf(QByteArray("\"") + field + "\":");
    qsizetype to = json.indexOf(",\"", from) + 1;
    if (to == 0) { // the last field takes the comma before it along
        to = json.indexOf('}', from);
        return json.left(from - 1) + json.mid(to);
    }
    return json.left(from) + json.mid(to);
}

DecodeError errorOf(const Decoded<QList<AppFolder>> &decoded)
{
    return std::get<DecodeError>(decoded);
}

} // namespace

TEST(AppItem, IsItsPath)
{
    const AppItem editor{
        QStringLiteral("Editor"), QStringLiteral("/a/Editor.app"), QStringLiteral("Other"), {}, {}};
    const AppItem renamed{
        QStringLiteral("Text"), QStringLiteral("/a/Editor.app"), QStringLiteral("Games"), {}, {}};
    EXPECT_EQ(editor, renamed);
    EXPECT_EQ((QSet<AppItem>{editor, renamed}).size(), 1);
    EXPECT_FALSE(looksSame(editor, renamed));

    const AppItem odd{{}, QStringLiteral("/a/Büro 100%.desktop"), {}, {}, {}};
    EXPECT_EQ(odd.absoluteString(), QStringLiteral("file:///a/B%C3%BCro%20100%25.desktop"));
    EXPECT_EQ(odd.url().path(), odd.id());
}

TEST(AppFolder, IsWrittenFieldByFieldInOrder)
{
    EXPECT_EQ(encodeFolders({workFolder()}), QByteArray(workFolderJson));

    AppFolder root = workFolder();
    root.parentFolderID.reset();
    root.createdAt = 700000000;
    const QByteArray json = encodeFolders({root});
    EXPECT_FALSE(json.contains("parentFolderID"));
    EXPECT_TRUE(json.contains("\"createdAt\":700000000,"));
    EXPECT_EQ(encodeFolders({}), QByteArray("[]"));
}

TEST(AppFolder, ComesBackAsItWasWritten)
{
    const auto decoded = decodeFolders(workFolderJson);
    const auto *folders = decodedValue(decoded);
    ASSERT_TRUE(folders);
    EXPECT_EQ(encodeFolders(*folders), QByteArray(workFolderJson));
}

TEST(AppFolder, NeedsEveryFieldButTwo)
{
    for (const char *field : {"id", "name", "appURLs", "isPinned", "icon", "color", "createdAt"}) {
        const DecodeError error = errorOf(decodeFolders(withoutField(field)));
        EXPECT_EQ(error.kind, DecodeError::Kind::KeyNotFound) << field;
    }
    const auto withoutOrder = decodeFolders(withoutField("sortOrder"));
    ASSERT_TRUE(decodedValue(withoutOrder));
    EXPECT_EQ(decodedValue(withoutOrder)->first().sortOrder, 0);
    const auto withoutParent = decodeFolders(withoutField("parentFolderID"));
    ASSERT_TRUE(decodedValue(withoutParent));
    EXPECT_FALSE(decodedValue(withoutParent)->first().parentFolderID);
}

TEST(AppFolder, RefusesWhatIsNoFolderList)
{
    const auto broken = [](const char *what, const char *with) {
        return errorOf(decodeFolders(QByteArray(workFolderJson).replace(what, with))).kind;
    };
    EXPECT_EQ(broken("true", "1"), DecodeError::Kind::TypeMismatch);
    EXPECT_EQ(broken("-3", "0.5"), DecodeError::Kind::TypeMismatch);
    EXPECT_EQ(broken("-3", "9223372036854775808"), DecodeError::Kind::TypeMismatch);
    EXPECT_EQ(broken("[\"file", "[7,\"file"), DecodeError::Kind::TypeMismatch);
    EXPECT_EQ(broken("6F9619FF-", "{6F9619FF-"), DecodeError::Kind::DataCorrupted);
    for (const char *text : {"", "[", "{}", "null", "[null]", "[1]"})
        EXPECT_FALSE(decodedValue(decodeFolders(text))) << text;
    EXPECT_EQ(errorOf(decodeFolders(QByteArray(1000000, '['))).kind, DecodeError::Kind::NotJson);
    // One bad record fails the whole list.
    QByteArray two = workFolderJson;
    two.insert(two.size() - 1, ",{}");
    EXPECT_FALSE(decodedValue(decodeFolders(two)));
}

TEST(AppFolder, EqualsByIdButHashesWhole)
{
    AppFolder renamed = workFolder();
    renamed.name = QStringLiteral("Play");
    EXPECT_EQ(renamed, workFolder());
    EXPECT_NE(qHash(renamed), qHash(workFolder()));
    EXPECT_EQ(qHash(workFolder()), qHash(workFolder()));
}

TEST(GridItemIdentifier, SpeaksItsStringForm)
{
    const auto folder = GridItemIdentifier::folder(anId);
    EXPECT_EQ(folder.stringRepresentation(), QStringLiteral("folder:6F9619FF-8B86-D011-B42D-00CF4FC964FF"));
    EXPECT_EQ(GridItemIdentifier::fromString(folder.stringRepresentation()), folder);

    for (const QString &name : {QString(), QStringLiteral("Games"), QStringLiteral("a:b:folder:c")}) {
        const auto category = GridItemIdentifier::category(name);
        EXPECT_EQ(category.stringRepresentation(), QStringLiteral("category:") + name);
        EXPECT_EQ(GridItemIdentifier::fromString(category.stringRepresentation()), category);
    }
    for (const char16_t *text :
         {u"folder:", u"folder:category:x", u"Folder:6F9619FF-8B86-D011-B42D-00CF4FC964FF", u"Category:x",
          u"categor", u"", u"folder:6F9619FF8B86D011B42D00CF4FC964FF",
          u"folder:{6F9619FF-8B86-D011-B42D-00CF4FC964FF}"})
        EXPECT_FALSE(GridItemIdentifier::fromString(text)) << QString::fromUtf16(text).toStdString();
}

TEST(GridItemIdentifier, HasAnEncodedFormWithOneKey)
{
    const QByteArray folder = "{\"folder\":{\"id\":\"6F9619FF-8B86-D011-B42D-00CF4FC964FF\"}}";
    const QByteArray category = "{\"category\":{\"name\":\"Games\"}}";
    EXPECT_EQ(GridItemIdentifier::folder(anId).encoded(), folder);
    EXPECT_EQ(GridItemIdentifier::category(QStringLiteral("Games")).encoded(), category);
    EXPECT_EQ(std::get<GridItemIdentifier>(GridItemIdentifier::decode(folder)),
              GridItemIdentifier::folder(anId));

    const QByteArray both = folder.chopped(1) + ',' + category.mid(1);
    for (const QByteArray &json : {both, QByteArray("{}")}) {
        const auto error = std::get<DecodeError>(GridItemIdentifier::decode(json));
        EXPECT_EQ(error.kind, DecodeError::Kind::TypeMismatch);
        EXPECT_EQ(error.debugDescription, QStringLiteral("Invalid number of keys found, expected one."));
    }
}

TEST(AppSortOption, IsItsLabel)
{
    QStringList labels;
    for (const AppSortOption option : allAppSortOptions) {
        labels.append(rawValue(option));
        EXPECT_EQ(appSortOption(rawValue(option)), option);
    }
    EXPECT_EQ(labels, (QStringList{QStringLiteral("A to Z"), QStringLiteral("Z to A"),
                                   QStringLiteral("Category"), QStringLiteral("Recently Used")}));
    EXPECT_FALSE(appSortOption(u"a to z"));
}

TEST(SidebarSelection, ComparesByCaseAndPayload)
{
    using Case = SidebarSelection::Case;
    AppFolder renamed = workFolder();
    renamed.name = QStringLiteral("Play");
    EXPECT_EQ(SidebarSelection::ofFolder(renamed), SidebarSelection::ofFolder(workFolder()));
    EXPECT_NE(qHash(SidebarSelection::ofFolder(renamed)), qHash(SidebarSelection::ofFolder(workFolder())));

    const auto lookalike = SidebarSelection::ofCategory(QStringLiteral("Hidden Apps"));
    EXPECT_EQ(lookalike.title(), SidebarSelection(Case::hidden).title());
    EXPECT_NE(lookalike, SidebarSelection(Case::hidden));

    QStringList titles;
    for (const Case which : {Case::allApps, Case::recents, Case::favorites, Case::newlyAdded, Case::hidden})
        titles.append(SidebarSelection(which).title());
    EXPECT_EQ(titles.join(QLatin1Char('|')),
              QStringLiteral("All Apps|Recent Apps|Favorites|Newly Added|Hidden Apps"));
    EXPECT_EQ(SidebarSelection::ofFolder(renamed).title(), QStringLiteral("Play"));
}

TEST(FileItem, IsNewWithEachQuery)
{
    const FileItem one;
    const FileItem copy = one;
    EXPECT_EQ(one, copy);
    EXPECT_FALSE(one == FileItem());
}
