#pragma once

#include "toolkit/export.h"

#include <stdexcept>

namespace toolkit {

/// What the toolkit itself raises, as distinct from a failure of the program (any other std::exception).
class CV_TOOLKIT_EXPORT Exception : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
    ~Exception() override;
};

} // namespace toolkit
