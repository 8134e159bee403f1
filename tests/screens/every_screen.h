// SPDX-License-Identifier: GPL-3.0-or-later
/// Every screen of the program, for what must hold of all of them.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "edit/conditions.h"
#include "edit/rungs.h"
#include "motion/motion_programs.h"
#include "motion/polynomial.h"
#include "motion/segments.h"
#include "present/plot_selection.h"
#include "screens/frm_Animate.h"
#include "screens/frm_Arcs.h"
#include "screens/frm_Bounds.h"
#include "screens/frm_Cad.h"
#include "screens/frm_CompCam.h"
#include "screens/frm_Continuity.h"
#include "screens/frm_Dynamics.h"
#include "screens/frm_Export_Question.h"
#include "screens/frm_FFT.h"
#include "screens/frm_Findings.h"
#include "screens/frm_HomeScreen.h"
#include "screens/frm_Import_data.h"
#include "screens/frm_InputData.h"
#include "screens/frm_Knots.h"
#include "screens/frm_Limits.h"
#include "screens/frm_Linkage.h"
#include "screens/frm_LinkageType.h"
#include "screens/frm_Linkplots.h"
#include "screens/frm_Lobe.h"
#include "screens/frm_MassProp.h"
#include "screens/frm_Model.h"
#include "screens/frm_ModelType.h"
#include "screens/frm_Plots.h"
#include "screens/frm_Poly.h"
#include "screens/frm_Preferences.h"
#include "screens/frm_PrintData.h"
#include "screens/frm_PrintSelect.h"
#include "screens/frm_Quit.h"
#include "screens/frm_Report.h"
#include "screens/frm_SizeCam.h"
#include "screens/frm_Stress.h"
#include "screens/frm_Title.h"
#include "tests/support/desktop_design.h"

namespace lobemax::testing {

struct A_Screen {
    std::string name;
    std::function<std::unique_ptr<QWidget>()> make;
};

/// A rise given by six conditions, or by seven as a spline, calculated.
inline void Make_Conditions(char kind)
{
    Pick_Motion(design, 1, kind);
    design.motion.Start_Value(1) = "0";
    design.motion.End_Value(1) = "25";
    for (const int row : {0, 9})
        for (const int order : {1, 2})
            Bound_Text(design, 1, row, order) = "0";
    if (kind == 'S') {
        Bound_Text(design, 1, 4, 0) = "12";
        design.motion.T_boundary_cond(1, 4) = "45";
    }
    ASSERT_TRUE(Set_No_of_Conditions(design, 1, kind == 'S' ? "7" : "6"));
    ASSERT_TRUE(Calc_Segment(design, 0));
}

/// All of them, each over the Double Dwell example as it stands when the screen is made.
inline std::vector<A_Screen> Every_Screen()
{
    using namespace screens;
    const auto over_example = [](auto make) {
        return [make] {
            EXPECT_TRUE(Open_Example(design, "Double Dwell"));
            return std::unique_ptr<QWidget>(make());
        };
    };
    const auto over_conditions = [](char kind, auto make) {
        return [kind, make] {
            EXPECT_TRUE(Open_Example(design, "Double Dwell"));
            Make_Conditions(kind);
            return std::unique_ptr<QWidget>(make());
        };
    };
    const auto over_linkage = [](const char* example, auto make) {
        return [example, make] {
            EXPECT_TRUE(Open_Example(design, example) && Run_Size(design) && Run_Linkage(design));
            return std::unique_ptr<QWidget>(make());
        };
    };
    std::vector<A_Screen> list{
        {"frm_HomeScreen", over_example([] { return new frm_HomeScreen(""); })},
        {"frm_Title", over_example([] { return new frm_Title; })},
        {"frm_Quit", over_example([] { return new frm_Quit; })},
        {"frm_Preferences", over_example([] { return new frm_Preferences({}); })},
        {"frm_InputData", over_example([] { return new frm_InputData({}); })},
        {"frm_Continuity", over_example([] { return new frm_Continuity; })},
        {"frm_Bounds", over_conditions('P', [] { return new frm_Bounds(1); })},
        {"frm_Poly", over_conditions('P', [] { return new frm_Poly(1); })},
        {"frm_Knots", over_conditions('S', [] { return new frm_Knots(1); })},
        {"frm_FFT", over_example([] { return new frm_FFT; })},
        {"frm_Import_data", over_example([] { return new frm_Import_data; })},
        {"frm_Arcs", over_example([] { return new frm_Arcs; })},
        {"frm_Lobe", over_example([] { return new frm_Lobe; })},
        {"frm_Findings", over_example([] { return new frm_Findings(std::nullopt); })},
        {"frm_Limits", over_example([] { return new frm_Limits; })},
        {"frm_Export_Question", over_example([] { return new frm_Export_Question(design, Desk_Check()); })},
        {"frm_Cad", over_example([] { return new frm_Cad; })},
        {"frm_SizeCam", over_example([] { return new frm_SizeCam; })},
        {"frm_Animate", over_example([] { return new frm_Animate; })},
        {"frm_Dynamics", over_example([] { return new frm_Dynamics; })},
        {"frm_ModelType", over_example([] { return new frm_ModelType; })},
        {"frm_Model", over_example([] {
             Choose_Model_Type(design, 0);
             return new frm_Model;
         })},
        {"frm_CompCam", over_example([] { return new frm_CompCam; })},
        {"frm_Stress", over_example([] { return new frm_Stress; })},
        {"frm_LinkageType", over_linkage("4-bar Linkage", [] { return new frm_LinkageType; })},
        {"frm_Linkage", over_linkage("6-bar Linkage", [] { return new frm_Linkage; })},
        {"frm_CamSlider4", over_linkage("4-bar Slider", [] { return new frm_Linkage; })},
        {"frm_CamSlider6", over_linkage("6-bar Slider", [] { return new frm_Linkage; })},
        {"frm_MassProp4", over_linkage("4-bar Linkage", [] { return new frm_MassProp; })},
        {"frm_MassProp6", over_linkage("6-bar Linkage", [] { return new frm_MassProp; })},
        {"frm_Linkplots", over_linkage("4-bar Linkage", [] { return new frm_Linkplots; })},
        {"frm_PlotType", over_example([] { return new frm_PlotType; })},
        {"frm_PrintSelect", over_example([] { return new frm_PrintSelect; })},
        {"frm_PrintData", over_example([] { return new frm_PrintData(Segment_Print_Choice(design, 1)); })},
        {"frm_Report", over_example([] { return new frm_Report; })},
    };
    for (int plot_style = 1; plot_style <= 4; ++plot_style) {
        list.push_back({"frm_PlotSelect" + std::to_string(plot_style),
                        over_example([plot_style] { return new frm_PlotSelect(plot_style); })});
        list.push_back({"frm_Plot" + std::to_string(plot_style), over_example([plot_style] {
                            Pick_Segment(design, "All");
                            const std::vector<int> picks{1, 2, 3, 4};
                            Select_OK(design, plot_style, picks);
                            return new frm_Plot(plot_style);
                        })});
    }
    return list;
}

}  // namespace lobemax::testing
