#pragma once

#include "platform/ApplicationLauncher.h"
#include "platform/ApplicationSource.h"
#include "platform/IconSource.h"

namespace quillbay::platform {

/// No folders, no applications.
class NoApplicationSource final : public ApplicationSource
{
public:
    QStringList folders() const override;
    std::vector<InstalledApplication> scan() const override;
    FileDates dates(const QString &path) const override;
    std::optional<ApplicationDetails> read(const QString &path) const override;
};

/// Answers every launch with `LaunchOutcome::Failed`. Needs the application object for the answer.
class NoApplicationLauncher final : public ApplicationLauncher
{
public:
    void launch(const LaunchRequest &request, std::function<void(const LaunchResult &)> done) override;
};

/// Every application has the generic icon: a plain rounded square.
class NoIconSource final : public IconSource
{
public:
    QImage icon(const QString &path, int edge) const override;
    QImage documentIcon(const QString &path, int edge) const override;
    QImage genericIcon(int edge) const override;
};

} // namespace quillbay::platform
