#pragma once

#include "host/jobs/job.h"
#include "printing/printer_description.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// What an option of a command line is for a printer.
enum class OptionKind {
    Choice,        ///< a choice of the PPD, by its own keywords
    PrintSetting,  ///< an entry of the job's print settings, which the panels read
    Attribute,     ///< for the print server or a filter: sent as it stands
    UnknownOption, ///< sent as it stands too, though nobody may know it
    UnknownChoice, ///< the PPD has the option and not the choice: left out
    Unusable,      ///< left out, for the reason that is given
};

struct MeantOption {
    OptionKind kind;
    JobOption option;   ///< in the PPD's words for a choice, else as it was given
    std::string reason; ///< of what is unknown or unusable: one sentence
};

/// The keywords of a PPD's options that tell what is installed in the printer. They are set by its administrator, never
/// by a job.
[[nodiscard]] std::set<std::string> installableOptions(std::string_view ppdText);

/// Translates one option: standard names for paper and two-sided printing become the PPD's own where it has them, so
/// that they are sent once and in one form; one "media" may name a paper, a source and a type.
[[nodiscard]] std::vector<MeantOption> meaningOf(const JobOption& given,
                                                 const printing::PrinterDescription& description,
                                                 const std::set<std::string>& installable);

/// Takes the options that are fields of a job ("copies", "job-priority", "job-hold-until", "job-name") out of the list
/// and puts them into the request. Returns a sentence for each that cannot be used.
std::vector<std::string> takeJobFields(std::vector<JobOption>& options, JobRequest& request);

} // namespace host
