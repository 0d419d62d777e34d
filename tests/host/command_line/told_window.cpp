// Stands for the window module: writes down, one line each, what the dialog was asked for.

#include "host/command_line/dialog_request.h"

#include <cstdio>

extern "C" {
__attribute__((visibility("default"))) extern const int CVPrintDialogInterfaceVersion = host::kDialogInterfaceVersion;
__attribute__((visibility("default"))) int CVRunPrintDialog(const host::DialogRequest& request);
}

int CVRunPrintDialog(const host::DialogRequest& request) {
    const auto tell = [](const char* name, const std::string& value) { std::printf("%s: %s\n", name, value.c_str()); };
    for (const std::string& document : request.documents)
        tell("document", document);
    tell("title", request.title);
    tell("printer", request.printer + "/" + request.instance);
    tell("server", request.server);
    tell("ppd", request.ppd);
    tell("folder", request.folder);
    for (const host::JobOption& choice : request.choices)
        tell("choice", choice.name + "=" + choice.value);
    tell("preset", request.preset);
    for (const host::JobOption& choice : request.presetChoices)
        tell("preset's", choice.name + "=" + choice.value);
    if (request.looksForPreset)
        tell("preset's", "(to be looked for)");
    tell("copies", std::to_string(request.copies));
    tell("priority", std::to_string(request.priority));
    tell("hold", request.holdUntil);
    tell("bundle", request.bundle.string());
    return 0;
}
