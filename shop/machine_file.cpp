// SPDX-License-Identifier: GPL-3.0-or-later
#include "shop/machine_file.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/design_state.h"
#include "core/text.h"
#include "shop/curve_set.h"

namespace lobemax {

namespace {

constexpr double turn = 360.0;

}  // namespace

Machine_File Refused(std::string sentence)
{
    Machine_File file;
    file.refusal = std::move(sentence);
    return file;
}

std::vector<std::string> Opening_Lines_of(const Design_State& design, std::string_view what)
{
    std::vector<std::string> lines;
    lines.push_back("LOBEMAX " + design.identity.Release_Str + ", " + std::string(what));
    for (const auto& [name, words] : Opening_Facts(design))
        if (name != "Unit")  // a file for a machine has a unit of its own
            lines.push_back(name + ": " + words);
    return lines;
}

std::string With_Decimals(double value, int decimals)
{
    std::string picture = "0";
    if (decimals > 0)
        picture += '.' + std::string(static_cast<std::size_t>(decimals), '0');
    return Format_Picture(value, picture, Decimal_Symbol::point);
}

std::string As_Comment(std::string_view text)
{
    constexpr std::string_view barred = "()[]{}\"'*;%";
    std::string plain;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0U) == 0x80U)  // what follows the first byte of a character of several
            continue;
        plain += byte < 32 || byte > 126 || barred.find(c) != std::string_view::npos ? ' ' : c;
    }
    return plain;
}

std::string Position_Unit_of(const Design_State& design)
{
    return design.cam.Translating ? Length_Unit_of(design.identity.WhichUnit) : "deg";
}

std::string Why_Not_Cut(const Design_State& design, double tool, bool though_do_not_cut)
{
    Design_State with_tool = design;
    with_tool.cam.Cutter_Radius = Single(tool);
    return Why_No_Cam(with_tool, though_do_not_cut);
}

std::vector<Stretch> Dwells_of(const True_Cam& cam)
{
    const Shop_Curve curve = cam.Follower().body == Cam_Body::disk ? Surface_of(cam) : Pitch_of(cam);
    std::vector<Stretch> dwells;
    const auto level = [&](double theta) { return cam.Motion().At(theta).s; };
    for (const Shop_Curve::Circle& circle : curve.circles) {
        const bool goes_on =
            !dwells.empty() && dwells.back().to == circle.from &&
            level(0.5 * (dwells.back().from + dwells.back().to)) == level(0.5 * (circle.from + circle.to));
        if (goes_on)
            dwells.back().to = circle.to;
        else
            dwells.push_back({circle.from, circle.to});
    }
    if (dwells.size() > 1 && dwells.front().from == 0.0 && dwells.back().to >= turn) {
        const double last = level(0.5 * (dwells.back().from + dwells.back().to));
        const double first = level(0.5 * dwells.front().to);
        if (std::abs(last - first) <= 1e-7 * cam.Follower().prime) {
            dwells.back().to = dwells.front().to + turn;
            dwells.erase(dwells.begin());
        }
    }
    return dwells;
}

Entry_Place Best_Entry(const True_Cam& cam)
{
    const True_Motion& motion = cam.Motion();
    Entry_Place best;
    for (const Stretch& dwell : Dwells_of(cam)) {
        const double room = 0.5 * (dwell.to - dwell.from);
        if (room > best.room)
            best = {std::fmod(dwell.from + room, turn), room};
    }
    if (best.room > 0.0)
        return best;
    constexpr double step = 0.25;
    double fastest = 0.0;
    for (double theta = 0.0; theta < turn; theta += step)
        fastest = std::max(fastest, std::abs(motion.At(theta).v));
    const double still = 1e-6 * fastest;
    double least_v = std::numeric_limits<double>::infinity();
    double least_a = least_v;
    for (double theta = 0.0; theta < turn; theta += step) {
        const Follower_Point p = motion.At(theta);
        const double v = std::max(std::abs(p.v), still);
        if (v < least_v || (v == least_v && std::abs(p.a) < least_a)) {
            least_v = v;
            least_a = std::abs(p.a);
            best.angle = theta;
        }
    }
    return best;
}

std::string No_Dwell_Sentence(const Entry_Place& entry)
{
    return "The motion has no dwell: the tool enters at " + Plain_Figures(entry.angle, 6) +
           " deg, where the follower moves least, and may leave a mark there.";
}

}  // namespace lobemax
