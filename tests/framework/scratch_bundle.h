#pragma once

#include "tests/support/scratch_folder.h"
#include "toolkit/bundle.h"

#include <filesystem>
#include <memory>
#include <string>

namespace framework_tests {

/// A bundle of a test's own, `<folder>/kept/PlugIns/Test.plugin`, removed with all that is in the folder.
class ScratchBundle {
public:
    ScratchBundle();

    /// Where a bundle's folder of bundles stands: help books go into "Help" in it.
    [[nodiscard]] std::filesystem::path folder() const { return folder_.path() / "kept"; }
    [[nodiscard]] std::filesystem::path resource(const std::string& fileName) const;
    void writeResource(const std::string& fileName, const std::string& content) const;
    void copyResource(const std::filesystem::path& file, const std::string& fileName) const;
    void makeHelpBook(const std::string& panelName) const;

    /// The bundle, whose name "TestPanel" is that of its panel's view description; texts stay their keys.
    [[nodiscard]] std::shared_ptr<toolkit::Bundle>
    open(toolkit::BundleView view = {
             .languages = {"en"}, .localize = false, .strings = {}, .info = {}, .removedInfo = {}}) const;

private:
    test_support::ScratchFolder folder_;
};

/// A view description with these widgets in a root of 300 by 100 points.
std::string viewDescription(const std::string& widgets);
std::string widget(const std::string& className, const std::string& name, const std::string& properties = {});
/// A property of a widget whose value is a text.
std::string textProperty(const std::string& name, const std::string& value);

} // namespace framework_tests
