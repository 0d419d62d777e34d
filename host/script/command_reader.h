#pragma once

#include "host/script/model_json.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// What a member of a command may hold.
enum class MemberKind { Text, TextOrNull, Number, NumberOrNull, Boolean, Object, ObjectOrNull, List, Any };

/// A member that a command knows. Every command knows "do" and "session" as well.
struct Member {
    std::string_view name;
    MemberKind kind;
    bool required = false;
};

/// One command's members, checked against what it knows. Throws ScriptError with one sentence for what is wrong.
class CommandReader {
public:
    CommandReader(const Json& command, std::span<const Member> members);

    [[nodiscard]] bool has(std::string_view name) const { return command_.contains(name); }
    /// Whether the member is there and null.
    [[nodiscard]] bool isNull(std::string_view name) const { return has(name) && at(name).is_null(); }
    /// The member must be there, of the kind that was declared.
    [[nodiscard]] const Json& at(std::string_view name) const { return command_[std::string(name)]; }
    [[nodiscard]] std::string text(std::string_view name) const { return at(name).get<std::string>(); }
    /// nullopt where it is left out or null.
    [[nodiscard]] std::optional<std::string> textOrNone(std::string_view name) const;
    [[nodiscard]] std::optional<double> numberOrNone(std::string_view name) const;
    [[nodiscard]] bool boolean(std::string_view name, bool otherwise) const;
    /// Empty where it is left out. Throws where an element is no text.
    [[nodiscard]] std::vector<std::string> texts(std::string_view name) const;

private:
    const Json& command_;
};

/// Checks an object that stands inside a command in the same way.
void checkMembers(const Json& object, std::span<const Member> members, const std::string& what);

} // namespace host
