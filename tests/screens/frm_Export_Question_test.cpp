// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Export_Question.h"

#include <QAction>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <fstream>
#include <sstream>

#include "core/text.h"
#include "edit/rungs.h"
#include "files/exports.h"
#include "screens/frm_Animate.h"
#include "screens/frm_HomeScreen.h"
#include "screens/resources.h"
#include "tests/support/desktop_design.h"

namespace lobemax {
namespace {

using screens::frm_HomeScreen;
using testing::Driver;

class Export_Questions : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        screens::Load_Resources();
        Build("Double Dwell");
        path_ = folder_.filePath("surface.txt").toStdString();
        script_.path = path_;
        Host host = Installed_Host();  // what an export tells at its end is its own matter
        const auto messenger = host.messenger;
        host.messenger = [this](const Message& box) {
            told_.push_back(box.text);
            return Usual_Answer(box.buttons);
        };
        before_ = Install_Host(std::move(host));
    }
    void TearDown() override
    {
        Install_Host(std::move(before_));
        Desktop_Test::TearDown();
    }
    /// Rows that another program has spoilt: the design itself is sound.
    static void Spoil_Rows()
    {
        for (int i = 30; i < 40; ++i)
            design.results.CalcData(var::X_Surface, i) = design.results.CalcData(var::X_Surface, i) + 1.0;
    }
    static void Undercut()
    {
        design.cam.Prime_Rad = 42.0;
        design.cam.Follow_Rad = 40.0;
        ASSERT_TRUE(Run_Size(design));
    }
    std::string Written() const
    {
        std::ifstream file(path_);
        std::stringstream text;
        text << file.rdbuf();
        return text.str();
    }
    /// Picks an export and answers the question, if it comes, by a button.
    bool Export(const char* entry, const char* button, bool tick_other = false)
    {
        bool asked = false;
        const testing::Modals modals([&](QDialog& open) {
            asked = true;
            EXPECT_EQ(open.objectName(), "frm_Export_Question");
            const Driver user(open);
            question_ = open.findChild<QPlainTextEdit*>("txt_Question")->toPlainText().toStdString();
            ticked_ = user.Checked("chk_True");
            EXPECT_TRUE(open.findChild<QPushButton*>("cmd_Cancel")->isDefault());
            if (tick_other)
                user.Press("chk_True");
            user.Press(button);
        });
        frm_HomeScreen home("");
        home.findChild<QAction*>("mnu_True_profile")->setChecked(true_profile_);
        home.findChild<QAction*>(entry)->trigger();
        return asked;
    }

    QTemporaryDir folder_;
    std::string path_;
    std::string question_;
    bool ticked_ = false;
    bool true_profile_ = false;
    std::vector<std::string> told_;
    Host before_;
};

TEST_F(Export_Questions, a_sound_design_is_asked_nothing_new)
{
    for (const char* const entry : {"mnu_Surface", "mnu_profile", "mnu_Cutter", "mnu_Surface_mach", "mnu_Spread"})
        EXPECT_FALSE(Export(entry, "cmd_Cancel")) << entry;
    EXPECT_FALSE(Written().empty());
}

TEST_F(Export_Questions, wrong_rows_are_asked_about_and_cancel_writes_nothing)
{
    Spoil_Rows();
    for (const char* const entry :
         {"mnu_Surface", "mnu_profile", "mnu_Cutter", "mnu_Surface_mach", "mnu_Profile_mach"}) {
        EXPECT_TRUE(Export(entry, "cmd_Cancel")) << entry;
        EXPECT_TRUE(ticked_);
    }
    EXPECT_NE(question_.find(screens::Desk_Check().findings.front().sentence), std::string::npos) << question_;
    EXPECT_TRUE(Written().empty());
    EXPECT_FALSE(Export("mnu_Spread", "cmd_Cancel"));       // all data, wrong ones too
    EXPECT_FALSE(Export("mnu_Cutter_mach", "cmd_Cancel"));  // it tells why it writes nothing
}

TEST_F(Export_Questions, ok_writes_the_true_surface_or_the_rows_as_the_box_says)
{
    ASSERT_FALSE(Export("mnu_Surface", "cmd_OK"));
    const std::string sound = Written();
    Spoil_Rows();
    ASSERT_TRUE(Export("mnu_Surface", "cmd_OK"));
    const std::string truth = Written();
    ASSERT_TRUE(Export("mnu_Surface", "cmd_OK", true));
    const std::string rows = Written();
    EXPECT_NE(truth, rows);
    // The true surface is that of the sound rows but for their 32 bits.
    std::istringstream expected(sound);
    std::istringstream found(truth);
    std::string a;
    std::string b;
    int numbers = 0;
    while (expected >> a && found >> b) {
        const Number_Read x = Read_Number(a, Decimal_Symbol::point);
        const Number_Read y = Read_Number(b, Decimal_Symbol::point);
        if (!x.whole || !y.whole) {
            EXPECT_EQ(a, b);
            continue;
        }
        EXPECT_NEAR(x.value, y.value, 2e-3);
        ++numbers;
    }
    EXPECT_GT(numbers, 700);
}

TEST_F(Export_Questions, the_entry_of_the_menu_writes_the_true_profile_without_a_question)
{
    ASSERT_FALSE(Export("mnu_Surface", "cmd_OK"));
    const std::string rows = Written();
    Spoil_Rows();
    ASSERT_TRUE(Export("mnu_Surface", "cmd_OK"));
    const std::string truth = Written();
    ASSERT_NE(truth, rows);
    true_profile_ = true;
    EXPECT_FALSE(Export("mnu_Surface", "cmd_Cancel"));
    EXPECT_EQ(Written(), truth);
    // What must not be cut either way is asked about all the same.
    Undercut();
    EXPECT_TRUE(Export("mnu_Surface", "cmd_Cancel"));
    EXPECT_FALSE(ticked_);
}

TEST_F(Export_Questions, a_fault_of_the_design_is_in_its_true_surface_too)
{
    Undercut();
    ASSERT_TRUE(Export("mnu_Surface", "cmd_OK"));
    EXPECT_FALSE(ticked_);
    EXPECT_NE(question_.find("Do not cut: Undercut"), std::string::npos) << question_;
    EXPECT_FALSE(Written().empty());
}

TEST_F(Export_Questions, the_drawing_asks_for_the_cam_that_it_shows)
{
    Undercut();
    screens::frm_Animate screen;
    const Driver user(screen);
    int asked = 0;
    const testing::Modals modals([&](QDialog& open) {
        ++asked;
        EXPECT_EQ(open.objectName(), "frm_Export_Question");
        QTest::keyClick(&open, Qt::Key_Escape);
        EXPECT_FALSE(open.isVisible());
    });
    screen.findChild<QAction*>("mnu_Surface")->trigger();
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(Written().empty());
}

}  // namespace
}  // namespace lobemax
