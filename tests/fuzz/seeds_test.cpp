// SPDX-License-Identifier: GPL-3.0-or-later
// Every seed of the fuzzers, and every input that once broke a promise, runs through its target.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "tests/fuzz/fuzz.h"

namespace lobemax::fuzz {
namespace {

std::vector<std::filesystem::path> Files_in(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> files;
    std::error_code none;
    for (const auto& entry : std::filesystem::directory_iterator(folder, none))
        files.push_back(entry.path());
    std::ranges::sort(files);
    return files;
}

class Fuzz_Inputs : public ::testing::TestWithParam<Target> {};

TEST_P(Fuzz_Inputs, keep_every_promise)
{
    const std::filesystem::path root = LOBEMAX_FUZZ_INPUTS;
    all_turns = true;
    int run = 0;
    for (const char* const kind : {"seeds", "findings"})
        for (const auto& path : Files_in(root / kind / GetParam().name)) {
            std::ostringstream bytes;
            bytes << std::ifstream(path, std::ios::binary).rdbuf();
            try {
                GetParam().run(bytes.str());
            } catch (const Broken_Promise& broken) {
                ADD_FAILURE() << path << ": " << broken.promise;
            }
            ++run;
        }
    EXPECT_GT(run, 0) << "no seeds of " << GetParam().name;
}

INSTANTIATE_TEST_SUITE_P(All, Fuzz_Inputs, ::testing::ValuesIn(Targets()),
                         [](const auto& target) { return target.param.name; });

}  // namespace
}  // namespace lobemax::fuzz
