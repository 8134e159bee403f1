// SPDX-License-Identifier: GPL-3.0-or-later
/// The screen of the links' masses and springs without its window: a line of entries for each moving link, and what the
/// linkage is worth at the follower.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "edit/rungs.h"
#include "forms/form_table.h"

namespace lobemax {

/// The columns of the table: txt_Mass(link) and so on, by the link's number.
enum class Link_Column { mass, inertia, dist_cg, angle_cg, stiffness };

struct Massprop_Column : Form_Control {
    Link_Column column;
    std::string_view field;         // of the design, an element a link
    std::string_view caption_of_6;  // where six links need a shorter one
};
/// All of them, in their order.
std::span<const Massprop_Column> Columns_of_Massprop();
const Massprop_Column& Column_at(Link_Column column);

/// The heading of a column for the train at hand.
std::string_view Heading_of(const Design_State& design, const Massprop_Column& column);

/// frm_MassProp4 or frm_MassProp6.
std::string_view Screen_of_Massprop(const Design_State& design);

/// Whether the link counts with this column: a slider with its mass and its stiffness alone, as it does not turn.
bool Massprop_Open(const Design_State& design, Link_Column column, int link);

/// lbl_Segment(link).
std::string Segment_of_Link(const Design_State& design, int link);

/// The text of an entry. The angle is shown in degrees with two decimals and stored in radians. @throws Fault{9}
std::string Massprop_Text(const Design_State& design, Link_Column column, int link);

/// Takes an entry through the door; a refused one is told and shows what stays.
Form_Entry Edit_Massprop(Design_State& design, Link_Column column, int link, std::string_view typed);

/// The results as the labels show them; empty before a calculation, the stiffness where a link has none.
struct Massprop_Texts {
    std::string lbl_Mass1;
    std::string lbl_Mass2;
    std::string lbl_Effmass;
    std::string lbl_Effspring;
};
std::span<const Form_Field<Massprop_Texts>> Read_Outs_of_Massprop();

/// What cmd_Calc has found: the labels, and what a designer must know beside them.
struct Massprop_Result {
    Massprop_Texts texts;
    std::vector<std::string> notes;
};
/// cmd_Calc: both routines, into the model of the follower train. Empty after a message.
Massprop_Result Calc_Massprop(Design_State& design, Speed_Choice choice);

/// Every other captioned control of the screen.
std::span<const Form_Control> Controls_of_Massprop();

/// What "LRCS" of the column's heading means, in the note's own letters.
inline constexpr std::string_view Massprop_Note =
    "*  LCRS = Local Rotating Coordinate System Referenced to Link's Line of Centers";

}  // namespace lobemax
