#pragma once

#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <unordered_set>
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

    /// Keeps the constraint, unless one of the same terms in any order stands already.
    void add(Constraint constraint);
    /// The constraints that have a term of this option, in the order of adding. Borrowed: valid until the next add().
    [[nodiscard]] const std::vector<const Constraint*>& withOption(std::string_view option) const;

private:
    std::deque<Constraint> constraints_; // never moves what it holds
    std::map<std::string, std::vector<const Constraint*>, std::less<>> byOption_;
    std::unordered_set<std::string> keys_; // of the constraints: office printers have thousands
};

} // namespace printing
