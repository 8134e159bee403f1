// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/traps.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/messages.h"

namespace lobemax {
namespace {

/// A host that writes down, in order, what the reporter asks of it.
class Reporter : public testing::Test {
protected:
    void SetUp() override
    {
        Host host;
        host.messenger = [this](const Message& box) {
            boxes.push_back(box);
            steps.emplace_back("box");
            return Answer::OK;
        };
        host.wait_pointer = [this](bool wait) { steps.emplace_back(wait ? "wait" : "restore"); };
        host.error_reported = [this](int number) { steps.push_back("error " + std::to_string(number)); };
        host.show_home = [this] { steps.emplace_back("home"); };
        before = Install_Host(host);
    }
    void TearDown() override { Install_Host(before); }

    Host before;
    std::vector<Message> boxes;
    std::vector<std::string> steps;
};

struct Report_Case {
    int number;
    const char* text;  // as reported from a routine named R
    Symbol symbol;
};

const Report_Case report_cases[] = {
    {7,
     "Error 7   (Out of memory)  has occurred in R\n"
     "You should try to save your model from the Home Screen's 'File' pulldown menu, \n"
     "then Quit this program and restart it to clear the memory.\n"
     "It may help to close other programs that are running at the same time.\n"
     "Good luck! ",
     Symbol::none},
    {28,
     "Error 28   (Out of stack space)  has occurred in R\n"
     "You should try to save your model from the Home Screen's 'File' pulldown menu, \n"
     "then Quit this program and restart it to clear the stacks.\n"
     "It may help to close other programs that are running at the same time.\n"
     "Good luck! ",
     Symbol::information},
    {52,
     "Error 52   (Bad file name)  has occurred in R\n"
     "The filename clicked on has a problem.  Try opening it from within the program.",
     Symbol::information},
    {53,
     "Error 53   (File not found)  has occurred in R\n"
     "There are no files with your chosen name in the selected directory",
     Symbol::information},
    {57,
     "Error 57   (Device I/O error)  has occurred in R\n"
     "Device I/O error- bad drive or disk - please try another",
     Symbol::information},
    {61,
     "Error 61   (Disk full)  has occurred in R\n"
     " The floppy disk in the drive is full - please substitute another",
     Symbol::information},
    {64,
     "Error 64   (File not found in directory)  has occurred in R\n"
     "There are no files with your chosen name in the selected directory",
     Symbol::information},
    {71,
     "Error 71   (Disk not ready)  has occurred in R\n"
     "Disk not ready - is the drive empty or its door open?",
     Symbol::information},
    {32678,
     "Error 32678   (Out of memory)  has occurred in R\n"
     "Out of memory.  Close other programs and retry.",
     Symbol::information},
    // any other number: the line alone, with its line end
    {5, "Error 5   (Invalid argument)  has occurred in R\n", Symbol::information},
    {6, "Error 6   (Overflow)  has occurred in R\n", Symbol::information},
    {9, "Error 9   (Index out of bounds)  has occurred in R\n", Symbol::information},
    {11, "Error 11   (Division by zero)  has occurred in R\n", Symbol::information},
    {13, "Error 13   (Type mismatch)  has occurred in R\n", Symbol::information},
    {62, "Error 62   (Input past end of file)  has occurred in R\n", Symbol::information},
    {70, "Error 70   (Permission denied)  has occurred in R\n", Symbol::information},
    {4711, "Error 4711   (Unknown error)  has occurred in R\n", Symbol::information},
};

class Advice_By_Number : public Reporter, public testing::WithParamInterface<Report_Case> {};

TEST_P(Advice_By_Number, the_whole_text_is_shown_once_in_a_box_with_OK)
{
    Error_Report(GetParam().number, "R");
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].text, GetParam().text);
    EXPECT_EQ(boxes[0].buttons, Buttons::OK);
    EXPECT_EQ(boxes[0].symbol, GetParam().symbol);
    EXPECT_EQ(Error_Text(GetParam().number, "R"), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(All, Advice_By_Number, testing::ValuesIn(report_cases),
                         [](const auto& row) { return "error_" + std::to_string(row.param.number); });

TEST_F(Reporter, error_7_brings_the_Home_screen_up_and_then_restores_the_pointer)
{
    Error_Report(7, "Dimension_Arrays in mod_Main");
    EXPECT_EQ(steps, (std::vector<std::string>{"error 7", "box", "home", "restore"}));
}

TEST_F(Reporter, every_other_error_only_restores_the_pointer)
{
    for (const int number : {28, 52, 53, 57, 61, 64, 71, 32678, 6, 4711}) {
        steps.clear();
        Error_Report(number, "R");
        EXPECT_EQ(steps, (std::vector<std::string>{"error " + std::to_string(number), "box", "restore"}));
    }
}

TEST_F(Reporter, works_with_no_host_at_all)
{
    Install_Host({});
    Error_Report(7, "R");
    Error_Report(6, "R");
    EXPECT_TRUE(steps.empty());
}

TEST_F(Reporter, a_trap_lets_good_work_through_without_a_word)
{
    bool done = false;
    EXPECT_TRUE(Trap("R", [&] { done = true; }));
    EXPECT_TRUE(done);
    EXPECT_TRUE(steps.empty());
}

TEST_F(Reporter, a_trap_reports_a_fault_under_the_routine_and_returns)
{
    bool after = false;
    EXPECT_FALSE(Trap("cmd_CalcSeg_Click", [&] {
        throw Fault{9};
        after = true;
    }));
    EXPECT_FALSE(after);
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].text, "Error 9   (Index out of bounds)  has occurred in cmd_CalcSeg_Click\n");
    EXPECT_EQ(steps, (std::vector<std::string>{"error 9", "box", "restore"}));
}

TEST_F(Reporter, a_trap_reports_want_of_memory_as_error_7)
{
    EXPECT_FALSE(Trap("R", [] { throw std::bad_alloc{}; }));
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].text, report_cases[0].text);
    EXPECT_EQ(boxes[0].symbol, Symbol::none);
    EXPECT_EQ(steps, (std::vector<std::string>{"error 7", "box", "home", "restore"}));
}

TEST_F(Reporter, a_trap_reports_any_other_exception_as_error_51)
{
    EXPECT_FALSE(Trap("R", [] { throw std::runtime_error("lost"); }));
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].text, "Error 51   (Internal error)  has occurred in R\n");
}

TEST_F(Reporter, the_innermost_trap_reports_and_the_outer_one_goes_on)
{
    bool went_on = false;
    EXPECT_TRUE(Trap("Outer", [&] {
        EXPECT_FALSE(Trap("Inner", [] { throw Fault{6}; }));
        went_on = true;
    }));
    EXPECT_TRUE(went_on);
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].text, "Error 6   (Overflow)  has occurred in Inner\n");
}

TEST_F(Reporter, a_trap_forgets_a_division_by_zero_from_before_it)
{
    volatile double zero = 0.0;
    volatile double infinite = 1.0 / zero;
    static_cast<void>(infinite);
    EXPECT_FALSE(Trap("R", [] { static_cast<void>(Single(1E+300)); }));
    EXPECT_EQ(steps.front(), "error 6");
}

TEST_F(Reporter, a_division_by_zero_within_a_trap_is_error_11)
{
    volatile double zero = 0.0;
    EXPECT_FALSE(Trap("R", [&] { static_cast<void>(Single(1.0 / zero)); }));
    EXPECT_EQ(steps.front(), "error 11");
}

}  // namespace
}  // namespace lobemax
