// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>
#include <cmath>
#include <memory>
#include <optional>

#include "camgeom/cam_drawing.h"
#include "camgeom/sizing.h"
#include "cli/commands.h"
#include "cli/picture.h"
#include "cli/session.h"
#include "core/design_state.h"
#include "paint/painter_surface.h"

namespace lobemax::cli {

namespace {

struct Options {
    std::string input;
    std::optional<double> at;
    bool conjugate = false;
    std::string path;
    std::string output;
    std::string size = "800x800";
};

int Nearest_Point(double angle)
{
    return static_cast<int>(std::lround(angle / design.motion.Deltatheta));
}

int Run(const Options& options)
{
    const auto size = Picture_Size(options.size);
    if (!size)
        return Wrong("--size: '" + options.size + "' is no size; write it as 800x800");
    if (!Is_Picture(options.output))
        return Wrong("-o: the picture's name must end in .png, .svg or .pdf");
    if (!Load(options.input))
        return wrong_input;
    if (!design.flags.Sized)
        return Wrong("the cam is not sized: there is nothing to draw");
    Cam_Group& c = design.cam;
    if (c.Camtype == "Barrel")
        return Wrong("barrel cams are not drawn");
    if (options.conjugate && c.Camtype != "Radial")
        return Wrong("only a radial cam has a conjugate");
    if (options.at && !options.path.empty())
        return Wrong("a path is drawn about the cam in its first position: either --at or --path");
    if (options.conjugate && !Use_Conjugate(design))
        return Wrong("the conjugate cam cannot be calculated with these sizes");
    c.Show_Surface = options.path != "machine";
    c.Show_Follower_Path = options.path == "follower";
    c.Show_Cutter_Path = options.path == "cutter";
    c.Show_Cam_Key = options.path == "machine";
    return Draw_to_File(options.output, [&](const std::string& path) {
        bool drawn = false;
        const bool saved = paint::Save_Drawing(
            [&](Surface& surface) {
                drawn =
                    options.at ? Draw_Cam_at(design, surface, Nearest_Point(*options.at)) : Draw_Cam(design, surface);
            },
            *size, QString::fromStdString(path), QApplication::palette());
        return saved && drawn;
    });
}

}  // namespace

void Add_Draw(CLI::App& app, Action& action)
{
    CLI::App* command = app.add_subcommand("draw", "Draws the cam with its follower to a picture");
    const auto options = std::make_shared<Options>();
    command->add_option("input", options->input, "model file to read")->type_name("IN.cam")->required();
    command->add_option("--at", options->at, "with the cam turned by an angle: the nearest calculated point is shown")
        ->type_name("ANGLE")
        ->check(CLI::Range(0.0, 360.0));
    command->add_flag("--conjugate", options->conjugate, "the conjugate cam, whose follower stands opposite");
    command->add_option("--path", options->path, "a path beside the cam: follower, cutter or machine")
        ->check(CLI::IsMember({"follower", "cutter", "machine"}));
    command->add_option("--size", options->size, "width and height in points; a PNG has two pixels a point")
        ->type_name("WxH")
        ->capture_default_str();
    Add_Output(*command, options->output, "picture to write: .png, .svg or .pdf");
    command->callback([options, &action] { action = [options] { return Run(*options); }; });
}

}  // namespace lobemax::cli
