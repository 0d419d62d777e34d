#include "host/script/model_json.h"

#include "framework/CVPrintQualityPDE.h"
#include "toolkit/button.h"
#include "toolkit/image_view.h"
#include "toolkit/item_list.h"
#include "toolkit/json_values.h"
#include "toolkit/label.h"
#include "toolkit/number_field.h"
#include "toolkit/popup_list.h"
#include "toolkit/radio_matrix.h"
#include "toolkit/table_view.h"
#include "toolkit/window.h"

#include <charconv>
#include <cmath>
#include <cstdlib>

namespace host {
namespace {

const char* colorName(toolkit::TextColor color) {
    return color == toolkit::TextColor::Enabled ? "enabled" : "disabled";
}

Json textOrNull(const std::optional<std::string>& text) {
    return text ? Json(*text) : Json(nullptr);
}

Json jsonFromItems(const toolkit::PopUpList& popup) {
    Json items = Json::array();
    for (const auto& item : popup.items()) {
        items.push_back({{"title", item.title},
                         {"keyword", textOrNull(item.keyword)},
                         {"enabled", item.enabled},
                         {"picture", item.image ? textOrNull(item.image->name) : Json(nullptr)}});
    }
    return items;
}

// The members that one kind of model adds.
struct KindWriter {
    Json& json;

    void write(const toolkit::View& view) {
        if (const auto* popup = dynamic_cast<const toolkit::PopUpList*>(&view)) {
            begin("popup", popup);
            json["tag"] = popup->tag();
            json["selected"] = popup->selectedIndex();
            json["items"] = jsonFromItems(*popup);
        } else if (const auto* matrix = dynamic_cast<const toolkit::RadioMatrix*>(&view)) {
            begin("matrix", matrix);
            json["selected"] = matrix->selectedRow();
            Json cells = Json::array();
            for (const auto& cell : matrix->cells())
                cells.push_back({{"title", cell.title}, {"keyword", textOrNull(cell.keyword)}});
            json["cells"] = std::move(cells);
        } else if (const auto* box = dynamic_cast<const toolkit::CheckBox*>(&view)) {
            begin("check", box);
            json["state"] = box->state();
            json["title"] = box->title();
        } else if (const auto* button = dynamic_cast<const toolkit::PushButton*>(&view)) {
            begin("button", button);
            json["title"] = button->title();
        } else if (const auto* field = dynamic_cast<const toolkit::NumberField*>(&view)) {
            begin("field", field);
            json["tag"] = field->tag();
            json["value"] = jsonFromNumber(field->value());
            json["color"] = colorName(field->textColor());
        } else if (const auto* table = dynamic_cast<const toolkit::TableView*>(&view)) {
            begin("table", table);
            json["columnWidth"] = jsonFromNumber(table->columnWidth());
            json["hidesScrollBars"] = table->hidesScrollBarsAutomatically();
        } else if (const auto* label = dynamic_cast<const toolkit::Label*>(&view)) {
            begin("label", nullptr);
            json["text"] = label->text();
            json["color"] = colorName(label->textColor());
        } else if (const auto* titled = dynamic_cast<const toolkit::TitledBox*>(&view)) {
            begin("box", nullptr);
            json["title"] = titled->title();
        } else if (const auto* list = dynamic_cast<const toolkit::ItemList*>(&view)) {
            begin("list", nullptr);
            json["selected"] = list->selectedIndex();
            Json entries = Json::array();
            for (const auto& entry : list->entries())
                entries.push_back({{"label", entry.label}, {"id", entry.id}});
            json["entries"] = std::move(entries);
        } else if (const auto* tabs = dynamic_cast<const toolkit::TabView*>(&view)) {
            begin("tabs", nullptr);
            json["selected"] = tabs->selectedPage().empty() ? Json(nullptr) : Json(tabs->selectedPage());
        } else if (const auto* image = dynamic_cast<const toolkit::ImageView*>(&view)) {
            begin("image", nullptr);
            json["name"] = image->image() ? textOrNull(image->image()->name) : Json(nullptr);
            json["size"] = {image->image() ? image->image()->width : 0, image->image() ? image->image()->height : 0};
        } else if (const auto* window = dynamic_cast<const toolkit::Window*>(&view)) {
            begin("window", nullptr);
            json["title"] = window->title();
            json["width"] = jsonFromNumber(window->frame().width);
            json["height"] = jsonFromNumber(window->frame().height);
        } else {
            begin("view", nullptr);
        }
        const toolkit::Rect& frame = view.frame();
        if (frame != toolkit::Rect())
            json["frame"] = {{"x", jsonFromNumber(frame.x)},
                             {"y", jsonFromNumber(frame.y)},
                             {"width", jsonFromNumber(frame.width)},
                             {"height", jsonFromNumber(frame.height)}};
        json["visible"] = !view.isHidden();
    }

    void begin(const char* kind, const toolkit::Control* control) {
        json["kind"] = kind;
        if (control != nullptr)
            json["enabled"] = control->isEnabled();
    }
};

Json jsonFromVector(const std::array<double, 4>& vector) {
    return Json(vector);
}

} // namespace

Json jsonFromNumber(double number) {
    const toolkit::Value value(number);
    return std::trunc(number) == number && std::abs(number) < 1e15 ? Json(value.integerReading()) : Json(number);
}

Json jsonFromSingle(float number) {
    char digits[32] = {};
    std::to_chars(digits, digits + sizeof digits - 1, number);
    return std::strtod(digits, nullptr);
}

Json jsonFromView(const toolkit::View& view) {
    Json json = Json::object();
    KindWriter{json}.write(view);
    return json;
}

Json jsonFromViews(const toolkit::LoadedViews* views) {
    Json json = Json::object();
    if (views != nullptr)
        for (const auto& view : views->views())
            json[view->name()] = jsonFromView(*view);
    return json;
}

Json jsonFromFilter(const imaging::Filter& filter) {
    if (const auto* controls = std::get_if<imaging::ColorControls>(&filter))
        return {{"filter", "CIColorControls"},
                {"brightness", jsonFromSingle(controls->brightness)},
                {"contrast", jsonFromSingle(controls->contrast)},
                {"saturation", jsonFromSingle(controls->saturation)}};
    if (const auto* matrix = std::get_if<imaging::ColorMatrix>(&filter))
        return {{"filter", "CIColorMatrix"},
                {"R", jsonFromVector(matrix->r)},
                {"G", jsonFromVector(matrix->g)},
                {"B", jsonFromVector(matrix->b)}};
    const auto& monochrome = std::get<imaging::ColorMonochrome>(filter);
    return {{"filter", "CIColorMonochrome"}, {"color", Json(monochrome.color)}, {"intensity", monochrome.intensity}};
}

Json jsonFromChain(const imaging::Picture& picture) {
    Json chain = Json::array();
    for (const imaging::Filter& filter : picture.filters())
        chain.push_back(jsonFromFilter(filter));
    return chain;
}

Json jsonFromMessageValue(const framework::MessageValue& value) {
    if (const auto* plain = std::get_if<toolkit::Value>(&value.content))
        return Json(toolkit::jsonFromValue(*plain));
    if (toolkit::View* const* view = std::get_if<toolkit::View*>(&value.content))
        return *view == nullptr ? Json(nullptr) : Json{{"control", (*view)->name()}};
    if (const auto* picture = std::get_if<imaging::Picture>(&value.content))
        return {{"picture",
                 {{"source", picture->sourceName()},
                  {"size", {picture->extent().width, picture->extent().height}},
                  {"chain", jsonFromChain(*picture)}}}};
    if (const auto* font = std::get_if<toolkit::Font>(&value.content))
        return {{"font", font->role}, {"size", font->size}};
    Json list = Json::array();
    if (const auto* elements = std::get_if<framework::MessageList>(&value.content))
        for (const framework::MessageValue& element : *elements)
            list.push_back(jsonFromMessageValue(element));
    if (const auto* panels = std::get_if<framework::PanelList>(&value.content))
        for (const auto& panel : *panels)
            list.push_back(panel->panelName());
    return list;
}

} // namespace host
