#pragma once

#include "toolkit/export.h"
#include "toolkit/value.h"

#include <nlohmann/json_fwd.hpp>

namespace toolkit {

/// JSON and values, in both directions. A whole JSON number is an integer, any other a real; integers beyond 64 bits
/// are reals. What is nested deeper than 64 lists and maps is left out.
CV_TOOLKIT_EXPORT Value valueFromJson(const nlohmann::json& json);
CV_TOOLKIT_EXPORT nlohmann::json jsonFromValue(const Value& value);

} // namespace toolkit
