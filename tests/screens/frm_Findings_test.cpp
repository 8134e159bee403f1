// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Findings.h"

#include <QAction>
#include <QClipboard>
#include <QPlainTextEdit>
#include <QTableWidget>

#include "edit/rungs.h"
#include "forms/findings_form.h"
#include "screens/check_mark.h"
#include "screens/frm_Dynamics.h"
#include "screens/frm_HomeScreen.h"
#include "screens/frm_SizeCam.h"
#include "screens/resources.h"
#include "tests/support/desktop_design.h"

namespace lobemax {
namespace {

using screens::Chosen_Place;
using screens::Desk_Check;
using screens::frm_Findings;
using screens::frm_HomeScreen;
using testing::Driver;

class Findings_Screen : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        screens::Load_Resources();
        Build("Double Dwell");
        design.cam.Prime_Rad = 42.0;
        design.cam.Follow_Rad = 40.0;  // larger than the path's smallest radius, and pressed at more than 30 degrees
        ASSERT_TRUE(Run_Size(design));
        ASSERT_TRUE(Run_Forces(design));
        Mark_Saved(design);
        screens::Desk_History().Start_Anew();
    }
    static QTableWidget& Table(const QDialog& panel) { return *panel.findChild<QTableWidget*>("tbl_Findings"); }
    static int Line_of_Place(Finding_Place place)
    {
        const auto& findings = Desk_Check().findings;
        return static_cast<int>(std::ranges::find(findings, place, &Finding::place) - findings.begin());
    }
    static std::string Detail(const QDialog& panel)
    {
        return panel.findChild<QPlainTextEdit*>("txt_Finding")->toPlainText().toStdString();
    }
};

TEST_F(Findings_Screen, lists_all_findings_the_worst_first_and_tells_the_chosen_at_length)
{
    frm_Findings panel(std::nullopt);
    const Driver user(panel);
    const auto& findings = Desk_Check().findings;
    ASSERT_GE(findings.size(), 3U);  // undercut, pressure angle, unit of torque
    QTableWidget& table = Table(panel);
    ASSERT_EQ(table.rowCount(), static_cast<int>(findings.size()));
    EXPECT_EQ(findings.front().code, "undercut");
    for (int row = 0; row < table.rowCount(); ++row)
        EXPECT_EQ(table.item(row, 1)->text().toStdString(), findings[static_cast<std::size_t>(row)].name);
    EXPECT_EQ(table.currentRow(), 0);
    EXPECT_NE(Detail(panel).find(findings[0].sentence), std::string::npos);
    EXPECT_NE(Detail(panel).find(findings[0].advice), std::string::npos);
    QTest::keyClick(&table, Qt::Key_Down);
    EXPECT_NE(Detail(panel).find(findings[1].sentence), std::string::npos);
    user.Press("cmd_CopyText");
    const std::string copied = QApplication::clipboard()->text().toStdString();
    for (const Finding& finding : findings)
        EXPECT_NE(copied.find(finding.sentence), std::string::npos) << finding.code;
    QTest::keyClick(&panel, Qt::Key_Escape);
    EXPECT_FALSE(panel.isVisible());
    EXPECT_FALSE(Chosen_Place());
}

TEST_F(Findings_Screen, over_its_own_screen_it_only_closes_and_another_screen_is_remembered)
{
    for (const bool key : {true, false}) {
        frm_Findings panel(Finding_Place::size);
        const Driver user(panel);
        if (key)
            QTest::keyClick(&Table(panel), Qt::Key_Return);
        else
            user.Press("cmd_Go");
        EXPECT_EQ(panel.result(), QDialog::Accepted);
        EXPECT_FALSE(Chosen_Place());
    }
    frm_Findings panel(Finding_Place::size);
    const Driver user(panel);
    QTableWidget& table = Table(panel);
    QTableWidgetItem* const cell = table.item(Line_of_Place(Finding_Place::forces), 1);
    table.setCurrentItem(cell);
    emit table.itemDoubleClicked(cell);
    EXPECT_EQ(panel.result(), QDialog::Accepted);
    EXPECT_EQ(Chosen_Place(), Finding_Place::forces);
}

TEST_F(Findings_Screen, a_screen_that_is_not_open_cannot_be_gone_to)
{
    frm_Findings panel(std::nullopt);
    const Driver user(panel);
    EXPECT_TRUE(user.Enabled("cmd_Go"));
    design.flags.Calculated = false;  // as if the motion had fallen: no button but Input is open
    frm_Findings closed(std::nullopt);
    const Driver other(closed);
    EXPECT_FALSE(other.Enabled("cmd_Go"));
    QTest::keyClick(&Table(closed), Qt::Key_Return);
    EXPECT_TRUE(closed.isVisible());
}

TEST_F(Findings_Screen, other_limits_are_held_against_at_once)
{
    frm_Findings panel(std::nullopt);
    const Driver user(panel);
    const int before = Table(panel).rowCount();
    const testing::Modals modals([&](QDialog& open) {
        EXPECT_EQ(open.objectName(), "frm_Limits");
        const Driver form(open);
        form.Press("chk_Phi");
        form.Press("cmd_OK");
    });
    user.Press("cmd_Limits");
    EXPECT_EQ(Table(panel).rowCount(), before - 1);
}

TEST_F(Findings_Screen, home_shows_the_worst_and_leads_from_its_mark_and_menu_to_the_screen)
{
    frm_HomeScreen home("");
    const Driver user(home);
    auto& mark = user.Find<screens::Check_Mark>("cmd_Mark");
    EXPECT_TRUE(mark.isVisible());
    EXPECT_TRUE(mark.text().startsWith(QString::fromUtf8("\u2716 Do not cut: "))) << mark.text().toStdString();
    EXPECT_NE(mark.toolTip().toStdString().find(Desk_Check().findings.front().sentence), std::string::npos);
    std::vector<std::string> opened;
    const testing::Modals modals([&](QDialog& open) {
        opened.push_back(open.objectName().toStdString());
        const Driver there(open);
        if (open.objectName() == "frm_Findings") {
            if (opened.size() > 2)
                Table(open).selectRow(Line_of_Place(Finding_Place::forces));
            there.Press("cmd_Go");
        } else {
            there.Press("cmd_Cancel");
        }
    });
    mark.click();
    EXPECT_EQ(opened, (std::vector<std::string>{"frm_Findings", "frm_SizeCam"}));
    home.findChild<QAction*>("mnu_Findings")->trigger();
    EXPECT_EQ(opened, (std::vector<std::string>{"frm_Findings", "frm_SizeCam", "frm_Findings", "frm_Dynamics"}));
    EXPECT_FALSE(screens::Desk_History().May_Undo());
    EXPECT_FALSE(Unsaved(design));
}

TEST_F(Findings_Screen, without_a_motion_home_has_no_mark)
{
    design = {};
    ASSERT_TRUE(Sub_Main(design, "", {}));
    frm_HomeScreen home("");
    const Driver user(home);
    EXPECT_FALSE(user.Visible("cmd_Mark"));
    EXPECT_FALSE(home.findChild<QAction*>("mnu_Findings")->isEnabled());
    EXPECT_TRUE(home.findChild<QAction*>("mnu_Limits")->isEnabled());
}

TEST_F(Findings_Screen, a_finding_of_another_screen_is_gone_to_over_home_with_the_work_kept)
{
    frm_HomeScreen home("");
    const Driver user(home);
    std::vector<std::string> opened;
    const testing::Modals modals([&](QDialog& open) {
        opened.push_back(open.objectName().toStdString());
        const Driver there(open);
        if (open.objectName() == "frm_Findings") {
            Table(open).selectRow(Line_of_Place(Finding_Place::forces));
            there.Press("cmd_Go");
        } else if (open.objectName() == "frm_SizeCam") {
            if (!there.Checked("chk_Autocalc"))
                there.Press("chk_Autocalc");
            there.Fill("txt_Cutter", "9");
            ASSERT_TRUE(Run_Forces(design));  // so that there is a finding of the forces to go to
            open.findChild<QWidget*>("cmd_Mark")->setFocus();
            QTest::keyClick(open.findChild<QWidget*>("cmd_Mark"), Qt::Key_Return);
            EXPECT_FALSE(open.isVisible());
        } else {
            there.Press("cmd_Cancel");
        }
    });
    user.Press("cmd_Size");
    EXPECT_EQ(opened, (std::vector<std::string>{"frm_SizeCam", "frm_Findings", "frm_Dynamics"}));
    EXPECT_EQ(design.cam.Cutter_Radius, 9.0F);
}

TEST_F(Findings_Screen, the_check_of_the_desk_is_made_once_a_change)
{
    const Check* const check = &Desk_Check();
    const Finding* const first = check->findings.data();
    EXPECT_EQ(Desk_Check().findings.data(), first);
    design.identity.Model_Name = "Another";  // a name is no change of the work
    EXPECT_EQ(Desk_Check().findings.data(), first);
    design.cam.Follow_Rad = 10.0;
    ASSERT_TRUE(Run_Size(design));
    EXPECT_FALSE(Desk_Check().Do_Not_Cut());
    Limits limits;
    limits[Limit::Cam_Size] = 1.0;
    screens::Set_Desk_Limits(limits);
    EXPECT_EQ(std::ranges::count(Desk_Check().findings, "Cam_Size", &Finding::code), 1);
}

TEST_F(Findings_Screen, a_mark_is_cut_where_its_window_is_narrow_and_tells_all_on_its_tip)
{
    screens::Check_Mark mark(std::nullopt, [] {});
    mark.Refresh();
    mark.show();
    mark.resize(mark.sizeHint());
    QApplication::processEvents();
    const QString whole = mark.text();
    EXPECT_FALSE(whole.endsWith(QChar(0x2026)));
    mark.resize(200, mark.height());
    QApplication::processEvents();
    EXPECT_TRUE(mark.text().endsWith(QChar(0x2026))) << mark.text().toStdString();
    EXPECT_EQ(mark.accessibleName(), whole);
    EXPECT_LE(mark.fontMetrics().horizontalAdvance(mark.text()), 200);
}

}  // namespace
}  // namespace lobemax
