// SPDX-License-Identifier: GPL-3.0-or-later
/// Message boxes while a test looks at what the screen behind them shows.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "core/messages.h"

namespace lobemax::testing {

/// Answers every message box while it lives, and looks before it answers.
class Watched_Boxes {
public:
    explicit Watched_Boxes(Answer answer, std::function<void()> look = {})
    {
        Host host = Installed_Host();
        host.messenger = [this, answer, look = std::move(look)](const Message& box) {
            texts.push_back(box.text);
            if (look)
                look();
            return answer;
        };
        before_ = Install_Host(std::move(host));
    }
    ~Watched_Boxes() { Install_Host(std::move(before_)); }
    Watched_Boxes(const Watched_Boxes&) = delete;
    Watched_Boxes& operator=(const Watched_Boxes&) = delete;

    std::vector<std::string> texts;  // of the boxes that came

private:
    Host before_;
};

}  // namespace lobemax::testing
