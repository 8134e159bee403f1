// SPDX-License-Identifier: GPL-3.0-or-later
/// A started program for the tests of screens: a fresh design, the scripted user, and settings that nothing else reads.
#pragma once

#include <gtest/gtest.h>

#include <QSettings>
#include <string>
#include <vector>

#include "core/startup.h"
#include "edit/unsaved.h"
#include "files/example_designs.h"
#include "tests/support/driver.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax::testing {

class Desktop_Test : public ::testing::Test {
protected:
    void SetUp() override
    {
        QSettings().clear();
        screens::wanted_messages = {};
        screens::Set_Desk_Limits({});
        screens::Chosen_Place().reset();
        ASSERT_TRUE(Sub_Main(design, "", {}));
        Mark_Saved(design);
        screens::Desk_History().Start_Anew();
    }
    void TearDown() override { design = {}; }

    static void Build(const char* example) { ASSERT_TRUE(Open_Example(design, example)); }

    static double Data(int row, int i) { return design.results.CalcData(row, i); }
    /// A row of a design at a step of one degree.
    static std::vector<double> Row(int row)
    {
        const auto points = design.results.CalcData.Points(row);
        return {points.begin(), points.begin() + 361};
    }
    static std::vector<std::string> Lit_Lamps(const Driver& user)
    {
        std::vector<std::string> lit;
        for (int i = 0; i < 11; ++i)
            if (user.Visible(screens::Element("lbl_Status", i)))
                lit.push_back(user.Text(screens::Element("lbl_Status", i)));
        return lit;
    }

    /// A screen that adds an external force offers it where there is one, and forgets it where there is none.
    template <class Form>
    static void Expect_External_Force_Offered()
    {
        struct Case {
            bool calculated;
            bool added;
            bool ticked;
        };
        for (const auto& [calculated, added, ticked] :
             {Case{false, false, false}, Case{false, true, false}, Case{true, false, false}, Case{true, true, true}}) {
            design.flags.Ext_Force_Calc = calculated;
            design.dynamics.Ext_Force_Add = added;
            Form screen;
            const Driver user(screen);
            EXPECT_EQ(user.Enabled("chk_Extforce"), calculated);
            EXPECT_EQ(user.Checked("chk_Extforce"), ticked);
            EXPECT_EQ(design.dynamics.Ext_Force_Add, ticked);
        }
    }

    Script script_;
};

inline const Expected_Box Copy_Box{"Use the Alt-PrintScrn key combo to copy the screen to the clipboard"};

}  // namespace lobemax::testing
