#!/usr/bin/python3
"""Makes one table of Google Benchmark's results: each case of the library beside its best peer and its limit.

A benchmark is called job/case/library or job/case/library/size. The library is `ours` or `ours, variant`, `limit` (what
bare C++ takes under the same rules; `limit, variant` where variants have limits of their own), or a peer's name. A time
is the median of the repetitions' CPU time, of one item where every library of the case counts its items.
"""
import argparse
import json
import re
import statistics
import sys
from pathlib import Path

SETTING = re.compile(r"(iterations|repeats|min_time|min_warmup_time|threads):.*|(process|real|manual)_time")
TO_NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


class Unusable(Exception):
    """What the results lack, in one line."""


def split_name(name):
    """The job, case, library and size (or None) that a benchmark's name stands for."""
    parts = name.split("/")
    while len(parts) > 3 and SETTING.fullmatch(parts[-1]):
        parts.pop()
    size = int(parts.pop()) if len(parts) == 4 and parts[3].isdecimal() else None
    if len(parts) != 3 or not all(parts):
        raise Unusable(f"no name of the form job/case/library[/size]: {name}")
    return (*parts, size)


def read_results(paths):
    """The first file's context and, for each (job, case, size), the repetitions of each library."""
    context, groups, origins = None, {}, {}
    for path in paths:
        try:
            results = json.loads(Path(path).read_text(encoding="utf-8"))
            context = context or results["context"]
            records = [r for r in results["benchmarks"] if r.get("run_type") == "iteration"]
            # Repetitions that are interleaved at random are also reported so.
            records.sort(key=lambda r: (r["family_index"], r["per_family_instance_index"], r["repetition_index"]))
        except (OSError, ValueError, KeyError) as error:
            raise Unusable(f"{path} holds no results: {error!r}") from error
        for record in records:
            name = record["run_name"]
            if record.get("error_occurred"):
                raise Unusable(f"{name} failed: {record.get('error_message', 'no message')}")
            origin = (path, record["family_index"], record["per_family_instance_index"])
            if origins.setdefault(name, origin) != origin:
                raise Unusable(f"two benchmarks are called {name}")
            job, case, library, size = split_name(name)
            groups.setdefault((job, case, size), {}).setdefault(library, []).append(record)
    if not groups:
        raise Unusable("no results")
    return context, groups


def times(libraries):
    """The time in nanoseconds of each library of one case."""
    per_item = all("items_per_second" in record for records in libraries.values() for record in records)

    def nanoseconds(record):
        if per_item:
            return 1e9 / record["items_per_second"]
        return record["cpu_time"] * TO_NANOSECONDS[record["time_unit"]]

    return {library: statistics.median(map(nanoseconds, records)) for library, records in libraries.items()}


def variant_of(library, kind):
    """The variant of `kind` or `kind, variant` ("" for the plain one), None for another library."""
    name, _, variant = library.partition(", ")
    return variant if name == kind else None


def make_rows(groups):
    """The rows of the table, job by job, sizes ascending."""
    jobs, cases = {}, {}
    for job, case, _ in groups:
        jobs.setdefault(job, len(jobs))
        cases.setdefault((job, case), len(cases))
    rows = []
    for job, case, size in sorted(groups, key=lambda g: (jobs[g[0]], cases[g[0], g[1]], g[2] or 0)):
        time_of = times(groups[job, case, size])
        ours = {variant_of(library, "ours"): time for library, time in time_of.items()}
        limits = {variant_of(library, "limit"): time for library, time in time_of.items()}
        ours.pop(None, None)
        limits.pop(None, None)
        peers = {
            library: time
            for library, time in time_of.items()
            if variant_of(library, "ours") is None and variant_of(library, "limit") is None
        }
        if not ours:
            raise Unusable(f"nothing of ours in {job}/{case}" + ("" if size is None else f"/{size}"))
        best = min(peers, key=peers.get, default=None)
        for variant, time in ours.items():
            limit = limits.get(variant, limits.get(""))
            rows.append(
                {
                    "job": job,
                    "case": case,
                    "variant": variant or None,
                    "size": size,
                    "ours": time,
                    "peers": peers,
                    "best peer": best,
                    "ratio": None if best is None else time / peers[best],
                    "limit": limit,
                    "ratio to limit": None if limit is None else time / limit,
                }
            )
    return rows


def label(row):
    """The row's case, variant and size in words."""
    text = row["case"] if row["variant"] is None else f"{row['case']}, {row['variant']}"
    return text if row["size"] is None else f"{text}, " + f"{row['size']:,}".replace(",", " ")


def duration(nanoseconds):
    """A time in the unit that suits it, to three figures."""
    if nanoseconds is None:
        return ""
    for unit, factor in (("s", 1e9), ("ms", 1e6), ("µs", 1e3), ("ns", 1)):
        if nanoseconds >= 0.9995 * factor or factor == 1:
            value = nanoseconds / factor
            digits = 0 if value >= 99.95 else 1 if value >= 9.995 else 2
            return f"{value:.{digits}f} {unit}"


def cells(row):
    """The row's texts, in the order of HEADINGS."""
    best = row["best peer"]
    return (
        label(row),
        duration(row["ours"]),
        "" if best is None else f"{duration(row['peers'][best])} ({best})",
        "" if best is None else f"{row['ratio']:.2f}",
        duration(row["limit"]),
        "" if row["limit"] is None else f"{row['ratio to limit']:.2f}",
    )


HEADINGS = ("case", "ours", "best peer", "ratio", "limit", "ratio to limit")
ALIGNED_RIGHT = (False, True, False, True, True, True)


def by_job(rows):
    jobs = {}
    for row in rows:
        jobs.setdefault(row["job"], []).append(row)
    return jobs.items()


def plain_table(rows):
    lines = [HEADINGS, *(cells(row) for row in rows)]
    widths = [max(len(line[i]) for line in lines) for i in range(len(HEADINGS))]

    def line_of(texts):
        padded = (t.rjust(w) if right else t.ljust(w) for t, w, right in zip(texts, widths, ALIGNED_RIGHT))
        return ("  " + "  ".join(padded)).rstrip()

    text = [line_of(HEADINGS)]
    for job, its_rows in by_job(rows):
        text += ["", job, *(line_of(cells(row)) for row in its_rows)]
    return "\n".join(text) + "\n"


def markdown_table(rows):
    def line_of(texts):
        return "| " + " | ".join(text.replace("|", "\\|") for text in texts) + " |"

    text = [line_of(HEADINGS), "|" + "|".join("---:" if right else "---" for right in ALIGNED_RIGHT) + "|"]
    for job, its_rows in by_job(rows):
        text += [line_of((f"**{job}**", *[""] * (len(HEADINGS) - 1))), *(line_of(cells(row)) for row in its_rows)]
    return "\n".join(text) + "\n"


def conditions(machine, missing):
    """Under what the figures were taken, in sentences."""
    cores = f"{machine['cores']} core" + ("" if machine["cores"] == 1 else "s")
    of_cpu = f" of {machine['cpu']}" if machine["cpu"] else ""
    compiler = f", {machine['compiler']}" if machine["compiler"] else ""
    repetitions = machine["repetitions"]
    how = f"Medians of the CPU time of {repetitions} repetitions" if repetitions > 1 else "CPU time of one run"
    text = f"{how}; {machine['date']}, {cores}{of_cpu}{compiler}."
    return " ".join([text, *(f"{sentence}." for sentence in missing)])


def main():
    parser = argparse.ArgumentParser(description="Makes a table of Google Benchmark's results.")
    parser.add_argument("results", nargs="+", help="a program's JSON")
    parser.add_argument("--output", type=Path, required=True, help="the folder for bench.json and bench.md")
    parser.add_argument("--cpu", default="", help="the processor's name")
    parser.add_argument("--compiler", default="", help="the compiler's name and version")
    parser.add_argument("--missing", action="append", default=[], help="says which peer is left out, and where")
    arguments = parser.parse_args()
    try:
        context, groups = read_results(arguments.results)
        rows = make_rows(groups)
    except Unusable as error:
        sys.exit(f"bench_table: {error}")

    machine = {
        "cpu": arguments.cpu,
        "cores": context["num_cpus"],
        "compiler": arguments.compiler,
        "date": context["date"][:10],
        "repetitions": max(len(records) for libraries in groups.values() for records in libraries.values()),
    }
    below = conditions(machine, arguments.missing)
    everything = {"machine": machine, "missing peers": arguments.missing, "unit": "ns", "cases": rows}
    json_text = json.dumps(everything, indent=2, ensure_ascii=False) + "\n"
    (arguments.output / "bench.json").write_text(json_text, encoding="utf-8")
    (arguments.output / "bench.md").write_text(f"{markdown_table(rows)}\n{below}\n", encoding="utf-8")
    print(f"{plain_table(rows)}\n{below}")


if __name__ == "__main__":
    main()
