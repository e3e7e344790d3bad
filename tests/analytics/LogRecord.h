#pragma once

#include "analytics/MarlpostLogger.h"

#include <algorithm>
#include <mutex>
#include <string>
#include <vector>

namespace quillbay::testing {

/// Switches the log on, and keeps its messages, while it lives.
class LogRecord
{
public:
    LogRecord()
    {
        MarlpostLogger::setSink([this](MarlpostLogger::Level, std::string_view message) {
            const std::lock_guard lock(m_mutex);
            m_messages.emplace_back(message);
        });
        MarlpostLogger::setEnabled(true);
    }
    ~LogRecord()
    {
        MarlpostLogger::setEnabled(false);
        MarlpostLogger::setSink({});
    }
    LogRecord(const LogRecord &) = delete;
    LogRecord &operator=(const LogRecord &) = delete;

    std::vector<std::string> messages() const
    {
        const std::lock_guard lock(m_mutex);
        return m_messages;
    }
    void forget()
    {
        const std::lock_guard lock(m_mutex);
        m_messages.clear();
    }
    /// How many messages begin so.
    int count(std::string_view prefix) const
    {
        const auto all = messages();
        return int(std::count_if(all.begin(), all.end(),
                                 [&](const std::string &message) { return message.starts_with(prefix); }));
    }

private:
    mutable std::mutex m_mutex;
    std::vector<std::string> m_messages;
};

} // namespace quillbay::testing
