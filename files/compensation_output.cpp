// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/compensation_output.h"

#include <utility>

#include "core/design_state.h"
#include "core/messages.h"
#include "core/text.h"
#include "core/traps.h"
#include "files/whole_file.h"

namespace lobemax {

namespace {

constexpr const char* line_end = "\r\n";

std::string Number(double value)
{
    return Shortest(Single(value));
}

}  // namespace

std::string Compensation_Text(const Design_State& design, const Compensation& result)
{
    const Dynamics_Group& d = design.dynamics;
    std::string text;
    for (const auto& [name, value] :
         {std::pair{"start step", result.run.start_step}, std::pair{"min step", result.run.min_step},
          std::pair{"shaftomega", double{design.motion.Shaft_speed}}, std::pair{"Comp_Mass", double{d.Comp_Mass}},
          std::pair{"c", 0.0},  // the balancing train has no damper
          std::pair{"Comp_Spring_Rate", double{d.Comp_Spring_Rate}}, std::pair{"Comp_Preload", double{d.Comp_Preload}},
          std::pair{"accuracy", double{result.run.eps}}, std::pair{"Delta Theta", double{design.motion.Deltatheta}}})
        text += name + ('\t' + Number(value)) + line_end;
    text += line_end;
    text += "Theta\tPosition\tVelocity\tAcceleration\tTcomp\tTprimary\tT-net\tForce comp";
    text += line_end;
    for (std::size_t i = 0; i <= Comp_Points; ++i) {
        text += Number(static_cast<double>(i) * design.motion.Deltatheta);
        for (const Comp_Row* row : {&result.S, &result.V, &result.A, &result.Tc, &result.Tp, &result.net, &result.F})
            text += '\t' + Number((*row)[i]);
        text += line_end;
    }
    return text;
}

bool Output_Compensation(const Design_State& design, const Compensation& result)
{
    const Host& host = Installed_Host();
    File_Dialog dialog;
    dialog.title = "Output the Data";
    dialog.filter = "(*.out)|*.out";
    dialog.suggestion = design.identity.Model_Name + ".out";
    dialog.overwrite_prompt = true;
    const auto chosen = host.save_dialog ? host.save_dialog(dialog) : std::nullopt;
    return chosen &&
           Trap("frm_CompCam.Outputfile", [&] { Write_Whole_File(*chosen, Compensation_Text(design, result)); });
}

}  // namespace lobemax
