#include "printing/constraints.h"

#include <algorithm>

#include <strings.h>

namespace printing {

bool ConstraintTable::Term::covers(std::string_view given) const {
    if (!choice.empty())
        return choice == given;
    const std::string text(given);
    return strcasecmp(text.c_str(), "None") != 0 && strcasecmp(text.c_str(), "Off") != 0 &&
           strcasecmp(text.c_str(), "False") != 0;
}

void ConstraintTable::add(Constraint constraint) {
    // A PPD tells most constraints twice, once from each side.
    const auto sameTerm = [](const Term& one, const Term& other) {
        return one.option == other.option && one.choice == other.choice;
    };
    const auto stands = [&](const Constraint* other) {
        return std::ranges::is_permutation(*other, constraint, sameTerm);
    };
    if (constraint.empty() || std::ranges::any_of(withOption(constraint.front().option), stands))
        return;
    for (const Term& term : constraint)
        byOption_.emplace(term.option, constraints_.size());
    constraints_.push_back(std::move(constraint));
}

std::vector<const ConstraintTable::Constraint*> ConstraintTable::withOption(std::string_view option) const {
    const auto [first, last] = byOption_.equal_range(std::string(option));
    std::vector<std::size_t> positions;
    for (auto entry = first; entry != last; ++entry)
        positions.push_back(entry->second);
    std::ranges::sort(positions); // the PPD's order
    std::vector<const Constraint*> found;
    found.reserve(positions.size());
    for (const std::size_t position : positions)
        found.push_back(&constraints_[position]);
    return found;
}

} // namespace printing
