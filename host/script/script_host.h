#pragma once

#include "host/script/dialog.h"

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace host {

/// The scripted host: carries out commands, one JSON object a line, and answers each with one. Any number of dialogs
/// by name. Commands are documented in `docs/scripted-host.md`.
class ScriptHost {
public:
    /// Makes the user of a new dialog.
    using UserMaker = std::function<std::unique_ptr<ScriptUser>()>;

    explicit ScriptHost(
        std::filesystem::path defaultBundle, UserMaker makeUser = [] { return std::make_unique<ScriptUser>(); })
        : defaultBundle_(std::move(defaultBundle)), makeUser_(std::move(makeUser)) {}

    /// Whether the line holds a command: it is not empty and no comment.
    static bool isCommand(std::string_view line);
    /// The answer to one line, without a line end. Never throws.
    [[nodiscard]] std::string answerLine(std::string_view line);
    /// Whether the last answer was an error.
    [[nodiscard]] bool lastFailed() const { return lastFailed_; }

private:
    using Handler = void (ScriptHost::*)(const CommandReader& command, Json& answer);
    struct Command {
        std::string_view name;
        Handler handler;
        std::span<const Member> members;
    };
    static const Command kCommands[];

    [[nodiscard]] Json answer(std::string_view line);
    /// The dialog that the command is for. Throws ScriptError where it is not open.
    [[nodiscard]] Dialog& dialog(const CommandReader& command);
    [[nodiscard]] CVPrintQualityPDE& panel(const CommandReader& command);
    /// The panel's model of this name. Throws ScriptError.
    [[nodiscard]] toolkit::View& control(CVPrintQualityPDE& panel, const std::string& name);
    /// The control of a user's action: visible and enabled.
    template <typename Kind>
    [[nodiscard]] Kind& usableControl(const CommandReader& command);
    [[nodiscard]] std::shared_ptr<PlugIn> plugInForAsking();

    /// Arguments of a message; loose controls made for the call are kept in `loose`.
    framework::MessageValue messageArgument(const Json& json, Dialog* dialog, CVPrintQualityPDE* panel,
                                            std::vector<std::unique_ptr<toolkit::View>>& loose);
    std::vector<framework::MessageValue> messageArguments(const CommandReader& command, Dialog* dialog,
                                                          CVPrintQualityPDE* panel,
                                                          std::vector<std::unique_ptr<toolkit::View>>& loose);

    void open(const CommandReader& command, Json& answer);
    void view(const CommandReader& command, Json& answer);
    void show(const CommandReader& command, Json& answer);
    void hide(const CommandReader& command, Json& answer);
    void choose(const CommandReader& command, Json& answer);
    void check(const CommandReader& command, Json& answer);
    void press(const CommandReader& command, Json& answer);
    void adjust(const CommandReader& command, Json& answer);
    void mark(const CommandReader& command, Json& answer);
    void paper(const CommandReader& command, Json& answer);
    void setting(const CommandReader& command, Json& answer);
    void settings(const CommandReader& command, Json& answer);
    void refuse(const CommandReader& command, Json& answer);
    void raise(const CommandReader& command, Json& answer);
    void answers(const CommandReader& command, Json& answer);
    void window(const CommandReader& command, Json& answer);
    void tracking(const CommandReader& command, Json& answer);
    void close(const CommandReader& command, Json& answer);
    void notify(const CommandReader& command, Json& answer);
    void save(const CommandReader& command, Json& answer);
    void restore(const CommandReader& command, Json& answer);
    void summary(const CommandReader& command, Json& answer);
    void help(const CommandReader& command, Json& answer);
    void print(const CommandReader& command, Json& answer);
    void state(const CommandReader& command, Json& answer);
    void hostState(const CommandReader& command, Json& answer);
    void preview(const CommandReader& command, Json& answer);
    void send(const CommandReader& command, Json& answer);
    void ask(const CommandReader& command, Json& answer);
    void transform(const CommandReader& command, Json& answer);
    void put(const CommandReader& command, Json& answer);

    std::filesystem::path defaultBundle_;
    UserMaker makeUser_;
    std::map<std::string, std::unique_ptr<Dialog>> dialogs_;
    bool lastFailed_ = false;
};

} // namespace host
