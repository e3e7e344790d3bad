#pragma once

#include "platform/Elevation.h"
#include "uninstaller/FileIdentity.h"

#include <QObject>

#include <memory>

namespace quillbay {

/// Elevated commands for a task off the main thread: each is posted to the main thread, which starts it and
/// goes on, while the caller waits without a limit for the person and the command.
///
/// Lives on the main thread and must outlive its callers. At the program's end: `close`, wait for the
/// callers, destroy.
class AdminPrivileges : public QObject
{
public:
    explicit AdminPrivileges(platform::Elevation &elevation, QObject *parent = nullptr);
    ~AdminPrivileges() override;

    // Both block. Thread: any but the main one, which would wait for itself: there they fail at once. How it
    // ended is printed. Paths are free of links on the way.

    platform::ElevationResult deleteWithAdminPrivileges(const QByteArray &path, const FileIdentity &file);
    platform::ElevationResult moveWithAdminPrivileges(const QByteArray &from, const QByteArray &to,
                                                      const FileIdentity &file);

    /// Ends every wait, with Abandoned, and every later one before it begins. Thread: any.
    void close();

private:
    struct Question;
    struct Questions;

    platform::ElevationResult run(const platform::ElevatedCommand &command);
    platform::ElevationResult ask(const platform::ElevatedCommand &command);

    platform::Elevation &m_elevation;
    std::shared_ptr<Questions> m_questions;
};

} // namespace quillbay
