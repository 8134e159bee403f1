// SPDX-License-Identifier: GPL-3.0-or-later
#include <memory>
#include <optional>
#include <sstream>

#include "camgeom/arc_cam.h"
#include "cli/commands.h"
#include "cli/session.h"
#include "core/design_state.h"
#include "core/text.h"
#include "core/units.h"
#include "edit/door.h"
#include "edit/rungs.h"
#include "files/profile_file.h"
#include "forms/arc_form.h"
#include "forms/import_notes.h"

namespace lobemax::cli {

namespace {

struct Options {
    std::string input;
    std::string output;
    std::string coord = "RT";
    std::string method = "spline";
    std::string delta = "1.0";
    std::string rpm;
    std::string prime;
    std::string shift;
    std::string bound;
    std::string arcs;
    std::string roller;
    std::vector<std::string> settings;
    int units = 5;
    int harmonics = 0;
    bool oscillating = false;
    bool normalize = false;
    bool raw = false;
    bool close = false;
};

/// A value of an option; empty: it was taken, or not given.
std::string Take_Number(const char* option, const std::string& text, std::optional<double>& value)
{
    if (text.empty())
        return {};
    value = Whole_Number(text);
    return value ? std::string() : std::string(option) + ": '" + text + "' is not a number";
}

/// The cam of --arcs 'BASE FLANK NOSE LIFT' and --roller. @return empty, or why there is none
std::string Take_Arcs(const Options& options, Arc_Cam& cam)
{
    std::istringstream words(options.arcs);
    std::vector<double> lengths;
    for (std::string word; words >> word;) {
        const std::optional<double> length = Whole_Number(word);
        if (!length)
            return "--arcs: '" + word + "' is not a number";
        lengths.push_back(*length);
    }
    if (lengths.size() != 4)
        return "--arcs '" + options.arcs + "': not 'BASE FLANK NOSE LIFT'";
    std::optional<double> roller;
    if (std::string refusal = Take_Number("--roller", options.roller, roller); !refusal.empty())
        return refusal;
    cam = {lengths[0], lengths[1], lengths[2], lengths[3], roller.value_or(0.0)};
    const std::string refusal = Arcs_may_be(cam);
    return refusal.empty() ? refusal : "--arcs: " + refusal;
}

/// @throws Fault where a number is too large
int Import(Session& session, const Options& options)
{
    Design_State& design = session.design;
    session.Use_Units_for_New_Design(options.units);
    const std::optional<double> delta = Whole_Number(options.delta);
    if (!delta || !Put(design, "Deltatheta", *delta))
        return session.Wrong("--delta: the step is 1.0, 0.50, 0.25 or 0.125");
    Put(design, "Translating", options.oscillating ? 0 : 1);
    Import_Choice choice;
    choice.coord = Same_Text(options.coord, "XY") ? Import_Coord::XY : Import_Coord::RT;
    choice.method = options.method == "fourier"   ? Fit_Method::fourier
                    : options.method == "lanczos" ? Fit_Method::lanczos
                    : options.method == "smooth"  ? Fit_Method::smooth
                                                  : Fit_Method::spline;
    choice.normalize = options.normalize;
    choice.raw = options.raw;
    choice.close = options.close;
    choice.harmonics = options.harmonics;
    std::optional<double> prime;
    std::optional<double> rpm;
    std::optional<double> shift;
    std::optional<double> bound;
    for (const std::string& refusal :
         {Take_Number("--prime", options.prime, prime), Take_Number("--rpm", options.rpm, rpm),
          Take_Number("--shift", options.shift, shift), Take_Number("--bound", options.bound, bound)})
        if (!refusal.empty())
            return session.Wrong(refusal);
    if (options.input.empty() == options.arcs.empty())
        return session.Wrong("either a file or --arcs tells what to import");
    if (options.oscillating && !options.arcs.empty())
        return session.Wrong("--oscillating: the follower of a cam of arcs moves along a line");
    Arc_Cam arcs;
    if (!options.arcs.empty())
        if (const std::string refusal = Take_Arcs(options, arcs); !refusal.empty())
            return session.Wrong(refusal);
    if (choice.method == Fit_Method::smooth && !bound)
        return session.Wrong("--method smooth: --bound tells by how much a point may be moved");
    if (prime)
        if (const Verdict verdict = Put(design, "Prime_Rad", *prime); !verdict)
            return session.Wrong("--prime: " + verdict.sentence);
    if (!options.arcs.empty()) {
        if (const Verdict verdict = Put_Measured_Cam(design, Measured_Cam_of(arcs)); !verdict)
            return session.Wrong("--arcs: " + verdict.sentence);
        Choose_as_Arcs(choice);
    }
    if (!session.Apply_Settings(options.settings))
        return wrong_input;
    choice.prime = design.cam.Prime_Rad;
    choice.shift = Single(shift.value_or(0.0));
    choice.bound = Single(bound.value_or(0.0));
    const Import_Units units{options.units, rpm ? double{Single(*rpm)} : design.motion.Shaft_speed * 30.0 / PI};
    Profile profile;
    const bool taken = options.arcs.empty()
                           ? Take_Profile_File(design, options.input, choice, profile)
                           : Take_Profile(design, Pairs_of(arcs, design.motion.Deltatheta), "of arcs", choice, profile);
    if (!taken)
        return wrong_input;
    if (!Fit_Profile(design, choice, profile))
        return failed;
    for (const std::string& note : Import_Notes(design, choice, profile, Decimal_Symbol::point))
        session.Say("import: " + note);
    if (!Save_Functions(design, choice, units, profile))
        return failed;
    Keep_Import(design);
    return session.Save(options.output);
}

int Run(Session& session, const Options& options)
{
    try {
        return Import(session, options);
    } catch (const Fault&) {
        return session.Wrong("a number of the command line is too large");
    }
}

}  // namespace

void Add_Import(CLI::App& app, Action& action)
{
    CLI::App* command = app.add_subcommand("import", "Makes a design of a measured profile");
    const auto options = std::make_shared<Options>();
    command->add_option("input", options->input, "text file of pairs: cam angle and displacement, or x and y")
        ->type_name("PROFILE.txt");
    Add_Output(*command, options->output, "model file to write");
    command->add_option("--coord", options->coord, "RT: angle and displacement; XY: points of the roller's path")
        ->check(CLI::IsMember({"RT", "XY"}, CLI::ignore_case))
        ->capture_default_str();
    command
        ->add_option("--method", options->method,
                     "spline, fourier, lanczos (smoothed over five points), smooth (within --bound)")
        ->check(CLI::IsMember({"spline", "fourier", "lanczos", "smooth"}))
        ->capture_default_str();
    command->add_option("--harmonics", options->harmonics, "fourier: the first so many only (default: all)")
        ->check(CLI::Range(0, Most_Harmonics))
        ->type_name("H");
    command->add_option("--units", options->units, "unit system of the file: 1 in-lb, 2 ft-lb, 3 m-N, 4 cm-N, 5 mm-N")
        ->check(CLI::Range(First_Unit_System, Last_Unit_System))
        ->capture_default_str();
    command
        ->add_option("--delta", options->delta,
                     "step in degrees: 1.0, 0.50, 0.25, 0.125; finer where the pairs need it")
        ->type_name("D")
        ->capture_default_str();
    command->add_option("--rpm", options->rpm, "shaft speed, revolutions per minute")->type_name("N");
    command->add_option("--prime", options->prime, "prime radius of the cam")->type_name("R");
    command->add_option("--shift", options->shift, "degrees by which the motion comes later")->type_name("DEG");
    command->add_option("--bound", options->bound, "smooth: no point moves by more, in the unit of the file")
        ->type_name("B");
    command
        ->add_option("--arcs", options->arcs,
                     "in place of a file: radii of base circle, flanks and nose, and the lift; the nose at 180 degrees")
        ->type_name("'BASE FLANK NOSE LIFT'");
    command
        ->add_option("--roller", options->roller,
                     "arcs: radius of the roller that rides on them (default: a flat face)")
        ->type_name("R");
    command->add_flag("--oscillating", options->oscillating,
                      "the follower is an oscillating arm, displacements in degrees");
    command->add_flag("--normalize", options->normalize, "the lowest displacement is taken off");
    command->add_flag("--raw", options->raw, "keeps the displacement as it was measured");
    command->add_flag("--close", options->close, "the first pair again a turn further on");
    Add_Settings(*command, options->settings);
    command->callback([options, &action] { action = [options](Session& session) { return Run(session, *options); }; });
}

}  // namespace lobemax::cli
