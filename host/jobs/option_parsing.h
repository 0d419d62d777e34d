#pragma once

#include "host/jobs/job.h"

#include <string>
#include <vector>

namespace host {

/// Reads options as a command line writes them: "name=value other='a b' flag noflag", with quotes and backslashes. A
/// bare name is "true", one that begins with "no" is the rest of it, "false". They come ordered by name, of equal names
/// the last.
[[nodiscard]] std::vector<JobOption> parsedOptions(const std::string& text);

/// The option as servers write it for their filters, and lpoptions files for everyone; parsedOptions() reads it back.
[[nodiscard]] std::string optionText(const JobOption& option);

/// The page size that a PPD would name for a standard media name ("iso_a4_210x297mm": "A4"); empty where there is none.
[[nodiscard]] std::string pageSizeOfMedia(const std::string& media);

} // namespace host
