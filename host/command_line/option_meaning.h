#pragma once

#include "host/jobs/job.h"
#include "printing/printer_description.h"

#include <optional>
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

inline constexpr int kFirstPriority = 100, kMostCopies = 9999; ///< of a job

/// nullopt where the text is no whole number between these.
[[nodiscard]] std::optional<int> numberBetween(std::string_view text, int least, int most);

/// Can a job be held until this: a print server's word for a time, or a time of the day, "18:30" or "18:30:15"?
[[nodiscard]] bool isHoldTime(std::string_view word);
/// The same, as sentences list it.
inline constexpr const char* kHoldTimes =
    "HH:MM (UTC), or indefinite, day-time, evening, night, weekend, second-shift, third-shift";

/// Takes the options that are fields of a job ("copies", "job-priority", "job-hold-until", "job-name") out of the list
/// and puts them into the request. Returns a sentence for each that cannot be used.
std::vector<std::string> takeJobFields(std::vector<JobOption>& options, JobRequest& request);

} // namespace host
