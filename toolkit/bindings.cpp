#include "toolkit/bindings.h"

#include "toolkit/button.h"
#include "toolkit/label.h"
#include "toolkit/number_field.h"
#include "toolkit/value_transformer.h"

#include <algorithm>

namespace toolkit {

Binding::Binding(KeyValueStore& store, std::vector<std::string> keys) : store_(store), keys_(std::move(keys)) {
    store_.addObserver(*this);
}

Binding::~Binding() {
    store_.removeObserver(*this);
}

void Binding::storeDidWrite(KeyValueStore&, std::string_view key) {
    if (std::ranges::find(keys_, key) != keys_.end())
        show();
}

ValueBinding::ValueBinding(KeyValueStore& store, BoundControl& control, std::string key)
    : Binding(store, {std::move(key)}), control_(control) {
    control_.setValueWriter([this](const Value& value) { this->store().setValueForKey(value, keys().front()); });
    show();
}

void ValueBinding::show() {
    const Value& value = store().valueForKey(keys().front());
    if (auto* field = dynamic_cast<NumberField*>(&control_))
        field->setValue(value.realReading());
    else if (auto* box = dynamic_cast<CheckBox*>(&control_))
        box->setOn(value.booleanReading());
}

EnabledBinding::EnabledBinding(KeyValueStore& store, Control& control, std::vector<std::string> keys)
    : Binding(store, std::move(keys)), control_(control) {
    show();
}

void EnabledBinding::show() {
    control_.setEnabled(
        std::ranges::all_of(keys(), [&](const std::string& key) { return store().valueForKey(key).booleanReading(); }));
}

TextColorBinding::TextColorBinding(KeyValueStore& store, View& view, std::vector<std::string> keys,
                                   std::string transformer)
    : Binding(store, std::move(keys)), view_(view), transformer_(std::move(transformer)) {
    show();
}

void TextColorBinding::show() {
    const auto transformer = ValueTransformer::transformerNamed(transformer_);
    const auto isEnabledColor = [&](const std::string& key) {
        const Value& value = store().valueForKey(key);
        return transformer == nullptr ? value.booleanReading()
                                      : transformer->transformedValue(value) == TransformedValue(TextColor::Enabled);
    };
    const TextColor color = std::ranges::all_of(keys(), isEnabledColor) ? TextColor::Enabled : TextColor::Disabled;
    if (auto* label = dynamic_cast<Label*>(&view_))
        label->setTextColor(color);
    else if (auto* field = dynamic_cast<NumberField*>(&view_))
        field->setTextColor(color);
}

} // namespace toolkit
