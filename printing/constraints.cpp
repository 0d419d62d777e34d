#include "printing/constraints.h"

#include <algorithm>
#include <functional>
#include <tuple>

#include <strings.h>

namespace printing {
namespace {

/// The same for two constraints of the same terms, whatever their order.
std::string keyOf(const ConstraintTable::Constraint& constraint) {
    std::vector<const ConstraintTable::Term*> terms;
    for (const ConstraintTable::Term& term : constraint)
        terms.push_back(&term);
    std::ranges::sort(terms, {}, [](const auto* term) { return std::tie(term->option, term->choice); });
    std::string key;
    for (const ConstraintTable::Term* term : terms)
        for (const std::string& word : {std::cref(term->option), std::cref(term->choice)})
            key.append(word).append(1, '\n'); // no keyword holds a line's end
    return key;
}

} // namespace

bool ConstraintTable::Term::covers(std::string_view given) const {
    if (!choice.empty())
        return choice == given;
    const std::string text(given);
    return strcasecmp(text.c_str(), "None") != 0 && strcasecmp(text.c_str(), "Off") != 0 &&
           strcasecmp(text.c_str(), "False") != 0;
}

void ConstraintTable::add(Constraint constraint) {
    // A PPD tells most constraints twice, once from each side.
    if (constraint.empty() || !keys_.insert(keyOf(constraint)).second)
        return;
    const Constraint& kept = constraints_.emplace_back(std::move(constraint));
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
