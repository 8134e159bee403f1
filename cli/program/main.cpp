// SPDX-License-Identifier: GPL-3.0-or-later
/// lobemax-cli: the design ladder without a screen.
#include <unistd.h>

#include <iostream>

#include "cli/run.h"
#include "files/standard_files.h"

int main(int argc, char** argv)
{
    lobemax::Guard_Standard_Files();
    std::ios::sync_with_stdio(false);
    return lobemax::cli::Run({argv + 1, argv + argc}, std::cin, std::cout, std::cerr, ::isatty(STDERR_FILENO) != 0);
}
