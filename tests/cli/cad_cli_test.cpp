// SPDX-License-Identifier: GPL-3.0-or-later
/// Files for CAD, machines and controllers on the command line.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

#include "forms/cad_form.h"
#include "tests/cli/cli_folder.h"

namespace lobemax {
namespace {

using testing::Result;

class Cad_Cli : public testing::Cli_Folder {
protected:
    /// A rise of 20 mm in 120 degrees and its fall in 100 with dwells, on a base circle of 48 mm with a roller of 12.
    void Make_Sound(const std::string& name, const std::string& settings = "", const std::string& roller = "12") const
    {
        Do("new -o " + name +
           " --rpm 60 --delta 0.5 'D DW 60 0 0' 'R MS 120 0 20' 'D DW 40 20 20' 'F MS 100 20 0' 'D DW 40 0 0' " +
           stamps);
        Do("calc " + name + " -o " + name + " --levels svaj,size --set Prime_Rad=60 --set Follow_Rad=" + roller + " " +
           settings + " " + stamps);
    }
    static std::string Do(const std::string& line)
    {
        const Result result = Run(line);
        EXPECT_EQ(result.status, 0) << line << "\n" << result.err;
        return result.out;
    }
    static bool Holds(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }
    /// A plate needs its thickness where the design has no face width.
    static std::string Needed(const std::string& kind)
    {
        return kind == "step" || kind == "stl" ? "--thickness 10 " : "";
    }
    static std::vector<std::string> Kinds()
    {
        std::vector<std::string> all;
        for (const Cad_Kind_Entry& kind : Cad_Kind_Table())
            all.emplace_back(kind.name);
        return all;
    }
};

TEST_F(Cad_Cli, every_kind_is_written_with_its_text_and_tells_what_it_wrote)
{
    Make_Sound("s.cam");
    for (const std::string& kind : Kinds()) {
        const Result result = Run("cad s.cam --as " + kind + " -o " + kind + ".out " + Needed(kind) + stamps);
        EXPECT_EQ(result.status, 0) << kind << result.err;
        EXPECT_EQ(result.err, "") << kind;
        const std::string text_name = kind + ".txt";
        ASSERT_TRUE(Exists(kind + ".out") && Exists(text_name)) << kind;
        EXPECT_TRUE(Holds(result.out, "Written: " + kind + ".out\nText beside it: " + text_name + "\n")) << result.out;
        const std::string text = Content(text_name);
        EXPECT_TRUE(Holds(text, "File: " + kind + ".out\r\nModel: s\r\nDesign: ")) << text;
        EXPECT_TRUE(Holds(text, "\r\nDate: 2026-11-21 12:00:00\r\nUnit: mm\r\n")) << text;
        EXPECT_TRUE(Holds(text, "deviation") || Holds(text, "depart by")) << text;
    }
}

TEST_F(Cad_Cli, the_same_input_gives_the_same_bytes)
{
    Make_Sound("s.cam");
    for (const std::string& kind : Kinds()) {
        Do("cad s.cam --as " + kind + " -o a.out " + Needed(kind) + stamps);
        const std::string first = Content("a.out");
        const std::string text = Content("a.txt");
        Do("cad s.cam --as " + kind + " -o a.out " + Needed(kind) + stamps);
        EXPECT_FALSE(first.empty());
        EXPECT_TRUE(Content("a.out") == first) << kind;
        EXPECT_EQ(Content("a.txt"), text) << kind;
    }
}

/// Every option that is in the table, given to every kind: taken where the table has it for a disk cam, refused with a
/// sentence and status 2 where it has not.
TEST_F(Cad_Cli, an_option_is_refused_with_a_sentence_where_it_means_nothing)
{
    Make_Sound("s.cam");
    for (const Cad_Option& option : Cad_Options()) {
        const std::string name(option.name);
        std::string words = " --" + std::string(option.usual == "yes" ? "no-" : "") + name;
        if (option.entry != Cad_Entry::flag)
            words += option.entry == Cad_Entry::choice ? " " + Choices_of(option).front()
                     : option.entry == Cad_Entry::word ? " Cam"
                                                       : " 2";
        for (const std::string& kind : Kinds()) {
            const Cad_Option* const row = Find_Option(*Cad_Kind_of(kind), name);
            if (row == nullptr) {
                const Result result = Run("cad s.cam --as " + kind + " -o no.out" + words + " " + stamps);
                EXPECT_EQ(result.status, 2) << kind << words;
                EXPECT_TRUE(Holds(result.err, "lobemax-cli: --" + name + " means nothing for " + kind + ": it is for "))
                    << result.err;
            } else if (row == &option &&
                       (option.need == Cad_Body_Need::unrolled || option.need == Cad_Body_Need::barrel)) {
                const Result result = Run("cad s.cam --as " + kind + " -o no.out" + words + " " + stamps);
                EXPECT_EQ(result.status, 2) << kind << words;
                EXPECT_TRUE(Holds(result.err, "--" + name + " means nothing for this cam: it is for a barrel"))
                    << result.err;
            }
        }
    }
    EXPECT_FALSE(Exists("no.out"));
    EXPECT_EQ(Run("cad s.cam --as table --even-if-wrong -o no.out").status, 2);
    EXPECT_EQ(Run("cad s.cam --as dwg -o no.out").status, 2);
    EXPECT_EQ(Run("cad s.cam --as dxf --tolerance 1,5x -o no.out").status, 2);
    EXPECT_EQ(Run("cad s.cam --as dxf --form circles -o no.out").status, 2);
    EXPECT_EQ(Run("cad s.cam --as gcode --passes 1.5 -o no.out").status, 2);
    EXPECT_EQ(Run("cad s.cam -o no.out").status, 2);
    EXPECT_FALSE(Exists("no.out"));
}

TEST_F(Cad_Cli, what_the_shop_refuses_is_told_and_an_older_file_stays)
{
    Make_Sound("s.cam");
    Write("old.dxf", "older");
    const auto refused = [&](const std::string& options, const std::string& sentence) {
        const Result result = Run("cad s.cam -o old.dxf " + options);
        EXPECT_EQ(result.status, 1) << options;
        EXPECT_TRUE(Holds(result.err, sentence)) << result.err;
        EXPECT_EQ(Content("old.dxf"), "older");
        EXPECT_FALSE(Exists("old.txt"));
    };
    refused("--as dxf --bore 96", "The bore reaches to 48 mm from the centre");
    refused("--as dxf --tolerance 0.000001", "is finer than the motion itself is known");
    refused("--as pdf --every 0.5", "Radii are told every 1 to 90 degrees.");
    refused("--as pdf --every 1 --paper A4", "A table of 360 lines has no room on A4");
    refused("--as pdf --scale 5:1 --paper A4", "take a larger sheet or another scale");
    refused("--as plc --points 1000", "a power of two");
    refused("--as gcode --feed 0", "Feeds must be above 0.");
    Do("new -o raw.cam --rpm 60 'R MS 180 0 20' 'F MS 180 20 0' " + stamps);
    const Result raw = Run("cad raw.cam --as dxf -o old.dxf");
    EXPECT_EQ(raw.status, 1);
    EXPECT_TRUE(Holds(raw.err, "The cam is not sized yet.")) << raw.err;
}

TEST_F(Cad_Cli, a_cam_that_must_not_be_cut_is_written_by_even_if_wrong_alone_and_carries_the_warning)
{
    // A roller of 55 mm on a path whose smallest radius is 54.575 (with a roller of 12 its surface has 42.575):
    // undercut.
    Make_Sound("u.cam", "", "55");
    for (const std::string& kind : {std::string("dxf"), std::string("pdf"), std::string("xyz"), std::string("svg")}) {
        const Result result = Run("cad u.cam --as " + kind + " -o u." + kind + " " + stamps);
        EXPECT_EQ(result.status, 1) << kind;
        EXPECT_TRUE(Holds(result.err, "Do not cut this cam")) << result.err;
        EXPECT_TRUE(Holds(result.err, "nothing was written: --even-if-wrong writes it all the same")) << result.err;
        EXPECT_FALSE(Exists("u." + kind));
        Do("cad u.cam --as " + kind + " --even-if-wrong -o u." + kind + " " + stamps);
        EXPECT_TRUE(Exists("u." + kind));
    }
    EXPECT_TRUE(Holds(Content("u.dxf"), "Do not cut this cam"));
    // The motion is not cut: its tables are open.
    Do("cad u.cam --as plc -o u.csv " + stamps);
    Do("cad u.cam --as table -o t.csv " + stamps);
}

TEST_F(Cad_Cli, options_reach_what_they_name)
{
    Make_Sound("s.cam");
    // Points: one in inches is 25.4 of those in mm; the surface at cam angle 0 lies 48 mm from the centre.
    Do("cad s.cam --as xyz --units in --step 10 -o p.xyz " + stamps);
    std::istringstream points(Content("p.xyz"));
    double x = 0.0, y = 0.0, z = 0.0;
    points >> x >> y >> z;
    EXPECT_NEAR(std::hypot(x, y) * 25.4, 48.0, 1e-6);
    int lines = 1;
    for (std::string line; std::getline(points, line);)
        lines += line.size() > 1 ? 1 : 0;
    EXPECT_EQ(lines, 37);
    Do("cad s.cam --as xyz --curve pitch -o c.xyz " + stamps);
    std::istringstream centers(Content("c.xyz"));
    centers >> x >> y;
    EXPECT_NEAR(std::hypot(x, y), 60.0, 1e-6);
    // A finer tolerance takes more arcs, lines more than arcs.
    const auto arcs = [&](const std::string& options) {
        const std::string out = Do("cad s.cam --as dxf -o a.dxf " + options + " " + stamps);
        return std::stoi(out.substr(out.find("SURFACE, surface: ") + 18));
    };
    const int usual = arcs("");
    EXPECT_GT(arcs("--tolerance 0.0001"), usual);
    EXPECT_LT(arcs("--tolerance 0.01"), usual);
    EXPECT_GT(arcs("--form lines"), 4 * usual);
    EXPECT_TRUE(Holds(Do("cad s.cam --as dxf -o a.dxf --cutter 5 --bore 20 --keyway " + stamps), "CUTTER, centre"));
    EXPECT_TRUE(Holds(Content("a.txt"), "KEYWAY: width 6 mm"));  // the key of a bore above 17 to 22 mm
    EXPECT_FALSE(Holds(Do("cad s.cam --as dxf -o a.dxf --no-pitch --no-circles " + stamps), "PITCH"));
    // Programs: the unit, the feed, the tool.
    Do("cad s.cam --as gcode -o a.nc " + stamps);
    EXPECT_TRUE(Holds(Content("a.nc"), "G21"));
    Do("cad s.cam --as gcode --units in --spindle 777 --compensation control --lead-size 0.5 -o b.nc " + stamps);
    EXPECT_TRUE(Holds(Content("b.nc"), "G20"));
    EXPECT_TRUE(Holds(Content("b.nc"), "S777"));
    EXPECT_TRUE(Holds(Content("b.nc"), "G41"));
    EXPECT_TRUE(Holds(Content("b.txt"), "Unit: in\r\nTolerance: 0.0002 in"));
    // Controllers: structured text with a name, columns with a comma.
    Do("cad s.cam --as plc --language st --name Press --number DINT -o a.st " + stamps);
    EXPECT_TRUE(Holds(Content("a.st"), "Press"));
    EXPECT_TRUE(Holds(Content("a.st"), "DINT"));
    const Result none = Run("cad s.cam --as plc --form polynomials -o p.csv " + stamps);
    EXPECT_EQ(none.status, 1);  // a modified sine is none
    EXPECT_TRUE(Holds(none.err, "is no polynomial")) << none.err;
    Do("new -o poly.cam --rpm 60 'R 67 180 0 20' 'F 67 180 20 0' " + stamps);
    Do("calc poly.cam -o poly.cam --levels svaj " + stamps);
    EXPECT_TRUE(Holds(Do("cad poly.cam --as plc --form polynomials -o p.csv " + stamps), "Written: 2 polynomials"));
    Do("cad s.cam --as table --decimal comma --step 0.5 -o t.csv " + stamps);
    EXPECT_TRUE(Holds(Content("t.csv"), "\r\n0,50000;"));
}

TEST_F(Cad_Cli, a_barrel_cam_is_unrolled_and_cut_by_a_rotary_axis)
{
    Make_Sound("b.cam", "--set Camtype=Barrel --set Barrel_Type=Grooved");
    const std::string out = Do("cad b.cam --as dxf -o b.dxf " + stamps);
    EXPECT_TRUE(Holds(out, "flank below the roller")) << out;
    EXPECT_TRUE(Holds(out, "flank above the roller")) << out;
    // Once round at the prime radius.
    std::ostringstream turn;
    turn.precision(6);
    turn << 2.0 * std::numbers::pi * 60.0;
    EXPECT_TRUE(Holds(out, "length of one turn " + turn.str() + " mm")) << out;
    Do("cad b.cam --as gcode --ramp 15 -o b.nc " + stamps);
    EXPECT_TRUE(Holds(Content("b.nc"), "G93"));
    EXPECT_EQ(Run("cad b.cam --as gcode --tool-radius 3 -o b.nc").status, 2);
    EXPECT_EQ(Run("cad b.cam --as dxf --bore 20 -o b.dxf").status, 2);
    Do("cad b.cam --as pdf --paper A1 -o b.pdf " + stamps);
}

TEST_F(Cad_Cli, a_solid_has_the_sizes_that_are_given)
{
    Make_Sound("s.cam");
    const std::string plain = Do("cad s.cam --as step --thickness 10 -o a.step " + stamps);
    const std::string bored = Do("cad s.cam --as step --thickness 10 --bore 20 -o b.step " + stamps);
    const auto volume = [](const std::string& out) {
        const std::size_t at = out.find("Volume: ");
        return at == std::string::npos ? 0.0 : std::stod(out.substr(at + 8));
    };
    EXPECT_GT(volume(plain), 0.0) << plain;
    EXPECT_NEAR(volume(plain) - volume(bored), std::numbers::pi * 100.0 * 10.0, 1.0) << bored;
    EXPECT_TRUE(Holds(Content("a.step"), "ISO-10303-21"));
    EXPECT_EQ(Run("cad s.cam --as step --drum-radius 50 -o c.step").status, 2);
    EXPECT_EQ(Run("cad s.cam --as step --thickness 10 --bore 100 -o c.step").status, 1);
    EXPECT_FALSE(Exists("c.step"));
}

TEST_F(Cad_Cli, the_help_names_every_option_and_kind)
{
    const std::string help = Do("cad --help");
    for (const Cad_Option& option : Cad_Options())
        EXPECT_TRUE(Holds(help, "--" + std::string(option.usual == "yes" ? "no-" : "") + std::string(option.name)))
            << option.name;
    for (const std::string& kind : Kinds())
        EXPECT_TRUE(Holds(help, kind));
    EXPECT_TRUE(Holds(help, "--even-if-wrong"));
}

}  // namespace
}  // namespace lobemax
