#pragma once

#include "toolkit/export.h"

namespace toolkit {

/// What can be the sender of a notification: anything with an identity of its own. Compared by address.
class CV_TOOLKIT_EXPORT Object {
public:
    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object();
};

} // namespace toolkit
