#include "toolkit/value_transformer.h"

#include <gtest/gtest.h>

namespace toolkit {
namespace {

class NamedTransformer : public ValueTransformer {
public:
    [[nodiscard]] std::string_view transformedValueClass() const override { return "value"; }
    [[nodiscard]] bool allowsReverseTransformation() const override { return false; }
    [[nodiscard]] TransformedValue transformedValue(const Value& value) const override { return value; }
    [[nodiscard]] TransformedValue reverseTransformedValue(const Value&) const override { return {}; }
};

TEST(ValueTransformerRegistry, GivesWhatWasRegistered) {
    const auto transformer = std::make_shared<NamedTransformer>();
    ValueTransformer::registerTransformer(transformer, "RegistryGives");
    EXPECT_EQ(ValueTransformer::transformerNamed("RegistryGives"), transformer);
}

TEST(ValueTransformerRegistry, GivesNullForAnUnknownName) {
    ValueTransformer::registerTransformer(std::make_shared<NamedTransformer>(), "RegistryKnows");
    EXPECT_EQ(ValueTransformer::transformerNamed("registryknows"), nullptr);
    EXPECT_EQ(ValueTransformer::transformerNamed(""), nullptr);
}

TEST(ValueTransformerRegistry, ALaterTransformerReplacesAnEarlierOne) {
    const auto earlier = std::make_shared<NamedTransformer>(), later = std::make_shared<NamedTransformer>();
    ValueTransformer::registerTransformer(earlier, "RegistryReplaces");
    ValueTransformer::registerTransformer(later, "RegistryReplaces");
    EXPECT_EQ(ValueTransformer::transformerNamed("RegistryReplaces"), later);
    EXPECT_EQ(earlier.use_count(), 1);
}

TEST(ValueTransformerRegistry, KeepsItsTransformersAlive) {
    auto transformer = std::make_shared<NamedTransformer>();
    const std::weak_ptr<NamedTransformer> watched = transformer;
    ValueTransformer::registerTransformer(std::move(transformer), "RegistryKeeps");
    EXPECT_FALSE(watched.expired());
}

} // namespace
} // namespace toolkit
