#include "host/session/program_files.h"

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr const char* kBundle = "PlugIns/CVInkQuality12.plugin";
constexpr const char* kWindowModule = "libcv_window.so";
constexpr const char* kPdfModule = "libcv_pdf_reader.so";
constexpr const char* kSamplePrinters = "models";
constexpr const char* kWindowTexts = "texts";

// A link to the program, as lp may be one, is followed.
fs::path prefixOfProgram() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).parent_path().parent_path();
}

/// The first of both paths below the prefix that is there, else the installed one.
fs::path installedOrBuilt(const fs::path& installed, const fs::path& built) {
    const fs::path prefix = prefixOfProgram();
    std::error_code missing;
    return !fs::exists(prefix / installed, missing) && fs::exists(prefix / built, missing) ? prefix / built
                                                                                           : prefix / installed;
}

} // namespace

// CV_PRIVATE_DIR and CV_DATA_DIR come from cmake/Installation.cmake, which puts the files there.

fs::path pathOfPlugInBundle() {
    return installedOrBuilt(fs::path(CV_PRIVATE_DIR) / kBundle, kBundle);
}

fs::path pathOfWindowModule() {
    return prefixOfProgram() / CV_PRIVATE_DIR / kWindowModule;
}

fs::path pathOfPdfModule() {
    return prefixOfProgram() / CV_PRIVATE_DIR / kPdfModule;
}

fs::path folderOfSamplePrinters() {
    return prefixOfProgram() / CV_DATA_DIR / kSamplePrinters;
}

fs::path folderOfWindowTexts() {
    return prefixOfProgram() / CV_DATA_DIR / kWindowTexts;
}

} // namespace host
