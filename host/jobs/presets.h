#pragma once

#include "host/jobs/job.h"

#include <string>
#include <vector>

namespace host {

/// Presets are named sets of options. Each is kept as an instance of its queue in lpoptions, where every print command
/// and dialog finds it ("lp -d Office/photo"); listQueues() reads them, with the file of everyone's before the user's.
///
/// A change touches the preset's own line and, of a renamed or deleted default, the user's default; every other line
/// stays as it stands, also of queues that no server has now. The file is replaced whole or not at all, under a lock.
/// Everything given is untrusted. Each operation returns an empty text, or the sentence that says why nothing changed.

/// Whose preset it is.
enum class PresetOwner {
    User,     ///< this user's, in ~/.cups/lpoptions; refused for root, whose presets would be meant for everyone
    Everyone, ///< in the system's lpoptions: mostly only root may write it
};

struct PresetName {
    std::string queue;
    std::string name; ///< without blanks, quotes, "/", "#" and "=", at most 127 bytes
    PresetOwner owner = PresetOwner::User;
};

/// Empty where a preset may have this name, else the sentence that refuses it.
[[nodiscard]] std::string refusalForPresetName(const std::string& name);

/// A preset as it is kept.
struct Preset {
    PresetName name;
    std::vector<JobOption> options; ///< without those of its queue, ordered by name
};

/// The presets of a queue, or why they cannot be read.
struct PresetList {
    std::vector<Preset> presets; ///< ordered by name
    std::string error;           ///< one sentence
};
/// Reads the files and asks no server, so it does not wait. A preset that stands in both is the user's, with the
/// options of both; the user's go before.
[[nodiscard]] PresetList listPresets(const std::string& queue);

/// Keeps these options under the name, instead of those that it had.
[[nodiscard]] std::string savePreset(const PresetName& preset, const std::vector<JobOption>& options);
/// Refused where there is no such preset, or one of the new name.
[[nodiscard]] std::string renamePreset(const PresetName& preset, const std::string& newName);
/// Refused where there is no such preset.
[[nodiscard]] std::string deletePreset(const PresetName& preset);

} // namespace host
