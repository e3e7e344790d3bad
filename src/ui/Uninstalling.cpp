#include "ui/Uninstalling.h"

#include "app/QuillbayViewModel.h"
#include "uninstaller/Uninstaller.h"

namespace quillbay {

Uninstalling::Uninstalling(QuillbayViewModel &viewModel, Uninstaller &uninstaller, QObject *parent)
    : QObject(parent)
    , m_viewModel(viewModel)
    , m_uninstaller(uninstaller)
{
}

UninstallerFlow *Uninstalling::begin(QObject *sheet)
{
    const auto &app = m_viewModel.appToUninstall();
    if (!app)
        return nullptr;
    std::unique_ptr<UninstallerFlow> flow = m_uninstaller.begin(*app);
    flow->setParent(sheet);
    return flow.release();
}

} // namespace quillbay
