// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/messages.h"

#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace lobemax {
namespace {

constexpr Answer every_answer[] = {Answer::OK,     Answer::Cancel, Answer::Abort, Answer::Retry,
                                   Answer::Ignore, Answer::Yes,    Answer::No};

/// Leaves the host of before behind.
class Messages : public testing::Test {
protected:
    void SetUp() override { before = Install_Host({}); }
    void TearDown() override { Install_Host(before); }
    Host before;
};

struct Box_Case {
    const char* name;
    Buttons buttons;
    std::set<Answer> offered;
    Answer usual;
};

const Box_Case box_cases[] = {
    {"OK", Buttons::OK, {Answer::OK}, Answer::OK},
    {"OK_Cancel", Buttons::OK_Cancel, {Answer::OK, Answer::Cancel}, Answer::OK},
    {"Yes_No", Buttons::Yes_No, {Answer::Yes, Answer::No}, Answer::Yes},
    {"Yes_No_Cancel", Buttons::Yes_No_Cancel, {Answer::Yes, Answer::No, Answer::Cancel}, Answer::Yes},
    {"Abort_Retry_Ignore", Buttons::Abort_Retry_Ignore, {Answer::Abort, Answer::Retry, Answer::Ignore}, Answer::Ignore},
    {"Retry_Cancel", Buttons::Retry_Cancel, {Answer::Retry, Answer::Cancel}, Answer::Cancel},
};

class Box : public Messages, public testing::WithParamInterface<Box_Case> {};

TEST_P(Box, offers_the_answers_on_its_buttons_and_no_other)
{
    for (const Answer answer : every_answer)
        EXPECT_EQ(Offers(GetParam().buttons, answer), GetParam().offered.count(answer) == 1) << Button_Word(answer);
}

TEST_P(Box, has_a_usual_answer_that_it_offers)
{
    EXPECT_EQ(Usual_Answer(GetParam().buttons), GetParam().usual);
    EXPECT_TRUE(Offers(GetParam().buttons, Usual_Answer(GetParam().buttons)));
}

TEST_P(Box, returns_an_answer_that_it_offers_and_the_usual_one_for_any_other)
{
    for (const Answer answer : every_answer) {
        Host host;
        host.messenger = [answer](const Message&) { return answer; };
        Install_Host(host);
        const Answer expected = GetParam().offered.count(answer) == 1 ? answer : GetParam().usual;
        EXPECT_EQ(Show_Message("?", GetParam().buttons), expected) << Button_Word(answer);
    }
}

TEST_P(Box, answers_as_usual_when_nobody_is_there)
{
    EXPECT_EQ(Show_Message("?", GetParam().buttons, Symbol::exclamation), GetParam().usual);
}

INSTANTIATE_TEST_SUITE_P(All, Box, testing::ValuesIn(box_cases), [](const auto& row) { return row.param.name; });

TEST(Button_Word, is_what_stands_on_the_button)
{
    const char* const words[] = {"OK", "Cancel", "Abort", "Retry", "Ignore", "Yes", "No"};
    for (int i = 0; i < 7; ++i)
        EXPECT_STREQ(Button_Word(every_answer[i]), words[i]);
}

TEST(Answer, numbers_of_abort_retry_and_ignore_are_3_4_and_5)
{
    EXPECT_EQ(static_cast<int>(Answer::Abort), 3);
    EXPECT_EQ(static_cast<int>(Answer::Retry), 4);
    EXPECT_EQ(static_cast<int>(Answer::Ignore), 5);
}

TEST_F(Messages, the_messenger_gets_text_buttons_symbol_and_default)
{
    std::vector<Message> seen;
    Host host;
    host.messenger = [&](const Message& box) {
        seen.push_back(box);
        return box.default_answer;
    };
    Install_Host(host);

    EXPECT_EQ(Show_Message("first line\nsecond line", Buttons::Yes_No, Symbol::exclamation, Answer::No), Answer::No);
    EXPECT_EQ(Show_Message("lost", Buttons::Retry_Cancel, Symbol::stop), Answer::Cancel);
    EXPECT_EQ(Show_Message("plain"), Answer::OK);
    EXPECT_EQ(Show_Message(Message{"titled", Buttons::Yes_No, Symbol::none, Answer::No, "Title"}), Answer::No);

    ASSERT_EQ(seen.size(), 4U);
    EXPECT_EQ(seen[0].title, "");  // the program's name
    EXPECT_EQ(seen[3].title, "Title");
    EXPECT_EQ(seen[0].text, "first line\nsecond line");
    EXPECT_EQ(seen[0].buttons, Buttons::Yes_No);
    EXPECT_EQ(seen[0].symbol, Symbol::exclamation);
    EXPECT_EQ(seen[0].default_answer, Answer::No);
    EXPECT_EQ(seen[1].buttons, Buttons::Retry_Cancel);
    EXPECT_EQ(seen[1].symbol, Symbol::stop);
    EXPECT_EQ(seen[1].default_answer, Answer::Cancel);
    EXPECT_EQ(seen[2].buttons, Buttons::OK);
    EXPECT_EQ(seen[2].symbol, Symbol::none);
    EXPECT_EQ(seen[2].default_answer, Answer::OK);
}

TEST_F(Messages, installing_a_host_returns_the_one_before)
{
    Host first;
    first.date = [] { return std::string("first"); };
    Install_Host(first);
    Host second;
    second.date = [] { return std::string("second"); };
    const Host returned = Install_Host(second);
    EXPECT_EQ(returned.date(), "first");
    EXPECT_EQ(Installed_Host().date(), "second");
}

TEST_F(Messages, pointer_and_refresh_reach_the_host)
{
    std::vector<std::string> steps;
    Host host;
    host.wait_pointer = [&](bool wait) { steps.emplace_back(wait ? "wait" : "restore"); };
    host.refresh = [&] { steps.emplace_back("refresh"); };
    Install_Host(host);
    Show_Wait_Pointer();
    Restore_Pointer();
    Refresh_Screens();
    EXPECT_EQ(steps, (std::vector<std::string>{"wait", "restore", "refresh"}));
}

TEST_F(Messages, with_no_host_pointer_and_refresh_do_nothing)
{
    EXPECT_NO_THROW({
        Show_Wait_Pointer();
        Restore_Pointer();
        Refresh_Screens();
    });
}

TEST_F(Messages, date_and_time_come_from_the_host)
{
    Host host;
    host.date = [] { return std::string("11/30/08"); };
    host.time = [] { return std::string("12:34:56"); };
    Install_Host(host);
    EXPECT_EQ(Today_Text(), "11/30/08");
    EXPECT_EQ(Now_Text(), "12:34:56");
}

TEST_F(Messages, with_no_host_date_and_time_come_from_the_clock)
{
    const std::string date = Today_Text();
    ASSERT_EQ(date.size(), 10U);  // year-month-day
    EXPECT_EQ(date[4], '-');
    EXPECT_EQ(date[7], '-');
    EXPECT_GE(date, "2024-01-01");
    const std::string time = Now_Text();
    ASSERT_EQ(time.size(), 8U);  // hour:minute:second
    EXPECT_EQ(time[2], ':');
    EXPECT_EQ(time[5], ':');
}

}  // namespace
}  // namespace lobemax
