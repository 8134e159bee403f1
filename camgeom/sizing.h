// SPDX-License-Identifier: GPL-3.0-or-later
/// Cam sizing: pressure angle Phi and radius of curvature Rho over the cycle, with their extremes.
#pragma once

namespace lobemax {

/// Largest and smallest pressure angle of CalcData row 5, degrees, with their cam angles. The first of
/// equal extremes wins; the largest starts at 0, so it cannot fall below it.
void Phi_Extremes();

/// Extremes of the radius of curvature, CalcData row 6: largest and smallest positive, largest and smallest
/// negative, with cam angles and texts, and the smallest of all in magnitude. Zero counts as negative.
void Rho_Extremes();

}  // namespace lobemax
