// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_InputData.h"

#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QMenuBar>
#include <QSet>
#include <QWheelEvent>

#include "core/text.h"
#include "core/traps.h"
#include "core/unit_change.h"
#include "core/units.h"
#include "edit/door.h"
#include "edit/examples.h"
#include "forms/input_form.h"
#include "motion/segments.h"
#include "screens/frm_Continuity.h"
#include "screens/frm_Input_Session.h"
#include "tests/support/desktop_design.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using screens::Element;
using screens::frm_InputData;
using testing::Driver;
using testing::Expected_Box;

class Input_Screen : public testing::Desktop_Test {
protected:
    /// Types one row by its controls.
    static void Type_Row(const Driver& user, int row, const QString& kind, const QString& program, const QString& beta,
                         const QString& low, const QString& high)
    {
        user.Pick(Element("cmb_Motion", row), kind);
        if (!program.isEmpty())
            user.Pick(Element("cmb_Program", row), program);
        user.Fill(Element("txt_Beta", row), beta);
        user.Fill(Element("txt_Low", row), low);
        if (!high.isEmpty())
            user.Fill(Element("txt_High", row), high);
    }
    static void Type_Double_Dwell(const Driver& user)
    {
        user.Fill("txt_Segmts", "4");
        Type_Row(user, 0, "Rise", "MT - Mod Trap", "90", "0", "25");
        Type_Row(user, 1, "Dwell", "", "90", "25", "");
        Type_Row(user, 2, "Fall", "MS - Mod Sine", "90", "25", "0");
        Type_Row(user, 3, "Dwell", "", "90", "0", "");
    }
    /// Presses keys on a drop-down list that has the focus, as they come.
    static void Type_in_List(const Driver& user, const QString& name, const QString& keys)
    {
        auto& list = user.Find<QComboBox>(name);
        EXPECT_TRUE(list.isEnabled()) << name.toStdString();
        list.setFocus();
        QTest::keyClicks(&list, keys);
        QApplication::processEvents();
    }
    /// Puts a text into the step's own field and leaves it.
    static void Type_Step(const Driver& user, const QString& text)
    {
        QLineEdit* const field = user.Find<QComboBox>("cmb_Delta").lineEdit();
        ASSERT_NE(field, nullptr);
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Tab);
        QApplication::processEvents();
    }
    static QAction& Action(const frm_InputData& screen, const QString& name)
    {
        auto* const action = screen.findChild<QAction*>(name);
        if (action == nullptr)
            throw std::out_of_range("no action " + name.toStdString());
        return *action;
    }
    Motion_Group& m_ = design.motion;
};

TEST_F(Input_Screen, opens_with_one_empty_row_and_nothing_to_calculate)
{
    frm_InputData screen({});
    const Driver user(screen);
    EXPECT_EQ(user.Text("txt_Segmts"), "1");
    EXPECT_EQ(user.Text("cmb_Delta"), "1.0");
    EXPECT_TRUE(user.Visible(Element("txt_Beta", 0)));
    EXPECT_FALSE(user.Visible(Element("txt_Beta", 1)));
    for (const char* name : {"cmd_CalcAll", "cmd_Done"})
        EXPECT_FALSE(user.Enabled(name)) << name;
    for (const char* name : {"cmd_CalcSeg", "cmd_PlotSeg", "cmd_PrntSeg", "cmb_Program", "txt_Low", "txt_High"})
        EXPECT_FALSE(user.Enabled(Element(name, 0))) << name;
    EXPECT_EQ(user.Text(Element("lbl_Start", 0)), "0");
    EXPECT_EQ(user.Tip(Element("txt_Beta", 0)), "Anglular duration of segment");
    EXPECT_EQ(user.Tip(Element("txt_Low", 0)), "Do not include prime circle radius in these data");
}

TEST_F(Input_Screen, a_kind_opens_what_it_needs)
{
    frm_InputData screen({});
    const Driver user(screen);
    const auto open = [&](const char* name) { return user.Enabled(Element(name, 0)); };
    user.Pick(Element("cmb_Motion", 0), "Rise");
    EXPECT_TRUE(open("cmb_Program"));
    EXPECT_EQ(user.Text(Element("cmb_Program", 0)), "");
    EXPECT_FALSE(open("txt_Low") || open("txt_High"));
    user.Pick(Element("cmb_Program", 0), "CF - Cycloid Full");
    EXPECT_TRUE(open("txt_Low") && open("txt_High"));
    EXPECT_EQ(m_.Program(1), "CF");
    user.Pick(Element("cmb_Motion", 0), "Dwell");
    EXPECT_EQ(user.Text(Element("cmb_Program", 0)), "DW - Dwell");
    EXPECT_TRUE(open("txt_Low"));
    EXPECT_FALSE(open("cmb_Program") || open("txt_High"));
    user.Pick(Element("cmb_Motion", 0), "Poly");
    EXPECT_EQ(user.Text(Element("cmb_Program", 0)), "PO - Polynomial");
    EXPECT_TRUE(open("txt_Low") && open("txt_High"));
    user.Pick(Element("cmb_Motion", 0), "Spline");
    EXPECT_EQ(user.Text(Element("cmb_Program", 0)), "BS - B-Spline");
    EXPECT_EQ(m_.Rise_Fall_Dwell(1), "S");
}

TEST_F(Input_Screen, a_program_of_another_kind_brings_its_kind)
{
    frm_InputData screen({});
    const Driver user(screen);
    for (const auto& [program, kind] : {std::pair{"PO - Polynomial", "Poly"}, std::pair{"BS - B-Spline", "Spline"},
                                        std::pair{"DW - Dwell", "Dwell"}}) {
        user.Pick(Element("cmb_Motion", 0), "Rise");
        user.Pick(Element("cmb_Program", 0), program);
        EXPECT_EQ(user.Text(Element("cmb_Motion", 0)), kind);
    }
}

TEST_F(Input_Screen, typed_by_hand_the_double_dwell_is_the_example)
{
    Build("Double Dwell");
    const Design_State example = design;
    ASSERT_TRUE(Sub_Main(design, "", {}));
    Set_Shaft_Speed(design, 18);
    frm_InputData screen({});
    const Driver user(screen);
    Type_Double_Dwell(user);
    EXPECT_TRUE(user.Enabled("cmd_CalcAll"));
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    user.Press("cmd_CalcAll");
    EXPECT_TRUE(user.Enabled("cmd_Done"));
    EXPECT_TRUE(design.flags.Calculated);
    for (const int v : {var::S, var::V, var::A, var::J})
        for (int i = 0; i <= 360; ++i)
            ASSERT_EQ(design.results.CalcData(v, i), example.results.CalcData(v, i)) << v << " " << i;
    user.Press("cmd_Done");
    EXPECT_EQ(screen.result(), QDialog::Accepted);
    EXPECT_EQ(m_.MaxLift, 25.0);
}

TEST_F(Input_Screen, typed_by_keys_alone_the_double_dwell_is_the_example)
{
    Build("Double Dwell");
    const Design_State example = design;
    ASSERT_TRUE(Sub_Main(design, "", {}));
    frm_InputData screen({});
    const Driver user(screen);
    const auto key_in = [&](const char* text) {  // into whatever has the focus, then on with the tabulator
        QTest::keyClicks(QApplication::focusWidget(), text);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QApplication::processEvents();
    };
    auto& count = user.Find<QLineEdit>("txt_Segmts");
    count.setFocus();
    count.selectAll();
    key_in("4");
    auto& speed = user.Find<QLineEdit>("txt_Omega");
    speed.setFocus();
    speed.selectAll();
    key_in("171.8873385");  // 18 rad/s
    user.Find<QComboBox>(Element("cmb_Motion", 0)).setFocus();
    for (const char* text : {"r", "mt", "90", "0", "25"})
        key_in(text);
    user.Find<QComboBox>(Element("cmb_Motion", 1)).setFocus();
    for (const char* text : {"D", "90"})
        key_in(text);
    user.Find<QComboBox>(Element("cmb_Motion", 2)).setFocus();
    for (const char* text : {"F", "MS", "90"})
        key_in(text);
    user.Fill(Element("txt_High", 2), "0");
    user.Find<QComboBox>(Element("cmb_Motion", 3)).setFocus();
    for (const char* text : {"d", "90"})
        key_in(text);
    user.Press("cmd_CalcAll");
    EXPECT_EQ(QApplication::focusWidget(), &user.Find<QWidget>("cmd_Done"));
    ASSERT_TRUE(user.Enabled("cmd_Done"));
    for (int i = 1; i <= 4; ++i) {
        EXPECT_EQ(m_.Rise_Fall_Dwell(i), example.motion.Rise_Fall_Dwell(i)) << i;
        EXPECT_EQ(m_.Program(i), example.motion.Program(i)) << i;
        EXPECT_EQ(m_.Start_Value(i), example.motion.Start_Value(i)) << i;
        EXPECT_EQ(m_.End_Value(i), example.motion.End_Value(i)) << i;
        EXPECT_EQ(m_.Gamma(i), 90.0 * i) << i;
    }
    for (const int v : {var::Angle, var::S, var::V, var::A, var::J})
        for (int i = 0; i <= 360; ++i) {
            const double expected = example.results.CalcData(v, i);
            ASSERT_NEAR(design.results.CalcData(v, i), expected, 1e-6 * std::abs(expected)) << v << " " << i;
        }
}

TEST_F(Input_Screen, a_kind_takes_its_first_letter_a_program_both_of_its_own)
{
    frm_InputData screen({});
    const Driver user(screen);
    const QString kind = Element("cmb_Motion", 0);
    const QString program = Element("cmb_Program", 0);
    for (const auto& [key, name] : {std::pair{"r", "Rise"}, std::pair{"P", "Poly"}, std::pair{"d", "Dwell"},
                                    std::pair{"S", "Spline"}, std::pair{"F", "Fall"}}) {
        Type_in_List(user, kind, key);
        EXPECT_EQ(user.Text(kind), name);
    }
    Type_in_List(user, kind, "x");
    EXPECT_EQ(user.Text(kind), "Fall");
    Type_in_List(user, program, "m");
    EXPECT_EQ(user.Text(program), "");  // a single letter does nothing
    EXPECT_EQ(m_.Program(1), "");
    Type_in_List(user, program, "t");
    EXPECT_EQ(user.Text(program), "MT - Mod Trap");
    Type_in_List(user, program, "xx");
    EXPECT_EQ(user.Text(program), "MT - Mod Trap");
    Type_in_List(user, program, "45");
    EXPECT_EQ(m_.Program(1), "45");
    Type_in_List(user, program, "p");
    user.Find<QWidget>(Element("txt_Beta", 0)).setFocus();  // a letter left alone is forgotten
    Type_in_List(user, program, "MS");
    EXPECT_EQ(m_.Program(1), "MS");
    Type_in_List(user, program, "po");
    EXPECT_EQ(user.Text(kind), "Poly");
    EXPECT_FALSE(user.Enabled(program));
}

TEST_F(Input_Screen, the_wheel_passes_over_the_lists_and_arrows_open_them)
{
    Build("Double Dwell");
    int built = 0;
    screens::Input_Services services;
    services.build_example = [&](const std::string&) { return ++built > 0; };
    frm_InputData screen(services);
    const Driver user(screen);
    for (const QString& name :
         {Element("cmb_Motion", 0), Element("cmb_Program", 0), QString("cmb_Delta"), QString("cmb_Examples")}) {
        auto& list = user.Find<QComboBox>(name);
        const int before = list.currentIndex();
        list.setFocus();
        const QPointF place = list.rect().center();
        QWheelEvent turn(place, list.mapToGlobal(place), {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                         false);
        QApplication::sendEvent(&list, &turn);
        QTest::keyClick(&list, Qt::Key_Down);
        EXPECT_TRUE(list.view()->isVisible()) << name.toStdString();
        list.hidePopup();
        EXPECT_EQ(list.currentIndex(), before) << name.toStdString();
    }
    EXPECT_EQ(built, 0);
    EXPECT_TRUE(m_.Seg_Done(1));
    EXPECT_TRUE(user.Enabled("cmd_Done"));
}

TEST_F(Input_Screen, a_step_that_is_not_listed_becomes_one_and_is_told)
{
    frm_InputData screen({});
    const Driver user(screen);
    Type_Step(user, "0.25");
    EXPECT_EQ(m_.Deltatheta, 0.25);
    script_.Expect({"Please select one of the drop-down menu items for Delta Theta"});
    Type_Step(user, "0.3");
    EXPECT_EQ(m_.Deltatheta, 1.0);
    EXPECT_EQ(user.Text("cmb_Delta"), "1.0");
}

TEST_F(Input_Screen, the_step_that_stands_is_no_change)
{
    Build("Double Dwell");
    frm_InputData screen({});
    const Driver user(screen);
    user.Pick("cmb_Delta", "1.0");
    Type_Step(user, "1.0");
    EXPECT_TRUE(user.Enabled("cmd_Done"));
    EXPECT_TRUE(design.flags.Sized);
}

TEST_F(Input_Screen, numbers_too_large_are_reported_and_the_value_is_written_back)
{
    frm_InputData screen({});
    const Driver user(screen);
    user.Fill("txt_Omega", "120");
    for (const auto& [field, shown] : {std::pair{"txt_Segmts", "1"}, std::pair{"txt_Omega", "120"},
                                       std::pair{"txt_ShiftAng", "0"}, std::pair{"txt_Beta(0)", ""}}) {
        script_.Expect(testing::Error_Box(6, Error_Description(6), QString(field).section('(', 0, 0).toStdString()));
        user.Fill(field, "1E999");
        EXPECT_EQ(user.Text(field), shown) << field;
    }
}

TEST_F(Input_Screen, an_emptied_duration_is_told_nothing)
{
    frm_InputData screen({});
    const Driver user(screen);
    script_.Expect({"Cam must contain exactly 360 degrees"});
    user.Fill(Element("txt_Beta", 0), "180");
    user.Fill(Element("txt_Beta", 0), "");
}

TEST_F(Input_Screen, dwells_side_by_side_show_one_position)
{
    frm_InputData screen({});
    const Driver user(screen);
    user.Fill("txt_Segmts", "4");
    user.Pick(Element("cmb_Motion", 0), "Dwell");
    user.Pick(Element("cmb_Motion", 1), "Dwell");
    user.Type(Element("txt_Low", 0), "-1.5");
    for (const char* field : {"txt_Low(0)", "txt_High(0)", "txt_Low(1)", "txt_High(1)", "txt_Low(2)"})
        EXPECT_EQ(user.Text(field), "-1.5") << field;
    EXPECT_EQ(user.Text("txt_High(2)"), "");
    EXPECT_EQ(user.Find<QLineEdit>("txt_Low(0)").cursorPosition(), 4);  // typing went on undisturbed
}

TEST_F(Input_Screen, next_keeps_the_size_and_forces_of_the_picked_example)
{
    screens::Input_Services services;
    services.build_example = [](const std::string& name) { return Open_Example(design, name); };
    frm_InputData screen(services);
    const Driver user(screen);
    user.Pick("cmb_Examples", "Double Dwell");
    const Single torque = design.results.CalcData(var::Torque, 40);
    ASSERT_NE(torque, 0.0);
    user.Press("cmd_Done");
    EXPECT_TRUE(design.flags.Sized && design.flags.Dynamicflag);
    EXPECT_EQ(design.results.CalcData(var::Torque, 40), torque);
}

TEST_F(Input_Screen, the_unit_in_force_is_marked_and_picking_it_changes_nothing)
{
    Build("Double Dwell");
    screens::Input_Services services;
    services.change_units = [](int code) { Change_Units(design, code); };
    frm_InputData screen(services);
    const Driver user(screen);
    Action(screen, "mnu_pick(5)").trigger();
    EXPECT_TRUE(Action(screen, "mnu_pick(5)").isChecked());
    EXPECT_TRUE(user.Enabled("cmd_Done"));
    EXPECT_TRUE(design.flags.Sized);
    Action(screen, "mnu_pick(1)").trigger();
    EXPECT_TRUE(Action(screen, "mnu_pick(1)").isChecked());
    EXPECT_FALSE(Action(screen, "mnu_pick(5)").isChecked());
    EXPECT_FALSE(user.Enabled("cmd_Done"));  // the calculated points are in millimetres
    EXPECT_TRUE(user.Enabled("cmd_CalcAll"));
    EXPECT_TRUE(user.Enabled(Element("cmd_CalcSeg", 0)));
}

TEST_F(Input_Screen, a_loaded_table_waits_for_its_calculation)
{
    Build("Double Dwell");
    m_.Seg_Done.Fill(false);  // as a model file leaves it
    design.flags.File_Loaded = true;
    frm_InputData screen({});
    const Driver user(screen);
    EXPECT_EQ(user.Text(Element("txt_High", 0)), "25");
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    EXPECT_TRUE(user.Enabled("cmd_CalcAll"));
}

TEST_F(Input_Screen, closing_the_window_takes_what_stands_typed)
{
    frm_InputData screen({});
    const Driver user(screen);
    user.Type(Element("txt_Beta", 0), "360");
    screen.close();
    EXPECT_EQ(m_.Beta_Deg(1), 360.0);
}

TEST_F(Input_Screen, no_two_controls_share_an_access_key)
{
    frm_InputData screen({});
    const Driver user(screen);
    QSet<QString> keys;
    const auto add = [&](const QString& text) {
        const QString key = QKeySequence::mnemonic(text).toString();
        if (key.isEmpty())
            return;
        EXPECT_FALSE(keys.contains(key)) << text.toStdString();
        keys.insert(key);
    };
    for (const auto* button : screen.findChildren<QAbstractButton*>())
        add(button->text());
    for (const auto* label : screen.findChildren<QLabel*>())
        if (label->buddy() != nullptr)
            add(label->text());
    for (const auto* const menu : screen.findChildren<QMenuBar*>())
        for (const auto* action : menu->actions())
            add(action->text());
    for (const char* key : {"Alt+L", "Alt+S", "Alt+A", "Alt+B", "Alt+N", "Alt+C", "Alt+P"})
        EXPECT_TRUE(keys.contains(key)) << key;
}

TEST_F(Input_Screen, the_help_menu_explains_the_starting_angle)
{
    frm_InputData screen({});
    const Driver user(screen);
    script_.Expect(
        {"'Starting Angle' allows you to input the timing-diagram-angle at which \n"
         "you choose to start the displacement diagram (i.e., cam zero) with respect to machine zero."});
    Action(screen, "mnu_startangle").trigger();
}

TEST_F(Input_Screen, each_control_has_its_words)
{
    frm_InputData screen({});
    const Driver user(screen);
    for (const auto& [name, text] :
         {std::pair{"cmd_CalcAll", "Ca&lc All"}, std::pair{"cmd_ClearSegs", "Clear &Segs"},
          std::pair{"cmd_Clear_SVAJ", "Clear &All"}, std::pair{"cmd_Cancel", "< &Back"},
          std::pair{"cmd_Done", "&Next >"}, std::pair{"cmd_Copy", "&Copy"}, std::pair{"cmd_PlotPrint", "&Print"},
          std::pair{"cmd_CalcSeg(0)", "Calc"}, std::pair{"cmd_PlotSeg(0)", "Plot"},
          std::pair{"cmd_PrntSeg(0)", "Print"}, std::pair{"opt_Folmotion(0)", "Translating"},
          std::pair{"opt_Folmotion(1)", "Oscillating"}, std::pair{"opt_Function(0)", "Motion"},
          std::pair{"opt_Function(1)", "Force"}, std::pair{"chk_Extforce", "External Force"},
          std::pair{"chk_ClearOnOpen", "Clear"}})
        EXPECT_EQ(user.Text(name), text);
    for (const auto& [name, tip] :
         {std::pair{"txt_Beta(0)", "Anglular duration of segment"},
          std::pair{"lbl_Start(0)", "Initial angle of segment (global)"},
          std::pair{"lbl_End(0)", "Final angle of segment (global)"},
          std::pair{"cmb_Motion(0)", "Select from dropdown or type first letter of list member"},
          std::pair{"cmb_Program(0)", "Select from dropdown or type first 2 letter code of list member"},
          std::pair{"txt_High(0)", "Do not include prime circle radius in these data"},
          std::pair{"opt_Folmotion(0)", "Position data must be in length units"},
          std::pair{"opt_Folmotion(1)", "Position data must be in degrees"},
          std::pair{"opt_Function(0)", "Calculate a cam follower motion"},
          std::pair{"opt_Function(1)", "Calculate a force function on follower"}})
        EXPECT_EQ(user.Tip(name), tip) << name;
    const auto entries = [&](const char* name) {
        const auto& list = user.Find<QComboBox>(name);
        QStringList all;
        for (int k = 0; k < list.count(); ++k)
            all.append(list.itemText(k));
        return all.join('|').toStdString();
    };
    EXPECT_EQ(entries("cmb_Motion(0)"), "Rise|Fall|Poly|Dwell|Spline");
    EXPECT_EQ(entries("cmb_Delta"), "1.0|0.50|0.25|0.125");
    EXPECT_EQ(entries("cmb_Examples"),
              "Single Dwell|Double Dwell|Flat Follower|Four Dwell|Oscillating|4-bar Linkage|4-bar Slider|"
              "6-bar Linkage|6-bar Slider");
}

TEST_F(Input_Screen, a_position_is_copied_where_the_next_begins_and_a_dwell_stays)
{
    frm_InputData screen({});
    const Driver user(screen);
    user.Fill("txt_Segmts", "3");
    Type_Row(user, 0, "Rise", "MS - Mod Sine", "100", "0", "");
    user.Pick(Element("cmb_Motion", 1), "Dwell");
    user.Type(Element("txt_High", 0), "12.5");
    EXPECT_EQ(user.Text(Element("txt_Low", 1)), "12.5");
    EXPECT_EQ(user.Text(Element("txt_High", 1)), "12.5");
    EXPECT_EQ(user.Text(Element("txt_Low", 2)), "12.5");
    EXPECT_EQ(user.Text(Element("txt_High", 2)), "");
    EXPECT_EQ(m_.End_Value(2), "12.5");
}

TEST_F(Input_Screen, the_last_row_copies_to_none)
{
    frm_InputData screen({});
    const Driver user(screen);
    Type_Row(user, 0, "Rise", "MS - Mod Sine", "360", "0", "5");
    EXPECT_EQ(m_.Start_Value(2), "");
}

TEST_F(Input_Screen, angles_follow_the_durations_with_the_decimals_of_the_step)
{
    frm_InputData screen({});
    const Driver user(screen);
    user.Fill("txt_Segmts", "2");
    user.Fill(Element("txt_Beta", 0), "90.5");
    EXPECT_EQ(user.Text(Element("lbl_End", 0)), user.Text(Element("lbl_Start", 1)));
    user.Pick("cmb_Delta", "0.50");
    EXPECT_EQ(design.motion.Deltatheta, 0.5);
    EXPECT_EQ(user.Text(Element("lbl_End", 0)), "90.5");
    user.Pick("cmb_Delta", "0.125");
    EXPECT_EQ(user.Text(Element("lbl_End", 0)), "90.500");
    EXPECT_EQ(m_.Max_Data_Points_used, 2880);
}

TEST_F(Input_Screen, durations_beyond_the_turn_are_refused)
{
    frm_InputData screen({});
    const Driver user(screen);
    user.Fill("txt_Segmts", "2");
    script_.Expect({"Beta cannot be > 360 or < 0", Buttons::OK, Symbol::exclamation});
    user.Fill(Element("txt_Beta", 0), "400");
    EXPECT_EQ(user.Text(Element("txt_Beta", 0)), "");
    user.Fill(Element("txt_Beta", 0), "200");
    script_.Expect({"End angle cannot be > 360 deg", Buttons::OK, Symbol::exclamation});
    user.Fill(Element("txt_Beta", 1), "161");
    EXPECT_EQ(user.Text(Element("txt_Beta", 1)), "");
    EXPECT_EQ(user.Text(Element("lbl_End", 1)), "");
    user.Fill(Element("txt_Beta", 1), "100");  // 300 in all: accepted
    EXPECT_EQ(user.Text(Element("lbl_End", 1)), "300.");
}

TEST_F(Input_Screen, a_duration_that_pushes_a_later_row_beyond_the_turn_names_that_row)
{
    Build("Double Dwell");  // four rows of 90 degrees
    frm_InputData screen({});
    const Driver user(screen);
    script_.Expect({"End angle cannot be > 360 deg\nThis is the end of segment 4.", Buttons::OK, Symbol::exclamation});
    user.Fill(Element("txt_Beta", 1), "100");
    EXPECT_EQ(user.Text(Element("txt_Beta", 1)), "");
    EXPECT_EQ(m_.Beta_Deg(2), 0.0);
    EXPECT_EQ(m_.Beta_Deg(4), 90.0);
    EXPECT_EQ(user.Text(Element("txt_Beta", 3)), "90");
    user.Fill(Element("txt_Beta", 3), "80");  // with room made behind it the same duration is accepted
    user.Fill(Element("txt_Beta", 1), "100");
    EXPECT_EQ(user.Text(Element("txt_Beta", 1)), "100");
    EXPECT_EQ(user.Text(Element("lbl_End", 3)), "360.");
}

TEST_F(Input_Screen, one_segment_must_have_the_whole_turn)
{
    frm_InputData screen({});
    const Driver user(screen);
    script_.Expect({"Cam must contain exactly 360 degrees"});
    user.Fill(Element("txt_Beta", 0), "180");
    EXPECT_EQ(user.Text(Element("lbl_End", 0)), "");
    user.Fill(Element("txt_Beta", 0), "360");
    EXPECT_EQ(user.Text(Element("lbl_End", 0)), "360.");
}

TEST_F(Input_Screen, the_count_of_segments_stays_between_1_and_20)
{
    frm_InputData screen({});
    const Driver user(screen);
    user.Fill("txt_Segmts", "25");
    EXPECT_EQ(user.Text("txt_Segmts"), "20");
    EXPECT_TRUE(user.Find<QWidget>(Element("txt_Beta", 19)).isVisibleTo(&screen));
    user.Fill("txt_Segmts", "0");
    EXPECT_EQ(user.Text("txt_Segmts"), "1");
    user.Fill("txt_Segmts", "abc");
    EXPECT_EQ(user.Text("txt_Segmts"), "1");
}

TEST_F(Input_Screen, clearing_on_a_new_count_empties_the_rows)
{
    frm_InputData screen({});
    const Driver user(screen);
    Type_Double_Dwell(user);
    user.Fill("txt_Segmts", "3");
    EXPECT_EQ(user.Text(Element("txt_High", 0)), "25");
    user.Press("chk_ClearOnOpen");
    user.Fill("txt_Segmts", "4");
    EXPECT_EQ(user.Text(Element("txt_High", 0)), "");
    EXPECT_EQ(user.Text(Element("cmb_Motion", 0)), "");
}

TEST_F(Input_Screen, a_calculated_row_is_marked_and_an_edit_rearms_it)
{
    frm_InputData screen({});
    const Driver user(screen);
    Type_Double_Dwell(user);
    user.Press(Element("cmd_CalcSeg", 0));
    EXPECT_TRUE(m_.Seg_Done(1));
    EXPECT_FALSE(user.Enabled(Element("cmd_CalcSeg", 0)));
    EXPECT_TRUE(user.Enabled(Element("cmd_PlotSeg", 0)));
    EXPECT_TRUE(user.Enabled(Element("cmd_PrntSeg", 0)));
    EXPECT_NE(user.Text(Element("lbl_Segment", 0)), "1");  // a tick beside the number, not colour alone
    user.Type(Element("txt_High", 0), "20");
    EXPECT_TRUE(user.Enabled(Element("cmd_CalcSeg", 0)));
    EXPECT_FALSE(user.Enabled(Element("cmd_PlotSeg", 0)));
    EXPECT_EQ(user.Text(Element("lbl_Segment", 0)), "1");
}

TEST_F(Input_Screen, a_new_step_or_speed_asks_for_every_row_again)
{
    frm_InputData screen({});
    const Driver user(screen);
    Type_Double_Dwell(user);
    user.Press("cmd_CalcAll");
    ASSERT_TRUE(user.Enabled("cmd_Done"));
    user.Pick("cmb_Delta", "0.25");
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    EXPECT_TRUE(user.Enabled("cmd_CalcAll"));
    user.Press(Element("cmd_CalcSeg", 0));
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    user.Press("cmd_CalcAll");
    EXPECT_TRUE(user.Enabled("cmd_Done"));
    user.Fill("txt_Omega", "120");
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    EXPECT_NEAR(m_.Shaft_speed, 4 * PI, 1e-5);
}

TEST_F(Input_Screen, a_speed_of_zero_becomes_one)
{
    frm_InputData screen({});
    const Driver user(screen);
    script_.Expect({" Shaft Omega cannot be zero - Please check", Buttons::OK, Symbol::exclamation});
    user.Fill("txt_Omega", "0");
    EXPECT_EQ(m_.Shaft_speed, 1.0);
}

TEST_F(Input_Screen, the_follower_choice_gives_its_advice_and_units)
{
    frm_InputData screen({});
    const Driver user(screen);
    EXPECT_EQ(user.Text("lbl_Unit"), "(mm)");
    script_.Expect(
        {"The position data for an oscillating follower arm\n"
         "must be in degrees and must start or end at zero\n"
         "or go through zero at some point in the cycle for a radial cam.\n"
         "If you intend to make a barrel or linear cam then you do not\n"
         "need to pass the displacement through zero degrees here.\n"
         "It is a relative displacement from the initial position \n"
         "of the follower arm in local coordinates.  The absolute\n"
         "angle of the arm start position will be calculated later\n"
         "on the Size Cam screen where the arm geometry is defined. \n"
         "Do not include the initial angle of the follower arm here. "});
    user.Press(Element("opt_Folmotion", 1));
    EXPECT_FALSE(design.cam.Translating);
    EXPECT_EQ(user.Text("lbl_Unit"), "(deg)");
    script_.Expect(
        {"The position data for a translating follower arm\n"
         "must be in length units and must start or end at zero\n"
         "or go through zero at some point in the cycle.\n"
         "It is a relative displacement from the initial position \n"
         "of the follower in local coordinates.  The absolute\n"
         "position of the follower will be calculated later\n"
         "on the Size Cam screen where the prime radius is defined. \n"
         "Do not include the cam prime radius in position data here. "});
    user.Press(Element("opt_Folmotion", 0));
    EXPECT_TRUE(design.cam.Translating);
}

TEST_F(Input_Screen, an_external_force_asks_first_and_turns_the_table_into_a_force_table)
{
    const Expected_Box warning{
        "Warning!\n"
        "If you have already calculated a cam program and you \n"
        "now calculate an external force function, it will \n"
        "zero all your cam motion data.  You need to first calculate \n"
        "the external force function and then calculate the cam.  \n"
        "The external force data will be preserved for later stress calculations\n"
        "provided that you leave the External Force box checked\n"
        "when you subsequently do the cam motion calculation.\n"
        "Unchecking the External Force box zeros the force data.",
        Buttons::OK_Cancel, Symbol::exclamation, Answer::Cancel};
    frm_InputData screen({});
    const Driver user(screen);
    EXPECT_FALSE(user.Enabled(Element("opt_Function", 1)));
    script_.Expect(warning);
    user.Press("chk_Extforce");
    EXPECT_FALSE(user.Checked("chk_Extforce"));
    Expected_Box yes = warning;
    yes.answer = Answer::OK;
    script_.Expect(yes);
    user.Press("chk_Extforce");
    EXPECT_TRUE(user.Checked("chk_Extforce"));
    EXPECT_TRUE(user.Checked(Element("opt_Function", 1)));
    EXPECT_EQ(user.Text("lbl_Function"), "Force");
    EXPECT_EQ(user.Text("lbl_Contour"), "Force Contour");
    EXPECT_EQ(user.Text("lbl_RFD"), "Force");
    EXPECT_EQ(user.Text("lbl_Motion"), "Shape");
    EXPECT_FALSE(user.Enabled("txt_Omega"));
    EXPECT_FALSE(user.Enabled(Element("opt_Folmotion", 0)));
    EXPECT_FALSE(user.Enabled("cmb_Examples"));
    user.Press("chk_Extforce");
    EXPECT_EQ(user.Text("lbl_Function"), "Position");
    EXPECT_TRUE(user.Enabled("txt_Omega"));
}

TEST_F(Input_Screen, the_examples_list_builds_a_whole_design)
{
    screens::Input_Services services;
    services.build_example = [](const std::string& name) { return Open_Example(design, name); };
    frm_InputData screen(services);
    const Driver user(screen);
    user.Pick("cmb_Examples", "Four Dwell");
    EXPECT_EQ(user.Text("txt_Segmts"), "8");
    EXPECT_EQ(user.Text(Element("cmb_Program", 6)), "67 - 4567 Poly");
    EXPECT_TRUE(user.Enabled("cmd_Done"));
    EXPECT_TRUE(design.flags.Sized);
}

TEST_F(Input_Screen, the_clear_buttons_empty_rows_or_all)
{
    Build("Double Dwell");
    frm_InputData screen({});
    const Driver user(screen);
    user.Press("cmd_ClearSegs");
    EXPECT_EQ(user.Text(Element("txt_Beta", 0)), "");
    EXPECT_EQ(user.Text("txt_Segmts"), "4");
    EXPECT_FALSE(user.Enabled("cmd_CalcAll"));
    EXPECT_FALSE(design.flags.Calculated);
    EXPECT_EQ(design.results.CalcData(var::S, 100), 0.0);
    user.Press("cmd_Clear_SVAJ");
    EXPECT_EQ(user.Text("txt_Segmts"), "1");
    EXPECT_EQ(user.Text("txt_Omega"), "1");
    EXPECT_EQ(user.Text("cmb_Delta"), "1.0");
    EXPECT_EQ(user.Text("txt_ShiftAng"), "0");
}

TEST_F(Input_Screen, a_start_angle_has_its_point)
{
    frm_InputData screen({});
    const Driver user(screen);
    user.Fill("txt_ShiftAng", "45");
    EXPECT_EQ(design.cam.Shift_Angle, 45.0);
    EXPECT_EQ(design.cam.Shift_Points, 45);
}

TEST_F(Input_Screen, changed_units_refill_the_rows_and_ask_for_a_calculation)
{
    Build("Double Dwell");
    screens::Input_Services services;
    services.change_units = [](int code) { Change_Units(design, code); };
    frm_InputData screen(services);
    const Driver user(screen);
    auto* const inches = screen.findChild<QAction*>("mnu_pick(1)");
    ASSERT_NE(inches, nullptr);
    inches->trigger();
    EXPECT_EQ(design.identity.WhichUnit, 1);
    EXPECT_EQ(user.Text("lbl_Unit"), "(in)");
    EXPECT_EQ(Trim(user.Text(Element("txt_High", 0))), "0.984");
    EXPECT_FALSE(design.flags.Calculated || design.flags.Sized);
}

TEST_F(Input_Screen, undo_takes_back_a_whole_entry_by_its_name_and_the_rows_follow)
{
    Build("Double Dwell");
    screens::Desk_History().Start_Anew();
    frm_InputData screen({});
    const Driver user(screen);
    const std::string beta = user.Text("txt_Beta(1)");
    const std::string high = user.Text("txt_High(0)");
    user.Fill("txt_Beta(1)", "80");
    user.Fill("txt_High(0)", "12.5");
    EXPECT_EQ(screens::Desk_History().Undo_Text(), "Undo End of segment 1");
    QAction* const undo = screen.findChild<QAction*>("mnu_Undo");
    undo->trigger();
    EXPECT_EQ(user.Text("txt_High(0)"), high);
    EXPECT_EQ(screens::Desk_History().Undo_Text(), "Undo Beta of segment 2");
    undo->trigger();
    EXPECT_EQ(user.Text("txt_Beta(1)"), beta);
    screen.findChild<QAction*>("mnu_Redo")->trigger();
    EXPECT_EQ(user.Text("txt_Beta(1)"), "80");
}

TEST_F(Input_Screen, back_makes_no_claim_of_its_own_for_a_loaded_file)
{
    design.flags.File_Loaded = true;  // of a model that was never calculated
    frm_InputData screen({});
    const Driver user(screen);
    user.Press("cmd_Cancel");
    EXPECT_FALSE(design.flags.Calculated);
    EXPECT_EQ(screen.result(), QDialog::Rejected);
}

TEST_F(Input_Screen, closing_the_window_is_done_when_calculated_and_back_otherwise)
{
    Build("Double Dwell");
    {
        frm_InputData screen({});
        const Driver user(screen);
        screen.close();
        EXPECT_EQ(screen.result(), QDialog::Accepted);
    }
    ASSERT_TRUE(Sub_Main(design, "", {}));
    frm_InputData screen({});
    const Driver user(screen);
    screen.close();
    EXPECT_EQ(screen.result(), QDialog::Rejected);
}

TEST_F(Input_Screen, the_european_format_types_and_shows_commas)
{
    design.identity.Number_Format = "Europe";
    frm_InputData screen({});
    const Driver user(screen);
    EXPECT_EQ(user.Text("cmb_Delta"), "1,0");
    user.Pick("cmb_Delta", "0,50");
    EXPECT_EQ(m_.Deltatheta, 0.5);
    user.Fill("txt_Segmts", "2");
    Type_Row(user, 0, "Rise", "MS - Mod Sine", "180,5", "0", "12,5");
    Type_Row(user, 1, "Fall", "MS - Mod Sine", "179,5", "12,5", "0");
    user.Press("cmd_CalcAll");
    EXPECT_EQ(m_.Max_Pos_Disp, 0.0);  // found by cmd_Done
    EXPECT_NEAR(design.results.CalcData(var::S, 361), 12.5, 1e-4);
}

TEST_F(Input_Screen, twenty_rows_are_typed_and_calculated)
{
    frm_InputData screen({});
    const Driver user(screen);
    user.Fill("txt_Segmts", "20");
    for (int row = 0; row < 20; ++row)
        Type_Row(user, row, row % 2 == 0 ? "Rise" : "Fall", "45 - 345 Poly", "18", row % 2 == 0 ? "0" : "3",
                 row % 2 == 0 ? "3" : "0");
    user.Press("cmd_CalcAll");
    EXPECT_TRUE(user.Enabled("cmd_Done"));
    EXPECT_NEAR(design.results.CalcData(var::S, 18), 3.0, 1e-5);
}

TEST_F(Input_Screen, a_polynomial_row_goes_through_its_conditions)
{
    int asked = -1;
    screens::Input_Services services;
    services.ask_boundaries = [&](int row) {
        asked = row;
        return Calc_Segment(design, row);
    };
    frm_InputData screen(services);
    const Driver user(screen);
    Type_Row(user, 0, "Poly", "", "360", "0", "4");
    user.Press(Element("cmd_CalcSeg", 0));
    EXPECT_EQ(asked, 0);
}

TEST_F(Input_Screen, a_row_without_a_beta_is_told_of_before_its_conditions_are_asked_for)
{
    int asked = 0;
    screens::Input_Services services;
    services.ask_boundaries = [&](int) { return ++asked == 0; };
    frm_InputData screen(services);
    const Driver user(screen);
    user.Fill("txt_Segmts", "2");
    Type_Row(user, 0, "Poly", "", "180", "0", "4");
    Type_Row(user, 1, "Poly", "", "180", "4", "0");
    ASSERT_TRUE(Put(design, "Beta_Deg", At(2), 0.0));
    script_.Expect(testing::No_Beta_Box(2));
    user.Press(Element("cmd_CalcSeg", 1));
    EXPECT_EQ(asked, 0);
    EXPECT_FALSE(m_.Seg_Done(2));
}

TEST_F(Input_Screen, Calc_All_asks_each_row_of_conditions_once_and_goes_on_behind_one_that_was_refused)
{
    std::vector<int> asked;
    bool refuses = true;
    screens::Input_Services services;
    services.ask_boundaries = [&](int row) {
        asked.push_back(row);
        m_.No_Conditions(row + 1) = 2;
        return !(row == 0 && refuses) && Calc_Segment(design, row);
    };
    frm_InputData screen(services);
    const Driver user(screen);
    user.Fill("txt_Segmts", "4");
    Type_Row(user, 0, "Poly", "", "90", "0", "4");
    Type_Row(user, 1, "Dwell", "", "90", "4", "");
    Type_Row(user, 2, "Poly", "", "90", "4", "0");
    Type_Row(user, 3, "Dwell", "", "90", "0", "");
    user.Press("cmd_CalcAll");
    EXPECT_EQ(asked, (std::vector<int>{0, 2}));
    EXPECT_FALSE(m_.Seg_Done(1));
    EXPECT_TRUE(m_.Seg_Done(2) && m_.Seg_Done(3) && m_.Seg_Done(4));
    EXPECT_NEAR(design.results.CalcData(var::S, 225), 2.0, 1e-5);
    EXPECT_FALSE(design.flags.Calculated);
    EXPECT_FALSE(user.Enabled("cmd_Done"));

    refuses = false;
    asked.clear();
    user.Press("cmd_CalcAll");
    EXPECT_EQ(asked, (std::vector<int>{0})) << "the third is calculated from what it was given";
    EXPECT_TRUE(design.flags.Calculated);
    EXPECT_TRUE(user.Enabled("cmd_Done"));
    EXPECT_NEAR(design.results.CalcData(var::S, 45), 2.0, 1e-5);
}

TEST_F(Input_Screen, a_force_row_that_was_refused_by_Calc_All_still_waits_for_a_force)
{
    bool refuses = true;
    screens::Input_Services services;
    services.ask_boundaries = [&](int row) {
        m_.No_Conditions(row + 1) = 2;
        return !refuses && Calc_Segment(design, row);
    };
    frm_InputData screen(services);
    const Driver user(screen);
    user.Fill("txt_Segmts", "2");
    Type_Row(user, 0, "Poly", "", "180", "0", "4");
    Type_Row(user, 1, "Fall", "45 - 345 Poly", "180", "4", "0");
    m_.Motion = false;
    user.Press("cmd_CalcAll");
    EXPECT_FALSE(m_.Motion);
    refuses = false;
    user.Press(Element("cmd_CalcSeg", 0));
    EXPECT_NEAR(design.results.Ext_Force_Table(90), 2.0, 1e-5);
    EXPECT_NEAR(design.results.Ext_Force_Table(270), 2.0, 1e-5);
    EXPECT_TRUE(m_.Motion);
}

TEST_F(Input_Screen, plot_and_print_are_asked_for_their_segment)
{
    std::vector<int> asked;
    screens::Input_Services services;
    services.plot_segment = services.print_segment = [&](int segment) { asked.push_back(segment); };
    Build("Double Dwell");
    frm_InputData screen(services);
    const Driver user(screen);
    user.Press(Element("cmd_PlotSeg", 2));
    EXPECT_EQ(m_.Seg, 3);
    user.Press(Element("cmd_PrntSeg", 1));
    EXPECT_EQ(asked, (std::vector<int>{3, 2}));
    script_.Expect(testing::Copy_Box);
    user.Press("cmd_Copy");
}

TEST_F(Input_Screen, the_session_returns_to_the_table_until_the_report_is_accepted)
{
    Build("Double Dwell");
    int tables = 0;
    int reports = 0;
    const testing::Modals modals([&](QDialog& open) {
        const Driver user(open);
        if (open.objectName() == "frm_InputData") {
            ++tables;
            user.Press("cmd_Done");
        } else if (open.objectName() == "frm_Continuity") {
            ++reports;
            if (reports == 2)
                script_.Expect(
                    {"The small discontinuities seen in S, V, and A\n"
                     "are due to computational roundoff error\n"
                     "and can be safely ignored.  Jerk discontinuities\n"
                     "are not critical to proper function."});
            user.Press(reports == 1 ? "cmd_Back" : "cmd_Done");
        }
    });
    screens::Run_Input_Session(nullptr);
    EXPECT_EQ(tables, 2);
    EXPECT_EQ(reports, 2);
    EXPECT_TRUE(design.flags.Calculated);
}

}  // namespace
}  // namespace lobemax
