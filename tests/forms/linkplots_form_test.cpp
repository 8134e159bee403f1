// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/linkplots_form.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "core/startup.h"
#include "edit/examples.h"
#include "edit/rungs.h"
#include "tests/support/number_in.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

class Linkplots_Forms : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    void TearDown() override { design = {}; }
    static void Build(const char* example)
    {
        ASSERT_TRUE(Build_Example(design, example) && Run_Size(design) && Run_Linkage(design));
    }
    testing::Script script_;
};

TEST_F(Linkplots_Forms, the_lists_offer_none_and_every_function_by_its_title)
{
    Build("4-bar Linkage");
    const std::vector<std::string> texts = Link_Function_Texts(design);
    EXPECT_EQ(texts.front(), "None");
    EXPECT_EQ(texts.size(), Link_Functions(design).size() + 1);
    for (const char* const title :
         {"Angle of Link 2", "Omega of Link 3", "Alpha of Link 4", "Theta Out / Theta In", "Omega Out / Omega In"})
        EXPECT_NE(std::ranges::find(texts, title), texts.end()) << title;
    Build("6-bar Slider");
    const std::vector<std::string> sliding = Link_Function_Texts(design);
    for (const char* const title : {"Dsplcmt of Link 6", "Veloc of Link 6", "Accel of Link 6",
                                    "Dsplcmt Out / Dsplcmt In", "Velocity Out / Velocity In"})
        EXPECT_NE(std::ranges::find(sliding, title), sliding.end()) << title;
}

TEST_F(Linkplots_Forms, the_usual_plots_are_the_last_links_motion_and_its_ratio)
{
    for (const auto& [example, link] : {std::pair{"4-bar Linkage", 4}, std::pair{"6-bar Linkage", 6},
                                        std::pair{"4-bar Slider", 4}, std::pair{"6-bar Slider", 6}}) {
        Build(example);
        const std::vector<Link_Function> all = Link_Functions(design);
        const Link_Picks picks = Usual_Link_Picks(design);
        const std::vector<Link_Function> wanted{{link, Link_Quantity::position},
                                                {link, Link_Quantity::velocity},
                                                {link, Link_Quantity::acceleration},
                                                {0, Link_Quantity::position_ratio}};
        for (std::size_t k = 0; k < picks.size(); ++k)
            EXPECT_TRUE(all.at(static_cast<std::size_t>(picks[k])) == wanted[k]) << example << " " << k;
    }
}

TEST_F(Linkplots_Forms, figures_are_the_extremes_of_the_values)
{
    Build("4-bar Linkage");
    const Link_Function velocity{4, Link_Quantity::velocity};
    const Link_Plot_Figures figures = Figures_of_Link_Plot(design, velocity);
    const auto omega = design.results.Link_Omega.Points(4);
    const double least = *std::ranges::min_element(omega);
    const double largest = *std::ranges::max_element(omega);
    EXPECT_NEAR(testing::Number_In(figures.smallest), least, 1E-3);
    EXPECT_NEAR(testing::Number_In(figures.largest), largest, 1E-3);
    EXPECT_NEAR(testing::Number_In(figures.peak_to_peak), largest - least, 1E-3);
}

}  // namespace
}  // namespace lobemax
