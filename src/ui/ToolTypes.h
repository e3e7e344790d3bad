#pragma once

#include "tools/CodeSnippets.h"
#include "tools/StickyNotes.h"
#include "tools/Tools.h"

#include <QJSEngine>
#include <QQmlEngine>

namespace quillbay {

/// What the tools of the toolbar keep; made when the first of them opens.
struct WorkspaceStorageSingleton
{
    Q_GADGET
    QML_FOREIGN(quillbay::WorkspaceStorage)
    QML_NAMED_ELEMENT(WorkspaceStorage)
    QML_SINGLETON

public:
    inline static Tools *tools = nullptr;

    static WorkspaceStorage *create(QQmlEngine *, QJSEngine *)
    {
        Q_ASSERT(tools);
        QJSEngine::setObjectOwnership(&tools->storage(), QJSEngine::CppOwnership);
        return &tools->storage();
    }
};

struct StickyNotesType
{
    Q_GADGET
    QML_FOREIGN(quillbay::StickyNotes)
    QML_NAMED_ELEMENT(StickyNotes)
};

struct CodeSnippetsType
{
    Q_GADGET
    QML_FOREIGN(quillbay::CodeSnippets)
    QML_NAMED_ELEMENT(CodeSnippets)
};

} // namespace quillbay
