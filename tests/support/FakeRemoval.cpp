#include "support/FakeRemoval.h"

#include "platform/linux/uninstalling/removal/HandleFileRemoval.h"
#include "platform/linux/uninstalling/removal/XdgTrash.h"

#include <utility>

namespace quillbay::testing {

using Outcome = platform::ElevationResult::Outcome;

FakeElevation::~FakeElevation()
{
    for (const Finished &finished : std::exchange(m_open, {}))
        finished({Outcome::Abandoned, {}});
}

void FakeElevation::run(const platform::ElevatedCommand &command, Finished finished)
{
    commands.append(command);
    if (isHeld)
        m_open.push_back(std::move(finished));
    else
        finished(perform ? perform(command) : platform::ElevationResult{Outcome::Refused, {}});
}

void FakeElevation::answer(const platform::ElevationResult &result)
{
    const Finished finished = std::move(m_open.front());
    m_open.erase(m_open.begin());
    finished(result);
}

FakeFileRemoval::FakeFileRemoval()
    : m_real(std::make_unique<platform::HandleFileRemoval>())
{
}

platform::FileResult FakeFileRemoval::remove(const QByteArray &path,
                                             const platform::FileStamp &expected) const
{
    if (const auto failed = failure ? failure(path) : std::nullopt)
        return *failed;
    return m_real->remove(path, expected);
}

platform::FileResult FakeFileRemoval::move(const QByteArray &from, const QByteArray &to,
                                           const platform::FileStamp &expected) const
{
    if (const auto failed = failure ? failure(to) : std::nullopt)
        return *failed;
    return m_real->move(from, to, expected);
}

FakeTrash::FakeTrash()
    : m_real(std::make_unique<platform::XdgTrash>())
{
}

platform::FileResult FakeTrash::moveToTrash(const QByteArray &path) const
{
    if (const auto failed = failure ? failure(path) : std::nullopt)
        return *failed;
    return m_real->moveToTrash(path);
}

platform::TrashReservation FakeTrash::reserve(const QByteArray &name, const QByteArray &origin) const
{
    if (reserveFailure)
        return {*reserveFailure, {}};
    return m_real->reserve(name, origin);
}

} // namespace quillbay::testing
