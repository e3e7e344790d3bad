#include "analytics/MarlpostLogger.h"

#include "foundation/Console.h"

#include <QString>

#include <atomic>
#include <mutex>
#include <utility>

namespace quillbay {

namespace {

struct State
{
    std::atomic_bool isEnabled = false;
    std::mutex mutex; ///< For the sink.
    MarlpostLogger::Sink sink;
};

/// Never destroyed: threads may log while the process ends.
State &state()
{
    static State *const instance = new State;
    return *instance;
}

std::string_view nameOf(MarlpostLogger::Level level)
{
    switch (level) {
    case MarlpostLogger::Level::Debug:
        return "debug";
    case MarlpostLogger::Level::Info:
        return "info";
    case MarlpostLogger::Level::Warning:
        return "warning";
    case MarlpostLogger::Level::Error:
        return "error";
    }
    return {};
}

} // namespace

void MarlpostLogger::setEnabled(bool enabled)
{
    state().isEnabled = enabled;
}

bool MarlpostLogger::isEnabled()
{
    return state().isEnabled.load(std::memory_order_relaxed);
}

void MarlpostLogger::setSink(Sink sink)
{
    const std::lock_guard lock(state().mutex);
    state().sink = std::move(sink);
}

void MarlpostLogger::write(Level level, std::string_view message)
{
    const std::lock_guard lock(state().mutex);
    if (state().sink) {
        state().sink(level, message);
        return;
    }
    std::string line = "[Marlpost - ";
    line.append(nameOf(level)).append("] ").append(message);
    printLine(QString::fromStdString(line));
}

} // namespace quillbay
