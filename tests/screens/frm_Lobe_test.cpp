// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Lobe.h"

#include <QAction>
#include <cmath>

#include "core/variables.h"
#include "screens/frm_HomeScreen.h"
#include "screens/resources.h"
#include "tests/support/desktop_design.h"

namespace lobemax {
namespace {

using screens::frm_HomeScreen;
using screens::frm_Lobe;
using testing::Driver;

class Lobe_Screen : public testing::Desktop_Test {
protected:
    /// A triangle of 10 about 350 degrees, 40 wide on each side.
    static void Fill_Triangle()
    {
        for (int i = 0; i <= 360; ++i)
            design.results.CalcData(var::S, i) = std::max(0.0, 10 - std::abs(std::remainder(i - 350.0, 360.0)) / 4);
    }
};

TEST_F(Lobe_Screen, follows_the_lift_as_it_is_typed)
{
    Build("Double Dwell");
    Fill_Triangle();
    frm_Lobe screen;
    const Driver user(screen);
    EXPECT_EQ(user.Text("txt_Lift"), "5");
    EXPECT_EQ(user.Text("unit_txt_Lift"), "mm");
    EXPECT_EQ(user.Text("lbl_Opens"), "330");
    EXPECT_EQ(user.Text("lbl_Closes"), "370");
    EXPECT_EQ(user.Text("lbl_Duration"), "40");
    EXPECT_EQ(user.Text("lbl_Centre"), "350");
    EXPECT_EQ(user.Text("lbl_Peak"), "350");
    EXPECT_EQ(user.Text("lbl_Area"), "400");
    EXPECT_EQ(user.Text("unit_lbl_Duration"), "deg");
    EXPECT_EQ(user.Text("unit_lbl_Area"), "mm-deg");
    EXPECT_EQ(user.Text("cap_lbl_Area"), "Lobe area");
    user.Type("txt_Lift", "7.5");  // not left yet
    EXPECT_EQ(user.Text("lbl_Opens"), "340");
    EXPECT_EQ(user.Text("lbl_Duration"), "20");
    EXPECT_EQ(user.Text("lbl_Note"), "");
    user.Fill("txt_Lift", "10");
    EXPECT_EQ(user.Text("lbl_Opens"), "");
    EXPECT_EQ(user.Text("lbl_Note"),
              "No figures: the motion never has this lift above its lowest position, or has it always.");
    script_.Expect(testing::Copy_Box);
    user.Press("cmd_Copy");
    user.Press("cmd_Close");
    EXPECT_FALSE(screen.isVisible());
}

TEST_F(Lobe_Screen, opens_from_the_file_menu_where_a_motion_is_and_changes_nothing)
{
    screens::Load_Resources();
    frm_HomeScreen home("");
    auto* const entry = home.findChild<QAction*>("mnu_Lobe");
    ASSERT_NE(entry, nullptr);
    EXPECT_FALSE(entry->isEnabled());
    Build("Double Dwell");
    screens::Desk_History().Start_Anew();
    Mark_Saved(design);
    home.Refresh();
    ASSERT_TRUE(entry->isEnabled());
    int played = 0;
    const testing::Modals modals([&](QDialog& open) {
        ++played;
        EXPECT_EQ(open.objectName(), "frm_Lobe");
        const Driver user(open);
        // A rise of 25 mm in 90 degrees, a dwell of 90, the same back: symmetric about the dwell's middle.
        EXPECT_EQ(user.Text("txt_Lift"), "12.5");
        EXPECT_NEAR(std::stod(user.Text("lbl_Opens")), 45.0, 0.01);
        EXPECT_NEAR(std::stod(user.Text("lbl_Duration")), 180.0, 0.02);
        EXPECT_NEAR(std::stod(user.Text("lbl_Peak")), 135.0, 1.0);
        user.Fill("txt_Lift", "1");
        user.Press("cmd_Close");
    });
    entry->trigger();
    EXPECT_EQ(played, 1);
    EXPECT_FALSE(screens::Desk_History().May_Undo());
    EXPECT_FALSE(Unsaved(design));
}

}  // namespace
}  // namespace lobemax
