#pragma once

#include "platform/PackageManager.h"

namespace quillbay::platform {

/// Has a removing command run as administrator. Without a way to do so it is not authorised.
inline RemovalResult removeElevated(const ElevatedRun &runElevated, const QStringList &command)
{
    if (!runElevated)
        return {RemovalOutcome::NotAuthorised,
                QStringLiteral("there is no way to ask for the authority of an administrator")};
    const ElevatedResult result = runElevated(command);
    switch (result.outcome) {
    case ElevatedOutcome::Done:
        return {RemovalOutcome::Removed, {}};
    case ElevatedOutcome::Declined:
        return {RemovalOutcome::Declined, result.text};
    case ElevatedOutcome::NotAuthorised:
        return {RemovalOutcome::NotAuthorised, result.text};
    case ElevatedOutcome::Failed:
        break;
    }
    return {RemovalOutcome::Failed, result.text};
}

} // namespace quillbay::platform
