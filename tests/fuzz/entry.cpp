// SPDX-License-Identifier: GPL-3.0-or-later
// What the fuzzer calls: the one target that was linked in, and the mutators.
#include <algorithm>
#include <cstddef>

#include "tests/fuzz/fuzz.h"
#include "tests/fuzz/record_mutator.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    lobemax::fuzz::Targets().front().run({reinterpret_cast<const char*>(data), size});
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max_size,
                                               unsigned seed)
{
    // The fuzzer puts several mutations one on the other, and one of bytes is enough to make a long list of records
    // none.
    constexpr unsigned shares = 64;
    constexpr std::ptrdiff_t few_lines = 4;
    const unsigned of_bytes = std::count(data, data + size, '\n') < few_lines ? shares / 2 : 2;
    if (seed % shares < of_bytes)
        return LLVMFuzzerMutate(data, size, max_size);
    const std::string text = lobemax::fuzz::Mutate_Records({reinterpret_cast<const char*>(data), size}, seed / shares);
    const std::size_t used = std::min(text.size(), max_size);
    std::copy_n(text.begin(), used, data);
    return used;
}
