"""Draws the times of frames of the log's view, as bench/view_bench.cpp measures them.

Usage: frame_plot.py FOLDER-OF-THE-PROGRAMS PICTURE.svg
"""
import json, math, os, pathlib, subprocess, sys

ACTS = {"ViewDrag": ("scroll bar dragged", "#1f77b4"), "ViewPage": ("page up and down", "#2ca02c"),
        "ViewResize": ("width changed", "#d62728"), "ViewFontStep": ("font step", "#9467bd")}
LINES = [10000, 100000, 1000000]
WIDTH, HEIGHT, LEFT, TOP, BOTTOM, RIGHT = 640, 360, 60, 40, 50, 190
LEAST, MOST, LIMIT = 0.1, 100, 16  # milliseconds


def measured(programs):
    run = subprocess.run([programs / "view_bench", "--benchmark_format=json", "--benchmark_min_time=1",
                          "--benchmark_filter=" + "|".join(ACTS)], capture_output=True, text=True,
                         env={**os.environ, "XDG_RUNTIME_DIR": "/tmp"}, check=True)
    times = {}
    for one in json.loads(run.stdout)["benchmarks"]:
        name, lines = one["name"].split("/")
        times[name, int(lines)] = one["median"], one["of100"]
    return times


def x(lines):
    return LEFT + (WIDTH - LEFT - RIGHT) * (0.1 + 0.8 * math.log10(lines / LINES[0]) / 2)


def y(milliseconds):
    part = math.log10(milliseconds / LEAST) / math.log10(MOST / LEAST)
    return HEIGHT - BOTTOM - (HEIGHT - TOP - BOTTOM) * part


def text(at_x, at_y, words, anchor="start", colour="#000"):
    return f'<text x="{at_x:.1f}" y="{at_y:.1f}" text-anchor="{anchor}" fill="{colour}">{words}</text>'


def line(points, colour, dashes=""):
    joined = " ".join(f"{at_x:.1f},{at_y:.1f}" for at_x, at_y in points)
    return (f'<polyline points="{joined}" fill="none" stroke="{colour}" stroke-width="2" '
            f'stroke-dasharray="{dashes}"/>')


def drawn(times):
    yield (f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}" '
           'font-family="sans-serif" font-size="12"><rect width="100%" height="100%" fill="#fff"/>')
    yield text(LEFT, 20, "Milliseconds a frame: median (line) and 99 of 100 frames (dashes)")
    for mark in (0.1, 1, 10, 100):
        yield line([(LEFT, y(mark)), (WIDTH - RIGHT, y(mark))], "#ddd")
        yield text(LEFT - 6, y(mark) + 4, f"{mark:g}", "end")
    for lines in LINES:
        yield text(x(lines), HEIGHT - BOTTOM + 20, f"{lines:,} lines", "middle")
    yield line([(LEFT, y(LIMIT)), (WIDTH - RIGHT, y(LIMIT))], "#888", "2 4")
    yield text(WIDTH - RIGHT + 8, y(LIMIT) + 4, f"{LIMIT} ms: 60 frames a second", colour="#555")
    for row, (name, (words, colour)) in enumerate(ACTS.items()):
        for kind, dashes in ((0, ""), (1, "6 4")):
            yield line([(x(lines), y(times[name, lines][kind])) for lines in LINES], colour, dashes)
        yield text(WIDTH - RIGHT + 8, y(1) + 18 * row, words, colour=colour)
    yield "</svg>"


times = measured(pathlib.Path(sys.argv[1]).resolve())
pathlib.Path(sys.argv[2]).write_text("\n".join(drawn(times)) + "\n")
for (name, lines), (median, of100) in times.items():
    print(f"{ACTS[name][0]}, {lines:,} lines: median {median:.2f} ms, 99 of 100 frames {of100:.2f} ms")
