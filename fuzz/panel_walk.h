#pragma once

#include "host/session/session.h"

#include <filesystem>
#include <memory>
#include <string_view>

namespace fuzz {

/// Opens the PPD's text with the built bundle, its defaults marked; null where one of the two is refused. Alerts are
/// answered by their first button. Aborts where a refusal gives no reason.
std::shared_ptr<host::Session> openSession(std::string_view ppdText, toolkit::BundleView view);

/// What a user may do with a dialog: shows the panels, uses every control, marks every choice from outside, reads the
/// summaries and what the job would carry. At most so many uses of each panel's controls, and so many marks. Aborts
/// where a text that is shown is no plain UTF-8.
void walkPanels(host::Session& session, int uses, int marks);

/// Uses every visible control of the description as a user would; alert windows are left alone.
void useControls(const toolkit::LoadedViews& views, int& uses);

} // namespace fuzz
