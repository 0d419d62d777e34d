#include "host/jobs/presets.h"

#include "host/jobs/job_text.h"
#include "host/jobs/option_encoding.h"
#include "host/jobs/option_parsing.h"
#include "toolkit/files.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <pwd.h>
#include <sstream>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMaximumPresetNameBytes = 127;
constexpr std::size_t kMaximumLineBytes = 8191;  // the library reads no more of a line
constexpr std::uintmax_t kLargestFile = 4 << 20; // bytes
constexpr std::string_view kUnusableInNames = " /#='\"\\";
constexpr std::string_view kDest = "Dest", kDefault = "Default";
constexpr const char* kSystemFolder = "/etc/cups";

std::string systemError() {
    return std::generic_category().message(errno);
}

/// A line of the file: "Dest Queue/instance name=value ...", or any other, which stays as it is.
struct Line {
    std::string text;
    bool isDefault = false;
    std::string destination; ///< "Queue" or "Queue/instance"; empty: another kind of line
};

Line readLine(std::string text) {
    std::istringstream words(text);
    std::string keyword, destination;
    words >> keyword >> destination;
    Line line{.text = std::move(text), .isDefault = equalWithoutCase(keyword, kDefault), .destination = {}};
    if (line.isDefault || equalWithoutCase(keyword, kDest))
        line.destination = std::move(destination);
    return line;
}

/// The options of a line, as they stand in it.
std::string_view optionsOf(const Line& line) {
    const std::string_view text(line.text);
    const std::size_t end = text.find(line.destination, text.find_first_of(" \t")) + line.destination.size();
    return text.substr(std::min(end, text.size()));
}

std::string lineOf(std::string_view keyword, const std::string& destination, std::string_view options) {
    return std::string(keyword) + " " + destination + std::string(options);
}

/// The file, taken apart. Of a missing one there are no lines.
using Lines = std::vector<Line>;

auto lineFor(Lines& lines, const std::string& destination) {
    return std::ranges::find_if(lines,
                                [&](const Line& line) { return equalWithoutCase(line.destination, destination); });
}

/// Empty where neither the environment nor the system knows the user's home.
fs::path homeFolder() {
    if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0')
        return home;
    const passwd* user = ::getpwuid(::getuid());
    return user == nullptr ? "" : user->pw_dir;
}

/// The file that keeps these presets.
fs::path presetsFile(PresetOwner owner) {
    if (owner == PresetOwner::Everyone) {
        const char* folder = std::getenv("CUPS_SERVERROOT");
        return fs::path(folder != nullptr && *folder != '\0' ? folder : kSystemFolder) / "lpoptions";
    }
    const fs::path home = homeFolder();
    return home.empty() ? fs::path() : home / ".cups" / "lpoptions";
}

std::string readLines(const fs::path& file, Lines& lines) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (status.type() == fs::file_type::not_found)
        return {};
    const std::string what = "The presets in \"" + file.string() + "\" cannot be read: ";
    if (!fs::is_regular_file(status))
        return what + (error ? error.message() : "it is no regular file") + ".";
    if (fs::file_size(file, error) > kLargestFile)
        return what + "it is larger than 4 MB.";
    std::ifstream stream(file);
    for (std::string text; std::getline(stream, text);)
        lines.push_back(readLine(std::move(text)));
    return stream.eof() ? "" : what + systemError() + ".";
}

/// Applies the change to the lines of the owner's file. The change returns an empty text, or why it is refused.
std::string changeLines(PresetOwner owner, const std::function<std::string(Lines&)>& change) {
    if (owner == PresetOwner::User && ::geteuid() == 0)
        return "Presets of root are meant for everyone: keep them in the system's own file by --system, or work as a "
               "plain user.";
    fs::path file = presetsFile(owner);
    if (file.empty())
        return "Presets have no place: the user's home is not known; set HOME.";
    const std::string what = "The presets in \"" + file.string() + "\" cannot be changed: ";
    if (owner == PresetOwner::User && ::mkdir(file.parent_path().c_str(), 0700) != 0 && errno != EEXIST)
        return what + systemError() + ".";
    std::error_code unresolved;
    if (fs::path target = fs::canonical(file, unresolved); !unresolved)
        file = std::move(target); // a link stays one
    const toolkit::FileDescriptor folder(::open(file.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder.isOpen() || ::flock(folder.number(), LOCK_EX) != 0)
        return what + systemError() + ".";
    Lines lines;
    if (std::string failure = readLines(file, lines); !failure.empty())
        return failure;
    if (std::string refusal = change(lines); !refusal.empty())
        return refusal;
    std::string content;
    for (const Line& line : lines)
        content += line.text + "\n";
    struct stat former {};
    const mode_t permissions = ::stat(file.c_str(), &former) == 0 ? former.st_mode & 0777U : 0644U;
    if (const int error = toolkit::replaceFile(file, content, permissions); error != 0)
        return what + std::generic_category().message(error) + ".";
    return "";
}

std::string refusalFor(const PresetName& preset) {
    if (preset.queue.empty() || preset.queue.find_first_of(kUnusableInNames) != std::string::npos ||
        hasControlCharacters(preset.queue) || !isUtf8(preset.queue))
        return "There can be no presets for a queue " + quotedText(preset.queue) + ": choose another queue.";
    return refusalForPresetName(preset.name);
}

bool isCopies(const JobOption& option) {
    return option.name == "copies" && !option.value.empty() &&
           option.value.find_first_not_of("0123456789") == std::string::npos;
}

std::string destinationOf(const PresetName& preset) {
    return preset.queue + "/" + preset.name;
}

std::string noSuchPreset(const PresetName& preset) {
    return "The queue " + quotedText(preset.queue) + " has no preset " + quotedText(preset.name) +
           (preset.owner == PresetOwner::User ? " of yours: choose one that it has."
                                              : " of everyone's: choose one that it has.");
}

/// What stands on a line before its comment.
std::string withoutComment(std::string_view text) {
    std::string plain;
    for (std::size_t at = 0; at < text.size() && text[at] != '#'; ++at) {
        if (text[at] == '\\' && at + 1 < text.size() && text[at + 1] == '#')
            ++at;
        plain += text[at];
    }
    return plain;
}

/// Adds the presets of the lines to those of the files that were read before.
void addPresets(const Lines& lines, const std::string& queue, PresetOwner owner, std::vector<Preset>& presets) {
    for (const Line& each : lines) {
        const Line line = readLine(withoutComment(each.text));
        const std::size_t slash = line.destination.find('/');
        const std::string name = slash == std::string::npos ? "" : line.destination.substr(slash + 1);
        if (!equalWithoutCase(std::string_view(line.destination).substr(0, slash), queue) ||
            !refusalForPresetName(name).empty())
            continue;
        auto preset =
            std::ranges::find_if(presets, [&](const Preset& known) { return equalWithoutCase(known.name.name, name); });
        if (preset == presets.end())
            preset = presets.insert(presets.end(), Preset{});
        preset->name = {.queue = queue, .name = name, .owner = owner};
        for (JobOption& option : parsedOptions(std::string(optionsOf(line)))) {
            std::erase_if(preset->options, [&](const JobOption& known) { return known.name == option.name; });
            preset->options.push_back(std::move(option));
        }
        std::ranges::sort(preset->options, {}, &JobOption::name);
    }
}

} // namespace

std::string refusalForPresetName(const std::string& name) {
    if (name.empty())
        return "A preset needs a name: give it one.";
    if (name.size() > kMaximumPresetNameBytes || name.find_first_of(kUnusableInNames) != std::string::npos ||
        hasControlCharacters(name) || !isUtf8(name))
        return "There can be no preset " + quotedText(name) +
               ": its name must have no blanks, quotes, \"/\", \"#\" or \"=\", and at most 127 bytes; change it.";
    return {};
}

PresetList listPresets(const std::string& queue) {
    PresetList list;
    for (const PresetOwner owner : {PresetOwner::Everyone, PresetOwner::User}) {
        const fs::path file = presetsFile(owner);
        Lines lines;
        if (std::string failure = file.empty() ? "" : readLines(file, lines); !failure.empty())
            list.error = std::move(failure);
        else
            addPresets(lines, queue, owner, list.presets);
    }
    std::ranges::sort(list.presets, {}, [](const Preset& each) -> const std::string& { return each.name.name; });
    return list;
}

std::string savePreset(const PresetName& preset, const std::vector<JobOption>& options) {
    if (std::string refusal = refusalFor(preset); !refusal.empty())
        return refusal;
    std::vector<JobOption> sent; // the number of copies is no option of a job, but one of a preset
    std::ranges::copy_if(options, std::back_inserter(sent), [](const JobOption& each) { return !isCopies(each); });
    if (std::string refusal = refusalForOptions(sent); !refusal.empty())
        return refusal;
    std::string texts;
    for (const JobOption& option : options)
        texts += " " + optionText(option);
    for (std::size_t at = 0; (at = texts.find('#', at)) != std::string::npos; at += 2)
        texts.insert(at, 1, '\\'); // or the rest of the line were a comment
    const std::string destination = destinationOf(preset);
    if (kDefault.size() + 1 + destination.size() + texts.size() > kMaximumLineBytes)
        return "The preset " + quotedText(preset.name) +
               " has more options than a line of lpoptions can hold: choose less.";
    return changeLines(preset.owner, [&](Lines& lines) {
        const auto line = lineFor(lines, destination);
        if (line == lines.end())
            lines.push_back({.text = lineOf(kDest, destination, texts), .destination = destination});
        else
            line->text = lineOf(line->isDefault ? kDefault : kDest, destination, texts);
        return std::string();
    });
}

std::string renamePreset(const PresetName& preset, const std::string& newName) {
    if (std::string refusal = refusalFor(preset); !refusal.empty())
        return refusal;
    if (std::string refusal = refusalForPresetName(newName); !refusal.empty())
        return refusal;
    return changeLines(preset.owner, [&](Lines& lines) -> std::string {
        const auto line = lineFor(lines, destinationOf(preset));
        if (line == lines.end())
            return noSuchPreset(preset);
        const std::string destination = preset.queue + "/" + newName;
        if (const auto other = lineFor(lines, destination); other != lines.end() && other != line)
            return "The queue " + quotedText(preset.queue) + " has a preset " + quotedText(newName) +
                   " already: choose another name, or delete that one first.";
        line->text = lineOf(line->isDefault ? kDefault : kDest, destination, optionsOf(*line));
        return {};
    });
}

std::string deletePreset(const PresetName& preset) {
    if (std::string refusal = refusalFor(preset); !refusal.empty())
        return refusal;
    return changeLines(preset.owner, [&](Lines& lines) {
        const auto line = lineFor(lines, destinationOf(preset));
        if (line == lines.end())
            return noSuchPreset(preset);
        lines.erase(line);
        return std::string();
    });
}

} // namespace host
