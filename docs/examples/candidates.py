#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""From a folder of candidate structures to a picture: which of them fits the measured spectrum, and where it does not.

    candidates.py FOLDER EXPERIMENT NUCLEUS OUT.svg

ranks the MAGRES files of the folder with magres-workbench, simulates the best one and the worst one with the references
that fit, and draws their lines against the measured peaks (a list as CSV: position,height). Needs Python with numpy, and
magres-workbench on the path.
"""

import csv
import json
import pathlib
import subprocess
import sys
import tempfile

import numpy as np

WIDTH, HEIGHT, MARGIN = 900, 150, 40  # of a row of the picture


def run(*arguments):
    """The output of a command. Status 3 means that some structures failed, which the ranking tells itself."""
    done = subprocess.run(["magres-workbench", *map(str, arguments)], stdout=subprocess.PIPE, text=True, check=False)
    if done.returncode not in (0, 3):
        sys.exit(f"magres-workbench {arguments[0]} failed")
    return done.stdout


def rank(files, experiment, nucleus):
    """The structures that could be ranked, the best first."""
    rows = json.loads(run("rank", *files, "--experiment", experiment, "--nucleus", nucleus, "--format", "json"))["rows"]
    for row in rows:
        if "message" in row:
            print(f"{row['file']}: {row['message']}", file=sys.stderr)
    return [row for row in rows if "rank" in row]


def spectrum(file, nucleus, reference):
    """ppm and intensity of the simulated spectrum, highest shift first."""
    with tempfile.TemporaryDirectory() as folder:
        out = pathlib.Path(folder) / "spectrum.csv"
        run("simulate", file, "--nucleus", nucleus, f"--reference={reference!r}", "-o", out)
        return np.loadtxt(out, delimiter=",", skiprows=1, unpack=True)


def measured(experiment):
    """Positions (ppm) of a peak list."""
    with open(experiment, encoding="utf-8") as file:
        rows = list(csv.reader(line for line in file if not line.startswith("#")))
    positions = []
    for row in rows:
        try:
            positions.append(float(row[0]))
        except (IndexError, ValueError):
            pass  # the header, or an empty line
    return np.array(positions)


def draw(rows, peaks, out):
    """Rows of (title, ppm, intensity) below each other; the axis falls from left to right, as spectra have it."""
    high = max(ppm.max() for _, ppm, _ in rows)
    low = min(ppm.min() for _, ppm, _ in rows)

    def x(ppm):
        return MARGIN + (high - ppm) / (high - low) * (WIDTH - 2 * MARGIN)

    total = HEIGHT * len(rows) + MARGIN
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{total}" font-family="sans-serif" '
             f'font-size="13"><rect width="{WIDTH}" height="{total}" fill="white"/>']
    for number, (title, ppm, intensity) in enumerate(rows):
        base = HEIGHT * (number + 1) - 10
        for peak in peaks:
            parts.append(f'<line x1="{x(peak):.1f}" x2="{x(peak):.1f}" y1="{base}" y2="{base - HEIGHT + 45}" '
                         'stroke="#d9a441"/>')
        y = base - intensity / intensity.max() * (HEIGHT - 50)
        points = " ".join(f"{a:.2f},{b:.2f}" for a, b in zip(x(ppm), y))
        parts.append(f'<polyline points="{points}" fill="none" stroke="#1d5f9e"/>')
        parts.append(f'<text x="{MARGIN}" y="{base - HEIGHT + 35}">{title}</text>')
    base = HEIGHT * len(rows)
    step = 10 ** np.floor(np.log10(high - low)) / (1 if (high - low) / 10 ** np.floor(np.log10(high - low)) > 4 else 4)
    for tick in np.arange(np.ceil(low / step), np.floor(high / step) + 1) * step:
        parts.append(f'<line x1="{x(tick):.1f}" x2="{x(tick):.1f}" y1="{base - 8}" y2="{base}" stroke="black"/>'
                     f'<text x="{x(tick):.1f}" y="{base + 16}" text-anchor="middle">{tick:g}</text>')
    parts.append(f'<text x="{WIDTH - MARGIN}" y="{base + 32}" text-anchor="end">ppm</text></svg>')
    pathlib.Path(out).write_text("\n".join(parts), encoding="utf-8")


def main(folder, experiment, nucleus, out):
    files = sorted(pathlib.Path(folder).glob("*.magres"))
    ranked = rank(files, experiment, nucleus)
    if not ranked:
        sys.exit("no structure could be ranked")
    for row in ranked:
        print(f"{row['rank']:4d}  {row['rmsd']:8.4f} ppm  {row['file']}")
    chosen = ranked[:1] if len(ranked) == 1 else [ranked[0], ranked[-1]]
    rows = [(f"{pathlib.Path(row['file']).name}: RMSD {row['rmsd']:.2f} ppm",
             *spectrum(row["file"], nucleus, row["reference"])) for row in chosen]
    draw(rows, measured(experiment), out)


if __name__ == "__main__":
    if len(sys.argv) != 5:
        print(__doc__)
        sys.exit(2)
    main(*sys.argv[1:])
