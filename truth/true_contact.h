// SPDX-License-Identifier: GPL-3.0-or-later
/// Force and stress of the contact by the true geometry: beside rows 7, 42 and 43. docs/theory.md, 18.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "truth/true_cam.h"

namespace lobemax {

struct Design_State;

/// At the stored points. Each is empty where the design has not been calculated so far.
struct True_Contact {
    std::vector<double> force;  // normal to the surface: follower force, external force and weight, (270), (271)
    std::vector<double> sigma;  // largest, below 0, in the unit of Unit_of_True_Stress
    std::vector<double> tau;
};

/// A follower that pushes across its way has no finite contact force: the cosine counts as at least 1E-6, so that the
/// force is at most a million times the follower's. Stresses are 0 where nothing touches (a force of 0 or below) and
/// where the surface is hollower than the roller or the face.
/// @param points  the true points of the stored angles. Force needs the mark of the forces (the dynamic force after a
///        vibration), stress that of the stresses, and their rows in the design's own units.
True_Contact Find_True_Contact(const Design_State& design, const Mechanism& follower,
                               std::span<const True_Point> points);

/// "psi" of both inch and foot systems, "Pa" of metres, else "MPa": what the true stress is told in. In centimetres the
/// row is in another unit than its label says.
std::string Unit_of_True_Stress(const Design_State& design);
/// What a value of rows 42 and 43 is multiplied with to be in that unit: in feet and centimetres another for a strip
/// than for an ellipse, (272).
double Stress_Row_Factor(const Design_State& design);

}  // namespace lobemax
