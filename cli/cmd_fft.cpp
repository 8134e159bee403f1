// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <memory>
#include <optional>
#include <ostream>
#include <vector>

#include "cli/commands.h"
#include "cli/session.h"
#include "core/design_state.h"
#include "core/text.h"
#include "motion/fourier.h"
#include "present/data_table.h"
#include "present/plot_selection.h"

namespace lobemax::cli {

namespace {

struct Options {
    std::string input;
    std::string output;
    std::string variable;
    std::optional<int> segment;  // none: the whole cycle
    int harmonics = 15;
};

/// Harmonic, real, imaginary, magnitude, phase: the one-sided transform, a line each.
void Print_Harmonics(const Session& session, int harmonics)
{
    const auto& work = session.design.results.Fft_Work_A;
    std::string lines = "Harmonic\tReal\tImag\tMag\tPhs\n";
    for (int k = 1; k <= harmonics; ++k) {
        lines += std::to_string(k);
        for (int row = 0; row <= 3; ++row)
            lines += '\t' + Shortest(Single(work(row, k)));
        lines += '\n';
    }
    session.out << lines;
}

int Run(Session& session, const Options& options)
{
    Design_State& design = session.design;
    if (const int status = session.Load(options.input); status != done)
        return status;
    const auto variable = Variable_Named(design, options.variable);
    if (!variable || *variable == var::Angle)
        return session.Wrong("there is no variable '" + options.variable + "'");
    if (const std::string refusal = session.Refused_Segment(options.segment); !refusal.empty())
        return session.Wrong(refusal);
    if (!design.flags.Calculated)
        return session.Wrong("the design is not calculated: run calc first");
    const std::vector<int> offered = Load_Names(design);
    if (std::ranges::find(offered, *variable) == offered.end())
        return session.Wrong("variable '" + options.variable + "' is not calculated");
    const Dft_Range range = Range_of_Segment(design, options.segment.value_or(0));
    if (!Do_DFT(design, *variable, range.first, range.last, Set_Harmonics(design, options.harmonics)))
        return failed;
    Print_Harmonics(session, Shown_Harmonics(design));
    Finish_FFT(design);
    return session.Save(options.output);
}

}  // namespace

void Add_Fft(CLI::App& app, Action& action)
{
    CLI::App* command = app.add_subcommand("fft", "Fourier transform of one variable");
    const auto options = std::make_shared<Options>();
    command->add_option("input", options->input, "model file to read")->type_name("IN.cam")->required();
    Add_Output(*command, options->output, "model file to write");
    command->add_option("--var", options->variable, "variable, by number, name or symbol")->type_name("N")->required();
    command->add_option("--segment", options->segment, "only the points of one segment")->type_name("S");
    command->add_option("--harmonics", options->harmonics, "how many harmonics to show")
        ->type_name("H")
        ->check(CLI::Range(1, 32767))
        ->capture_default_str();
    command->callback([options, &action] { action = [options](Session& session) { return Run(session, *options); }; });
}

}  // namespace lobemax::cli
