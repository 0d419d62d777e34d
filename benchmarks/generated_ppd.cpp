#include "generated_ppd.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string_view>

namespace benchmarks {
namespace {

[[noreturn]] void fail(const std::string& line) {
    std::fprintf(stderr, "The sample printer has no line \"%s\".\n", line.c_str());
    std::exit(2);
}

int countOf(const std::string& text, std::string_view word) {
    int count = 0;
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1))
        ++count;
    return count;
}

// The text with these lines before its first line that begins so.
void insertBefore(std::string& text, const std::string& line, const std::string& lines) {
    const std::size_t at = text.find("\n" + line);
    if (at == std::string::npos)
        fail(line);
    text.insert(at + 1, lines);
}

} // namespace

std::string ppdText(const Printer& printer) {
    std::ifstream stream(std::string(CV_SOURCE_DIR) + "/resources/models/corvane-a3.ppd");
    std::ostringstream sample;
    sample << stream.rdbuf();
    std::string text = sample.str();

    std::string choices, regions, areas, dimensions;
    for (int index = countOf(text, "\n*PaperDimension "); index < printer.sizes; ++index) {
        const std::string size = "Size" + std::to_string(index) + "/Size " + std::to_string(index) + ": ";
        choices += "*PageSize " + size + "\"<</PageSize[500 700]>>setpagedevice\"\n";
        regions += "*PageRegion " + size + "\"<</PageSize[500 700]>>setpagedevice\"\n";
        areas += "*ImageableArea " + size + "\"9 9 491 691\"\n";
        dimensions += "*PaperDimension " + size + "\"500 700\"\n";
    }
    insertBefore(text, "*CloseUI: *PageSize", choices);
    insertBefore(text, "*CloseUI: *PageRegion", regions);
    insertBefore(text, "*DefaultPaperDimension", areas + dimensions);

    std::string options;
    for (int index = countOf(text, "\n*OpenUI "); index < printer.options; ++index) {
        const std::string keyword = "CVExtra" + std::to_string(index);
        options +=
            "*OpenUI *" + keyword + "/Extra " + std::to_string(index) + ": PickOne\n*Default" + keyword + ": A\n";
        for (const char* choice : {"A", "B", "C", "D"})
            options += "*" + keyword + " " + choice + "/Choice " + choice + ": \"\"\n";
        options += "*CloseUI: *" + keyword + "\n";
    }
    insertBefore(text, "*OpenGroup: PrintSetting", "*OpenGroup: Extra/Extra\n" + options + "*CloseGroup: Extra\n");

    std::string constraints;
    const int extras = std::max(1, countOf(options, "*OpenUI "));
    const int first = printer.options - extras;
    for (int index = countOf(text, "\n*UIConstraints: "); index < printer.constraints; ++index)
        constraints += "*UIConstraints: *CVExtra" + std::to_string(first + index % extras) + " B *PageSize " +
                       (index % 2 == 0 ? "A4" : "Letter") + "\n";
    insertBefore(text, "*OpenUI *PageSize", constraints);
    return text;
}

} // namespace benchmarks
