#pragma once

#include "framework/message.h"
#include "toolkit/value.h"

#include <optional>
#include <string>
#include <vector>

namespace framework_tests {

using framework::MessageList;
using framework::MessageValue;

inline MessageValue none() {
    return {toolkit::Value()};
}
inline MessageValue plain(toolkit::Value value) {
    return {std::move(value)};
}
inline MessageValue modelOf(toolkit::View& view) {
    return {&view};
}

/// An argument that an operation takes, and one of another kind; none where it takes any.
struct Argument {
    MessageValue right;
    std::optional<MessageValue> wrong;
};

/// One message with its arguments.
struct MessageRow {
    std::string name;
    std::vector<Argument> arguments;

    [[nodiscard]] MessageList rightArguments() const {
        MessageList list;
        for (const Argument& argument : arguments)
            list.push_back(argument.right);
        return list;
    }
    [[nodiscard]] MessageList withWrongArgument(std::size_t index) const {
        MessageList list = rightArguments();
        list[index] = *arguments[index].wrong;
        return list;
    }
};

} // namespace framework_tests
