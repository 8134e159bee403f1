// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/cad_form.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <set>

#include "core/design_state.h"
#include "tests/support/script.h"
#include "tests/support/truth_design.h"

namespace lobemax {
namespace {

using testing::Truth_Maker;

class Cad_Forms : public ::testing::Test {
protected:
    void TearDown() override { design = {}; }
    static std::string Row_of(const Cad_Facts& facts, const std::string& name)
    {
        for (const auto& [fact, words] : facts)
            if (fact == name)
                return words;
        return "-";
    }
    testing::Script script_;
};

TEST_F(Cad_Forms, the_table_is_sound)
{
    for (int k = 0; k < Cad_Kinds; ++k) {
        const auto kind = static_cast<Cad_Kind>(k);
        EXPECT_EQ(Entry_of(kind).kind, kind);
        EXPECT_EQ(Cad_Kind_of(Entry_of(kind).name), kind);
        std::set<std::string_view> names;
        for (const Cad_Option& option : Cad_Options())
            if ((option.kinds & (1U << static_cast<unsigned>(k))) != 0) {
                EXPECT_TRUE(names.insert(option.name).second) << Entry_of(kind).name << " " << option.name;
                EXPECT_EQ(Find_Option(kind, option.name), &option);
            }
    }
    EXPECT_FALSE(Cad_Kind_of("dwg"));
    Truth_Maker().Make();
    for (const Cad_Option& option : Cad_Options()) {
        EXPECT_FALSE(option.caption.empty() || option.words.empty()) << option.name;
        if (option.entry == Cad_Entry::choice) {
            const auto words = Choices_of(option);
            EXPECT_NE(std::ranges::find(words, option.usual), words.end()) << option.name;
        }
        if (option.entry == Cad_Entry::flag) {
            EXPECT_TRUE(option.usual == "yes" || option.usual == "no") << option.name;
        }
        if (option.unit == Cad_Unit::program_length || option.unit == Cad_Unit::program_feed) {
            EXPECT_FALSE(option.in_inches.empty()) << option.name;
        }
    }
}

TEST_F(Cad_Forms, an_option_takes_its_text_and_an_empty_one_gives_the_usual_value_back)
{
    Truth_Maker().Make();
    Cad_Wish wish{.kind = Cad_Kind::gcode};
    EXPECT_EQ(Value_of(design, wish, "tool-radius"), "5");
    EXPECT_EQ(Put_Option(design, wish, "tool-radius", " 6,25 ", Decimal_Symbol::comma), "");
    EXPECT_EQ(Value_of(design, wish, "tool-radius"), "6.25");
    EXPECT_EQ(Put_Option(design, wish, "tool-radius", "six"), "tool-radius: 'six' is no number.");
    EXPECT_EQ(Put_Option(design, wish, "passes", "2.5"), "passes: '2.5' is no whole number from -32767 to 32767.");
    EXPECT_EQ(Put_Option(design, wish, "cut", "CONVENTIONAL"), "");
    EXPECT_EQ(Value_of(design, wish, "cut"), "conventional");
    EXPECT_EQ(Put_Option(design, wish, "cut", "up"), "cut: 'up' is none of climb and conventional.");
    EXPECT_EQ(Put_Option(design, wish, "every", "5"), "every means nothing for gcode: it is for pdf.");
    EXPECT_EQ(Put_Option(design, wish, "ramp", "5"), "ramp means nothing for this cam: it is for a barrel cam.");
    EXPECT_EQ(Value_of(design, wish, "tool-radius"), "6.25");
    EXPECT_EQ(Put_Option(design, wish, "tool-radius", ""), "");
    EXPECT_EQ(Value_of(design, wish, "tool-radius"), "5");
}

TEST_F(Cad_Forms, a_program_is_in_the_unit_that_is_chosen_or_that_of_the_model)
{
    Truth_Maker().Make();
    Cad_Wish wish{.kind = Cad_Kind::gcode};
    const auto unit = [&](const char* name) { return Unit_of_Option(design, wish, *Find_Option(wish.kind, name)); };
    EXPECT_EQ(unit("feed"), "mm/min");
    EXPECT_EQ(Put_Option(design, wish, "units", "in"), "");
    EXPECT_EQ(unit("feed"), "in/min");
    EXPECT_EQ(unit("depth"), "in");
    EXPECT_EQ(Value_of(design, wish, "tool-radius"), "0.25");
    EXPECT_EQ(Put_Option(design, wish, "units", ""), "");
    design.identity.WhichUnit = 2;
    EXPECT_EQ(unit("depth"), "in");
    EXPECT_EQ(Unit_of_Option(design, {.kind = Cad_Kind::dxf}, *Find_Option(Cad_Kind::dxf, "bore")), "ft");
}

TEST_F(Cad_Forms, the_options_are_those_of_the_cam)
{
    const auto has = [](Cad_Kind kind, std::string_view name) {
        const auto all = Options_for(design, kind);
        return std::ranges::find(all, name, &Cad_Option::name) != all.end();
    };
    Truth_Maker().Make();
    EXPECT_TRUE(has(Cad_Kind::dxf, "bore") && has(Cad_Kind::gcode, "tool-radius"));
    EXPECT_FALSE(has(Cad_Kind::xyz, "flank") || has(Cad_Kind::gcode, "ramp"));
    Truth_Maker{.Camtype = "Barrel"}.Make();
    EXPECT_FALSE(has(Cad_Kind::dxf, "bore") || has(Cad_Kind::gcode, "tool-radius"));
    EXPECT_TRUE(has(Cad_Kind::xyz, "flank") && has(Cad_Kind::gcode, "ramp"));
}

/// A circle about another place: where a ray meets it is known in closed form.
TEST_F(Cad_Forms, a_radius_is_told_in_its_direction_on_the_drawing)
{
    const Vector center{3.0, -4.0};
    const double radius = 20.0;
    Shop_Curve circle;
    circle.at = [&](double t) {
        const Vector e = Direction(t * std::numbers::pi / 180.0);
        return Curve_Place{center + radius * e, Quarter(e)};
    };
    for (const double angle : {0.0, 10.0, 90.0, 187.5, 359.0}) {
        const Vector ray = Direction(angle * std::numbers::pi / 180.0);
        const double along = Dot(ray, center);
        const double expected = along + std::sqrt(radius * radius - Square(center) + along * along);
        const auto found = Radius_in_Direction(circle, angle);
        ASSERT_TRUE(found);
        EXPECT_NEAR(*found, expected, 1e-7) << angle;  // the circle constant has ten figures
    }
    circle.at = [&](double t) {
        const Vector e = Direction(t * std::numbers::pi / 180.0);
        return Curve_Place{Vector{50.0, 0.0} + radius * e, Quarter(e)};
    };
    EXPECT_NEAR(Radius_in_Direction(circle, 0.0).value_or(0.0), 70.0, 1e-9);  // the outer one of two
    EXPECT_FALSE(Radius_in_Direction(circle, 180.0));
}

TEST_F(Cad_Forms, a_sheet_tells_what_a_shop_asks_for)
{
    // Dwells stand from 110 to 170 (highest) and from 290 to 360 degrees (at rest); the cam turns clockwise, so a
    // direction on the drawing is the cam angle of a radial follower.
    Truth_Maker().Make();
    design.identity.User = "A. Turner";
    const Made_Cad made = Make_Cad(design, {.kind = Cad_Kind::pdf}, "/some/where/cam.pdf");
    ASSERT_EQ(made.refusal, "");
    ASSERT_TRUE(made.sheet);
    const Cad_Sheet& sheet = *made.sheet;
    EXPECT_EQ(Row_of(sheet.title, "User"), "A. Turner");
    EXPECT_EQ(Row_of(sheet.title, "Date"), "2026-11-21 12:34:56");
    EXPECT_EQ(Row_of(sheet.title, "Units"), "mm");
    EXPECT_EQ(Row_of(sheet.title, "Tolerance"), "0.001 mm");
    EXPECT_EQ(Row_of(sheet.title, "File"), "cam.pdf");
    EXPECT_EQ(Row_of(sheet.data, "Base circle"), "radius 48.000 mm");
    EXPECT_EQ(Row_of(sheet.data, "Prime circle"), "radius 60.000 mm");
    EXPECT_EQ(Row_of(sheet.data, "Follower"), "roller, radius 12.000 mm");
    EXPECT_EQ(Row_of(sheet.data, "Lift"), "20.000 mm");
    EXPECT_EQ(Row_of(sheet.data, "Rotation"), "clockwise");
    EXPECT_EQ(Row_of(sheet.data, "Blank"), "disk of diameter 136.000 mm at least");
    ASSERT_EQ(sheet.rows.size(), 36U);
    const auto row = [&](int degrees) { return sheet.rows[static_cast<std::size_t>(degrees / 10)]; };
    EXPECT_EQ(row(140), (std::vector<std::string>{"140", "80.000", "68.000"}));
    EXPECT_EQ(row(320), (std::vector<std::string>{"320", "60.000", "48.000"}));
    // Half way up the centre stands half the lift further out.
    Cad_Wish every{.kind = Cad_Kind::pdf};
    ASSERT_EQ(Put_Option(design, every, "every", "55"), "");
    const Made_Cad other = Make_Cad(design, every, "cam.pdf");
    ASSERT_TRUE(other.sheet);
    EXPECT_EQ(other.sheet->rows[1], (std::vector<std::string>{"55", "70.000", other.sheet->rows[1][2]}));
    EXPECT_EQ(other.sheet->rows.size(), 7U);
}

TEST_F(Cad_Forms, a_flat_face_has_no_centre_and_an_unrolled_cam_no_radii)
{
    Truth_Maker{.flat = true, .lift = 6.0}.Make();
    const Made_Cad flat = Make_Cad(design, {.kind = Cad_Kind::pdf, .even_if_wrong = true}, "f.pdf");
    ASSERT_TRUE(flat.sheet) << flat.refusal;
    EXPECT_EQ(flat.sheet->heads.size(), 2U);
    Truth_Maker{.Camtype = "Barrel"}.Make();
    const Made_Cad drum = Make_Cad(design, {.kind = Cad_Kind::pdf, .even_if_wrong = true}, "b.pdf");
    ASSERT_TRUE(drum.sheet) << drum.refusal;
    EXPECT_EQ(drum.sheet->heads.front(), "Cam angle (deg)");
    EXPECT_EQ(drum.sheet->rows.front().front(), "0");
}

TEST_F(Cad_Forms, only_what_the_check_speaks_against_may_be_forced)
{
    Truth_Maker().Make();
    Cad_Wish wish{.kind = Cad_Kind::dxf};
    ASSERT_EQ(Put_Option(design, wish, "bore", "300"), "");
    const Made_Cad bore = Make_Cad(design, wish, "a.dxf");
    EXPECT_NE(bore.refusal, "");
    EXPECT_FALSE(bore.may_be_forced);
    design.cam.Follow_Rad = 55.0;
    ASSERT_TRUE(Run_Size(design));
    const Made_Cad undercut = Make_Cad(design, {.kind = Cad_Kind::dxf}, "a.dxf");
    EXPECT_NE(undercut.refusal.find("Do not cut this cam"), std::string::npos) << undercut.refusal;
    EXPECT_TRUE(undercut.may_be_forced);
    EXPECT_TRUE(Question_of_Cad(undercut).ends_with("Write the file all the same?"));
    EXPECT_EQ(Make_Cad(design, {.kind = Cad_Kind::plc}, "a.csv").refusal, "");
    EXPECT_NE(Why_Not_Even_if_Wrong(Cad_Kind::plc), "");
    EXPECT_EQ(Why_Not_Even_if_Wrong(Cad_Kind::gcode), "");
}

TEST_F(Cad_Forms, an_entry_that_is_refused_comes_back_with_its_message)
{
    Truth_Maker().Make();
    Cad_Wish wish{.kind = Cad_Kind::gcode};
    const Cad_Option& passes = *Find_Option(Cad_Kind::gcode, "passes");
    EXPECT_TRUE(Enter_Option(design, wish, passes, "3").accepted);
    script_.Expect({"passes: '2.5' is no whole number from -32767 to 32767.", Buttons::OK, Symbol::exclamation});
    const Form_Entry refused = Enter_Option(design, wish, passes, "2.5");
    EXPECT_FALSE(refused.accepted);
    EXPECT_TRUE(refused.takes_focus);
    EXPECT_EQ(refused.text, "3");
    design.identity.Number_Format = "Europe";
    const Cad_Option& tool = *Find_Option(Cad_Kind::gcode, "tool-radius");
    EXPECT_EQ(Enter_Option(design, wish, tool, "4,5").text, "4,5");
    EXPECT_EQ(Value_of(design, wish, "tool-radius"), "4.5");
}

TEST_F(Cad_Forms, captions_get_keys_of_their_own)
{
    EXPECT_EQ(With_Access_Keys({"Tool radius", "Tool number", "Too", "T"}, "W"),
              (std::vector<std::string>{"&Tool radius", "Tool &number", "T&oo", "T"}));
    EXPECT_EQ(With_Access_Keys({"Width"}, "w"), (std::vector<std::string>{"W&idth"}));
}

}  // namespace
}  // namespace lobemax
