// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/field_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <limits>
#include <set>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

#include "core/startup.h"
#include "core/units.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

/// A started design, so that every array has its points.
class Directory : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    void TearDown() override { design = {}; }
};

std::string Lower(std::string_view text)
{
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lower;
}

const Field& Known(std::string_view name)
{
    const Field* field = Find_Field(name);
    if (field == nullptr)
        throw std::runtime_error("no field " + std::string(name));
    return *field;
}

Field_Index At(std::initializer_list<int> indices)
{
    Field_Index index;
    for (const int i : indices)
        index.at[static_cast<std::size_t>(index.count++)] = i;
    return index;
}

/// The element with every index at its first, or at its last bound.
Field_Index Corner(const Field& field, bool last)
{
    Field_Index index;
    index.count = field.dimensions;
    const auto bounds = field.bounds(design);
    for (std::size_t k = 0; k < static_cast<std::size_t>(field.dimensions); ++k)
        index.at[k] = last ? bounds[k].hi : bounds[k].lo;
    return index;
}

/// Fills an element with a number of the field's own type.
void Fill(const Field& field, const Field_Index& index, double number)
{
    std::visit(
        [&](auto* at) {
            using T = std::remove_pointer_t<decltype(at)>;
            if constexpr (std::is_same_v<T, std::string>)
                FAIL() << field.name << " is a text";
            else if constexpr (std::is_same_v<T, Flag>)
                *at = number != 0.0;
            else if constexpr (std::is_same_v<T, Integer>)
                *at = To_Integer(number);
            else if constexpr (std::is_same_v<T, Long>)
                *at = static_cast<Long>(number);
            else
                *at = number;
        },
        field.at(design, index));
}

std::string Get(std::string_view reference)
{
    const Field_Reference r = Read_Field_Reference(design, reference);
    return r.field == nullptr ? "error: " + r.error : Field_Value(design, *r.field, r.index);
}

// ---- the table as a whole

TEST_F(Directory, names_are_unique_whatever_their_case)
{
    std::set<std::string> names;
    for (const Field& field : Field_Directory())
        EXPECT_TRUE(names.insert(Lower(field.name)).second) << field.name;
    EXPECT_GT(names.size(), 200U);
}

TEST_F(Directory, every_field_is_found_by_its_name_in_any_case)
{
    for (const Field& field : Field_Directory()) {
        EXPECT_EQ(Find_Field(field.name), &field) << field.name;
        EXPECT_EQ(Find_Field(Lower(field.name)), &field) << field.name;
    }
}

TEST_F(Directory, every_field_is_reached_at_its_first_and_last_index)
{
    for (const Field& field : Field_Directory())
        for (const bool last : {false, true}) {
            const Field_Index index = Corner(field, last);
            EXPECT_NO_THROW(field.at(design, index)) << Field_Name(field, index);
            const Field_Reference r = Read_Field_Reference(design, Field_Name(field, index));
            EXPECT_EQ(r.field, &field) << Field_Name(field, index) << ": " << r.error;
            EXPECT_EQ(r.index.at, index.at) << Field_Name(field, index);
        }
}

TEST_F(Directory, one_index_further_is_refused_and_faults)
{
    for (const Field& field : Field_Directory())
        for (std::size_t k = 0; k < static_cast<std::size_t>(field.dimensions); ++k)
            for (const bool last : {false, true}) {
                Field_Index index = Corner(field, last);
                index.at[k] += last ? 1 : -1;
                EXPECT_THROW(field.at(design, index), Fault) << Field_Name(field, index);
                const Field_Reference r = Read_Field_Reference(design, Field_Name(field, index));
                EXPECT_EQ(r.field, nullptr) << Field_Name(field, index);
                EXPECT_FALSE(r.error.empty());
            }
}

TEST_F(Directory, the_type_is_that_of_the_element)
{
    for (const Field& field : Field_Directory()) {
        const Field_Ref ref = field.at(design, Corner(field, false));
        const Field_Type by_place[] = {Field_Type::single, Field_Type::integer,      Field_Type::flag,
                                       Field_Type::text,   Field_Type::long_integer, Field_Type::real};
        EXPECT_EQ(field.type, by_place[ref.index()]) << field.name;
    }
}

TEST_F(Directory, first_and_last_elements_of_a_field_are_different_ones)
{
    for (const Field& field : Field_Directory()) {
        if (field.dimensions == 0)
            continue;
        EXPECT_NE(field.at(design, Corner(field, false)), field.at(design, Corner(field, true))) << field.name;
    }
}

TEST_F(Directory, no_two_fields_are_the_same_element)
{
    std::set<Field_Ref> elements;
    for (const Field& field : Field_Directory())
        EXPECT_TRUE(elements.insert(field.at(design, Corner(field, false))).second) << field.name;
}

struct Shape_Case {
    const char* name;
    Field_Type type;
    std::vector<Bounds> bounds;
};

TEST_F(Directory, shapes_of_the_fields_are_those_of_the_design)
{
    const Shape_Case cases[] = {
        {"Design No.", Field_Type::integer, {}},
        {"Deltatheta", Field_Type::single, {}},
        {"Model_Name", Field_Type::text, {}},
        {"Translating", Field_Type::flag, {}},
        {"Beta_Deg", Field_Type::single, {{0, 20}}},
        {"Rise_Fall_Dwell", Field_Type::text, {{0, 20}}},
        {"Seg_Program", Field_Type::integer, {{0, 20}}},
        {"Thetanorm", Field_Type::single, {{0, 40}, {0, 20}}},
        {"Firstlast", Field_Type::single, {{0, 20}, {0, 2}, {0, 3}}},
        {"T boundary cond", Field_Type::text, {{0, 20}, {1, 9}}},
        {"S boundary cond", Field_Type::text, {{0, 20}, {0, 9}}},
        {"Pbound", Field_Type::text, {{0, 20}, {0, 9}}},
        {"Knots", Field_Type::single, {{0, 66}, {0, 20}}},
        {"Constraints", Field_Type::single, {{0, 40}, {0, 3}}},
        {"Mass_m", Field_Type::single, {{1, 2}}},
        {"Young's modulus", Field_Type::single, {{1, 2}}},
        {"CalcData", Field_Type::single, {{0, 53}, {0, 360}}},
        {"Ext_Force_Table", Field_Type::single, {{0, 360}}},
        {"Fft_Work_B", Field_Type::real, {{0, 4}, {0, 360}}},
        {"Var_Name", Field_Type::text, {{0, 59}}},
        {"Ode_Max_Steps", Field_Type::long_integer, {}},
    };
    for (const Shape_Case& row : cases) {
        const Field& field = Known(row.name);
        EXPECT_EQ(field.type, row.type) << row.name;
        ASSERT_EQ(field.dimensions, static_cast<int>(row.bounds.size())) << row.name;
        const auto bounds = field.bounds(design);
        for (std::size_t k = 0; k < row.bounds.size(); ++k) {
            EXPECT_EQ(bounds[k].lo, row.bounds[k].lo) << row.name;
            EXPECT_EQ(bounds[k].hi, row.bounds[k].hi) << row.name;
        }
    }
}

TEST_F(Directory, every_labelled_field_of_a_model_file_is_there)
{
    for (const char* name : {"User",
                             "Design No.",
                             "Date",
                             "Time",
                             "Shaft speed",
                             "No of segments",
                             "Deltatheta",
                             "Max Variables",
                             "Max Segments possible",
                             "Max Bounds possible",
                             "Max Data Points used",
                             "Base_Shift",
                             "Rise_Fall_Dwell",
                             "Program",
                             "Function",
                             "Total_Displacement",
                             "Shift",
                             "Gamma",
                             "Beta_Deg",
                             "Beta_Rad",
                             "Start Value",
                             "End Value",
                             "Thetanorm",
                             "Boundary",
                             "Equation",
                             "Coefficient",
                             "Pow",
                             "Firstlast",
                             "Total No of BCs",
                             "Theta_Normalized",
                             "Eq",
                             "BC",
                             "Power",
                             "Prime_Rad",
                             "Offset",
                             "Followtype",
                             "Follow_Rad",
                             "Rotflag",
                             "ArmDirect",
                             "Translating",
                             "Camtype$",
                             "ArmX",
                             "ArmY",
                             "ArmRad",
                             "Lift",
                             "Liftmax",
                             "Calculated",
                             "Sized",
                             "Dynamicflag",
                             "Printstep",
                             "Mass",
                             "Return_Spring_Rate",
                             "Preload",
                             "Zeta_Initial",
                             "Damping",
                             "Bearing Radius",
                             "Mu of Shaft",
                             "Mu of Follower",
                             "Coeff of Fluctuation",
                             "WhichUnit",
                             "Cutter Radius",
                             "Polydone",
                             "No of conditions",
                             "T boundary cond",
                             "S boundary cond",
                             "V boundary cond",
                             "A boundary cond",
                             "J boundary cond",
                             "Seg_Program",
                             "Start_theta",
                             "End_theta",
                             "Splines_Calculated",
                             "EvenKnots",
                             "Orders",
                             "Number_of_Knots",
                             "Interior_Knots",
                             "Knots",
                             "Pbound",
                             "Constraints",
                             "Mass_m",
                             "Kspring",
                             "Zeta",
                             "Model_Type",
                             "Polydyne_Calc",
                             "Versus_Keyway",
                             "Full_Half",
                             "Which_half",
                             "Keyway_Clockangle",
                             "Follower_Angle",
                             "Shift_Angle",
                             "Young's modulus",
                             "Poissons' ratio",
                             "Roller type",
                             "Crown radius",
                             "Roller length",
                             "Motion",
                             "Ext_Force_On",
                             "Ext_Force_Calc",
                             "Follower_Weight",
                             "In_Out",
                             "Top_Bot",
                             "MaxLift",
                             "Modelflag",
                             "Comp_Mass",
                             "Comp_Spring_Rate",
                             "Comp_Preload",
                             "CompCam_Calc",
                             "Closure$",
                             "Links",
                             "Theta1",
                             "Link 1",
                             "Link 2",
                             "Link 3",
                             "Link 4",
                             "Link 4a",
                             "Delta4",
                             "Link 5",
                             "Link 6",
                             "S3x",
                             "S3y",
                             "Delta2",
                             "O4x",
                             "O4y",
                             "O6x",
                             "O6y",
                             "Assemflag1",
                             "Assemflag2",
                             "Mass of link",
                             "Inertia of link",
                             "CGx of link",
                             "CGy of link",
                             "Drive_End_Effector",
                             "Global_Slider_angle_deg",
                             "Offset6",
                             "Max_Neg_Disp",
                             "Zoom Factor",
                             "Stressflag",
                             "Linkage_Type",
                             "Saved Variables",
                             "Time Base"})
        EXPECT_NE(Find_Field(name), nullptr) << name;
}

TEST_F(Directory, other_names_of_a_field_lead_to_it)
{
    EXPECT_EQ(Find_Field("Ext_Force_Data"), &Known("Ext_Force_Table"));
    EXPECT_EQ(Find_Field("No_Conditions_Int"), &Known("No_Conditions"));
    EXPECT_EQ(Find_Field("Shift_Point"), &Known("Shift_Points"));
    EXPECT_EQ(Find_Field("Omega_Squared_Shaft"), &Known("Shaft_Speed_Sq"));
    EXPECT_EQ(Find_Field("imported"), &Known("Imported_Model"));
    EXPECT_EQ(Find_Field("Model_Spring_Rate"), &Known("Follower_Stiffness"));
}

// ---- what an element shows

TEST_F(Directory, every_number_shows_what_its_element_holds)
{
    for (const Field& field : Field_Directory()) {
        if (field.computed || field.type == Field_Type::text || field.type == Field_Type::flag)
            continue;
        const Field_Index index = Corner(field, true);
        Fill(field, index, 3.0);
        EXPECT_EQ(Field_Value(design, field, index), "3") << field.name;
    }
}

TEST_F(Directory, every_flag_shows_what_its_element_holds)
{
    for (const Field& field : Field_Directory()) {
        if (field.computed || field.type != Field_Type::flag)
            continue;
        const Field_Index index = Corner(field, true);
        Fill(field, index, -1.0);
        EXPECT_EQ(Field_Value(design, field, index), "true") << field.name;
        Fill(field, index, 0.0);
        EXPECT_EQ(Field_Value(design, field, index), "false") << field.name;
    }
}

TEST_F(Directory, every_text_shows_what_its_element_holds)
{
    for (const Field& field : Field_Directory()) {
        if (field.computed || field.type != Field_Type::text)
            continue;
        const Field_Index index = Corner(field, true);
        *std::get<std::string*>(field.at(design, index)) = " a \"b\", c ";
        EXPECT_EQ(Field_Value(design, field, index), " a \"b\", c ") << field.name;
    }
}

TEST_F(Directory, a_single_is_shown_in_the_shortest_text_of_its_32_bits_with_a_decimal_point)
{
    struct {
        double value;
        const char* shown;
    } const cases[] = {{0.1, "0.1"},   {40.0, "40"}, {-2.5, "-2.5"}, {1e-6, "1E-06"}, {16777217.0, "16777216"},
                       {7.25, "7.25"}, {-0.0, "0"}};
    for (const char* format : {"USA", "Europe"}) {
        design.identity.Number_Format = format;
        for (const auto& row : cases) {
            design.cam.Prime_Rad = row.value;
            EXPECT_EQ(Get("Prime_Rad"), row.shown) << format;
        }
    }
}

TEST_F(Directory, a_double_shows_its_53_bits)
{
    design.dynamics.Torque_Velocity_Limit = 0.1;
    EXPECT_EQ(Get("Torque_Velocity_Limit"), "0.1");
}

TEST_F(Directory, elements_of_arrays_of_one_two_and_three_indices)
{
    design.motion.Beta_Deg(2) = 90.0;
    EXPECT_EQ(Get("Beta_Deg(2)"), "90");
    design.motion.S_boundary_cond(1, 0) = "2.5";
    EXPECT_EQ(Get("s BOUNDARY cond( 1 , 0 )"), "2.5");
    design.motion.Firstlast(3, 1, 2) = -4.0;
    EXPECT_EQ(Get("Firstlast(3, 1, 2)"), "-4");
    EXPECT_EQ(Get("  Firstlast(3,1,2)  "), "-4");
    design.results.CalcData(53, 360) = 1.5;
    EXPECT_EQ(Get("CalcData(53, 360)"), "1.5");
}

TEST_F(Directory, an_integer_shows_its_ends)
{
    design.dynamics.Ode_Max_Steps = static_cast<Long>(-2147483648LL);
    EXPECT_EQ(Get("Ode_Max_Steps"), "-2147483648");
    Fill(Known("Printstep"), {}, -32768.0);
    EXPECT_EQ(Get("Printstep"), "-32768");
    Fill(Known("Printstep"), {}, 32767.0);
    EXPECT_EQ(Get("Printstep"), "32767");
}

// ---- refusals

TEST_F(Directory, an_unknown_field_is_refused)
{
    for (const char* name : {"", "Nothing", "Beta", "Beta_Deg2", "(1)", "Prime_Rad "}) {
        const Field_Reference r = Read_Field_Reference(design, name);
        if (std::string(name) == "Prime_Rad ")
            EXPECT_NE(r.field, nullptr);  // blanks around a name are nothing
        else
            EXPECT_EQ(r.field, nullptr) << name;
    }
    EXPECT_EQ(Find_Field("Nothing"), nullptr);
    EXPECT_NE(Read_Field_Reference(design, "Nothing").error.find("Nothing"), std::string::npos);
}

TEST_F(Directory, a_wrong_index_is_refused)
{
    for (const char* text :
         {"Beta_Deg(21)", "Beta_Deg(-1)", "Beta_Deg()", "Beta_Deg(1", "Beta_Deg(1, 2)", "Beta_Deg(x)", "Beta_Deg(1.5)",
          "Beta_Deg(1)x", "Beta_Deg(99999999999)", "T boundary cond(1, 0)", "T boundary cond(1)", "Firstlast(1, 1)",
          "Firstlast(1, 1, 4)", "Firstlast(1, 1, 1, 1)", "Prime_Rad(0)", "Mass_m(0)", "Mass_m(3)", "CalcData(54, 0)",
          "CalcData(0, 361)"}) {
        const Field_Reference r = Read_Field_Reference(design, text);
        EXPECT_EQ(r.field, nullptr) << text;
        EXPECT_FALSE(r.error.empty()) << text;
    }
}

TEST_F(Directory, an_array_can_be_named_whole)
{
    EXPECT_NE(Read_Field_Reference(design, "Beta_Deg").field, nullptr);
}

TEST_F(Directory, an_index_out_of_bounds_faults_when_it_is_handed_in_whole)
{
    EXPECT_THROW(Field_Value(design, Known("Beta_Deg"), At({21})), Fault);
}

// ---- names, labels, units, elements

TEST_F(Directory, names_of_elements)
{
    EXPECT_EQ(Field_Name(Known("prime_rad"), At({})), "Prime_Rad");
    EXPECT_EQ(Field_Name(Known("Beta_Deg"), At({2})), "Beta_Deg(2)");
    EXPECT_EQ(Field_Name(Known("S boundary cond"), At({1, 0})), "S boundary cond(1, 0)");
    EXPECT_EQ(Field_Name(Known("Firstlast"), At({3, 1, 2})), "Firstlast(3, 1, 2)");
}

TEST_F(Directory, labels_of_the_model_file)
{
    struct {
        const char* name;
        Field_Index index;
        const char* label;
    } const cases[] = {
        {"User", At({}), "User"},
        {"Design No.", At({}), "Design No."},
        {"Camtype$", At({}), "Camtype$"},
        {"Base_Shift", At({1}), "Segment 1 Base_Shift"},
        {"Rise_Fall_Dwell", At({20}), "Segment 20 Rise_Fall_Dwell"},
        {"Program", At({2}), "Segment 2 Program"},
        {"Function", At({2}), "Segment 2 Function"},
        {"Total_Displacement", At({2}), "Segment 2 Total_Displacement"},
        {"Shift", At({2}), "Segment 2 Shift"},
        {"Gamma", At({2}), "Segment 2 Gamma"},
        {"Beta_Deg", At({2}), "Segment 2 Beta_Deg"},
        {"Beta_Rad", At({2}), "Segment 2 Beta_Rad"},
        {"Start Value", At({2}), "Segment 2 Start Value"},
        {"End Value", At({2}), "Segment 2 End Value"},
        {"Thetanorm", At({40, 3}), "Thetanorm 40, for segment 3"},
        {"Boundary", At({1, 3}), "Boundary 1, for segment 3"},
        {"Equation", At({1, 3}), "Equation 1, for segment 3"},
        {"Coefficient", At({1, 3}), "Coefficient 1, for segment 3"},
        {"Pow", At({1, 3}), "Pow 1, for segment 3"},
        {"Firstlast", At({3, 1, 2}), "Firstlast 3, 1, 2"},
        {"Total No of BCs", At({4}), "Total No of BCs 4"},
        {"Theta_Normalized", At({5, 4}), "Theta_Normalized 5, for segment 4"},
        {"Eq", At({5, 4}), "Eq 5, for segment 4"},
        {"BC", At({5, 4}), "BC 5, for segment 4"},
        {"Power", At({5, 4}), "Power 5, for segment 4"},
        {"Polydone", At({7}), "Polydone for segment (7)"},
        {"No of conditions", At({7}), "No of conditions for segment (7)"},
        {"T boundary cond", At({7, 8}), "T boundary cond for segment 7 at angle 8"},
        {"S boundary cond", At({7, 0}), "S boundary cond for segment 7 at angle 0"},
        {"V boundary cond", At({7, 9}), "V boundary cond for segment 7 at angle 9"},
        {"A boundary cond", At({7, 9}), "A boundary cond for segment 7 at angle 9"},
        {"J boundary cond", At({7, 9}), "J boundary cond for segment 7 at angle 9"},
        {"Seg_Program", At({7}), "Seg_Program( 7, 10)"},  // the 10 stands in every record
        {"Splines_Calculated", At({2}), "Splines_Calculated 2"},
        {"EvenKnots", At({2}), "EvenKnots 2"},
        {"Orders", At({2}), "Orders 2"},
        {"Number_of_Knots", At({2}), "Number_of_Knots 2"},
        {"Interior_Knots", At({2}), "Interior_Knots 2"},
        {"Knots", At({66, 2}), "Knots( 66, 2)"},
        {"Pbound", At({2, 9}), "Pbound( 2, 9)"},
        {"Constraints", At({40, 3}), "Constraints( 40, 3)"},
        {"Mass_m", At({1}), "Mass_m (1)"},
        {"Kspring", At({2}), "Kspring (2)"},
        {"Zeta", At({2}), "Zeta (2)"},
        {"Full_Half", At({2}), "Full_Half (2)"},
        {"Which_half", At({2}), "Which_half (2)"},
        {"Young's modulus", At({1}), "Young's modulus (1)"},
        {"Poissons' ratio", At({2}), "Poissons' ratio (2)"},
        {"Mass of link", At({6}), "Mass of link  6"},  // two blanks
        {"Inertia of link", At({2}), "Inertia of link  2"},
        {"CGx of link", At({2}), "CGx of link  2"},
        {"CGy of link", At({2}), "CGy of link  2"},
    };
    for (const auto& row : cases)
        EXPECT_EQ(Field_Label(Known(row.name), row.index), row.label);
}

TEST_F(Directory, units_follow_the_system_and_the_follower)
{
    EXPECT_EQ(Unit_Text(design, Known("Prime_Rad").unit), "mm");
    EXPECT_EQ(Unit_Text(design, Known("Lift").unit), "mm");
    EXPECT_EQ(Unit_Text(design, Known("Mass").unit), "kg");
    EXPECT_EQ(Unit_Text(design, Known("Preload").unit), "N");
    EXPECT_EQ(Unit_Text(design, Known("Young's modulus").unit), "MPa");
    EXPECT_EQ(Unit_Text(design, Known("Return_Spring_Rate").unit), "N/m");  // 4.448222/0.0254 of a lb/in, in mm too
    EXPECT_EQ(Unit_Text(design, Known("Beta_Deg").unit), "deg");
    EXPECT_EQ(Unit_Text(design, Known("Beta_Rad").unit), "rad");
    EXPECT_EQ(Unit_Text(design, Known("Shaft speed").unit), "rad/s");
    EXPECT_EQ(Unit_Text(design, Known("User").unit), "");

    design.cam.Translating = false;
    EXPECT_EQ(Unit_Text(design, Known("Lift").unit), "deg");
    EXPECT_EQ(Unit_Text(design, Known("Prime_Rad").unit), "mm");

    design.identity.WhichUnit = 1;
    EXPECT_EQ(Unit_Text(design, Known("Prime_Rad").unit), "in");
    EXPECT_EQ(Unit_Text(design, Known("Mass").unit), "bl");
    EXPECT_EQ(Unit_Text(design, Known("Young's modulus").unit), "psi");
    EXPECT_EQ(Unit_Text(design, Known("Return_Spring_Rate").unit), "lb/in");
}

TEST_F(Directory, Each_Element_visits_every_element_once_in_order)
{
    std::vector<std::string> visited;
    const auto visit = [&](const Field& field) {
        visited.clear();
        Each_Element(design, field, [&](const Field_Index& index) { visited.push_back(Field_Name(field, index)); });
    };
    visit(Known("Prime_Rad"));
    EXPECT_EQ(visited, (std::vector<std::string>{"Prime_Rad"}));
    visit(Known("Mass_m"));
    EXPECT_EQ(visited, (std::vector<std::string>{"Mass_m(1)", "Mass_m(2)"}));
    visit(Known("T boundary cond"));
    ASSERT_EQ(visited.size(), 21U * 9U);
    EXPECT_EQ(visited.front(), "T boundary cond(0, 1)");
    EXPECT_EQ(visited[1], "T boundary cond(0, 2)");
    EXPECT_EQ(visited.back(), "T boundary cond(20, 9)");
    visit(Known("Firstlast"));
    EXPECT_EQ(visited.size(), 21U * 3U * 4U);
    visit(Known("CalcData"));
    EXPECT_EQ(visited.size(), 54U * 361U);
}

}  // namespace
}  // namespace lobemax
