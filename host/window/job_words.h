#pragma once

#include "host/jobs/job_status.h"
#include "host/window/window_texts.h"

namespace host {

/// What JobStatus::words says, in this language. What the server says in its own words stays as it is.
QString statusInWords(const JobStatus& status, const Language& language);

} // namespace host
