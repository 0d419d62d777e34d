#include "tests/printing/ppd_text.h"

#include <stdexcept>

namespace printing_tests {

std::string ppdWith(const std::string& lines) {
    return "*PPD-Adobe: \"4.3\"\n"
           "*FormatVersion: \"4.3\"\n"
           "*FileVersion: \"1.0\"\n"
           "*LanguageVersion: English\n"
           "*LanguageEncoding: UTF-8\n"
           "*PCFileName: \"CORVANE.PPD\"\n"
           "*Manufacturer: \"Corvane\"\n"
           "*Product: \"(Corvane Test)\"\n"
           "*PSVersion: \"(3010.000) 0\"\n"
           "*LanguageLevel: \"3\"\n"
           "*ColorDevice: True\n"
           "*DefaultColorSpace: RGB\n" +
           lines;
}

std::string option(const std::string& keywordAndText, const std::string& defaultChoice,
                   const std::vector<std::string>& choices) {
    const std::string keyword = keywordAndText.substr(0, keywordAndText.find('/'));
    std::string lines = "*OpenUI *" + keywordAndText + ": PickOne\n";
    if (!defaultChoice.empty())
        lines += "*Default" + keyword + ": " + defaultChoice + "\n";
    for (const std::string& choice : choices)
        lines += "*" + keyword + " " + choice + ": \"\"\n";
    return lines + "*CloseUI: *" + keyword + "\n";
}

std::string pageSizes(const std::string& further) {
    return option("PageSize", "A4", {"A4", "Letter"}) + option("PageRegion", "A4", {"A4", "Letter"}) +
           "*DefaultImageableArea: A4\n"
           "*ImageableArea A4: \"10 10 585 832\"\n"
           "*ImageableArea Letter: \"10 10 602 782\"\n"
           "*DefaultPaperDimension: A4\n"
           "*PaperDimension A4: \"595 842\"\n"
           "*PaperDimension Letter: \"612 792\"\n" +
           further;
}

std::unique_ptr<printing::PrinterDescription> openPrinter(const std::string& text,
                                                          const std::vector<std::string>& languages) {
    std::string error;
    auto printer = printing::PrinterDescription::openText(text, languages, error);
    if (printer == nullptr)
        throw std::runtime_error(error);
    return printer;
}

std::unique_ptr<printing::PrinterDescription> openMarkedPrinter(const std::string& text) {
    auto printer = openPrinter(text);
    printer->markDefaults();
    return printer;
}

} // namespace printing_tests
