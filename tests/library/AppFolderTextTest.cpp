#include "foundation/JsonFields.h"
#include "foundation/Uuid.h"
#include "library/AppFolder.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

using namespace quillbay;

namespace {

AppFolder folder(const QString &name, double createdAt = 1)
{
    AppFolder made;
    made.id = QUuid::createUuid();
    made.name = name;
    made.appURLs = {name, QString(), QStringLiteral("file:///a%20b"), name + name};
    made.icon = name;
    made.createdAt = createdAt;
    made.sortOrder = std::numeric_limits<std::int64_t>::min();
    return made;
}

/// The text that the JSON library writes.
QByteArray throughTree(const AppFolder &folder)
{
    json::Json object;
    object["id"] = json::text(uuidString(folder.id));
    object["name"] = json::text(folder.name);
    object["appURLs"] = json::Json::array();
    for (const QString &url : folder.appURLs)
        object["appURLs"].push_back(json::text(url));
    object["isPinned"] = folder.isPinned;
    object["icon"] = json::text(folder.icon);
    object["color"] = json::text(folder.color);
    object["createdAt"] = json::number(folder.createdAt);
    object["sortOrder"] = folder.sortOrder;
    return json::dump(json::Json::array({object}));
}

const QByteArray fields =
    "\"id\":\"6F9619FF-8B86-D011-B42D-00CF4FC964FF\",\"name\":\"n\",\"appURLs\":[\"u\"],"
    "\"isPinned\":true,\"icon\":\"i\",\"color\":\"c\",\"createdAt\":1";

/// What becomes of a folder with these fields behind the required ones; nothing where it is refused.
std::optional<AppFolder> withFields(const char *more)
{
    const auto decoded = decodeFolders("[{" + fields + more + "}]");
    const QList<AppFolder> *folders = decodedValue(decoded);
    return folders ? std::optional(folders->first()) : std::nullopt;
}

} // namespace

TEST(AppFolderText, IsWhatTheJsonLibraryWrites)
{
    QString everyCharacter;
    for (char16_t c = 0; c < 0x180; ++c)
        everyCharacter += c;
    const QString valid[] = {{},
                             everyCharacter,
                             QStringLiteral("\u2028\uFFFE\uFFFF\"\\/\U0001F600\U0010FFFF"),
                             QString(5000, u'\\')};
    const char16_t loneHigh[] = {u'a', 0xD800, u'b', 0};
    const char16_t loneLow[] = {u'"', 0xDC00, 0};
    const char16_t swapped[] = {0xDFFF, 0xD83D, 0xD83D, 0xDE00, 0xD800, 0};
    const QString invalid[] = {QString::fromUtf16(loneHigh), QString::fromUtf16(loneLow),
                               QString::fromUtf16(swapped)};
    bool isExact = false;
    for (const QString &text : valid) {
        const AppFolder made = folder(text);
        EXPECT_EQ(encodeFolders({made}, &isExact), throughTree(made));
        EXPECT_TRUE(isExact);
    }
    for (const QString &text : invalid) {
        const AppFolder made = folder(text);
        EXPECT_EQ(encodeFolders({made}, &isExact), throughTree(made));
        EXPECT_FALSE(isExact);
    }
    for (const double number : {0.0, -0.0, 700000000.5, -1e-9, 1e15, 1e16, 9007199254740993.0, 1.7e308,
                                std::numeric_limits<double>::infinity()}) {
        const AppFolder made = folder(QStringLiteral("x"), number);
        EXPECT_EQ(encodeFolders({made}, &isExact), throughTree(made)) << number;
        EXPECT_EQ(isExact, std::isfinite(number));
    }
}

TEST(AppFolderText, TakesTheLastOfEqualKeysAndLooksAtNoOthers)
{
    const auto unchanged = withFields(",\"x\":{\"name\":7,\"appURLs\":[{}]},\"y\":[[\"z\"],{\"id\":1}]");
    ASSERT_TRUE(unchanged);
    EXPECT_EQ(encodeFolders({*unchanged}), "[{" + fields + ",\"sortOrder\":0}]");

    const auto last = withFields(",\"name\":null,\"name\":\"last\",\"appURLs\":[],\"appURLs\":{},\"appURLs\":"
                                 "[\"v\"],\"sortOrder\":5,\"sortOrder\":null,\"parentFolderID\":"
                                 "\"6F9619FF-8B86-D011-B42D-00CF4FC964FF\",\"parentFolderID\":null");
    ASSERT_TRUE(last);
    EXPECT_EQ(last->name, QStringLiteral("last"));
    EXPECT_EQ(last->appURLs, QStringList{QStringLiteral("v")});
    EXPECT_EQ(last->sortOrder, 0);
    EXPECT_FALSE(last->parentFolderID);
    EXPECT_EQ(withFields(",\"sortOrder\":-2.0")->sortOrder, -2);
}

TEST(AppFolderText, RefusesAWrongValueUnderAnyKey)
{
    for (const char *key :
         {"id", "name", "appURLs", "isPinned", "icon", "color", "parentFolderID", "createdAt", "sortOrder"}) {
        const QByteArray name(key);
        const bool isOptional = name == "parentFolderID" || name == "sortOrder";
        EXPECT_EQ(withFields((",\"" + name + "\":null").constData()).has_value(), isOptional) << key;
        for (const char *value : {"{\"a\":\"b\"}", "[[\"a\"]]", "[1]", "[null]", "[true]", "[{}]"})
            EXPECT_FALSE(withFields((",\"" + name + "\":" + value).constData())) << key << value;
        EXPECT_EQ(withFields((",\"" + name + "\":[\"a\"]").constData()).has_value(), name == "appURLs");
        EXPECT_EQ(withFields((",\"" + name + "\":true").constData()).has_value(), name == "isPinned");
    }
    for (const char *text : {"7", "\"x\"", "[[{}]]", "{\"a\":{}}", "[{},]", "[]x", "[\"\xff\"]"})
        EXPECT_FALSE(decodedValue(decodeFolders(text))) << text;
    // What is no JSON counts before what is no folder.
    const auto both = decodeFolders("[{},");
    EXPECT_EQ(std::get<DecodeError>(both).kind, DecodeError::Kind::NotJson);
}
