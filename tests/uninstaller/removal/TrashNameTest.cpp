#include "uninstaller/TrashName.h"

#include "foundation/Uuid.h"

#include <QUuid>

#include <gtest/gtest.h>

namespace quillbay {

TEST(TrashName, TheMarkStandsBeforeTheExtension)
{
    const QUuid id = uuidFromString(u"3F2504E0-4F89-41D3-9A0C-0305E82C3301").value();
    const struct
    {
        const char *name;
        const char *unique;
    } cases[] = {
        {"report.log", "report_3F2504E0.log"},
        {"report", "report_3F2504E0"},
        {"a.tar.gz", "a.tar_3F2504E0.gz"},
        {".hidden", ".hidden_3F2504E0"},
        {".hidden.txt", ".hidden_3F2504E0.txt"},
        {"end.", "end._3F2504E0"},
        {"...", "..._3F2504E0"},
        {"..a", "..a_3F2504E0"},
        {"it's $(x).a b", "it's $(x)_3F2504E0.a b"},
        {"\xff.\xfe", "\xff_3F2504E0.\xfe"},
    };
    for (const auto &each : cases)
        EXPECT_EQ(uniqueTrashName(each.name, id), each.unique);
}

TEST(TrashName, TheRecordsNameStillFits)
{
    const QUuid id = uuidFromString(u"3F2504E0-4F89-41D3-9A0C-0305E82C3301").value();
    for (const QByteArray &name :
         {QByteArray(255, 'x'), QByteArray(251, 'x') + ".log", "x." + QByteArray(253, 'y'),
          QByteArray(245, 'x'), QByteArray(120, 'x') + '.' + QByteArray(130, 'y')}) {
        const QByteArray unique = uniqueTrashName(name, id);
        EXPECT_LE(unique.size(), 245);
        EXPECT_GE(unique.size(), 200);
        EXPECT_TRUE(unique.contains("_3F2504E0"));
    }
    EXPECT_TRUE(uniqueTrashName(QByteArray(251, 'x') + ".log", id).endsWith("_3F2504E0.log"));
}

} // namespace quillbay
