#include "tests/framework/scratch_bundle.h"

#include <stdexcept>

namespace framework_tests {
namespace {

std::filesystem::path bundleFolder(const std::filesystem::path& folder) {
    return folder / "PlugIns" / "Test.plugin";
}

} // namespace

ScratchBundle::ScratchBundle() {
    folder_.write(
        bundleFolder(folder()) / "Info.json",
        R"({"CFBundleName": "TestPanel", "CFBundleIdentifier": "test.panel", "CFBundleHelpBookName": "Test Help"})");
}

std::filesystem::path ScratchBundle::resource(const std::string& fileName) const {
    return bundleFolder(folder()) / "Resources" / fileName;
}

void ScratchBundle::writeResource(const std::string& fileName, const std::string& content) const {
    folder_.write(resource(fileName), content);
}

void ScratchBundle::copyResource(const std::filesystem::path& file, const std::string& fileName) const {
    std::filesystem::create_directories(resource(fileName).parent_path());
    std::filesystem::copy_file(file, resource(fileName));
}

void ScratchBundle::makeHelpBook(const std::string& panelName) const {
    std::filesystem::create_directories(folder() / "Help" / (panelName + ".help"));
}

std::shared_ptr<toolkit::Bundle> ScratchBundle::open(toolkit::BundleView view) const {
    std::string error;
    auto bundle = toolkit::Bundle::open(bundleFolder(folder()), std::move(view), error);
    if (bundle == nullptr)
        throw std::runtime_error(error);
    return bundle;
}

std::string viewDescription(const std::string& widgets) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ui version=\"4.0\"><widget class=\"QWidget\" "
           "name=\"panelView\"><property name=\"modelFrame\" stdset=\"0\"><rect><x>0</x><y>0</y><width>300</width>"
           "<height>100</height></rect></property>" +
           widgets + "</widget></ui>\n";
}

std::string widget(const std::string& className, const std::string& name, const std::string& properties) {
    return "<widget class=\"" + className + "\" name=\"" + name + "\">" + properties + "</widget>";
}

std::string textProperty(const std::string& name, const std::string& value) {
    return "<property name=\"" + name + "\" stdset=\"0\"><string>" + value + "</string></property>";
}

} // namespace framework_tests
