// SPDX-License-Identifier: GPL-3.0-or-later
/// Python as a process, for readers of files that nobody here wrote.
#pragma once

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

namespace lobemax::testing {

struct Process {
    int status = -1;
    std::string out;  // both streams
};

/// Runs a command of the shell.
inline Process Run_Process(const std::string& command)
{
    Process process;
    std::FILE* const pipe = ::popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr)
        return process;
    std::array<char, 4096> bytes{};
    while (const std::size_t count = std::fread(bytes.data(), 1, bytes.size(), pipe))
        process.out.append(bytes.data(), count);
    const int status = ::pclose(pipe);
    process.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return process;
}

/// The Python that has a module: the first on the path, or the system's own; empty where none has.
inline std::string Python_with(const std::string& module)
{
    for (const char* const python : {"python3", "/usr/bin/python3"})
        if (Run_Process(std::string(python) + " -c 'import " + module + "'").status == 0)
            return python;
    return "";
}

}  // namespace lobemax::testing
