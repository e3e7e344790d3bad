#include "ui/Screens.h"

#include "ui/QmlSingletons.h"
#include "ui/vocabulary/Symbols.h"

#include <QQuickWindow>

// Written by the build from the classes of the module. Nothing else refers to it, and a linker takes from a
// static library only what is referred to.
void qml_register_types_Quillbay_Ui();

namespace quillbay {

Screens::Screens(QuillbayViewModel &viewModel, NotificationCenter &notifications)
{
    [[maybe_unused]] volatile auto keep = &qml_register_types_Quillbay_Ui;
    // Before there is any text: a font that comes later has all of it laid out anew.
    Symbols::family(SymbolFace::Regular);
    ViewModelSingleton::instance = &viewModel;
    NotificationsSingleton::instance = &notifications;
    m_engine.load(QUrl(QStringLiteral("qrc:/qt-project.org/imports/Quillbay/Ui/ContentView.qml")));
}

Screens::~Screens() = default;

QQuickWindow *Screens::window() const
{
    const QObjectList roots = m_engine.rootObjects();
    return roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow *>(roots.first());
}

} // namespace quillbay
