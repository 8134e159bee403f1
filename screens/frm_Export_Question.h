// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

#include "files/exports.h"
#include "screens/screen.h"
#include "truth/check.h"

namespace lobemax::screens {

/// Asks before a profile is exported that must not be cut by its rows, and offers the true surface in their place.
/// Cancel is what Enter presses.
class frm_Export_Question : public Screen {
public:
    frm_Export_Question(const Design_State& exported, const lobemax::Check& check, QWidget* parent = nullptr);
    /// Whether the true surface is wanted.
    bool True_Surface() const;
};

/// An entry of the Export list of a design, with this question where it is due.
/// @param rows  truth: the true profile is wanted anyway, and asked about where it must not be cut either
void Export_from_Screen(Design_State& exported, std::string_view entry, QWidget* over,
                        Profile_Rows rows = Profile_Rows::program);

}  // namespace lobemax::screens
