#include "tests/color_settings/color_panel.h"

#include <ostream>
#include <stdexcept>

namespace toolkit {

void PrintTo(const Value& value, std::ostream* stream) {
    if (value.isAbsent()) {
        *stream << "absent";
    } else if (const auto* list = value.as<ValueList>()) {
        *stream << '[';
        for (const Value& element : *list) {
            PrintTo(element, stream);
            *stream << ' ';
        }
        *stream << ']';
    } else if (const auto* map = value.as<ValueMap>()) {
        *stream << '{';
        for (const auto& [key, element] : *map) {
            *stream << key << ": ";
            PrintTo(element, stream);
            *stream << ' ';
        }
        *stream << '}';
    } else {
        *stream << (value.as<std::string>()    ? "text "
                    : value.as<std::int64_t>() ? "integer "
                    : value.as<double>()       ? "real "
                                               : "Boolean ")
                << value.textReading();
    }
}

} // namespace toolkit

namespace color_settings_tests {

std::string adjustmentOptions(const std::string& defaultChoice) {
    std::string lines;
    for (const std::string_view key : kAdjustmentKeys)
        lines += tests::ppdOption(std::string(key), "Text of " + std::string(key), defaultChoice,
                                  {defaultChoice + "/" + defaultChoice});
    return lines;
}

ColorPanelTest::ColorPanelTest() {
    useHost(tests::samplePpd("corvane-a3"));
}

void ColorPanelTest::useBundle(std::map<std::string, std::string, std::less<>> strings, toolkit::ValueMap info,
                               std::vector<std::string> removedInfo) {
    host->reopenBundle({.languages = host->languages,
                        .localize = false,
                        .strings = std::move(strings),
                        .info = std::move(info),
                        .removedInfo = std::move(removedInfo)});
}

void ColorPanelTest::makePanel() {
    panel = std::make_shared<CVInkColorSettingPDE>();
    if (!panel->initWithCallback(host.get()))
        throw std::runtime_error("no panel");
    host->takeLog();
}

void ColorPanelTest::makePanelWithView() {
    makePanel();
    if (panel->panelView() == nullptr)
        throw std::runtime_error("no view");
}

void ColorPanelTest::showPanel() {
    makePanelWithView();
    panel->restoreValuesAndReturnError();
    panel->willShow();
    host->takeLog();
}

framework::MessageValue ColorPanelTest::send(std::string_view name,
                                             const std::vector<framework::MessageValue>& arguments) {
    const framework::MessageResult result = panel->sendMessage(name, arguments);
    EXPECT_EQ(result.error, "");
    return result.value.value_or(framework::MessageValue());
}

toolkit::Value ColorPanelTest::sendForValue(std::string_view name,
                                            const std::vector<framework::MessageValue>& arguments) {
    const framework::MessageValue result = send(name, arguments);
    const auto* value = std::get_if<toolkit::Value>(&result.content);
    EXPECT_NE(value, nullptr) << "\"" << name << "\" gives no plain value";
    return value == nullptr ? toolkit::Value() : *value;
}

std::optional<imaging::Picture> ColorPanelTest::sendForPicture(std::string_view name,
                                                               const std::vector<framework::MessageValue>& arguments) {
    const framework::MessageValue result = send(name, arguments);
    const auto* picture = std::get_if<imaging::Picture>(&result.content);
    return picture == nullptr ? std::nullopt : std::optional(*picture);
}

toolkit::Value ColorPanelTest::field(std::string_view name) const {
    return toolkit::valueInMap(inspection.fieldsOfPanel(*panel), name);
}

toolkit::Value ColorPanelTest::pending(std::string_view key) const {
    return toolkit::valueInMap(panel->outputBin(), key);
}

toolkit::Value ColorPanelTest::stored(std::string_view key) const {
    const toolkit::Value entries = field("effectContent");
    return entries.isAbsent() ? toolkit::Value() : toolkit::valueInMap(*entries.as<toolkit::ValueMap>(), key);
}

std::string ColorPanelTest::setting(std::string_view key) const {
    const auto value = host->settings ? host->settings->valueForKey(key) : std::nullopt;
    if (!value)
        return "(none)";
    const auto* text = std::get_if<std::string>(&*value);
    return text == nullptr ? "(no text)" : *text;
}

void ColorPanelTest::setFlags(std::uint32_t bits, bool on) {
    const std::uint32_t flags = on ? panel->imageModeFlag() | bits : panel->imageModeFlag() & ~bits;
    std::string error;
    ASSERT_TRUE(inspection.setFieldOfPanel(*panel, "imageModeFlag", "", std::int64_t{flags}, error)) << error;
}

void ColorPanelTest::setPending(std::string_view key, const toolkit::Value& value) {
    std::string error;
    ASSERT_TRUE(inspection.setFieldOfPanel(*panel, "outputBin", std::string(key), value, error)) << error;
}

void ColorPanelTest::setStored(std::string_view key, const toolkit::Value& value) {
    std::string error;
    ASSERT_TRUE(inspection.setFieldOfPanel(*panel, "effectContent", std::string(key), value, error)) << error;
}

void ColorPanelTest::setSetting(std::string_view key, printing::SettingValue value) {
    host->settings->setValueForKey(std::move(value), key);
}

void ColorPanelTest::tell(std::optional<toolkit::ValueMap> userInfo) {
    toolkit::NotificationCenter::defaultCenter().post(
        {.name = std::string(kNotificationName), .sender = host.get(), .userInfo = std::move(userInfo)});
}

std::vector<imaging::Filter> ColorPanelTest::shownFilters() const {
    const auto shown = preview().shown;
    if (!shown) {
        ADD_FAILURE() << "no picture is shown";
        return {};
    }
    return shown->filters();
}

imaging::ColorMonochrome grey() {
    return {.color = {1, 1, 1}, .intensity = 1};
}

imaging::Picture pictureNamed(const std::string& name) {
    const auto bitmap = std::make_shared<imaging::Bitmap>(1, 1);
    for (int channel = 0; channel < 3; ++channel)
        bitmap->row(0)[channel] = 128;
    bitmap->row(0)[3] = 255;
    return {bitmap, name};
}

} // namespace color_settings_tests
