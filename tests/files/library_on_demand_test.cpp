// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/library_on_demand.h"

#include <gtest/gtest.h>

namespace lobemax {
namespace {

TEST(Library_on_Demand, an_entry_is_found_and_called)
{
    std::string why;
    void* const entry = Entry_of_Library("libm.so.6", "sqrt", why);
    ASSERT_NE(entry, nullptr) << why;
    EXPECT_EQ(reinterpret_cast<double (*)(double)>(entry)(9.0), 3.0);
    EXPECT_EQ(why, "");
}

TEST(Library_on_Demand, what_cannot_be_had_is_told_by_name)
{
    std::string why;
    EXPECT_EQ(Entry_of_Library("lobemax_no_such.so", Solid_Entry, why), nullptr);
    EXPECT_TRUE(why.starts_with("a part of the program cannot be loaded: lobemax_no_such.so")) << why;
    EXPECT_EQ(Entry_of_Library("libm.so.6", "lobemax_no_such", why), nullptr);
    EXPECT_NE(why.find("lobemax_no_such"), std::string::npos) << why;
}

}  // namespace
}  // namespace lobemax
