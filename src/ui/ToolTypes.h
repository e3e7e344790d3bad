#pragma once

#include "tools/CodeSnippets.h"
#include "tools/QRGenerator.h"
#include "tools/RulerGridCanvas.h"
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

struct ColorPickerSingleton
{
    Q_GADGET
    QML_FOREIGN(quillbay::ColorPicker)
    QML_NAMED_ELEMENT(ColorPicker)
    QML_SINGLETON

public:
    static ColorPicker *create(QQmlEngine *, QJSEngine *)
    {
        ColorPicker *picker = &WorkspaceStorageSingleton::tools->colorPicker();
        QJSEngine::setObjectOwnership(picker, QJSEngine::CppOwnership);
        return picker;
    }
};

struct RulerManagerSingleton
{
    Q_GADGET
    QML_FOREIGN(quillbay::RulerManager)
    QML_NAMED_ELEMENT(RulerManager)
    QML_SINGLETON

public:
    static RulerManager *create(QQmlEngine *, QJSEngine *)
    {
        RulerManager *manager = &WorkspaceStorageSingleton::tools->rulerManager();
        QJSEngine::setObjectOwnership(manager, QJSEngine::CppOwnership);
        return manager;
    }
};

struct RulerGridCanvasType
{
    Q_GADGET
    QML_FOREIGN(quillbay::RulerGridCanvas)
    QML_NAMED_ELEMENT(RulerGridCanvas)
};

struct QRGeneratorType
{
    Q_GADGET
    QML_FOREIGN(quillbay::QRGenerator)
    QML_NAMED_ELEMENT(QRGenerator)
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
