// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Arcs.h"

#include <cmath>

#include "core/variables.h"
#include "edit/door.h"
#include "paint/chart.h"
#include "screens/frm_Import_data.h"
#include "tests/support/desktop_design.h"
#include "tests/support/import_boxes.h"

namespace lobemax {
namespace {

using screens::Element;
using screens::frm_Arcs;
using screens::frm_Import_data;
using testing::Driver;

constexpr double pi = 3.14159265358979323846;

class Arcs_Screen : public testing::Desktop_Test {
protected:
    static void Fill_Arcs(const Driver& user, const char* roller)
    {
        user.Fill("txt_Base", "20");
        user.Fill("txt_Flank", "60");
        user.Fill("txt_Nose", "5");
        user.Fill("txt_Lift", "8");
        user.Fill("txt_Roller", roller);
    }
    /// Presses cmd_Arcs on the import screen and plays the screen that opens.
    static void Play_Arcs(const Driver& import, const std::function<void(const Driver&)>& play)
    {
        int played = 0;
        const testing::Modals modals([&](QDialog& open) {
            ++played;
            EXPECT_EQ(open.objectName(), "frm_Arcs");
            play(Driver(open));
        });
        import.Press("cmd_Arcs");
        EXPECT_EQ(played, 1);
        QApplication::setActiveWindow(import.Find<QWidget>("cmd_Arcs").window());
    }
    void Take_Arcs(const Driver& import, const char* roller)
    {
        script_.Expect(Arcs_Read_Box);
        Play_Arcs(import, [roller](const Driver& user) {
            Fill_Arcs(user, roller);
            user.Press("cmd_OK");
        });
    }
    void Save(const Driver& import)
    {
        import.Press("cmd_Calc");
        import.Fill("txt_Omega", "600");
        script_.Expect(testing::Functions_Saved_Box);
        import.Press("cmd_Save_Functions");
    }

    const testing::Expected_Box Arcs_Read_Box{"File of arcs\n\n   of Cam Profile data successfully read."};
};

TEST_F(Arcs_Screen, says_what_its_arcs_make_as_they_are_typed)
{
    frm_Arcs screen;
    const Driver user(screen);
    EXPECT_EQ(user.Text("unit_txt_Roller"), "mm");
    EXPECT_FALSE(user.Enabled("cmd_OK"));
    EXPECT_EQ(user.Text("lbl_Arcs"), "Base, flank, nose and lift of a cam of arcs must be above zero.");
    user.Fill("txt_Base", "20");
    user.Fill("txt_Nose", "5");
    user.Fill("txt_Lift", "8");
    user.Type("txt_Flank", "6");
    EXPECT_EQ(user.Text("lbl_Arcs"), "The flank's radius must be larger than those of base and nose.");
    EXPECT_FALSE(user.Enabled("cmd_OK"));
    user.Type("txt_Flank", "60");  // not left yet
    // 55^2 = 23^2 + 40^2 + 2 * 23 * 40 cos(60.86 degrees), on both sides.
    EXPECT_EQ(user.Text("lbl_Arcs"), "The lobe lasts 121.72 degrees of cam angle.");
    EXPECT_TRUE(user.Enabled("cmd_OK"));
    user.Type("txt_Base", "1E400");  // no box at each key
    EXPECT_EQ(user.Text("lbl_Arcs"), "These lengths are too large.");
    user.Type("txt_Base", "20");
    user.Press("cmd_OK");
    EXPECT_EQ(screen.result(), QDialog::Accepted);
    EXPECT_EQ(screen.Form().txt_Flank, "60");
}

TEST_F(Arcs_Screen, a_flat_face_goes_from_its_radii_to_the_motion_of_the_design)
{
    Build("Double Dwell");
    frm_Import_data screen;
    const Driver user(screen);
    user.Fill("txt_follower", "25");
    user.Press(Element("opt_Coord", 1));
    Take_Arcs(user, "");
    EXPECT_EQ(user.Text("txt_Base"), "20");
    EXPECT_EQ(user.Text("txt_follower"), "");
    EXPECT_EQ(user.Text("txt_Data"), "361");
    EXPECT_TRUE(user.Checked("chk_Close"));
    EXPECT_TRUE(user.Checked(Element("opt_Coord", 0)));
    EXPECT_EQ(design.cam.Followtype, 1) << "the follower changes with the functions";
    Save(user);
    EXPECT_EQ(design.cam.Followtype, 2);
    EXPECT_EQ(design.cam.Prime_Rad, 20.0);
    EXPECT_EQ(design.cam.Follow_Rad, 0.0);
    // The support of each circle along the face: the nose's to 39.44 degrees from its middle, the flank's to 60.86.
    const double end = std::acos((55.0 * 55.0 - 23.0 * 23.0 - 40.0 * 40.0) / (2 * 23.0 * 40.0));
    EXPECT_NEAR(Data(var::S, 180), 8.0, 1E-5);
    EXPECT_NEAR(Data(var::S, 180 + 20), 5 + 23 * std::cos(20 * pi / 180) - 20, 1E-4);
    EXPECT_NEAR(Data(var::S, 180 - 50), 60 - 40 * std::cos(50 * pi / 180 - end) - 20, 1E-4);
    EXPECT_NEAR(Data(var::S, 0), 0.0, 1E-5);
    user.Press("cmd_Done");
    EXPECT_TRUE(design.flags.Imported_Model && design.flags.Calculated);
}

TEST_F(Arcs_Screen, a_roller_brings_the_radius_of_its_centre)
{
    Build("Flat Follower");
    ASSERT_EQ(design.cam.Followtype, 2);
    frm_Import_data screen;
    const Driver user(screen);
    user.Pick("cmb_Delta", "0.50");
    Take_Arcs(user, "9");
    EXPECT_EQ(user.Text("txt_Base"), "29");
    EXPECT_EQ(user.Text("txt_follower"), "9");
    EXPECT_EQ(user.Text("txt_Data"), "721");
    // What was typed stands there again; Cancel leaves everything.
    Play_Arcs(user, [](const Driver& arcs) {
        EXPECT_EQ(arcs.Text("txt_Flank"), "60");
        arcs.Fill("txt_Lift", "9");
        arcs.Press("cmd_Cancel");
    });
    EXPECT_EQ(user.Text("txt_Base"), "29");
    Play_Arcs(user, [](const Driver& arcs) {
        EXPECT_EQ(arcs.Text("txt_Lift"), "8");
        arcs.Press("cmd_Cancel");
    });
    Save(user);
    EXPECT_EQ(design.cam.Followtype, 1);
    EXPECT_EQ(design.cam.Prime_Rad, 29.0);
    EXPECT_EQ(design.cam.Follow_Rad, 9.0);
    // 10 degrees from the nose's middle; its arc goes to 14.7. The roller's centre is 14 from the nose's centre, which
    // is 23 from the cam's.
    const double s = 23 * std::sin(10 * pi / 180);
    EXPECT_NEAR(Data(var::S, 2 * (180 - 10)), 23 * std::cos(10 * pi / 180) + std::sqrt(14 * 14 - s * s) - 29, 1E-4);
}

TEST_F(Arcs_Screen, arcs_need_a_follower_along_a_line)
{
    frm_Import_data screen;
    const Driver user(screen);
    script_.Expect({"For an oscillating follower, your displacement data must be in degrees."});
    user.Press(Element("opt_Folmotion", 1));
    Take_Arcs(user, "");
    EXPECT_TRUE(user.Checked(Element("opt_Folmotion", 0)));
    EXPECT_TRUE(design.cam.Translating);
}

TEST_F(Arcs_Screen, another_step_asks_for_the_arcs_again_and_a_series_takes_them_open)
{
    frm_Import_data screen;
    const Driver user(screen);
    Take_Arcs(user, "");
    script_.Expect({"Must reimport the data after changing delta theta"});
    user.Pick("cmb_Delta", "0.50");
    EXPECT_EQ(user.Text("txt_Data"), "");
    user.Press(Element("opt_Interpolate", 1));
    script_.Expect(Arcs_Read_Box);
    Play_Arcs(user, [](const Driver& arcs) { arcs.Press("cmd_OK"); });
    EXPECT_EQ(user.Text("txt_Data"), "720");
    EXPECT_FALSE(user.Checked("chk_Close"));
    user.Press("cmd_Calc");
    EXPECT_TRUE(user.Enabled("cmd_Save_Functions"));
}

}  // namespace
}  // namespace lobemax
