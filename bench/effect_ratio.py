#!/usr/bin/env python3
"""Prints, per effect and size, its speed against memcpy of the frame and against its OpenCV peer
on the same frame (both from the same run): convertScaleAbs for the tone effects, blur 13 x 13
for EffectBlur, blur 5 x 5 for EffectBlurEx with kernel 5, filter2D with the sharpen kernel for
EffectSharpen.

Usage: framekit_bench --benchmark_filter='effect/|memcpy/|peer/cv_' --benchmark_out=run.json \
           --benchmark_out_format=json
       bench/effect_ratio.py run.json
With --benchmark_repetitions the medians are compared. Ratios above 1 mean the effect is faster.
"""
import json
import sys


def main():
    with open(sys.argv[1]) as f:
        runs = json.load(f)["benchmarks"]
    if any(r.get("run_type") == "aggregate" for r in runs):
        runs = [r for r in runs if r.get("aggregate_name") == "median"]
    rate = {r["run_name"]: r["items_per_second"] for r in runs if "items_per_second" in r}
    peers = {"EffectBlur": "cv_blur13", "EffectBlurEx5": "cv_blur5", "EffectSharpen": "cv_filter2D"}
    tone = {"EffectLightness", "EffectDarkness", "EffectContrast", "EffectSaturation",
            "EffectPosterize", "EffectSolorize", "EffectGreyscale", "EffectInvert"}
    print(f"{'effect':20s} {'size':10s} {'Mpx/s':>8s} {'vs memcpy':>10s} {'vs peer':>8s}  peer")
    for name, ours in rate.items():
        parts = name.split("/")
        if len(parts) != 3 or parts[0] != "effect":
            continue
        size = parts[2]
        copy = rate.get(f"memcpy/{size}x3")
        peer_name = peers.get(parts[1], "cv_convertScaleAbs" if parts[1] in tone else None)
        peer = rate.get(f"peer/{peer_name}/{size}") if peer_name else None
        vs_copy = f"{ours / copy:10.2f}" if copy else f"{'-':>10s}"
        vs_peer = f"{ours / peer:8.2f}" if peer else f"{'-':>8s}"
        print(f"{parts[1]:20s} {size:10s} {ours / 1e6:8.0f} {vs_copy} {vs_peer}  {peer_name or ''}")


if __name__ == "__main__":
    main()
