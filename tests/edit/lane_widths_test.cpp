// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of any design a machine could have are the same bytes at every width of the processor, and those of the
// reference, one double at a time by the C library, but for the last place of very few. LOBEMAX_RANDOM_DESIGNS is how
// many designs.
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "core/lanes.h"
#include "core/messages.h"
#include "core/startup.h"
#include "edit/examples.h"
#include "edit/rungs.h"
#include "tests/support/random_design.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Dice;

/// What a ladder leaves in the rows, and the derived figures that are no rows.
struct Left {
    Table<Single> rows;
    std::vector<float> figures;
};

Left Run_Ladder(Design_State of, Lane_Width width)
{
    const Forced_Lanes forced(width);
    if (Calc_All(of, true) && Motion_Done(of) && Run_Size(of)) {
        Run_Forces(of);
        Put_Materials(of);
        Contact_Field refused{};
        Run_Stress(of, refused);
    }
    const Cam_Group& c = of.cam;
    Left left{of.results.CalcData, {}};
    for (const Single& figure : {c.Phi_Max, c.Phi_Min, c.Rho_Min_Pos, c.Rho_Smallest, c.Arm_Work_Angle,
                                 of.dynamics.Torque_Integral_Max, of.motion.Liftmax, of.motion.MaxLift})
        left.figures.push_back(figure.Bits());
    for (const auto* row : {&of.results.Arm_Pivot_X, &of.results.Arm_Pivot_Y})
        for (const Single& x : row->Points())
            left.figures.push_back(x.Bits());
    return left;
}

/// Places of 32-bit numbers between two of them.
std::int64_t Places_between(float a, float b)
{
    const auto place = [](float x) {
        const auto bits = std::bit_cast<std::int32_t>(x);
        return std::int64_t{bits < 0 ? std::int32_t{-2147483647 - 1} - bits : bits};
    };
    return std::abs(place(a) - place(b));
}

struct Difference {
    std::int64_t values = 0;
    std::int64_t different = 0;
    std::int64_t beyond_one_place = 0;
    std::string worst;
    double worst_share = 0.0;
};

void Compare(const Left& reference, const Left& found, const std::string& name, Difference& all)
{
    for (int row = 0; row <= reference.rows.Last_Row(); ++row) {
        double largest = 0.0;
        for (const Single x : reference.rows.Points(row))
            largest = std::max(largest, std::abs(double{x}));
        for (int i = 0; i <= reference.rows.Last_Point(); ++i) {
            const float a = reference.rows(row, i).Bits();
            const float b = found.rows(row, i).Bits();
            ++all.values;
            if (std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b))
                continue;
            ++all.different;
            const std::int64_t places = Places_between(a, b);
            if (places <= 1)
                continue;
            ++all.beyond_one_place;
            const double share = std::abs(double{a} - double{b}) / largest;
            if (share >= all.worst_share) {
                all.worst_share = share;
                all.worst = name + ", row " + std::to_string(row) + ", point " + std::to_string(i) + ": " +
                            std::to_string(b) + " for " + std::to_string(a);
            }
        }
    }
}

bool Same_Bytes(const Left& a, const Left& b)
{
    for (int row = 0; row <= a.rows.Last_Row(); ++row)
        if (std::memcmp(a.rows.Points(row).data(), b.rows.Points(row).data(), a.rows.Points(row).size_bytes()) != 0)
            return false;
    return std::memcmp(a.figures.data(), b.figures.data(), a.figures.size() * sizeof(float)) == 0;
}

class Lane_Widths : public ::testing::Test {
protected:
    Lane_Widths() : before_(Install_Host({})) {}
    ~Lane_Widths() override { Install_Host(std::move(before_)); }

    void Check(const Design_State& design, const std::string& name)
    {
        const Left reference = Run_Ladder(design, Lane_Width::reference);
        const Left two = Run_Ladder(design, Lane_Width::sse2);
        EXPECT_TRUE(Same_Bytes(two, Run_Ladder(design, Lane_Width::avx2))) << name;
        EXPECT_TRUE(Same_Bytes(two, Run_Ladder(design, Lane_Width::avx512))) << name;
        Compare(reference, two, name, all_);
    }
    void Judge() const
    {
        std::printf("%ld values, %ld differ from the reference, %ld of them by more than one place\n",
                    static_cast<long>(all_.values), static_cast<long>(all_.different),
                    static_cast<long>(all_.beyond_one_place));
        EXPECT_LT(static_cast<double>(all_.different), 1e-5 * static_cast<double>(all_.values));
        EXPECT_EQ(all_.beyond_one_place, 0) << all_.worst;
    }

private:
    Host before_;
    Difference all_;
};

TEST_F(Lane_Widths, examples_have_the_same_rows)
{
    for (const std::string_view name : Example_Names)
        for (const double step : {1.0, 0.125}) {
            Design_State design;
            Sub_Main(design, "", {});
            ASSERT_TRUE(Load_Example(design, name));
            Set_Step(design, step);
            Check(design, std::string(name));
        }
    Judge();
}

TEST_F(Lane_Widths, random_designs_have_the_same_rows)
{
    const char* const asked = std::getenv("LOBEMAX_RANDOM_DESIGNS");
    const int count = asked == nullptr ? 60 : std::atoi(asked);
    for (int seed = 1; seed <= count; ++seed) {
        Dice dice(static_cast<std::uint32_t>(seed));
        Design_State design;
        Sub_Main(design, "", {});
        const auto drawn = testing::Draw_Design(dice);
        testing::Type_into(design, drawn);
        Check(design, "design " + std::to_string(seed));
    }
    Judge();
}

}  // namespace
}  // namespace lobemax
