#pragma once

#include "imaging/picture.h"
#include "toolkit/alert.h"
#include "toolkit/notification_center.h"
#include "toolkit/text_measuring.h"
#include "toolkit/value.h"
#include "toolkit/view.h"

#include <algorithm>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

class CVPrintQualityPDE;

namespace framework {

/// Messages: an object's operations by name, with arguments and results whose kinds are checked when they are sent.
/// Actions named in view descriptions and the panel inspection send them. Each class lists its messages once.

struct MessageValue;
using MessageList = std::vector<MessageValue>;
using PanelList = std::vector<std::shared_ptr<CVPrintQualityPDE>>;

/// An argument or a result. Views are borrowed; null where there is none.
struct MessageValue {
    std::variant<toolkit::Value, toolkit::View*, imaging::Picture, toolkit::Font, MessageList, PanelList> content;
};

/// The result of sending, or the reason why it was not sent, in one sentence.
struct MessageResult {
    std::optional<MessageValue> value;
    std::string error;
};

/// How one kind of argument is read from a message value; nullopt where the value is of another kind.
template <typename Argument>
struct ArgumentReader;

template <>
struct ArgumentReader<bool> {
    static constexpr std::string_view kKind = "a Boolean";
    static std::optional<bool> read(const MessageValue& value) {
        const auto* plain = std::get_if<toolkit::Value>(&value.content);
        return plain != nullptr && (plain->as<bool>() || plain->as<std::int64_t>())
                   ? std::optional(plain->booleanReading())
                   : std::nullopt;
    }
};

template <>
struct ArgumentReader<double> {
    static constexpr std::string_view kKind = "a number";
    static std::optional<double> read(const MessageValue& value) {
        const auto* plain = std::get_if<toolkit::Value>(&value.content);
        return plain != nullptr && (plain->as<double>() || plain->as<std::int64_t>())
                   ? std::optional(plain->realReading())
                   : std::nullopt;
    }
};

template <>
struct ArgumentReader<int> {
    static constexpr std::string_view kKind = "a whole number";
    static std::optional<int> read(const MessageValue& value) {
        const std::optional<double> number = ArgumentReader<double>::read(value);
        return number && std::trunc(*number) == *number && std::abs(*number) <= 1e9 // well inside an int
                   ? std::optional(static_cast<int>(*number))
                   : std::nullopt;
    }
};

/// A text, or null for none.
template <>
struct ArgumentReader<std::optional<std::string>> {
    static constexpr std::string_view kKind = "a text or null";
    using Text = std::optional<std::string>;
    static std::optional<Text> read(const MessageValue& value) {
        const auto* plain = std::get_if<toolkit::Value>(&value.content);
        if (plain == nullptr)
            return std::nullopt;
        if (plain->isAbsent())
            return std::optional<Text>(std::in_place);
        const auto* text = plain->as<std::string>();
        return text == nullptr ? std::nullopt : std::optional<Text>(*text);
    }
};

template <>
struct ArgumentReader<std::string> {
    static constexpr std::string_view kKind = "a text";
    static std::optional<std::string> read(const MessageValue& value) {
        return ArgumentReader<std::optional<std::string>>::read(value).value_or(std::nullopt);
    }
};

/// The error slot of an operation that never fails: whatever is given for it is ignored.
struct ErrorSlot {};

template <>
struct ArgumentReader<ErrorSlot> {
    static constexpr std::string_view kKind = "anything";
    static std::optional<ErrorSlot> read(const MessageValue&) { return ErrorSlot(); }
};

/// A list of texts, or null for none.
template <>
struct ArgumentReader<std::optional<std::vector<std::string>>> {
    static constexpr std::string_view kKind = "a list of texts or null";
    using List = std::optional<std::vector<std::string>>;
    static std::optional<List> read(const MessageValue& value) {
        if (const auto* plain = std::get_if<toolkit::Value>(&value.content); plain != nullptr && plain->isAbsent())
            return List();
        const auto* elements = std::get_if<MessageList>(&value.content);
        if (elements == nullptr)
            return std::nullopt;
        List texts(std::in_place);
        for (const MessageValue& element : *elements) {
            const auto text = ArgumentReader<std::optional<std::string>>::read(element);
            if (!text || !*text)
                return std::nullopt;
            texts->push_back(**text);
        }
        return texts;
    }
};

/// A map of values, or null for none.
template <>
struct ArgumentReader<std::optional<toolkit::ValueMap>> {
    static constexpr std::string_view kKind = "an object or null";
    using Map = std::optional<toolkit::ValueMap>;
    static std::optional<Map> read(const MessageValue& value) {
        const auto* plain = std::get_if<toolkit::Value>(&value.content);
        if (plain == nullptr)
            return std::nullopt;
        if (plain->isAbsent())
            return std::optional<Map>(std::in_place);
        const auto* map = plain->as<toolkit::ValueMap>();
        return map == nullptr ? std::nullopt : std::optional<Map>(*map);
    }
};

/// A view of this kind, or null for none.
template <std::derived_from<toolkit::View> Kind>
struct ArgumentReader<Kind*> {
    static constexpr std::string_view kKind = "a control of the right kind, or null";
    static std::optional<Kind*> read(const MessageValue& value) {
        if (const auto* plain = std::get_if<toolkit::Value>(&value.content); plain != nullptr && plain->isAbsent())
            return static_cast<Kind*>(nullptr);
        toolkit::View* const* view = std::get_if<toolkit::View*>(&value.content);
        if (view == nullptr)
            return std::nullopt;
        Kind* const kind = dynamic_cast<Kind*>(*view);
        return kind == nullptr && *view != nullptr ? std::nullopt : std::optional(kind);
    }
};

template <>
struct ArgumentReader<std::vector<toolkit::View*>> {
    static constexpr std::string_view kKind = "a list of controls";
    static std::optional<std::vector<toolkit::View*>> read(const MessageValue& value) {
        const auto* elements = std::get_if<MessageList>(&value.content);
        if (elements == nullptr)
            return std::nullopt;
        std::vector<toolkit::View*> views;
        for (const MessageValue& element : *elements) {
            const auto view = ArgumentReader<toolkit::View*>::read(element);
            if (!view)
                return std::nullopt;
            views.push_back(*view);
        }
        return views;
    }
};

/// A picture, or null for none.
template <>
struct ArgumentReader<std::optional<imaging::Picture>> {
    static constexpr std::string_view kKind = "a picture or null";
    using Optional = std::optional<imaging::Picture>;
    static std::optional<Optional> read(const MessageValue& value) {
        if (const auto* plain = std::get_if<toolkit::Value>(&value.content); plain != nullptr && plain->isAbsent())
            return std::optional<Optional>(std::in_place);
        const auto* picture = std::get_if<imaging::Picture>(&value.content);
        return picture == nullptr ? std::nullopt : std::optional<Optional>(*picture);
    }
};

template <>
struct ArgumentReader<toolkit::Font> {
    static constexpr std::string_view kKind = "a font";
    static std::optional<toolkit::Font> read(const MessageValue& value) {
        const auto* font = std::get_if<toolkit::Font>(&value.content);
        return font == nullptr ? std::nullopt : std::optional(*font);
    }
};

/// A size: {"width","height"} or [width, height].
template <>
struct ArgumentReader<toolkit::Size> {
    static constexpr std::string_view kKind = "a size: {\"width\", \"height\"}";
    static std::optional<toolkit::Size> read(const MessageValue& value) {
        if (const auto* sides = std::get_if<MessageList>(&value.content)) {
            if (sides->size() != 2)
                return std::nullopt;
            const auto width = ArgumentReader<double>::read(sides->front());
            const auto height = ArgumentReader<double>::read(sides->back());
            return width && height ? std::optional(toolkit::Size{*width, *height}) : std::nullopt;
        }
        const auto map = ArgumentReader<std::optional<toolkit::ValueMap>>::read(value);
        if (!map || !*map)
            return std::nullopt;
        const auto width = ArgumentReader<double>::read({toolkit::valueInMap(**map, "width")});
        const auto height = ArgumentReader<double>::read({toolkit::valueInMap(**map, "height")});
        return width && height ? std::optional(toolkit::Size{*width, *height}) : std::nullopt;
    }
};

/// A notification: {"name", "info"}, or null for one without a name.
template <>
struct ArgumentReader<toolkit::Notification> {
    static constexpr std::string_view kKind = "a notification: {\"name\", \"info\"} or null";
    static std::optional<toolkit::Notification> read(const MessageValue& value) {
        const auto map = ArgumentReader<std::optional<toolkit::ValueMap>>::read(value);
        if (!map)
            return std::nullopt;
        toolkit::Notification notification;
        if (*map) {
            notification.name = toolkit::valueInMap(**map, "name").textReading();
            if (const auto* info = toolkit::valueInMap(**map, "info").as<toolkit::ValueMap>())
                notification.userInfo = *info;
        }
        return notification;
    }
};

/// How an alert was answered: {"button", "suppress"}, or null for its first button and no suppression.
template <>
struct ArgumentReader<toolkit::AlertAnswer> {
    static constexpr std::string_view kKind = "an alert: {\"button\", \"suppress\"} or null";
    static std::optional<toolkit::AlertAnswer> read(const MessageValue& value) {
        const auto map = ArgumentReader<std::optional<toolkit::ValueMap>>::read(value);
        if (!map)
            return std::nullopt;
        toolkit::AlertAnswer answer;
        if (*map) {
            answer.button = static_cast<int>(toolkit::valueInMap(**map, "button").integerReading());
            answer.suppressionButtonOn = toolkit::valueInMap(**map, "suppress").booleanReading();
        }
        return answer;
    }
};

/// How a result is packed. Numbers are taken as they are, never converted to another kind on the way.
template <typename Result>
requires std::constructible_from<toolkit::Value, Result> &&(!std::is_pointer_v<std::remove_cvref_t<Result>>)MessageValue
    messageValue(Result&& result) {
    return {toolkit::Value(std::forward<Result>(result))};
}
template <std::same_as<std::uint32_t> Word>
MessageValue messageValue(Word word) {
    return {toolkit::Value(std::int64_t{word})};
}
inline MessageValue messageValue(toolkit::View* view) {
    return view == nullptr ? MessageValue{toolkit::Value()} : MessageValue{view};
}
inline MessageValue messageValue(const PanelList& panels) {
    return {panels};
}
inline MessageValue messageValue(const std::vector<std::string>& texts) {
    MessageList list;
    for (const std::string& text : texts)
        list.push_back(messageValue(text));
    return {std::move(list)};
}
inline MessageValue messageValue(const imaging::Picture& picture) {
    return {picture};
}
template <typename Result>
MessageValue messageValue(const std::optional<Result>& result) {
    return result ? messageValue(*result) : MessageValue{toolkit::Value()};
}

/// One row of a class's message table.
template <typename Receiver>
struct Message {
    std::string_view name;
    MessageResult (*send)(Receiver& receiver, std::span<const MessageValue> arguments);
};

/// The number of arguments that a message name has labels for.
constexpr std::size_t argumentsInName(std::string_view name) {
    return static_cast<std::size_t>(std::ranges::count(name, ':'));
}

/// Reads the arguments, calls, and packs the result. Arguments left out at the end are null.
template <typename Result, typename... Arguments, typename Call>
MessageResult callWithArguments(std::span<const MessageValue> given, Call&& call) {
    if (given.size() > sizeof...(Arguments))
        return {.value = {},
                .error = "takes " + std::to_string(sizeof...(Arguments)) + " argument(s), not " +
                         std::to_string(given.size())};
    return [&]<std::size_t... Index>(std::index_sequence<Index...>)->MessageResult {
        [[maybe_unused]] const MessageValue none;
        const auto read = std::make_tuple(
            ArgumentReader<std::remove_cvref_t<Arguments>>::read(Index < given.size() ? given[Index] : none)...);
        std::string error;
        [[maybe_unused]] const auto isSound = [&](bool sound, std::size_t position, std::string_view kind) {
            if (!sound)
                error = "needs " + std::string(kind) + " as argument " + std::to_string(position + 1);
            return sound;
        };
        if (!(isSound(std::get<Index>(read).has_value(), Index,
                      ArgumentReader<std::remove_cvref_t<Arguments>>::kKind) &&
              ...))
            return {.value = {}, .error = std::move(error)};
        if constexpr (std::is_void_v<Result>) {
            call(*std::get<Index>(read)...);
            return {.value = MessageValue{toolkit::Value()}, .error = {}};
        } else {
            return {.value = messageValue(call(*std::get<Index>(read)...)), .error = {}};
        }
    }
    (std::index_sequence_for<Arguments...>());
}

template <typename Operation>
struct OperationTraits;
template <typename Class, typename Result, typename... Arguments>
struct OperationTraits<Result (Class::*)(Arguments...)> {
    static constexpr std::size_t kArguments = sizeof...(Arguments);
    template <typename Receiver, auto Operation>
    static MessageResult send(Receiver& receiver, std::span<const MessageValue> given) {
        return callWithArguments<Result, Arguments...>(given, [&](const auto&... arguments) -> Result {
            return (static_cast<Class&>(receiver).*Operation)(arguments...);
        });
    }
};
template <typename Class, typename Result, typename... Arguments>
struct OperationTraits<Result (Class::*)(Arguments...) const> : OperationTraits<Result (Class::*)(Arguments...)> {};

/// A table's row for an operation. Does not compile where the name has another number of labels than the operation has
/// arguments, or where an argument or the result is of a kind that no message carries.
template <typename Receiver, auto Operation>
consteval Message<Receiver> message(const char* name) {
    using Traits = OperationTraits<decltype(Operation)>;
    if (argumentsInName(name) != Traits::kArguments)
        throw "the name has another number of labels than the operation has arguments";
    return {name, &Traits::template send<Receiver, Operation>};
}

/// Sends the first message of this name in the tables; a message that none of them lists is an error.
template <typename Receiver>
MessageResult sendMessage(Receiver& receiver, std::span<const std::span<const Message<Receiver>>> tables,
                          std::string_view name, std::span<const MessageValue> arguments) {
    for (const auto& table : tables)
        if (const auto row = std::ranges::find(table, name, &Message<Receiver>::name); row != table.end()) {
            MessageResult result = row->send(receiver, arguments);
            if (!result.error.empty())
                result.error = "\"" + std::string(name) + "\" " + result.error + ".";
            return result;
        }
    return {.value = {}, .error = "There is no operation \"" + std::string(name) + "\"."};
}

} // namespace framework
