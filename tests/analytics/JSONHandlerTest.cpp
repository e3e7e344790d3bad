#include "analytics/JSONHandler.h"

#include <QDate>
#include <QTimeZone>

#include <cmath>
#include <limits>

#include <gmock/gmock.h>

namespace quillbay {

namespace {

using ::testing::Optional;

std::string jsonOf(const MarlpostType &value)
{
    return JSONHandler::serializeJSONObject(value).value_or("none");
}

MarlpostType nested(int depth)
{
    MarlpostType value = MarlpostArray();
    for (int i = 1; i < depth; ++i)
        value = MarlpostArray{std::move(value)};
    return value;
}

TEST(JSONHandlerTest, WritesEachPermittedType)
{
    const QDateTime date(QDate(2024, 2, 29), QTime(23, 59, 58, 7), QTimeZone("Asia/Kolkata"));
    const std::pair<MarlpostType, const char *> cases[] = {
        {nullptr, "null"},
        {true, "true"},
        {std::uint8_t(200), "200"},
        {std::numeric_limits<std::int64_t>::min(), "-9223372036854775808"},
        {std::numeric_limits<std::uint64_t>::max(), "18446744073709551615"},
        {0.1F, "0.1"}, // not the double nearest to that float
        {0.1, "0.1"},
        {1e300, "1e+300"},
        {"a \"b\" \\ \n\t\x01 é \U0001F680", R"("a \"b\" \\ \n\t\u0001 é 🚀")"},
        {QStringLiteral("ünï"), "\"ünï\""},
        {std::string("a\0b", 3), R"("a\u0000b")"},
        {std::string("bad \xff!"), "\"bad \xEF\xBF\xBD!\""},
        {date, "\"2024-02-29T18:29:58.007Z\""},
        {QDateTime::fromMSecsSinceEpoch(-1), "\"1969-12-31T23:59:59.999Z\""},
        {QUrl(QStringLiteral("https://example.org/a b?c=ü")), "\"https://example.org/a%20b?c=%C3%BC\""},
        {MarlpostArray{}, "[]"},
        {MarlpostArray{1, "b", nullptr}, R"([1,"b",null])"},
        {MarlpostDictionary{}, "{}"},
        {MarlpostDictionary{{"z", 1}, {"a\"", MarlpostDictionary{{"k", 2.5}}}}, R"({"z":1,"a\"":{"k":2.5}})"},
    };
    for (const auto &[value, json] : cases)
        EXPECT_EQ(jsonOf(value), json) << value.typeName();
}

TEST(JSONHandlerTest, RefusesWhatJsonCannotHold)
{
    const MarlpostType values[] = {std::nan(""), std::numeric_limits<float>::infinity(),
                                   MarlpostArray{MarlpostDictionary{{"deep", -HUGE_VAL}}}};
    for (const MarlpostType &value : values) {
        EXPECT_FALSE(value.isValid());
        EXPECT_EQ(jsonOf(value), "none");
    }
    EXPECT_NE(jsonOf(nested(JSONHandler::MaximumDepth)), "none");
    EXPECT_EQ(jsonOf(nested(JSONHandler::MaximumDepth + 1)), "none");
}

TEST(JSONHandlerTest, ReadsBackWhatItWrote)
{
    const MarlpostDictionary properties = {{"text", "é \n"},
                                           {"big", std::numeric_limits<std::uint64_t>::max()},
                                           {"whole", -7},
                                           {"double", 0.1},
                                           {"flag", false},
                                           {"none", nullptr},
                                           {"list", MarlpostArray{1, MarlpostArray{}, MarlpostDictionary{}}},
                                           {"nested", MarlpostDictionary{{"a", MarlpostArray{"b"}}}}};
    const auto json = JSONHandler::serializeJSONObject(properties);
    ASSERT_TRUE(json);
    EXPECT_THAT(JSONHandler::deserializeData(*json), Optional(properties));
    EXPECT_THAT(JSONHandler::deserializeData(R"({"a":1,"a":2})"), Optional(MarlpostDictionary{{"a", 2}}));
}

TEST(JSONHandlerTest, OneObjectAndNothingElseIsReadable)
{
    const std::string tooDeep = "{\"a\":" + std::string(100'000, '[') + std::string(100'000, ']') + '}';
    for (const std::string_view text :
         {std::string_view(""), std::string_view("{"), std::string_view("[1]"), std::string_view("1"),
          std::string_view("null"), std::string_view("\"a\""), std::string_view("{} {}"),
          std::string_view("{\"a\":\"\xff\"}"), std::string_view("{\"a\":1e999}"),
          std::string_view(tooDeep)}) {
        EXPECT_FALSE(JSONHandler::deserializeData(text)) << text.substr(0, 40);
        EXPECT_FALSE(JSONHandler::readFacts(text)) << text.substr(0, 40);
    }
}

TEST(JSONHandlerTest, FactsAreThoseOfTheOutermostObject)
{
    const auto inner =
        JSONHandler::readFacts(R"({"p":{"event":"x","id":1,"$distinct_id":"y"},"$distinct_id":null})");
    ASSERT_TRUE(inner);
    EXPECT_EQ(inner->event, "");
    EXPECT_FALSE(inner->hasDistinctId);
    EXPECT_FALSE(inner->hasId);
    const auto outer =
        JSONHandler::readFacts(R"( {"p":{"q":[1]},"event":"x","id":null,"$distinct_id":"y"} )");
    ASSERT_TRUE(outer);
    EXPECT_EQ(outer->event, "x");
    EXPECT_TRUE(outer->hasDistinctId);
    EXPECT_TRUE(outer->hasId);
}

TEST(JSONHandlerTest, BatchIsAnArrayWithIds)
{
    const StoredEntities batch = {{1, R"({"a":"}"})"}, {-2, "{ } "}, {3, "{\"b\":{}}\n"}};
    EXPECT_THAT(JSONHandler::encodeAPIData(batch),
                Optional(std::string(R"([{"a":"}","id":1},{ "id":-2},{"b":{},"id":3}])")));
    EXPECT_FALSE(JSONHandler::encodeAPIData({}));
}

TEST(MarlpostTypeTest, NumbersAreEqualByValueAndDatesToTheirArchivedText)
{
    EXPECT_EQ(MarlpostType(1), MarlpostType(1U));
    EXPECT_EQ(MarlpostType(1), MarlpostType(1.0));
    EXPECT_NE(MarlpostType(1), MarlpostType(true));
    EXPECT_NE(MarlpostType(-1), MarlpostType(std::numeric_limits<std::uint64_t>::max()));
    EXPECT_NE(MarlpostType("1"), MarlpostType(1));
    EXPECT_NE(MarlpostType(nullptr), MarlpostType(""));
    EXPECT_EQ(MarlpostType(QDateTime::fromMSecsSinceEpoch(0)), MarlpostType("1970-01-01T00:00:00.000Z"));
    EXPECT_EQ(MarlpostType(MarlpostArray{1, "a"}), MarlpostType(MarlpostArray{1.0, "a"}));
    EXPECT_EQ((MarlpostDictionary{{"a", 1}, {"b", 2}}), (MarlpostDictionary{{"b", 2}, {"a", 1}}));
    EXPECT_NE((MarlpostDictionary{{"a", 1}}), (MarlpostDictionary{{"a", 1}, {"b", nullptr}}));
}

TEST(MarlpostTypeTest, MergeReplacesInPlace)
{
    MarlpostDictionary base = {{"a", 1}, {"b", 2}, {"a", 3}};
    base.merge({{"c", 4}, {"b", "new"}});
    EXPECT_EQ(jsonOf(base), R"({"a":3,"b":"new","c":4})");
    EXPECT_TRUE(base.remove("b"));
    EXPECT_FALSE(base.remove("b"));
    EXPECT_EQ(jsonOf(base), R"({"a":3,"c":4})");
}

} // namespace

} // namespace quillbay
