// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>

#include "camgeom/cam_drawing.h"
#include "core/number_format.h"
#include "core/startup.h"
#include "core/surface.h"
#include "core/text.h"
#include "core/traps.h"
#include "core/unit_change.h"
#include "core/units.h"
#include "edit/rungs.h"
#include "files/exports.h"
#include "files/model_file.h"
#include "forms/finding_words.h"
#include "motion/continuity.h"
#include "motion/fourier.h"
#include "motion/segments.h"
#include "present/data_table.h"
#include "present/plot_engine.h"
#include "present/plot_selection.h"
#include "tests/fuzz/fuzz.h"
#include "truth/check.h"

namespace lobemax::fuzz {

namespace {

/// A surface that takes finite numbers alone.
class Finite_Surface final : public Surface {
public:
    void Scale(double l, double t, double r, double b) override { Check({l, t, r, b}); }
    void Window(double l, double t, double r, double b) override { Check({l, t, r, b}); }
    void Clear() override {}
    void PSet(double x, double y, Ink) override { Check({x, y}); }
    void Line(double x1, double y1, double x2, double y2, Ink) override { Check({x1, y1, x2, y2}); }
    void Line_to(double x, double y, Ink) override { Check({x, y}); }
    void Circle(double x, double y, double radius, Ink) override { Check({x, y, radius}); }
    void Outline(std::span<const World_Point> points, Ink) override
    {
        for (const World_Point& point : points)
            Check({point.x, point.y});
    }
    void Label(double x, double y, std::string_view, Ink) override { Check({x, y}); }

private:
    static void Check(std::initializer_list<double> numbers)
    {
        for (const double number : numbers)
            Require(std::isfinite(number), "what is drawn is finite");
    }
};

/// One of the owner's works, under a trap as the screens and the command line have one.
bool Do(const Host_of_Fuzz& host, const char* name, const std::function<bool()>& work)
{
    const int told = host.Told();
    bool done = false;
    Trap(name, [&] { done = work(); });
    Require(done || host.Told() > told, std::string("what was not done is told: ") + name);
    return done;
}

/// Cells separated by tabs and line ends, from a line on.
void Require_Finite_Cells(std::string_view text, int first_line)
{
    int line = 1;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\t\r\n"), text.size());
        const std::string_view cell = text.substr(0, end);
        if (line >= first_line)
            Require(cell != "NaN" && cell != "Infinity" && cell != "-Infinity" && cell != "nan" && cell != "inf" &&
                        cell != "-inf" && cell != "-nan",
                    "what is exported or tabled is finite, line " + std::to_string(line));
        if (end < text.size() && text[end] == '\n')
            ++line;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

void Export_All(Design_State& design, const Host_of_Fuzz& host)
{
    constexpr int after_heads = 4;
    const std::string path = Folder() + "export.txt";
    const auto exports = [&](const char* name, const std::function<bool()>& work) {
        if (Do(host, name, work))
            Require_Finite_Cells(host.files.Text(path), after_heads);
    };
    exports("all", [&] { return Export_All_to_File(design, path); });
    for (int code = 1; code <= 5; ++code)
        for (const Profile_Rows rows : {Profile_Rows::program, Profile_Rows::truth})
            exports("profile", [&] { return Export_Profile_to_File(design, path, code, rows); });
    exports("sva", [&] { return Export_SVA_to_File(design, path, Motion_Columns::sva); });
    exports("xdot", [&] { return Export_SVA_to_File(design, path, Motion_Columns::xdot); });
}

/// A check tells something of every finding, and where it is.
void Check_All(const Design_State& design, const Host_of_Fuzz& host)
{
    Do(host, "check", [&] {
        const Check check = Check_Design(design, Limits());
        for (const Finding& finding : check.findings) {
            Require(!finding.name.empty() && !finding.sentence.empty() && !finding.advice.empty(),
                    "a finding is told with what to do");
            Require(!finding.angle || (*finding.angle >= 0.0 && *finding.angle <= 360.0),
                    "a finding lies in the cycle");
            Require(!Line_of(design, finding).empty(), "a finding has a line");
        }
        return true;
    });
}

void Table_and_Plot_All(Design_State& design, const Host_of_Fuzz& host)
{
    const std::vector<int> offered = Load_Names(design);
    const int last = design.motion.Max_Data_Points_used;
    Finite_Surface surface;
    for (std::size_t i = 0; i < offered.size(); i += 4) {
        Table_Choice choice;
        for (std::size_t k = i; k < std::min(i + 4, offered.size()); ++k)
            choice.variables.push_back(offered[k]);
        choice.step = 1 + last / 48;
        Do(host, "table", [&] {
            const Data_Table table = Make_Data_Table(design, choice);
            Require_Finite_Cells(Table_Text(table, std::nullopt), 1);
            Require_Finite_Cells(Table_Text(table, 3), 1);
            return true;
        });
        for (const int variable : choice.variables)
            Do(host, "plot", [&] {
                const Plot_Figures figures = Plot_Dynamics(design, surface, 4, variable, 0, last, true);
                Require(std::isfinite(figures.ymax) && std::isfinite(figures.peak), "the scale of a plot is finite");
                return true;
            });
    }
    Do(host, "panels", [&] {
        Basic_Data(design);
        Size_Data(design);
        return true;
    });
}

void Draw_All(Design_State& design)
{
    Finite_Surface surface;
    Trap("preview", [&] { Draw_Cam_Preview(design, surface); });
    for (Flag* const shown : {&design.cam.Show_Surface, &design.cam.Show_Follower_Path, &design.cam.Show_Cutter_Path,
                              &design.cam.Show_Cam_Key})
        *shown = true;
    // Who draws asks before whether there is something to draw.
    Trap("drawing", [&] { Draw_Cam(design, surface); });
    Trap("turned", [&] { Draw_Cam_at(design, surface, 1); });
}

}  // namespace

void Require_Finite_Rows(const Design_State& design)
{
    const Table<Single>& data = design.results.CalcData;
    for (int v = 0; v <= data.Last_Row(); ++v)
        for (const Single value : data.Points(v))
            Require(std::isfinite(value.Bits()), "the calculated rows are finite");
    for (const Table<double>* const work : {&design.results.Fft_Work_A, &design.results.Fft_Work_B})
        for (int row = 0; row <= work->Last_Row(); ++row)
            for (const double value : work->Points(row))
                Require(std::isfinite(value), "the transform is finite");
    Require(std::isfinite(design.dynamics.Torque_Velocity_Limit), "every field is finite");
}

void Work_Through(Design_State& design, const Host_of_Fuzz& host)
{
    const Flags_Group& f = design.flags;
    const bool motion = design.motion.Motion;
    if (Do(host, "motion", [&] { return Calc_All(design, motion); }))
        Do(host, "done", [&] { return Motion_Done(design); });
    Require_Finite_Rows(design);
    if (f.Calculated) {
        Trap("continuity", [&] {
            ContinuityCheck(design, design.motion.Firstlast, design.motion.Continuous, design.motion.Max_Jump);
            Continuity_Report(design);
        });
        Do(host, "size", [&] { return Run_Size(design); });
    }
    Require_Finite_Rows(design);
    if (f.Sized)
        Do(host, "forces", [&] { return Run_Forces(design); });
    Require_Finite_Rows(design);
    if (f.Dynamicflag)
        Do(host, "stress", [&] {
            Contact_Field refused{};
            return Run_Stress(design, refused);
        });
    Require_Finite_Rows(design);
    if (f.Dynamicflag) {
        // Each run ends by its limit of steps; the limit of the design would take a second.
        design.dynamics.Ode_Max_Steps = std::min(Long{design.dynamics.Ode_Max_Steps}, Long{500});
        Do(host, "vibration", [&] { return Run_Vibration(design, {}); });
        Require_Finite_Rows(design);
        if (f.Modelflag && Do(host, "polydyne", [&] { return Run_Polydyne(design, {}); })) {
            Require_Finite_Rows(design);
            Do(host, "polydyne size", [&] { return Size_Polydyne(design); });
        }
        Require_Finite_Rows(design);
    }
    if (f.Calculated) {
        Compensation_Run run;
        run.max_steps = 20000;
        Compensation balancing;
        if (Do(host, "compensation", [&] { return Run_Compensation(design, run, balancing); })) {
            const auto balanced = std::make_unique<Design_State>(design);
            Do(host, "balancing cam", [&] { return Take_Compensation(*balanced, balancing); });
            Require_Finite_Rows(*balanced);
        }
        Require_Finite_Rows(design);
    }
    if (Has_Linkage(design) && f.Calculated && Do(host, "linkage", [&] { return Run_Linkage(design); })) {
        for (const Table<Single>* const table :
             {&design.results.Link_Theta, &design.results.Link_Omega, &design.results.Link_Alpha,
              &design.results.Link_X, &design.results.Link_Y})
            for (int row = 0; row <= table->Last_Row(); ++row)
                for (const Single value : table->Points(row))
                    Require(std::isfinite(value.Bits()), "the linkage is finite");
        Do(host, "link masses", [&] { return Run_Link_Masses(design, Speed_Choice::peak).has_value(); });
    }
    constexpr int longest_transform = 360;
    if (f.Calculated && design.motion.Max_Data_Points_used <= longest_transform)
        Do(host, "transform", [&] { return Do_DFT(design, var::V, 0.0, int{design.motion.Max_Data_Points_used}, 15); });
    Require_Finite_Rows(design);
    constexpr int exported = 24;  // points
    design.cam.Printstep = std::max(int{design.cam.Printstep}, design.motion.Max_Data_Points_used / exported);
    Check_All(design, host);
    Export_All(design, host);
    Table_and_Plot_All(design, host);
    Draw_All(design);
    Do(host, "units", [&] {
        Change_Units(design, design.identity.WhichUnit % Last_Unit_System + 1);
        return true;
    });
    Do(host, "recalculation", [&] { return Recalculate(design, Standing_of(design)); });
    Require_Finite_Rows(design);
}

void Require_Same_Model_Back(Design_State& design, const std::string& format)
{
    // Positions of both number formats, and a change that leaves those of one: the file does not tell its format.
    const bool of_another_format = Adopt_Texts(*std::make_unique<Design_State>(design));
    if (design.motion.No_of_segments == Max_Segments || of_another_format)
        return;
    Text_Sink lumped, first, second;
    try {
        const auto follows = std::make_unique<Design_State>(design);
        if (design.flags.Modelflag) {
            // Behind a vibration the reader takes the follower's mass, spring and damping from its model: meant. What
            // was read once has them.
            Write_Model(*follows, lumped, format);
            Text_Source source(lumped.Text());
            Require(ReadFile(*follows, source), "what is written is read");
        }
        Write_Model(*follows, first, format);
        const auto back = std::make_unique<Design_State>(Started_Design());
        back->identity.Number_Format = design.identity.Number_Format;  // of the user, not of the file
        Text_Source source(first.Text());
        const bool read = ReadFile(*back, source);
        Require(read, "what is written is read" + std::string(format == "9" ? "" : ", format " + format));
        Write_Model(*back, second, format);
    } catch (const Fault&) {
        Require(false, "what was read can be written");
    }
    if (first.Text() == second.Text())
        return;
    const std::vector<std::string> before = Lines_of(first.Text());
    const std::vector<std::string> after = Lines_of(second.Text());
    const auto place = std::ranges::mismatch(before, after);
    Require(false,
            "what is written comes back bit for bit: " +
                (place.in1 == before.end()
                     ? std::string("more lines")
                     : *place.in1 + " became " + (place.in2 == after.end() ? std::string("nothing") : *place.in2)));
}

}  // namespace lobemax::fuzz
