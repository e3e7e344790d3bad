#pragma once

#include "uninstaller/ResidualCategory.h"

#include <QString>

#include <array>

namespace quillbay {

/// Where a scan for residual files is. Between the first and the last, one stage for each step, in order.
enum class ScanStage {
    idle,
    bundle,
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
    done,
};

/// The text that a screen shows meanwhile.
QString rawValue(ScanStage stage);

/// One step of a scan.
struct ScanStep
{
    ScanStage stage;
    double progress; ///< Of the whole scan when the step begins, 0 to 1.
    ResidualCategory category;
};

/// All of them, in the order in which they run.
inline constexpr std::array<ScanStep, 12> scanSteps{{
    {ScanStage::bundle, 0.05, ResidualCategory::appBundle},
    {ScanStage::preferences, 0.15, ResidualCategory::preferences},
    {ScanStage::appSupport, 0.28, ResidualCategory::appSupport},
    {ScanStage::caches, 0.40, ResidualCategory::caches},
    {ScanStage::logs, 0.50, ResidualCategory::logs},
    {ScanStage::containers, 0.62, ResidualCategory::containers},
    {ScanStage::groupContainers, 0.70, ResidualCategory::groupContainers},
    {ScanStage::launchAgents, 0.78, ResidualCategory::launchAgents},
    {ScanStage::crashReports, 0.85, ResidualCategory::crashReports},
    {ScanStage::savedState, 0.90, ResidualCategory::savedState},
    {ScanStage::extensions, 0.94, ResidualCategory::extensions},
    {ScanStage::receipts, 0.97, ResidualCategory::receipts},
}};

} // namespace quillbay
