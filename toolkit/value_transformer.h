#pragma once

#include "toolkit/export.h"
#include "toolkit/value.h"
#include "toolkit/view.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace toolkit {

/// What a transformer makes of a value: nothing, another value, or a text colour.
using TransformedValue = std::variant<std::monostate, Value, TextColor>;

/// Turns a stored value into what a control shows; bindings name it.
class CV_TOOLKIT_EXPORT ValueTransformer {
public:
    virtual ~ValueTransformer();

    /// "color" or "value".
    [[nodiscard]] virtual std::string_view transformedValueClass() const = 0;
    [[nodiscard]] virtual bool allowsReverseTransformation() const = 0; ///< whether there is a way back
    [[nodiscard]] virtual TransformedValue transformedValue(const Value& value) const = 0;        ///< of any value
    [[nodiscard]] virtual TransformedValue reverseTransformedValue(const Value& value) const = 0; ///< absent if none

    /// Registers under a name for the whole process; a transformer registered earlier under it is replaced.
    static void registerTransformer(std::shared_ptr<const ValueTransformer> transformer, std::string_view name);
    /// Null where nothing is registered under the name.
    static std::shared_ptr<const ValueTransformer> transformerNamed(std::string_view name);
};

} // namespace toolkit
