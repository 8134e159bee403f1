// SPDX-License-Identifier: GPL-3.0-or-later
/// Measured profiles: pairs of numbers from a text, the closed functions through them, and the motion that these
/// become.
///
/// A profile is the motion of the follower, at its roller centre or flat face, over the cam angle: angle and
/// displacement ("RT"), or points of the roller centre's path ("XY").
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "camgeom/periodic_fit.h"
#include "camgeom/smoothing_spline.h"
#include "core/basic_types.h"

namespace lobemax {

/// A line of the text with its two numbers.
struct Measured_Pair {
    double first = 0.0;
    double second = 0.0;
    int line = 0;
};

struct Pairs_Read {
    std::vector<Measured_Pair> pairs;
    std::string problem{};  // names the line; empty: every line was read
};

/// Reads the text of a measuring machine or a spreadsheet: two numbers a line, separated by blanks, tabs, semicolons or
/// a comma. Head lines before the first pair, empty lines and comments (# % ! * ; // ' ") are passed over. A comma is
/// the decimal sign where blanks, tabs or semicolons separate the numbers and no number has a point.
Pairs_Read Read_Pairs(std::string_view text);

enum class Import_Coord { RT, XY };
enum class Fit_Method { spline = 1, fourier = 2, lanczos = 3, smooth = 4 };

/// Half the count of the finest grid.
inline constexpr int Most_Harmonics = 1440;

/// What the screen's choices are, and the options of the command.
struct Import_Choice {
    Import_Coord coord = Import_Coord::RT;
    Fit_Method method = Fit_Method::spline;
    bool normalize = false;         // chk_Normalize
    bool raw = false;               // chk_Rawdata
    bool close = false;             // the first point again at its angle + 360, for RT
    std::optional<double> prime{};  // txt_Base
    double shift = 0.0;             // txt_ShiftAng, degrees that the functions come later
    int harmonics = 0;              // of the Fourier series; 0: all
    double bound = 0.0;             // of the smoothing spline: no point moves by more
};

/// A profile at work: as it was read, what is fitted, and the fit.
struct Profile {
    std::vector<Single> Raw_Angle;  // degrees
    std::vector<Single> Raw_Displacement;
    std::vector<Single> x;  // radians
    std::vector<Single> y;
    Fit_Result result;
    Largest_Move move;  // of a smoothing spline
    bool fitted = false;
    int Data_Count() const { return static_cast<int>(x.size()); }
};

/// How near a fit comes to its data, and whether they are too rough for their derivatives.
struct Fit_Residuals {
    double largest = 0.0;
    double angle = 0.0;  // degrees, of the largest
    double rms = 0.0;
    double noise = 0.0;        // standard deviation of a displacement, from the fourth differences
    double noise_share = 0.0;  // of the acceleration's range: the deviation that a spline makes of this noise
};

/// Takes a text: reads it, chooses the step of the grid by the count of pairs, closes and normalises the data, and the
/// prime radius and Lift. The arrays of the design are those of the grid.
/// @param name  of the file, for the message that it was read; empty: nobody is told
/// @return false after a message: the line that is no pair, angles that do not rise, too many pairs, no prime radius
bool Take_Profile(Design_State& design, std::string_view text, const std::string& name, const Import_Choice& choice,
                  Profile& profile);

/// The fit by the method chosen. @return false after messages, the last "Something is wrong with the solution - cannot
/// continue"
bool Fit_Profile(Design_State& design, const Import_Choice& choice, Profile& profile);

Fit_Residuals Residuals_of(const Design_State& design, const Profile& profile);

/// The fewest harmonics whose series misses the data by no more than their noise: what more of them add is noise. None
/// where the data are no even cycle, or so smooth that all harmonics count.
std::optional<int> Harmonics_for_Noise(const Profile& profile);

/// The functions into rows 1 to 4 per second, row 17 empty; Prime_Rad, extremes of the displacement. Row 4 is not
/// divided by 1000 as a calculated jerk is: meant. Plots and tables of an imported jerk so have 1000 times the figure
/// of the same motion from segments.
void Store_Functions(Design_State& design, const Import_Choice& choice, const Profile& profile);

}  // namespace lobemax
