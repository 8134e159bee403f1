// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "core/lanes.h"
#include "core/messages.h"
#include "linkage/linkage_kinematics.h"
#include "tests/support/linkage_design.h"

namespace lobemax {
namespace {

using testing::Kind_of_Train;

/// All that a calculation stores.
struct Stored {
    std::vector<float> values;
    int broken = 0;
    int indeterminate = 0;
    bool reached = false;

    friend bool operator==(const Stored&, const Stored&) = default;
};

Stored Calculated_by(Lane_Width width)
{
    const Forced_Lanes forced(width);
    Stored stored;
    Integer answer;
    stored.reached = Calc_Linkage_All(design, answer);
    const Results_Group& r = design.results;
    const auto take = [&](std::span<const Single> row) {
        for (const Single& value : row)
            stored.values.push_back(value.Bits());
    };
    for (const Table<Single>* table : {&r.Link_Theta, &r.Link_Omega, &r.Link_Alpha, &r.Link_X, &r.Link_Y})
        for (int row = 0; row <= table->Last_Row(); ++row)
            take(table->Points(row));
    for (const Row<Single>* row : {&r.Link_Ratio_S, &r.Link_Ratio_V, &r.Link_Ratio_A})
        take(row->Points());
    for (int link = First_Moving_Link; link <= Last_Link(design); ++link)
        for (const double value : {design.linkage.Theta_of_link(link), design.linkage.Omega_of_link(link),
                                   design.linkage.Alpha_of_link(link)})
            stored.values.push_back(static_cast<float>(value));
    stored.broken = design.linkage.Link_Broken;
    stored.indeterminate = design.linkage.Link_Indeterminate;
    return stored;
}

/// The next 32-bit number, or less.
bool Within_One_Place(float a, float b)
{
    return a == b || std::nextafter(a, b) == b;
}

/// Its user answers Ignore.
class Lanes_of_Every_Train : public ::testing::TestWithParam<Kind_of_Train> {
protected:
    Lanes_of_Every_Train()
    {
        Host host;
        host.messenger = [](const Message& box) {
            return box.buttons == Buttons::Abort_Retry_Ignore ? Answer::Ignore : Answer::OK;
        };
        before_ = Install_Host(std::move(host));
    }
    ~Lanes_of_Every_Train() override { Install_Host(std::move(before_)); }

    /// The rows by all widths. @return points that do not connect
    static int Compare_Widths()
    {
        const Stored narrow = Calculated_by(Lane_Width::sse2);
        EXPECT_TRUE(narrow == Calculated_by(Lane_Width::avx2));
        EXPECT_TRUE(narrow == Calculated_by(Lane_Width::avx512));
        const Stored reference = Calculated_by(Lane_Width::reference);
        EXPECT_EQ(narrow.reached, reference.reached);
        EXPECT_EQ(narrow.broken, reference.broken);
        EXPECT_EQ(narrow.indeterminate, reference.indeterminate);
        EXPECT_EQ(narrow.values.size(), reference.values.size());
        for (std::size_t k = 0; k < std::min(narrow.values.size(), reference.values.size()); ++k)
            EXPECT_TRUE(Within_One_Place(narrow.values[k], reference.values[k]))
                << k << ": " << narrow.values[k] << " and " << reference.values[k];
        return narrow.broken;
    }

private:
    Host before_;
};

INSTANTIATE_TEST_SUITE_P(Linkages, Lanes_of_Every_Train, ::testing::ValuesIn(testing::All_Trains()),
                         [](const auto& kind) { return kind.param.Name(); });

TEST_P(Lanes_of_Every_Train, have_the_same_bits_at_every_width_and_those_of_the_reference_to_a_place)
{
    testing::Make_Train(GetParam());
    EXPECT_EQ(Compare_Widths(), 0);
}

TEST_P(Lanes_of_Every_Train, leave_what_does_not_connect_to_the_scalar_way)
{
    testing::Make_Train(GetParam());
    int most_broken = 0;
    for (const double share : {0.55, 0.7, 0.8, 0.9, 1.2, 1.5, 2.0}) {
        design.linkage.Link_3 = 150 * share;
        most_broken = std::max(most_broken, Compare_Widths());
    }
    const bool slides_at_once = GetParam().type == 2;  // it would end where its slider has no place
    EXPECT_EQ(most_broken > 0, !slides_at_once);
}

TEST_P(Lanes_of_Every_Train, take_a_row_of_angles_without_its_jumps)
{
    testing::Make_Train(GetParam(), 1, -1);
    for (const double turned : {0.0, 60.0, 120.0, 200.0, 290.0}) {
        design.linkage.Delta2 = turned;
        Compare_Widths();
    }
}

}  // namespace
}  // namespace lobemax
