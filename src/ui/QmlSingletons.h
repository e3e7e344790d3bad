#pragma once

#include "app/AppPicker.h"
#include "app/ExpandedCard.h"
#include "app/FolderContents.h"
#include "app/FolderTreeModel.h"
#include "app/GridDrops.h"
#include "app/HiddenCards.h"
#include "app/LibraryActions.h"
#include "app/QuillbayViewModel.h"
#include "app/UnifiedCards.h"
#include "app/WorkspaceListModel.h"
#include "foundation/NotificationCenter.h"
#include "ui/Uninstalling.h"
#include "uninstaller/UninstallerFlow.h"

#include <QJSEngine>
#include <QQmlEngine>

namespace quillbay {

/// What the screens reach by name. `main` fills each before it makes the engine and keeps the objects: QML
/// only borrows them. Asking for one that was not filled is a programmer error.
template <typename Object>
struct Borrowed
{
    inline static Object *instance = nullptr;

    static Object *create(QQmlEngine *, QJSEngine *)
    {
        Q_ASSERT(instance);
        QJSEngine::setObjectOwnership(instance, QJSEngine::CppOwnership);
        return instance;
    }
};

struct ViewModelSingleton : Borrowed<QuillbayViewModel>
{
    Q_GADGET
    QML_FOREIGN(quillbay::QuillbayViewModel)
    QML_NAMED_ELEMENT(ViewModel)
    QML_SINGLETON

public:
    static QuillbayViewModel *create(QQmlEngine *qml, QJSEngine *js) { return Borrowed::create(qml, js); }
};

struct NotificationsSingleton : Borrowed<NotificationCenter>
{
    Q_GADGET
    QML_FOREIGN(quillbay::NotificationCenter)
    QML_NAMED_ELEMENT(Notifications)
    QML_SINGLETON

public:
    static NotificationCenter *create(QQmlEngine *qml, QJSEngine *js) { return Borrowed::create(qml, js); }
};

struct LibrarySingleton : Borrowed<LibraryActions>
{
    Q_GADGET
    QML_FOREIGN(quillbay::LibraryActions)
    QML_NAMED_ELEMENT(Library)
    QML_SINGLETON

public:
    static LibraryActions *create(QQmlEngine *qml, QJSEngine *js) { return Borrowed::create(qml, js); }
};

struct FolderTreeSingleton : Borrowed<FolderTreeModel>
{
    Q_GADGET
    QML_FOREIGN(quillbay::FolderTreeModel)
    QML_NAMED_ELEMENT(FolderTree)
    QML_SINGLETON

public:
    static FolderTreeModel *create(QQmlEngine *qml, QJSEngine *js) { return Borrowed::create(qml, js); }
};

struct WorkspacesSingleton : Borrowed<WorkspaceListModel>
{
    Q_GADGET
    QML_FOREIGN(quillbay::WorkspaceListModel)
    QML_NAMED_ELEMENT(Workspaces)
    QML_SINGLETON

public:
    static WorkspaceListModel *create(QQmlEngine *qml, QJSEngine *js) { return Borrowed::create(qml, js); }
};

struct GridDropsSingleton : Borrowed<GridDrops>
{
    Q_GADGET
    QML_FOREIGN(quillbay::GridDrops)
    QML_NAMED_ELEMENT(GridDrops)
    QML_SINGLETON

public:
    static GridDrops *create(QQmlEngine *qml, QJSEngine *js) { return Borrowed::create(qml, js); }
};

struct CardsSingleton : Borrowed<UnifiedCards>
{
    Q_GADGET
    QML_FOREIGN(quillbay::UnifiedCards)
    QML_NAMED_ELEMENT(Cards)
    QML_SINGLETON

public:
    static UnifiedCards *create(QQmlEngine *qml, QJSEngine *js) { return Borrowed::create(qml, js); }
};

struct HiddenCardsSingleton : Borrowed<HiddenCards>
{
    Q_GADGET
    QML_FOREIGN(quillbay::HiddenCards)
    QML_NAMED_ELEMENT(HiddenCards)
    QML_SINGLETON

public:
    static HiddenCards *create(QQmlEngine *qml, QJSEngine *js) { return Borrowed::create(qml, js); }
};

struct ExpandedCardSingleton : Borrowed<ExpandedCard>
{
    Q_GADGET
    QML_FOREIGN(quillbay::ExpandedCard)
    QML_NAMED_ELEMENT(ExpandedCard)
    QML_SINGLETON

public:
    static ExpandedCard *create(QQmlEngine *qml, QJSEngine *js) { return Borrowed::create(qml, js); }
};

struct FolderContentsSingleton : Borrowed<FolderContents>
{
    Q_GADGET
    QML_FOREIGN(quillbay::FolderContents)
    QML_NAMED_ELEMENT(FolderContents)
    QML_SINGLETON

public:
    static FolderContents *create(QQmlEngine *qml, QJSEngine *js) { return Borrowed::create(qml, js); }
};

struct UninstallingSingleton : Borrowed<Uninstalling>
{
    Q_GADGET
    QML_FOREIGN(quillbay::Uninstalling)
    QML_NAMED_ELEMENT(Uninstalling)
    QML_SINGLETON

public:
    static Uninstalling *create(QQmlEngine *qml, QJSEngine *js) { return Borrowed::create(qml, js); }
};

struct UninstallerFlowType
{
    Q_GADGET
    QML_FOREIGN(quillbay::UninstallerFlow)
    QML_NAMED_ELEMENT(UninstallerFlow)
    QML_UNCREATABLE("A flow is begun by Uninstalling")
};

struct ResidualRowsModelType
{
    Q_GADGET
    QML_FOREIGN(quillbay::ResidualRowsModel)
    QML_ANONYMOUS
};

struct AppFinderType
{
    Q_GADGET
    QML_FOREIGN(quillbay::AppFinder)
    QML_NAMED_ELEMENT(AppFinder)
    QML_UNCREATABLE("The view model owns the one library")
};

struct CountedListModelType
{
    Q_GADGET
    QML_FOREIGN(quillbay::CountedListModel)
    QML_ANONYMOUS
};

struct CardListModelType
{
    Q_GADGET
    QML_FOREIGN(quillbay::CardListModel)
    QML_ANONYMOUS
};

struct AppListModelType
{
    Q_GADGET
    QML_FOREIGN(quillbay::AppListModel)
    QML_NAMED_ELEMENT(AppListModel)
    QML_UNCREATABLE("The view model owns its lists")
};

struct AppPickerType
{
    Q_GADGET
    QML_FOREIGN(quillbay::AppPicker)
    QML_NAMED_ELEMENT(AppPicker)
};

struct CategoryListModelType
{
    Q_GADGET
    QML_FOREIGN(quillbay::CategoryListModel)
    QML_ANONYMOUS
};

struct GridListModelType
{
    Q_GADGET
    QML_FOREIGN(quillbay::GridListModel)
    QML_ANONYMOUS
};

} // namespace quillbay
