"""Writes a 32-bit Windows bitmap beside each PNG: bottom-up rows of BGRA, the colours premultiplied with the alpha, as
alpha blending and image lists want them. The alpha is in the fourth byte, which plain viewers ignore."""

import struct
import subprocess
import sys
from pathlib import Path

FILE_HEADER_SIZE = 14
INFO_HEADER_SIZE = 40


def size_of(png: Path) -> tuple[int, int]:
    header = png.read_bytes()[:24]
    if header[12:16] != b"IHDR":
        raise ValueError(f"{png} is no PNG file")
    width, height = struct.unpack(">II", header[16:24])
    return width, height


def premultiplied(rgba: bytes) -> bytes:
    bgra = bytearray(len(rgba))
    for at in range(0, len(rgba), 4):
        alpha = rgba[at + 3]
        for channel in range(3):
            bgra[at + 2 - channel] = (rgba[at + channel] * alpha + 127) // 255
        bgra[at + 3] = alpha
    return bytes(bgra)


def bitmap(png: Path) -> bytes:
    width, height = size_of(png)
    rgba = subprocess.run(["convert", str(png), "-depth", "8", "rgba:-"], check=True, capture_output=True).stdout
    if len(rgba) != width * height * 4:
        raise ValueError(f"{png} gave {len(rgba)} bytes for {width} x {height} pixels")
    pixels = premultiplied(rgba)
    rows = [pixels[row * width * 4:(row + 1) * width * 4] for row in range(height)]
    start = FILE_HEADER_SIZE + INFO_HEADER_SIZE
    file_header = struct.pack("<2sIHHI", b"BM", start + len(pixels), 0, 0, start)
    info_header = struct.pack("<IiiHHIIiiII", INFO_HEADER_SIZE, width, height, 1, 32, 0, len(pixels), 0, 0, 0, 0)
    return file_header + info_header + b"".join(reversed(rows))


def main() -> None:
    for name in sys.argv[1:]:
        png = Path(name)
        png.with_suffix(".bmp").write_bytes(bitmap(png))


if __name__ == "__main__":
    main()
