#include "printing/constraints.h"

#include <string>

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
    if (constraint.empty())
        return;
    const auto number = static_cast<std::uint32_t>(ends_.size());
    terms_.insert(terms_.end(), constraint.begin(), constraint.end());
    ends_.push_back(static_cast<std::uint32_t>(terms_.size()));
    for (const Term& term : constraint)
        if (auto& numbers = byOption_[term.option]; numbers.empty() || numbers.back() != number)
            numbers.push_back(number);
}

std::span<const std::uint32_t> ConstraintTable::withOption(std::string_view option) const {
    const auto found = byOption_.find(option);
    return found == byOption_.end() ? std::span<const std::uint32_t>() : found->second;
}

ConstraintTable::Constraint ConstraintTable::constraint(std::uint32_t number) const {
    const std::uint32_t begin = number == 0 ? 0 : ends_[number - 1];
    return std::span(terms_).subspan(begin, ends_[number] - begin);
}

} // namespace printing
