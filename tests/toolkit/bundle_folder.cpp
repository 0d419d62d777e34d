#include "tests/toolkit/bundle_folder.h"

#include "tests/toolkit/message_catalogue.h"

#include <utility>

namespace toolkit_tests {

toolkit::BundleView inLanguages(std::vector<std::string> languages) {
    toolkit::BundleView view;
    view.languages = std::move(languages);
    return view;
}

BundleFolder::BundleFolder() {
    writeInfo("{}");
    std::filesystem::create_directories(path() / "Resources");
}

void BundleFolder::writeInfo(std::string_view json) const {
    scratch_.write("Panels.plugin/Info.json", json);
}

void BundleFolder::writeResource(const std::filesystem::path& name, std::string_view contents) const {
    scratch_.write(std::filesystem::path("Panels.plugin/Resources") / name, contents);
}

void BundleFolder::writeTexts(const std::string& language, std::map<std::string, std::string> texts) const {
    writeResource(std::filesystem::path(language) / "Panels.mo", messageCatalogue(std::move(texts)));
}

std::shared_ptr<toolkit::Bundle> BundleFolder::open(toolkit::BundleView view) const {
    std::string error;
    auto bundle = toolkit::Bundle::open(path(), std::move(view), error);
    if (bundle == nullptr)
        throw std::runtime_error(error);
    return bundle;
}

std::unique_ptr<toolkit::LoadedViews> BundleFolder::load(std::string_view form) const {
    writeResource("Form.ui", form);
    std::string error;
    auto views = toolkit::LoadedViews::load(*open(), "Form", error);
    if (views == nullptr)
        throw std::runtime_error(error);
    return views;
}

std::string BundleFolder::errorOfLoading(std::string_view form) const {
    writeResource("Form.ui", form);
    std::string error;
    EXPECT_EQ(toolkit::LoadedViews::load(*open(), "Form", error), nullptr);
    return error;
}

} // namespace toolkit_tests
