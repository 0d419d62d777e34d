#pragma once

#include "tests/support/scratch_folder.h"

#include "toolkit/bundle.h"
#include "toolkit/view_description.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit_tests {

/// A view of a bundle in these languages, with nothing laid over it.
toolkit::BundleView inLanguages(std::vector<std::string> languages);

/// A bundle folder "Panels.plugin" with an info dictionary, which a test fills with resources.
class BundleFolder {
public:
    BundleFolder();

    [[nodiscard]] std::filesystem::path path() const { return scratch_.path() / "Panels.plugin"; }
    void writeInfo(std::string_view json) const;
    void writeResource(const std::filesystem::path& name, std::string_view contents) const;
    /// Writes the compiled catalogue of a language.
    void writeTexts(const std::string& language, std::map<std::string, std::string> texts) const;

    /// Fails the test where the bundle cannot be opened.
    [[nodiscard]] std::shared_ptr<toolkit::Bundle> open(toolkit::BundleView view = inLanguages({"en"})) const;

    /// Writes a view description and loads it; fails the test where it cannot be loaded.
    [[nodiscard]] std::unique_ptr<toolkit::LoadedViews> load(std::string_view form) const;
    /// Writes a view description that cannot be loaded and gives the reason.
    [[nodiscard]] std::string errorOfLoading(std::string_view form) const;

private:
    test_support::ScratchFolder scratch_;
};

} // namespace toolkit_tests
