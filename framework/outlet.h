#pragma once

#include "toolkit/view.h"

#include <string_view>

namespace framework {

/// One row of a class's outlet table: a field that is connected to the model of the same name.
template <typename Panel>
struct Outlet {
    std::string_view name;
    /// Connects the field; false, and nothing changed, where the model is of another kind than the field.
    bool (*connect)(Panel& panel, toolkit::View& view);
};

template <typename Field>
struct FieldTraits;
template <typename Class, typename Kind>
struct FieldTraits<Kind * Class::*> {
    template <typename Panel, Kind* Class::*Field>
    static bool connect(Panel& panel, toolkit::View& view) {
        Kind* const kind = dynamic_cast<Kind*>(&view);
        if (kind != nullptr)
            static_cast<Class&>(panel).*Field = kind;
        return kind != nullptr;
    }
};

template <typename Panel, auto Field>
consteval Outlet<Panel> outlet(const char* name) {
    return {name, &FieldTraits<decltype(Field)>::template connect<Panel, Field>};
}

} // namespace framework
