"""count.py FEW MANY TIMES: splits what callgrind counted by where it was spent.

FEW and MANY are callgrind's files of two runs, the second of which does the same thing TIMES more
often: the difference, divided by TIMES, is the cost of doing it once, without start-up. Instructions
in the C libraries count for whoever called them. Prints a line per place and its dearest functions.
"""
import collections
import re
import sys

DRIVER = re.compile(r"swrast|_dri\.so|llvmpipe|gallium|LLVM|libEGL|libGLX|libGLdispatch|libGL\.|"
                    r"glapi|libgbm|libdrm|libX|libxcb|libxshm|libelf|libz3|"
                    r"libedit|libsensors|libexpat|libzstd|libz\.")
SHARED = re.compile(r"/(libc|libm|libpthread|libstdc\+\+|libgcc_s|ld-linux[^/]*|vgpreload[^/]*)[.-]")
PROGRAM = "the host (the measuring program)"


def place_of(file):
    """Where an object file belongs; None for the libraries that work for their callers."""
    if file in ("???", ""):
        return "OpenGL driver"  # code that it made at run time
    if SHARED.search(file):
        return None
    if DRIVER.search(file):
        return "OpenGL driver"
    if "opencv" in file or "tbb" in file:
        return "OpenCV"
    if "fftw" in file:
        return "FFTW"
    if file.endswith(".krv"):
        return "plug-in"
    if file.endswith("instruction_work"):
        return PROGRAM
    return file.rsplit("/", 1)[-1]


class Profile:
    """Self costs by function, and what calls cost by caller and callee."""

    def __init__(self, path):
        self.own = collections.Counter()
        self.calls = collections.Counter()
        names = {}

        def name(text, kind):
            match = re.match(r"\((\d+)\)(?: (.*))?$", text)
            if not match:
                return text
            key = (kind, match.group(1))
            if match.group(2) is not None:
                names[key] = match.group(2)
            return names[key]

        here = called = ["", ""]
        in_call = False
        with open(path, encoding="utf-8", errors="replace") as file:
            for line in file:
                line = line.rstrip("\n")
                key, found, value = line.partition("=")
                if found and key == "ob":
                    here = [name(value, "ob"), here[1]]
                elif found and key == "fn":
                    here = [here[0], name(value, "fn")]
                    called = [here[0], ""]
                elif found and key == "cob":
                    called = [name(value, "ob"), called[1]]
                elif found and key == "cfn":
                    called = [called[0], name(value, "fn")]
                elif found and key in ("fl", "fi", "fe", "cfi", "cfl"):
                    name(value, "fl")
                elif found and key == "calls":
                    in_call = True
                elif line[:1].isdigit() or line[:1] in "+-*":
                    cost = int(line.split()[1]) if len(line.split()) > 1 else 0
                    if in_call:
                        self.calls[tuple(here), tuple(called)] += cost
                        called = [here[0], ""]
                        in_call = False
                    else:
                        self.own[tuple(here)] += cost


def shares(calls, functions):
    """For whom each function works: its own place, or those of its callers by what they spent."""
    callers = collections.defaultdict(list)
    for (caller, callee), cost in calls.items():
        if cost > 0 and caller != callee:
            callers[callee].append((caller, cost))
    result = {f: {place_of(f[0]): 1.0} for f in functions if place_of(f[0])}
    unknown = [f for f in functions if f not in result]
    for f in unknown:
        result[f] = {}
    for _ in range(30):  # chains of calls inside the libraries are shorter than that
        for f in unknown:
            total = sum(cost for _, cost in callers[f])
            mixed = collections.Counter()
            for caller, cost in callers[f]:
                for place, share in result.get(caller, {}).items():
                    mixed[place] += share * cost / total
            result[f] = dict(mixed)
    return result


def main():
    few, many, times = Profile(sys.argv[1]), Profile(sys.argv[2]), int(sys.argv[3])
    own = {f: (many.own[f] - few.own[f]) / times for f in many.own}
    calls = {c: many.calls[c] - few.calls[c] for c in many.calls}
    functions = set(own) | {f for call in calls for f in call}
    works_for = shares(calls, functions)
    places = collections.Counter()
    dearest = collections.defaultdict(collections.Counter)
    for function, cost in own.items():
        known = 0.0
        for place, share in works_for[function].items():
            places[place] += cost * share
            dearest[place][function[1]] += cost * share
            known += share
        if known < 0.999:
            places["unknown"] += cost * (1 - known)
            dearest["unknown"][function[1]] += cost * (1 - known)
    outside = 0
    for place, cost in places.most_common():
        if abs(cost) < 0.5:
            continue
        print(f"{cost:16,.0f}  {place}")
        if place == "OpenGL driver":
            continue
        if place != PROGRAM:
            outside += cost
        for function, part in dearest[place].most_common(8):
            if part >= max(500, cost / 100):
                print(f"{part:16,.0f}      {function[:100]}")
    print(f"{outside:16,.0f}  outside the OpenGL driver and the host")
    print(f"{sum(places.values()):16,.0f}  in all")


main()
