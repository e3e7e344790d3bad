#pragma once

#include <QHashFunctions>
#include <QString>

#include <array>
#include <optional>

namespace quillbay {

/// The orders of the All Apps view, in the order in which they are listed.
enum class AppSortOption { nameAscending, nameDescending, category, recentlyUsed };

inline constexpr std::array allAppSortOptions = {AppSortOption::nameAscending, AppSortOption::nameDescending,
                                                 AppSortOption::category, AppSortOption::recentlyUsed};

/// "A to Z", "Z to A", "Category", "Recently Used": the menu label and the stored form in one.
QString rawValue(AppSortOption option);
std::optional<AppSortOption> appSortOption(QStringView rawValue);

inline size_t qHash(AppSortOption option, size_t seed = 0) noexcept
{
    return qHash(rawValue(option), seed);
}

} // namespace quillbay
