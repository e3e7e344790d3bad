#pragma once

#include "platform/ResidualRoots.h"
#include "platform/linux/applications/LinuxApplicationSource.h"
#include "platform/linux/uninstalling/LinuxResidualLayout.h"

namespace quillbay::platform {

/// The places of a Linux desktop.
///
/// Whole names are the last part of the identifier and the base name of the program, the latter only where it
/// tells this application from others: not if another application starts the same program (a browser's web
/// applications, the parts of an office suite), nor if the program mostly runs others. A package's name is
/// for whoever knows the packages to add.
class LinuxResidualRoots final : public ResidualRoots
{
public:
    LinuxResidualRoots(const LinuxBaseFolders &folders, const ApplicationEnvironment &environment);

    ResidualLayout layout() const override;
    ApplicationFacts factsOf(const QString &path, const QString &name) const override;
    std::optional<QList<QByteArray>> mountPoints() const override;

private:
    QString resolved(const QString &program) const;
    bool isStartedByAnother(const QString &baseName, const QString &path) const;
    QList<QByteArray> selfInstalled(const QString &program, const QStringList &names) const;

    const LinuxBaseFolders m_folders;
    const ApplicationEnvironment m_environment;
    const LinuxApplicationSource m_applications;
};

} // namespace quillbay::platform
