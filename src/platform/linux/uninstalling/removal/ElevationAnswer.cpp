#include "platform/linux/uninstalling/removal/ElevationAnswer.h"

namespace quillbay::platform {

namespace {

using Outcome = ElevationResult::Outcome;

constexpr char startMarker[] = "quillbay-elevate: started\n";
constexpr int dismissed = 126;
constexpr int notAuthorized = 127;
constexpr int changed = 4;

QString firstLine(const QByteArray &text)
{
    return QString::fromLocal8Bit(text.left(text.indexOf('\n'))).trimmed();
}

} // namespace

bool hasStarted(const QByteArray &output)
{
    return output.startsWith(startMarker);
}

ElevationResult readAnswer(const PkexecEnd &end)
{
    const QString reason = firstLine(end.errors);
    if (hasStarted(end.output)) {
        if (end.crashed)
            return {Outcome::CommandFailed, QStringLiteral("It was ended by a signal")};
        if (end.exitCode == 0)
            return {Outcome::Done, {}};
        return {end.exitCode == changed ? Outcome::Changed : Outcome::CommandFailed, reason};
    }
    if (!end.crashed && end.exitCode == dismissed)
        return {Outcome::Refused, reason};
    if (!end.crashed && end.exitCode == notAuthorized) {
        if (end.errors.contains("No authentication agent"))
            return {Outcome::NoAgent, reason};
        return {end.errors.contains("Not authorized") ? Outcome::NotPermitted : Outcome::Unavailable, reason};
    }
    return {Outcome::Unavailable, reason};
}

} // namespace quillbay::platform
