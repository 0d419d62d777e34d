#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace printing {

/// The constraints of a PPD, found by the options that take part in them.
class ConstraintTable {
public:
    /// One part of a constraint. An empty choice stands for every choice but "None", "Off" and "False".
    struct Term {
        std::string option;
        std::string choice;
        [[nodiscard]] bool covers(std::string_view given) const;
    };
    using Constraint = std::vector<Term>;

    void add(Constraint constraint);
    /// The constraints that have a term of this option; pointers into the table.
    [[nodiscard]] std::vector<const Constraint*> withOption(std::string_view option) const;

private:
    std::vector<Constraint> constraints_;
    std::unordered_multimap<std::string, std::size_t> byOption_;
};

} // namespace printing
