// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>
#include <memory>
#include <optional>
#include <vector>

#include "camgeom/cam_drawing.h"
#include "camgeom/sizing.h"
#include "cli/commands.h"
#include "cli/picture.h"
#include "cli/session.h"
#include "core/design_state.h"
#include "edit/rungs.h"
#include "forms/findings_form.h"
#include "linkage/linkage_drawing.h"

namespace lobemax::cli {

namespace {

struct Options {
    std::string input;
    std::optional<double> at;
    bool conjugate = false;
    bool cam_only = false;
    std::string path;
    bool truth = false;
    Picture_Options picture;
    Stage_Choice stage;
};

int Nearest_Point(const Design_State& design, double angle)
{
    return static_cast<int>(std::lround(angle / design.motion.Deltatheta));
}

int Run(Session& session, const Options& options)
{
    Design_State& design = session.design;
    if (const std::string refusal = Refused_Picture(options.picture); !refusal.empty())
        return session.Wrong(refusal);
    if (const int status = session.Load(options.input); status != done)
        return status;
    if (!session.Read_as(options.stage))
        return wrong_input;
    if (!design.flags.Sized)
        return session.Wrong("the cam is not sized: there is nothing to draw");
    Cam_Group& c = design.cam;
    // A path is the cam's own.
    const bool train = !options.cam_only && options.path.empty() && Has_Linkage(design);
    if (c.Camtype == "Barrel" && !train)
        return session.Wrong("barrel cams are not drawn");
    if (options.conjugate && c.Camtype != "Radial")
        return session.Wrong("only a radial cam has a conjugate");
    if (options.at && !options.path.empty())
        return session.Wrong("a path is drawn about the cam in its first position: either --at or --path");
    if (options.conjugate) {
        const std::string refusal = session.Refusal_of([&] { return Use_Conjugate(design); });
        if (!refusal.empty())
            return session.Wrong("the conjugate cam cannot be calculated with these sizes: " + refusal);
    }
    if (options.truth && !session.Take_Truth())
        return failed;
    if (train)
        Work_Out_Linkage(design);  // a train that cannot be is drawn as it is, and was told of
    c.Show_Surface = options.path != "machine";
    c.Show_Follower_Path = options.path == "follower";
    c.Show_Cutter_Path = options.path == "cutter";
    c.Show_Cam_Key = options.path == "machine";
    const std::vector<Cam_Stretch> warned = Warned_Stretches(Check_Design(design, {}), Warned::faults);
    return Draw_to_File(session, options.picture.output, [&](Drawing& drawing, std::string& why) {
        bool drawn = false;
        const auto draw = [&](Surface& surface) {
            if (train)
                return drawn = Draw_Linkage_at(design, surface, Nearest_Point(design, options.at.value_or(0.0)));
            return drawn = options.at ? Draw_Cam_at(design, surface, Nearest_Point(design, *options.at), warned)
                                      : Draw_Cam(design, surface, {.warned = warned});
        };
        const bool written = drawing.Draw(draw, Picture_of(options.picture), why);
        return drawn || !why.empty() ? std::optional(written) : std::nullopt;
    });
}

}  // namespace

void Add_Draw(CLI::App& app, Action& action)
{
    CLI::App* command = app.add_subcommand(
        "draw", "Draws the cam with its follower, or the linkage train that it drives, to a picture");
    const auto options = std::make_shared<Options>();
    command->add_option("input", options->input, "model file to read")->type_name("IN.cam")->required();
    Add_Number(
        *command, "--at", 0.0, 360.0, [options](double angle) { options->at = angle; },
        "with the cam turned by an angle: the nearest calculated point is shown")
        ->type_name("ANGLE");
    command->add_flag("--conjugate", options->conjugate, "the conjugate cam, whose follower stands opposite");
    command->add_flag("--cam-only", options->cam_only, "the cam with its follower, without the linkage");
    command->add_option("--path", options->path, "a path beside the cam: follower, cutter or machine")
        ->check(CLI::IsMember({"follower", "cutter", "machine"}));
    Add_Picture_Options(*command, options->picture, "800x800");
    Add_Truth_Option(*command, options->truth);
    Add_Stage_Options(*command, options->stage);
    command->callback([options, &action] { action = [options](Session& session) { return Run(session, *options); }; });
}

}  // namespace lobemax::cli
