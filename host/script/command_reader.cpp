#include "host/script/command_reader.h"

#include "host/script/script_error.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

bool isOfKind(const Json& json, MemberKind kind) {
    switch (kind) {
    case MemberKind::Text:
        return json.is_string();
    case MemberKind::TextOrNull:
        return json.is_string() || json.is_null();
    case MemberKind::Number:
        return json.is_number();
    case MemberKind::NumberOrNull:
        return json.is_number() || json.is_null();
    case MemberKind::Boolean:
        return json.is_boolean();
    case MemberKind::Object:
        return json.is_object();
    case MemberKind::ObjectOrNull:
        return json.is_object() || json.is_null();
    case MemberKind::List:
        return json.is_array();
    case MemberKind::Any:
        return true;
    }
    return false;
}

const char* kindInWords(MemberKind kind) {
    switch (kind) {
    case MemberKind::Text:
        return "a text";
    case MemberKind::TextOrNull:
        return "a text or null";
    case MemberKind::Number:
        return "a number";
    case MemberKind::NumberOrNull:
        return "a number or null";
    case MemberKind::Boolean:
        return "true or false";
    case MemberKind::Object:
        return "an object";
    case MemberKind::ObjectOrNull:
        return "an object or null";
    case MemberKind::List:
        return "a list";
    case MemberKind::Any:
        return "any value";
    }
    return "";
}

// "The command" becomes "the command".
std::string insideSentence(std::string what) {
    if (!what.empty() && what[0] >= 'A' && what[0] <= 'Z')
        what[0] = static_cast<char>(what[0] - 'A' + 'a');
    return what;
}

} // namespace

void checkMembers(const Json& object, std::span<const Member> members, const std::string& what) {
    for (const auto& [name, value] : object.items()) {
        const auto member = std::ranges::find(members, std::string_view(name), &Member::name);
        if (member == members.end())
            throw ScriptError(what + " has no member \"" + name + "\".");
        if (!isOfKind(value, member->kind))
            throw ScriptError("The member \"" + name + "\" of " + insideSentence(what) + " must be " +
                              kindInWords(member->kind) + ".");
    }
    for (const Member& member : members)
        if (member.required && !object.contains(member.name))
            throw ScriptError(what + " needs the member \"" + std::string(member.name) + "\".");
}

CommandReader::CommandReader(const Json& command, std::span<const Member> members) : command_(command) {
    std::vector<Member> known(members.begin(), members.end());
    known.push_back({"do", MemberKind::Text});
    known.push_back({"session", MemberKind::Text});
    checkMembers(command, known, "The command \"" + command["do"].get<std::string>() + "\"");
}

std::optional<std::string> CommandReader::textOrNone(std::string_view name) const {
    return has(name) && !isNull(name) ? std::optional(text(name)) : std::nullopt;
}

std::optional<double> CommandReader::numberOrNone(std::string_view name) const {
    return has(name) && !isNull(name) ? std::optional(at(name).get<double>()) : std::nullopt;
}

bool CommandReader::boolean(std::string_view name, bool otherwise) const {
    return has(name) ? at(name).get<bool>() : otherwise;
}

std::vector<std::string> CommandReader::texts(std::string_view name) const {
    std::vector<std::string> result;
    if (has(name))
        for (const Json& element : at(name)) {
            if (!element.is_string())
                throw ScriptError("The member \"" + std::string(name) + "\" must be a list of texts.");
            result.push_back(element);
        }
    return result;
}

} // namespace host
