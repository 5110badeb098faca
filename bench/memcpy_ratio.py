#!/usr/bin/env python3
"""Prints each benchmark's bytes/s as a ratio of the memcpy run its label names.

Usage: framekit_bench --benchmark_out=run.json --benchmark_out_format=json ...
       bench/memcpy_ratio.py run.json [name regex]
With --benchmark_repetitions the medians are compared; adding
--benchmark_enable_random_interleaving=true spreads a noisy machine's disturbances evenly over
the runs and their yardsticks.
"""
import json
import re
import sys


def main():
    with open(sys.argv[1]) as f:
        runs = json.load(f)["benchmarks"]
    pattern = re.compile(sys.argv[2] if len(sys.argv) > 2 else "")
    if any(r.get("run_type") == "aggregate" for r in runs):
        runs = [r for r in runs if r.get("aggregate_name") == "median"]
    rate = {r["run_name"]: r["bytes_per_second"] for r in runs if "bytes_per_second" in r}
    for r in runs:
        label = r.get("label", "")
        if not label.startswith("vs ") or not pattern.search(r["run_name"]):
            continue
        base = rate.get(label[3:])
        if base:
            print(f"{r['run_name']:50s} {r['bytes_per_second'] / 1e9:7.2f} GB/s  "
                  f"{r['bytes_per_second'] / base:5.2f}x {label[3:]}")


if __name__ == "__main__":
    main()
