#include "printing/constraints.h"

#include <algorithm>
#include <functional>
#include <string>
#include <utility>

#include <strings.h>

namespace printing {

bool ConstraintTable::Term::covers(std::string_view given) const {
    if (!choice.empty())
        return choice == given;
    const std::string text(given);
    return strcasecmp(text.c_str(), "None") != 0 && strcasecmp(text.c_str(), "Off") != 0 &&
           strcasecmp(text.c_str(), "False") != 0;
}

std::size_t ConstraintTable::Hash::operator()(const Constraint* constraint) const {
    const std::hash<std::string_view> hash;
    std::size_t sum = 0;
    for (const Term& term : *constraint)
        sum += hash(term.option) * 31 + hash(term.choice);
    return sum;
}

bool ConstraintTable::Same::operator()(const Constraint* one, const Constraint* other) const {
    return std::ranges::is_permutation(*one, *other);
}

void ConstraintTable::add(Constraint constraint) {
    // A PPD tells most constraints twice, once from each side.
    if (constraint.empty() || known_.contains(&constraint))
        return;
    const Constraint& kept = constraints_.emplace_back(std::move(constraint));
    // cppcheck-suppress danglingLifetime; the deque keeps it
    known_.insert(&kept);
    for (const Term& term : kept)
        if (auto& list = byOption_[term.option]; list.empty() || list.back() != &kept)
            list.push_back(&kept);
}

const std::vector<const ConstraintTable::Constraint*>& ConstraintTable::withOption(std::string_view option) const {
    static const std::vector<const Constraint*> kNone;
    const auto found = byOption_.find(option);
    return found == byOption_.end() ? kNone : found->second;
}

} // namespace printing
