#pragma once

#include <QString>

#include <optional>
#include <string>

namespace host {

inline constexpr const char* kPageRangesOption = "page-ranges"; ///< of a job

/// The value of the job option "page-ranges" for what a user typed: numbers and ascending ranges, "1-4, 7". An empty
/// text for all pages; nullopt for what names no pages.
std::optional<std::string> pageRanges(const QString& typed);

} // namespace host
