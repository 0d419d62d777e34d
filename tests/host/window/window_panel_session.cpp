// A scripted host whose user sees the panels in a window: it reads and answers what corvane-panel-session does, and
// ends with status 1 where a widget showed anything else than its model. What was done through widgets, and what to the
// models, is added to the file that WINDOW_SESSION_COUNTS names, a line of JSON.

#include "session_window.h"

#include "host/script/script_host.h"
#include "host/session/program_files.h"

#include <QApplication>

#include <cstdlib>
#include <fstream>
#include <iostream>

int main(int argumentCount, char* arguments[]) {
    QApplication application(argumentCount, arguments);
    tests::SessionWindow::Record record;
    {
        host::ScriptHost scriptHost(host::pathOfPlugInBundle(),
                                    [&] { return std::make_unique<tests::SessionWindow>(record); });
        for (std::string line; std::getline(std::cin, line);) {
            if (!host::ScriptHost::isCommand(line))
                continue;
            std::cout << scriptHost.answerLine(line) << std::endl;
            QCoreApplication::processEvents();
            for (tests::SessionWindow* window : record.windows)
                window->checkWhatIsShown();
            if (record.problems.isEmpty())
                continue;
            std::cerr << line << '\n';
            for (const QString& problem : record.problems)
                std::cerr << "    " << problem.toStdString() << std::endl;
            return EXIT_FAILURE;
        }
    }
    if (const char* path = std::getenv("WINDOW_SESSION_COUNTS"))
        std::ofstream(path, std::ios::app)
            << host::Json{{"widgets", record.throughWidgets}, {"models", record.toModels}} << '\n';
    return EXIT_SUCCESS;
}
