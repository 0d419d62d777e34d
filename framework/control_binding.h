#pragma once

#include "toolkit/view.h"

#include <string_view>

namespace framework {

/// One row of a panel's binding table: an option's control and the label that names it; null where it has none.
template <typename Panel>
struct ControlBinding {
    std::string_view keyword;
    toolkit::View* (*control)(const Panel& panel);
    toolkit::View* (*label)(const Panel& panel);
};

/// A column's entry: the model that a field of the panel points to, null while it is not connected.
template <auto Field, typename Panel>
toolkit::View* fieldOf(const Panel& panel) {
    return panel.*Field;
}

} // namespace framework
