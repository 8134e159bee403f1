// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>
#include <memory>

#include "camgeom/cam_drawing.h"
#include "cli/commands.h"
#include "cli/picture.h"
#include "cli/session.h"
#include "core/design_state.h"
#include "paint/painter_surface.h"

namespace lobemax::cli {

namespace {

struct Options {
    std::string input;
    std::string path;
    std::string output;
    std::string size = "800x800";
};

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
    c.Show_Follower_Path = options.path == "follower";
    c.Show_Cutter_Path = options.path == "cutter";
    c.Show_Cam_Key = options.path == "machine";
    return Draw_to_File(options.output, [&](const std::string& path) {
        bool drawn = false;
        const bool saved = paint::Save_Drawing([&drawn](Surface& surface) { drawn = Draw_Cam(surface); }, *size,
                                               QString::fromStdString(path), QApplication::palette());
        return saved && drawn;
    });
}

}  // namespace

void Add_Draw(CLI::App& app, Action& action)
{
    CLI::App* command = app.add_subcommand("draw", "Draws the cam with its follower to a picture");
    const auto options = std::make_shared<Options>();
    command->add_option("input", options->input, "model file to read")->type_name("IN.cam")->required();
    command->add_option("--path", options->path, "a path beside the cam: follower, cutter or machine")
        ->check(CLI::IsMember({"follower", "cutter", "machine"}));
    command->add_option("--size", options->size, "width and height in points")->type_name("WxH")->capture_default_str();
    Add_Output(*command, options->output, "picture to write: .png, .svg or .pdf");
    command->callback([options, &action] { action = [options] { return Run(*options); }; });
}

}  // namespace lobemax::cli
