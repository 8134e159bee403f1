// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/standard_files.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

namespace lobemax {

void Guard_Standard_Files()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    // The lowest free number is taken: one of the three, until all are. A write into what was closed is still an error,
    // and a read its end.
    for (int file = 0; file >= 0 && file <= STDERR_FILENO;) {
        const bool read_end = ::fcntl(STDIN_FILENO, F_GETFD) < 0;
        file = ::open("/dev/null", read_end ? O_WRONLY : O_RDONLY);
        if (file > STDERR_FILENO)
            ::close(file);
    }
}

}  // namespace lobemax
