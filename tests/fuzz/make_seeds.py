#!/usr/bin/env python3
"""Writes the seeds of the fuzzers: tests/fuzz/make_seeds.py --cli BUILD/lobemax-cli

Models are made by lobemax-cli, thinned to every 15th point and to the lists that their segments need, so that a
mutation meets a field that counts, and put into the order of every format back to 6.
"""
import argparse
import pathlib
import re
import subprocess
import tempfile

HERE = pathlib.Path(__file__).parent
BOUNDS = 8       # elements kept of the lists of a polynomial
COARSENESS = 15  # points to one

RISE_FALL = ["R 67 90 0 20", "D DW 90 20 20", "F MS 90 20 0", "D DW 90 0 0"]
DESIGNS = {
    "translating": RISE_FALL,
    "arm": ["--oscillating", "R CF 120 0 15", "F MT 120 15 0", "D DW 120 0 0", "--set", "ArmX=90", "--set", "ArmY=30",
            "--set", "ArmRad=80"],
    "flat": ["R 45 180 0 10", "F 45 180 10 0", "--set", "Followtype=2", "--set", "Follow_Rad=0"],
    "barrel": RISE_FALL + ["--set", "Camtype=Barrel"],
    "polynomial": ["P PO 180 0 0", "D DW 180 0 0", "--bc", "1 0 1 0", "--bc", "1 0 2 0", "--bc", "1 90 0 20",
                   "--bc", "1 180 1 0", "--bc", "1 180 2 0"],
    "spline": ["S BS 180 0 0", "D DW 180 0 0", "--bc", "1 0 1 0", "--bc", "1 0 2 0", "--bc", "1 90 0 20",
               "--bc", "1 180 1 0", "--bc", "1 180 2 0", "--order", "1 5", "--knots", "1 60 120"],
}
SIZES = ["--set", "Prime_Rad=60", "--set", "Follow_Rad=12", "--set", "Cutter Radius=8", "--set", "Mass=1",
         "--set", "Return_Spring_Rate=10", "--set", "Preload=100", "--set", "Zeta_Initial=0.05",
         "--set", "Roller length=10"]


def records(cli, name, words):
    """The labels and values of a calculated design, its numbers of segments and points, and its table by rows."""
    with tempfile.TemporaryDirectory() as folder:
        path = folder + "/made.cam"
        stamp = ["--date", "1/1/2026", "--time", "12:00"]
        size = [word for word in SIZES if not (name == "flat" and word == "Follow_Rad=12")]
        size = [w for i, w in enumerate(size) if not (w == "--set" and (i + 1 == len(size) or size[i + 1] == "--set"))]
        subprocess.run([cli, "new", "-o", path, *words, *size, *stamp], check=True, stderr=subprocess.DEVNULL)
        for levels in ("svaj,size,dynamics,stress", "svaj,size,dynamics", "svaj,size", "svaj"):
            if subprocess.run([cli, "calc", path, "-o", path, "--levels", levels, *stamp],
                              stderr=subprocess.DEVNULL).returncode == 0:
                break
        lines = pathlib.Path(path).read_text().splitlines()
    pairs = []
    at = 5
    while not lines[at].startswith('"Last Labeled Item"'):
        label, value = re.match(r'"((?:[^"]|"")*)",(.*)', lines[at]).groups()
        pairs.append([label, value])
        at += 1
    values = [line for line in lines[at + 1:] if line != '""']
    segments = int(dict(pairs)["No of Segments"] if "No of Segments" in dict(pairs) else pairs[5][1])
    points = int(pairs[10][1])
    table = [values[i:i + points + 1] for i in range(0, len(values), points + 1)]
    return pairs, segments, [row[::COARSENESS] for row in table]


class Model:
    """The blocks of a model, thinned."""

    def __init__(self, pairs, segments, table):
        values = [value for _, value in pairs]
        self.at = 0
        self.values = values
        lists = segments + 1
        self.counts = self.take(11)
        self.segments = []
        for _ in range(segments):
            self.segments += self.take(11) + self.thin(5) + self.take(13) + self.thin(4)
        self.cam = self.take(27)
        self.cutter = self.take(1)
        self.conditions = []
        for _ in range(20):
            self.conditions.append(self.take(2 + 8 + 40))
        self.programs = self.take(20)[:lists]
        splines = 2
        for i in range(segments):
            count = int(self.conditions[i][1].strip('"') or 0)
            splines += 5 + count + int(values[self.at + splines + 2]) + 10
        constraints = 3 * int(self.conditions[segments][1].strip('"') or 0)
        self.splines = self.take(splines)
        self.constraints = self.take(constraints)
        self.masses = self.take(7)
        self.settings = self.take(2 + 2 * segments + 17)
        self.later = values[self.at:]
        self.short_conditions = [c[:2] + c[2:5] + c[10:30] for c in self.conditions[:lists]]
        self.conditions = self.conditions[:lists]
        self.table = table
        self.counts[6] = str(360 // (len(table[0]) - 1))
        self.counts[8] = str(lists)
        self.counts[9] = str(BOUNDS)
        self.counts[10] = str(len(table[0]) - 1)

    def take(self, count):
        taken = self.values[self.at:self.at + count]
        self.at += count
        return taken

    def thin(self, width):
        return self.take(40 * width)[:BOUNDS * width]

    def labelled(self, tag, release):
        """Formats 9, 8 and 7.2: labels are not looked at, so they are empty."""
        items = self.counts + self.segments + self.cam + self.cutter + sum(self.conditions, []) + self.programs
        items += self.splines + self.constraints + self.masses + self.settings
        if tag in ("9", "8"):
            items += self.later
        else:
            items += self.later[:6] + ['"Null"'] * 21
        linked = len(items) - 143 - 9 - 20 if tag == "8" else None
        bare = range(linked, linked + 20) if linked else ()
        lines = [f'"",{value}' if i not in bare else value for i, value in enumerate(items)]
        lines.append('"",""')
        for row in self.table:
            lines += row
        return self.head(tag, release) + lines + (['""'] * 2 if tag != "7.2" else [])

    @staticmethod
    def head(tag, release):
        return ['"LOBEMAX"', f'"{tag}"', f'"{release}"', '"Professional"', '"made.cam"']

    def bare(self, tag, release, rows, first_row, text_cutter, conditions, to_model_type, after):
        """Formats 6, 7.0 and 7.1: the table behind the segments."""
        counts = list(self.counts)
        counts[7] = str(rows)
        last = {"6": rows, "7.0": rows - (0 if release <= "1.3" else 6 if release >= "1.7" else 2)}.get(tag, rows - 6)
        items = counts + self.segments
        for v in range(first_row, last + 1):
            items += self.table[v] if v < len(self.table) else ["0"] * len(self.table[0])
        items += self.cam + (['"8"'] if text_cutter else self.cutter) + sum(conditions, []) + self.programs
        if to_model_type:
            points = len(self.table[0])
            items += self.splines
            for value in self.constraints:
                items += [value] + ["0"] * points
            items += self.masses
        if after:
            items += self.settings + ['"Null"'] * 42
        return self.head(tag, release) + items


def write(folder, name, lines):
    path = HERE / "seeds" / folder / name
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text("\n".join(lines) + "\n")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--cli", required=True)
    cli = parser.parse_args().cli
    for name, words in DESIGNS.items():
        model = Model(*records(cli, name, words))
        write("model", f"{name}_9", model.labelled("9", "9.0"))
        if name == "arm":
            write("recovery", "arm", ["USA", "/home/user/arm.cam", "5", "===="] + model.labelled("9", "9.0"))
            write("recovery", "older_without_units", ["Europe", "arm.cam", "===="] + model.labelled("9", "9.0"))
            write("recovery", "of_feet", ["USA", "", "2", "===="] + model.labelled("9", "9.0"))
        if name in ("translating", "polynomial", "spline"):
            write("model", f"{name}_8", model.labelled("8", "8.0"))
            write("model", f"{name}_72", model.labelled("7.2", "2.0"))
            write("model", f"{name}_75", model.labelled("7.5", "1.0"))
            full, short = model.conditions, model.short_conditions
            write("model", f"{name}_71", model.bare("7.1", "2.0", 59, 0, False, full, True, True))
            write("model", f"{name}_70", model.bare("7.0", "1.7", 59, 0, False, full, True, True))
            write("model", f"{name}_70_old", model.bare("7.0", "1.3", 50, 0, True, full, True, False))
            write("model", f"{name}_6", model.bare("6", "2.5", 50, 0, True, short, False, False))
        if name == "polynomial":
            write("recovery", "cut", ["USA", "a.cam", "5", "===="] + model.labelled("9", "9.0")[:-400])
    write("recovery", "no_model", ["USA", "a.cam", "5", "===="])

    preferences = ['"Unit Code =  ",5', '"Format  ","USA"', '"Cam Type  ","Radial"', '"Follower  ",1',
                   '"Translating   ",#TRUE#', '"Full Screen   ",#FALSE#', '"Open Clicked File Flag ",#TRUE#',
                   '"Aspect Ratio Correction Flag ",#FALSE#', '"Time Base Flag",1']
    write("preferences", "usa", preferences)
    other = [line.replace('"USA"', '"Europe"').replace("Radial", "Barrel").replace(",5", ",1") for line in preferences]
    write("preferences", "europe", [line + "\r" for line in other])
    write("preferences", "mimeapps", ["[Added Associations]", "text/plain=a.desktop;", "[Default Applications]",
                                      "application/x-lobemax-cam=other.desktop;", "text/plain=a.desktop;"])
    write("preferences", "limits", ['"Limits of cams in mm, N, N-m, MPa, deg, sec"', '"Phi", 28', '"Sigma", off',
                                    '"Chord", 0.002', '"Phi", 3', '"V", 1E999'])
    write("run_record", "running", ["Running\r", "\r", "This file records an abnormal exit\r"])
    write("run_record", "normal", ["Normal Exit\r"])
    write("run_record", "quoted", ['"Running"'])
    for i, text in enumerate(["12.5", "-1,234,567.89E+03", "1.234,5", " + 1 2 D - 3 4 x", "1E+999", "1E-999", ".5", "12,34",
                              "0x10", "9007199254740993", "2.2250738585072011E-308", "\u00b5m 5"]):
        write("number", f"number_{i}", [text])
    settings = {
        "radial": ["0", "Prime_Rad=40", "Follow_Rad=10", "Offset=2", "Shaft speed=100", "Beta_Deg(1)=90"],
        "flat": ["2", "Prime_Rad=20", "Face_Width=30", "Mass=1.5", "Closure=Force"],
        "arm": ["4", "ArmX=100", "ArmY=0", "ArmRad=80", "ArmDirect=-1", "Rotflag=1", "Translating=true"],
        "barrel": ["3", "Camtype$=Barrel", "Prime_Rad=50", "Shift_Angle=45", "Versus_Keyway=true"],
        "linear": ["1", "Camtype$=Linear", "Followtype=1", "Printstep=5"],
        "forces": ["3", "Preload=100", "Return_Spring_Rate=10", "Zeta_Initial=0.05", "Mu of Shaft=0.1",
                   "Roller length=10", "Young's modulus(1)=200000", "Poissons' ratio(1)=0.28", "Crown radius=100"],
        "segments": ["3", "No of segments=2", "Rise_Fall_Dwell(1)=P", "Program(1)=PO", "S boundary cond(1, 0)=0",
                     "S boundary cond(1, 9)=10", "No of conditions(1)=2", "Start Value(1)=0", "End Value(1)=10",
                     "Deltatheta=0.5", "WhichUnit=3", "Time Base=2"],
        "spline": ["1", "Rise_Fall_Dwell(1)=S", "Program(1)=BS", "No of conditions(1)=4", "Orders(1)=4",
                   "V boundary cond(1, 0)=0", "V boundary cond(1, 9)=0", "Knots(5, 1)=45"],
        "linkage": ["5", "Link 2=30", "Link 3=90", "Links=6", "Theta1=10", "Linkage_Type=1"],
    }
    for name, lines in settings.items():
        write("settings", name, lines)
    for name, words in DESIGNS.items():
        write("command", name, words + SIZES[:4])
    write("command", "units", ["--units", "1", "--rpm", "120", "--delta", "0.5"] + RISE_FALL + ["--answer", "no"])
    table = ["c 0 0 0", "c 0 1 0", "c 0 2 0", "t 1 90", "c 1 0 20", "c 9 0 0", "c 9 1 0", "c 9 2 0", "n 7"]
    write("conditions", "polynomial", ["P 180 10 1"] + table)
    write("conditions", "polynomial_per_degree", ["P 180 10 2"] + table + ["c 9 3 0", "c 0 3 0", "n 9"])
    write("conditions", "spline", ["S 180 10 1"] + table + ["o 5", "k 1 60", "k 2 120"])
    write("conditions", "spline_per_radian", ["S 90 1000 3"] + [line.replace("90", "45") for line in table] + ["o 4"])
    many = [f"t {k} {20 * k}" for k in range(1, 9)] + [f"c {k} {d} {k * d}" for k in range(10) for d in range(4)]
    write("conditions", "forty", ["P 180 1 1"] + many + ["n 40"])


main()
