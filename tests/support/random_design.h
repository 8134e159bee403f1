// SPDX-License-Identifier: GPL-3.0-or-later
/// Random designs that a machine could have, the same ones from the same seed on every machine.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/text.h"
#include "core/units.h"
#include "edit/conditions.h"
#include "edit/door.h"
#include "motion/motion_programs.h"
#include "motion/polynomial.h"
#include "motion/segments.h"
#include "motion/spline.h"

namespace lobemax::testing {

/// Dice by a seed. The generator's numbers are the same everywhere, those of the library's distributions are not.
class Dice {
public:
    explicit Dice(std::uint32_t seed) : generator_(seed) {}

    /// A whole number low..high.
    int Whole(int low, int high)
    {
        return low + static_cast<int>(generator_() % static_cast<std::uint32_t>(high - low + 1));
    }
    /// A number low..high.
    double Real(double low, double high)
    {
        return low + (high - low) * (static_cast<double>(generator_()) / 4294967295.0);
    }
    bool Chance(double percent) { return Real(0.0, 100.0) < percent; }
    template <class List>
    const auto& One_of(const List& list)
    {
        return list[static_cast<std::size_t>(Whole(0, static_cast<int>(std::size(list)) - 1))];
    }

private:
    std::mt19937 generator_;
};

/// A number of so many digits, as a person types it.
inline std::string Typed(double value, int digits = 4)
{
    if (value == 0.0)
        return "0";
    const double unit = std::pow(10.0, std::floor(std::log10(std::abs(value))) - digits + 1);
    return Shortest(Single(std::round(value / unit) * unit));
}

struct Drawn_Segment {
    std::string kind;
    std::string program;
    std::string beta;
    std::string start;
    std::string end;
};

struct Drawn_Condition {
    int segment;
    std::string theta;  // local, degrees
    int order;          // 0..4: S to Ping
    std::string value;
};

/// A design as it is typed: what makes it a command line or a record goes over these in their order.
struct Drawn_Design {
    int units = 5;
    std::string delta = "1.0";
    std::string omega;  // rad/s
    bool oscillating = false;
    std::vector<Drawn_Segment> segments;
    std::vector<Drawn_Condition> conditions;
    std::vector<std::pair<int, std::string>> orders;              // segment, order of its spline
    std::vector<std::pair<int, std::vector<std::string>>> knots;  // segment, its interior knots
    std::vector<std::string> settings;                            // "FIELD=VALUE"
};

namespace drawing {

/// Angles on a grid that make a turn, each at least 20 degrees.
inline std::vector<double> Betas(Dice& dice, int count, double delta)
{
    const double grid = dice.Chance(30) ? 5.0 : dice.Chance(50) ? 1.0 : delta;
    std::vector<double> betas;
    double rest = 360.0;
    for (int left = count; left > 1; --left) {
        const double most = std::min(rest - 20.0 * (left - 1), 2.0 * rest / left);
        betas.push_back(std::floor(dice.Real(20.0, most) / grid) * grid);
        rest -= betas.back();
    }
    betas.push_back(rest);
    return betas;
}

/// The conditions of a segment between two positions: it rests at both ends, and may pass points between.
inline void Add_Conditions(Dice& dice, Drawn_Design& drawn, bool spline)
{
    const int segment = static_cast<int>(drawn.segments.size());
    const Drawn_Segment& row = drawn.segments.back();
    const double beta = Val(row.beta, Decimal_Symbol::point);
    const double start = Val(row.start, Decimal_Symbol::point);
    const double end = Val(row.end, Decimal_Symbol::point);
    const int orders = spline ? 2 : dice.Whole(1, 4);
    for (const std::string& theta : {std::string("0"), row.beta})
        for (int order = 1; order <= orders; ++order)
            drawn.conditions.push_back({segment, theta, order, "0"});
    const auto point = [&](double part, int order, double value) {
        drawn.conditions.push_back({segment, Typed(beta * part, 3), order, Typed(value, 3)});
    };
    if (spline) {
        const double third = dice.Real(0.3, 0.36);
        point(third, 0, start + (end - start) * dice.Real(0.2, 0.25));
        const double two_thirds = dice.Real(0.63, 0.7);
        point(two_thirds, 0, start + (end - start) * dice.Real(0.75, 0.8));
        if (dice.Chance(30))
            point(0.5, 0, start + (end - start) * 0.5);
        const int order = dice.Whole(4, 7);
        if (order != 4)
            drawn.orders.emplace_back(segment, std::to_string(order));
        if (order == 6 && drawn.conditions.back().theta != Typed(beta * 0.5, 3) && dice.Chance(80))
            drawn.knots.emplace_back(segment, std::vector{Typed(beta * 0.4, 3), Typed(beta * 0.7, 3)});
        return;
    }
    if (dice.Chance(60))
        point(0.45, 0, start + (end - start) * 0.47);
    if (dice.Chance(30))
        point(0.6, 1, (end - start) * 0.9);
}

/// Rises, falls and dwells that come back to where they start, one in five of them given by conditions.
inline void Add_Segments(Dice& dice, Drawn_Design& drawn, double scale)
{
    const int moves = dice.Chance(60) ? 2 : 4;
    std::array<bool, 4> dwells{};
    int count = moves;
    for (int m = 0; m < moves; ++m)
        count += (dwells[static_cast<std::size_t>(m)] = dice.Chance(60)) ? 1 : 0;
    const std::vector<double> betas = Betas(dice, count, Val(drawn.delta, Decimal_Symbol::point));
    const double lift = scale * dice.Real(0.4, 1.3);
    const std::vector<double> levels =
        moves == 2 ? std::vector{0.0, lift, 0.0} : std::vector{0.0, lift, lift * 0.4, lift * 1.2, 0.0};
    const double floor = dice.Chance(20) ? scale * dice.Real(-0.2, 0.2) : 0.0;
    for (int m = 0; m < moves; ++m) {
        const auto from = static_cast<std::size_t>(m);
        Drawn_Segment row{.kind = levels[from + 1] > levels[from] ? "R" : "F",
                          .program = {},
                          .beta = Shortest(Single(betas[drawn.segments.size()])),
                          .start = Typed(levels[from] + floor),
                          .end = Typed(levels[from + 1] + floor)};
        const int by_conditions = dice.Whole(0, 9);
        if (by_conditions == 0)
            row.kind = "P", row.program = "PO";
        else if (by_conditions == 1)
            row.kind = "S", row.program = "BS";
        else
            do
                row.program = dice.One_of(Motion_Programs()).code;
            while (Find_Program(row.program)->kinds.find(row.kind) == std::string_view::npos);
        drawn.segments.push_back(row);
        if (row.kind == "P" || row.kind == "S")
            Add_Conditions(dice, drawn, row.kind == "S");
        if (dwells[from])
            drawn.segments.push_back({"D", "DW", Shortest(Single(betas[drawn.segments.size()])), row.end, row.end});
    }
}

/// Sizes that a cam of this lift can have, and the choices of the screens behind.
inline void Add_Sizes(Dice& dice, Drawn_Design& drawn, double scale)
{
    const auto set = [&](const char* field, const std::string& value) {
        drawn.settings.push_back(std::string(field) + "=" + value);
    };
    const std::string cam = dice.One_of(std::array{"Radial", "Radial", "Radial", "Barrel", "Linear"});
    const bool flat = cam == "Radial" && dice.Chance(25);
    const double prime = scale * dice.Real(2.5, 5.0);
    set("Camtype$", cam);
    if (cam == "Barrel")
        set("Barrel_Type$", dice.One_of(std::array{"Grooved", "Ribbed"}));
    set("Prime_Rad", Typed(prime));
    set("Follow_Rad", Typed(scale * dice.Real(0.3, 0.9)));
    set("Cutter Radius", Typed(scale * dice.Real(0.2, 1.2)));
    if (flat)
        set("Followtype", "2");
    set("Rotflag", dice.One_of(std::array{"1", "-1"}));
    if (drawn.oscillating) {
        const double arm = prime * dice.Real(1.2, 1.8);
        const double distance = std::sqrt(arm * arm + prime * prime + 2.0 * arm * prime * dice.Real(-0.25, 0.3));
        set("ArmX", Typed(distance * 0.8));
        set("ArmY", Typed(distance * 0.6 * (dice.Chance(30) ? -1 : 1)));
        set("ArmRad", Typed(arm));
        set("ArmDirect", dice.One_of(std::array{"1", "-1"}));
    } else if (!flat) {
        set("Offset", dice.Chance(30) ? "0" : Typed(scale * dice.Real(-0.8, 0.8)));
        if (dice.Chance(25))
            set("Follower_Angle", dice.One_of(std::array{"30", "-45", "90", "137.5"}));
    }
    if (dice.Chance(30) && !flat) {
        set("Closure$", "Form");
        set("In_Out", dice.One_of(std::array{"1", "-1"}));
        set("Top_Bot", dice.One_of(std::array{"1", "-1"}));
    } else {
        set("Closure$", "Force");
        set("Preload", Typed(dice.Real(20.0, 300.0)));
    }
    if (dice.Chance(25)) {
        set("Shift_Angle", dice.One_of(std::array{"15", "90", "-30", "222.5"}));
        set("Keyway_Text", dice.One_of(std::array{"3 O'clock", "6 O'clock", "9 O'clock"}));
    }
    set("Time Base", std::to_string(dice.Whole(1, 3)));
    set("Zeta_Initial", Typed(dice.Real(0.02, 0.2)));
    set("Mu of Follower", Typed(dice.Real(0.01, 0.2)));
    set("Mu of Shaft", Typed(dice.Real(0.01, 0.1)));
    set("Bearing Radius", Typed(scale * dice.Real(0.2, 0.6)));
    set("Face_Width", Typed(scale * dice.Real(0.4, 1.0)));
    set("Roller length", Typed(scale * dice.Real(0.4, 1.0)));
    if (dice.Chance(20)) {
        set("Roller type", "2");
        set("Crown radius", Typed(scale * dice.Real(8.0, 20.0)));
    }
    if (drawn.units == 4 || dice.Chance(20)) {  // centimetres have no steel of their own
        for (const char* const part : {"(1)", "(2)"}) {
            set((std::string("Young's modulus") + part).c_str(), Typed(dice.Real(1E7, 3E7)));
            set((std::string("Poissons' ratio") + part).c_str(), Typed(dice.Real(0.25, 0.35)));
        }
    }
    if (dice.Chance(20)) {
        set("Printstep", dice.One_of(std::array{"2", "5", "30"}));
        set("Zoom Factor", dice.One_of(std::array{"0.5", "2"}));
    }
    if (dice.Chance(20))
        set("User", dice.One_of(std::array{"A. B. \"C\"", "Zoë, 2nd shift", " ", "x\ty"}));
}

}  // namespace drawing

inline Drawn_Design Draw_Design(Dice& dice)
{
    constexpr std::array inch{1.0, 1.0 / 12, 1.0 / 40, 2.5, 25.0};  // a round inch in each unit system
    Drawn_Design drawn;
    drawn.units = dice.Whole(First_Unit_System, Last_Unit_System);
    drawn.delta = dice.One_of(std::array{"1.0", "1.0", "1.0", "1.0", "0.50", "0.50", "0.25", "0.125"});
    drawn.omega = Typed(dice.Real(2.0, 40.0));
    drawn.oscillating = dice.Chance(35);
    const double scale = inch[static_cast<std::size_t>(drawn.units - 1)];
    drawing::Add_Segments(dice, drawn, drawn.oscillating ? dice.Real(5.0, 20.0) : scale);
    drawing::Add_Sizes(dice, drawn, scale);
    return drawn;
}

/// The design as the words behind "new".
inline std::vector<std::string> Words_of(const Drawn_Design& drawn)
{
    std::vector<std::string> words{"--units", std::to_string(drawn.units), "--delta", drawn.delta,
                                   "--omega=" + drawn.omega};
    if (drawn.oscillating)
        words.emplace_back("--oscillating");
    for (const Drawn_Segment& row : drawn.segments)
        words.push_back(row.kind + " " + row.program + " " + row.beta + " " + row.start + " " + row.end);
    const auto option = [&](const char* name, const std::string& value) {
        words.emplace_back(name);
        words.push_back(value);
    };
    for (const Drawn_Condition& c : drawn.conditions)
        option("--bc", std::to_string(c.segment) + " " + c.theta + " " + std::to_string(c.order) + " " + c.value);
    for (const auto& [segment, order] : drawn.orders)
        option("--order", std::to_string(segment) + " " + order);
    for (const auto& [segment, places] : drawn.knots) {
        std::string value = std::to_string(segment);
        for (const std::string& place : places)
            value += " " + place;
        option("--knots", value);
    }
    for (const std::string& setting : drawn.settings)
        option("--set", setting);
    return words;
}

/// Types the design into a started record, through the door. @return empty, or the first refusal
inline std::string Type_into(Design_State& design, const Drawn_Design& drawn)
{
    const auto number = [](const std::string& text) { return Val(text, Decimal_Symbol::point); };
    std::string refusal;
    const auto put = [&](auto... what) {
        if (const Verdict verdict = Put(design, what...); !verdict && refusal.empty())
            refusal = verdict.sentence;
    };
    put("WhichUnit", double(drawn.units));
    put("Deltatheta", number(drawn.delta));
    put("Translating", drawn.oscillating ? 0.0 : 1.0);
    put("Shaft speed", number(drawn.omega));
    put("No of segments", double(drawn.segments.size()));
    int i = 0;
    for (const Drawn_Segment& row : drawn.segments) {
        ++i;
        put("Rise_Fall_Dwell", At(i), row.kind);
        put("Program", At(i), row.program);
        put("Beta_Deg", At(i), number(row.beta));
        put("Start Value", At(i), row.start);
        put("End Value", At(i), row.end);
        if (row.kind != "P" && row.kind != "S")
            continue;
        Ask_Boundaries(design, i);
        int place = 0;
        std::string last;
        for (const Drawn_Condition& c : drawn.conditions) {
            if (c.segment != i)
                continue;
            const bool inside = c.theta != "0" && c.theta != row.beta;
            if (inside && c.theta != last) {
                last = c.theta;
                Put_Condition(design, i, ++place, Angle_Box, c.theta);
            }
            Put_Condition(design, i, inside ? place : c.theta == "0" ? 0 : Last_Condition_Row, c.order, c.value);
        }
        if (!Set_No_of_Conditions(design, i, std::to_string(Count_Filled_Boxes(design, i))) && refusal.empty())
            refusal = "the conditions";
        if (row.kind == "S" && !New_Spline(design, i) && refusal.empty())
            refusal = "the spline";
    }
    for (const auto& [segment, order] : drawn.orders)
        if (!Set_Order(design, segment, order) && refusal.empty())
            refusal = "the order " + order;
    for (const auto& [segment, places] : drawn.knots)
        for (int knot = static_cast<int>(places.size()); knot >= 1; --knot)
            if (!Set_Knot(design, segment, knot, places[static_cast<std::size_t>(knot - 1)]) && refusal.empty())
                refusal = "the knot";
    return refusal.empty() ? Apply_Settings(design, drawn.settings) : refusal;
}

}  // namespace lobemax::testing
