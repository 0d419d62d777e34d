#pragma once

#include <filesystem>

namespace host {

// Where the files that belong to the running program stand. They are looked for from the program's own place, never
// by a fixed path, so that an installation can be moved as a whole. A build tree is laid out nearly alike. Where
// nothing is there, the installed place is told: a message can name it.

/// The plug-in's bundle. Its help books stand in Help/, in the folder above the one that holds it.
[[nodiscard]] std::filesystem::path pathOfPlugInBundle();
/// The module that draws the print dialog.
[[nodiscard]] std::filesystem::path pathOfWindowModule();
/// The module that reads PDFs for the window. It need not be there.
[[nodiscard]] std::filesystem::path pathOfPdfModule();
/// The folder of the sample printers' PPDs.
[[nodiscard]] std::filesystem::path folderOfSamplePrinters();
/// The folder of the window's own texts: a folder for each language, with its catalogue.
[[nodiscard]] std::filesystem::path folderOfWindowTexts();

} // namespace host
