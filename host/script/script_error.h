#pragma once

#include <stdexcept>

namespace host {

/// A command that cannot be carried out: the sentence of its answer.
class ScriptError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace host
