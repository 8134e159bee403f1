// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "core/text.h"
#include "truth/check_parts.h"
#include "truth/retrace.h"

namespace lobemax {

namespace {

constexpr double pointed = 1.05;  // of the roller's radius: what is left of the surface bears nothing
constexpr double infinite = std::numeric_limits<double>::infinity();

/// A cam with what is needed of it again and again.
class Geometry_Check {
public:
    Geometry_Check(Check_Work& work, const True_Design& truth)
        : work_(work), truth_(truth), m_(truth.cam.Follower()), design_(work.design)
    {
        angles_.reserve(truth.points.size());
        lift_.reserve(truth.points.size());
        for (const True_Point& p : truth.points) {
            angles_.push_back(p.theta);
            lift_.push_back(p.s);
        }
        unit_ = m_.arm ? Deg_per_Rad : 1.0;
        around_ = m_.body == Cam_Body::disk ? 0.0 : PI2 * m_.prime;
        tolerance_ = In_Design_Units(design_, work.limits, m_.arm ? Limit::Swing : Limit::Surface);
    }

    void Run()
    {
        Check_Reach();
        if (!Has_Surface())
            return;
        Find_Sharpest();
        Check_Surface();
        Check_Undercut();
        Check_Curvature_Row();
        Check_Pressure_Row();
        Check_Centers();
        Check_Cutter();
        Check_Chords();
        Check_Face();
        Check_Limits();
        Check_Resolution();
    }

private:
    const True_Motion* Motion() const { return &truth_.cam.Motion(); }
    const True_Point& Point(int i) const { return truth_.points[static_cast<std::size_t>(i)]; }
    std::size_t Points() const { return truth_.points.size(); }
    bool Disk() const { return m_.body == Cam_Body::disk; }

    Finding& Add(std::string_view code, std::string name, Severity severity)
    {
        return work_.Add(code, std::move(name), severity, Finding_Place::size);
    }
    void At(Finding& finding, int i) const { Check_Work::Put_Angle(finding, work_.Angle(i), Motion()); }
    std::string Where(int i) const { return work_.At(work_.Angle(i)); }

    /// How sharply the roller centre's path, or the surface under a flat face, is curved on the side of the material.
    double Convex(int i) const { return m_.roller ? m_.side * Point(i).Rho : Point(i).Rho; }

    // ---- what the mechanism can do

    void Check_Reach()
    {
        if (!Disk() || !m_.arm)
            return;
        // The angle at the pivot between the arm and the cam centre: where it is 0 or half a turn the arm is in line.
        int worst = -1;
        for (int i = 0; i <= work_.Last(); ++i) {
            const double gamma = m_.rest + Point(i).s;
            if (gamma <= 0.0 || gamma >= (m_.roller ? PI : PIH)) {
                worst = i;
                break;
            }
        }
        if (worst >= 0) {
            Finding& f = Add("dead_center", "Arm passes its dead centre", Severity::do_not_cut);
            At(f, worst);
            f.sentence = "The arm comes into line with the cam centre " + Where(worst) +
                         ": beyond it a further swing no longer lifts.";
            f.advice = "Move the pivot, or change the arm or the prime radius.";
        }
        if (m_.roller)
            return;
        // The face seen from the cam turns at one less the arm's share of the cam's speed.
        const int sense = m_.rot * m_.swing;
        int back = -1;
        for (int i = 0; i <= work_.Last(); ++i)
            if (1.0 - sense * truth_.motion[static_cast<std::size_t>(i)].v <= 0.0) {
                back = i;
                break;
            }
        if (back < 0)
            return;
        Finding& f = Add("face_runs_back", "Face turns with the cam", Severity::do_not_cut);
        At(f, back);
        f.sentence = "The face swings as fast as the cam turns " + Where(back) + ": no surface can drive it so.";
        f.advice = "Give the segment more of the cycle.";
    }

    /// Whether there is a surface that figures can be told of: one that runs off to infinity was told of.
    bool Has_Surface() const
    {
        constexpr double far = 1e6;  // prime radii
        return std::ranges::all_of(truth_.points, [&](const True_Point& p) {
            return Square(p.surface) < Square(Vector{far * m_.prime, 0.0}) && !std::isnan(p.Rho);
        });
    }

    void Find_Sharpest()
    {
        sharpest_ = -1;
        for (int i = 0; i <= work_.Last(); ++i) {
            const double c = Convex(i);
            const bool counts = m_.roller ? c > 0.0 : true;
            if (counts && (sharpest_ < 0 || c < Convex(sharpest_)))
                sharpest_ = i;
        }
    }

    /// How far two displacements lie apart; those of an arm the short way round.
    double Apart(double a, double b) const { return std::abs(m_.arm ? std::remainder(a - b, PI2) : a - b); }

    // ---- surface

    /// The surface by the rows, as it lies beside the true one: of an axial cam all points on one way round, turned so
    /// that the first roller centres agree, as machine zero takes up a constant turn.
    std::vector<Vector> Row_Surface() const
    {
        std::vector<Vector> rows;
        rows.reserve(Points());
        if (Disk()) {
            for (int i = 0; i < work_.Last(); ++i)
                rows.push_back({work_.Row(var::X_Surface, i), work_.Row(var::Y_Surface, i)});
            return rows;
        }
        const double per_row = m_.body == Cam_Body::barrel ? m_.prime * Rad_per_Deg : 1.0;
        const double turn = Point(0).center.x - work_.Row(var::Lambda, 0) * per_row;
        double before = Point(0).surface.x;
        for (int i = 0; i < work_.Last(); ++i) {
            const double along = work_.Row(var::Lambda_Surface, i) * per_row + turn;
            before += std::remainder(along - before, around_);
            rows.push_back({before, work_.Row(var::Z_Surface, i)});
        }
        return rows;
    }

    void Check_Surface()
    {
        std::vector<Vector> surface;
        surface.reserve(Points());
        for (std::size_t i = 0; i + 1 < Points(); ++i)
            surface.push_back(truth_.points[i].surface);
        true_lift_ = Retrace(m_, Surface_Path::Through(surface, around_, m_.Hollow_Sense()), angles_, lift_);
        if (!tolerance_)
            return;
        const double tolerance = *tolerance_ / unit_;
        const std::vector<Vector> rows = Row_Surface();
        double apart = 0.0;
        for (std::size_t i = 0; i < rows.size(); ++i)
            apart = std::max(apart, Length(rows[i] - surface[i]));
        const double length = m_.arm ? tolerance * std::max(m_.arm_length, m_.pivot_distance) : tolerance;
        if (apart <= 0.1 * length)
            return;
        const Surface_Path path = Surface_Path::Through(rows, around_, m_.Hollow_Sense());
        Retraced row_lift = Retrace(m_, path, angles_, lift_);
        if (row_lift.largest_error <= tolerance || row_lift.largest_error <= 2.0 * true_lift_.largest_error)
            return;
        if (m_.body == Cam_Body::barrel && !m_.arm) {
            Mechanism unrolled = m_;
            unrolled.body = Cam_Body::linear;
            const Retraced plane = Retrace(unrolled, path, angles_, lift_);
            if (plane.largest_error <= tolerance) {
                Tell_Unrolled(row_lift, apart);
                return;
            }
        }
        Tell_Surface(row_lift);
    }

    /// The point where a re-tracing is furthest off.
    int Point_at(const Retraced& lift) const
    {
        const auto found = std::ranges::find(angles_, lift.at);
        return static_cast<int>(found - angles_.begin());
    }

    std::string Error_of(const Retraced& lift) const
    {
        return std::isfinite(lift.largest_error) ? work_.Position(lift.largest_error * unit_)
                                                 : std::string("more than the follower can reach");
    }

    void Tell_Surface(const Retraced& lift)
    {
        const int i = Point_at(lift);
        Finding& f = Add("surface_row", "Surface does not give the lift", Severity::do_not_cut);
        At(f, i);
        const double given = lift.s[static_cast<std::size_t>(i)] * unit_;
        if (std::isfinite(given))
            f.row = given;
        f.truth = Point(i).s * unit_;
        f.limit = tolerance_;
        f.unit = work_.Position_Unit();
        f.stretch = work_.Stretches([&](int k) {
            const double s = lift.s[static_cast<std::size_t>(k)];
            return !std::isfinite(s) || Apart(s, Point(k).s) * unit_ > *tolerance_;
        });
        f.sentence = "A cam cut by the rows of its surface moves the follower wrongly by up to " + Error_of(lift) +
                     " " + Where(i) + "; " + work_.Position(*tolerance_) + " are allowed.";
        f.advice = "Cut it by the true surface (export with the box \"true surface\", or --true).";
    }

    void Tell_Unrolled(const Retraced& lift, double apart)
    {
        const int i = Point_at(lift);
        Finding& f = Add("unrolled", "Wall of the unrolled drum", Severity::warning);
        At(f, i);
        f.truth = lift.largest_error * unit_;
        f.limit = tolerance_;
        f.unit = work_.Position_Unit();
        f.sentence = "The rows lay the wall out on the unrolled drum; on the drum itself it is up to " +
                     work_.Length(apart, 3) + " beside, which moves the follower by up to " + Error_of(lift) + " " +
                     Where(i) + ".";
        f.advice = "Cut the groove with a tool of the roller's size along the roller centres, or by the true wall.";
    }

    // ---- undercut

    void Check_Undercut()
    {
        if (sharpest_ < 0)
            return;
        const double sharpest = Convex(sharpest_);
        const double least = m_.roller_radius;
        if (sharpest <= least) {
            Tell_Undercut(sharpest);
            return;
        }
        if (m_.roller && sharpest <= pointed * least) {
            Finding& f = Add("pointed", "Surface comes to a point", Severity::do_not_cut);
            Put_Radii(f, sharpest);
            f.sentence = "The radius of curvature of the roller centre's path is " + work_.Length(sharpest, 5) + " " +
                         Where(sharpest_) + ", so that " + work_.Length(sharpest - least, 2) +
                         " are left for the surface under a roller of " + work_.Length(least) + Row_Says() + ".";
            f.advice = "Take a smaller roller or a larger prime radius, or give the segment more of the cycle.";
            return;
        }
        Check_Interference();
    }

    /// The follower of one place struck by the surface of another. What is a neighbour's is a matter of the straight
    /// lines between the points.
    void Check_Interference()
    {
        constexpr std::size_t near = 3;
        const std::size_t count = Points() - 1;
        if (!tolerance_ || true_lift_.largest_error * unit_ <= *tolerance_)
            return;
        double largest = *tolerance_ / unit_;
        int worst = -1;
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t apart = (true_lift_.contact[i] + count - i) % count;
            if (apart <= near || apart >= count - near)
                continue;
            const double off = Apart(true_lift_.s[i], truth_.points[i].s);
            if (off > largest) {
                largest = off;
                worst = static_cast<int>(i);
            }
        }
        if (worst < 0)
            return;
        Finding& f = Add("interference", "Another part of the cam is in the way", Severity::do_not_cut);
        At(f, worst);
        f.truth = largest * unit_;
        f.limit = tolerance_;
        f.unit = work_.Position_Unit();
        f.sentence = "The follower strikes another part of the cam's surface " + Where(worst) +
                     ": cutting it there spoils the lift elsewhere by up to " + work_.Position(largest * unit_) + ".";
        const bool jumps = std::ranges::any_of(work_.findings, [](const Finding& other) {
            return other.code == "jump_of_position" || other.code == "jump_of_velocity";
        });
        f.advice = jumps ? "Mend the jump of the motion first: the surface has a corner there."
                         : "Take a smaller roller or a larger prime radius.";
    }

    void Put_Radii(Finding& f, double sharpest)
    {
        At(f, sharpest_);
        f.truth = sharpest;
        f.limit = m_.roller_radius;
        f.unit = work_.Length_Unit();
        if (const std::optional<double> row = Smallest_Row())
            f.row = row;
        f.stretch = work_.Stretches([&](int i) {
            const double c = Convex(i);
            return (m_.roller ? c > 0.0 : true) && c <= pointed * m_.roller_radius;
        });
    }

    /// The smallest radius of the row on the side of the material; none where there is none.
    std::optional<double> Smallest_Row() const
    {
        double smallest = infinite;
        for (int i = 0; i <= work_.Last(); ++i) {
            const double c = (m_.roller ? m_.side : 1) * work_.Row(var::Rho, i);
            if ((c > 0.0 || !m_.roller) && c < smallest)
                smallest = c;
        }
        return std::isfinite(smallest) ? std::optional<double>(smallest) : std::nullopt;
    }

    /// "; the row Rho says 43.66 and 1.656 mm"
    std::string Row_Says() const
    {
        const std::optional<double> row = Smallest_Row();
        if (!row || std::abs(*row - Convex(sharpest_)) <= 1e-3 * Convex(sharpest_))
            return "";
        return "; the row of Rho says " + work_.Number(*row, 5) + " and " + work_.Length(*row - m_.roller_radius, 3);
    }

    void Tell_Undercut(double sharpest)
    {
        Finding& f = Add("undercut", m_.roller ? "Undercut" : "Hollow under a flat face", Severity::do_not_cut);
        Put_Radii(f, sharpest);
        const double lost = Lift_Lost() * unit_;
        const std::string spoilt = lost > 0.0 ? "; the lift falls short by up to " + work_.Position(lost, 3) : "";
        if (m_.roller) {
            f.sentence = "The radius of curvature of the roller centre's path is " + work_.Length(sharpest, 5) + " " +
                         Where(sharpest_) + ", below the roller's " + work_.Length(m_.roller_radius) +
                         ": the surface crosses itself" + spoilt + Row_Says() + ".";
            f.advice = "Take a smaller roller or a larger prime radius, or give the segment more of the cycle.";
        } else {
            f.sentence = "A flat face would need a hollow surface of " + work_.Length(-sharpest) + " radius " +
                         Where(sharpest_) + ", which it cannot follow" + spoilt + ".";
            f.advice = "Take a larger prime radius, or give the segment more of the cycle.";
        }
    }

    /// By how much the lift of what is left after cutting falls short, in the motion's unit.
    double Lift_Lost() const
    {
        constexpr std::size_t enough = 1440;  // places of the follower that cut
        const std::size_t stride = std::max<std::size_t>(1, (Points() - 1) / enough);
        std::vector<True_Point> places;
        std::vector<double> angles;
        std::vector<double> lift;
        for (std::size_t i = 0; i + 1 < Points(); i += stride) {
            places.push_back(truth_.points[i]);
            angles.push_back(angles_[i]);
            lift.push_back(lift_[i]);
        }
        const std::vector<Vector> left = Points_left(truth_.cam, places, 1e-7 * m_.prime);
        if (left.size() < 3)
            return 0.0;
        const Retraced cut = Retrace(m_, Surface_Path::Through(left, around_), angles, lift);
        return std::isfinite(cut.largest_error) ? cut.largest_error : 0.0;
    }

    // ---- rows of Rho and Phi

    void Check_Curvature_Row()
    {
        constexpr double same = 0.01;
        const double clip = 10.0 * m_.prime;
        int worst = -1;
        double largest = 0.0;
        for (int i = 0; i < work_.Last(); ++i) {
            const double truth = std::clamp(Point(i).Rho, -clip, clip);
            const double row = work_.Row(var::Rho, i);
            const double off = std::abs(row - truth) / std::max(std::abs(truth), std::abs(row));
            if (std::abs(truth) < 0.5 * clip && off > largest) {
                largest = off;
                worst = i;
            }
        }
        const std::optional<double> smallest = Smallest_Row();
        const bool unsafe = sharpest_ >= 0 && smallest &&
                            *smallest - Convex(sharpest_) > same * std::abs(Convex(sharpest_)) &&
                            Convex(sharpest_) < 0.5 * clip;
        if (largest <= same && !unsafe)
            return;
        Finding& f = Add("rho_row", "Radius of curvature", unsafe ? Severity::warning : Severity::note);
        const int at = unsafe ? sharpest_ : worst;
        At(f, at);
        f.row = work_.Row(var::Rho, at);
        f.truth = Point(at).Rho;
        f.unit = work_.Length_Unit();
        f.sentence = "The row of Rho has " + work_.Number(*f.row) + " " + Where(at) + " where the curve has " +
                     work_.Length(*f.truth) + (unsafe ? ", on the unsafe side." : ".");
        f.advice = "Judge undercutting and contact stress by the true curve.";
    }

    void Check_Pressure_Row()
    {
        constexpr double same = 0.1;  // degrees
        int worst = -1;
        double largest = same;
        int highest = 0;
        for (int i = 0; i < work_.Last(); ++i) {
            const double off = std::abs(work_.Row(var::Phi, i) - Point(i).Phi);
            if (off > largest) {
                largest = off;
                worst = i;
            }
            if (std::abs(Point(i).Phi) > std::abs(Point(highest).Phi))
                highest = i;
        }
        if (worst < 0)
            return;
        Finding& f = Add("phi_row", "Pressure angle", Severity::warning);
        At(f, worst);
        f.row = work_.Row(var::Phi, worst);
        f.truth = Point(worst).Phi;
        f.unit = "deg";
        f.sentence = "The row of Phi has " + work_.Number(*f.row) + " " + Where(worst) +
                     " where the pressure angle is " + work_.In(*f.truth, "deg") + "; the largest true one is " +
                     work_.In(Point(highest).Phi, "deg") + " " + Where(highest) + ".";
        f.advice = "Judge the guide and the forces by the true angle.";
    }

    /// The roller centres by the rows: what a cutter of the roller's size runs along.
    void Check_Centers()
    {
        if (!m_.roller || !tolerance_)
            return;
        const double per_row = m_.body == Cam_Body::barrel ? m_.prime * Rad_per_Deg : 1.0;
        const double turn = Disk() ? 0.0 : Point(0).center.x - work_.Row(var::Lambda, 0) * per_row;
        double largest = 0.0;
        int worst = 0;
        for (int i = 0; i < work_.Last(); ++i) {
            const True_Point& p = Point(i);
            Vector row{work_.Row(Disk() ? var::X : var::Lambda, i), work_.Row(Disk() ? var::Y : var::Z, i)};
            if (!Disk())
                row = {p.center.x + std::remainder(row.x * per_row + turn - p.center.x, around_), row.y};
            // Only what is across the path moves the follower.
            const double off = std::abs(Dot(row - p.center, p.normal)) / std::max(std::cos(p.Phi * Rad_per_Deg), 0.05);
            if (off > largest) {
                largest = off;
                worst = i;
            }
        }
        const double lever = m_.arm ? m_.arm_length : 1.0;
        const double error = largest / lever * unit_;
        if (error <= *tolerance_)
            return;
        Finding& f = Add("center_row", "Roller centres do not give the lift", Severity::do_not_cut);
        At(f, worst);
        f.truth = error;
        f.limit = tolerance_;
        f.unit = work_.Position_Unit();
        f.sentence =
            "A cutter of the roller's size that runs along the rows of the roller centre moves the follower "
            "wrongly by up to " +
            work_.Position(error) + " " + Where(worst) + "; " + work_.Position(*tolerance_) + " are allowed.";
        f.advice = "Run it along the true centres (export with the box \"true surface\", or --true).";
    }

    void Check_Cutter()
    {
        if (!Disk() || !(m_.cutter > 0.0))
            return;
        int deepest = -1;
        double largest = 0.0;
        int worst = 0;
        for (int i = 0; i < work_.Last(); ++i) {
            const True_Point& p = Point(i);
            if (p.Rho_Surface < 0.0 && (deepest < 0 || p.Rho_Surface > Point(deepest).Rho_Surface))
                deepest = i;
            const Vector row{work_.Row(var::X_Cutter, i), work_.Row(var::Y_Cutter, i)};
            const double off = Length(row - truth_.cam.Cutter(p, m_.cutter));
            if (off > largest) {
                largest = off;
                worst = i;
            }
        }
        const bool undercut = sharpest_ >= 0 && Convex(sharpest_) <= m_.roller_radius;
        if (deepest >= 0 && !undercut && -Point(deepest).Rho_Surface < m_.cutter) {
            Finding& f = Add("cutter_too_large", "Cutter larger than the hollow", Severity::do_not_cut);
            At(f, deepest);
            f.truth = -Point(deepest).Rho_Surface;
            f.limit = m_.cutter;
            f.unit = work_.Length_Unit();
            f.stretch =
                work_.Stretches([&](int i) { return Point(i).Rho_Surface < 0.0 && -Point(i).Rho_Surface < m_.cutter; });
            f.sentence = "The surface is hollow with a radius of " + work_.Length(*f.truth) + " " + Where(deepest) +
                         ": a cutter or wheel of " + work_.Length(m_.cutter) + " radius takes off too much.";
            f.advice = "Take a cutter of a smaller radius than the hollow.";
        }
        const std::optional<double> tolerance = In_Design_Units(design_, work_.limits, Limit::Surface);
        if (!tolerance || largest <= *tolerance)
            return;
        Finding& f = Add("cutter_row", "Cutter centres", Severity::warning);
        At(f, worst);
        f.truth = largest;
        f.limit = tolerance;
        f.unit = work_.Length_Unit();
        f.sentence = "The rows of the cutter centre are up to " + work_.Length(largest, 3) + " beside the true path " +
                     Where(worst) + ".";
        f.advice = "Export the true cutter path, or let the control offset the surface.";
    }

    /// Straight lines from point to point, as a control without arcs cuts them.
    void Check_Chords()
    {
        const std::optional<double> tolerance = In_Design_Units(design_, work_.limits, Limit::Chord);
        if (!tolerance)
            return;
        const int stride = std::max<int>(1, design_.cam.Printstep);
        double largest = 0.0;
        int worst = 0;
        for (int i = 0; i < work_.Last(); ++i) {
            const double chord = stride * Length(Point(i + 1).surface - Point(i).surface);
            const double radius = std::abs(Point(i).Rho_Surface);
            const double off = radius > 0.0 ? chord * chord / (8.0 * std::max(radius, 0.5 * chord)) : 0.0;
            if (off > largest) {
                largest = off;
                worst = i;
            }
        }
        if (largest <= *tolerance)
            return;
        Finding& f = Add("chord", "Straight lines between the points", Severity::warning);
        At(f, worst);
        f.truth = largest;
        f.limit = tolerance;
        f.unit = work_.Length_Unit();
        const double step = stride * design_.motion.Deltatheta;
        const double wanted = step * std::sqrt(*tolerance / largest);
        constexpr std::array steps{1.0, 0.5, 0.25, 0.125};
        const auto does = std::ranges::find_if(steps, [&](double s) { return s <= wanted; });
        f.sentence = "Straight lines between points every " + Shown(design_, Single(step)) +
                     " deg leave the surface by " + work_.Length(largest, 3) + " " + Where(worst) + "; " +
                     work_.Length(*tolerance) + " are allowed.";
        f.advice = does != steps.end() ? "A step of " + Shown(design_, Single(*does)) + " deg does, or arcs."
                                       : "Not even the finest step does: use arcs or a spline through the points.";
    }

    void Check_Face()
    {
        if (m_.roller)
            return;
        const auto [low, high] = std::ranges::minmax(truth_.points, {}, &True_Point::along);
        const double wide = m_.arm ? high.along - low.along : 2.0 * std::max(high.along, -low.along);
        const int at = static_cast<int>(
            std::ranges::max_element(truth_.points, {}, [](const True_Point& p) { return std::abs(p.along); }) -
            truth_.points.begin());
        const double width = design_.cam.Face_Width;
        const bool too_narrow = width > 0.0 && wide > width;
        Finding& f = Add("face_width", "Width of the flat face", too_narrow ? Severity::warning : Severity::note);
        At(f, at);
        f.truth = wide;
        if (width > 0.0)
            f.row = width;
        f.unit = work_.Length_Unit();
        f.sentence = m_.arm ? "The contact runs along the face from " + work_.Number(low.along) + " to " +
                                  work_.Length(high.along) + " from the pivot"
                            : "The contact runs " + work_.Number(high.along) + " to one side of the stem's axis and " +
                                  work_.Length(-low.along) + " to the other";
        f.sentence +=
            too_narrow ? "; the face has " + work_.Length(width) + ", and " + work_.Length(wide) + " are needed." : ".";
        f.advice = "Make the face wider than this by the contact's own width and a margin on both sides.";
        if (Finding* const limit = work_.Hold_Against(Limit::Face_Width, wide, at, Finding_Place::size, Motion()))
            limit->advice = "Give the segment with the largest velocity more of the cycle.";
    }

    void Check_Limits()
    {
        int highest = 0;
        int largest = 0;
        for (int i = 0; i <= work_.Last(); ++i) {
            if (std::abs(Point(i).Phi) > std::abs(Point(highest).Phi))
                highest = i;
            if (Length(Point(i).surface) > Length(Point(largest).surface))
                largest = i;
        }
        const Limit phi = m_.arm ? Limit::Phi_Arm : Limit::Phi;
        const double angle = std::abs(Point(highest).Phi);
        if (Finding* const f = work_.Hold_Against(phi, angle, highest, Finding_Place::size, Motion())) {
            const double bound = *f->limit;
            f->row = std::abs(work_.Row(var::Phi, highest));
            f->stretch = work_.Stretches([&](int i) { return std::abs(Point(i).Phi) > bound; });
            f->advice = m_.arm ? "Take a larger prime radius or move the pivot, or give the segment more of the cycle."
                               : "Take a larger prime radius or an offset that helps, or give the segment more of the "
                                 "cycle.";
        }
        // One that is no surface at all was told of.
        if (m_.roller && sharpest_ >= 0 && Convex(sharpest_) > pointed * m_.roller_radius) {
            const double ratio = Convex(sharpest_) / m_.roller_radius;
            if (Finding* const f =
                    work_.Hold_Against(Limit::Rho_Ratio, ratio, sharpest_, Finding_Place::size, Motion())) {
                const double bound = *f->limit;
                f->stretch =
                    work_.Stretches([&](int i) { return Convex(i) > 0.0 && Convex(i) < bound * m_.roller_radius; });
                f->sentence = "The smallest radius of curvature, " + work_.Length(Convex(sharpest_)) + " " +
                              Where(sharpest_) + ", is " + work_.Number(ratio, 3) +
                              " times the roller's; your limit is " + work_.Number(bound, 3) + ".";
                f->advice = "Take a smaller roller or a larger prime radius, or give the segment more of the cycle.";
            }
        }
        const double size = m_.body == Cam_Body::disk ? Length(Point(largest).surface)
                                                      : (m_.body == Cam_Body::linear ? around_ : m_.prime);
        if (Finding* const f = work_.Hold_Against(Limit::Cam_Size, size, largest, Finding_Place::size, Motion()))
            f->advice = "Take a smaller prime radius, and look at pressure angle and curvature again.";
    }

    /// What 32 bits can tell apart of the largest coordinate.
    void Check_Resolution()
    {
        if (!tolerance_)
            return;
        double largest = 0.0;
        for (const True_Point& p : truth_.points)
            largest = std::max({largest, std::abs(p.surface.x), std::abs(p.surface.y)});
        const double step = largest * std::numeric_limits<float>::epsilon();
        const double tolerance = m_.arm ? *tolerance_ / unit_ * m_.arm_length : *tolerance_;
        if (step <= 0.1 * tolerance)
            return;
        Finding& f = Add("resolution", "Coordinates too coarse", Severity::warning);
        f.truth = step;
        f.limit = tolerance;
        f.unit = work_.Length_Unit();
        f.sentence = "The rows hold coordinates of this size in steps of " + work_.Length(step, 2) +
                     ", too coarse for a tolerance of " + work_.Length(tolerance, 3) + ".";
        f.advice = "Work in a larger unit of length, or allow a larger tolerance.";
    }

    Check_Work& work_;
    const True_Design& truth_;
    const Mechanism& m_;
    const Design_State& design_;
    std::vector<double> angles_;
    std::vector<double> lift_;  // wanted at each
    double unit_ = 1.0;         // of a displacement for the reader
    double around_ = 0.0;       // the turn of an axial cam
    std::optional<double> tolerance_;
    Retraced true_lift_;
    int sharpest_ = -1;  // point of the smallest convex radius
};

}  // namespace

void Check_Geometry(Check_Work& work, const True_Design& truth)
{
    Geometry_Check(work, truth).Run();
}

}  // namespace lobemax
