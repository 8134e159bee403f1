// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/import_notes.h"

#include <cmath>

#include "core/design_state.h"
#include "core/numeric.h"
#include "core/variables.h"

namespace lobemax {

std::vector<std::string> Import_Notes(const Design_State& design, const Import_Choice& choice, const Profile& profile,
                                      Decimal_Symbol symbol)
{
    if (!profile.fitted)
        return {};
    constexpr double worth_a_line = 0.1;  // of the acceleration's range
    constexpr int decimals = 5;
    constexpr double turn = 360.0;
    const auto shown = [symbol](double value, int places) { return Shortest(Single(FNRound(value, places)), symbol); };
    const std::string unit = " " + Trim(design.plot.Var_Unit(var::S));
    const Fit_Residuals r = Residuals_of(design, profile);
    std::vector<std::string> notes;
    notes.push_back("The fit misses the data by " + shown(r.largest, decimals) + unit + " at most, at " +
                    shown(r.angle, 2) + " deg; root mean square " + shown(r.rms, decimals) + unit + ".");
    if (choice.method == Fit_Method::smooth)
        notes.push_back("The smoothing moves a point by " + shown(profile.move.distance, decimals) + unit +
                        " at most, at " + shown(FN_Modulo(profile.move.x * Deg_per_Rad, turn), 2) + " deg; " +
                        shown(choice.bound, decimals) + unit + " are allowed.");
    constexpr double usual_reach = 3.5;  // of normal noise: one point in two thousand lies beyond it
    const bool smoothed_away = choice.method == Fit_Method::smooth && choice.bound >= usual_reach * r.noise;
    if (r.noise_share > worth_a_line && !smoothed_away) {
        std::string note = "The data are rough by about " + shown(r.noise, decimals) + unit + ": ";
        if (choice.method == Fit_Method::spline)
            note += "a spline makes an acceleration of it that is " + shown(100.0 * r.noise_share, 0) +
                    " % of the whole.  Take a smoothing spline, Lanczos, or a Fourier series of few harmonics.";
        else if (choice.method == Fit_Method::smooth)
            note += "less than 3.5 times that as the bound leaves some of it in acceleration and jerk.";
        else
            note += "what stands in acceleration and jerk may be this noise.";
        notes.push_back(std::move(note));
    }
    if (choice.method == Fit_Method::fourier)
        if (const std::optional<int> harmonics = Harmonics_for_Noise(profile);
            harmonics && (choice.harmonics == 0 || choice.harmonics > *harmonics))
            notes.push_back("These data carry " + std::to_string(*harmonics) +
                            (*harmonics == 1 ? " harmonic" : " harmonics") +
                            ": more of them fit nothing but their noise.");
    constexpr double rounding = 0.01;
    const double covered = (profile.x.back() - profile.x.front()) * Deg_per_Rad;
    const double step = covered / static_cast<double>(profile.x.size() - 1);
    const double period = choice.method == Fit_Method::fourier ? covered + step : covered;
    if (std::abs(period - turn) > rounding)
        notes.push_back("The data cover " + shown(period, 2) +
                        " deg of a turn, and the fit takes this for the whole cycle: beyond it it does not hold.  "
                        "Close the cycle.");
    return notes;
}

}  // namespace lobemax
