#pragma once

#include "platform/Appearance.h"
#include "platform/ApplicationService.h"
#include "platform/FolderWatch.h"
#include "platform/GlobalHotkey.h"
#include "platform/RecentDocuments.h"
#include "platform/WindowEffects.h"

#include <QPointer>
#include <QWindow>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace quillbay::testing {

/// A desktop whose looks the test sets; each setter announces a real change once.
class FakeAppearance final : public platform::Appearance
{
public:
    using Appearance::Appearance;

    void setDark(bool dark);
    void setReducedMotion(bool reduced);
    void setIconTheme(const QString &theme);

    bool isDark() const override { return m_dark; }
    bool reducedMotion() const override { return m_reducedMotion; }
    QString iconTheme() const override { return m_iconTheme; }

private:
    bool m_dark = false;
    bool m_reducedMotion = false;
    QString m_iconTheme;
};

class FakeFolderWatch final : public platform::FolderWatch
{
public:
    using FolderWatch::FolderWatch;

    QStringList folders; ///< Those of the last `watch`.
    int watchCount = 0;

    void trigger(const QString &folder) { Q_EMIT changed(folder); }
    int watch(const QStringList &watched) override;
};

/// A record whose queries the test answers with `answer`.
class FakeRecentDocuments final : public platform::RecentDocuments
{
public:
    using RecentDocuments::RecentDocuments;

    struct Query
    {
        double cutoff;
        int most;
    };
    std::vector<Query> queries;
    int stops = 0;

    void answer(const QList<platform::RecentDocument> &documents) { Q_EMIT gathered(documents); }
    void change() { Q_EMIT changed(); }

    void query(double cutoff, int most) override { queries.push_back({cutoff, most}); }
    void stop() override { ++stops; }
};

/// A key that the test presses. With a `refusal` set, registering fails with it.
class FakeGlobalHotkey final : public platform::GlobalHotkey
{
public:
    using GlobalHotkey::GlobalHotkey;

    bool available = true;
    QString refusal;
    std::optional<QKeyCombination> key; ///< What was asked for.
    int keyboardTakenCount = 0;

    void press(const QString &token = {}) { Q_EMIT activated(token); }
    bool isAvailable() const override { return available; }
    void registerKey(QKeyCombination wanted) override;
    void keyboardTaken() override { ++keyboardTakenCount; }
};

/// Records what was asked of windows and does none of it.
class FakeWindowEffects final : public platform::WindowEffects
{
public:
    bool blurs = false;
    bool places = true;
    bool showsThrough = true;
    std::vector<std::pair<QPointer<QWindow>, QRegion>> blurRegions;    ///< Every request, in order.
    std::vector<std::pair<QPointer<QWindow>, QString>> broughtForward; ///< Window and token, in order.

    bool canBlurBehind() const override { return blurs; }
    void setBlurBehind(QWindow *window, const QRegion &region) override;
    bool canPlaceWindows() const override { return places; }
    bool canShowThrough() const override { return showsThrough; }
    void bringToFront(QWindow *window, const QString &activationToken) override;
};

/// The desktop's calls to the program, made by the test; those before `start` wait for it.
class FakeApplicationService final : public platform::ApplicationService
{
public:
    using ApplicationService::ApplicationService;

    Claim answer = Claim::Primary;
    std::optional<QStringList> claimedUrls; ///< Set once claimed.
    bool started = false;

    void activate(const QString &token = {});
    void open(const QStringList &urls);
    void requestAction(const QString &action, const QVariantList &parameters = {});

    Claim claim(const QStringList &urls) override;
    void start() override;

private:
    void deliver(std::function<void()> call);

    std::vector<std::function<void()>> m_waiting;
};

} // namespace quillbay::testing
