// SPDX-License-Identifier: GPL-3.0-or-later
/// What a user waits for from the start of a process: five commands from segments to a table, a PNG and a PDF, and the
/// first window of the desktop program, on Qt's offscreen platform. Time is the clock's; "cpu" is what the processes
/// took.
///
/// LOBEMAX_CLI and LOBEMAX_PROGRAM in the environment name other programs, to be compared.
#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

std::string Program(const char* variable, const char* built)
{
    const char* const other = std::getenv(variable);
    return other != nullptr ? other : built;
}

/// A folder to work in, which is the home of what is run too.
const fs::path& Folder()
{
    static const fs::path folder = fs::temp_directory_path() / ("lobemax_start_bench_" + std::to_string(::getpid()));
    return folder;
}

void Empty_Folder()
{
    fs::current_path("/");
    fs::remove_all(Folder());
    fs::create_directories(Folder());
    fs::current_path(Folder());
}

/// Runs a program to its end, silent; the benchmark ends where it fails.
void Run(const std::vector<std::string>& words, const std::vector<std::string>& environment = {})
{
    std::vector<char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    std::vector<char*> variables;
    for (const std::string& variable : environment)
        variables.push_back(const_cast<char*>(variable.c_str()));
    for (char** variable = environ; *variable != nullptr; ++variable)
        variables.push_back(*variable);
    variables.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    int status = -1;
    if (::posix_spawn(&process, arguments[0], &actions, nullptr, arguments.data(), variables.data()) == 0)
        ::waitpid(process, &status, 0);
    posix_spawn_file_actions_destroy(&actions);
    if (status == 0)
        return;
    std::fprintf(stderr, "failed:");
    for (const std::string& word : words)
        std::fprintf(stderr, " %s", word.c_str());
    std::fprintf(stderr, "\n");
    std::exit(1);
}

/// Milliseconds that the processes run so far took of the processors.
double Processor_Time()
{
    rusage used{};
    ::getrusage(RUSAGE_CHILDREN, &used);
    const auto milliseconds = [](const timeval& time) {
        return 1e3 * static_cast<double>(time.tv_sec) + 1e-3 * static_cast<double>(time.tv_usec);
    };
    return milliseconds(used.ru_utime) + milliseconds(used.ru_stime);
}

/// Tells the processors' time of the processes of a run.
class Processor_Counter {
public:
    explicit Processor_Counter(benchmark::State& state) : state_(state) {}
    ~Processor_Counter()
    {
        state_.counters["cpu_ms"] = benchmark::Counter(Processor_Time() - before_, benchmark::Counter::kAvgIterations);
    }
    Processor_Counter(const Processor_Counter&) = delete;
    Processor_Counter& operator=(const Processor_Counter&) = delete;

private:
    benchmark::State& state_;
    const double before_ = Processor_Time();
};

const std::vector<std::vector<std::string>> five_commands{
    {"new", "-o", "press.cam", "--rpm", "120", "R MS 90 0 25", "D DW 90 25 25", "F CF 90 25 0", "D DW 90 0 0"},
    {"calc", "press.cam", "-o", "press.cam", "--set", "Prime_Rad=60", "--set", "Preload=1500"},
    {"plot", "press.cam", "--vars", "S,V,Accel", "--style", "1", "-o", "motion.png"},
    {"draw", "press.cam", "--path", "follower", "-o", "cam.pdf"},
    {"table", "press.cam", "--vars", "1,2,3,4", "--step", "10", "--decimals", "3", "-o", "svaj.tsv"},
};

void Run_Command(const std::vector<std::string>& command)
{
    static const std::string tool = Program("LOBEMAX_CLI", LOBEMAX_BUILT_CLI);
    std::vector<std::string> words{tool};
    words.insert(words.end(), command.begin(), command.end());
    Run(words);
}

void Five_Commands(benchmark::State& state)
{
    Empty_Folder();
    const Processor_Counter counter(state);
    for (auto _ : state)
        for (const auto& command : five_commands)
            Run_Command(command);
}
BENCHMARK(Five_Commands)->Unit(benchmark::kMillisecond)->UseRealTime();

void One_Command(benchmark::State& state)
{
    Empty_Folder();
    for (const auto& command : five_commands)
        Run_Command(command);
    const auto& command = five_commands[static_cast<std::size_t>(state.range(0))];
    state.SetLabel(command[0]);
    const Processor_Counter counter(state);
    for (auto _ : state)
        Run_Command(command);
}
BENCHMARK(One_Command)->DenseRange(0, 4)->Unit(benchmark::kMillisecond)->UseRealTime();

/// To the first painted window: the title, or without it the Home screen.
void First_Painted_Window(benchmark::State& state, const std::vector<std::string>& options)
{
    static const std::string program = Program("LOBEMAX_PROGRAM", LOBEMAX_BUILT_PROGRAM);
    std::vector<std::string> words{program};
    words.insert(words.end(), options.begin(), options.end());
    const Processor_Counter counter(state);
    for (auto _ : state) {
        state.PauseTiming();
        Empty_Folder();  // no run before this one, which ended in the midst of its work
        state.ResumeTiming();
        Run(words, {"LD_PRELOAD=" LOBEMAX_FIRST_PAINT, "QT_QPA_PLATFORM=offscreen", "HOME=" + Folder().string(),
                    "XDG_CONFIG_HOME=" + Folder().string(), "XDG_RUNTIME_DIR=" + Folder().string()});
    }
}
BENCHMARK_CAPTURE(First_Painted_Window, title, {})->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(First_Painted_Window, home, {"--no-title"})->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    std::error_code ignored;
    fs::remove_all(Folder(), ignored);
    return 0;
}
