// SPDX-License-Identifier: GPL-3.0-or-later
// What the fuzzer calls: the one target that was linked in, and the mutators.
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
    if (seed % 4 == 0)
        return LLVMFuzzerMutate(data, size, max_size);
    const std::string text = lobemax::fuzz::Mutate_Records({reinterpret_cast<const char*>(data), size}, seed / 4);
    const std::size_t used = std::min(text.size(), max_size);
    std::copy_n(text.begin(), used, data);
    return used;
}
