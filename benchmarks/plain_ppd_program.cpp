// Opens a PPD by libcups and marks its defaults: what a program that prints does at the least.

#include <cups/ppd.h>
#include <iostream>

int main(int count, char** arguments) {
    ppd_file_t* const ppd = count == 2 ? ppdOpenFile(arguments[1]) : nullptr;
    if (ppd == nullptr) {
        std::cerr << "Usage: plain_ppd_program PPD" << std::endl;
        return 1;
    }
    ppdMarkDefaults(ppd);
    std::cout << ppd->modelname << ": " << ppd->num_groups << " groups" << std::endl;
    ppdClose(ppd);
    return 0;
}
