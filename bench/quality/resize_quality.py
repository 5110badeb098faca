#!/usr/bin/python3
"""Resize quality on real photographs: framekit's kernels beside OpenCV's and PIL's.

Usage: bench/quality/resize_quality.py [path/to/libframekit.so]
Needs Debian's python3-numpy, python3-opencv, python3-pil and python3-skimage (its pictures
rocket, chelsea, hubble_deep_field and immunohistochemistry, cropped to multiples of 12).

Figures, mean RGB PSNR in dB against the original (higher is better):
  down2, down3  reduce by 2 or 3 with the kernel, enlarge back with the same kernel;
  up2           enlarge by 2, with the kernel, a copy reduced by 2 with OpenCV's area mode.
Supersampling reduces only: its round trips enlarge with the family's linear kernel.
framekit runs through its exports: ResizeRGB24 for modes 1-4, ResizeRGB32LB (whose fit is the
whole box for these sizes) for every other code and the antialiasing flag.
"""
import ctypes
import sys

import cv2
import numpy as np
from PIL import Image
import skimage.data

PICTURES = ["rocket", "chelsea", "hubble_deep_field", "immunohistochemistry"]
AA = 1 << 29


class FrameKit:
    def __init__(self, path):
        self.lib = ctypes.CDLL(path)
        self.lib.Init()

    def resize(self, bgr, width, height, code):
        """bgr: HxWx3 uint8 (blue, green, red). code: ('mode', m) or ('code', c)."""
        kind, value = code
        h, w = bgr.shape[:2]
        if kind == "mode":
            stride_in, stride_out = (3 * w + 3) // 4 * 4, (3 * width + 3) // 4 * 4
            src = np.zeros((h, stride_in), np.uint8)
            src[:, :3 * w] = bgr.reshape(h, 3 * w)
            dst = np.zeros((height, stride_out), np.uint8)
            buf, size = ctypes.c_void_p(0), ctypes.c_int32(0)
            status = self.lib.ResizeRGB24(src.ctypes.data_as(ctypes.c_void_p), w, h,
                                          dst.ctypes.data_as(ctypes.c_void_p), width, height,
                                          value, ctypes.byref(buf), ctypes.byref(size))
            self.lib.zqippiFree(buf)
            assert status == 0, status
            return dst[:, :3 * width].reshape(height, width, 3)
        src = np.zeros((h, w, 4), np.uint8)
        src[:, :, :3] = bgr
        dst = np.zeros((height, width, 4), np.uint8)
        work = np.zeros_like(dst)

        class Size(ctypes.Structure):
            _fields_ = [("width", ctypes.c_int32), ("height", ctypes.c_int32)]

        class RectLTRB(ctypes.Structure):
            _fields_ = [("left", ctypes.c_int32), ("top", ctypes.c_int32),
                        ("right", ctypes.c_int32), ("bottom", ctypes.c_int32)]

        crop = RectLTRB(0, 0, w, h)
        self.lib.ResizeRGB32LB(src.ctypes.data_as(ctypes.c_void_p), Size(w, h), ctypes.byref(crop),
                               dst.ctypes.data_as(ctypes.c_void_p),
                               work.ctypes.data_as(ctypes.c_void_p), Size(width, height),
                               value, None, 0)
        return dst[:, :, :3].copy()


def psnr(a, b):
    mse = np.mean((a.astype(np.float64) - b.astype(np.float64)) ** 2)
    return 99.0 if mse == 0 else 10 * np.log10(255.0 ** 2 / mse)


def picture(name):
    rgb = getattr(skimage.data, name)()
    h, w = rgb.shape[0] // 12 * 12, rgb.shape[1] // 12 * 12
    return np.ascontiguousarray(rgb[:h, :w, ::-1])  # blue, green, red


def families(fk):
    """family -> list of (label, down(bgr, w, h), up(bgr, w, h))."""
    def ours(code, up_code=None):
        return (lambda i, w, h: fk.resize(i, w, h, code),
                lambda i, w, h: fk.resize(i, w, h, up_code or code))

    def cv(flag, up_flag=None):
        return (lambda i, w, h: cv2.resize(i, (w, h), interpolation=flag),
                lambda i, w, h: cv2.resize(i, (w, h), interpolation=up_flag or flag))

    def pil(f, up_f=None):
        def run(filt):
            return lambda i, w, h: np.asarray(
                Image.fromarray(i[:, :, ::-1]).resize((w, h), filt))[:, :, ::-1]
        return run(f), run(up_f or f)

    P = Image.Resampling
    return {
        "nearest": [("framekit 1", *ours(("mode", 1))), ("OpenCV nearest", *cv(cv2.INTER_NEAREST)),
                    ("PIL nearest", *pil(P.NEAREST))],
        "linear": [("framekit 2", *ours(("mode", 2))), ("framekit 2+aa", *ours(("code", 2 | AA))),
                   ("OpenCV linear", *cv(cv2.INTER_LINEAR)), ("PIL bilinear", *pil(P.BILINEAR))],
        "cubic": [("framekit 4", *ours(("mode", 3))), ("framekit 5", *ours(("code", 5))),
                  ("framekit 6", *ours(("code", 6))), ("framekit 7", *ours(("code", 7))),
                  ("framekit 6+aa", *ours(("code", 6 | AA))),
                  ("OpenCV cubic", *cv(cv2.INTER_CUBIC)), ("PIL bicubic", *pil(P.BICUBIC))],
        "lanczos": [("framekit 16", *ours(("mode", 4))), ("framekit 16+aa", *ours(("code", 16 | AA))),
                    ("OpenCV lanczos4", *cv(cv2.INTER_LANCZOS4)), ("PIL lanczos", *pil(P.LANCZOS))],
        "area": [("framekit 8", *ours(("code", 8), ("mode", 2))),
                 ("OpenCV area", *cv(cv2.INTER_AREA, cv2.INTER_LINEAR)),
                 ("PIL box", *pil(P.BOX, P.BILINEAR))],
    }


def main():
    fk = FrameKit(sys.argv[1] if len(sys.argv) > 1 else "build/linux/bin/libframekit.so")
    images = [picture(n) for n in PICTURES]
    print(f"{'family':8s} {'kernel':18s} {'down2':>7s} {'down3':>7s} {'up2':>7s}")
    for family, kernels in families(fk).items():
        for label, down, up in kernels:
            scores = {"down2": [], "down3": [], "up2": []}
            for img in images:
                h, w = img.shape[:2]
                for k in (2, 3):
                    small = down(img, w // k, h // k)
                    scores[f"down{k}"].append(psnr(up(small, w, h), img))
                if family != "area":
                    reduced = cv2.resize(img, (w // 2, h // 2), interpolation=cv2.INTER_AREA)
                    scores["up2"].append(psnr(up(reduced, w, h), img))
            cells = [f"{np.mean(v):7.2f}" if v else f"{'-':>7s}" for v in scores.values()]
            print(f"{family:8s} {label:18s} {' '.join(cells)}")


if __name__ == "__main__":
    main()
