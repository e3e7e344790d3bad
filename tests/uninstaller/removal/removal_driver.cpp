// Removes the given paths, as the program would, in a process that a test may kill or run as somebody else.
//
//   removal_driver trash|permanent|trash-and-back HELPER PATH...
//
// A path that begins with "!" may not be removed by the user. Prints "removed PATH" and "error MESSAGE"
// lines, for trash-and-back also "restored PATH" and "left MESSAGE", and last "over".

#include "foundation/Console.h"
#include "platform/linux/uninstalling/removal/HandleFileRemoval.h"
#include "platform/linux/uninstalling/removal/PkexecElevation.h"
#include "platform/linux/uninstalling/removal/XdgTrash.h"
#include "uninstaller/PutBack.h"
#include "uninstaller/ReceiptStore.h"
#include "uninstaller/Removal.h"

#include <QCoreApplication>
#include <QFile>
#include <QThread>

#include <memory>

using namespace quillbay;

namespace {

QList<RemovalItem> itemsOf(int argc, char **argv)
{
    QList<RemovalItem> items;
    for (int i = 3; i < argc; ++i) {
        QByteArray path = argv[i];
        const bool isUserDeletable = !path.startsWith('!');
        if (!isUserDeletable)
            path.remove(0, 1);
        items.append({path, QFile::decodeName(path.mid(path.lastIndexOf('/') + 1)), 1, isUserDeletable,
                      FileIdentity::of(path).value_or(FileIdentity{})});
    }
    return items;
}

void run(const QList<RemovalItem> &items, const QByteArray &method, const RemovalServices &services)
{
    const bool isPermanent = method == "permanent";
    const RemovalResult result =
        removeItems(items, isPermanent ? DeletionMethod::Permanent : DeletionMethod::Trash, services);
    for (const QByteArray &path : result.removedPaths)
        printLine(QStringLiteral("removed ") + QFile::decodeName(path));
    for (const QString &error : result.errors)
        printLine(QStringLiteral("error ") + error);
    if (method == "trash-and-back") {
        const PutBackResult back = putBack(result.receipt, services);
        for (const QByteArray &path : back.restored)
            printLine(QStringLiteral("restored ") + QFile::decodeName(path));
        for (const PutBackFailure &failure : back.left)
            printLine(QStringLiteral("left ") + failure.message);
    }
    printLine(QStringLiteral("over"));
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc < 3)
        return 2;
    const QList<RemovalItem> items = itemsOf(argc, argv);
    const platform::HandleFileRemoval files;
    const platform::XdgTrash trash;
    platform::PkexecElevation elevation({QFile::decodeName(argv[2]), true});
    AdminPrivileges admin(elevation);
    const RemovalServices services{files, trash, admin, ReceiptStore::defaultFolder()};
    const std::unique_ptr<QThread> worker(
        QThread::create([&] { run(items, QByteArray(argv[1]), services); }));
    QObject::connect(worker.get(), &QThread::finished, &application, &QCoreApplication::quit);
    worker->start();
    QCoreApplication::exec();
    worker->wait();
    return 0;
}
