#include "toolkit/value_transformer.h"

namespace toolkit {
namespace {

using Registry = std::map<std::string, std::shared_ptr<const ValueTransformer>, std::less<>>;

Registry& registry() {
    static Registry transformers;
    return transformers;
}

} // namespace

ValueTransformer::~ValueTransformer() = default;

void ValueTransformer::registerTransformer(std::shared_ptr<const ValueTransformer> transformer, std::string_view name) {
    registry().insert_or_assign(std::string(name), std::move(transformer));
}

std::shared_ptr<const ValueTransformer> ValueTransformer::transformerNamed(std::string_view name) {
    const auto found = registry().find(name);
    return found == registry().end() ? nullptr : found->second;
}

} // namespace toolkit
