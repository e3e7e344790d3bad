#include "uninstaller/Uninstaller.h"

#include <utility>

namespace quillbay {

Uninstaller::Uninstaller(UninstallerServices services)
    : m_services(std::move(services))
{
    m_worker.setMaxThreadCount(1);
}

Uninstaller::~Uninstaller()
{
    m_services.admin.close();
    m_worker.waitForDone();
}

std::unique_ptr<UninstallerFlow> Uninstaller::begin(const AppItem &app)
{
    return std::make_unique<UninstallerFlow>(app, m_services, m_worker);
}

} // namespace quillbay
