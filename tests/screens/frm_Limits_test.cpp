// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Limits.h"

#include <QAction>

#include "files/limits_file.h"
#include "screens/frm_HomeScreen.h"
#include "screens/frm_Preferences.h"
#include "screens/resources.h"
#include "tests/support/desktop_design.h"

#include <QTemporaryDir>

namespace lobemax {
namespace {

using screens::Desk_Limits;
using screens::frm_Limits;
using testing::Driver;

class Limits_Screen : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        Build("Double Dwell");
    }
};

TEST_F(Limits_Screen, shows_all_limits_with_their_units_and_takes_entries_by_ok)
{
    frm_Limits screen;
    const Driver user(screen);
    for (const Limit_Entry& entry : Limit_Table()) {
        const QString key = screens::To_Qt(entry.key);
        EXPECT_EQ(user.Checked("chk_" + key), entry.usual.has_value()) << entry.key;
        EXPECT_EQ(user.Enabled("txt_" + key), entry.usual.has_value()) << entry.key;
        EXPECT_EQ(user.Text("chk_" + key), entry.caption);
        EXPECT_EQ(user.Text("unit_" + key), Unit_of_Limit(design, entry.limit));
        EXPECT_EQ(user.Text("lbl_" + key), entry.least ? "at least" : "at most");
    }
    user.Fill("txt_Phi", "25");
    user.Press("chk_Chord");
    user.Press("chk_Torque");
    EXPECT_TRUE(user.Find<QWidget>("txt_Torque").hasFocus());
    user.Fill("txt_Torque", "12.5");
    EXPECT_EQ(Desk_Limits(), Limits());  // not yet
    user.Press("cmd_OK");
    EXPECT_EQ(screen.result(), QDialog::Accepted);
    EXPECT_EQ(Desk_Limits()[Limit::Phi], 25.0);
    EXPECT_FALSE(Desk_Limits()[Limit::Chord]);
    EXPECT_EQ(Desk_Limits()[Limit::Torque], 12.5);
    EXPECT_FALSE(Unsaved(design));
}

TEST_F(Limits_Screen, a_refused_entry_comes_back_and_cancel_changes_nothing)
{
    frm_Limits screen;
    const Driver user(screen);
    script_.Expect({"A limit must be positive, or off.", Buttons::OK, Symbol::exclamation});
    user.Fill("txt_Phi", "0");
    EXPECT_EQ(user.Text("txt_Phi"), "30");
    user.Fill("txt_Phi", "20");
    QTest::keyClick(&screen, Qt::Key_Escape);
    EXPECT_FALSE(screen.isVisible());
    EXPECT_EQ(Desk_Limits(), Limits());
}

TEST_F(Limits_Screen, ok_waits_for_the_value_of_a_ticked_limit)
{
    frm_Limits screen;
    const Driver user(screen);
    user.Press("chk_V");
    script_.Expect({"'Velocity' is on and has no value.\nType one in mm/sec, or take the tick away.", Buttons::OK,
                    Symbol::exclamation});
    user.Press("cmd_OK");
    EXPECT_TRUE(screen.isVisible());
    user.Press("chk_V");
    user.Press("cmd_OK");
    EXPECT_FALSE(screen.isVisible());
}

TEST_F(Limits_Screen, a_tick_gives_back_what_its_entry_shows_and_usual_values_all)
{
    frm_Limits screen;
    const Driver user(screen);
    user.Fill("txt_Rho_Ratio", "2");
    user.Press("chk_Rho_Ratio");
    EXPECT_FALSE(user.Enabled("txt_Rho_Ratio"));
    user.Press("chk_Rho_Ratio");
    EXPECT_EQ(user.Text("txt_Rho_Ratio"), "2");
    user.Press("cmd_Usual");
    EXPECT_EQ(user.Text("txt_Rho_Ratio"), "1.5");
    user.Fill("txt_Phi", "28");
    user.Press("cmd_OK");
    EXPECT_EQ(Desk_Limits()[Limit::Rho_Ratio], 1.5);
    EXPECT_EQ(Desk_Limits()[Limit::Phi], 28.0);
}

TEST_F(Limits_Screen, opens_from_home_and_preferences_and_changed_limits_are_kept)
{
    screens::Load_Resources();
    const QTemporaryDir folder;
    const std::string place = folder.path().toStdString() + "/";
    const auto before = screens::Keep_Limits([&](const Limits& limits) { Write_Limits(design, place, limits); });
    int played = 0;
    const testing::Modals modals([&](QDialog& open) {
        const Driver user(open);
        if (open.objectName() == "frm_Preferences") {
            user.Press("cmd_Limits");
            user.Press("cmd_Exit");
            return;
        }
        EXPECT_EQ(open.objectName(), "frm_Limits");
        user.Fill("txt_Phi", ++played == 1 ? "27" : "26");
        user.Press("cmd_OK");
    });
    screens::frm_HomeScreen home("");
    home.findChild<QAction*>("mnu_Limits")->trigger();
    EXPECT_EQ(played, 1);
    EXPECT_EQ(Read_Limits(design, place)[Limit::Phi], 27.0);
    home.findChild<QAction*>("mnu_Preferences")->trigger();
    EXPECT_EQ(played, 2);
    EXPECT_EQ(Read_Limits(design, place)[Limit::Phi], 26.0);
    screens::Keep_Limits(before);
}

}  // namespace
}  // namespace lobemax
