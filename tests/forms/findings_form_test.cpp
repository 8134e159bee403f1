// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/findings_form.h"

#include <gtest/gtest.h>

#include <cmath>

#include "core/units.h"
#include "edit/rungs.h"
#include "files/example_designs.h"
#include "forms/home_commands.h"
#include "tests/support/cam_design.h"
#include "tests/support/script.h"

namespace lobemax {
namespace {

class Findings_Form : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        ASSERT_TRUE(Open_Example(design, "Double Dwell"));
    }
    void TearDown() override { design = {}; }

    static void Size(double prime, double roller)
    {
        design.cam.Prime_Rad = prime;
        design.cam.Follow_Rad = roller;
        ASSERT_TRUE(Run_Size(design));
    }
    static Finding One(Severity severity, bool beyond = false)
    {
        Finding finding;
        finding.name = "Name";
        finding.severity = severity;
        finding.beyond_limit = beyond;
        finding.sentence = "A sentence.";
        finding.advice = "An advice.";
        return finding;
    }

    testing::Script script_;
};

TEST_F(Findings_Form, a_sign_tells_severities_apart_without_colour)
{
    EXPECT_EQ(Sign_of(One(Severity::do_not_cut)), "\u2716");
    EXPECT_EQ(Sign_of(One(Severity::warning)), "\u26A0");
    EXPECT_EQ(Sign_of(One(Severity::note, true)), "\u26A0");
    EXPECT_EQ(Sign_of(One(Severity::note)), "\u2139");
    EXPECT_TRUE(Is_Grave(One(Severity::do_not_cut)) && Is_Grave(One(Severity::note, true)));
    EXPECT_FALSE(Is_Grave(One(Severity::warning)));
}

TEST_F(Findings_Form, a_mark_has_the_worst_of_its_place_and_a_tick_without_one)
{
    Check check;
    EXPECT_EQ(Sign_and_Words(check, std::nullopt), "\u2714 No findings");
    check.findings = {One(Severity::do_not_cut), One(Severity::note)};
    check.findings[1].place = Finding_Place::stress;
    check.findings[1].sentence = "Another.";
    EXPECT_EQ(Sign_and_Words(check, std::nullopt), "\u2716 Do not cut: A sentence.");
    EXPECT_EQ(Sign_and_Words(check, Finding_Place::size), "\u2716 Do not cut: A sentence.");
    EXPECT_EQ(Sign_and_Words(check, Finding_Place::stress), "\u2139 Note: Another.");
    EXPECT_EQ(Sign_and_Words(check, Finding_Place::forces), "\u2714 No findings");
    const std::string tip = Mark_Tip(design, check, Finding_Place::size);
    EXPECT_NE(tip.find("A sentence.\nAn advice.\n"), std::string::npos) << tip;
    EXPECT_NE(tip.find("All findings: 1 do not cut, 1 note"), std::string::npos) << tip;
}

TEST_F(Findings_Form, the_cells_of_a_line_are_its_figures_with_their_unit)
{
    Finding finding = One(Severity::do_not_cut);
    finding.row = 43.656;
    finding.truth = 42.097;
    finding.unit = "mm";
    finding.angle = 221.25;
    finding.segment = 4;
    const std::array<std::string, Finding_Columns> cells = Cells_of(design, finding);
    EXPECT_EQ(cells, (std::array<std::string, Finding_Columns>{"\u2716 Do not cut", "Name", "at 221.25 deg, segment 4",
                                                               "43.656 mm", "42.097 mm", "", "Size Cam"}));
}

TEST_F(Findings_Form, a_finding_leads_to_the_screen_whose_button_is_open)
{
    EXPECT_EQ(Button_of(Finding_Place::motion), Home_Button::Input);
    EXPECT_EQ(Button_of(Finding_Place::size), Home_Button::Size);
    EXPECT_EQ(Button_of(Finding_Place::forces), Home_Button::Force);
    EXPECT_EQ(Button_of(Finding_Place::stress), Home_Button::Stress);
    EXPECT_TRUE(May_Go(design, Finding_Place::stress));
    design.flags.Dynamicflag = false;
    EXPECT_FALSE(May_Go(design, Finding_Place::stress));
    EXPECT_TRUE(May_Go(design, Finding_Place::forces));
    design = {};
    EXPECT_FALSE(May_Go(design, Finding_Place::size));
}

TEST_F(Findings_Form, a_chart_has_the_limits_of_its_row_in_the_rows_unit)
{
    Limits limits;
    limits[Limit::Torque] = 20.0;          // N-m
    limits[Limit::Contact_Force] = 100.0;  // N
    limits[Limit::Sigma] = 900.0;          // N/mm^2
    const auto values = [&](int row) {
        std::vector<double> found;
        for (const Limit_Level& level : Levels_of(design, limits, row))
            found.push_back(level.value);
        return found;
    };
    EXPECT_EQ(values(var::Phi), (std::vector<double>{30, -30}));
    EXPECT_EQ(Levels_of(design, limits, var::Phi).front().words, "limit 30 deg");
    EXPECT_EQ(values(var::Torque), (std::vector<double>{20, -20}));
    EXPECT_EQ(values(var::Force), (std::vector<double>{100}));
    EXPECT_EQ(values(var::Sigma_Max), (std::vector<double>{-900}));  // compression is negative
    EXPECT_EQ(values(var::S), std::vector<double>{});
    design.cam.Follow_Rad = 20.0;
    EXPECT_EQ(values(var::Rho), (std::vector<double>{30}));  // 1.5 rollers
    design.cam.Followtype = 2;
    EXPECT_EQ(values(var::Rho), std::vector<double>{});
    design.cam.Translating = false;
    EXPECT_EQ(values(var::Phi), (std::vector<double>{35, -35}));
    limits[Limit::Phi_Arm].reset();
    EXPECT_EQ(values(var::Phi), std::vector<double>{});
    // In inches, pounds and psi: 1 lb = 4.4482216 N, 1 in-lb = 0.11298483 N-m, 1 psi = 6894.757 Pa.
    ASSERT_TRUE(Convert_Units(design, 1));
    EXPECT_NEAR(values(var::Force).at(0), 22.480894, 1e-5);
    EXPECT_NEAR(values(var::Torque).at(0), 177.01492, 1e-4);
    EXPECT_NEAR(values(var::Sigma_Max).at(0), -130534.0, 1.0);
}

TEST_F(Findings_Form, true_values_stand_in_the_unit_of_their_row)
{
    Size(60.0, 20.0);
    Contact_Field refused{};
    ASSERT_TRUE(Run_Forces(design));
    Put_Materials(design);
    ASSERT_TRUE(Run_Stress(design, refused));
    const Check check = Check_Design(design, {});
    // Without an offset the rows of a translating roller are right, but for the stress of the clipped radius and the
    // force, which the row has along the stem and the truth across the contact.
    const auto& data = design.results.CalcData;
    const auto phi = True_Values(design, check, var::Phi);
    const auto rho = True_Values(design, check, var::Rho);
    const auto force = True_Values(design, check, var::Force);
    const auto sigma = True_Values(design, check, var::Sigma_Max);
    ASSERT_EQ(phi.size(), 361U);
    ASSERT_EQ(rho.size(), 361U);
    ASSERT_EQ(force.size(), 361U);
    ASSERT_EQ(sigma.size(), 361U);
    int straight = 0;
    for (int i = 0; i <= 360; ++i) {
        const auto at = static_cast<std::size_t>(i);
        EXPECT_NEAR(phi[at], data(var::Phi, i), 1e-3) << i;
        EXPECT_NEAR(force[at], data(var::Force, i) / std::cos(data(var::Phi, i) * Rad_per_Deg), 1e-2) << i;
        straight += std::isinf(rho[at]) ? 1 : 0;
        if (std::abs(rho[at]) < 500.0) {
            EXPECT_NEAR(rho[at] / data(var::Rho, i), 1.0, 1e-3) << i;
        }
        EXPECT_LT(sigma[at], 0.0) << i;
    }
    EXPECT_NEAR(sigma[135] / data(var::Sigma_Max, 135), 1.0, 0.01);  // in the dwell at the top
    EXPECT_LT(straight, 20);
    EXPECT_TRUE(True_Values(design, check, var::S).empty());
    EXPECT_TRUE(True_Values(design, check, var::Dynamic_Force).empty());  // there was no vibration
    EXPECT_TRUE(True_Values(design, Check(), var::Phi).empty());
    EXPECT_EQ(True_Values(design, check, var::Tau_Max).size(), 361U);
}

TEST_F(Findings_Form, grave_stretches_of_the_size_are_those_of_the_drawing)
{
    Check check;
    check.findings = {One(Severity::do_not_cut), One(Severity::warning), One(Severity::note, true),
                      One(Severity::do_not_cut)};
    check.findings[0].stretch = {{10, 20}, {350, 5}};
    check.findings[1].stretch = {{30, 40}};
    check.findings[2].stretch = {{50, 60}};
    check.findings[3].stretch = {{70, 80}};
    check.findings[3].place = Finding_Place::forces;
    const std::vector<Cam_Stretch> warned = Warned_Stretches(check);
    ASSERT_EQ(warned.size(), 3U);
    EXPECT_EQ(warned[0].to, 20.0);
    EXPECT_EQ(warned[1].from, 350.0);
    EXPECT_EQ(warned[2].from, 50.0);
    EXPECT_EQ(Warned_Stretches(check, Warned::faults).size(), 2U);
}

TEST_F(Findings_Form, profiles_alone_are_asked_about)
{
    int asked = 0;
    for (const Export_Entry& entry : Export_Menu())
        asked += Is_Profile_Export(entry.name) ? 1 : 0;
    EXPECT_EQ(asked, 12);  // fourteen of coordinates less the two that tell why they write nothing
    EXPECT_TRUE(Is_Profile_Export("mnu_Surface") && Is_Profile_Export("mnu_Barrel_mach"));
    for (const char* const name : {"mnu_Spread", "mnu_sva", "mnu_Cadkey", "mnu_Cutter_mach", "mnu_Unknown"})
        EXPECT_FALSE(Is_Profile_Export(name)) << name;
}

TEST_F(Findings_Form, the_true_surface_is_offered_where_the_rows_alone_are_wrong)
{
    Size(60.0, 20.0);
    for (int i = 30; i < 40; ++i)  // rows that another program has spoilt
        design.results.CalcData(var::X_Surface, i) = design.results.CalcData(var::X_Surface, i) + 1.0;
    ASSERT_TRUE(Check_Design(design, {}).Do_Not_Cut());
    True_Offer offer = Offer_of_True_Surface(design, {});
    EXPECT_TRUE(offer.there && offer.sound);
    Size(42.0, 40.0);  // the roller is larger than the path's radius
    ASSERT_TRUE(Check_Design(design, {}).Do_Not_Cut());
    offer = Offer_of_True_Surface(design, {});
    EXPECT_TRUE(offer.there);
    EXPECT_FALSE(offer.sound);
    EXPECT_EQ(offer.words, "The true surface must not be cut either: the fault is in the design, not in the rows.");
    design.cam.Offset = 50.0;  // beyond the prime radius
    offer = Offer_of_True_Surface(design, {});
    EXPECT_FALSE(offer.there || offer.sound);
    EXPECT_FALSE(offer.words.empty());
}

}  // namespace
}  // namespace lobemax
