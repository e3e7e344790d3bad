#pragma once

#include "platform/Appearance.h"
#include "platform/ApplicationService.h"
#include "platform/FolderWatch.h"
#include "platform/GlobalHotkey.h"
#include "platform/RecentDocuments.h"
#include "platform/WindowEffects.h"

namespace quillbay::platform {

/// Light, with movement, icon theme unknown; never changes.
class NoAppearance final : public Appearance
{
public:
    using Appearance::Appearance;

    bool isDark() const override { return false; }
    bool reducedMotion() const override { return false; }
    QString iconTheme() const override { return {}; }
};

/// Every process is the one instance, and nothing ever calls it.
class NoApplicationService final : public ApplicationService
{
public:
    using ApplicationService::ApplicationService;

    Claim claim(const QStringList &urls) override;
    void start() override {}
};

/// Watches nothing.
class NoFolderWatch final : public FolderWatch
{
public:
    using FolderWatch::FolderWatch;

    int watch(const QStringList &folders) override;
};

/// A desktop that keeps no record: every query ends with nothing.
class NoRecentDocuments final : public RecentDocuments
{
public:
    using RecentDocuments::RecentDocuments;

    void query(double cutoff, int most) override;
    void stop() override { ++m_query; }

private:
    int m_query = 0;
};

/// Never available; asked all the same, it fails.
class NoGlobalHotkey final : public GlobalHotkey
{
public:
    using GlobalHotkey::GlobalHotkey;

    bool isAvailable() const override { return false; }
    void registerKey(QKeyCombination key) override;
};

/// No blur and no own places; windows come forward as far as Qt alone can bring them.
class NoWindowEffects final : public WindowEffects
{
public:
    bool canBlurBehind() const override { return false; }
    void setBlurBehind(QWindow *window, const QRegion &region) override;
    bool canPlaceWindows() const override { return false; }
    bool canShowThrough() const override { return true; }
    void bringToFront(QWindow *window, const QString &activationToken) override;
};

} // namespace quillbay::platform
