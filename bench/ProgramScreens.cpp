#include "bench/ProgramScreens.h"

#include "app/QuillbayViewModel.h"
#include "library/AppIconLoader.h"
#include "support/TestLibrary.h"
#include "tools/Tools.h"
#include "ui/Screens.h"
#include "ui/vocabulary/Theme.h"
#include "uninstaller/Uninstaller.h"

#include <QQuickWindow>

#include <optional>

namespace quillbay {

using namespace testing;

struct ProgramScreens::Parts
{
    Parts(TestLibrary &library, std::shared_ptr<const platform::ResidualRoots> roots)
        : viewModel(*library.finder, *library.fakes.launcher, *library.fakes.biometrics, library.preferences)
        , admin(*library.fakes.elevation)
        , uninstaller({std::move(roots),
                       nullptr,
                       {},
                       *library.fakes.fileRemoval,
                       *library.fakes.trash,
                       admin,
                       *library.fakes.fullDiskAccess,
                       library.home.path()})
        , tools(library.preferences, *library.workspaces, library.notifications, *library.fakes.colorSampler,
                *library.fakes.windowEffects)
    {
        AppIconLoader::setSource(library.fakes.icons);
        types.emplace();
        screens.emplace(*types, viewModel, *library.workspaces, library.notifications, uninstaller, tools);
    }
    ~Parts()
    {
        screens.reset();
        types.reset();
        AppIconLoader::shutDown();
    }

    FakeAppearance appearance;
    FakeWindowEffects effects;
    Theme theme{appearance, effects};
    QuillbayViewModel viewModel;
    AdminPrivileges admin;
    Uninstaller uninstaller;
    Tools tools;
    std::optional<ScreenTypes> types;
    std::optional<Screens> screens;
};

ProgramScreens::ProgramScreens(TestLibrary &library, std::shared_ptr<const platform::ResidualRoots> roots)
    : m_parts(std::make_unique<Parts>(library, std::move(roots)))
{
}

ProgramScreens::~ProgramScreens() = default;

QuillbayViewModel &ProgramScreens::viewModel()
{
    return m_parts->viewModel;
}

QQuickWindow &ProgramScreens::show(QSize size)
{
    QQuickWindow *window = m_parts->screens->window();
    if (!window)
        qFatal("the screens could not be loaded");
    window->resize(size);
    window->show();
    window->requestActivate();
    return *window;
}

} // namespace quillbay
