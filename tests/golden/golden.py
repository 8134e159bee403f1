#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Runs lobemax-cli over the designs of designs.txt and compares all that it says and writes with reference.tsv.

See README.md beside it.
"""

import argparse
import concurrent.futures
import difflib
import hashlib
import os
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

HERE = Path(__file__).resolve().parent
REFERENCE = HERE / "reference.tsv"
STAMPS = ["--date", "2026-01-02", "--time", "03:04:05"]
FONTS = ["DejaVuSans.ttf", "DejaVuSans-Bold.ttf"]
PARTS = ("status", "stdout", "stderr", "file")
TIMEOUT = 120  # seconds for one command, generous for a sanitized build
SHOWN_LINES = 12  # of each difference
SHOWN_WIDTH = 160


def read_designs(path, pattern):
    """[(design, [argument list])] of the designs whose name the pattern finds."""
    designs = []
    for line in path.read_text(encoding="utf-8").splitlines():
        if line.startswith("design "):
            designs.append((line.removeprefix("design "), []))
        elif line.startswith("  "):
            words = shlex.split(line)
            designs[-1][1].append([] if words == ["(nothing)"] else words)
    return [design for design in designs if re.search(pattern, design[0])]


def output_file(words):
    return words[words.index("-o") + 1] if "-o" in words else None


def output_name(design, number, words):
    parts = [f"{number:02d}", words[0].lstrip("-") if words else "nothing", output_file(words) or ""]
    return f"{design}/" + "-".join(re.sub(r"[^\w.]+", "_", part) for part in parts if part)


def digest(content):
    return hashlib.sha256(content).hexdigest()[:16] if content else "-"


class Output:
    """What one command line left: its exit status and three contents as bytes."""

    def __init__(self, words, status, stdout, stderr, file):
        self.words = words
        self.contents = {"status": str(status).encode(), "stdout": stdout, "stderr": stderr, "file": file}

    def record(self):
        return [self.contents["status"].decode()] + [digest(self.contents[part]) for part in PARTS[1:]]


def is_picture(words):
    return bool(words) and words[0] in ("plot", "draw")


def system_fonts():
    """The files of FONTS on this machine; None where one is missing."""
    found = []
    for name in FONTS:
        paths = sorted(Path("/usr/share/fonts").rglob(name))
        if not paths:
            return None
        found.append(paths[0])
    return found


def picture_machine():
    """What the letters in a picture depend on beside the program: fonts, and the libraries that set them."""
    libraries = [path.name for stem in ("libQt6Gui", "libQt6Svg", "libQCustomPlotQt6", "libfreetype", "libharfbuzz",
                                        "libfontconfig")
                 for path in sorted(Path("/usr/lib").glob(f"*/{stem}.so.*.*"))]
    return " ".join(libraries + [digest(font.read_bytes()) for font in system_fonts() or []])


def environment(home):
    """Nothing of the user's and of the machine's settings reaches the program; its fonts are FONTS alone."""
    fonts = home / "fonts"
    fonts.mkdir()
    for font in system_fonts() or []:
        shutil.copy(font, fonts)
    configuration = home / "fonts.conf"
    configuration.write_text(
        '<?xml version="1.0"?><!DOCTYPE fontconfig SYSTEM "urn:fontconfig:fonts.dtd">'
        f"<fontconfig><dir>{fonts}</dir><cachedir>{home}/cache</cachedir></fontconfig>\n", encoding="utf-8")
    kept = {name: value for name, value in os.environ.items()
            if name == "PATH" or name == "LD_LIBRARY_PATH" or name.endswith("SAN_OPTIONS")}
    # Without the processor's fused operations the C library's functions give the same last bit everywhere.
    return kept | {"HOME": str(home), "XDG_RUNTIME_DIR": str(home), "LC_ALL": "C.UTF-8", "TZ": "UTC",
                   "QT_QPA_PLATFORM": "offscreen", "FONTCONFIG_FILE": str(configuration),
                   "GLIBC_TUNABLES": "glibc.cpu.hwcaps=-AVX2,-FMA,-FMA4"}


def state(path):
    """What changes when a file is written; None where there is none."""
    if path is None or not path.is_file():
        return None
    found = path.stat()
    return found.st_ino, found.st_mtime_ns, found.st_size


def run_design(cli, env, folder, design, lines):
    """Runs the command lines of a design in an empty folder of its own: {output name: Output}."""
    place = folder / design
    place.mkdir(parents=True)
    for model in {word for words in lines for word in words if word.startswith("data/")}:
        (place / "data").mkdir(exist_ok=True)
        shutil.copy(HERE.parent / model, place / model)
    outputs = {}
    for number, words in enumerate(lines, 1):
        path = place / output_file(words) if output_file(words) else None
        before = state(path)
        try:
            run = subprocess.run([cli] + (STAMPS if words else []) + words, cwd=place, env=env, timeout=TIMEOUT,
                                 stdin=subprocess.DEVNULL, capture_output=True, check=False)
            status, stdout, stderr = run.returncode, run.stdout, run.stderr
        except subprocess.TimeoutExpired as late:
            status, stdout, stderr = "timeout", late.stdout or b"", late.stderr or b""
        file = path.read_bytes() if state(path) != before and path.is_file() else b""
        outputs[output_name(design, number, words)] = Output(words, status, stdout, stderr, file)
    return outputs


def run_all(cli, designs, folder, jobs):
    """All outputs of a program, in the order of the designs. The designs' files stay in the folder."""
    with tempfile.TemporaryDirectory(prefix="golden_home_") as home:
        env = environment(Path(home))
        with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
            parts = pool.map(lambda design: run_design(cli, env, folder, *design), designs)
            return {name: output for part in parts for name, output in part.items()}


def write_streams(folder, outputs):
    """Beside the files of the designs: what each command line said, and how it ended."""
    for name, output in outputs.items():
        content = output.contents
        text = b"$ lobemax-cli " + shlex.join(output.words).encode() + b"\nstatus " + content["status"] + b"\n"
        (folder / f"{name}.stderr").write_bytes(text + content["stderr"])
        if content["stdout"]:
            (folder / f"{name}.stdout").write_bytes(content["stdout"])


def read_reference():
    machine, records = "", {}
    for line in REFERENCE.read_text(encoding="utf-8").splitlines():
        if line.startswith("# pictures: "):
            machine = line.removeprefix("# pictures: ")
        elif line and not line.startswith("#"):
            name, *record = line.split("\t")
            records[name] = record
    return machine, records


def write_reference(outputs):
    lines = ["# Written by golden.py --update: name, exit status, hashes of standard output, standard error, file.",
             "# pictures: " + picture_machine()]
    lines += ["\t".join([name] + output.record()) for name, output in outputs.items()]
    REFERENCE.write_text("\n".join(lines) + "\n", encoding="utf-8")


def compare_with_reference(outputs, whole):
    """Prints the outputs that differ; their number."""
    machine, records = read_reference()
    same_machine = machine == picture_machine()
    if not same_machine:
        print("pictures: fonts or libraries differ from the reference's; only status and messages are compared")
    differing = 0
    for name, output in outputs.items():
        expected, got = records.pop(name, None), output.record()
        if expected is None:
            print(f"{name}: not in the reference")
            differing += 1
            continue
        if not same_machine and is_picture(output.words):
            written = [record[3] != "-" for record in (expected, got)]
            expected, got = [record[:3] + [str(there)] for record, there in zip((expected, got), written)]
        parts = [part for part, a, b in zip(PARTS, expected, got) if a != b]
        if parts:
            print(f"{name}: {', '.join(parts)}: lobemax-cli {shlex.join(output.words)[:100]}")
            differing += 1
    if whole:
        for name in records:
            print(f"{name}: in the reference only")
            differing += 1
    print(f"{differing} of {len(outputs)} outputs differ")
    return differing


def short_difference(ours, theirs):
    """The first lines of a unified difference of two contents."""
    a, b = [content.decode("utf-8", "replace").splitlines() for content in (theirs, ours)]
    # What is alike at both ends is left out first: the difference of long files is slow.
    first = next((i for i, (x, y) in enumerate(zip(a, b)) if x != y), min(len(a), len(b)))
    rest = list(difflib.unified_diff(a[first:first + 200], b[first:first + 200], lineterm="", n=0))[2:]
    lines = [f"    from line {first + 1}:"] + ["    " + line[:SHOWN_WIDTH] for line in rest[:SHOWN_LINES]]
    return lines if rest else lines + ["    the bytes differ, the lines do not"]


def compare_programs(outputs, others):
    """Prints the differences of two programs' outputs, - the other's, + ours; the number of differing outputs."""
    differing = 0
    for name, output in outputs.items():
        ours, theirs = output.contents, others[name].contents
        parts = [part for part in PARTS if ours[part] != theirs[part]]
        if not parts:
            continue
        differing += 1
        print(f"{name}: lobemax-cli {shlex.join(output.words)}")
        for part in parts:
            print(f"  {part}")
            print("\n".join(short_difference(ours[part], theirs[part])))
    print(f"{differing} of {len(outputs)} outputs differ")
    return differing


def main():
    parser = argparse.ArgumentParser(description="Compares what lobemax-cli says and writes with the reference.")
    parser.add_argument("--cli", required=True, help="the program")
    parser.add_argument("--update", action="store_true", help="write the reference anew")
    parser.add_argument("--keep", metavar="DIR", help="leave all outputs in DIR, which must not exist")
    parser.add_argument("--against", metavar="CLI", help="compare with this program instead of the reference")
    parser.add_argument("--only", metavar="REGEX", default="", help="only the designs whose name it finds")
    parser.add_argument("--jobs", type=int, default=2, help="commands at a time (2)")
    options = parser.parse_args()
    if options.update and (options.only or options.against):
        parser.error("--update takes all designs and no other program")
    cli, against = [path and str(Path(path).resolve()) for path in (options.cli, options.against)]
    designs = read_designs(HERE / "designs.txt", options.only)
    if not designs:
        parser.error("no design of that name")
    with tempfile.TemporaryDirectory(prefix="golden_") as scratch:
        folder = Path(options.keep).resolve() if options.keep else Path(scratch) / "outputs"
        folder.mkdir(parents=True)
        outputs = run_all(cli, designs, folder, options.jobs)
        if options.keep:
            write_streams(folder, outputs)
        if against:
            return compare_programs(outputs, run_all(against, designs, Path(scratch) / "others", options.jobs)) > 0
        if options.update:
            write_reference(outputs)
            print(f"{len(outputs)} outputs written to {REFERENCE}")
            return 0
        return compare_with_reference(outputs, not options.only) > 0


if __name__ == "__main__":
    sys.exit(main())
