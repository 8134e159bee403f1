// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/desk.h"

#include <utility>

namespace lobemax::screens {

Design_State design;

History& Desk_History()
{
    static History history(design);
    return history;
}

namespace {

std::function<void()>& Step_Work()
{
    static std::function<void()> work;
    return work;
}

}  // namespace

std::function<void()> On_Step(std::function<void()> work)
{
    return std::exchange(Step_Work(), std::move(work));
}

void Step_Taken()
{
    if (Step_Work())
        Step_Work()();
}

}  // namespace lobemax::screens
