#pragma once

#include "platform/ResidualRoots.h"

#include <QByteArray>
#include <QSemaphore>

#include <atomic>

namespace quillbay {

/// Milliseconds on a clock that nobody sets.
double now();
/// Ends the program, with the reason for the last call's failure.
[[noreturn]] void fail(const QByteArray &what);

inline constexpr int madeFileCount = 200'000;

/// So many files, a hundred a folder, ten folders in each folder above. They are empty on the disk, and of
/// different sizes.
void makeTree(const QByteArray &top, int files);

/// A home below the root with 3,000 entries in each folder that a step of a scan looks into. A tenth of them
/// belong to "org.example.acme"; those of the two largest folders hold `madeFileCount` files.
platform::ResidualLayout makeHome(const QByteArray &root);

/// The places of such a home. Thread: any.
class MadeRoots final : public platform::ResidualRoots
{
public:
    explicit MadeRoots(const platform::ResidualLayout &layout)
        : m_layout(layout)
    {
    }

    /// Makes each scan wait in its first step for `letGo`.
    void hold() { m_isHolding = true; }
    void letGo() { m_letGo.release(); }

    platform::ResidualLayout layout() const override { return m_layout; }
    platform::ApplicationFacts factsOf(const QString &path, const QString &name) const override;
    std::optional<QList<QByteArray>> mountPoints() const override { return QList<QByteArray>{"/"}; }

private:
    const platform::ResidualLayout m_layout;
    std::atomic_bool m_isHolding = false;
    mutable QSemaphore m_letGo;
};

} // namespace quillbay
