#include "platform/linux/uninstalling/FlatpakFileAccess.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quillbay::platform {

namespace {

TEST(FlatpakFileAccess, IsFullUnlessConfinedWithoutTheHostsFiles)
{
    const QTemporaryDir folder;
    const QString info = folder.filePath(QStringLiteral("info"));
    const FlatpakFileAccess access(info);
    EXPECT_TRUE(access.hasAccess()) << "not confined";

    const std::pair<const char *, bool> cases[] = {
        {"", false},
        {"[Context]\nfilesystems=host;\n", true},
        {"[Application]\nname=x\n\n[Context]\nshared=network;\nfilesystems=xdg-music:ro;home;\n", true},
        {"[Context]\nfilesystems=home:create\n", true},
        {"[Context]\nfilesystems=host:ro;home:ro;\n", false},
        {"[Context]\nfilesystems=!home;!host;xdg-config/home;\n", false},
        {"[Other]\nfilesystems=host;\n", false},
        {"[Context]\nsockets=host;\n[Other]\nfilesystems=host;\n", false},
    };
    for (const auto &[text, isFull] : cases) {
        QFile file(info);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
        EXPECT_EQ(access.hasAccess(), isFull) << text;
    }
}

} // namespace

} // namespace quillbay::platform
