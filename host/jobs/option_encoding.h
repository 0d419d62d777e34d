#pragma once

#include "host/jobs/job.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

typedef struct _ipp_attribute_s ipp_attribute_t;
typedef struct _ipp_s ipp_t; // both the printing library's own, kept out of this header's readers

namespace host {

/// The sheets before and after a job: one name or two with a comma between. Alone among the names that begin with
/// "job-" it is an option like any other.
inline constexpr std::string_view kJobSheets = "job-sheets";

/// The most bytes of one option's value that a print server takes.
inline constexpr std::size_t kMaximumOptionValueBytes = 32'000;

/// The most bytes of all options of a job together: they reach each filter as one argument of a program.
inline constexpr std::size_t kMaximumOptionBytes = 100'000;

/// Empty if every option would reach a queue's filters under its name and with its value, else the sentence that
/// refuses the first one that would not. Boolean words arrive as Booleans, in lower case.
std::string refusalForOptions(const std::vector<JobOption>& options);

/// Adds the options to the request's job group. They must have passed refusalForOptions().
void addOptions(ipp_t* request, const std::vector<JobOption>& options);

/// The MIME type under which the document is sent: that of the option "document-format", or the raw one where "raw" is
/// on, or else the one that lets the server find out.
std::string documentFormat(const std::vector<JobOption>& options);

/// The attribute's values, other than Booleans, as a filter reads them, with commas between.
std::string attributeText(ipp_attribute_t* attribute);

} // namespace host
