// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_PrintSelect.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QTableWidget>
#include <QTemporaryDir>
#include <fstream>
#include <sstream>

#include "forms/design_report.h"
#include "forms/workflow.h"
#include "motion/fourier.h"
#include "paint/print.h"
#include "screens/frm_HomeScreen.h"
#include "screens/frm_Input_Session.h"
#include "screens/frm_Poly.h"
#include "screens/frm_PrintData.h"
#include "screens/frm_Report.h"
#include "tests/screens/every_screen.h"

namespace lobemax {
namespace {

using screens::Element;
using screens::frm_PrintData;
using screens::frm_PrintSelect;
using screens::frm_Report;
using testing::Driver;

const std::string note =
    "You can print this form directly to a printer from here.\n"
    "But a better quality print can be obtained by copying the\n"
    "screen to the clipboard with the key combo Alt-PrintScrn,\n"
    "and pasting it into a word processing or graphics program,";

class Print_Screens : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        Build("Double Dwell");
    }
    void TearDown() override
    {
        paint::Play_Prints({});
        Desktop_Test::TearDown();
    }
    std::string Path(const char* name) const { return folder_.filePath(QString::fromUtf8(name)).toStdString(); }
    static std::string Content(const std::string& path)
    {
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }
    static QStringList Entries(const Driver& user, const QString& list)
    {
        QStringList entries;
        const auto& box = user.Find<QComboBox>(list);
        for (int k = 0; k < box.count(); ++k)
            entries.append(box.itemText(k));
        return entries;
    }
    static std::string Cell(const QTableWidget& grid, int row, int column)
    {
        return grid.item(row, column)->text().toStdString();
    }
    void Print_Into(const std::string& path)
    {
        paint::Play_Prints([this, path](QPrinter& printer) {
            ++prints_;
            printer.setResolution(72);  // coarse, quick
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(QString::fromStdString(path));
            return true;
        });
    }

    const QTemporaryDir folder_;
    int prints_ = 0;
};

TEST_F(Print_Screens, open_from_the_home_screen)
{
    screens::frm_HomeScreen home("");
    const Driver user(home);
    std::vector<std::string> opened;
    const testing::Modals modals([&](QDialog& open) {
        opened.push_back(open.objectName().toStdString());
        Driver(open).Press("cmd_Cancel");
    });
    user.Press("cmd_Print");
    EXPECT_EQ(opened, std::vector<std::string>{"frm_PrintSelect"});
}

TEST_F(Print_Screens, the_step_is_kept_in_the_design_after_the_screen_is_left)
{
    screens::frm_HomeScreen home("");
    const Driver user(home);
    const testing::Modals modals([&](QDialog& open) {
        const Driver select(open);
        select.Pick("cmb_Step", "10");
        select.Press("cmd_Cancel");
    });
    user.Press("cmd_Print");
    EXPECT_EQ(design.cam.Printstep, 10);
    frm_PrintSelect again;
    EXPECT_EQ(Driver(again).Text("cmb_Step"), "10");
}

TEST_F(Print_Screens, captions_are_those_of_the_trade)
{
    frm_PrintSelect screen;
    const Driver user(screen);
    EXPECT_EQ(user.Find<QGroupBox>("fra_Whereto").title(), "Direct Output to:");
    EXPECT_EQ(user.Find<QGroupBox>("fra_Step").title(), "Print Every");
    EXPECT_EQ(user.Find<QGroupBox>("fra_DecimalAll").title(), "Set All Dec Plcs");
    EXPECT_EQ(user.Text(Element("opt_Whereto", 0)), "Screen");
    EXPECT_EQ(user.Text(Element("opt_Whereto", 1)), "Printer");
    EXPECT_EQ(user.Text(Element("opt_Whereto", 2)), "Disk File");
    EXPECT_EQ(user.Text("cmd_Done"), "&Next >");
    EXPECT_EQ(Entries(user, "cmb_Segment"), (QStringList{"All", "1  R", "2  [D]", "3  F", "4  [D]"}));
}

TEST_F(Print_Screens, nothing_goes_on_before_a_column_is_picked)
{
    frm_PrintSelect screen;
    const Driver user(screen);
    for (const char* name : {"cmd_Done", "cmd_Preview", "cmd_PDF"})
        EXPECT_FALSE(user.Enabled(name)) << name;
    EXPECT_TRUE(user.Enabled("cmd_Report"));
    user.Pick("cmb_Var2", "Velocity");
    for (const char* name : {"cmd_Done", "cmd_Preview", "cmd_PDF"})
        EXPECT_TRUE(user.Enabled(name)) << name;
    EXPECT_EQ(user.Text(Element("lbl_Column", 2)), "Velocity");
    user.Press("cmd_ClearAll");
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    user.Pick("cmb_Var1", "Torque");
    user.Pick("cmb_Var1", "(none)");
    EXPECT_FALSE(user.Enabled("cmd_Done"));
}

TEST_F(Print_Screens, displacement_leaves_the_lists_of_paper_and_file)
{
    frm_PrintSelect screen;
    const Driver user(screen);
    user.Pick("cmb_Var1", "Displcmnt");
    user.Pick("cmb_Var3", "Accel");
    user.Press(Element("opt_Whereto", 1));
    EXPECT_FALSE(Entries(user, "cmb_Var1").contains("Displcmnt"));
    EXPECT_EQ(user.Text("cmb_Var1"), "(none)");
    EXPECT_EQ(user.Text("cmb_Var3"), "Accel");
    user.Press(Element("opt_Whereto", 0));
    EXPECT_TRUE(Entries(user, "cmb_Var1").contains("Displcmnt"));
}

TEST_F(Print_Screens, one_method_closes_the_other)
{
    frm_PrintSelect screen;
    const Driver user(screen);
    EXPECT_FALSE(user.Enabled("cmb_Preset"));
    EXPECT_TRUE(user.Enabled("cmb_Var1"));
    user.Pick("cmb_Var1", "Velocity");
    user.Press(Element("opt_PrintSet", 1));
    EXPECT_TRUE(user.Enabled("cmb_Preset"));
    EXPECT_FALSE(user.Enabled("cmb_Var1"));
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    user.Pick("cmb_Preset", "Press Angle, Velocity, Radius of Curvature, Acceleration");
    EXPECT_TRUE(user.Enabled("cmd_Done"));
    EXPECT_EQ(user.Text(Element("lbl_Column", 1)), "Phi");
    EXPECT_EQ(user.Text(Element("lbl_Column", 3)), "Rho");
    user.Press("cmd_ClearPreset");
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    design.flags.Sized = false;
    frm_PrintSelect motion;
    EXPECT_FALSE(Driver(motion).Enabled(Element("opt_PrintSet", 1))) << "there is no preset";
}

TEST_F(Print_Screens, all_decimals_are_set_at_once_or_one_by_one)
{
    frm_PrintSelect screen;
    const Driver user(screen);
    EXPECT_EQ(Entries(user, "cmb_DecimalAll"), (QStringList{"0", "1", "2", "3", "4", "5", "6", "E"}));
    user.Pick("cmb_DecimalAll", "5");
    for (int k = 1; k <= 4; ++k)
        EXPECT_EQ(user.Text(Element("cmb_Decimal", k)), "5");
    user.Pick(Element("cmb_Decimal", 3), "1");
    EXPECT_EQ(user.Text(Element("cmb_Decimal", 3)), "1");
    EXPECT_EQ(user.Text("cmb_DecimalAll"), "");
    EXPECT_EQ(screen.Choice().decimals, (std::array{5, 5, 1, 5}));
}

TEST_F(Print_Screens, next_shows_the_table_and_another_table_returns_with_the_choice_kept)
{
    frm_PrintSelect screen;
    const Driver user(screen);
    user.Pick("cmb_Var1", "Displcmnt");
    user.Pick("cmb_Step", "10");
    user.Pick(Element("cmb_Decimal", 1), "2");
    int shown = 0;
    const testing::Modals modals([&](QDialog& open) {
        const Driver table(open);
        const auto& grid = table.Find<QTableWidget>("grd_Data");
        EXPECT_EQ(table.Text("lbl_Header"), " Design No. " + std::to_string(int{design.identity.Design_No}) +
                                                " File: Model1 at " + design.identity.Time);
        EXPECT_EQ(grid.rowCount(), 37 + 2);
        EXPECT_EQ(grid.columnCount(), 2);
        EXPECT_EQ(grid.horizontalHeaderItem(0)->text(), "Angle\ndeg");
        EXPECT_EQ(grid.horizontalHeaderItem(1)->text(), "Displ\nmm");
        EXPECT_EQ(Cell(grid, 9, 0), "90");
        EXPECT_EQ(Cell(grid, 9, 1), "25.00");  // the rise of 25 mm ends at 90 degrees
        EXPECT_EQ(Cell(grid, 37, 0), "Min");
        EXPECT_EQ(Cell(grid, 37, 1), "0.00");
        EXPECT_EQ(Cell(grid, 38, 0), "Max");
        EXPECT_EQ(Cell(grid, 38, 1), "25.00");
        table.Press(++shown == 1 ? "cmd_Another" : "cmd_Close");
    });
    user.Press("cmd_Done");
    EXPECT_TRUE(screen.isVisible());
    EXPECT_EQ(user.Text("cmb_Var1"), "Displcmnt");
    EXPECT_EQ(user.Text("cmb_Step"), "10");
    user.Press("cmd_Done");
    EXPECT_EQ(shown, 2);
    EXPECT_EQ(screen.result(), QDialog::Accepted);
}

TEST_F(Print_Screens, a_segment_has_its_own_rows)
{
    frm_PrintSelect screen;
    const Driver user(screen);
    user.Pick("cmb_Var1", "Displcmnt");
    user.Pick("cmb_Segment", "2  [D]");
    const testing::Modals modals([&](QDialog& open) {
        const Driver table(open);
        const auto& grid = table.Find<QTableWidget>("grd_Data");
        EXPECT_EQ(grid.rowCount(), 91 + 2);
        EXPECT_EQ(Cell(grid, 0, 0), "90");
        EXPECT_EQ(Cell(grid, 90, 0), "180");
        EXPECT_EQ(Cell(grid, 91, 1), "25.000") << "the smallest of the dwell, not of the cycle";
        table.Press("cmd_Another");
    });
    user.Press("cmd_Done");
}

TEST_F(Print_Screens, the_printer_takes_the_pages_and_the_screen_stays)
{
    frm_PrintSelect screen;
    const Driver user(screen);
    user.Press(Element("opt_Whereto", 1));
    user.Pick("cmb_Var1", "Velocity");
    Print_Into(Path("t.pdf"));
    user.Press("cmd_Done");
    EXPECT_EQ(prints_, 1);
    EXPECT_EQ(Content(Path("t.pdf")).substr(0, 5), "%PDF-");
    EXPECT_TRUE(screen.isVisible());
    user.Press("cmd_Preview");
    EXPECT_EQ(prints_, 2);
    Print_Into("/no/such/folder/t.pdf");
    script_.Expect(testing::Error_Box(482, "Printer error", "Print_to_Printer"));
    user.Press("cmd_Done");
    EXPECT_TRUE(screen.isVisible());
    EXPECT_EQ(user.Text("cmb_Var1"), "Velocity");
}

TEST_F(Print_Screens, a_disk_file_takes_the_rows)
{
    frm_PrintSelect screen;
    const Driver user(screen);
    user.Press(Element("opt_Whereto", 2));
    user.Pick("cmb_Var1", "Accel");
    script_.path = Path("t.txt");
    user.Press("cmd_Done");
    EXPECT_EQ(Content(Path("t.txt")), Print_File_Text(design, screen.Choice()));
    script_.path = Path("t.pdf");
    user.Press("cmd_PDF");
    EXPECT_EQ(Content(Path("t.pdf")).substr(0, 5), "%PDF-");
    EXPECT_TRUE(screen.isVisible());
}

TEST_F(Print_Screens, time_is_offered_while_a_response_is_in_memory)
{
    frm_PrintSelect without;
    EXPECT_FALSE(Driver(without).Enabled(Element("opt_Base", 1)));
    design.flags.Modelflag = true;
    design.dynamics.Ode_Count = 2;
    for (int j = 1; j <= 2; ++j) {
        design.results.Ode_Time(j) = j * 0.001;
        design.results.Ode_States(0, j) = j;
        design.results.Ode_States(1, j) = 10.0 * j;
    }
    frm_PrintSelect screen;
    const Driver user(screen);
    user.Press(Element("opt_Base", 1));
    EXPECT_EQ(Entries(user, "cmb_Var1"), (QStringList{"(none)", "X", "X dot", "X dbl dot", "S - X"}));
    EXPECT_FALSE(user.Enabled("cmb_Segment"));
    EXPECT_FALSE(user.Enabled(Element("opt_PrintSet", 1)));
    user.Pick("cmb_Var1", "X");
    const testing::Modals modals([&](QDialog& open) {
        const Driver table(open);
        const auto& grid = table.Find<QTableWidget>("grd_Data");
        EXPECT_EQ(grid.rowCount(), 2 + 2);
        EXPECT_EQ(grid.horizontalHeaderItem(0)->text(), "Time\nsec");
        EXPECT_EQ(Cell(grid, 1, 0), "0.002000");
        EXPECT_EQ(Cell(grid, 1, 1), "20.000");
        table.Press("cmd_Another");
    });
    user.Press("cmd_Done");
}

TEST_F(Print_Screens, harmonics_and_angles_share_no_table)
{
    ASSERT_TRUE(Do_DFT(design, var::V, 0, 360, 15));
    design.flags.FFT_Done = true;
    frm_PrintSelect screen;
    const Driver user(screen);
    user.Pick("cmb_Var1", "Mag FFT");
    EXPECT_TRUE(user.Enabled("cmd_Done"));
    user.Pick("cmb_Var2", "Velocity");
    EXPECT_FALSE(user.Enabled("cmd_Done"));
    EXPECT_EQ(user.Text("lbl_Reason"),
              "The harmonics of a Fourier transform and functions of the cam angle cannot share a table.");
}

TEST_F(Print_Screens, a_table_that_faults_is_reported_and_not_printed)
{
    Print_Choice choice = Segment_Print_Choice(design, 1);
    choice.segment = 9;
    script_.Expect(testing::Error_Box(9, "Index out of bounds", "Print_to_Form"));
    frm_PrintData screen(choice);
    const Driver user(screen);
    for (const char* name : {"cmd_Print", "cmd_Preview", "cmd_PDF", "cmd_File"})
        EXPECT_FALSE(user.Enabled(name)) << name;
    EXPECT_TRUE(user.Enabled("cmd_Another"));
}

TEST_F(Print_Screens, the_print_button_of_a_segment_leads_to_its_table)
{
    std::vector<std::string> opened;
    const testing::Modals modals([&](QDialog& open) {
        opened.push_back(open.objectName().toStdString());
        const Driver user(open);
        if (open.objectName() == "frm_InputData") {
            user.Press(Element("cmd_PrntSeg", 2));
            user.Press("cmd_Cancel");
        } else {
            const auto& grid = user.Find<QTableWidget>("grd_Data");
            EXPECT_EQ(grid.columnCount(), 5);
            EXPECT_EQ(grid.rowCount(), 91 + 2);
            EXPECT_EQ(Cell(grid, 0, 0), "180");
            Print_Into(Path("s.pdf"));
            user.Press("cmd_Print");
            user.Press("cmd_Close");
        }
    });
    screens::Run_Input_Session(nullptr);
    EXPECT_EQ(opened, (std::vector<std::string>{"frm_InputData", "frm_PrintData"}));
    EXPECT_EQ(prints_, 1);
}

TEST_F(Print_Screens, of_a_polynomial_segment_its_equation_is_shown_first)
{
    testing::Make_Conditions('P');
    std::vector<std::string> opened;
    const testing::Modals modals([&](QDialog& open) {
        opened.push_back(open.objectName().toStdString());
        const Driver user(open);
        if (open.objectName() == "frm_InputData") {
            user.Press(Element("cmd_PrntSeg", 0));
            user.Press("cmd_Cancel");
        } else if (open.objectName() == "frm_Poly") {
            EXPECT_EQ(user.Text("lbl_Imposed"), "   Boundary Conditions Imposed");
            EXPECT_EQ(user.Text("lbl_Resulting"), "      Equation Resulting");
            Print_Into(Path("poly.pdf"));
            script_.Expect({note});
            user.Press("cmd_Print");
            user.Press("cmd_Done");
        } else {
            user.Press("cmd_Close");
        }
    });
    screens::Run_Input_Session(nullptr);
    EXPECT_EQ(opened, (std::vector<std::string>{"frm_InputData", "frm_Poly", "frm_PrintData"}));
    EXPECT_EQ(prints_, 1);
}

TEST_F(Print_Screens, the_report_is_shown_printed_and_saved)
{
    frm_Report screen;
    const Driver user(screen);
    EXPECT_EQ(user.Find<QPlainTextEdit>("txt_Report").toPlainText().toStdString(),
              Report_Text(Make_Design_Report(design)));
    Print_Into(Path("r1.pdf"));
    user.Press("cmd_Print");
    user.Press("cmd_Preview");
    EXPECT_EQ(prints_, 2);
    script_.path = Path("r.txt");
    user.Press("cmd_File");
    EXPECT_EQ(Content(Path("r.txt")), Report_Text(Make_Design_Report(design)));
    script_.path = Path("r.pdf");
    user.Press("cmd_PDF");
    EXPECT_EQ(Content(Path("r.pdf")).substr(0, 5), "%PDF-");
    script_.path = "/no/such/folder/r.txt";
    script_.Expect(
        {"Error 53   (File not found)  has occurred in Print_Report\n"
         "There are no files with your chosen name in the selected directory"});
    user.Press("cmd_File");
    user.Press("cmd_Cancel");
}

TEST_F(Print_Screens, every_print_button_of_a_form_prints_it)
{
    Print_Into(Path("any.pdf"));
    std::vector<std::string> told;
    Host host = Installed_Host();
    host.messenger = [&told](const Message& box) {
        told.push_back(box.text);
        return Usual_Answer(box.buttons);
    };
    const Host before_it = Install_Host(host);
    int forms = 0;
    for (const testing::A_Screen& each : testing::Every_Screen()) {
        if (each.name == "frm_HomeScreen" || each.name == "frm_PrintData" || each.name == "frm_Report")
            continue;  // these lead to tables and reports
        const auto window = each.make();
        const Driver user(*window);
        for (const char* const name : {"cmd_Print", "cmd_PrintForm", "cmd_PlotPrint"}) {
            auto* const button = window->findChild<QAbstractButton*>(QString::fromUtf8(name));
            if (button == nullptr || !button->isEnabled() || !button->isVisible())
                continue;
            ++forms;
            const int before = prints_;
            told.clear();
            button->click();
            ASSERT_EQ(told.size(), 1U) << each.name;
            EXPECT_TRUE(told[0] == note || told[0].starts_with("Note: The image on this screen may not print"))
                << each.name << ": " << told[0];
            EXPECT_EQ(prints_, before + 1) << each.name << " " << name;
        }
    }
    Install_Host(before_it);
    EXPECT_GE(forms, 14);
}

}  // namespace
}  // namespace lobemax
