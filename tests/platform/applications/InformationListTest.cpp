#include "platform/linux/applications/InformationList.h"

#include "platform/linux/applications/BinaryPropertyList.h"
#include "platform/linux/applications/PlainPropertyList.h"

#include <cstdlib>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <plist/plist.h>

namespace quillbay::platform {
namespace {

const std::string Head =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//X//DTD PLIST 1.0//EN\" "
    "\"http://localhost/x.dtd\">\n<plist version=\"1.0\">";

std::string xml(const std::string &content)
{
    return Head + "<dict>" + content + "</dict></plist>";
}

/// The list of `xmlList` in the binary form.
std::string binary(const std::string &xmlList)
{
    plist_t tree = nullptr;
    plist_from_xml(xmlList.data(), uint32_t(xmlList.size()), &tree);
    EXPECT_NE(tree, nullptr) << xmlList;
    char *bytes = nullptr;
    uint32_t size = 0;
    plist_to_bin(tree, &bytes, &size);
    std::string result(bytes, size);
    std::free(bytes);
    plist_free(tree);
    return result;
}

/// A binary list of these objects, the first of them its root.
std::string binaryOf(const std::vector<std::string> &objects)
{
    const auto bigEndian = [](uint64_t value, int size) {
        std::string bytes;
        for (int shift = (size - 1) * 8; shift >= 0; shift -= 8)
            bytes += char(value >> shift);
        return bytes;
    };
    std::string result = "bplist00";
    std::string offsets;
    for (const std::string &object : objects) {
        offsets += bigEndian(result.size(), 4);
        result += object;
    }
    const size_t table = result.size();
    return result + offsets + std::string(6, '\0') + "\x04\x02" + bigEndian(objects.size(), 8) +
           bigEndian(0, 8) + bigEndian(table, 8);
}

QString stringOf(const std::string &list, const char *key = "K")
{
    // On the heap and of this very size, so that reading past the end shows.
    const std::vector<char> exact(list.begin(), list.end());
    return InformationList(std::string_view(exact.data(), exact.size())).string(key);
}

TEST(InformationListTest, TellsStringsEmptyStringsAndOthersApartInBothForms)
{
    struct Case
    {
        std::string content;
        QString expected;
    };
    std::string many;
    for (int i = 0; i < 300; ++i)
        many += "<key>k" + std::to_string(i) + "</key><integer>" + std::to_string(i) + "</integer>";
    const Case cases[] = {
        {"<key>K</key><string>value</string>", QStringLiteral("value")},
        {"<key>K</key>\n\t<string> a\n b </string>\n", QStringLiteral(" a\n b ")},
        {"<key>K</key><string></string>", QStringLiteral("")},
        {"<key>K</key><string/>", QStringLiteral("")},
        {"<key>K</key><string>a&amp;b&lt;&#233;</string>", QStringLiteral("a&b<\u00e9")},
        {"<key>K</key><string>\u00e4\u65e5\U0001F600</string>", QStringLiteral("\u00e4\u65e5\U0001F600")},
        {"<!-- K --><key>K</key><!-- x --><string>c</string>", QStringLiteral("c")},
        {"<key>K</key><string><![CDATA[<a>]]></string>", QStringLiteral("<a>")},
        {"<key>K</key><integer>1</integer>", {}},
        {"<key>K</key><true/>", {}},
        {"<key>K</key><array><string>in</string></array>", {}},
        {"<key>K</key><dict><key>K</key><string>in</string></dict>", {}},
        {"<key>L</key><dict><key>K</key><string>in</string></dict>", {}},
        {"<key>L</key><string>K</string>", {}},
        {"", {}},
        {many + "<key>K</key><string>" + std::string(300, 'x') + "</string>", QString(300, u'x')},
    };
    for (const Case &each : cases) {
        for (const std::string &list : {xml(each.content), binary(xml(each.content))}) {
            EXPECT_EQ(stringOf(list), each.expected) << list;
            EXPECT_EQ(stringOf(list).isNull(), each.expected.isNull()) << list;
        }
    }
}

TEST(InformationListTest, PlainListsNeedNoParserAndOthersAreLeftToIt)
{
    const std::string value = "<key>K</key><string>v</string>";
    EXPECT_EQ(plainPropertyListString(xml(value), "K"), QStringLiteral("v"));
    EXPECT_EQ(plainPropertyListString(xml(value), "L"), QString());
    for (const std::string &other :
         {xml("<!-- x -->" + value), xml("<key>K</key><string>&lt;</string>"), xml(value) + xml(value),
          xml("</dict>" + value), Head + "<dict>" + value,
          std::string("<!DOCTYPE x [<!ENTITY a \"b\">]>") + xml(value), std::string("text"), std::string()})
        EXPECT_EQ(plainPropertyListString(other, "K"), std::nullopt) << other;
}

TEST(InformationListTest, DamagedListsHaveNoStrings)
{
    const std::string list =
        xml("<key>A</key><array><true/></array><key>K</key><string>value</string><key>Z</key><true/>");
    // libplist takes a list as complete when its outermost value is.
    for (size_t size = 0; size < list.rfind("</plist>"); ++size)
        EXPECT_TRUE(stringOf(list.substr(0, size)).isNull()) << size;
    const std::string compact = binary(list);
    for (size_t size = 0; size < compact.size(); ++size)
        EXPECT_TRUE(stringOf(compact.substr(0, size)).isNull()) << size;
    // Each byte of the binary form turned into others: any answer will do, reading astray will not.
    for (size_t at = 8; at < compact.size(); ++at) {
        for (const char byte : {'\x00', '\x01', '\x5F', '\x6F', '\x7F', '\xDF', '\xFF'}) {
            std::string damaged = compact;
            damaged[at] = byte;
            stringOf(damaged);
        }
    }
    EXPECT_TRUE(stringOf(Head + "<string>K</string></plist>").isNull());
    EXPECT_TRUE(stringOf("not a list").isNull());
    EXPECT_TRUE(stringOf(std::string(InformationList::MaximumSize + 1, ' ') + list).isNull());
}

TEST(InformationListTest, HostileListsEndSoon)
{
    // A dictionary that contains itself, sixty levels of arrays that each contain the next one twice, and a
    // chain of 60,000 arrays: each beside the key that is asked for.
    const std::string root("\xD2\x00\x01\x00\x03\x00\x02\x00\x04", 9);
    const std::vector<std::string> start{root, "\x51K", "\x55value", "\x51Z"};
    std::vector<std::string> doubled = start;
    for (int i = 5; i < 65; ++i)
        doubled.push_back(std::string("\xA2\x00", 2) + char(i) + std::string("\x00", 1) + char(i));
    doubled.push_back("\x51x");
    std::vector<std::string> chain = start;
    for (int i = 5; i < 40000; ++i)
        chain.push_back(std::string("\xA1", 1) + char(i >> 8) + char(i & 0xFF));
    chain.push_back("\x51x");
    std::vector<std::string> circle = start;
    circle.push_back(root);
    for (const std::vector<std::string> &objects : {doubled, circle})
        EXPECT_EQ(stringOf(binaryOf(objects)), QStringLiteral("value"));
    EXPECT_EQ(binaryPropertyListString(binaryOf(chain), "K"), QStringLiteral("value"));

    std::string nested = Head;
    while (nested.size() < InformationList::MaximumSize - 10)
        nested += "<array>";
    EXPECT_TRUE(stringOf(nested).isNull());
    std::string declarations;
    while (declarations.size() < InformationList::MaximumSize / 2)
        declarations += "<?a?>";
    EXPECT_EQ(stringOf(declarations + xml("<key>K</key><string>v</string>")), QStringLiteral("v"));
}

} // namespace
} // namespace quillbay::platform
