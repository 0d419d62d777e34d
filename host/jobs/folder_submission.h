#pragma once

#include "host/jobs/job.h"

#include <string>

namespace host {

/// Prints to a folder, which is made if it is missing: a copy of the document, and beside it a ticket, "ticket.json",
/// an object with "title", "copies", "document" (the copy's name) and "options" (an object of names and values).
///
/// Nothing that stands in the folder is ever replaced: where a name is taken, the copy or the ticket gets a number
/// ("picture-2.pdf", "ticket-2.json"). Both appear whole or not at all, the ticket last; after a failure neither is
/// there. Any option is written down, also one that a queue would refuse, if its texts are UTF-8.
[[nodiscard]] JobResult submitToFolder(const std::string& folder, const JobRequest& request,
                                       const JobProgress& progress = {});

} // namespace host
