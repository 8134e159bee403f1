// SPDX-License-Identifier: GPL-3.0-or-later
/// The command line tool in the process of the test: a command line in, status and both streams out.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "cli/run.h"

namespace lobemax::testing {

struct Result {
    int status;
    std::string out;
    std::string err;
};

inline Result Run_Cli(const std::vector<std::string>& words)
{
    std::istringstream in;
    std::ostringstream out, err;
    const int status = cli::Run(words, in, out, err);
    return {status, out.str(), err.str()};
}

/// The words of a line as a shell reads them: separated by blanks, what stands in quotes of either kind as it is.
inline std::vector<std::string> Words(const std::string& line)
{
    std::vector<std::string> words;
    bool inside = false;  // of a word
    char quote = 0;
    for (const char c : line) {
        if (quote != 0 ? c == quote : c == '\'' || c == '"') {
            quote = quote != 0 ? '\0' : c;
            if (!inside)
                words.emplace_back();
            inside = true;
        } else if (c == ' ' && quote == 0) {
            inside = false;
        } else {
            if (!inside)
                words.emplace_back();
            inside = true;
            words.back() += c;
        }
    }
    return words;
}

}  // namespace lobemax::testing
