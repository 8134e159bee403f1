// SPDX-License-Identifier: GPL-3.0-or-later
/// The tests' user: a script of expected messages with the answers to give. A message that was not
/// expected, or one that never came, fails the test.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <optional>
#include <string>

#include "core/messages.h"

namespace lobemax::testing {

struct Expected_Box {
    std::string text;
    Buttons buttons = Buttons::OK;
    Symbol symbol = Symbol::information;
    Answer answer = Answer::OK;
    std::string title{};  // empty: the program's name
};

class Script {
public:
    explicit Script(std::deque<Expected_Box> boxes = {}) : boxes_(std::move(boxes))
    {
        Host host;
        host.messenger = [this](const Message& box) { return Answer_To(box); };
        host.save_dialog = [this](const File_Dialog& dialog) {
            dialogs.push_back(dialog);
            return path;
        };
        host.open_dialog = host.save_dialog;
        host.date = [] { return std::string("2026-11-21"); };
        host.time = [] { return std::string("12:34:56"); };
        host.wait_pointer = [this](bool wait) { waiting += wait ? 1 : 0; };
        before_ = Install_Host(std::move(host));
    }
    ~Script()
    {
        for (const Expected_Box& box : boxes_)
            ADD_FAILURE() << "this box never came: " << box.text;
        Install_Host(std::move(before_));
    }
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;

    void Expect(Expected_Box box) { boxes_.push_back(std::move(box)); }

    std::optional<std::string> path;  // what a file dialog comes back with
    std::deque<File_Dialog> dialogs;  // those that were shown
    int waiting = 0;

private:
    Answer Answer_To(const Message& box)
    {
        if (boxes_.empty()) {
            ADD_FAILURE() << "unexpected box: " << box.text;
            return Usual_Answer(box.buttons);
        }
        const Expected_Box expected = boxes_.front();
        boxes_.pop_front();
        EXPECT_EQ(box.text, expected.text);
        EXPECT_EQ(box.buttons, expected.buttons) << expected.text;
        EXPECT_EQ(box.symbol, expected.symbol) << expected.text;
        EXPECT_EQ(box.title, expected.title) << expected.text;
        return expected.answer;
    }

    std::deque<Expected_Box> boxes_;
    Host before_;
};

/// What the reporter says where it has no advice to give.
inline Expected_Box Error_Box(int number, const std::string& description, const std::string& routine)
{
    return {"Error " + std::to_string(number) + "   (" + description + ")  has occurred in " + routine + "\n"};
}

/// What a calculation says of a segment without a duration.
inline Expected_Box No_Beta_Box(int segment)
{
    return {"Segment " + std::to_string(segment) + " has no beta: please enter its duration in degrees.", Buttons::OK,
            Symbol::exclamation};
}

}  // namespace lobemax::testing
