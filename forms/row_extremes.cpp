// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/row_extremes.h"

#include <algorithm>
#include <array>

#include "core/design_state.h"
#include "core/numeric.h"
#include "core/text.h"
#include "forms/drive_words.h"
#include "present/plot_engine.h"

namespace lobemax {

std::vector<Row_Extremes> Extremes_of(const Design_State& design, std::span<const int> rows)
{
    std::vector<Row_Extremes> found;
    const Table<Single>& data = design.results.CalcData;
    const auto angle = data.Points(var::Angle);
    const int last = std::min<int>(design.motion.Max_Data_Points_used, data.Last_Point());
    for (const int row : rows) {
        const Extremes e = MaxMin2(data, row, 0, last);
        found.push_back({row, Trim(design.plot.Var_Name(row)), Axis_Unit(design, row), e.smallest,
                         angle[static_cast<std::size_t>(e.smallest_point)], e.largest,
                         angle[static_cast<std::size_t>(e.largest_point)]});
    }
    return found;
}

std::vector<Row_Extremes> Main_Extremes(const Design_State& design)
{
    constexpr std::array rows{var::S,         var::V,      var::A, var::J, var::Force, var::Torque, var::Dynamic_Force,
                              var::Sigma_Max, var::Tau_Max};
    std::vector<int> calculated;
    for (const int row : rows)
        if (Rung_Done(design, Variable_at(row).rung))
            calculated.push_back(row);
    std::vector<Row_Extremes> found = Extremes_of(design, calculated);
    for (Row_Extremes& extremes : found)
        if (extremes.row == var::Torque)
            extremes.unit = Unit_of_Torque_Rows(design);
    return found;
}

}  // namespace lobemax
