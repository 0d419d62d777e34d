#pragma once

#include "host/command_line/dialog_request.h"

#include <string>

namespace host {

/// Loads the module that draws the dialog. Null where there is no display, or no such module, or one of another
/// version; `error` then says in one sentence what to do.
[[nodiscard]] DialogEntry* loadDialog(std::string& error);

} // namespace host
