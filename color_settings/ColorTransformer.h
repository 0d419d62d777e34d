#pragma once

#include "toolkit/value_transformer.h"

/// Turns a Boolean into a text colour, for the bindings of the Color Settings panel's labels and fields.
class ColorTransformer : public toolkit::ValueTransformer {
public:
    /// The name that it is registered under.
    static constexpr std::string_view kName = "CVColorTransformer";

    [[nodiscard]] std::string_view transformedValueClass() const override { return "color"; }
    [[nodiscard]] bool allowsReverseTransformation() const override { return false; }
    /// The enabled colour for what is there and true, the disabled one for anything else.
    [[nodiscard]] toolkit::TransformedValue transformedValue(const toolkit::Value& value) const override;
    /// Always nothing.
    [[nodiscard]] toolkit::TransformedValue reverseTransformedValue(const toolkit::Value& value) const override;
};
