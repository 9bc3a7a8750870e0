"""The pictures as they were rendered, in $PICTURES: complete, of the right kind, and the same every time."""

import filecmp
import os
import struct
import subprocess
from pathlib import Path

import pytest
from harness import ROOT

PICTURES = Path(os.environ["PICTURES"])
ICON_SIZES = [16, 20, 24, 32, 40, 48, 64, 256]
SMALL = [(f"{name}-{size}", size) for name in ("add", "delete") for size in (16, 20, 24, 32, 48)]
LOGOS = [(f"logo-{size}", size) for size in (96, 144, 192)]
THEME_SIZES = [16, 24, 32, 48, 64, 128, 256]


def pixels(png, *options):
    return subprocess.run(["convert", str(png), *options, "-depth", "8", "rgba:-"], check=True,
                          capture_output=True).stdout


def png_size(data):
    assert data[:8] == b"\x89PNG\r\n\x1a\n"
    return struct.unpack(">II", data[16:24])


def icon_entries():
    data = (PICTURES / "Tessaly.ico").read_bytes()
    reserved, kind, count = struct.unpack_from("<HHH", data)
    assert (reserved, kind) == (0, 1)
    for at in range(count):
        width, _, _, _, _, bits, size, offset = struct.unpack_from("<BBBBHHII", data, 6 + 16 * at)
        yield width or 256, bits, data[offset:offset + size]


def test_the_icon_has_all_sizes_in_full_colour_and_only_the_largest_as_png():
    entries = list(icon_entries())
    assert [size for size, _, _ in entries] == ICON_SIZES
    for size, bits, data in entries:
        assert bits == 32
        if size == 256:
            assert png_size(data) == (256, 256)
        else:
            assert struct.unpack_from("<IiiHH", data) == (40, size, 2 * size, 1, 32)


@pytest.mark.parametrize("size", THEME_SIZES)
def test_the_icon_theme_has_the_icon_in_this_size(size):
    png = PICTURES / f"hicolor/{size}x{size}/apps/tessaly.png"
    assert png_size(png.read_bytes()) == (size, size)
    rgba = pixels(png)
    colours = {rgba[at:at + 4] for at in range(0, len(rgba), 4)}
    for colour in (b"\x1f\x4e\x6e\xff", b"\xff\xff\xff\xff", b"\xff\xb0\x2e\xff"):
        assert colour in colours, "the ground, the braces and the block are all there as pure colours"


def test_the_icon_theme_has_the_scalable_icon():
    svg = (PICTURES / "hicolor/scalable/apps/tessaly.svg").read_text()
    assert svg == (ROOT / "pictures/icon.svg").read_text()


@pytest.mark.parametrize("name,size", SMALL + LOGOS)
def test_each_bitmap_is_its_png_with_premultiplied_alpha(name, size):
    png = PICTURES / f"{name}.png"
    assert png_size(png.read_bytes()) == (size, size)
    rgba = pixels(png)
    bmp = (PICTURES / f"{name}.bmp").read_bytes()
    assert bmp[:2] == b"BM" and struct.unpack_from("<I", bmp, 2) == (len(bmp),)
    start, = struct.unpack_from("<I", bmp, 10)
    assert struct.unpack_from("<IiiHHI", bmp, 14) == (40, size, size, 1, 32, 0)
    for y in range(size):
        row = bmp[start + 4 * size * (size - 1 - y):]
        for x in range(size):
            red, green, blue, alpha = rgba[4 * (y * size + x):][:4]
            wanted = [round(c * alpha / 255) for c in (blue, green, red)] + [alpha]
            assert all(abs(a - b) <= 1 for a, b in zip(row[4 * x:4 * x + 4], wanted)), (x, y)


def luminance(red, green, blue):
    linear = [c / 12.92 if c <= 0.04045 else ((c + 0.055) / 1.055) ** 2.4 for c in (red / 255, green / 255, blue / 255)]
    return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]


def contrast(one, other):
    light, dark = sorted((luminance(*one), luminance(*other)), reverse=True)
    return (light + 0.05) / (dark + 0.05)


@pytest.mark.parametrize("name", ["add", "delete"])
@pytest.mark.parametrize("bar", [(255, 255, 255), (240, 240, 240), (32, 32, 32)])
def test_a_tool_bar_picture_stands_out_from_light_and_dark_bars(name, bar):
    ground = tuple(pixels(PICTURES / f"{name}-16.png")[4 * (2 * 16 + 8):][:3])
    assert contrast(ground, bar) >= 3
    assert contrast(ground, (255, 255, 255)) >= 3, "the sign on it is white"


def test_rendering_again_gives_the_same_bytes(tmp_path):
    subprocess.run([ROOT / "pictures/render", tmp_path], check=True)
    files = [path.relative_to(PICTURES) for path in PICTURES.rglob("*") if path.is_file()]
    assert len(files) == 1 + 2 * (len(SMALL) + len(LOGOS)) + len(THEME_SIZES) + 1
    _, different, missing = filecmp.cmpfiles(PICTURES, tmp_path, map(str, files), shallow=False)
    assert (different, missing) == ([], [])
