#!/usr/bin/env python3
"""Prints, per conversion and size, framekit's pixels/s against the fastest peer's.

Usage: framekit_bench --benchmark_filter=convert/ --benchmark_repetitions=15 \
           --benchmark_enable_random_interleaving=true --benchmark_out=run.json \
           --benchmark_out_format=json
       bench/peer_ratio.py run.json [family]
Names are <family>/<what>/<size>/<implementation>, the family "convert" unless given (the resize
benchmarks are "resize"). Each implementation's repetitions give a
median rate and a best rate; the best is the one least disturbed by other work on a shared
machine, and with random interleaving every implementation had the same chances at it. A ratio
above 1 means framekit is faster than every peer.
"""
import json
import statistics
import sys


def main():
    with open(sys.argv[1]) as f:
        runs = json.load(f)["benchmarks"]
    family = sys.argv[2] if len(sys.argv) > 2 else "convert"
    rates = {}
    for r in runs:
        parts = r["run_name"].split("/")
        if (len(parts) != 4 or parts[0] != family or r.get("run_type") == "aggregate" or
                "items_per_second" not in r):
            continue
        rates.setdefault((parts[1], parts[2]), {}).setdefault(parts[3], []).append(
            r["items_per_second"])
    print(f"{'what':16s} {'size':20s} {'framekit Mpx/s':>14s} {'best peer':>16s} "
          f"{'median ratio':>12s} {'best ratio':>10s}")
    for (conv, size), impls in sorted(rates.items()):
        ours = impls.pop("framekit", None)
        if ours is None or not impls:
            continue
        median = {k: statistics.median(v) for k, v in impls.items()}
        best = {k: max(v) for k, v in impls.items()}
        peer = max(median, key=median.get)
        best_peer = max(best.values())
        others = ", ".join(f"{k} {v / 1e6:.0f}" for k, v in sorted(median.items()))
        print(f"{conv:16s} {size:20s} {statistics.median(ours) / 1e6:14.0f} "
              f"{peer + f' {median[peer] / 1e6:.0f}':>16s} "
              f"{statistics.median(ours) / median[peer]:12.2f} {max(ours) / best_peer:10.2f}"
              f"   ({others})")


if __name__ == "__main__":
    main()
