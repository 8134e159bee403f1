// SPDX-License-Identifier: GPL-3.0-or-later
#include "truth/check.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "camgeom/sizing.h"
#include "core/ladder.h"
#include "core/numeric.h"
#include "core/text.h"
#include "core/units.h"
#include "truth/check_parts.h"

namespace lobemax {

namespace {

/// Where the cam cannot be placed at all.
void Tell_Impossible(Check_Work& work)
{
    const Mechanism m(work.design);
    if (m.reaches)
        return;
    Finding& f = work.Add("no_geometry", "Follower does not reach", Severity::do_not_cut, Finding_Place::size);
    if (m.arm && m.body == Cam_Body::disk && m.roller) {
        f.sentence = "An arm of " + work.Length(m.arm_length) + " that is pivoted " + work.Length(m.pivot_distance) +
                     " from the cam centre does not reach the prime circle of " + work.Length(m.prime) + ".";
        f.advice =
            "Pivot distance less arm, and arm less pivot distance, must be below the prime radius, and their sum "
            "above it.";
    } else if (m.arm) {
        f.sentence = "The arm cannot stand at its rest: what it has to span is longer than it is.";
        f.advice = "Move the pivot or change the arm.";
    } else {
        f.sentence =
            "The offset of " + work.Length(m.offset) + " exceeds the prime radius of " + work.Length(m.prime) + ".";
        f.advice = "Take a larger prime radius or a smaller offset.";
    }
}

bool Usable(const Design_State& design)
{
    return Holds(design, Mark::motion) && !Results_in_Other_Units(design) &&
           design.results.CalcData.Last_Point() >= design.motion.Max_Data_Points_used;
}

/// The true figures of the motion at the stored points.
std::vector<Follower_Point> Points_of(const Design_State& design, const True_Motion& motion)
{
    std::vector<Follower_Point> points;
    points.reserve(static_cast<std::size_t>(design.motion.Max_Data_Points_used) + 1);
    for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i)
        points.push_back(motion.At(Angle_of_Point(design, i)));
    return points;
}

True_Design Truth_of(const Design_State& design)
{
    True_Cam cam(design);
    std::vector<Follower_Point> motion = Points_of(design, cam.Motion());
    std::vector<True_Point> points;
    points.reserve(motion.size());
    for (std::size_t i = 0; i < motion.size(); ++i)
        points.push_back(cam.At(Angle_of_Point(design, static_cast<int>(i)), motion[i]));
    True_Contact contact = Find_True_Contact(design, cam.Follower(), points);
    return {std::move(cam), std::move(points), std::move(motion), std::move(contact)};
}

/// The other cam of a form closure, where it can differ from the first by more than its side. Whether it is made is not
/// known, a track has none: what stands against it is no more than a warning.
void Check_Conjugate(const Design_State& design, const Limits& limits, std::vector<Finding>& findings)
{
    const Cam_Group& c = design.cam;
    const bool differs = !c.Translating || c.Offset != 0.0;
    if (c.Camtype != "Radial" || c.Closure != "Form" || c.Conjugate || !differs)
        return;
    Design_State other = design;
    if (!Use_Conjugate(other))
        return;
    std::vector<Finding> found;
    Check_Work work(other, limits, found);
    Check_Geometry(work, Truth_of(other));
    for (Finding& finding : found) {
        if (finding.severity == Severity::note)
            continue;
        finding.severity = Severity::warning;
        finding.name = "Conjugate: " + finding.name;
        finding.sentence = "If its conjugate is made: " + finding.sentence;
        findings.push_back(std::move(finding));
    }
}

int Rank(const Finding& finding)
{
    return 2 * static_cast<int>(finding.severity) + (finding.beyond_limit ? 1 : 0);
}

}  // namespace

std::string_view Words_of(Severity severity)
{
    switch (severity) {
    case Severity::note:
        return "note";
    case Severity::warning:
        return "warning";
    case Severity::do_not_cut:
        return "do not cut";
    }
    return "";
}

double Angle_of_Point(const Design_State& design, int i)
{
    return std::min(360.0, design.motion.Deltatheta * i);  // a step of a file need not divide the turn exactly
}

// ---- Check_Work

Finding& Check_Work::Add(std::string_view code, std::string name, Severity severity, Finding_Place place)
{
    Finding& finding = findings.emplace_back();
    finding.code = code;
    finding.name = std::move(name);
    finding.severity = severity;
    finding.place = place;
    return finding;
}

Finding* Check_Work::Hold_Against(Limit limit, double value, int point, Finding_Place place, const True_Motion* motion)
{
    const std::optional<double> bound = In_Design_Units(design, limits, limit);
    const Limit_Entry& entry = Entry_of(limit);
    if (!bound || !Applies(design, limit) || !std::isfinite(value))
        return nullptr;
    if (entry.least ? value >= *bound : value <= *bound)
        return nullptr;
    Finding& finding = Add(entry.key, std::string(entry.caption), Severity::warning, place);
    finding.beyond_limit = true;
    finding.truth = value;
    finding.limit = *bound;
    finding.unit = Unit_of_Limit(design, limit);
    Put_Angle(finding, Angle(point), motion);
    finding.sentence = std::string(entry.caption) + " of " + In(value, finding.unit) + " " + At(Angle(point)) + " is " +
                       (entry.least ? "below" : "above") + " your limit of " + In(*bound, finding.unit) + ".";
    return &finding;
}

std::string Check_Work::Number(double value, int figures) const
{
    if (!(std::abs(value) <= double{std::numeric_limits<float>::max()}))
        return "infinity";
    return In_Figures(design, value, figures);
}

std::string Check_Work::In(double value, const std::string& unit, int figures) const
{
    return Number(value, figures) + (unit.empty() ? "" : " ") + unit;
}

std::string Check_Work::Length(double value, int figures) const
{
    return In(value, Length_Unit(), figures);
}

std::string Check_Work::Position(double value, int figures) const
{
    return In(value, Position_Unit(), figures);
}

std::string Check_Work::At(double angle) const
{
    return "at " + Shown(design, Single(angle)) + " deg";
}

std::string Check_Work::Length_Unit() const
{
    return Words_of_Units(design.identity.WhichUnit).length;
}

std::string Check_Work::Position_Unit() const
{
    return design.cam.Translating ? Length_Unit() : "deg";
}

void Check_Work::Put_Angle(Finding& finding, double angle, const True_Motion* motion)
{
    constexpr double turn = 360.0;
    const double within = std::fmod(angle, turn);
    finding.angle = angle >= 0.0 && angle <= turn ? angle : within < 0.0 ? within + turn : within;
    if (motion != nullptr)
        finding.segment = motion->Segment_at(angle);
}

std::vector<Stretch> Check_Work::Joined_at_Turn(std::vector<Stretch> found) const
{
    const bool around = found.size() > 1 && found.front().from == Angle(0) && found.back().to == Angle(Last());
    if (around) {
        found.front().from = found.back().from;
        found.pop_back();
    }
    return found;
}

// ---- Check

const Finding* Check::Worst() const
{
    return findings.empty() ? nullptr : &findings.front();
}

const Finding* Check::Worst_of(Finding_Place place) const
{
    const auto found = std::ranges::find(findings, place, &Finding::place);
    return found == findings.end() ? nullptr : &*found;
}

bool Check::Do_Not_Cut() const
{
    return std::ranges::find(findings, Severity::do_not_cut, &Finding::severity) != findings.end();
}

bool Check::Fails() const
{
    return Do_Not_Cut() || std::ranges::find(findings, true, &Finding::beyond_limit) != findings.end();
}

std::optional<True_Design> Find_Truth(const Design_State& design)
{
    if (!Usable(design) || !Holds(design, Mark::size))
        return std::nullopt;
    try {
        return Truth_of(design);
    } catch (const Fault&) {
        return std::nullopt;
    }
}

Check Check_Design(const Design_State& design, const Limits& limits)
{
    Check check;
    Check_Work work(design, limits, check.findings);
    if (Holds(design, Mark::motion) && Results_in_Other_Units(design)) {
        Finding& f = work.Add("other_units", "Results of other units", Severity::warning, Finding_Place::motion);
        f.sentence = Other_Units_Sentence(design);
        f.advice = "Calculate the design anew; nothing else was checked.";
    }
    if (!Usable(design))
        return check;
    const auto guarded = [&](std::string_view what, Finding_Place place, const auto& part) {
        try {
            part();
        } catch (const Fault& fault) {
            Finding& f = work.Add("not_checked", "Not checked", Severity::warning, place);
            f.sentence = "Error " + std::to_string(fault.Number()) + " on the way: " + std::string(what) +
                         " could not be checked.";
            f.advice = "Look at the fields and calculate anew.";
        }
    };
    if (!Holds(design, Mark::size)) {
        guarded("the motion", Finding_Place::motion, [&] {
            const True_Motion motion(design);
            Check_Motion(work, motion, Points_of(design, motion));
        });
    } else if (!Mechanism(design).reaches) {
        Tell_Impossible(work);
    } else {
        guarded("the geometry", Finding_Place::size, [&] { check.truth.emplace(Truth_of(design)); });
        if (check.truth) {
            const True_Design& truth = *check.truth;
            guarded("the motion", Finding_Place::motion, [&] { Check_Motion(work, truth.cam.Motion(), truth.motion); });
            guarded("the geometry", Finding_Place::size, [&] { Check_Geometry(work, truth); });
            guarded("the conjugate cam", Finding_Place::size, [&] { Check_Conjugate(design, limits, check.findings); });
            guarded("the loads", Finding_Place::forces, [&] { Check_Loads(work, truth); });
        }
    }
    std::ranges::stable_sort(check.findings, std::ranges::greater{}, Rank);
    return check;
}

std::optional<Design_State> With_True_Profile(const Design_State& design)
{
    const std::optional<True_Design> truth = Find_Truth(design);
    if (!truth)
        return std::nullopt;
    Design_State copy = design;
    Table<Single>& data = copy.results.CalcData;
    const Mechanism& m = truth->cam.Follower();
    const bool disk = m.body == Cam_Body::disk;
    const double clip = 10.0 * m.prime;
    const double key = -m.rot * design.cam.Shift_Angle * Rad_per_Deg;
    const Vector machine_zero = Direction(key);
    for (std::size_t p = 0; p < truth->points.size(); ++p) {
        const True_Point& point = truth->points[p];
        const int i = static_cast<int>(p);
        data(var::Phi, i) = point.Phi;
        data(var::Rho, i) = std::clamp(point.Rho, -clip, clip);
        const Vector cutter = truth->cam.Cutter(point, m.cutter);
        if (disk) {
            // Of a translating flat face the row of the centre is the contact.
            const Vector center = m.roller || m.arm ? point.center : point.surface;
            const Vector polar = m.roller ? center : point.surface;
            const Vector polar_key = Turned(polar, machine_zero);
            const Vector surface_key = Turned(point.surface, machine_zero);
            // The polar angle runs with the cam angle, on an arm it is that of the point.
            Single radius;
            Single angle;
            Cart_to_Polar(polar.x, polar.y, radius, angle);
            if (!m.arm)
                angle = point.theta + std::remainder(-m.rot * angle - point.theta, 360.0);
            else if (m.roller)
                angle = FN_Modulo(angle, 360.0);
            data(var::Radius, i) = radius;
            data(var::Theta, i) = angle;
            Cart_to_Polar(polar_key.x, polar_key.y, radius, angle);
            data(var::Radius_Key, i) = radius;
            data(var::Theta_Key, i) = angle;
            data(var::X, i) = center.x;
            data(var::Y, i) = center.y;
            data(var::X_Key, i) = polar_key.x;
            data(var::Y_Key, i) = polar_key.y;
            data(var::X_Surface, i) = point.surface.x;
            data(var::Y_Surface, i) = point.surface.y;
            data(var::X_Surface_Key, i) = surface_key.x;
            data(var::Y_Surface_Key, i) = surface_key.y;
            data(var::X_Cutter, i) = cutter.x;
            data(var::Y_Cutter, i) = cutter.y;
            continue;
        }
        // Around a drum in degrees, along a linear cam in lengths.
        const double per_length = m.body == Cam_Body::barrel ? Deg_per_Rad / m.prime : 1.0;
        data(var::Z, i) = point.center.y;
        data(var::Lambda, i) = point.center.x * per_length;
        data(var::Z_Surface, i) = point.surface.y;
        data(var::Lambda_Surface, i) = point.surface.x * per_length;
        data(var::Z_Cutter, i) = cutter.y;
        data(var::Lambda_Cutter, i) = cutter.x * per_length;
    }
    return copy;
}

}  // namespace lobemax
