// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/model_picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <string>

#include "tests/support/recording_surface.h"

namespace lobemax {
namespace {

using testing::Recording_Surface;

std::multiset<std::string> Words(const Recording_Surface& surface)
{
    std::multiset<std::string> words;
    for (const auto& label : surface.labels)
        words.insert(label.text);
    return words;
}

/// Above the foot of the picture.
double Height_of(const Recording_Surface& surface, const std::string& word)
{
    const auto found = std::ranges::find(surface.labels, word, &Recording_Surface::Drawn_Label::text);
    return found == surface.labels.end() ? -1.0 : surface.bottom - found->y;
}

/// The symbols of a picture are those of the fields that the model has.
TEST(Model_Pictures, have_the_symbols_of_their_equations)
{
    using Set = std::multiset<std::string>;
    const Set expected[]{{"c1", "k1", "m1", "s", "x"},
                         {"c1", "c2", "k1", "k2", "m1", "s", "x"},
                         {"c1", "c2", "k1", "k2", "m1", "s", "x"},
                         {"c1", "c2", "k1", "k2", "m1", "m2", "s", "x"},
                         {"c1", "c2", "k1", "k2", "m1", "m2", "s", "x"}};
    for (int model = 1; model <= 5; ++model) {
        Recording_Surface surface;
        Draw_Model(surface, model);
        EXPECT_EQ(Words(surface), expected[model - 1]) << model;
        EXPECT_EQ(surface.outlines.size(), model >= 4 ? 2U : 1U) << "a box a mass";
    }
}

/// The closing spring stands above the last mass, or beside the train at the cam's end; the train's is between cam and
/// last mass.
TEST(Model_Pictures, show_where_the_closing_spring_acts)
{
    for (const int model : {2, 5}) {
        Recording_Surface surface;
        Draw_Model(surface, model);
        EXPECT_GT(Height_of(surface, "k2"), Height_of(surface, model == 5 ? "m2" : "m1")) << model;
        EXPECT_LT(Height_of(surface, "k1"), Height_of(surface, model == 5 ? "m2" : "m1")) << model;
    }
    for (const int model : {3, 4}) {
        Recording_Surface surface;
        Draw_Model(surface, model);
        const double mass = Height_of(surface, model == 4 ? "m2" : "m1");
        EXPECT_LT(Height_of(surface, "k1"), mass) << model;
        EXPECT_LT(Height_of(surface, "k2"), mass) << model;
    }
}

TEST(Model_Pictures, stand_wholly_in_their_window)
{
    for (int model = 1; model <= 5; ++model) {
        Recording_Surface surface;
        Draw_Model(surface, model);
        const auto within = [&](double x, double y) {
            EXPECT_TRUE(x >= surface.left && x <= surface.right && y >= surface.top && y <= surface.bottom)
                << model << ": " << x << ", " << y;
        };
        for (const auto& line : surface.lines) {
            within(line.x1, line.y1);
            within(line.x2, line.y2);
        }
        for (const auto& circle : surface.circles) {
            within(circle.x - circle.radius, circle.y - circle.radius);
            within(circle.x + circle.radius, circle.y + circle.radius);
        }
        for (const auto& label : surface.labels)
            within(label.x, label.y);
    }
}

/// At the size of the model's screen two letters are some 15 pixels of 190 wide.
TEST(Model_Pictures, keep_their_symbols_apart)
{
    for (int model = 1; model <= 5; ++model) {
        Recording_Surface surface;
        Draw_Model(surface, model);
        const double pixel = std::max((surface.right - surface.left) / 190.0, (surface.bottom - surface.top) / 230.0);
        for (const auto& a : surface.labels)
            for (const auto& b : surface.labels)
                EXPECT_TRUE(&a == &b || std::abs(a.x - b.x) > 18 * pixel || std::abs(a.y - b.y) > 14 * pixel)
                    << model << ": " << a.text << " and " << b.text;
    }
}

TEST(Model_Pictures, a_model_that_there_is_not_draws_nothing)
{
    Recording_Surface surface;
    Draw_Model(surface, 6);
    EXPECT_TRUE(surface.lines.empty());
}

}  // namespace
}  // namespace lobemax
