#!/usr/bin/env python3
"""Makes the program's own colour books from hues and tones: writes the .cbk files beside this script."""
import colorsys
import pathlib

# Twelve pages of two hues each, 15 degrees apart.
PAGES = [
    ("Reds", ["Cherry", "Brick"]), ("Oranges", ["Apricot", "Amber"]), ("Yellows", ["Straw", "Lemon"]),
    ("Limes", ["Pear", "Lime"]), ("Greens", ["Meadow", "Fern"]), ("Sea greens", ["Spruce", "Jade"]),
    ("Cyans", ["Lagoon", "Glacier"]), ("Sky blues", ["Harbour", "Sky"]), ("Blues", ["Cornflower", "Cobalt"]),
    ("Violets", ["Iris", "Lilac"]), ("Purples", ["Plum", "Orchid"]), ("Pinks", ["Mallow", "Rose"]),
]
# Name, saturation, lightness.
TONES = [
    ("Mist", 0.45, 0.92), ("Pale", 0.65, 0.84), ("Soft", 0.60, 0.72), ("Clear", 0.85, 0.60),
    ("Vivid", 1.00, 0.50), ("Deep", 0.90, 0.36), ("Dusk", 0.45, 0.40), ("Dark", 0.70, 0.20),
]
# Page, name of its colours, hue in degrees, saturation.
GREYS = [
    ("Neutral", "Slate", 0, 0.0), ("Warm", "Sandstone", 32, 0.12), ("Cool", "Basalt", 215, 0.12),
    ("Green", "Lichen", 110, 0.09), ("Red", "Clay", 8, 0.14),
]


def entry(name, hue, saturation, lightness):
    red, green, blue = colorsys.hls_to_rgb(hue / 360, lightness, saturation)
    return f"{name:<20} {round(red * 255)},{round(green * 255)},{round(blue * 255)}\n"


def write(file_name, book, pages):
    text = f"; Made by generate.py\nbook: {book}\n"
    for title, entries in pages:
        text += f"\npage: {title}\n" + "".join(entries)
    pathlib.Path(__file__).with_name(file_name).write_text(text, encoding="utf-8")


def main():
    write("tidewater.cbk", "Tidewater Hues", [
        (title, [entry(f"{hue} {tone}", 30 * at + 15 * second, saturation, lightness)
                 for second, hue in enumerate(hues) for tone, saturation, lightness in TONES])
        for at, (title, hues) in enumerate(PAGES)])
    write("quarry.cbk", "Quarry Greys", [
        (f"{title} greys", [entry(f"{name} {percent}", hue, saturation, percent / 100)
                            for percent in range(96, 4, -7)])
        for title, name, hue, saturation in GREYS])


main()
