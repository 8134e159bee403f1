// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/import_form.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>

#include "core/startup.h"
#include "core/text.h"
#include "edit/door.h"
#include "edit/rungs.h"
#include "files/example_designs.h"
#include "tests/support/import_boxes.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Expected_Box;
using testing::Script;

constexpr double pi = 3.14159265358979323846;

class Import_Screen_Form : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        std::filesystem::create_directories(folder_);
        script_.path = folder_ + "/lobe.txt";
        form_ = Opening_Import_Form(design);
    }
    void TearDown() override
    {
        std::filesystem::remove_all(folder_);
        design = {};
    }

    void Write(const std::string& content) const { std::ofstream(*script_.path, std::ios::binary) << content; }
    /// A harmonic of 10 over the turn at steps of a degree.
    static std::string Harmonic(int last)
    {
        std::string text;
        for (int i = 0; i <= last; ++i)
            text += std::to_string(i) + " " + Shortest(Single(20 - 5 * std::cos(i * pi / 180))) + "\n";
        return text;
    }
    Form_Entry Enter(std::string_view name, const std::string& typed)
    {
        const auto& row = *std::ranges::find(Fields_of_Import(), name, &Form_Control::name);
        const Form_Entry entry = row.enter(design, form_, typed);
        form_.*row.text = entry.text;
        return entry;
    }
    void Read_Closed()
    {
        Write(Harmonic(359));
        Enter("txt_Base", "30");
        form_.close = true;
        script_.Expect(testing::Profile_Read_Box);
        ASSERT_TRUE(Import_Data(design, form_));
    }
    void Fit()
    {
        Read_Closed();
        ASSERT_TRUE(Fit_Functions(design, form_));
    }
    bool Open(bool Import_Buttons::*button) const { return Buttons_of_Import(form_).*button; }

    const std::string folder_ = ::testing::TempDir() + "lobemax_import_form_" + std::to_string(::getpid());
    Script script_;
    Import_Form form_;
};

TEST_F(Import_Screen_Form, opens_empty_but_over_an_imported_model)
{
    EXPECT_EQ(form_.txt_Omega, "");
    EXPECT_EQ(form_.txt_Base, "");
    EXPECT_EQ(Import_Units_Item(design), "mm-Kg-s");
    EXPECT_EQ(Step_Item(design), "1.0");
    ASSERT_TRUE(Open_Example(design, "Double Dwell"));
    EXPECT_EQ(Opening_Import_Form(design).txt_Base, "") << "a measured cam has its own";
    design.flags.Imported_Model = true;
    design.cam.Prime_Rad = 42.5;
    Put(design, "Shaft speed", 2 * pi);
    const Import_Form again = Opening_Import_Form(design);
    EXPECT_EQ(again.txt_Omega, "60");
    EXPECT_EQ(again.txt_Base, "42.5");
}

TEST_F(Import_Screen_Form, asks_for_a_text_file_by_its_dialog)
{
    const File_Dialog dialog = Import_Dialog();
    EXPECT_EQ(dialog.title, "Open a Cam Profile data file");
    EXPECT_EQ(dialog.filter, "Profile Import (*.txt)|*.txt|(*.*)|*.*|");
    EXPECT_EQ(dialog.suggestion, "*.txt");
    Read_Closed();
    ASSERT_EQ(script_.dialogs.size(), 1U);
    EXPECT_EQ(script_.dialogs[0].title, dialog.title);
    // Without a file all stays.
    script_.path.reset();
    EXPECT_FALSE(Import_Data(design, form_));
    EXPECT_EQ(Data_Text(form_), "361");
}

TEST_F(Import_Screen_Form, needs_the_prime_radius_before_it_reads)
{
    Write(Harmonic(359));
    script_.Expect({"Please type the cam's prime radius in its box", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Import_Data(design, form_));
    EXPECT_EQ(Data_Text(form_), "");
    EXPECT_FALSE(Open(&Import_Buttons::cmd_Calc));
}

TEST_F(Import_Screen_Form, opens_its_buttons_with_each_step_and_closes_them_with_each_change)
{
    EXPECT_FALSE(Open(&Import_Buttons::cmd_Calc) || Open(&Import_Buttons::fitted) || Open(&Import_Buttons::cmd_Done));
    Fit();
    EXPECT_TRUE(Open(&Import_Buttons::cmd_Calc) && Open(&Import_Buttons::fitted));
    EXPECT_FALSE(Open(&Import_Buttons::cmd_Done));
    Enter("txt_Omega", "120");
    const auto save = [this] {
        if (!form_.profile.fitted) {
            EXPECT_TRUE(Fit_Functions(design, form_));
        }
        script_.Expect(testing::Functions_Saved_Box);
        EXPECT_EQ(Save_Imported(design, form_), Save_Outcome::stored);
        EXPECT_TRUE(Open(&Import_Buttons::cmd_Done));
    };
    struct Change {
        const char* what;
        bool keeps_fit;
        std::function<void()> make;
    };
    for (const Change& change : {Change{"speed", true, [&] { Enter("txt_Omega", "130"); }},
                                 {"prime radius", true, [&] { Enter("txt_Base", "31"); }},
                                 {"roller", true, [&] { Enter("txt_follower", "8"); }},
                                 {"raw", true, [&] { Choose_Raw(form_, true); }},
                                 {"units", true, [&] { Choose_Import_Units(design, form_, "SI"); }},
                                 {"method", false, [&] { Choose_Import_Method(form_, Fit_Method::lanczos); }},
                                 {"harmonics", false, [&] { Enter("txt_Harmonics", "9"); }},
                                 {"bound", false, [&] { Enter("txt_Bound", "0.01"); }},
                                 {"shift", false, [&] { Enter("txt_ShiftAng", "20"); }},
                                 {"normalize", false, [&] { Choose_Normalize(design, form_, true); }}}) {
        save();
        change.make();
        EXPECT_EQ(Open(&Import_Buttons::fitted), change.keeps_fit) << change.what;
        EXPECT_FALSE(Open(&Import_Buttons::cmd_Done)) << change.what;
        EXPECT_TRUE(form_.overwritten);
    }
}

TEST_F(Import_Screen_Form, follows_a_choice_of_reading_without_the_file)
{
    Read_Closed();
    EXPECT_EQ(Data_Text(form_), "361");
    std::filesystem::remove(*script_.path);
    Choose_Close(design, form_, false);
    EXPECT_EQ(Data_Text(form_), "360");
    Choose_Normalize(design, form_, true);
    EXPECT_EQ(form_.profile.y.front(), 0.0F);
    Enter("txt_ShiftAng", "90");
    EXPECT_NEAR(form_.profile.x.front(), pi / 2, 1E-6);
    // As points of a path, displacements are radii less the prime radius.
    Choose_Normalize(design, form_, false);
    Choose_Import_Coord(design, form_, Import_Coord::XY);
    ASSERT_EQ(Data_Text(form_), "361");
    const double before = form_.profile.y[5];
    Enter("txt_Base", "25");
    EXPECT_NEAR(form_.profile.y[5], before + 5.0, 1E-3);
}

TEST_F(Import_Screen_Form, wants_the_file_again_after_a_change_of_the_step)
{
    EXPECT_TRUE(Choose_Import_Step(design, form_, "0.50"));  // nothing was read yet
    EXPECT_EQ(design.motion.Deltatheta, 0.5);
    Fit();
    EXPECT_TRUE(Choose_Import_Step(design, form_, "0.50"));  // no change
    EXPECT_TRUE(form_.profile.fitted);
    script_.Expect({"Must reimport the data after changing delta theta"});
    EXPECT_TRUE(Choose_Import_Step(design, form_, "0.25"));
    EXPECT_EQ(Step_Item(design), "0.25");
    EXPECT_EQ(Data_Text(form_), "");
    EXPECT_FALSE(Open(&Import_Buttons::cmd_Calc) || Open(&Import_Buttons::fitted));
    script_.Expect({"Please select one of the drop-down menu items for Delta Theta"});
    EXPECT_FALSE(Choose_Import_Step(design, form_, "0.3"));
    EXPECT_EQ(design.motion.Deltatheta, 0.25);
}

TEST_F(Import_Screen_Form, knows_the_units_by_their_items_and_no_others)
{
    int code = 1;
    for (const std::string_view item : Import_Units_Items()) {
        EXPECT_TRUE(Choose_Import_Units(design, form_, item));
        EXPECT_EQ(design.identity.WhichUnit, code++);
        EXPECT_EQ(Import_Units_Item(design), item);
    }
    script_.Expect({"Please select one of the drop-down menu items for units"});
    EXPECT_FALSE(Choose_Import_Units(design, form_, "furlongs"));
    EXPECT_EQ(design.identity.WhichUnit, 5);
    EXPECT_EQ(std::vector<std::string_view>(Import_Units_Items().begin(), Import_Units_Items().end()),
              (std::vector<std::string_view>{"ips", "fps", "SI", "cm-Kg-s", "mm-Kg-s"}));
}

TEST_F(Import_Screen_Form, shows_the_step_with_a_comma_where_it_is_the_decimal_sign)
{
    design.identity.Number_Format = "Europe";
    EXPECT_EQ(Step_Item(design), "1,0");
    EXPECT_TRUE(Choose_Import_Step(design, form_, "0,125"));
    EXPECT_EQ(design.motion.Deltatheta, 0.125);
}

TEST_F(Import_Screen_Form, tells_what_the_data_of_an_arm_must_be)
{
    script_.Expect({"For an oscillating follower, your displacement data must be in degrees."});
    Choose_Import_Motion(design, form_, false);
    EXPECT_FALSE(design.cam.Translating);
    Choose_Import_Motion(design, form_, false);  // no change
    Choose_Import_Motion(design, form_, true);
    EXPECT_TRUE(design.cam.Translating);
}

TEST_F(Import_Screen_Form, refuses_figures_that_no_cam_has)
{
    Enter("txt_Base", "30");
    script_.Expect(
        {"Prime radius cannot be zero or negative or less than the offset", Buttons::OK, Symbol::exclamation});
    EXPECT_EQ(Enter("txt_Base", "-3").text, "30");
    const Verdict zero = Query(design, "Shaft speed", 0.0);
    script_.Expect({zero.sentence, Buttons::OK, Symbol::exclamation});
    EXPECT_EQ(Enter("txt_Omega", "0").text, "");
    script_.Expect({"The follower radius must be zero or positive", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Enter("txt_follower", "-1").accepted);
    script_.Expect({"This value must be positive.  Please redo.", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Enter("txt_Bound", "0").accepted);
    EXPECT_EQ(Enter("txt_Harmonics", "99999").text, "1440");
    EXPECT_EQ(Enter("txt_Harmonics", "0").text, "") << "all of them";
    EXPECT_EQ(Enter("txt_Harmonics", "7.6").text, "8");
    EXPECT_THROW(Enter("txt_Base", "1E99"), Fault);
    for (const char* const name : {"txt_Base", "txt_Omega", "txt_follower", "txt_Bound", "txt_ShiftAng"})
        EXPECT_TRUE(Enter(name, "").accepted) << name << " may be empty until it is needed";
}

TEST_F(Import_Screen_Form, asks_for_speed_and_prime_radius_before_it_saves)
{
    Fit();
    const Expected_Box omega{"Please type the Cam Omega in its box", Buttons::OK_Cancel, Symbol::exclamation};
    script_.Expect(omega);
    EXPECT_EQ(Save_Imported(design, form_), Save_Outcome::no_omega);
    Expected_Box cancelled = omega;
    cancelled.answer = Answer::Cancel;
    script_.Expect(cancelled);
    EXPECT_EQ(Save_Imported(design, form_), Save_Outcome::refused);
    Enter("txt_Omega", "100");
    Enter("txt_Base", "");
    script_.Expect({"Please type the Prime Radius in its box", Buttons::OK_Cancel, Symbol::exclamation});
    EXPECT_EQ(Save_Imported(design, form_), Save_Outcome::no_base);
    EXPECT_FALSE(form_.stored || form_.overwritten);
    EXPECT_EQ(design.results.CalcData(var::S, 180), 0.0);
}

TEST_F(Import_Screen_Form, stores_speed_sizes_and_functions_in_the_units_picked)
{
    Fit();
    ASSERT_TRUE(Choose_Import_Units(design, form_, "ips"));  // after the reading: the numbers are inches all along
    Enter("txt_Omega", "60");
    Enter("txt_follower", "12");
    script_.Expect(testing::Functions_Saved_Box);
    ASSERT_EQ(Save_Imported(design, form_), Save_Outcome::stored);
    EXPECT_EQ(design.identity.WhichUnit, 1);
    EXPECT_EQ(design.cam.Prime_Rad, 30.0);
    EXPECT_EQ(design.cam.Follow_Rad, 12.0);
    EXPECT_NEAR(design.motion.Shaft_speed, 2 * pi, 1E-6);
    EXPECT_NEAR(design.results.CalcData(var::S, 180), 25.0, 1E-5);
    EXPECT_NEAR(design.results.CalcData(var::V, 90), 5 * 2 * pi, 1E-3);
    EXPECT_EQ(design.plot.Var_Unit(var::S), "in");
}

TEST_F(Import_Screen_Form, a_roller_above_the_prime_radius_is_refused_and_nothing_stored)
{
    Fit();
    Enter("txt_Omega", "60");
    Enter("txt_follower", "30");
    script_.Expect(
        {"Something is wrong\n\nThe follower radius is greater than the prime circle radius\n\nPlease check your data.",
         Buttons::OK, Symbol::exclamation});
    EXPECT_EQ(Save_Imported(design, form_), Save_Outcome::refused);
    EXPECT_FALSE(form_.stored || form_.overwritten);
    EXPECT_EQ(design.results.CalcData(var::S, 180), 0.0);
}

TEST_F(Import_Screen_Form, a_failed_fit_leaves_no_curve_and_no_button)
{
    Write(Harmonic(359));
    Enter("txt_Base", "30");
    script_.Expect(testing::Profile_Read_Box);
    ASSERT_TRUE(Import_Data(design, form_));
    script_.Expect({"The function is not periodic - will terminate the calculation. (Check = 1)"});
    script_.Expect({"Something is wrong with the solution - cannot continue"});
    EXPECT_FALSE(Fit_Functions(design, form_));
    EXPECT_TRUE(Open(&Import_Buttons::cmd_Calc));
    EXPECT_FALSE(Open(&Import_Buttons::fitted));
    EXPECT_EQ(Charts_of_Import(design, form_)[0].series.size(), 1U);
    Choose_Import_Method(form_, Fit_Method::smooth);
    script_.Expect({"Please type by how much a point may be moved in its box", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Fit_Functions(design, form_));
}

TEST_F(Import_Screen_Form, a_file_that_cannot_be_read_takes_the_one_before_away)
{
    Fit();
    Write("0 1\n10 2\n5 3\n");
    script_.Expect({"Line 3: the angle 5 does not rise above 10 of line 2.", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Import_Data(design, form_));
    EXPECT_EQ(Data_Text(form_), "");
    EXPECT_FALSE(Open(&Import_Buttons::fitted));
}

TEST_F(Import_Screen_Form, has_a_chart_for_each_derivative_per_degree)
{
    for (const Import_Chart& chart : Charts_of_Import(design, form_))
        EXPECT_TRUE(chart.series.empty());
    Enter("txt_ShiftAng", "40");
    Fit();
    const auto charts = Charts_of_Import(design, form_);
    ASSERT_EQ(charts.size(), 4U);
    ASSERT_EQ(charts[0].series.size(), 2U);
    const Import_Series& raw = charts[0].series[0];
    EXPECT_EQ(raw.name, "RawData");
    EXPECT_TRUE(std::ranges::is_sorted(raw.x)) << "by its place in the turn";
    EXPECT_GE(raw.x.front(), 0.0);
    EXPECT_LE(raw.x.back(), 360.001);
    for (std::size_t i = 0; i < raw.x.size(); i += 9)
        EXPECT_NEAR(raw.y[i], 20 - 5 * std::cos((raw.x[i] - 40) * pi / 180), 1E-4);
    const char* const names[]{"Splined", "Veloc", "Accel", "Jerk"};
    const char* const axes[]{"S  mm", "V  mm/deg", "A  mm/deg^2", "J  mm/deg^3"};
    for (std::size_t k = 0; k < 4; ++k) {
        EXPECT_EQ(charts[k].series.back().name, names[k]);
        EXPECT_EQ(charts[k].axis, axes[k]);
        EXPECT_EQ(charts[k].series.back().x.back(), 360.0);
    }
    EXPECT_NEAR(charts[1].series[0].y[130], 5 * pi / 180, 1E-5);
    design.cam.Translating = false;
    EXPECT_EQ(Charts_of_Import(design, form_)[1].axis, "V  deg/deg");
}

TEST_F(Import_Screen_Form, shows_the_entries_of_the_method_and_its_notes)
{
    EXPECT_EQ(Notes_of_Import(design, form_), "");
    EXPECT_FALSE(Harmonics_Open(form_) || Bound_Open(form_));
    Choose_Import_Method(form_, Fit_Method::fourier);
    EXPECT_TRUE(Harmonics_Open(form_) && !Bound_Open(form_));
    Choose_Import_Method(form_, Fit_Method::smooth);
    EXPECT_TRUE(!Harmonics_Open(form_) && Bound_Open(form_));
    Enter("txt_Bound", "0.01");
    Fit();
    const std::string notes = Notes_of_Import(design, form_);
    EXPECT_TRUE(notes.starts_with("The fit misses the data by 0.01 mm at most, at ")) << notes;
    EXPECT_NE(notes.find("\nThe smoothing moves a point by 0.01 mm at most, at "), std::string::npos) << notes;
    EXPECT_EQ(Derivatives_Text(),
              "These derivatives have units of length/degree and length/degree^2 \n"
              "and do not have the camshaft angular velocity yet applied to them.\n"
              "When the functions are saved, the angular velocity will be applied.\n"
              "Please be sure that the correct angular velocity is typed in its box.");
}

TEST_F(Import_Screen_Form, a_file_after_arcs_leaves_the_follower_of_the_design)
{
    script_.Expect({"File of arcs\n\n   of Cam Profile data successfully read."});
    ASSERT_TRUE(Import_Arcs(design, form_, {"20", "60", "5", "8", ""}));
    EXPECT_EQ(form_.Followtype, 2);
    EXPECT_EQ(form_.txt_Base, "20");
    Write(Harmonic(359));
    script_.Expect(testing::Profile_Read_Box);
    ASSERT_TRUE(Import_Data(design, form_));
    ASSERT_TRUE(Fit_Functions(design, form_));
    form_.txt_Omega = "120";
    script_.Expect(testing::Functions_Saved_Box);
    ASSERT_EQ(Save_Imported(design, form_), Save_Outcome::stored);
    EXPECT_EQ(design.cam.Followtype, 1);
    EXPECT_EQ(design.cam.Prime_Rad, 20.0);
}

TEST_F(Import_Screen_Form, arcs_that_make_no_cam_leave_what_was_read)
{
    Enter("txt_Base", "30");
    Write(Harmonic(359));
    script_.Expect(testing::Profile_Read_Box);
    ASSERT_TRUE(Import_Data(design, form_));
    script_.Expect(
        {"The flank's radius must be larger than those of base and nose.", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Import_Arcs(design, form_, {"20", "15", "5", "8", ""}));
    EXPECT_EQ(Data_Text(form_), "360");
    EXPECT_EQ(form_.txt_Base, "30");
}

}  // namespace
}  // namespace lobemax
