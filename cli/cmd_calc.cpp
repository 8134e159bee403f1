// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <tuple>

#include "cli/commands.h"
#include "cli/session.h"
#include "core/design_state.h"
#include "core/ladder.h"
#include "core/text.h"
#include "dynamics/vibration_rules.h"
#include "edit/door.h"
#include "edit/rungs.h"
#include "forms/compcam_form.h"
#include "forms/departure_notes.h"
#include "forms/linkage_notes.h"
#include "forms/workflow.h"
#include "motion/continuity.h"
#include "motion/segments.h"

namespace lobemax::cli {

namespace {

struct Options {
    std::string input;
    std::string output;
    std::string levels = "svaj,size,dynamics";
    std::vector<std::string> settings;
    bool accumulate = false;
    bool external_force = false;
    std::optional<std::string> youngs_cam;
    std::optional<std::string> poisson_cam;
    std::optional<std::string> youngs_follower;
    std::optional<std::string> poisson_follower;
    std::optional<int> model;
    std::optional<double> t_start;
    std::optional<double> t_end;
    std::optional<double> eps;
    std::optional<double> start_step;
    std::optional<Long> max_steps;
    std::optional<double> x_start;
    bool end_effector = false;
    Stage_Choice stage;
    bool average_velocity = false;
    Vibration_Run run;          // from the options above
    bool forces_stood = false;  // in the file: a setting may have taken them away, and the vibration brings them again
};

/// A rung of the ladder that this release calculates; work() is true when its flag was reached.
struct Level {
    std::string_view name;
    bool (*work)(Session& session, const Options& options);
};

/// The table's texts are read by the number format in force: one that is not wholly a number would be cut
/// short in silence.
void Warn_of_Cut_Numbers(const Session& session)
{
    const Design_State& design = session.design;
    const Motion_Group& m = design.motion;
    for (int i = 1; i <= m.No_of_segments; ++i)
        for (const std::string* text : {&m.Start_Value(i), &m.End_Value(i)}) {
            const Number_Read number = Read_Number(*text, Current_Decimal_Symbol(design));
            if (!text->empty() && !number.whole)
                session.Say("segment " + std::to_string(i) + ": position '" + *text + "' is read as " +
                            Shortest(number.value) + " (number format " + design.identity.Number_Format + ")");
        }
}

/// A new motion is the arm's, unless the option says whose it is.
void Keep_Effector(Session& session, bool driven, const Options& options)
{
    if (options.end_effector)
        Put(session.design, "Drive_End_Effector", 1);
    else if (driven && !session.design.linkage.Drive_End_Effector)
        session.Say("svaj: a new motion is the arm's; --end-effector applies it to the end effector again");
}

bool Calculate_Motion(Session& session, const Options& options)
{
    Warn_of_Cut_Numbers(session);
    Design_State& design = session.design;
    const bool driven = design.linkage.Drive_End_Effector;
    const bool motion = design.motion.Motion;
    if (!Calc_All(design, motion) || !Motion_Done(design) || !design.flags.Calculated)
        return false;
    Keep_Effector(session, driven, options);
    // The report that follows cmd_Done: of a smooth design it has nothing to tell.
    ContinuityCheck(design, design.motion.Firstlast, design.motion.Continuous, design.motion.Max_Jump);
    return design.motion.Continuous || Continuity_Report(design);
}

bool Calculate_Size(Session& session, const Options&)
{
    if (session.design.flags.Calculated)
        return Run_Size(session.design);
    session.Say("size: the motion is not calculated");
    return false;
}

bool Calculate_Dynamics(Session& session, const Options& options)
{
    Design_State& design = session.design;
    if (!design.flags.Sized) {
        session.Say("dynamics: the cam is not sized");
        return false;
    }
    Put(design, "Torque_Start_Fresh", options.accumulate ? 0 : 1);
    Put(design, "Ext_Force_Add", options.external_force ? 1 : 0);
    return Run_Forces(design);
}

bool Calculate_Stress(Session& session, const Options& options)
{
    Design_State& design = session.design;
    if (!design.flags.Dynamicflag) {
        session.Say("stress: the forces are not calculated");
        return false;
    }
    Put_Materials(design);
    for (const auto& [given, field, k] : {std::tuple{&options.youngs_cam, "Young's modulus", 1},
                                          std::tuple{&options.youngs_follower, "Young's modulus", 2},
                                          std::tuple{&options.poisson_cam, "Poissons' ratio", 1},
                                          std::tuple{&options.poisson_follower, "Poissons' ratio", 2}})
        if (*given)
            if (const Verdict verdict = Put(design, field, At(k), Val(**given, Decimal_Symbol::point)); !verdict) {
                Show_Refusal(verdict);
                return false;
            }
    Contact_Field refused{};
    return Run_Stress(design, refused) && design.flags.Stressflag;
}

/// What mechanics has beside the figures of a level.
void Say_Notes(const Session& session, const std::string& level)
{
    for (const std::string& note : Departure_Notes(session.design))
        session.Say(level + ": " + note);
}

bool Calculate_Vibration(Session& session, const Options& options)
{
    Design_State& design = session.design;
    if (!design.flags.Sized || !(design.flags.Dynamicflag || options.forces_stood)) {
        session.Say("vibration: the forces are not calculated");
        return false;
    }
    if (!May_Open_Vibration(design) || !Run_Vibration(design, options.run))
        return false;
    Say_Notes(session, "vibration");
    return true;
}

bool Calculate_Polydyne(Session& session, const Options& options)
{
    Design_State& design = session.design;
    if (!design.flags.Modelflag) {
        session.Say("polydyne: the vibration is not calculated");
        return false;
    }
    if (!Run_Polydyne(design, options.run) || !Size_Polydyne(design))
        return false;
    Say_Notes(session, "polydyne");
    return true;
}

bool Calculate_Linkage(Session& session, const Options&)
{
    Design_State& design = session.design;
    if (!design.flags.Calculated) {
        session.Say("linkage: the motion is not calculated");
        return false;
    }
    // The sizing of a driven end effector has calculated it already.
    if (!design.flags.Linkage_Calc && !Run_Linkage(design))
        return false;
    for (const std::string& note : Linkage_Notes(design, Decimal_Symbol::point))
        session.Say("linkage: " + note);
    return true;
}

bool Calculate_Masses(Session& session, const Options& options)
{
    Design_State& design = session.design;
    Work_Out_Linkage(design);
    if (!design.flags.Linkage_Calc) {
        session.Say("masses: the linkage is not calculated");
        return false;
    }
    const bool forces = design.flags.Dynamicflag;
    const std::optional<Link_Effect> effect =
        Run_Link_Masses(design, options.average_velocity ? Speed_Choice::average : Speed_Choice::peak);
    if (!effect) {
        session.Say("masses: the model took no effective mass");
        return false;
    }
    for (const std::string& note : Mass_Notes(design, *effect, Decimal_Symbol::point))
        session.Say("masses: " + note);
    if (forces && !design.flags.Dynamicflag)
        session.Say("masses: the forces were those of the mass before: calculate dynamics again");
    return true;
}

/// The balancing cam in the place of the primary: its motion, to be sized by another run.
bool Calculate_Compensation(Session& session, const Options&)
{
    Design_State& design = session.design;
    if (!design.flags.Dynamicflag) {
        session.Say("compcam: the forces are not calculated");
        return false;
    }
    Compcam_Form form = Opening_Compcam_Form(design);
    if (!Calc_Compcam(design, form))
        return false;
    const Compensation& result = *form.result;
    session.Say("compcam: torque reduced by " + Shortest(Percent_Shown(result)) + " %, smallest contact force " +
                Shortest(Single(result.smallest_force)) + " " + Unit_Word(design, Form_Unit::force));
    return Confirm_Compcam(design) && Take_Compensation(design, result);
}

// In ladder order.
constexpr std::array ladder{Level{"svaj", Calculate_Motion},         Level{"size", Calculate_Size},
                            Level{"dynamics", Calculate_Dynamics},   Level{"vibration", Calculate_Vibration},
                            Level{"polydyne", Calculate_Polydyne},   Level{"stress", Calculate_Stress},
                            Level{"linkage", Calculate_Linkage},     Level{"masses", Calculate_Masses},
                            Level{"compcam", Calculate_Compensation}};

/// The options of a linkage, which the sizing may rest on. @return empty, or why one is refused
std::string Take_Linkage_Options(Design_State& design, const Options& options)
{
    if (const std::string refusal = Take_Stage(design, options.stage); !refusal.empty() || !options.end_effector)
        return refusal;
    const Verdict verdict = Put(design, "Drive_End_Effector", 1);
    return verdict ? std::string() : "--end-effector: " + Trim(On_One_Line(verdict.sentence));
}

/// The options of a vibration as the screen's entries take them. @return empty, or why one is refused
std::string Take_Vibration_Options(Design_State& design, Options& options)
{
    const auto refused = [](const char* option, const Verdict& verdict) {
        return std::string(option) + ": " + verdict.sentence;
    };
    if (design.cam.Closure == "Form" && options.model.value_or(Form_Closed_Model) != Form_Closed_Model)
        return "--model: a form-closed cam has the vibration model 1 alone";
    if (options.max_steps)
        if (const Verdict verdict = Put(design, "Ode_Max_Steps", *options.max_steps); !verdict)
            return refused("--max-steps", verdict);
    if (options.x_start)
        if (const Verdict verdict = Put(design, "x-Initial", *options.x_start); !verdict)
            return refused("--x-start", verdict);
    Vibration_Run& run = options.run;
    for (const auto& [option, value] : {std::pair{"--t-start", options.t_start}, std::pair{"--eps", options.eps},
                                        std::pair{"--start-step", options.start_step}})
        if (const Verdict verdict = Not_Below_Zero_may_be(value.value_or(0.0)); !verdict)
            return refused(option, verdict);
    if (options.t_end)
        if (const Verdict verdict = End_Time_may_be(design, *options.t_end); !verdict)
            return refused("--t-end", verdict);
    run.t_start = options.t_start.value_or(run.t_start);
    run.t_end = options.t_end;
    run.start_step = options.start_step.value_or(run.start_step);
    if (options.eps && Accept_Accuracy(*options.eps))
        run.eps = *options.eps;
    return {};
}

std::vector<std::string> Split_at_Commas(const std::string& list)
{
    std::vector<std::string> words;
    std::size_t from = 0;
    while (from <= list.size()) {
        const std::size_t comma = std::min(list.find(',', from), list.size());
        words.push_back(Trim(std::string_view(list).substr(from, comma - from)));
        from = comma + 1;
    }
    return words;
}

/// The part of --model: before the settings, whose springs follow the model picked.
void Pick_Model(Design_State& design, const Options& options)
{
    if (options.model)
        Put(design, "Model_Type", *options.model);
}

int Run(Session& session, Options options)
{
    const std::vector<std::string> wanted = Split_at_Commas(options.levels);
    for (const std::string& word : wanted)
        if (std::none_of(ladder.begin(), ladder.end(), [&](const Level& level) { return level.name == word; }))
            return session.Wrong("--levels: this release has no level '" + word + "'");
    if (const int status = session.Load(options.input); status != done)
        return status;
    const bool vibration =
        std::ranges::any_of(wanted, [](const std::string& word) { return word == "vibration" || word == "polydyne"; });
    options.forces_stood = session.design.flags.Dynamicflag;
    if (vibration)
        Pick_Model(session.design, options);
    if (!session.Apply_Settings(options.settings))
        return wrong_input;
    try {
        if (vibration)
            if (const std::string refusal = Take_Vibration_Options(session.design, options); !refusal.empty())
                return session.Wrong(refusal);
    } catch (const Fault& fault) {
        return session.Wrong(fault.Number() == division_by_zero ? "the cam stands still: it has no vibration"
                                                                : "--eps or --x-start is too large");
    }
    if (const std::string refusal = Take_Linkage_Options(session.design, options); !refusal.empty())
        return session.Wrong(refusal);
    for (const Level& level : ladder)
        if (std::find(wanted.begin(), wanted.end(), level.name) != wanted.end() &&
            (!level.work(session, options) || session.Error_Reported()))
            return failed;
    return session.Save(options.output);
}

}  // namespace

void Add_Calc(CLI::App& app, Action& action)
{
    CLI::App* command = app.add_subcommand("calc", "Calculates the levels named, in ladder order");
    const auto options = std::make_shared<Options>();
    command->add_option("input", options->input, "model file to read")->type_name("IN.cam")->required();
    Add_Output(*command, options->output, "model file to write");
    command
        ->add_option("--levels", options->levels,
                     "comma-separated, of svaj, size, dynamics, vibration, polydyne, stress, linkage, masses, compcam")
        ->type_name("LIST")
        ->capture_default_str();
    command->add_flag("--accumulate", options->accumulate, "dynamics: add the torque to what the model holds");
    command->add_flag("--external-force", options->external_force, "dynamics: add the external force of the model");
    command->add_option("--model", options->model, "vibration: the model of the follower train")
        ->type_name("1..5")
        ->check(CLI::Range(First_Model, Last_Model));
    Add_Number(*command, "--t-start", options->t_start, "vibration: start of the integration, seconds")->type_name("S");
    Add_Number(*command, "--t-end", options->t_end, "vibration: its end (default: twice the cam period)")
        ->type_name("S");
    Add_Number(*command, "--eps", options->eps, "vibration: accuracy of a step (default: 0.001)")->type_name("E");
    Add_Number(*command, "--start-step", options->start_step, "vibration: first step, seconds (default: 0.0001)")
        ->type_name("H");
    command->add_option("--max-steps", options->max_steps, "vibration: largest count of steps (default: the model's)")
        ->type_name("N");
    Add_Number(*command, "--x-start", options->x_start, "vibration: displacement that the mass starts with")
        ->type_name("X");
    command->add_option("--cam-e", options->youngs_cam, "stress: Young's modulus of the cam")->type_name("E");
    command->add_option("--cam-nu", options->poisson_cam, "stress: Poisson's ratio of the cam")->type_name("NU");
    command->add_option("--follower-e", options->youngs_follower, "stress: Young's modulus of the follower")
        ->type_name("E");
    command->add_option("--follower-nu", options->poisson_follower, "stress: Poisson's ratio of the follower")
        ->type_name("NU");
    command->add_flag("--end-effector", options->end_effector,
                      "linkage: the motion is that of the last link, not of the arm; the sizing rests on it");
    Add_Stage_Options(*command, options->stage);
    command->add_flag("--average-velocity", options->average_velocity,
                      "masses: from the mean speeds of the links (default: their peaks)");
    Add_Settings(*command, options->settings);
    command->callback([options, &action] { action = [options](Session& session) { return Run(session, *options); }; });
}

}  // namespace lobemax::cli
