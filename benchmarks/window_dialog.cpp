// The print dialog on a printer with many options, both panels shown. It looks for no queues: that is done beside it.

#include "first_paint.h"
#include "generated_ppd.h"

#include "host/session/program_files.h"
#include "host/window/print_dialog.h"

#include <QTabWidget>

#include <fstream>

int main(int argumentCount, char* arguments[]) {
    if (argumentCount == 3 && std::string(arguments[1]) == "--write-ppd") {
        std::ofstream(arguments[2]) << benchmarks::ppdText(benchmarks::kPrinters[1]);
        return 0;
    }
    QApplication application(argumentCount, arguments);
    if (argumentCount != 2)
        qFatal("Usage: window_dialog PPD, or --write-ppd PPD");
    toolkit::MemoryUserDefaults defaults;
    host::DialogRequest request;
    request.bundle = host::pathOfPlugInBundle();
    host::PrintDialog dialog(
        std::move(request),
        {.languages = {"en"},
         .userDefaults = &defaults,
         .printers = {{.name = "Large", .ppdPath = arguments[1], .ppdText = {}, .options = {}, .queue = {}}},
         .looksForQueues = false});
    auto& tabs = *dialog.findChild<QTabWidget*>("tabs");
    tabs.setCurrentIndex(1);
    tabs.setCurrentIndex(2);
    new benchmarks::FirstPaint(dialog, benchmarks::tellPainted);
    dialog.show();
    return QApplication::exec();
}
