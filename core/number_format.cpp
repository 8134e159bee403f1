// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/number_format.h"

#include <functional>
#include <string>

#include "core/text.h"

namespace lobemax {

namespace {

/// Calls visit for every text of the design that holds a typed number.
void Each_Text(Motion_Group& m, const std::function<void(std::string&)>& visit)
{
    for (int i = 1; i <= Max_Segments; ++i) {
        visit(m.Start_Value(i));
        visit(m.End_Value(i));
        for (int k = 0; k <= 9; ++k) {
            if (k > 0)
                visit(m.T_boundary_cond(i, k));
            visit(m.S_boundary_cond(i, k));
            visit(m.V_boundary_cond(i, k));
            visit(m.A_boundary_cond(i, k));
            visit(m.J_boundary_cond(i, k));
            visit(m.Pbound(i, k));
        }
    }
}

/// Point and comma change places: the decimal symbol of one format is the grouping symbol of the other.
void Swap_Symbols(Motion_Group& m)
{
    Each_Text(m, [](std::string& text) {
        for (char& c : text)
            c = c == '.' ? ',' : c == ',' ? '.' : c;
    });
}

/// Whether a text is a number from end to end. One too large to be read counts as such: it tells nothing of the symbol,
/// and what takes it says so.
bool Is_Whole(const std::string& text, Decimal_Symbol symbol)
{
    try {
        return Trim(text).empty() || Read_Number(text, symbol).whole;
    } catch (const Fault&) {
        return true;
    }
}

bool All_Whole(Motion_Group& m, Decimal_Symbol symbol)
{
    bool whole = true;
    Each_Text(m, [&](const std::string& text) { whole = whole && Is_Whole(text, symbol); });
    return whole;
}

}  // namespace

void Use_Number_Format(Design_State& design, std::string_view format)
{
    if (design.identity.Number_Format == format)
        return;
    design.identity.Number_Format = format;
    Swap_Symbols(design.motion);
}

bool Adopt_Texts(Design_State& design)
{
    const Decimal_Symbol own = Current_Decimal_Symbol(design);
    const Decimal_Symbol other = own == Decimal_Symbol::point ? Decimal_Symbol::comma : Decimal_Symbol::point;
    Motion_Group& m = design.motion;
    if (All_Whole(m, own) || !All_Whole(m, other))
        return false;
    Swap_Symbols(m);
    return true;
}

}  // namespace lobemax
