"""report.py RESULTS FOLDER: makes growth.md, growth.json and growth.svg of what growth.sh measured.

RESULTS/SERIES/X.REPEAT.json is the output of `krv bench` for one point. A point's cost is the median
over its repeats; the law is the straight line of least squares through the points.
"""
import collections
import json
import pathlib
import statistics
import sys

# Points below `fit_from` are not part of the law.
Series = collections.namedtuple("Series", "name title unit scale fit_from")

# Frames of up to 480 lines have a smaller effect.
SERIES = [
    Series("area_memory", "Area of the frame, in memory", "megapixels", 1e6, 0.42),
    Series("area_gpu", "Area of the frame, in textures", "megapixels", 1e6, 0.42),
    Series("items", "Number of bars, 1080p in memory", "bars", 1, 0),
    Series("figures_one_pass", "Figures in one pass, 1080p in memory", "figures", 1, 0),
    Series("figures_passes", "Figures, a pass each, 1080p in memory", "figures", 1, 0),
    Series("instances", "Effects in turn on one context, 1080p in memory", "effects", 1, 0),
]


def points_of(folder, series):
    """Rows of x, median CPU, least and greatest CPU, median wall, limit's CPU; sorted by x."""
    repeats = collections.defaultdict(list)
    for file in (folder / series.name).glob("*.json"):
        measured = json.loads(file.read_text())["measurements"][0]
        repeats[int(file.name.split(".")[0])].append(measured)
    rows = []
    for x, all_measured in sorted(repeats.items()):
        cpu = [m["frame"]["cpu_ms"]["median"] for m in all_measured]
        rows.append({
            "x": x / series.scale,
            "cpu_ms": statistics.median(cpu),
            "cpu_ms_least": min(cpu),
            "cpu_ms_greatest": max(cpu),
            "wall_ms": statistics.median(m["frame"]["wall_ms"]["median"] for m in all_measured),
            "limit_cpu_ms": statistics.median(
                m["limit"]["cpu_ms"]["median"] for m in all_measured),
        })
    return rows


def fit(rows):
    """a + b x by least squares, and how much of the variance that explains."""
    xs, ys = [r["x"] for r in rows], [r["cpu_ms"] for r in rows]
    mean_x, mean_y = statistics.fmean(xs), statistics.fmean(ys)
    spread = sum((x - mean_x) ** 2 for x in xs)
    b = sum((x - mean_x) * (y - mean_y) for x, y in zip(xs, ys)) / spread
    a = mean_y - b * mean_x
    left = sum((y - a - b * x) ** 2 for x, y in zip(xs, ys))
    total = sum((y - mean_y) ** 2 for y in ys)
    return {"a": a, "b": b, "r2": 1 - left / total if total > 0 else 1.0}


def law_text(law, unit):
    sign = "+" if law["b"] >= 0 else "-"
    return f"{law['a']:.2f} ms {sign} {abs(law['b']):.3g} ms x {unit}, r² {law['r2']:.3f}"


def table(series, rows, law):
    lines = [f"### {series.title}", "",
             f"CPU: {law_text(law, series.unit)}", "",
             f"| {series.unit} | CPU ms | least to greatest | wall ms | limit, CPU ms |",
             "|---|---|---|---|---|"]
    for r in rows:
        lines.append(f"| {r['x']:.4g} | {r['cpu_ms']:.2f} | {r['cpu_ms_least']:.2f} to "
                     f"{r['cpu_ms_greatest']:.2f} | {r['wall_ms']:.2f} | "
                     f"{r['limit_cpu_ms']:.2f} |")
    return "\n".join(lines) + "\n"


def ticks(most):
    """About five round numbers from 0 to `most`."""
    step = 10.0 ** len(str(int(most))) / 10
    while most / step > 6:
        step *= 2 if str(step).lstrip("0.")[0] in "15" else 2.5
    while most / step < 3:
        step /= 2
    return [i * step for i in range(int(most / step) + 1)]


def panel(series, rows, law, left, top, width, height):
    """One plot as SVG: points with the range of their repeats, the law, the limit."""
    most_x = max(r["x"] for r in rows) * 1.05
    most_y = max(r["cpu_ms_greatest"] for r in rows) * 1.12
    most_y = max(most_y, max(r["limit_cpu_ms"] for r in rows) * 1.12)

    def at(x, y):
        return left + width * x / most_x, top + height * (1 - y / most_y)

    parts = [f'<text x="{left}" y="{top - 26}" class="title">{series.title}</text>',
             f'<text x="{left}" y="{top - 10}">{law_text(law, series.unit)}</text>']
    for y in ticks(most_y):
        x0, height_y = at(0, y)
        parts.append(f'<line x1="{x0}" y1="{height_y:.1f}" x2="{left + width}" '
                     f'y2="{height_y:.1f}" class="grid"/>')
        parts.append(f'<text x="{x0 - 6}" y="{height_y + 4:.1f}" class="end">{y:g}</text>')
    for x in ticks(most_x):
        place, bottom = at(x, 0)
        parts.append(f'<text x="{place:.1f}" y="{bottom + 16}" class="middle">{x:g}</text>')
    parts.append(f'<text x="{left + width}" y="{top + height + 32}" class="end">'
                 f'{series.unit}</text>')
    from_x = -law["a"] / law["b"] if law["a"] < 0 < law["b"] else 0
    x1, y1 = at(from_x, law["a"] + law["b"] * from_x)
    x2, y2 = at(most_x, law["a"] + law["b"] * most_x)
    parts.append(f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" class="law"/>')
    limit = " ".join("{:.1f},{:.1f}".format(*at(r["x"], r["limit_cpu_ms"])) for r in rows)
    parts.append(f'<polyline points="{limit}" class="limit"/>')
    for r in rows:
        x, y = at(r["x"], r["cpu_ms"])
        _, low = at(r["x"], r["cpu_ms_least"])
        _, high = at(r["x"], r["cpu_ms_greatest"])
        parts.append(f'<line x1="{x:.1f}" y1="{low:.1f}" x2="{x:.1f}" y2="{high:.1f}" '
                     'class="range"/>')
        parts.append(f'<circle cx="{x:.1f}" cy="{y:.1f}" r="3.5"/>')
    return "\n".join(parts)


STYLE = """
text { font: 12px sans-serif; fill: #333 } .title { font-weight: bold; font-size: 13px }
.end { text-anchor: end } .middle { text-anchor: middle }
.grid { stroke: #ddd } .law { stroke: #2a6fdb; stroke-width: 1.5 }
.limit { stroke: #999; fill: none; stroke-dasharray: 4 3 } .range { stroke: #c33; stroke-width: 1.5 }
circle { fill: #c33 }
"""


def plot(results):
    across, down = 380, 260
    columns = 2
    rows = (len(results) + 1) // columns
    width, height = columns * (across + 90) + 30, rows * (down + 100) + 40
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
             f'viewBox="0 0 {width} {height}">',
             f"<style>{STYLE}</style>", f'<rect width="{width}" height="{height}" fill="#fff"/>',
             '<text x="20" y="20">CPU ms a frame: points with least and greatest; blue: the law; '
             'dashed: the limit</text>']
    for i, (series, points, law) in enumerate(results):
        parts.append(panel(series, points, law, 60 + i % columns * (across + 90),
                           84 + i // columns * (down + 100), across, down))
    return "\n".join(parts) + "\n</svg>\n"


def write(results, target):
    (target / "growth.md").write_text("\n".join(table(*result) for result in results))
    (target / "growth.svg").write_text(plot(results))
    (target / "growth.json").write_text(json.dumps(
        {s.name: {"unit": s.unit, "law": law, "points": rows} for s, rows, law in results},
        indent=2) + "\n")


def main():
    source, target = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    results = []
    for series in SERIES:
        rows = points_of(source, series)
        if len(rows) > 1:
            law = fit([row for row in rows if row["x"] >= series.fit_from])
            results.append((series, rows, law))
    write(results, target)


if __name__ == "__main__":
    main()
