#include "bench/MadeHome.h"

#include "platform/linux/uninstalling/LinuxResidualLayout.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

namespace quillbay {

namespace {

constexpr int entriesPerRoot = 3'000;

void makeFile(const QByteArray &path, int size)
{
    const int file = ::open(path.constData(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    if (file < 0 || ::ftruncate(file, size) != 0)
        fail(path);
    ::close(file);
}

void makeFolder(const QByteArray &path)
{
    std::error_code error;
    std::filesystem::create_directories(path.toStdString(), error);
    if (error)
        fail(path);
}

} // namespace

double now()
{
    timespec time = {};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

void fail(const QByteArray &what)
{
    std::perror(what.constData());
    std::exit(EXIT_FAILURE);
}

void makeTree(const QByteArray &top, int files)
{
    for (int made = 0; made < files; made += 100) {
        const QByteArray folder =
            top + "/part-" + QByteArray::number(made / 1000) + "/folder-" + QByteArray::number(made / 100);
        makeFolder(folder);
        for (int i = made; i < std::min(files, made + 100); ++i)
            makeFile(folder + "/some-file-" + QByteArray::number(i) + ".dat", i % 9000);
    }
}

platform::ResidualLayout makeHome(const QByteArray &root)
{
    platform::LinuxBaseFolders folders = platform::LinuxBaseFolders::inHome(root + "/home");
    folders.systemRoot = root;
    const platform::ResidualLayout layout = linuxResidualLayout(folders);
    for (const QList<QByteArray> &roots : {layout.preferences, layout.appSupport, layout.caches, layout.logs,
                                           layout.launchAgents, layout.crashReports, layout.extensions}) {
        for (const QByteArray &folder : roots) {
            makeFolder(folder);
            const bool isLarge = folder == folders.dataHome || folder == folders.cacheHome;
            for (int i = 0; i < entriesPerRoot; ++i) {
                const QByteArray entry = folder + '/' +
                                         (i % 10 == 0 ? "org.example.acme-" : "org.other.program-") +
                                         QByteArray::number(i);
                if (isLarge && i % 10 == 0)
                    makeTree(entry, madeFileCount / 2 / (entriesPerRoot / 10));
                else
                    makeFile(entry, i);
            }
        }
    }
    return layout;
}

platform::ApplicationFacts MadeRoots::factsOf(const QString &, const QString &) const
{
    if (m_isHolding)
        m_letGo.acquire();
    return {QStringLiteral("org.example.Acme"), {}, {}, {}};
}

} // namespace quillbay
