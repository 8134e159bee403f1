// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Input_Session.h"

#include "files/example_designs.h"
#include "files/model_file.h"
#include "forms/home_commands.h"
#include "forms/print_form.h"
#include "forms/workflow.h"
#include "motion/segments.h"
#include "screens/desk.h"
#include "screens/frm_Bounds.h"
#include "screens/frm_Continuity.h"
#include "screens/frm_InputData.h"
#include "screens/frm_Plots.h"
#include "screens/frm_Poly.h"
#include "screens/frm_PrintData.h"

namespace lobemax::screens {

namespace {

/// Conditions of a P or S row on their screen; after it the row is calculated from what is stored.
bool Ask_Conditions(int row, QWidget* parent)
{
    const int segment = row + 1;
    Update_Segment_Angles(design);
    design.motion.Seg = segment;
    History::Transaction work(Desk_History());
    frm_Bounds screen(segment, parent);
    if (Run_Modal(screen) != QDialog::Accepted)
        return false;
    work.Commit("conditions of segment " + std::to_string(segment));
    return Calc_Segment(design, row);
}

Input_Services Services(QWidget* parent)
{
    Input_Services services;
    services.ask_boundaries = [parent](int row) { return Ask_Conditions(row, parent); };
    services.plot_segment = [parent](int segment) { Run_Segment_Plot(segment, parent); };
    services.print_segment = [parent](int segment) {
        if (design.motion.Rise_Fall_Dwell(segment) == "P") {
            frm_Poly poly(segment, parent);
            Run_Modal(poly);
        }
        frm_PrintData table(Segment_Print_Choice(design, segment), parent);
        Run_Modal(table);
    };
    services.build_example = [](const std::string& name) {
        return May_Build_Example(design) && May_Reset(design) && Open_Example(design, name);
    };
    services.change_units = [](int code) { Convert_Units(design, code); };
    return services;
}

}  // namespace

void Run_Input_Session(QWidget* parent)
{
    History::Transaction work(Desk_History());  // Back gives back what was before
    QString focus;                              // where the user was before the report
    for (bool returned = false;; returned = true) {
        frm_InputData table(Services(parent), parent);
        if (returned)
            table.Return_to(focus);
        if (Run_Modal(table) != QDialog::Accepted)
            return;
        const QWidget* const last = table.focusWidget();
        focus = last == nullptr ? QString() : last->objectName();
        frm_Continuity report(parent);
        if (Run_Modal(report) == QDialog::Accepted) {
            work.Commit("motion");
            return;
        }
    }
}

}  // namespace lobemax::screens
