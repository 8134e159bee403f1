#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Writes designs.txt: the designs of the golden test and the command lines run on each.

The choice is random once, by a fixed seed, and then stays: golden.py reads only designs.txt. A run of this
script that changes designs.txt asks for a new reference.
"""

import os
import random
import shlex

LAWS = ["MS", "MT", "CF", "C1", "C2", "SF", "S1", "S2", "DH", "45", "56", "67", "11",
        "BD", "BE", "DU", "ST", "TH", "FR", "GU"]
EXAMPLES = ["Single Dwell", "Double Dwell", "Flat Follower", "Four Dwell", "Oscillating",
            "4-bar Linkage", "6-bar Linkage", "4-bar Slider", "6-bar Slider"]
UNIT = {1: 1.0, 2: 1 / 12, 3: 1 / 40, 4: 2.5, 5: 25.0}  # a round inch in each unit system

TABLES = ["1,2,3,4", "S,V,A,J", "5,6,17", "Phi,Rho,F-kin,T", "9,10,11,12", "13,14,34,35", "36,37,38,39",
          "40,41,46,47", "15,16,45", "42,43", "Ext Force,1", "displcmnt,VELOCITY,Frict Trq", "29,30", "7"]
# Centimetres have no steel of their own.
STEEL_CM = ["--cam-e", "2.07E7", "--cam-nu", "0.28", "--follower-e", "2.07E7", "--follower-nu", "0.28"]
PLOTS = [["--vars", "1"], ["--vars", "1,2,3,4"], ["--vars", "5,6", "--style", "2"],
         ["--vars", "1,7,2,8", "--style", "3"], ["--vars", "54", "--style", "4"],
         ["--vars", "54,57,59", "--style", "4"], ["--vars", "1", "--style", "4"],
         ["--preset", "Displacement and Velocity"], ["--preset", "Pressure Angle and Radius of Curvature"],
         ["--preset", "Cam Profile: X-Y cam follower coordinates versus Machine Zero"],
         ["--preset", "Displacement, Force, Velocity, Torque", "--size", "700x500"],
         ["--vars", "3", "--segment", "1"], ["--vars", "15,16,45"], ["--vars", "36,37", "--style", "2"],
         ["--preset", "Stresses: Normal and shear stress in cam and follower"]]
DRAWS = [[], ["--at", "90"], ["--path", "follower"], ["--conjugate"], ["--path", "cutter"], ["--at", "237.3"],
         ["--path", "machine"], ["--at", "45", "--conjugate"], ["--size", "500x400"],
         ["--path", "machine", "--conjugate"]]
TRANSFORMS = [["--var", "1"], ["--var", "3", "--harmonics", "40"], ["--var", "T"], ["--var", "F-kin"],
              ["--var", "2", "--segment", "1"], ["--var", "J", "--harmonics", "8"], ["--var", "5"]]
FIELDS = ["Shift", "Gamma", "Beta_Rad", "Total_Displacement", "Base_Shift", "Firstlast", "Liftmax", "Max_Pos_Disp",
          "Max_Neg_Disp", "Continuous", "Max_Jump", "Arm_Pivot_Dist", "Arm_Start_Angle", "Arm_Cam_Angle",
          "Arm_Pivot_Angle", "Arm_Start_Radius", "Arm_Start_Theta", "Arm_Work_Angle", "Rho_Max_Pos", "Rho_Min_Pos",
          "Rho_Max_Neg", "Rho_Min_Neg", "Rho_Smallest", "Base_Circle", "Shift_Points", "Cam_Shift_Angle", "In_Out",
          "Top_Bot", "Omega_N", "Omega_D", "Critical_Damping", "Damping", "Torque_Integral_Max", "Torque_Integral_Min",
          "Follower_Weight", "Young's modulus", "Poissons' ratio", "Decimals_1", "Decimals_6", "Var_Name", "Var_Unit",
          "Ext_Force_On", "Ext_Force_Calc", "Separated", "Coefficient", "Knots", "CalcData(1, 77)", "CalcData(6, 31)",
          "CalcData(8, 120)"]
ALL_FIELDS = (
    "User|Design No.|Date|Time|Model_Name|File_Name|Program_Name|Version_Str|Release_Str|Release_Date|Release_Year|"
    "Number_Format|WhichUnit|Decimals_1|Decimals_2|Decimals_3|Decimals_4|Decimals_5|Decimals_6|No of segments|Seg|"
    "Deltatheta|Max Data Points used|Shaft speed|Shaft_Speed_Sq|Shaft_Speed_Cu|Time Base|Base_Shift|Rise_Fall_Dwell|"
    "Program|Function|Total_Displacement|Shift|Gamma|Beta_Deg|Beta_Rad|Start Value|End Value|Thetanorm|Boundary|"
    "Equation|Coefficient|Pow|Firstlast|Total No of BCs|Theta_Normalized|Eq|BC|Power|Polydone|No of conditions|"
    "No_Conditions|T boundary cond|S boundary cond|V boundary cond|A boundary cond|J boundary cond|Pbound|"
    "Seg_Program|Full_Half|Which_half|Seg_Done|Poly_OK|Poly_Lift_Fix|Start_theta|End_theta|Splines_Calculated|"
    "EvenKnots|Orders|Number_of_Knots|Interior_Knots|Knots|Constraints|Lift|Liftmax|MaxLift|Max_Pos_Disp|"
    "Max_Neg_Disp|Motion|Ext_Force_On|Continuous|Max_Jump|Jump_Limit|Fft_Points|Fft_Half|No_Harmonics|Camtype$|"
    "Barrel_Type$|Followtype|Translating|Closure$|Rotflag|ArmDirect|ArmX|ArmY|ArmRad|Prime_Rad|Offset|Follow_Rad|"
    "Face_Width|Cutter Radius|Follower_Angle|Keyway_Clockangle|Keyway_Text|Shift_Angle|Shift_Points|In_Out|Top_Bot|"
    "Versus_Keyway|Zoom Factor|Printstep|Arm_Pivot_Dist|Arm_Start_Angle|Arm_Cam_Angle|Arm_Pivot_Angle|"
    "Arm_Start_Radius|Arm_Start_Theta|Arm_Start_X|Arm_Start_Y|Arm_Work_Angle|Phi_Max|Phi_Max_Angle|Phi_Min|"
    "Phi_Min_Angle|Rho_Max_Pos|Rho_Max_Pos_Angle|Rho_Max_Pos_Text|Rho_Min_Pos|Rho_Min_Pos_Angle|Rho_Min_Pos_Text|"
    "Rho_Max_Neg|Rho_Max_Neg_Angle|Rho_Max_Neg_Text|Rho_Min_Neg|Rho_Min_Neg_Angle|Rho_Min_Neg_Text|Rho_Smallest|"
    "Cam_Shift_Angle|Cam_Draw_Angle|Cam_Shift_Sign_Angle|Conjugate|Side_Sign|View_Left|View_Right|Base_Circle|"
    "Shaft_Radius|Show_Follower_Path|Show_Cutter_Path|Show_Cam_Key|Show_Surface|Show_Prime|Path_Step|Anim_Step|"
    "Anim_Wait|Mass|Return_Spring_Rate|Preload|Zeta_Initial|Damping|Bearing Radius|Mu of Shaft|Mu of Follower|"
    "Coeff of Fluctuation|Follower_Weight|Torque_Start_Fresh|Ext_Force_Add|Omega_N|Critical_Damping|Omega_D|"
    "Torque_Integral_Max|Torque_Integral_Min|Model_Type|Mass_m|Kspring|Zeta|Omega_Sq|Omega|Crit_Damping|Damping_C|"
    "Freq_Ratio|Gamma_Ratio|Follower_Stiffness|x-Initial|Ode_Max_Steps|Ode_Save_Interval|Ode_Count|Comp_Mass|"
    "Comp_Spring_Rate|Comp_Preload|Torque_Velocity_Limit|Young's modulus|Poissons' ratio|Roller type|Crown radius|"
    "Roller length|Links|Linkage_Type|Linkage_Kind|Stage_Mode|Theta1|Link 1|Link 2|Link 3|Link 4|Link 4a|Delta4|"
    "Link 5|Link 6|S3x|S3y|Delta2|O4x|O4y|O6x|O6y|O4D|Global_Slider_angle_deg|Offset6|Assemflag1|Assemflag2|"
    "Drive_End_Effector|Mass of link|Inertia of link|CGx of link|CGy of link|Stiffness of link|Var_Name|Var_Short|"
    "Var_Symbol|Var_Long|Var_Unit|Idx_X|Idx_Xdot|Idx_Xddot|Idx_SX|Plot_Style|Plot_Vars|Num_Sets|Segment_Pick|"
    "Plot_First|Plot_Last|Plot_Color|Calculated|Sized|Dynamicflag|Modelflag|Stressflag|Polydyne_Calc|Ext_Force_Calc|"
    "CompCam_Calc|Linkage_Calc|FFT_Done|From_Disk|Imported_Model|Model_Saved|Calc_Abort|Calc_Error|Math_Error|"
    "Separated|Separation_Answer|Example_Loaded|File_Loaded|Units_Changed|Saved Variables|Max Variables|"
    "Max Segments possible|Max Bounds possible|File_Version|File_Release|File_Max_Variables|File_Max_Segments|"
    "File_Max_Bounds|File_Saved_Variables|Read_Abort|Read_Partial|Read_Complete|CalcData|Profile_X|Profile_Y|"
    "Fft_Work_A|Fft_Work_B|Ext_Force_Table|Arm_Pivot_X|Arm_Pivot_Y|Link_Theta|Link_Omega|Link_Alpha|Link_Ratio_S|"
    "Link_Ratio_V|Link_Ratio_A|Ode_Time|Ode_States"
).split("|")
INPUT_FIELDS = ALL_FIELDS[:ALL_FIELDS.index("CalcData")]  # those that follow are the large tables of results

designs = []  # (name, [command line])


def number(value):
    return format(value, ".4g")


def sets(settings):
    words = []
    for field, value in settings.items():
        words += ["--set", f"{field}={value}"]
    return words


def outputs(n, full, oscillating, units):
    """What is asked of the calculated design t.cam, the n-th: the lists turn at different speeds."""
    shows = [["show", "t.cam"], ["show", "t.cam", "--json"]]
    lines = shows if full else [shows[n % 2]]
    table = ["table", "t.cam", "--vars", TABLES[n % len(TABLES)]]
    table += [[], ["--step", "7"], ["--segment", "1"], ["--decimals", "3"], ["--step", "45", "--decimals", "0"],
              ["-o", "table.txt"]][n % 6]
    lines.append(table)
    lines.append(["export", "t.cam", "spreadsheet", "-o", "spreadsheet.txt"])
    codes = [1 + n % 5, 1 + (n + 2) % 5] if full else [1 + n % 5]
    lines += [["export", "t.cam", "profile", "--code", str(c), "--even-if-wrong", "-o", f"profile{c}.txt"] for c in codes]
    if oscillating or n % 27 == 0:
        kinds = ["sva", "xdot"] if full else [["sva", "xdot"][n % 2]]
        lines += [["export", "t.cam", kind, "-o", f"{kind}.txt"] for kind in kinds]
    if full or n % 3 == 0:
        lines.append(["fft", "t.cam", "-o", "fft.cam"] + TRANSFORMS[n % len(TRANSFORMS)])
        if n % 4 == 0:
            lines.append(["table", "fft.cam", "--vars", "18,19,20,21", "--step", "30"])
        form = ["8", "7.2", "9"][n % 3]
        lines.append(["convert", "t.cam", "-o", f"format{form}.cam", "--format", form])
        if form != "9":
            lines.append(["calc", f"format{form}.cam", "-o", "again.cam"])
    if full or n % 3 == 1:
        other = 1 + (units + n) % 5
        lines.append(["convert", "t.cam", "-o", f"units{other}.cam", "--units", str(other)])
        if n % 2 == 0:
            lines.append(["calc", f"units{other}.cam", "-o", "recalculated.cam"])
    if full or n % 3 == 2:
        lines.append(["plot", "t.cam", "-o", "plot.svg"] + PLOTS[n % len(PLOTS)])
        lines.append(["draw", "t.cam", "-o", "draw.svg"] + DRAWS[n % len(DRAWS)])
    if full and n % 2 == 0:
        lines.append(["show", "t.cam"] + (INPUT_FIELDS if n % 10 == 0 else FIELDS))
    return lines


def examples():
    n = 0
    for name in EXAMPLES:
        for units in range(1, 6):
            short = name.lower().replace(" ", "-")
            lines = [["example", name, "-o", "e.cam", "--units", str(units)],
                     ["calc", "e.cam", "-o", "t.cam", "--levels", "svaj,size,dynamics,stress"]
                     + (STEEL_CM if units == 4 and n > 5 else [])]
            designs.append((f"{short}-{units}", lines + outputs(n, False, name not in EXAMPLES[:4], units)))
            n += 1


def betas(rng, count, delta):
    """count angles that make 360 degrees, each at least 20, on the grid of the step."""
    grid = rng.choice([5.0, 1.0, max(delta, 0.25)])
    while True:
        cuts = sorted(rng.sample(range(1, int(360 / grid)), count - 1))
        angles = [(b - a) * grid for a, b in zip([0] + cuts, cuts + [int(360 / grid)])]
        if min(angles) >= 20:
            return angles


def segments(rng, laws, scale, delta, kinds):
    """Rises, falls and dwells that come back to where they start. kinds: extra segments by conditions, P or S."""
    moves = rng.choice([2, 2, 4]) if not kinds else 2
    dwells = [rng.random() < 0.6 for _ in range(moves)]
    angles = betas(rng, moves + sum(dwells), delta)
    lift = round(scale * rng.uniform(0.4, 1.3), 3)
    levels = {2: [0, lift, 0], 4: [0, lift, round(lift * 0.4, 3), round(lift * 1.2, 3), 0]}[moves]
    words, conditions, at = [], [], 0
    for m in range(moves):
        start, end, beta = levels[m], levels[m + 1], angles[at]
        at += 1
        n = len(words) + 1
        kind = kinds.pop(0) if kinds else ("R" if end > start else "F")
        if kind == "P":
            words.append(f"P PO {beta:g} {start:g} {end:g}")
            orders = rng.choice([[1, 2], [1, 2, 3], [1], [1, 2, 3, 4]])
            conditions += [["--bc", f"{n} {place:g} {order} 0"] for place in (0, beta) for order in orders]
            if rng.random() < 0.6:
                conditions.append(["--bc", f"{n} {round(beta * 0.45, 1):g} 0 {round((start + end) * 0.47, 3):g}"])
            if rng.random() < 0.3:
                conditions.append(["--bc", f"{n} {round(beta * 0.6, 1):g} 1 {round((end - start) * 0.9, 3):g}"])
        elif kind == "S":
            words.append(f"S BS {beta:g} {start:g} {end:g}")
            conditions += [["--bc", f"{n} {place:g} {order} 0"] for place in (0, beta) for order in (1, 2)]
            third, two_thirds = round(beta / 3, 1), round(2 * beta / 3, 1)
            conditions.append(["--bc", f"{n} {third:g} 0 {round(start + (end - start) * 0.22, 3):g}"])
            conditions.append(["--bc", f"{n} {two_thirds:g} 0 {round(start + (end - start) * 0.79, 3):g}"])
            order = rng.choice([4, 5, 6, 7])
            if order != 4:
                conditions.append(["--order", f"{n} {order}"])
            if order == 6 and rng.random() < 0.8:
                conditions.append(["--knots", f"{n} {round(beta * 0.4, 1):g} {round(beta * 0.7, 1):g}"])
        else:
            words.append(f"{kind} {laws.pop(0)} {beta:g} {start:g} {end:g}")
        if dwells[m]:
            words.append(f"D DW {angles[at]:g} {end:g} {end:g}")
            at += 1
    return words, [word for pair in conditions for word in pair]


def geometry(rng, n, scale, oscillating):
    """Sizes that a cam of this lift can have, and the choices of the sizing and dynamics screens by turns."""
    cam = ["Radial", "Radial", "Radial", "Barrel", "Radial", "Linear", "Radial", "Barrel"][n % 8]
    flat = cam == "Radial" and n % 5 == 1
    prime = scale * rng.uniform(2.5, 5)
    s = {"Camtype$": cam}
    if cam == "Barrel":
        s["Barrel_Type$"] = ["Grooved", "Ribbed"][n // 8 % 2]
    s["Prime_Rad"] = number(prime)
    s["Follow_Rad"] = number(scale * rng.uniform(0.3, 0.9))
    s["Cutter Radius"] = number(scale * rng.uniform(0.2, 1.2))
    s["Followtype"] = 2 if flat else 1
    s["Rotflag"] = [-1, 1][(n // 4 + n // 16) % 2]
    if oscillating:
        arm = prime * rng.uniform(1.2, 1.8)
        reach = rng.uniform(0.25, 0.8)
        distance = (arm * arm + prime * prime + 2 * arm * prime * (reach - 0.5)) ** 0.5
        s["ArmX"] = number(distance * 0.8)
        s["ArmY"] = number(distance * 0.6 * (-1 if n % 3 == 2 else 1))
        s["ArmRad"] = number(arm)
        s["ArmDirect"] = [1, -1][n // 2 % 2]
    elif not flat:
        s["Offset"] = number(scale * rng.uniform(-0.8, 0.8)) if n % 3 else "0"
        if n % 4 == 2:
            s["Follower_Angle"] = rng.choice([30, -45, 90, 137.5])
    if n % 3 == 0:
        s["Closure$"] = "Force" if s.get("Followtype") == 2 else "Form"  # a flat face is closed by a spring
        s["In_Out"] = rng.choice([-1, 1])
        s["Top_Bot"] = rng.choice([-1, 1])
    else:
        s["Preload"] = number(rng.uniform(20, 300))
    if n % 4 == 1:
        s["Shift_Angle"] = rng.choice([15, 90, -30, 222.5])
        s["Keyway_Text"] = rng.choice(["3 O'clock", "6 O'clock", "9 O'clock"])
    s["Time Base"] = [1, 1, 2, 3][n % 4]
    s["Zeta_Initial"] = number(rng.uniform(0.02, 0.2))
    s["Mu of Follower"] = number(rng.uniform(0, 0.2))
    s["Mu of Shaft"] = number(rng.uniform(0, 0.1))
    s["Bearing Radius"] = number(scale * rng.uniform(0.2, 0.6))
    s["Face_Width"] = number(scale * rng.uniform(0.4, 1))
    s["Roller length"] = number(scale * rng.uniform(0.4, 1))
    if n % 5 == 3:
        s["Roller type"] = 2
        s["Crown radius"] = number(scale * rng.uniform(8, 20))
    if n % 6 == 5:
        s["Printstep"] = rng.choice([2, 5, 30])
        s["Zoom Factor"] = rng.choice(["0.5", "2"])
    return s


def random_designs():
    rng = random.Random(20261121)
    laws = []
    for n in range(62):
        while len(laws) < 4:
            laws += rng.sample(LAWS, len(LAWS))
        units = 1 + n % 5
        oscillating = n % 3 == 1
        scale = UNIT[units]
        delta = {7: "0.125", 33: "0.125", 20: "0.25", 46: "0.25"}.get(n, "0.50" if n % 9 == 4 else "1.0")
        kinds = [["P"], ["S"], ["P", "S"], ["S", "P"]][n // 4 % 4] if n % 4 == 3 else []
        words, conditions = segments(rng, laws, rng.uniform(5, 20) if oscillating else scale, float(delta), kinds)
        new = ["new", "-o", "n.cam", "--units", str(units)]
        if delta != "1.0":
            new += ["--delta", delta]
        new += rng.choice([["--rpm", number(rng.uniform(30, 400))], ["--omega", number(rng.uniform(2, 40))]])
        if oscillating:
            new.append("--oscillating")
        new += words + conditions + sets(geometry(rng, n, scale, oscillating))
        lines = [new]
        stress = ["calc", "d.cam", "-o", "t.cam", "--levels", "stress"]
        if units == 4 and n != 8:
            stress += STEEL_CM
        elif n % 3 == 2:
            stress += ["--cam-nu", "0.31", "--follower-nu", "0.27"]
        external = n % 7 == 2
        source = "n.cam"
        if external:  # the table is calculated as an external force first, then as motion
            lines.append(["calc", "n.cam", "-o", "f.cam", "--levels", "svaj", "--set", "Motion=false",
                          "--set", "Ext_Force_On=-1"])
            source = "f.cam"
        dynamics = ["calc", "z.cam", "-o", "d.cam", "--levels", "dynamics"]
        lines += [["calc", source, "-o", "s.cam", "--levels", "svaj"],
                  ["calc", "s.cam", "-o", "z.cam", "--levels", "size"],
                  dynamics + (["--external-force"] if external else []), stress]
        if n % 10 == 6:
            lines.append(["calc", "d.cam", "-o", "twice.cam", "--levels", "dynamics", "--accumulate"])
        fine = delta in ("0.125", "0.25")
        designs.append((f"random-{n:02d}", lines + outputs(n + n // 15, not fine and n % 3 != 0, oscillating, units)))


def all_laws():
    """One design a law, so that a law's change shows under its own name."""
    for law in LAWS:
        lines = [["new", "-o", "n.cam", "--rpm", "100", f"R {law} 100 0 20", "D DW 60 20 20", f"F {law} 120 20 0",
                  "D DW 80 0 0"],
                 ["calc", "n.cam", "-o", "s.cam", "--levels", "svaj"],
                 ["table", "s.cam", "--vars", "1,2,3,4", "--step", "5"]]
        designs.append((f"law-{law}", lines))


def number_formats():
    base = ["new", "-o", "n.cam", "--rpm", "90", "R MS 120 0 12.5", "F 45 120 12.5 0", "D DW 120 0 0"]
    whole = ["new", "-o", "n.cam", "--rpm", "90", "R MS 120 0 12", "F 45 120 12 0", "D DW 120 0 0"]
    comma = sets({"End Value(1)": "12,5", "Start Value(2)": "12,5"})
    levels = ["--levels", "svaj,size,dynamics,stress"]
    europe = ["--set", "Number_Format=Europe"]
    for name, first, calculation in [("europe-whole", whole + europe, levels),
                                     ("europe-comma", whole, levels + europe + comma),
                                     ("europe-cut-point", base, levels + europe),
                                     ("usa-cut-comma", base, levels + comma)]:
        designs.append((name, [first, ["calc", "n.cam", "-o", "t.cam"] + calculation]
                        + outputs(len(designs), True, False, 5)))


def stored_models():
    """The test data: models in which every field has a value of its own."""
    for form in ("9", "8", "72"):
        model = f"data/every_field_distinct_{form}.cam"
        fields = ALL_FIELDS if form == "9" else INPUT_FIELDS
        lines = [["show", model], ["show", model, "--json"], ["show", model] + fields]
        lines += [["convert", model, "-o", f"format{f}.cam", "--format", f] for f in ("9", "8", "7.2")]
        for units in range(1, 6):
            lines += [["convert", model, "-o", f"units{units}.cam", "--units", str(units)],
                      ["show", f"units{units}.cam"] + INPUT_FIELDS]
        lines += [["calc", model, "-o", "again.cam"], ["export", model, "spreadsheet", "-o", "spreadsheet.txt"]]
        designs.append((f"stored-{form}", lines))


def answers_and_flags():
    base = ["new", "-o", "n.cam", "--rpm", "900", "R C1 90 0 20", "D DW 90 20 20", "F SF 90 20 0", "D DW 90 0 0"]
    lines = [base,
             ["calc", "n.cam", "-o", "t.cam"],
             ["calc", "n.cam", "-o", "no.cam", "--answer", "no"],
             ["calc", "n.cam", "-o", "cancel.cam", "--answer", "cancel"],
             ["calc", "n.cam", "-o", "abort.cam", "--answer", "abort"],
             ["convert", "n.cam", "-o", "declined.cam", "--format", "8", "--answer", "no"],
             ["calc", "n.cam", "-o", "heavy.cam", "--set", "Mass=40", "--set", "Preload=1"],
             ["calc", "n.cam", "-o", "heavyno.cam", "--set", "Mass=40", "--set", "Preload=1", "--answer", "no"],
             ["calc", "n.cam", "-o", "small.cam", "--set", "Follow_Rad=12", "--set", "Prime_Rad=8"],
             ["calc", "n.cam", "-o", "hollow.cam", "--set", "Follow_Rad=60", "--set", "Prime_Rad=20"],
             ["calc", "n.cam", "-o", "flat.cam", "--set", "Followtype=2", "--set", "Prime_Rad=15"],
             ["calc", "n.cam", "-o", "linear.cam", "--set", "Camtype$=Linear", "--set", "Followtype=2"],
             ["calc", "n.cam", "-o", "cutter.cam", "--set", "Cutter Radius=500"]]
    for name in ("heavy", "small", "hollow", "flat", "linear", "cutter"):
        lines.append(["show", f"{name}.cam"])
        lines.append(["draw", f"{name}.cam", "-o", f"{name}.svg", "--path", "cutter"])
    designs.append(("answers", lines))


def refusals():
    rows = ["R MS 90 0 25", "D DW 90 25 25", "F CF 90 25 0", "D DW 90 0 0"]
    polynomial = ["P PO 180 0 10", "F MS 180 10 0"]
    spline = ["S BS 180 0 10", "F MS 180 10 0"]
    new = ["new", "-o", "x.cam"]
    lines = [new + words for words in (
        [], ["R MS 90 0"], ["X MS 90 0 1"], ["R ZZ 90 0 1"], ["R DW 90 0 1"], ["D MS 90 0 0"], ["R MS x 0 1"],
        ["R MS 90 0 1mm"], ["D DW 90 5 6"], ["R MS 361 0 1"], ["R MS -1 0 1"], ["R MS 300 0 1", "F MS 90 1 0"],
        ["D DW 180 0 0"], ["R MS 90 0 1E40", "D DW 90 0 0"], ["D DW 10 0 0"] * 21, ["D DW 18 0 0"] * 20,
        ["--delta", "0.3", "D DW 360 0 0"], ["--rpm", "fast", "D DW 360 0 0"], ["--rpm", "0", "D DW 360 0 0"],
        ["--rpm", "1E39", "D DW 360 0 0"], ["--rpm", "1", "--omega", "1", "D DW 360 0 0"],
        ["--units", "6", "D DW 360 0 0"], polynomial + ["--bc", "2 0 1 0"], polynomial + ["--bc", "1 0 1"],
        polynomial + ["--bc", "1 x 1 0"], polynomial + ["--bc", "1 181 1 0"], polynomial + ["--bc", "1 0 5 0"],
        polynomial + ["--bc", "1 0 1 1E40"], polynomial + ["--order", "1 6"], spline + ["--order", "1 99"],
        spline + ["--knots", "1 200"], spline + ["--bc", "1 60 0 2", "--knots", "1 10 20 30"])]
    lines.append(["new", "-o", "no/such/folder/x.cam"] + rows)
    lines += [["new", "-o", "n.cam", "--rpm", "120"] + rows, ["calc", "n.cam", "-o", "t.cam"]]
    lines += [["calc", "n.cam", "-o", "x.cam", "--set", setting] for setting in (
        "Nonsense=1", "Prime_Rad", "Prime_Rad=forty", "Prime_Rad(1)=4", "Beta_Deg(21)=4", "Beta_Deg(0)=4",
        "Beta_Deg(1)=400", "WhichUnit=6", "Camtype$=Conical", "Deltatheta=0.3", "Printstep=70000", "Prime_Rad=1E39",
        "Max Data Points used=9", "Rotflag=0", "Zoom Factor=0", "Program(1)=QQ", "Translating=maybe",
        "Beta_Deg(2)=0", "Prime_Rad=0", "Prime_Rad=-5", "Follow_Rad=0", "Mass=-1", "Shaft speed=0",
        "Return_Spring_Rate=1E38", "End Value(1)=", "No of segments=0", "No of segments=21", "Program(1)=PO")]
    lines += [["calc", "n.cam", "-o", "x.cam", "--levels", level] for level in (
        "size", "dynamics", "stress", "vibration", "", "svaj,,size")]
    lines += [["calc", "t.cam", "-o", "x.cam", "--levels", "stress"] + words for words in (
        ["--cam-e", "0"], ["--cam-e", "soft"], ["--cam-nu", "0.9"], ["--follower-nu", "-1"], ["--follower-e", "1E39"])]
    lines += [
        [], ["--version"], ["--help"], ["nonsense"], ["--answer", "perhaps", "show", "t.cam"],
        ["show", "missing.cam"], ["show", "."], ["show", "t.cam", "Nonsense"], ["show", "t.cam", "CalcData(5"],
        ["show", "t.cam", "CalcData(99, 1)"], ["show", "t.cam", "Beta_Deg(1)", "--json"],
        ["example", "Nonsense", "-o", "x.cam"], ["example", "single dwell", "-o", "y.cam"],
        ["example", "Single Dwell", "-o", "x.cam", "--set", "Prime_Rad=-3"],
        ["table", "t.cam", "--vars", "99"], ["table", "t.cam", "--vars", "1,2,3,4,5"],
        ["table", "t.cam", "--vars", "1", "--segment", "9"], ["table", "t.cam", "--vars", "1", "--step", "0"],
        ["table", "t.cam", "--vars", "1", "--decimals", "10"],
        ["fft", "t.cam", "-o", "x.cam", "--var", "0"], ["fft", "t.cam", "-o", "x.cam", "--var", "42"],
        ["fft", "n.cam", "-o", "x.cam", "--var", "1"], ["fft", "t.cam", "-o", "x.cam", "--var", "1", "--segment", "-1"],
        ["fft", "t.cam", "-o", "z.cam", "--var", "1", "--harmonics", "999"],
        ["fft", "t.cam", "-o", "x.cam", "--var", "1", "--harmonics", "0"],
        ["export", "n.cam", "spreadsheet", "-o", "x.txt"], ["export", "t.cam", "profile", "--code", "6", "-o", "x.txt"],
        ["export", "t.cam", "sva", "-o", "x.txt"], ["export", "t.cam", "nonsense", "-o", "x.txt"],
        ["plot", "t.cam", "-o", "x.svg"], ["plot", "t.cam", "-o", "x.bmp", "--vars", "1"],
        ["plot", "t.cam", "-o", "x.svg", "--vars", "42"],
        ["plot", "t.cam", "-o", "x.svg", "--vars", "1", "--style", "2"],
        ["plot", "t.cam", "-o", "x.svg", "--vars", "54"], ["plot", "t.cam", "-o", "x.svg", "--preset", "Nonsense"],
        ["plot", "t.cam", "-o", "x.svg", "--vars", "1", "--size", "9x9"],
        ["plot", "n.cam", "-o", "x.svg", "--vars", "1"],
        ["draw", "t.cam", "-o", "x.svg", "--at", "361"], ["draw", "n.cam", "-o", "x.svg"],
        ["draw", "t.cam", "-o", "x.svg", "--path", "nowhere"], ["draw", "t.cam", "-o", "x.txt"],
        ["convert", "missing.cam", "-o", "x.cam"], ["convert", "t.cam", "-o", "x.cam", "--format", "6"],
        ["convert", "t.cam", "-o", "x.cam", "--units", "0"]]
    lines += [[command, "--help"] for command in (
        "new", "example", "calc", "convert", "show", "fft", "table", "export", "plot", "draw")]
    designs.append(("refusals", lines))


def main():
    examples()
    random_designs()
    all_laws()
    number_formats()
    stored_models()
    answers_and_flags()
    refusals()
    with open(os.path.join(os.path.dirname(os.path.abspath(__file__)), "designs.txt"), "w", encoding="utf-8") as file:
        file.write("# Written by make_designs.py: a design's name, then its command lines, run in this order.\n")
        for name, lines in designs:
            file.write(f"\ndesign {name}\n")
            for words in lines:
                file.write(("  " + shlex.join(words)).rstrip() + "\n" if words else "  (nothing)\n")


if __name__ == "__main__":
    main()
