#pragma once

// Private to this room: how the answer to a question about a job is read.

#include "host/jobs/job_status.h"
#include "host/jobs/server_connection.h"

namespace host {

/// Asks for a job; the answer may be a refusal, or null.
[[nodiscard]] Message askForJob(Connection& connection, int jobId);

/// Reads a good answer, and asks for the queue where that says more of a job that is not over.
[[nodiscard]] JobStatus readStatus(Connection& connection, ipp_t* job);

} // namespace host
