#include "color_settings/ColorTransformer.h"

toolkit::TransformedValue ColorTransformer::transformedValue(const toolkit::Value& value) const {
    return value.booleanReading() ? toolkit::TextColor::Enabled : toolkit::TextColor::Disabled;
}

toolkit::TransformedValue ColorTransformer::reverseTransformedValue(const toolkit::Value&) const {
    return {};
}
