#pragma once

#include <QHashFunctions>
#include <QString>

#include <array>

namespace quillbay {

/// What a residual file is to its application, in the order in which a review lists it. `other` is never
/// found by a scan.
enum class ResidualCategory {
    appBundle,
    preferences,
    appSupport,
    caches,
    logs,
    containers,
    groupContainers,
    launchAgents,
    crashReports,
    savedState,
    extensions,
    receipts,
    other,
};

inline constexpr std::array allResidualCategories = {
    ResidualCategory::appBundle,       ResidualCategory::preferences,  ResidualCategory::appSupport,
    ResidualCategory::caches,          ResidualCategory::logs,         ResidualCategory::containers,
    ResidualCategory::groupContainers, ResidualCategory::launchAgents, ResidualCategory::crashReports,
    ResidualCategory::savedState,      ResidualCategory::extensions,   ResidualCategory::receipts,
    ResidualCategory::other,
};

/// The display name, which is the identifier as well.
QString rawValue(ResidualCategory category);
/// Name of the symbol that stands for it.
QString systemIconName(ResidualCategory category);
/// Hexadecimal colour text. Some categories share one.
QString accentColor(ResidualCategory category);

inline size_t qHash(ResidualCategory category, size_t seed = 0) noexcept
{
    return ::qHash(int(category), seed);
}

} // namespace quillbay
