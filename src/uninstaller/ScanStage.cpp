#include "uninstaller/ScanStage.h"

namespace quillbay {

QString rawValue(ScanStage stage)
{
    switch (stage) {
    case ScanStage::idle:
        return QStringLiteral("Ready");
    case ScanStage::bundle:
        return QStringLiteral("Locating app bundle\u2026");
    case ScanStage::preferences:
        return QStringLiteral("Scanning preferences\u2026");
    case ScanStage::appSupport:
        return QStringLiteral("Scanning application support\u2026");
    case ScanStage::caches:
        return QStringLiteral("Scanning caches\u2026");
    case ScanStage::logs:
        return QStringLiteral("Scanning logs\u2026");
    case ScanStage::containers:
        return QStringLiteral("Scanning containers\u2026");
    case ScanStage::groupContainers:
        return QStringLiteral("Scanning group containers\u2026");
    case ScanStage::launchAgents:
        return QStringLiteral("Scanning launch agents\u2026");
    case ScanStage::crashReports:
        return QStringLiteral("Scanning crash reports\u2026");
    case ScanStage::savedState:
        return QStringLiteral("Scanning saved state\u2026");
    case ScanStage::extensions:
        return QStringLiteral("Scanning extensions\u2026");
    case ScanStage::receipts:
        return QStringLiteral("Scanning receipts\u2026");
    case ScanStage::done:
        return QStringLiteral("Scan complete");
    }
    Q_UNREACHABLE();
}

} // namespace quillbay
