// SPDX-License-Identifier: GPL-3.0-or-later
/// A calculation on a screen whose events go on meanwhile, so that its Stop button works.
#pragma once

#include <QAction>
#include <functional>
#include <utility>

#include "screens/screen.h"

namespace lobemax::screens {

/// While it lives the screen counts as running, and Undo and Redo are closed: they would put another design under the
/// calculation. However the work ends, a fault included, the screen is open again afterwards.
class Long_Run {
public:
    /// @param refresh  shows what is open
    Long_Run(Screen& screen, bool& running, std::function<void()> refresh)
        : screen_(screen), running_(running), refresh_(std::move(refresh))
    {
        running_ = true;
        Open_Undo(false);
        refresh_();
    }
    ~Long_Run()
    {
        running_ = false;
        Open_Undo(true);
        refresh_();
    }
    Long_Run(const Long_Run&) = delete;
    Long_Run& operator=(const Long_Run&) = delete;

private:
    void Open_Undo(bool open) const
    {
        for (const char* const name : {"mnu_Undo", "mnu_Redo"})
            if (auto* const action = screen_.findChild<QAction*>(QString::fromUtf8(name)))
                action->setEnabled(open);
    }

    Screen& screen_;
    bool& running_;
    std::function<void()> refresh_;
};

}  // namespace lobemax::screens
