// A bundle's info entries: read as the bundle's own file, then laid over the built bundle's, whose panels are walked.

#include "fuzz/panel_walk.h"
#include "fuzz/scratch_folder.h"
#include "toolkit/json_values.h"

#include <nlohmann/json.hpp>

#include <cstdint>

namespace {

constexpr int kUses = 5, kMarks = 10;
constexpr std::string_view kPpd = R"(*PPD-Adobe: "4.3"
*FormatVersion: "4.3"
*FileVersion: "1.0"
*LanguageVersion: English
*LanguageEncoding: ISOLatin1
*PCFileName: "FUZZ.PPD"
*Manufacturer: "Corvane"
*ModelName: "Corvane Small"
*ShortNickName: "Corvane Small"
*NickName: "Corvane Small"
*ColorDevice: True
*OpenUI *PageSize/Paper: PickOne
*DefaultPageSize: A4
*PageSize A4/A4: ""
*CloseUI: *PageSize
*PaperDimension A4/A4: "595 842"
*ImageableArea A4/A4: "9 9 586 833"
*OpenUI *CVMediaType/Media Type: PickOne
*DefaultCVMediaType: Plain
*CVMediaType Plain/Plain: ""
*CVMediaType Glossy/Glossy: ""
*CloseUI: *CVMediaType
*OpenUI *CVResolution/Quality: PickOne
*DefaultCVResolution: Normal
*CVResolution Normal/Normal: ""
*CVResolution Fine/Fine: ""
*CloseUI: *CVResolution
*OpenUI *CVColorMatching/Colour: PickOne
*DefaultCVColorMatching: NONE
*CVColorMatching NONE/None: ""
*CVColorMatching Natural/Natural: ""
*CloseUI: *CVColorMatching
)";

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::filesystem::path folder = fuzz::scratchFolder() / "Entries.plugin";
    std::filesystem::create_directory(folder);
    fuzz::writeFile(folder / "Info.json", text);
    std::string error;
    const auto bundle = toolkit::Bundle::open(folder, {.languages = {"en"}}, error);
    if (bundle == nullptr)
        return 0;
    (void)bundle->identifier();
    (void)bundle->localizedString("CFBundleName");
    toolkit::BundleView view{.languages = {"en"}, .info = bundle->infoDictionary()};
    if (const auto session = fuzz::openSession(kPpd, std::move(view)))
        fuzz::walkPanels(*session, kUses, kMarks);
    return 0;
}
