// SPDX-License-Identifier: GPL-3.0-or-later
/// The spine at the finest step: a whole cycle of 2881 points calculated, its model file written and read.
///
/// Written and read bytes are compared with the plainest way of moving the same bytes: fwrite line by line,
/// and std::getline. The ratios are told at the end of the run; each aims at 2 or less.
/// The program brings its file to the disk (docs/files.md), the plain way does not: by the clock the ratio has the disk
/// in it.
#include <benchmark/benchmark.h>

#include <unistd.h>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "core/design_state.h"
#include "core/startup.h"
#include "files/byte_stream.h"
#include "files/model_file.h"
#include "files/whole_file.h"
#include "motion/motion_programs.h"
#include "motion/segments.h"

namespace {

using namespace lobemax;

Design_State design;

constexpr double goal = 2.0;

std::string Bench_Path(const char* name)
{
    return "/tmp/lobemax_bench_" + std::to_string(::getpid()) + "_" + name;
}

/// Eight segments of 45 degrees over the laws, 2881 points, calculated: every stored row of the motion is full.
void Make_Fine_Design()
{
    Sub_Main(design, "", {});
    Set_Step(design, 0.125);
    Motion_Group& m = design.motion;
    m.No_of_segments = 8;
    const char* const programs[] = {"MS", "DW", "67", "DW", "MT", "DW", "11", "DW"};
    const char* const kinds = "RDFDRDFD";
    const char* const ends[] = {"0", "25.4", "25.4", "0", "0", "12.7", "12.7", "0", "0"};
    for (int i = 1; i <= 8; ++i) {
        Pick_Motion(design, i, kinds[i - 1]);
        Pick_Program(design, i, programs[i - 1]);
        m.Beta_Deg(i) = 45.0;
        m.Beta_Rad(i) = 45.0 / Deg_per_Rad;
        m.Start_Value(i) = ends[i - 1];
        m.End_Value(i) = ends[i];
    }
    Set_Shaft_Speed(design, 15.0);
    Calc_All(design, true);
    Motion_Done(design);
    // a table as full as a design that has climbed the whole ladder
    for (int v = 5; v <= design.run.Saved_Variables; ++v)
        for (int p = 0; p <= design.motion.Max_Data_Points_used; ++p)
            design.results.CalcData(v, p) = design.results.CalcData(1 + v % 4, p) * 1.000123 + v;
}

std::string Model_Text()
{
    Text_Sink sink;
    Write_Model(design, sink, "9");
    return sink.Text();
}

void Write_File(const std::string& path)
{
    Whole_File file(path);
    Write_Model(design, file.Sink(), "9");
    file.Commit();
}

void Read_File(const std::string& path)
{
    if (!Load_Model(design, path))
        std::abort();
}

/// fwrite of each line by itself, buffered by the library as usual.
void Fwrite_Lines(const std::string& path, const std::string& text)
{
    std::FILE* file = std::fopen(path.c_str(), "wb");
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = text.find('\n', from) + 1;
        std::fwrite(text.data() + from, 1, end - from, file);
        from = end;
    }
    std::fclose(file);
}

std::size_t Getline_Lines(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines.size();
}

void Calculate_Whole_Cycle(benchmark::State& state)
{
    Make_Fine_Design();
    for (auto _ : state)
        Calc_All(design, true);
}

void Write_Model_File_of_2881_Points(benchmark::State& state)
{
    Make_Fine_Design();
    for (auto _ : state)
        Write_File(Bench_Path("write"));
    std::remove(Bench_Path("write").c_str());
}

void Read_Model_File_of_2881_Points(benchmark::State& state)
{
    Make_Fine_Design();
    Write_File(Bench_Path("read"));
    for (auto _ : state)
        Read_File(Bench_Path("read"));
    std::remove(Bench_Path("read").c_str());
}

BENCHMARK(Calculate_Whole_Cycle)->Unit(benchmark::kMillisecond);
BENCHMARK(Write_Model_File_of_2881_Points)->Unit(benchmark::kMillisecond);
BENCHMARK(Read_Model_File_of_2881_Points)->Unit(benchmark::kMillisecond);

/// Milliseconds by the clock, which have the disk's in them, and of the processor.
struct Taken {
    double clock = 1e9;
    double processor = 1e9;
};

double Processor_Milliseconds()
{
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
}

/// The best of fifteen.
Taken Best_of(const std::function<void()>& work)
{
    Taken best;
    for (int n = 0; n < 15; ++n) {
        const auto start = std::chrono::steady_clock::now();
        const double processor = Processor_Milliseconds();
        work();
        best.processor = std::min(best.processor, Processor_Milliseconds() - processor);
        const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
        best.clock = std::min(best.clock, taken.count());
    }
    return best;
}

void Tell_Ratio(const char* what, const char* than, const Taken& ours, const Taken& plain)
{
    std::printf("%-8s %6.2f ms (processor %5.2f)   %-24s %6.2f ms (%5.2f)   ratio %.2f (%.2f), goal %.0f or less\n",
                what, ours.clock, ours.processor, than, plain.clock, plain.processor, ours.clock / plain.clock,
                ours.processor / plain.processor, goal);
}

void Tell_Ratios()
{
    Make_Fine_Design();
    const std::string text = Model_Text();
    const std::string path = Bench_Path("ratio");
    std::printf("\nModel file of 2881 points, %.1f MB:\n", static_cast<double>(text.size()) / 1e6);
    const Taken plain_write = Best_of([&] { Fwrite_Lines(path, text); });
    const Taken write = Best_of([&] { Write_File(path); });
    Tell_Ratio("write", "fwrite line by line", write, plain_write);
    const Taken plain_read = Best_of([&] { benchmark::DoNotOptimize(Getline_Lines(path)); });
    const Taken read = Best_of([&] { Read_File(path); });
    Tell_Ratio("read", "std::getline into lines", read, plain_read);
    std::remove(path.c_str());
}

}  // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    Tell_Ratios();
    return 0;
}
