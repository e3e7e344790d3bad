#pragma once

#include "platform/Elevation.h"
#include "platform/FileRemoval.h"
#include "platform/Trash.h"

#include <QList>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace quillbay::testing {

/// Elevation that asks the test. Without a script every command is refused, as by a person.
class FakeElevation final : public platform::Elevation
{
public:
    ~FakeElevation() override;

    void run(const platform::ElevatedCommand &command, Finished finished) override;
    /// Answers the oldest question that was kept open by `isHeld`.
    void answer(const platform::ElevationResult &result);

    QList<platform::ElevatedCommand> commands; ///< All that were asked for.
    bool isHeld = false;                       ///< Questions stay open until `answer`.
    std::function<platform::ElevationResult(const platform::ElevatedCommand &)> perform;

private:
    std::vector<Finished> m_open;
};

/// The real service, with failures before it as the test wants them.
class FakeFileRemoval final : public platform::FileRemoval
{
public:
    FakeFileRemoval();

    QByteArray resolved(const QByteArray &path) const override { return m_real->resolved(path); }
    bool holdsMount(const QByteArray &path) const override { return isMounted || m_real->holdsMount(path); }
    platform::FileResult remove(const QByteArray &path, const platform::FileStamp &expected) const override;
    platform::FileResult move(const QByteArray &from, const QByteArray &to,
                              const platform::FileStamp &expected) const override;

    bool isMounted = false;
    std::function<std::optional<platform::FileResult>(const QByteArray &path)> failure;

private:
    std::unique_ptr<platform::FileRemoval> m_real;
};

/// The real Trash of the test's own home, with failures before it as the test wants them.
class FakeTrash final : public platform::Trash
{
public:
    FakeTrash();

    platform::FileResult moveToTrash(const QByteArray &path) const override;
    platform::TrashReservation reserve(const QByteArray &name, const QByteArray &origin) const override;
    bool release(const platform::TrashedFile &place) const override { return m_real->release(place); }
    std::optional<platform::TrashedFile> find(const QByteArray &origin,
                                              const platform::FileStamp &file) const override
    {
        return m_real->find(origin, file);
    }

    std::function<std::optional<platform::FileResult>(const QByteArray &path)> failure;
    std::optional<platform::FileResult> reserveFailure;

private:
    std::unique_ptr<platform::Trash> m_real;
};

} // namespace quillbay::testing
