// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/linkage_picture.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "tests/support/recording_surface.h"

namespace lobemax {
namespace {

using testing::Recording_Surface;

TEST(Linkage_Pictures, have_the_moving_links_and_pivots_of_their_trains)
{
    using Set = std::multiset<std::string>;
    const Set expected[]{{"2", "3", "4", "O2", "O4"},
                         {"2", "3", "4", "5", "6", "O2", "O4", "O6"},
                         {"2", "3", "4", "O2"},
                         {"2", "3", "4", "5", "6", "O2", "O4"}};
    for (int type = 0; type < 4; ++type) {
        Recording_Surface surface;
        Draw_Linkage_Type(surface, type);
        Set words;
        for (const auto& label : surface.labels)
            words.insert(label.text);
        EXPECT_EQ(words, expected[type]) << type;
        EXPECT_EQ(surface.outlines.size(), type > 1 ? 1U : 0U) << "a block a slider";
    }
}

TEST(Linkage_Pictures, stand_wholly_in_their_windows)
{
    for (int type = 0; type < 4; ++type) {
        Recording_Surface surface;
        Draw_Linkage_Type(surface, type);
        for (const auto& line : surface.lines)
            for (const auto& [x, y] : {std::pair{line.x1, line.y1}, std::pair{line.x2, line.y2}}) {
                EXPECT_TRUE(surface.left <= x && x <= surface.right) << type;
                EXPECT_TRUE(surface.top <= y && y <= surface.bottom) << type;
            }
        for (const auto& circle : surface.circles) {
            EXPECT_LE(surface.left, circle.x - circle.radius) << type;
            EXPECT_LE(circle.y + circle.radius, surface.bottom) << type;
        }
    }
}

TEST(Linkage_Pictures, there_are_four_of_them)
{
    for (const int type : {-1, 4}) {
        Recording_Surface surface;
        Draw_Linkage_Type(surface, type);
        EXPECT_TRUE(surface.lines.empty() && surface.circles.empty());
    }
}

}  // namespace
}  // namespace lobemax
