// The `vorix` command: the words of the command line to RunVorix, its status to the shell.

#include <unistd.h>

#include <iostream>
#include <string>
#include <vector>

#include "vorix/CommandLine.h"
#include "vorix/Interrupt.h"

int main(int argc, char** argv) {
    vorix::cli::InstallSignalHandlers();
    const std::vector<std::string> args(argv + 1, argv + argc);
    return vorix::cli::RunVorix(args, std::cout, std::cerr, isatty(STDERR_FILENO) != 0);
}
