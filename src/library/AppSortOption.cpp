#include "library/AppSortOption.h"

namespace quillbay {

QString rawValue(AppSortOption option)
{
    switch (option) {
    case AppSortOption::nameAscending:
        return QStringLiteral("A to Z");
    case AppSortOption::nameDescending:
        return QStringLiteral("Z to A");
    case AppSortOption::category:
        return QStringLiteral("Category");
    case AppSortOption::recentlyUsed:
        return QStringLiteral("Recently Used");
    }
    Q_UNREACHABLE();
}

std::optional<AppSortOption> appSortOption(QStringView text)
{
    for (const AppSortOption option : allAppSortOptions) {
        if (text == rawValue(option))
            return option;
    }
    return std::nullopt;
}

} // namespace quillbay
