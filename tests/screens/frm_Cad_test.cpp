// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Cad.h"

#include <QAction>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <fstream>
#include <sstream>

#include "edit/rungs.h"
#include "screens/frm_HomeScreen.h"
#include "screens/resources.h"
#include "tests/support/desktop_design.h"

namespace lobemax {
namespace {

using screens::frm_Cad;
using testing::Driver;

class Cad_Screen : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        Build("Double Dwell");
        ASSERT_TRUE(Run_Size(design));
    }
    std::string Place(const std::string& name) const { return folder_.path().toStdString() + "/" + name; }
    std::string Content(const std::string& name) const
    {
        std::ostringstream text;
        text << std::ifstream(Place(name), std::ios::binary).rdbuf();
        return text.str();
    }
    static std::string Told(const Driver& user)
    {
        return user.Find<QPlainTextEdit>("txt_Written").toPlainText().toStdString();
    }
    static bool Holds(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }
    QTemporaryDir folder_;
};

TEST_F(Cad_Screen, shows_the_options_of_the_kind_with_units_and_tips)
{
    frm_Cad screen;
    const Driver user(screen);
    for (const Cad_Kind_Entry& kind : Cad_Kind_Table()) {
        user.Pick("cmb_Kind", QString::fromStdString(std::string(kind.caption)));
        EXPECT_EQ(user.Text("lbl_Kind"), std::string(kind.words) + ".");
        for (const Cad_Kind_Entry& other : Cad_Kind_Table())
            for (const Cad_Option* option : Options_for(design, other.kind)) {
                const QString name = QString::fromStdString(Control_of_Option(other.kind, *option));
                EXPECT_EQ(user.Visible(name), other.kind == kind.kind) << name.toStdString();
                EXPECT_TRUE(Holds(user.Tip(name), std::string(option->words))) << name.toStdString();
                EXPECT_TRUE(Holds(user.Tip(name), "On the command line --")) << name.toStdString();
            }
    }
    EXPECT_EQ(user.Text("unit_txt_dxf_tolerance"), "mm");
    EXPECT_EQ(user.Text("txt_gcode_tool_radius"), "5");
}

TEST_F(Cad_Screen, writes_the_file_with_the_options_and_tells_what_it_is_made_of)
{
    frm_Cad screen;
    const Driver user(screen);
    script_.path = Place("cam.dxf");
    user.Fill("txt_dxf_bore", "20");
    user.Press("chk_dxf_keyway");
    user.Press("chk_dxf_notes");
    user.Press("cmd_Write");
    ASSERT_EQ(script_.dialogs.size(), 1U);
    EXPECT_EQ(script_.dialogs.front().suggestion, design.identity.Model_Name + ".dxf");
    EXPECT_TRUE(script_.dialogs.front().overwrite_prompt);
    EXPECT_TRUE(Holds(Content("cam.dxf"), "LWPOLYLINE"));
    EXPECT_TRUE(Holds(Content("cam.txt"), "KEYWAY: width 6 mm"));
    EXPECT_TRUE(Holds(Told(user), "Written: " + Place("cam.dxf"))) << Told(user);
    EXPECT_TRUE(Holds(Told(user), " arcs, closed, largest deviation ")) << Told(user);
    EXPECT_TRUE(screen.isVisible());
    // A drawing sheet by the same screen.
    script_.path = Place("cam.pdf");
    user.Pick("cmb_Kind", "Drawing sheet (PDF)");
    user.Pick("cmb_pdf_paper", "A2");
    user.Press("cmd_Write");
    EXPECT_TRUE(Content("cam.pdf").starts_with("%PDF"));
    EXPECT_TRUE(Holds(Told(user), "Sheet: A2, scale 1:1")) << Told(user);
}

TEST_F(Cad_Screen, the_unit_of_a_program_changes_its_usual_values_and_not_what_was_typed)
{
    frm_Cad screen;
    const Driver user(screen);
    user.Pick("cmb_Kind", "Milling or grinding program (G-code)");
    user.Fill("txt_gcode_depth", "7");
    user.Pick("cmb_gcode_units", "in");
    EXPECT_EQ(user.Text("txt_gcode_tool_radius"), "0.25");
    EXPECT_EQ(user.Text("unit_txt_gcode_feed"), "in/min");
    EXPECT_EQ(user.Text("txt_gcode_depth"), "7");
    script_.Expect({"passes: '1.5' is no whole number from -32767 to 32767.", Buttons::OK, Symbol::exclamation});
    user.Fill("txt_gcode_passes", "1.5");
    EXPECT_EQ(user.Text("txt_gcode_passes"), "1");
}

TEST_F(Cad_Screen, a_refusal_is_told_and_nothing_is_asked_or_written)
{
    frm_Cad screen;
    const Driver user(screen);
    script_.path = Place("cam.pdf");
    user.Pick("cmb_Kind", "Drawing sheet (PDF)");
    user.Fill("txt_pdf_every", "0.5");
    script_.Expect({"Radii are told every 1 to 90 degrees.", Buttons::OK, Symbol::exclamation});
    user.Press("cmd_Write");
    EXPECT_TRUE(script_.dialogs.empty());
    EXPECT_EQ(Told(user), "");
    user.Fill("txt_pdf_every", "10");
    script_.path.reset();  // the dialog is cancelled
    user.Press("cmd_Write");
    EXPECT_EQ(Told(user), "");
}

TEST_F(Cad_Screen, a_cam_that_must_not_be_cut_is_asked_about)
{
    design.cam.Follow_Rad = 0.95F * static_cast<float>(design.cam.Prime_Rad);
    ASSERT_TRUE(Run_Size(design));
    const Made_Cad made = Make_Cad(design, {.kind = Cad_Kind::dxf}, "a.dxf");
    ASSERT_TRUE(made.may_be_forced) << made.refusal;
    frm_Cad screen;
    const Driver user(screen);
    EXPECT_TRUE(Holds(user.Text("cmd_Mark"), "Do not cut"));
    script_.path = Place("cam.dxf");
    const testing::Expected_Box question{Question_of_Cad(made), Buttons::Yes_No, Symbol::exclamation, Answer::No};
    script_.Expect(question);
    user.Press("cmd_Write");
    EXPECT_TRUE(script_.dialogs.empty());
    testing::Expected_Box yes = question;
    yes.answer = Answer::Yes;
    script_.Expect(yes);
    user.Press("cmd_Write");
    EXPECT_TRUE(Holds(Content("cam.txt"), "WARNING: Do not cut this cam")) << Content("cam.txt");
    EXPECT_TRUE(Holds(Told(user), "WARNING: Do not cut this cam"));
}

TEST_F(Cad_Screen, opens_from_the_file_menu_once_a_motion_is_calculated)
{
    screens::Load_Resources();
    Mark_Saved(design);
    int played = 0;
    const testing::Modals modals([&](QDialog& open) {
        EXPECT_EQ(open.objectName(), "frm_Cad");
        ++played;
        Driver(open).Press("cmd_Close");
    });
    screens::frm_HomeScreen home("");
    QAction* const entry = home.findChild<QAction*>("mnu_Cad");
    EXPECT_TRUE(entry->isEnabled());
    entry->trigger();
    EXPECT_EQ(played, 1);
    EXPECT_FALSE(Unsaved(design));
}

}  // namespace
}  // namespace lobemax
