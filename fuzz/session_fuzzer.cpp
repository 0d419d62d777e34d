// A session of the scripted host: its lines, one command each. What a command would write or send stays in a folder.

#include "fuzz/scratch_folder.h"
#include "host/script/script_host.h"
#include "host/session/program_files.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

using nlohmann::json;

constexpr int kCommands = 64; // the longest of the seeds is shorter

/// A folder to run in, which has a document and small printers under the sample printers' names (a session opens them
/// again and again), and receives jobs and preferences.
void prepareFolder() {
    const std::filesystem::path& folder = fuzz::scratchFolder();
    std::filesystem::current_path(folder);
    std::filesystem::create_directories("resources/models");
    for (const char* name : {"corvane-a3.ppd", "corvane-a4.ppd", "corvane-office.ppd", "corvane-mirror.ppd"})
        std::filesystem::create_symlink(CV_SOURCE_DIR "/fuzz/seeds/ppd/small.ppd",
                                        std::filesystem::path("resources/models") / name);
    fuzz::writeFile("document.pdf", "%PDF-1.4\n");
    ::setenv("XDG_CONFIG_HOME", (folder / "preferences").c_str(), 1);
}

/// The line, its outward paths led into the folder.
std::string contained(std::string_view line) {
    json command = json::parse(line, nullptr, false);
    if (!command.is_object())
        return std::string(line);
    const bool prints = command.value("do", json()) == "print", previews = command.value("do", json()) == "preview";
    if (!prints && !previews)
        return std::string(line);
    if (command.contains("file") && command["file"].is_string())
        command["file"] = prints ? "document.pdf" : "out.png";
    if (command.contains("to") && command["to"].is_string())
        command["to"] = "out";
    if (command.contains("to") && command["to"].is_object())
        command["to"]["server"] = "/nowhere";
    return command.dump(-1, ' ', false, json::error_handler_t::replace);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    prepareFolder();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::filesystem::path bundle = host::pathOfPlugInBundle();
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    host::ScriptHost scriptHost(bundle);
    for (int count = 0; count < kCommands && !rest.empty();) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const std::string line = contained(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (!host::ScriptHost::isCommand(line))
            continue;
        ++count;
        const json answer = json::parse(scriptHost.answerLine(line), nullptr, false);
        const bool sound = answer.is_object() && answer.contains("ok") && answer["ok"].is_boolean() &&
                           answer["ok"] != scriptHost.lastFailed() && answer.contains("error") != answer["ok"];
        if (!sound) {
            std::fprintf(stderr, "an answer that is none: %s\n", line.c_str());
            std::abort();
        }
    }
    std::filesystem::remove_all("out");
    std::filesystem::remove_all("preferences");
    return 0;
}
