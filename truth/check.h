// SPDX-License-Identifier: GPL-3.0-or-later
/// The check of a design: where its figures cannot be trusted, what the cam would really do, which limits it breaks.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/design_state.h"
#include "truth/limits.h"
#include "truth/true_cam.h"
#include "truth/true_contact.h"

namespace lobemax {

/// How bad a finding is, the least first.
enum class Severity { note, warning, do_not_cut };
/// "note", "warning", "do not cut".
std::string_view Words_of(Severity severity);

/// The screen where a finding is mended.
enum class Finding_Place { motion, size, forces, stress };

/// A part of the cycle, degrees; to is below from where it runs over the end of the turn.
struct Stretch {
    double from = 0.0;
    double to = 0.0;
};

/// One thing that a designer should know.
struct Finding {
    std::string_view code;  // "undercut": the same for ever, for programs that read it
    std::string name;       // "Undercut"
    Severity severity = Severity::note;
    bool beyond_limit = false;    // a limit of the user is broken
    std::optional<double> row;    // what the program's row says
    std::optional<double> truth;  // what is true
    std::optional<double> limit;
    std::string unit;              // of these three
    std::optional<double> angle;   // degrees, of the worst place
    int segment = 0;               // that the angle lies in; 0: none
    std::vector<Stretch> stretch;  // where it holds
    Finding_Place place = Finding_Place::size;
    std::string sentence;  // what is the matter
    std::string advice;    // what to do
};

/// The true figures at the stored points.
struct True_Design {
    True_Cam cam;
    std::vector<True_Point> points;
    std::vector<Follower_Point> motion;
    True_Contact contact;
};

/// The true figures of a sized design; none where it is not sized, is not calculated in its own units, or has no
/// geometry (an arm that does not reach).
std::optional<True_Design> Find_Truth(const Design_State& design);

struct Check {
    std::vector<Finding> findings;  // the worst first, then in the order of the cycle's ladder
    std::optional<True_Design> truth;

    /// The worst finding; none where there is nothing to tell.
    const Finding* Worst() const;
    /// The worst of one screen.
    const Finding* Worst_of(Finding_Place place) const;
    /// Whether the cam must not be cut by the rows of its surface.
    bool Do_Not_Cut() const;
    /// Whether anything must not be cut or is beyond a limit.
    bool Fails() const;
};

/// Everything that is known to be worth telling of a design, as far as it is calculated. Shows nothing and changes
/// nothing; a figure that cannot be found is left out, and a fault on the way is a finding of its own.
Check Check_Design(const Design_State& design, const Limits& limits);

/// A copy of the design whose rows of pressure angle, curvature and profile are the true ones: exports, drawings and
/// plots of it show these. @return none as Find_Truth's
std::optional<Design_State> With_True_Profile(const Design_State& design);

}  // namespace lobemax
