#pragma once

#include "host/command_line/prepared_job.h"
#include "host/jobs/job.h"
#include "host/jobs/queues.h"

#include <ostream>
#include <string>
#include <vector>

namespace host {

/// What would be sent.
struct PlannedJob {
    std::string destination; ///< "Queue", "Queue/instance", a folder, or empty
    std::string title;
    int copies = 1;
    std::vector<JobOption> options;
};

void writeOptions(std::ostream& stream, const PlannedJob& job);
/// One object: "destination", "title", "copies", and "options" with names and values.
void writeOptionsAsJson(std::ostream& stream, const PlannedJob& job);
void writeExplanation(std::ostream& stream, const PreparedJob& job);
/// One line "Queue/name" for each preset among the queues.
void writePresets(std::ostream& stream, const std::vector<Queue>& queues);
/// A list of objects: "queue", "name", and "options" with names and values.
void writePresetsAsJson(std::ostream& stream, const std::vector<Queue>& queues);
void writeSummary(std::ostream& stream, PreparedJob& job);

} // namespace host
