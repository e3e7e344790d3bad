#include "platform/linux/uninstalling/removal/TrashInfo.h"

#include "support/HostileTree.h"

#include <glib.h>
#include <gtest/gtest.h>

namespace quillbay::platform {

// GLib reads key files, and escapes, as file managers do.
TEST(TrashInfo, OthersReadWhatIsWrittenAndEveryByteComesBack)
{
    quillbay::testing::HostileTree names(29, {});
    const QDateTime when(QDate(2024, 5, 1), QTime(12, 3, 4, 567));
    for (int i = 0; i < 2000; ++i) {
        const QByteArray path = "/home/" + QByteArray::fromStdString(names.name());
        const QByteArray text = serialize({path, when});
        const auto read = parseTrashInfo(text);
        ASSERT_TRUE(read);
        ASSERT_EQ(read->path, path);
        ASSERT_EQ(read->deleted, QDateTime(QDate(2024, 5, 1), QTime(12, 3, 4)));

        g_autoptr(GKeyFile) file = g_key_file_new();
        ASSERT_TRUE(
            g_key_file_load_from_data(file, text.constData(), gsize(text.size()), G_KEY_FILE_NONE, nullptr));
        g_autofree char *escaped = g_key_file_get_string(file, "Trash Info", "Path", nullptr);
        g_autofree char *plain = g_uri_unescape_string(escaped, nullptr);
        ASSERT_EQ(QByteArray(plain), path);
        g_autofree char *date = g_key_file_get_string(file, "Trash Info", "DeletionDate", nullptr);
        ASSERT_STREQ(date, "2024-05-01T12:03:04");
    }
}

TEST(TrashInfo, WhatIsNoRecordIsNone)
{
    for (const char *text : {"", "Path=/a", "[Trash Info]\n", "[Other]\nPath=/a", "[Trash Info]\nPath=",
                             "[Trash Info]\nPath=/a%", "[Trash Info]\nPath=/a%2", "[Trash Info]\nPath=/a%zz",
                             "[Trash Info]\nPath=/a%00b", "[Trash Info]\n[Other]\nPath=/a"})
        EXPECT_FALSE(parseTrashInfo(text)) << text;
    const auto twice = parseTrashInfo("[Trash Info]\nPath=/a\nPath=/b\nDeletionDate=never\nOther=x");
    ASSERT_TRUE(twice);
    EXPECT_EQ(twice->path, "/a");
    EXPECT_FALSE(twice->deleted.isValid());
}

} // namespace quillbay::platform
