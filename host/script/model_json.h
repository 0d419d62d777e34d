#pragma once

#include "framework/message.h"
#include "framework/panel_inspection.h"
#include "toolkit/view.h"
#include "toolkit/view_description.h"

#include <nlohmann/json.hpp>

namespace host {

using Json = nlohmann::ordered_json;

/// A model as the command `state` tells it.
Json jsonFromView(const toolkit::View& view);
/// Every model of a panel's view by its name; empty before the view is made.
Json jsonFromViews(const toolkit::LoadedViews* views);
/// A picture's filters, in the order in which the data flows through them.
Json jsonFromChain(const imaging::Picture& picture);
Json jsonFromFilter(const imaging::Filter& filter);
Json jsonFromMessageValue(const framework::MessageValue& value);
/// Whole numbers without a decimal point.
Json jsonFromNumber(double number);
/// A value with reals of single precision in their shortest form.
Json jsonFromSingle(float number);

} // namespace host
