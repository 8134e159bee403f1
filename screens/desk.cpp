// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/desk.h"

#include <cstdint>
#include <string>
#include <utility>

#include "core/ladder.h"
#include "edit/unsaved.h"

namespace lobemax::screens {

Design_State design;

History& Desk_History()
{
    static History history(design);
    return history;
}

namespace {

/// What a check says something of, and in which words.
struct Check_Key {
    std::uint64_t design = 0;
    bool other_units = false;
    Limits limits{};
    std::string format{};
    friend bool operator==(const Check_Key&, const Check_Key&) = default;
};

Limits& The_Limits()
{
    static Limits limits;
    return limits;
}

std::function<void(const Limits&)>& Keeper()
{
    static std::function<void(const Limits&)> keep;
    return keep;
}

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

const Limits& Desk_Limits()
{
    return The_Limits();
}

void Set_Desk_Limits(const Limits& limits)
{
    if (limits == The_Limits())
        return;
    The_Limits() = limits;
    if (Keeper())
        Keeper()(limits);
}

std::function<void(const Limits&)> Keep_Limits(std::function<void(const Limits&)> keep)
{
    return std::exchange(Keeper(), std::move(keep));
}

const lobemax::Check& Desk_Check()
{
    static std::optional<Check_Key> key;
    static lobemax::Check check;
    Check_Key now{Key_of(design), Holds(design, Mark::units_changed), Desk_Limits(), design.identity.Number_Format};
    if (key != now) {
        check = Check_Design(design, Desk_Limits());
        key = std::move(now);
    }
    return check;
}

std::optional<Finding_Place>& Chosen_Place()
{
    static std::optional<Finding_Place> place;
    return place;
}

}  // namespace lobemax::screens
