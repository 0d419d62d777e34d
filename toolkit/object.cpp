#include "toolkit/object.h"

#include "toolkit/exception.h"
#include "toolkit/menu.h"

namespace toolkit {

// Defined here, once, so that the host and a plug-in agree on the types' identity.
Object::~Object() = default;
Exception::~Exception() = default;
Menu::~Menu() = default;

} // namespace toolkit
