#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <unordered_map>
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
    };
    using Constraint = std::span<const Term>;

    /// Copies the terms; one that has none is left out. A PPD tells most constraints twice, once from each side: both
    /// are kept, since to find the other takes longer than to read both.
    void add(Constraint constraint);
    /// The numbers of the constraints that have a term of this option, in the order of adding. Borrowed, as what
    /// constraint() tells is: valid until the next add().
    [[nodiscard]] std::span<const std::uint32_t> withOption(std::string_view option) const;
    [[nodiscard]] Constraint constraint(std::uint32_t number) const;

private:
    std::vector<Term> terms_;         // those of each constraint beside one another
    std::vector<std::uint32_t> ends_; // where those of each constraint end
    std::unordered_map<std::string_view, std::vector<std::uint32_t>> byOption_;
};

} // namespace printing
