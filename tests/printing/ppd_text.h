#pragma once

#include "printing/printer_description.h"

#include <memory>
#include <string>
#include <vector>

namespace printing_tests {

/// The text of a PPD: the header that every PPD needs, then these lines.
std::string ppdWith(const std::string& lines);

/// The lines of an option. A choice is its keyword, or "Keyword/text"; the default may be empty for none.
std::string option(const std::string& keywordAndText, const std::string& defaultChoice,
                   const std::vector<std::string>& choices);

/// The lines of the page sizes A4 (the default) and Letter, then these.
std::string pageSizes(const std::string& further = {});
/// Lines that allow custom sizes of 200 to 600 by 300 to 900 points.
inline constexpr const char* kCustomSizes = "*VariablePaperSize: True\n"
                                            "*CustomPageSize True: \"pop pop pop pop pop\"\n"
                                            "*ParamCustomPageSize Width: 1 points 200 600\n"
                                            "*ParamCustomPageSize Height: 2 points 300 900\n"
                                            "*ParamCustomPageSize WidthOffset: 3 points 0 0\n"
                                            "*ParamCustomPageSize HeightOffset: 4 points 0 0\n"
                                            "*ParamCustomPageSize Orientation: 5 int 0 0\n"
                                            "*MaxMediaWidth: \"600\"\n"
                                            "*MaxMediaHeight: \"900\"\n";

/// Opens the text of a PPD; an exception where it cannot be used.
std::unique_ptr<printing::PrinterDescription> openPrinter(const std::string& text,
                                                          const std::vector<std::string>& languages = {"en"});
/// The same with the defaults marked.
std::unique_ptr<printing::PrinterDescription> openMarkedPrinter(const std::string& text);

} // namespace printing_tests
