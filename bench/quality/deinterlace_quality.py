#!/usr/bin/python3
"""Deinterlacing quality and speed: framekit's three deinterlacers beside ffmpeg's.

Usage: bench/quality/deinterlace_quality.py [path/to/libframekit.so] [options]
  --quick               4 interlaced frames per sequence instead of 10 (for tuning loops)
  --only framekit|ffmpeg  run one side; the other side's rows come from the cache if present
  --cavt 12,24          CAVT thresholds; "+12,24" adds to the defaults, "none" skips the filter
  --triangle 64         triangle centre weights (out of 256), same forms
  --blend 8:24[:c0:c1]  blend thresholds and constants, comma-separated, same forms
  --json PATH           results file (default bench/quality/deinterlace_results.json)
  --compare PATH        print the differences from an earlier results file
  --fresh               recompute ffmpeg's rows even when the cache has them
Needs Debian's python3-numpy, python3-opencv, python3-skimage and the ffmpeg program.

Material: skimage's rocket, chelsea, hubble_deep_field and immunohistochemistry. A 320x240
window moves over each photograph in three ways: a slow diagonal pan (0.35, 0.35 px per field),
a fast one (3.3, 2.2 px per field) and a zoom out about the centre (the picture shrinks by 1% a
field, to 0.83 after 20 fields; it is never enlarged). Progressive frames P0, P1, ... are
rendered at field rate with Lanczos interpolation, the window and the kernel staying inside the
photograph. Interlaced frame k weaves the even rows of P(2k) with the odd rows of P(2k+1): top
field first. The reference for deinterlaced frame k is P(2k), the time of its top field. The
first and last frame of each sequence are scored for nobody: three-frame methods need both
neighbours.

Figures (higher is better except ms):
  RGB      PSNR in dB of the whole BGR frame, averaged over frames and sequences;
  Y, SSIM  PSNR and SSIM (7x7 window, data range 255) of BT.601 luma 0.299R+0.587G+0.114B,
           computed in floating point from both frames;
  ms       single-thread CPU time per 320x240 frame: framekit's calls alone (each frame's
           fastest of three calls); ffmpeg's CPU time with the filter minus that with a null filter, over at
           least 1500 frames (best of up to three runs);
  slow, fast, zoom  RGB PSNR of each motion alone.

ffmpeg reads and writes planar G, B, R (gbrp), so nothing converts colours; pp treats the three
planes alike. pp=ci keeps the odd rows, so its frames go in upside down (the even rows become
odd) and come back upright. kerndeint takes no planar RGB and its YUV path clips to 16..235,
so it runs on packed bgr0 (its own RGB path, 4 bytes a pixel), with order=1 to keep the top
field. Every ffmpeg run is checked for an inserted scaler and, on cuts between photographs,
for output frame k lining up with input k. ffmpeg's rows depend only on the material and the
ffmpeg build, so the results file keeps them and later runs reuse them.
"""
import argparse
import ctypes
import hashlib
import json
import os
import re
import subprocess
import tempfile
import time

import cv2
import numpy as np
import skimage.data
from skimage.metrics import structural_similarity

PICTURES = ["rocket", "chelsea", "hubble_deep_field", "immunohistochemistry"]
WIDTH, HEIGHT = 320, 240
MOTIONS = {"slow": (0.35, 0.35), "fast": (3.3, 2.2), "zoom": 0.99}  # px, or scale, per field
LANCZOS_REACH = 4
TIMED_FRAMES = 1500  # ffmpeg's timing runs loop the material to at least this many frames

CAVT = [4, 8, 16, 32, 64]
TRIANGLE = [0, 43, 86, 128, 170, 213]
BLEND = [(5, 20, 0.5, 0.5), (10, 30, 0.5, 0.5), (20, 60, 0.5, 0.5)]

FFMPEG = [  # group, label, filter after setfield=tff, pixel format ("flipped": upside down)
    ("ffmpeg single", "estdif", "estdif=mode=frame:parity=tff:deint=all", "gbrp"),
    ("ffmpeg single", "kerndeint", "kerndeint=order=1", "bgr0"),
    ("ffmpeg single", "w3fdif", "w3fdif=mode=frame:parity=tff:deint=all", "gbrp"),
    ("ffmpeg single", "pp li", "pp=li", "gbrp"),
    ("ffmpeg single", "pp ci", "pp=ci", "gbrp flipped"),
    ("ffmpeg single", "pp md", "pp=md", "gbrp"),
    ("ffmpeg single", "pp fd", "pp=fd", "gbrp"),
    ("ffmpeg 3-frame", "yadif", "yadif=mode=send_frame:parity=tff:deint=all", "gbrp"),
    ("ffmpeg 3-frame", "bwdif", "bwdif=mode=send_frame:parity=tff:deint=all", "gbrp"),
    ("ffmpeg blend", "pp lb", "pp=lb", "gbrp"),
    ("ffmpeg blend", "pp l5", "pp=l5", "gbrp"),
]


class Params(ctypes.Structure):
    _fields_ = [("threshold0", ctypes.c_int32), ("threshold1", ctypes.c_int32),
                ("constant0", ctypes.c_double), ("constant1", ctypes.c_double)]


class FrameKit:
    def __init__(self, path):
        self.lib = ctypes.CDLL(path)
        self.lib.Init()
        ptr, i32 = ctypes.c_void_p, ctypes.c_int32
        for name, last in (("EffectDeinterlaceCAVT", ctypes.c_uint16),
                           ("EffectDeinterlaceTriangle", ctypes.c_uint32)):
            fn = getattr(self.lib, name)
            fn.argtypes, fn.restype = [ptr, i32, i32, ptr, last], None
        fn = self.lib.EffectDeinterlaceBlend
        fn.argtypes = [ptr, ptr, ptr, ptr, i32, i32, i32, i32, ctypes.POINTER(Params)]
        fn.restype = None
        self.calls, self.warned = 0, set()

    def run(self, kind, param, prev, cur, nxt):
        """One deinterlaced frame (HxWx3 BGR) and the CPU seconds the call took."""
        h, w = cur.shape[:2]
        ptr = ctypes.c_void_p
        if kind == "blend":
            dst = np.empty_like(cur)
            params = Params(*param)
            t = time.process_time()
            self.lib.EffectDeinterlaceBlend(prev.ctypes.data_as(ptr), cur.ctypes.data_as(ptr),
                                            nxt.ctypes.data_as(ptr), dst.ctypes.data_as(ptr),
                                            w, h, 3 * w, 3 * w, ctypes.byref(params))
            return dst, time.process_time() - t
        frame = cur.copy()
        self.calls += 1
        temp = np.full_like(cur, self.calls * 97 % 256)  # garbage that differs from call to call
        lib = self.lib
        fn = lib.EffectDeinterlaceCAVT if kind == "CAVT" else lib.EffectDeinterlaceTriangle
        t = time.process_time()
        fn(frame.ctypes.data_as(ptr), w, h, temp.ctypes.data_as(ptr), param)
        seconds = time.process_time() - t
        if not np.array_equal(temp, frame) and (kind, param) not in self.warned:
            self.warned.add((kind, param))
            print(f"warning: {kind} {param}: the scratch buffer does not hold the result")
        return frame, seconds


def picture(name):
    return np.ascontiguousarray(getattr(skimage.data, name)()[:, :, ::-1])  # blue, green, red


def render(img, motion, fields):
    """Progressive field-rate frames of the moving window."""
    ih, iw = img.shape[:2]
    frames = []
    for t in range(fields):
        if motion == "zoom":
            scale = MOTIONS["zoom"] ** t
            x0, y0 = (iw - 1 - (WIDTH - 1) / scale) / 2, (ih - 1 - (HEIGHT - 1) / scale) / 2
        else:
            vx, vy = MOTIONS[motion]
            scale = 1.0
            x0 = (iw - WIDTH) / 2 + vx * (t - (fields - 1) / 2)
            y0 = (ih - HEIGHT) / 2 + vy * (t - (fields - 1) / 2)
        x1, y1 = x0 + (WIDTH - 1) / scale, y0 + (HEIGHT - 1) / scale
        assert x0 >= LANCZOS_REACH and y0 >= LANCZOS_REACH, (motion, t)
        assert x1 + LANCZOS_REACH <= iw - 1 and y1 + LANCZOS_REACH <= ih - 1, (motion, t)
        m = np.array([[1 / scale, 0, x0], [0, 1 / scale, y0]])
        frames.append(cv2.warpAffine(img, m, (WIDTH, HEIGHT), flags=cv2.INTER_LANCZOS4 |
                                     cv2.WARP_INVERSE_MAP, borderMode=cv2.BORDER_REFLECT))
    return np.stack(frames)


def weave(progressive):
    """Interlaced frame k: even rows of P(2k), odd rows of P(2k+1)."""
    frames = progressive[0::2].copy()
    frames[:, 1::2] = progressive[1::2, 1::2]
    return frames


class Material:
    def __init__(self, frames):
        self.settings = {"pictures": PICTURES, "size": [WIDTH, HEIGHT], "frames": frames,
                         "motions": MOTIONS, "render": "lanczos4, top field first"}
        self.frames = frames
        self.scored = range(1, frames - 1)
        self.sequences = []  # (motion, interlaced N x H x W x 3, references for the scored frames)
        for name in PICTURES:
            img = picture(name)
            for motion in MOTIONS:
                p = render(img, motion, 2 * frames)
                self.sequences.append((motion, weave(p), p[0::2][1:-1]))


def luma(bgr):
    return bgr[..., 2] * 0.299 + bgr[..., 1] * 0.587 + bgr[..., 0] * 0.114


def psnr(a, b, peak=255.0):
    mse = np.mean((np.asarray(a, np.float64) - np.asarray(b, np.float64)) ** 2)
    return 99.0 if mse == 0 else 10 * np.log10(peak ** 2 / mse)


def score(group, label, outputs, material, ms):
    """outputs: per sequence, the deinterlaced scored frames."""
    rgb, y, ssim, motion = [], [], [], {m: [] for m in MOTIONS}
    for (moved, _, refs), outs in zip(material.sequences, outputs):
        for out, ref in zip(outs, refs):
            ly, lr = luma(out.astype(np.float64)), luma(ref.astype(np.float64))
            rgb.append(psnr(out, ref))
            motion[moved].append(rgb[-1])
            y.append(psnr(ly, lr))
            ssim.append(structural_similarity(ly, lr, data_range=255))
    return {"group": group, "method": label, "rgb": np.mean(rgb), "y": np.mean(y),
            "ssim": np.mean(ssim), "ms": ms, "motion": {m: np.mean(v) for m, v in motion.items()}}


def framekit_rows(fk, material, methods):
    rows = []
    for kind, param in methods:
        label = f"{kind} {':'.join(f'{v:g}' for v in param) if kind == 'blend' else param}"
        seconds, outputs = [], None
        for _ in range(3):
            passed = []
            for _, frames, _ in material.sequences:
                for k in material.scored:
                    out, dt = fk.run(kind, param, frames[k - 1], frames[k], frames[k + 1])
                    passed.append(out)
                    seconds.append(dt)
            if outputs is not None and not np.array_equal(outputs, passed):
                raise SystemExit(f"{label}: output changes between identical runs")
            outputs = passed
        best = np.min(np.reshape(seconds, (3, -1)), axis=0).mean()  # each frame's fastest call
        outputs = np.split(np.stack(outputs), len(material.sequences))
        rows.append(score("framekit", label, outputs, material, 1000 * best))
    return rows


def pack(frames, fmt):
    """Bytes for ffmpeg: "gbrp" planes G, B, R; "bgr0" packed with a fourth byte."""
    if fmt.endswith("flipped"):
        frames = frames[:, ::-1]
    if fmt.startswith("gbrp"):
        return np.stack([frames[..., 1], frames[..., 0], frames[..., 2]], axis=1).tobytes()
    return np.concatenate([frames, np.zeros_like(frames[..., :1])], axis=-1).tobytes()


def unpack(data, fmt):
    if fmt.startswith("gbrp"):
        planes = np.frombuffer(data, np.uint8).reshape(-1, 3, HEIGHT, WIDTH)
        frames = np.stack([planes[:, 1], planes[:, 0], planes[:, 2]], axis=-1)
    else:
        frames = np.frombuffer(data, np.uint8).reshape(-1, HEIGHT, WIDTH, 4)[..., :3]
    return frames[:, ::-1] if fmt.endswith("flipped") else frames


def ffmpeg(path, fmt, filt, tail, loops=0):
    cmd = ["ffmpeg", "-nostdin", "-hide_banner", "-threads", "1", "-f", "rawvideo",
           "-pix_fmt", fmt.split()[0], "-s", f"{WIDTH}x{HEIGHT}", "-stream_loop", str(loops),
           "-i", path, "-threads", "1", "-filter_threads", "1", "-filter_complex_threads", "1",
           "-vf", f"setfield=tff,{filt}"] + tail
    done = subprocess.run(cmd, capture_output=True, check=True)
    return done.stdout, done.stderr.decode(errors="replace")


def staged(frames, fmt, workdir, name):
    """The frames as a file in ffmpeg's layout, written once."""
    path = os.path.join(workdir, f"{name} {fmt}")
    if not os.path.exists(path):
        with open(path, "wb") as f:
            f.write(pack(frames, fmt))
    return path


def deinterlace_ffmpeg(path, count, fmt, filt):
    """One deinterlaced frame per input frame, checked for conversions ffmpeg slipped in."""
    out, log = ffmpeg(path, fmt, filt,
                      ["-v", "verbose", "-f", "rawvideo", "-pix_fmt", fmt.split()[0], "-"])
    if "auto_scale" in log or "auto-inserting" in log:
        raise SystemExit(f"{filt}: ffmpeg converted the {fmt} frames")
    out = unpack(out, fmt)
    if len(out) != count:
        raise SystemExit(f"{filt}: {count} frames in, {len(out)} out")
    return out


def cuts():
    """Still shots, each unlike the others: eight cuts between photographs."""
    shots = [render(picture(name), "slow", 2)[0] for name in PICTURES]
    return np.stack([np.roll(shots[i % 4], 7 * i, axis=1) for i in range(8)])


def cpu_seconds(path, fmt, filt, loops):
    """ffmpeg's CPU time (user and system), the least of three runs unless they take long."""
    best, spent = None, 0.0
    for _ in range(3):
        log = ffmpeg(path, fmt, filt, ["-nostats", "-benchmark", "-f", "null", "-"], loops)[1]
        times = re.search(r"bench: utime=([0-9.]+)s stime=([0-9.]+)s", log).groups()
        seconds = float(times[0]) + float(times[1])
        best, spent = seconds if best is None else min(best, seconds), spent + seconds
        if spent > 3:
            break
    return best


def ffmpeg_rows(material, cache, compute):
    todo = [m for m in FFMPEG if f"{m[2]} {m[3]}" not in cache]
    if todo and compute:
        frames = np.concatenate([seq for _, seq, _ in material.sequences])
        shots = cuts()
        loops = -(-TIMED_FRAMES // len(frames)) - 1
        timed = len(frames) * (loops + 1)
        baseline = {}
        with tempfile.TemporaryDirectory() as workdir:
            for group, label, filt, fmt in todo:
                out = deinterlace_ffmpeg(staged(shots, fmt, workdir, "cuts"), len(shots), fmt, filt)
                found = [int(np.argmax([psnr(o, s) for s in shots])) for o in out]
                if found != list(range(len(shots))):
                    raise SystemExit(f"{filt}: output frames resemble inputs {found}")
                # Every filter reaches at most one frame either side, and no frame next to a cut
                # between sequences is scored, so all the sequences run as one stream.
                path = staged(frames, fmt, workdir, "material")
                out = deinterlace_ffmpeg(path, len(frames), fmt, filt)
                if fmt not in baseline:
                    baseline[fmt] = cpu_seconds(path, fmt, "null", loops)
                ms = 1000 * max(0.0, cpu_seconds(path, fmt, filt, loops) - baseline[fmt]) / timed
                outputs = [seq[1:-1] for seq in np.split(out, len(material.sequences))]
                cache[f"{filt} {fmt}"] = score(group, label, outputs, material, ms)
    return [cache[f"{filt} {fmt}"] for _, _, filt, fmt in FFMPEG if f"{filt} {fmt}" in cache]


def print_table(rows):
    head = f"{'group':15s} {'method':20s} {'RGB':>6s} {'Y':>6s} {'SSIM':>6s} {'ms':>7s}"
    print(head + "".join(f" {m:>6s}" for m in MOTIONS))
    group = None
    for r in rows:
        if r["group"] != group and group is not None:
            print()
        group = r["group"]
        print(f"{r['group']:15s} {r['method']:20s} {r['rgb']:6.2f} {r['y']:6.2f} {r['ssim']:6.4f}"
              f" {r['ms']:7.3f}" + "".join(f" {r['motion'][m]:6.2f}" for m in MOTIONS))


def print_compare(rows, old, key):
    if old.get("key") != key:
        print("note: the earlier results were measured on other material")
    before = {(r["group"], r["method"]): r for r in old.get("rows", [])}
    print(f"\nchange from the earlier results\n{'group':15s} {'method':20s} {'RGB':>6s} {'Y':>6s}"
          f" {'SSIM':>7s} {'ms':>7s}" + "".join(f" {m:>6s}" for m in MOTIONS))
    for r in rows:
        b = before.get((r["group"], r["method"]))
        if b == r:
            continue
        if b is None:
            print(f"{r['group']:15s} {r['method']:20s} new")
            continue
        print(f"{r['group']:15s} {r['method']:20s} {r['rgb'] - b['rgb']:+6.2f}"
              f" {r['y'] - b['y']:+6.2f} {r['ssim'] - b['ssim']:+7.4f} {r['ms'] - b['ms']:+7.3f}"
              + "".join(f" {r['motion'][m] - b['motion'][m]:+6.2f}" for m in MOTIONS))


def values(text, default, parse):
    if text is None:
        return default
    if text == "none":
        return []
    extra = [parse(v) for v in text.lstrip("+").split(",")]
    return default + extra if text.startswith("+") else extra


def blend_params(text):
    v = text.split(":")
    if len(v) not in (2, 4):
        raise ValueError(f"blend parameters are t0:t1[:c0:c1], not {text}")
    return (int(v[0]), int(v[1])) + ((float(v[2]), float(v[3])) if len(v) == 4 else (0.5, 0.5))


def load(path):
    try:
        with open(path) as f:
            return json.load(f)
    except (OSError, ValueError):
        return {}


def main():
    ap = argparse.ArgumentParser(description="framekit's and ffmpeg's deinterlacers compared")
    ap.add_argument("library", nargs="?", default="build/linux/bin/libframekit.so")
    ap.add_argument("--quick", action="store_true")
    ap.add_argument("--only", choices=["framekit", "ffmpeg"])
    ap.add_argument("--cavt")
    ap.add_argument("--triangle")
    ap.add_argument("--blend")
    ap.add_argument("--json", default="bench/quality/deinterlace_results.json")
    ap.add_argument("--compare")
    ap.add_argument("--fresh", action="store_true")
    args = ap.parse_args()
    try:
        methods = ([("CAVT", v) for v in values(args.cavt, CAVT, int)]
                   + [("triangle", v) for v in values(args.triangle, TRIANGLE, int)]
                   + [("blend", v) for v in values(args.blend, BLEND, blend_params)])
    except ValueError as e:
        ap.error(str(e))

    started = time.perf_counter()
    material = Material(4 if args.quick else 10)
    version = subprocess.run(["ffmpeg", "-version"], capture_output=True, text=True).stdout
    key = hashlib.sha1(json.dumps([material.settings, version.split("\n")[0]],
                                  sort_keys=True).encode()).hexdigest()[:16]
    caches = load(args.json).get("ffmpeg", {})
    cache = {} if args.fresh else caches.get(key, {})

    rows = []
    if args.only != "ffmpeg":
        rows += framekit_rows(FrameKit(args.library), material, methods)
    rows += ffmpeg_rows(material, cache, compute=args.only != "framekit")
    if args.only == "framekit" and len(cache) < len(FFMPEG):
        print("note: some ffmpeg rows are not cached for this material; run without --only")
    caches[key] = cache

    print(f"{len(material.sequences)} sequences of {material.frames} interlaced {WIDTH}x{HEIGHT}"
          f" frames, {len(material.scored)} scored each; RGB, Y and motions in dB")
    print_table(rows)
    if args.compare:
        print_compare(rows, load(args.compare), key)
    with open(args.json, "w") as f:
        json.dump({"key": key, "material": material.settings, "library": args.library,
                   "rows": rows, "ffmpeg": caches}, f, indent=1)
    print(f"\n{time.perf_counter() - started:.0f} s; results in {args.json}")


if __name__ == "__main__":
    main()
