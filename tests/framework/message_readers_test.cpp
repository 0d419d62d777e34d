// How arguments are read from message values, and that nothing of another kind is read.

#include "framework/message.h"
#include "framework/outlet.h"
#include "tests/framework/message_table.h"
#include "toolkit/button.h"
#include "toolkit/popup_list.h"

#include <gtest/gtest.h>

namespace framework_tests {
namespace {

using framework::ArgumentReader;
using framework::MessageResult;
using toolkit::Value;
using toolkit::ValueList;
using toolkit::ValueMap;

template <typename Kind>
std::optional<Kind> read(const MessageValue& value) {
    return ArgumentReader<Kind>::read(value);
}

/// A value of each kind that is no number, text, Boolean, or null.
std::vector<MessageValue> oddities(toolkit::View& view) {
    return {plain(ValueList{}),
            modelOf(view),
            {imaging::Picture(nullptr, "")},
            {toolkit::Font::control()},
            {framework::PanelList{}}};
}

class Arguments : public testing::Test {
protected:
    toolkit::PopUpList popup{"popup"};
};

TEST_F(Arguments, OfABooleanAreBooleansAndWholeNumbers) {
    EXPECT_EQ(read<bool>(plain(true)), true);
    EXPECT_EQ(read<bool>(plain(false)), false);
    EXPECT_EQ(read<bool>(plain(2)), true);
    EXPECT_EQ(read<bool>(plain(0)), false);
    for (const Value& other : {Value("YES"), Value(1.0), Value(), Value(ValueMap{})})
        EXPECT_EQ(read<bool>(plain(other)), std::nullopt) << other.textReading();
    for (const auto& other : oddities(popup))
        EXPECT_EQ(read<bool>(other), std::nullopt);
}

TEST_F(Arguments, OfANumberAreNumbers) {
    EXPECT_EQ(read<double>(plain(1.5)), 1.5);
    EXPECT_EQ(read<double>(plain(-3)), -3.0);
    for (const Value& other : {Value("1.5"), Value(true), Value(), Value(ValueMap{})})
        EXPECT_EQ(read<double>(plain(other)), std::nullopt) << other.textReading();
    for (const auto& other : oddities(popup))
        EXPECT_EQ(read<double>(other), std::nullopt);
}

TEST_F(Arguments, OfAWholeNumberHaveNoFractionAndFit) {
    EXPECT_EQ(read<int>(plain(7)), 7);
    EXPECT_EQ(read<int>(plain(-7.0)), -7);
    EXPECT_EQ(read<int>(plain(1'000'000'000)), 1'000'000'000);
    for (const Value& other : {Value(7.5), Value(std::int64_t{5'000'000'000}), Value(std::int64_t{-5'000'000'000}),
                               Value("7"), Value(true), Value()})
        EXPECT_EQ(read<int>(plain(other)), std::nullopt) << other.textReading();
}

TEST_F(Arguments, OfATextAreTexts) {
    using Optional = std::optional<std::string>;
    EXPECT_EQ(read<std::string>(plain("text")), "text");
    EXPECT_EQ(read<std::string>(plain("")), "");
    EXPECT_EQ(read<Optional>(plain("text")), Optional("text"));
    EXPECT_EQ(read<std::string>(none()), std::nullopt);
    const std::optional<Optional> null = read<Optional>(none());
    ASSERT_TRUE(null);
    EXPECT_EQ(*null, std::nullopt);
    for (const Value& other : {Value(7), Value(true), Value(ValueMap{})}) {
        EXPECT_EQ(read<std::string>(plain(other)), std::nullopt) << other.textReading();
        EXPECT_EQ(read<Optional>(plain(other)), std::nullopt) << other.textReading();
    }
    for (const auto& other : oddities(popup))
        EXPECT_EQ(read<Optional>(other), std::nullopt);
}

TEST_F(Arguments, OfAListOfTextsAreAllTexts) {
    using List = std::optional<std::vector<std::string>>;
    EXPECT_EQ(read<List>({MessageList{plain("a"), plain("b")}}), List({"a", "b"}));
    EXPECT_EQ(read<List>({MessageList{}}), List(std::in_place));
    const std::optional<List> null = read<List>(none());
    ASSERT_TRUE(null);
    EXPECT_EQ(*null, std::nullopt);
    EXPECT_EQ(read<List>({MessageList{plain("a"), none()}}), std::nullopt);
    EXPECT_EQ(read<List>({MessageList{plain("a"), plain(7)}}), std::nullopt);
    EXPECT_EQ(read<List>(plain("a")), std::nullopt);
}

TEST_F(Arguments, OfAMapAreMaps) {
    using Map = std::optional<ValueMap>;
    EXPECT_EQ(read<Map>(plain(ValueMap{{"a", 1}})), Map(ValueMap{{"a", 1}}));
    const std::optional<Map> null = read<Map>(none());
    ASSERT_TRUE(null);
    EXPECT_EQ(*null, std::nullopt);
    EXPECT_EQ(read<Map>(plain("a")), std::nullopt);
    for (const auto& other : oddities(popup))
        EXPECT_EQ(read<Map>(other), std::nullopt);
}

TEST_F(Arguments, OfAModelAreOfItsKind) {
    EXPECT_EQ(read<toolkit::View*>(modelOf(popup)), &popup);
    EXPECT_EQ(read<toolkit::PopUpList*>(modelOf(popup)), &popup);
    EXPECT_EQ(read<toolkit::CheckBox*>(modelOf(popup)), std::nullopt);
    EXPECT_EQ(read<toolkit::CheckBox*>(none()), static_cast<toolkit::CheckBox*>(nullptr));
    EXPECT_EQ(read<toolkit::View*>(plain("popup")), std::nullopt);
    EXPECT_EQ(read<toolkit::View*>({imaging::Picture(nullptr, "")}), std::nullopt);
}

TEST_F(Arguments, OfAListOfModelsAreModelsOrNull) {
    using Views = std::vector<toolkit::View*>;
    EXPECT_EQ(read<Views>({MessageList{modelOf(popup), none()}}), (Views{&popup, nullptr}));
    EXPECT_EQ(read<Views>({MessageList{plain("popup")}}), std::nullopt);
    EXPECT_EQ(read<Views>(modelOf(popup)), std::nullopt);
    EXPECT_EQ(read<Views>(none()), std::nullopt);
}

TEST_F(Arguments, OfAPictureArePictures) {
    using Optional = std::optional<imaging::Picture>;
    const std::optional<Optional> picture = read<Optional>({imaging::Picture(nullptr, "")});
    ASSERT_TRUE(picture);
    EXPECT_TRUE(picture->has_value());
    const std::optional<Optional> null = read<Optional>(none());
    ASSERT_TRUE(null);
    EXPECT_FALSE(null->has_value());
    EXPECT_FALSE(read<Optional>(plain("picture")));
    EXPECT_FALSE(read<Optional>(modelOf(popup)));
}

TEST_F(Arguments, OfAFontAreFonts) {
    const auto font = read<toolkit::Font>({toolkit::Font{.role = "control", .size = 11}});
    ASSERT_TRUE(font);
    EXPECT_EQ(font->size, 11);
    EXPECT_FALSE(read<toolkit::Font>(none()));
    EXPECT_FALSE(read<toolkit::Font>(plain("control")));
}

TEST_F(Arguments, OfASizeAreTwoNumbers) {
    const toolkit::Size size = {.width = 300, .height = 20.5};
    EXPECT_EQ(read<toolkit::Size>({MessageList{plain(300), plain(20.5)}}), size);
    EXPECT_EQ(read<toolkit::Size>(plain(ValueMap{{"width", 300}, {"height", 20.5}})), size);
    EXPECT_EQ(read<toolkit::Size>({MessageList{plain(300)}}), std::nullopt);
    EXPECT_EQ(read<toolkit::Size>({MessageList{plain(300), plain(20), plain(1)}}), std::nullopt);
    EXPECT_EQ(read<toolkit::Size>({MessageList{plain(300), plain("20")}}), std::nullopt);
    EXPECT_EQ(read<toolkit::Size>(plain(ValueMap{{"width", 300}})), std::nullopt);
    EXPECT_EQ(read<toolkit::Size>(plain(ValueMap{{"height", 300}})), std::nullopt);
    EXPECT_EQ(read<toolkit::Size>(none()), std::nullopt);
    EXPECT_EQ(read<toolkit::Size>(plain(300)), std::nullopt);
}

TEST_F(Arguments, OfANotificationAreItsNameAndItsInfo) {
    const auto full = read<toolkit::Notification>(plain(ValueMap{{"name", "Name"}, {"info", ValueMap{{"a", 1}}}}));
    ASSERT_TRUE(full);
    EXPECT_EQ(full->name, "Name");
    EXPECT_EQ(full->userInfo, (ValueMap{{"a", 1}}));
    const auto bare = read<toolkit::Notification>(none());
    ASSERT_TRUE(bare);
    EXPECT_EQ(bare->name, "");
    EXPECT_EQ(bare->userInfo, std::nullopt);
    EXPECT_FALSE(read<toolkit::Notification>(plain("Name")));
}

TEST_F(Arguments, OfAnAlertAreItsButtonAndItsSuppression) {
    const auto full = read<toolkit::AlertAnswer>(plain(ValueMap{{"button", 1}, {"suppress", true}}));
    ASSERT_TRUE(full);
    EXPECT_EQ(full->button, 1);
    EXPECT_TRUE(full->suppressionButtonOn);
    const auto bare = read<toolkit::AlertAnswer>(none());
    ASSERT_TRUE(bare);
    EXPECT_EQ(bare->button, 0);
    EXPECT_FALSE(bare->suppressionButtonOn);
    EXPECT_FALSE(read<toolkit::AlertAnswer>(plain(1)));
}

TEST_F(Arguments, OfAnErrorAreIgnored) {
    EXPECT_TRUE(read<framework::ErrorSlot>(none()));
    EXPECT_TRUE(read<framework::ErrorSlot>(modelOf(popup)));
}

/// A receiver of the tests' own, with messages in two tables.
struct Receiver {
    std::vector<std::string> heard;
    void hear(const std::optional<std::string>& text) { heard.push_back(text.value_or("null")); }
    std::optional<std::string> nothing() { return std::nullopt; }
    void later() { heard.emplace_back("later"); }
};

class Tables : public testing::Test {
protected:
    static constexpr framework::Message<Receiver> kFirst[] = {
        framework::message<Receiver, &Receiver::hear>("hear:"),
        framework::message<Receiver, &Receiver::nothing>("nothing"),
    };
    static constexpr framework::Message<Receiver> kSecond[] = {
        framework::message<Receiver, &Receiver::later>("nothing"),
        framework::message<Receiver, &Receiver::later>("later"),
    };

    MessageResult send(std::string_view name, const MessageList& arguments = {}) {
        const std::span<const framework::Message<Receiver>> tables[] = {kFirst, kSecond};
        return framework::sendMessage<Receiver>(receiver, tables, name, arguments);
    }

    Receiver receiver;
};

TEST_F(Tables, AreSearchedInTheirOrder) {
    send("nothing");
    EXPECT_TRUE(receiver.heard.empty()); // the first table's
    send("later");
    EXPECT_EQ(receiver.heard, std::vector<std::string>{"later"});
}

TEST_F(Tables, HandArgumentsOverAndAnswersBack) {
    send("hear:", {plain("text")});
    send("hear:");
    EXPECT_EQ(receiver.heard, (std::vector<std::string>{"text", "null"}));
    const MessageResult result = send("nothing");
    ASSERT_TRUE(result.value);
    EXPECT_TRUE(std::get<Value>(result.value->content).isAbsent());
}

TEST_F(Tables, NameWhatTheyCannotSend) {
    EXPECT_EQ(send("unknown").error, "There is no operation \"unknown\".");
    EXPECT_EQ(send("hear:", {plain(7)}).error, "\"hear:\" needs a text or null as argument 1.");
    EXPECT_EQ(send("hear:", {none(), none()}).error, "\"hear:\" takes 1 argument(s), not 2.");
    EXPECT_TRUE(receiver.heard.empty());
}

TEST(MessageNames, CountTheirArguments) {
    EXPECT_EQ(framework::argumentsInName("willShow"), 0U);
    EXPECT_EQ(framework::argumentsInName("revertUI:forKey:"), 2U);
}

/// A class with outlets of two kinds.
struct Owner {
    toolkit::PopUpList* list = nullptr;
    toolkit::View* any = nullptr;
};

TEST(Outlets, ConnectModelsOfTheirKindOnly) {
    constexpr auto list = framework::outlet<Owner, &Owner::list>("list");
    constexpr auto any = framework::outlet<Owner, &Owner::any>("any");
    Owner owner;
    toolkit::PopUpList popup("popup");
    toolkit::CheckBox box("box");
    EXPECT_EQ(list.name, "list");
    EXPECT_TRUE(list.connect(owner, popup));
    EXPECT_EQ(owner.list, &popup);
    EXPECT_FALSE(list.connect(owner, box));
    EXPECT_EQ(owner.list, &popup); // as it was
    EXPECT_TRUE(any.connect(owner, box));
    EXPECT_EQ(owner.any, &box);
}

} // namespace
} // namespace framework_tests
