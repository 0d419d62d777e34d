#pragma once

#include "framework/CVPrintQualityPDE.h"

#include <string>

namespace host {

/// The control in which a panel shows the option; null where it has none, or was not shown yet.
[[nodiscard]] toolkit::View* controlForOption(CVPrintQualityPDE& panel, const std::string& option);

/// Uses the control as a user does, so that its action runs. False, and nothing happened, where it does not offer the
/// choice now: it is hidden or disabled, or the item is.
bool useControl(toolkit::View* view, const std::string& choice);

} // namespace host
