"""report.py RESULTS FOLDER: makes compare.md and compare.json of what compare.sh measured.

RESULTS/SIZE/frames holds the number of frames of a run, RESULTS/SIZE/NAME a line "wall user system"
in seconds for each run, RESULTS/SIZE/bench_PACKAGE.ROUND.json the output of `krv bench`.
"""
import json
import pathlib
import statistics
import sys

# Name, what it is, and the run of the same tool that draws nothing.
RUNS = [
    ("ffmpeg_decode", "FFmpeg, decoding only", None),
    ("ffmpeg_bgra", "FFmpeg, decoding and conversion to BGRA", None),
    ("showfreqs", "showfreqs, overlay in BGRA", "ffmpeg_bgra"),
    ("showfreqs_480", "showfreqs at 480 lines, upscaled, overlay in BGRA", "ffmpeg_bgra"),
    ("showfreqs_480_yuv", "showfreqs at 480 lines, upscaled, overlay in YUV", "ffmpeg_decode"),
    ("showwaves", "showwaves, overlay in BGRA", "ffmpeg_bgra"),
    ("showfreqs_4_rows", "four showfreqs of a quarter's height each", "ffmpeg_bgra"),
    ("showfreqs_4", "four showfreqs of full height", "ffmpeg_bgra"),
    ("melt_null", "MLT, decoding only", None),
    ("melt_rgba", "MLT, decoding and conversion to RGBA", None),
    ("audiospectrum", "MLT audiospectrum", "melt_null"),
    ("krv_audio_visualization_bars", "krv, bars, high quality", "ffmpeg_bgra"),
    ("krv_bench_bars_medium", "krv, bars, medium quality", "ffmpeg_bgra"),
    ("krv_bench_figures_4", "krv, four rows of bars in four passes, medium", "ffmpeg_bgra"),
]
OURS = {"showfreqs_4_rows": "krv_bench_figures_4", "showfreqs_4": "krv_bench_figures_4"}
OUR_BARS = "krv_bench_bars_medium"
BENCH = {OUR_BARS: "bars_medium", "krv_bench_figures_4": "figures_4"}


def spread(values):
    return {"median": statistics.median(values), "least": min(values), "greatest": max(values)}


def runs_of(folder):
    """By name: frames a second, CPU and own CPU in milliseconds a frame."""
    frames = int((folder / "frames").read_text())
    seconds = {}
    for name, _, _ in RUNS:
        if (folder / name).exists():
            lines = (folder / name).read_text().splitlines()
            seconds[name] = [[float(part) for part in line.split()] for line in lines]
    cpu = {name: [1000 * (user + system) / frames for _, user, system in all_runs]
           for name, all_runs in seconds.items()}
    result = {}
    for name, title, null in RUNS:
        if name not in seconds:
            continue
        result[name] = {"title": title, "fps": spread([frames / r[0] for r in seconds[name]]),
                        "cpu_ms": spread(cpu[name])}
        if null:  # the null run of the same round
            result[name]["own_cpu_ms"] = spread([a - b for a, b in zip(cpu[name], cpu[null])])
        if name in BENCH:
            measured = [json.loads(file.read_text())["measurements"][0]
                        for file in folder.glob(f"bench_{BENCH[name]}.*.json")]
            result[name]["bench_cpu_ms"] = spread(
                [m["frame"]["cpu_ms"]["median"] for m in measured])
            result[name]["bench_wall_ms"] = spread(
                [m["frame"]["wall_ms"]["median"] for m in measured])
    return result


def cell(values, digits):
    return f"{values['median']:.{digits}f} ({values['least']:.{digits}f} to " \
           f"{values['greatest']:.{digits}f})"


def table(size, runs):
    lines = [f"### {size}", "",
             "| | fps, whole run | CPU ms a frame | own CPU ms a frame | in `krv bench`, CPU ms |",
             "|---|---|---|---|---|"]
    for run in runs.values():
        own = cell(run["own_cpu_ms"], 1) if "own_cpu_ms" in run else ""
        bench = cell(run["bench_cpu_ms"], 2) if "bench_cpu_ms" in run else ""
        lines.append(f"| {run['title']} | {cell(run['fps'], 0)} | {cell(run['cpu_ms'], 1)} | "
                     f"{own} | {bench} |")
    lines += ["", "| against | krv's frames a second to its | krv's own CPU to its, file to file | "
              "krv's CPU in `krv bench` to its own CPU |", "|---|---|---|---|"]
    for name in ratios(runs):
        ratio = ratios(runs)[name]
        lines.append(f"| {runs[name]['title']} | {ratio['fps']:.2f} | {ratio['own_cpu']:.2f} | "
                     f"{ratio['bench_cpu']:.2f} |")
    return "\n".join(lines) + "\n"


def ratios(runs):
    result = {}
    for name, run in runs.items():
        if "own_cpu_ms" not in run or name.startswith("krv_"):
            continue
        ours = runs[OURS.get(name, OUR_BARS)]
        theirs = run["own_cpu_ms"]["median"]
        result[name] = {"fps": ours["fps"]["median"] / run["fps"]["median"],
                        "own_cpu": ours["own_cpu_ms"]["median"] / theirs,
                        "bench_cpu": ours["bench_cpu_ms"]["median"] / theirs}
    return result


def main():
    source, target = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    folders = sorted(source.iterdir(), key=lambda f: int(f.name.split("x")[0]))
    sizes = {folder.name: runs_of(folder) for folder in folders}
    (target / "compare.md").write_text("\n".join(table(s, r) for s, r in sizes.items()))
    (target / "compare.json").write_text(json.dumps(
        {size: {"runs": runs, "ratios": ratios(runs)} for size, runs in sizes.items()},
        indent=2) + "\n")


main()
