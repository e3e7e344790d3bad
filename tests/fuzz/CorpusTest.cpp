#include "fuzz/Checks.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace quillbay::testing;

/// Every input that the fuzzers have found worth keeping, and each of them cut short.
TEST(FuzzCorpus, HoldsForWhatWasFound)
{
    const std::pair<const char *, const char *(*)(const QByteArray &)> decoders[] = {
        {"folders", checkFolders},
        {"workspaces", checkWorkspaces},
        {"grid", checkGrid},
        {"documents", checkDocuments},
    };
    for (const auto &[name, check] : decoders) {
        const QDir folder(QStringLiteral(FUZZ_CORPUS "/") + QLatin1String(name));
        const QStringList files = folder.entryList(QDir::Files);
        EXPECT_FALSE(files.isEmpty()) << name;
        for (const QString &path : files) {
            QFile file(folder.filePath(path));
            ASSERT_TRUE(file.open(QIODevice::ReadOnly));
            const QByteArray input = file.readAll();
            for (const QByteArray &text : {input, input.chopped(input.size() / 2)})
                EXPECT_STREQ(check(text), nullptr) << name << '/' << qPrintable(path);
        }
    }
}
