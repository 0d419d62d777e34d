#include "host/command_line/reports.h"

#include "host/jobs/job_text.h"

#include <nlohmann/json.hpp>

namespace host {
namespace {

nlohmann::ordered_json jsonOf(const std::vector<JobOption>& options) {
    nlohmann::ordered_json json = nlohmann::ordered_json::object();
    for (const JobOption& option : options)
        json[option.name] = option.value;
    return json;
}

void writeJson(std::ostream& stream, const nlohmann::ordered_json& json) {
    stream << json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << "\n";
}

} // namespace

void writeOptions(std::ostream& stream, const PlannedJob& job) {
    stream << "destination: " << job.destination << "\ntitle: " << job.title << "\ncopies: " << job.copies << "\n";
    for (const JobOption& option : job.options)
        stream << option.name << "=" << plainText(option.value, option.value.size()) << "\n";
}

void writeOptionsAsJson(std::ostream& stream, const PlannedJob& job) {
    writeJson(stream, {{"destination", job.destination},
                       {"title", job.title},
                       {"copies", job.copies},
                       {"options", jsonOf(job.options)}});
}

void writePresets(std::ostream& stream, const std::vector<Queue>& queues) {
    for (const Queue& each : queues)
        if (!each.instance.empty())
            stream << each.name << "/" << plainText(each.instance, each.instance.size()) << "\n";
}

void writePresetsAsJson(std::ostream& stream, const std::vector<Queue>& queues) {
    nlohmann::ordered_json presets = nlohmann::ordered_json::array();
    for (const Queue& each : queues)
        if (!each.instance.empty())
            presets.push_back({{"queue", each.name}, {"name", each.instance}, {"options", jsonOf(each.options)}});
    writeJson(stream, presets);
}

void writeExplanation(std::ostream& stream, const PreparedJob& job) {
    if (!job.hasPanels())
        stream << "This printer has none of the panels' options: the choices are sent as they are.\n";
    for (const JobStep& step : job.steps()) {
        stream << step.what << (step.refusal.empty() ? "" : ": refused: " + step.refusal) << "\n";
        for (const std::string& change : step.changes)
            stream << "    " << change << "\n";
    }
}

void writeSummary(std::ostream& stream, PreparedJob& job) {
    const PreparedJob::Summary summary = job.summary();
    if (summary.empty())
        stream << "This printer has none of the panels' options.\n";
    for (const auto& [panel, lines] : summary) {
        stream << panel << "\n";
        for (const auto& [title, value] : lines)
            stream << "    " << title << ": " << value << "\n";
    }
}

} // namespace host
