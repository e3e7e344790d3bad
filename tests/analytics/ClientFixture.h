#pragma once

#include "analytics/MarlpostInstance.h"
#include "support/FakeDeviceIdentity.h"

#include <QJsonObject>
#include <QList>
#include <QTemporaryDir>

#include <atomic>
#include <memory>

#include <gtest/gtest.h>

namespace quillbay::testing {

/// Client instances over a folder of the test's own, and what they leave in it. A second `start` with the
/// same options is the next run of the program.
class ClientFixture : public ::testing::Test
{
protected:
    static constexpr char token[] = "token";

    ClientFixture();
    /// Waits until the stores of all instances are closed: let them go before.
    ~ClientFixture() override;

    std::shared_ptr<MarlpostInstance> start(MarlpostOptions options = {});
    /// The same, and waits until what is stored has been read.
    std::shared_ptr<MarlpostInstance> startAndSettle(MarlpostOptions options = {});
    /// Lets an instance go, and waits until its store is closed.
    void end(std::shared_ptr<MarlpostInstance> &instance);
    /// Waits until nothing is queued or under way.
    static void settle(const MarlpostInstance &instance);
    /// Runs the main thread's events until the condition holds; false when that takes too long.
    static bool runUntil(const std::function<bool()> &condition);

    /// The entities that a table of the instance named `name` has, oldest first, read by other means.
    QList<QJsonObject> rows(const char *kind, int flag = 0, const char *name = token) const;
    /// The names of the stored events.
    QStringList events(const char *name = token) const;
    /// The properties of the newest stored event.
    QJsonObject lastProperties() const;
    /// The value that the preferences have for a base key; a null value where there is none.
    QVariant stored(const char *baseKey) const;

    MarlpostSurroundings surroundings() const;

    QTemporaryDir folder;
    std::shared_ptr<FakeDeviceIdentity> device = std::make_shared<FakeDeviceIdentity>();
    std::shared_ptr<std::atomic<double>> clock = std::make_shared<std::atomic<double>>(1'700'000'000.5);
};

} // namespace quillbay::testing
