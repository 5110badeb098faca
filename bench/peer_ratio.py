#!/usr/bin/env python3
"""Prints, per conversion and size, framekit's pixels/s against the fastest peer's.

Usage: framekit_bench --benchmark_filter=convert/ --benchmark_out=run.json \
           --benchmark_out_format=json
       bench/peer_ratio.py run.json
Names are convert/<export>/<size>/<implementation>. With --benchmark_repetitions the medians
are compared. A ratio above 1 means framekit is faster than every peer.
"""
import json
import sys


def main():
    with open(sys.argv[1]) as f:
        runs = json.load(f)["benchmarks"]
    if any(r.get("run_type") == "aggregate" for r in runs):
        runs = [r for r in runs if r.get("aggregate_name") == "median"]
    table = {}
    for r in runs:
        parts = r["run_name"].split("/")
        if len(parts) != 4 or parts[0] != "convert" or "items_per_second" not in r:
            continue
        table.setdefault((parts[1], parts[2]), {})[parts[3]] = r["items_per_second"]
    print(f"{'conversion':14s} {'size':10s} {'framekit Mpx/s':>14s} {'best peer':>24s} {'ratio':>6s}")
    for (conv, size), impls in table.items():
        ours = impls.pop("framekit", None)
        if ours is None or not impls:
            continue
        peer, rate = max(impls.items(), key=lambda kv: kv[1])
        others = ", ".join(f"{k} {v / 1e6:.0f}" for k, v in sorted(impls.items()))
        print(f"{conv:14s} {size:10s} {ours / 1e6:14.0f} {peer + f' {rate / 1e6:.0f}':>24s} "
              f"{ours / rate:6.2f}   ({others})")


if __name__ == "__main__":
    main()
