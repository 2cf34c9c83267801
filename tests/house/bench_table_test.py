"""What scripts/bench_table.py makes of Google Benchmark's results. Usage: bench_table_test.py BENCH_TABLE"""
import json
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PROGRAM = Path(sys.argv.pop(1))
CANNED = Path(__file__).with_name("bench_results.json")


def repetition(name, cpu_time, family=0, instance=0, unit="ns", **more):
    """One repetition of a benchmark, as Google Benchmark writes it."""
    record = {"run_name": name, "run_type": "iteration", "family_index": family, "per_family_instance_index": instance}
    return {**record, "repetition_index": 0, "cpu_time": cpu_time, "time_unit": unit, **more}


class BenchTable(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.output = self.folder / "output"
        self.output.mkdir()

    def run_on(self, *results, options=()):
        command = [sys.executable, "-B", PROGRAM, "--output", self.output, *options, *results]
        self.run_result = subprocess.run(command, capture_output=True, encoding="utf-8")
        return self.run_result

    def run_on_records(self, *files, options=()):
        paths = []
        for i, records in enumerate(files):
            paths.append(self.folder / f"{i}.json")
            context = {"date": "2024-02-03T04:05:06+00:00", "num_cpus": 1}
            paths[-1].write_text(json.dumps({"context": context, "benchmarks": records}), encoding="utf-8")
        return self.run_on(*paths, options=options)

    def rows(self):
        self.assertEqual(self.run_result.stderr, "")
        self.assertEqual(self.run_result.returncode, 0)
        return json.loads((self.output / "bench.json").read_text(encoding="utf-8"))["cases"]

    def expect_failure(self, line):
        self.assertEqual(self.run_result.returncode, 1)
        self.assertEqual(self.run_result.stderr, f"bench_table: {line}\n")
        self.assertEqual(self.run_result.stdout, "")
        self.assertEqual(list(self.output.iterdir()), [])

    def test_prints_one_table_job_by_job(self):
        self.run_on(CANNED, options=["--cpu=Abacus", "--compiler=g++ 12.2.0"])

        self.assertEqual(self.run_result.stderr, "")
        self.assertEqual(
            self.run_result.stdout,
            "  case                  ours  best peer               ratio    limit  ratio to limit\n"
            "\n"
            "array\n"
            "  append              2.00 s  4.00 s (std::vector)     0.50\n"
            "  sort, 8            60.0 ns  50.0 ns (std::sort)      1.20  40.0 ns            1.50\n"
            "  sort, 1 024        8.00 µs  2.00 µs (std::sort)      4.00\n"
            "\n"
            "stream\n"
            "  write, contiguous  1.50 ms  3.00 ms (std::ostream)   0.50  1.00 ms            1.50\n"
            "  write, chunked     2.40 ms  3.00 ms (std::ostream)   0.80  2.00 ms            1.20\n"
            "\n"
            "Medians of the CPU time of 3 repetitions; 2024-02-03, 2 cores of Abacus, g++ 12.2.0.\n",
        )

    def test_writes_the_table_in_markdown(self):
        self.run_on(CANNED, options=["--missing=The benchmark array goes without Boost: not found"])

        self.assertEqual(
            (self.output / "bench.md").read_text(encoding="utf-8"),
            "| case | ours | best peer | ratio | limit | ratio to limit |\n"
            "|---|---:|---|---:|---:|---:|\n"
            "| **array** |  |  |  |  |  |\n"
            "| append | 2.00 s | 4.00 s (std::vector) | 0.50 |  |  |\n"
            "| sort, 8 | 60.0 ns | 50.0 ns (std::sort) | 1.20 | 40.0 ns | 1.50 |\n"
            "| sort, 1 024 | 8.00 µs | 2.00 µs (std::sort) | 4.00 |  |  |\n"
            "| **stream** |  |  |  |  |  |\n"
            "| write, contiguous | 1.50 ms | 3.00 ms (std::ostream) | 0.50 | 1.00 ms | 1.50 |\n"
            "| write, chunked | 2.40 ms | 3.00 ms (std::ostream) | 0.80 | 2.00 ms | 1.20 |\n"
            "\n"
            "Medians of the CPU time of 3 repetitions; 2024-02-03, 2 cores. "
            "The benchmark array goes without Boost: not found.\n",
        )

    def test_writes_everything_as_json(self):
        self.run_on(CANNED, options=["--cpu=Abacus", "--compiler=g++ 12.2.0", "--missing=No Boost"])

        everything = json.loads((self.output / "bench.json").read_text(encoding="utf-8"))
        self.assertEqual(
            everything["machine"],
            {"cpu": "Abacus", "cores": 2, "compiler": "g++ 12.2.0", "date": "2024-02-03", "repetitions": 3},
        )
        self.assertEqual(everything["missing peers"], ["No Boost"])
        self.assertEqual(everything["unit"], "ns")
        self.assertEqual(
            everything["cases"][1],
            {
                "job": "array",
                "case": "sort",
                "variant": None,
                "size": 8,
                "ours": 60.0,
                "peers": {"std::sort": 50.0, "std::stable_sort": 70.0},
                "best peer": "std::sort",
                "ratio": 1.2,
                "limit": 40.0,
                "ratio to limit": 1.5,
            },
        )

    def test_takes_the_time_of_an_item_where_every_library_counts_them(self):
        self.run_on_records(
            [
                repetition("evolution/child/ours/100", 800.0, 0, items_per_second=5e6),
                repetition("evolution/child/pagmo/100", 300.0, 1, items_per_second=2e6),
                repetition("evolution/start/ours", 800.0, 2, items_per_second=5e6),
                repetition("evolution/start/pagmo", 400.0, 3),
            ]
        )

        child, start = self.rows()
        self.assertAlmostEqual(child["ours"], 200.0)
        self.assertAlmostEqual(child["ratio"], 0.4)
        self.assertAlmostEqual(start["ours"], 800.0)
        self.assertAlmostEqual(start["ratio"], 2.0)

    def test_compares_a_case_without_peers_with_its_limit_alone(self):
        self.run_on_records([repetition("list/sort/ours/8", 3.0), repetition("list/sort/limit/8", 2.0, 1)])

        (row,) = self.rows()
        self.assertEqual((row["best peer"], row["ratio"], row["ratio to limit"]), (None, None, 1.5))

    def test_shows_a_case_with_nothing_beside_it(self):
        self.run_on_records([repetition("list/sort/ours", 3.0)])

        (row,) = self.rows()
        self.assertEqual((row["ours"], row["ratio"], row["limit"]), (3.0, None, None))

    def test_brings_together_what_several_programs_measure_of_one_job(self):
        self.run_on_records(
            [repetition("list/append/ours", 1.0), repetition("map/find/ours", 2.0, 1)],
            [repetition("list/walk/ours", 3.0)],
        )

        self.assertEqual([row["case"] for row in self.rows()], ["append", "walk", "find"])

    def test_leaves_google_benchmarks_settings_out_of_the_name(self):
        self.run_on_records(
            [
                repetition("map/build/ours/1000/iterations:1/real_time", 5.0),
                repetition("map/find/ours/min_time:0.100", 6.0, 1),
            ]
        )

        self.assertEqual([(row["case"], row["size"]) for row in self.rows()], [("build", 1000), ("find", None)])

    def test_refuses_a_name_of_another_form(self):
        for name in ("Walk", "list/walk", "list/walk/ours/8/8", "list/walk/ours/many", "list//ours"):
            with self.subTest(name):
                self.run_on_records([repetition(name, 1.0)])

                self.expect_failure(f"no name of the form job/case/library[/size]: {name}")

    def test_fails_when_a_benchmark_gave_up(self):
        self.run_on_records(
            [
                repetition("list/walk/ours", 1.0),
                repetition("list/walk/std::list", 0.0, 1, error_occurred=True, error_message="results differ"),
            ]
        )

        self.expect_failure("list/walk/std::list failed: results differ")

    def test_fails_when_two_benchmarks_have_one_name(self):
        self.run_on_records([repetition("list/walk/ours", 1.0)], [repetition("list/walk/ours", 1.0)])

        self.expect_failure("two benchmarks are called list/walk/ours")

    def test_fails_when_a_case_has_nothing_of_ours(self):
        self.run_on_records([repetition("list/walk/std::list/8", 1.0)])

        self.expect_failure("nothing of ours in list/walk/8")

    def test_fails_without_results(self):
        self.run_on_records([])

        self.expect_failure("no results")

    def test_fails_on_a_file_that_broke_off(self):
        broken = self.folder / "broken.json"
        broken.write_text('{"context": {', encoding="utf-8")

        self.run_on(broken)

        self.assertEqual(self.run_result.returncode, 1)
        self.assertRegex(self.run_result.stderr, r"\Abench_table: .*broken\.json holds no results: .*\n\Z")
        self.assertEqual(list(self.output.iterdir()), [])


if __name__ == "__main__":
    unittest.main()
