#pragma once

#include <cstddef>
#include <deque>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace printing {

/// The constraints of a PPD, found by the options that take part in them. Office printers have thousands, so their
/// texts are borrowed: they must outlive the table.
class ConstraintTable {
public:
    /// One part of a constraint. An empty choice stands for every choice but "None", "Off" and "False".
    struct Term {
        std::string_view option;
        std::string_view choice;
        [[nodiscard]] bool covers(std::string_view given) const;
        friend bool operator==(const Term&, const Term&) = default;
    };
    using Constraint = std::vector<Term>;

    /// Keeps the constraint, unless one of the same terms in any order stands already.
    void add(Constraint constraint);
    /// The constraints that have a term of this option, in the order of adding. Borrowed: valid until the next add().
    [[nodiscard]] const std::vector<const Constraint*>& withOption(std::string_view option) const;

private:
    // Two constraints of the same terms are one, whatever their order.
    struct Hash {
        std::size_t operator()(const Constraint* constraint) const;
    };
    struct Same {
        bool operator()(const Constraint* one, const Constraint* other) const;
    };

    std::deque<Constraint> constraints_; // never moves what it holds
    std::unordered_set<const Constraint*, Hash, Same> known_;
    std::unordered_map<std::string_view, std::vector<const Constraint*>> byOption_;
};

} // namespace printing
