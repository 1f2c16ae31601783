#!/usr/bin/env python3
"""Draws the demo cabinet's artwork at the sizes real cabinets have, with ffmpeg.

Called by make-demo-media.sh with: FFMPEG_OPTIONS_FILE ART_DIR WORK_DIR MANIFEST FONT.
The manifest has one tab-separated line per game: rom, kinds (comma-separated folder names), title.

Every picture is flat shapes and text reduced to a small palette, so that it stays a few tens of
kilobytes at full size: a snap (640x480) is a game screen in one of a few styles of play, a marquee
(1024x256) a backlit title strip, a flyer and a cabinet (1200x1600) a poster and a drawn cabinet, both
showing the game's snap. Shapes and colours come from the ROM name alone, so each game looks different
and every run draws the same pictures.
"""
import colorsys
import os
import subprocess
import sys
import zlib

options_file, art, work, manifest, font = sys.argv[1:6]
with open(options_file) as f:
    FF_OPTIONS = f.read().split()

SNAP, MARQUEE, POSTER = (640, 480), (1024, 256), (1200, 1600)

# How each game's screen is drawn; a game not named here gets a field of scattered sprites.
STYLE = {
    "pacman": "maze", "mspacman": "maze", "mrdo": "maze", "digdug": "dig", "qbert": "pyramid",
    "dkong": "platforms", "joust": "platforms", "bublbobl": "platforms",
    "galaga": "formation", "galaxian": "formation", "invaders": "formation",
    "xevious": "scroller", "1942": "scroller", "frogger": "lanes",
    "defender": "terrain", "mpatrol": "terrain",
}


class Dice:
    """A small generator seeded by the ROM name: the same name always draws the same picture."""

    def __init__(self, name):
        self.state = zlib.crc32(name.encode()) or 1

    def below(self, n):
        self.state = (self.state * 1103515245 + 12345) % 2**31
        return (self.state >> 8) % n


def hue_colour(name, saturation, value, turn=0.0):
    hue = ((zlib.crc32(name.encode()) % 360) / 360.0 + turn) % 1.0
    r, g, b = colorsys.hsv_to_rgb(hue, saturation, value)
    return "0x%02X%02X%02X" % (round(r * 255), round(g * 255), round(b * 255))


def box(x, y, w, h, colour, thickness="fill"):
    return "drawbox=x=%d:y=%d:w=%d:h=%d:color=%s:t=%s" % (x, y, w, h, colour, thickness)


def text(lines, size, colour, y, x="(w-text_w)/2", extra=""):
    """Text from a file (drawtext reads it, which spares the filter-graph escaping)."""
    text.count += 1
    path = os.path.join(work, "art-text-%d.txt" % text.count)
    with open(path, "w", encoding="utf-8") as f:
        f.write(lines)
    return ("drawtext=fontfile=%s:textfile=%s:expansion=none:fontsize=%d:fontcolor=%s:x=%s:y=%s:"
            "line_spacing=%d%s" % (font, path, size, colour, x, y, size // 8, ":" + extra if extra else ""))


text.count = 0


def wrap(title, width):
    lines, line = [], ""
    for word in title.split():
        if line and len(line) + 1 + len(word) > width:
            lines.append(line)
            line = word
        else:
            line = (line + " " + word).strip()
    lines.append(line)
    return lines


def fitting_size(lines, width, largest):
    """A font size at which the longest line fits the width: bold capitals are about 0.8 em wide."""
    return min(largest, int(width / (0.8 * max(len(line) for line in lines))))


def sprite(x, y, size, colour, dice):
    """A little creature: a body, two eyes and, one time in two, legs."""
    parts = [box(x, y, size, size * 3 // 4, colour),
             box(x + size // 5, y + size // 5, size // 5, size // 5, "white"),
             box(x + 3 * size // 5, y + size // 5, size // 5, size // 5, "white")]
    if dice.below(2):
        parts += [box(x, y + size * 3 // 4, size // 4, size // 4, colour),
                  box(x + 3 * size // 4, y + size * 3 // 4, size // 4, size // 4, colour)]
    return parts


def ship(x, y, colour):
    return [box(x + 14, y, 8, 12, "white"), box(x + 6, y + 12, 24, 12, colour), box(x, y + 24, 36, 10, colour)]


# Each style draws the playfield between y = 48 and y = 448 of the 640x480 screen.
def maze(d, bright, dark):
    wall, dot = bright, "0xFFD8B0"
    parts = [box(16, 52, 608, 392, wall, 6)]
    for row in range(5):
        for col in range(4):
            if d.below(4):
                w, h = 48 + 16 * d.below(4), 24 + 8 * d.below(3)
                x, y = 48 + col * 72, 84 + row * 72
                parts += [box(x, y, w, h, wall, 6), box(640 - x - w, y, w, h, wall, 6)]
    for row in range(6):
        for col in range(19):
            if (row + col) % 2 == 0 or d.below(3):
                parts.append(box(30 + col * 31, 68 + row * 70, 6, 6, dot))
    parts += [box(300, 396, 32, 32, "yellow")]
    for i, colour in enumerate(("red", "0xFFB8FF", "cyan", "0xFFB852")):
        parts += sprite(236 + i * 44, 236, 32, colour, d)
    return parts


def dig(d, bright, dark):
    parts = [box(0, 48, 640, 56, "0x102060")]
    for layer, colour in enumerate(("0xE0B040", "0xC07828", "0xA04818", "0x802010")):
        parts.append(box(0, 104 + layer * 86, 640, 86, colour))
    for _ in range(5):
        x, y = 32 + d.below(480), 120 + d.below(280)
        parts += [box(x, y, 96 + d.below(96), 36, "black"), box(x + 30, y - 60, 36, 96, "black")]
    for _ in range(3):
        parts += sprite(40 + d.below(540), 130 + d.below(280), 30, "red", d)
    parts += [box(304, 60, 28, 36, "white"), box(310, 66, 16, 10, "0x4080FF")]
    return parts


def pyramid(d, bright, dark):
    parts = []
    for row in range(6):
        for col in range(row + 1):
            x, y = 296 - row * 40 + col * 80, 80 + row * 60
            parts += [box(x, y, 48, 16, bright if d.below(3) else "yellow"),
                      box(x, y + 16, 24, 40, "0x405878"), box(x + 24, y + 16, 24, 40, "0x283848")]
    parts += sprite(304, 44 + 60 * (1 + d.below(4)), 28, "0xFF8020", d) + sprite(220, 290, 26, "0xA040FF", d)
    return parts


def platforms(d, bright, dark):
    parts = []
    for level in range(5):
        y = 120 + level * 66
        left = 40 + 48 * (level % 2)
        parts += [box(left, y, 512, 14, bright), box(left, y + 4, 512, 4, dark)]
        ladder = left + 64 + d.below(380)
        parts += [box(ladder, y + 14, 4, 52, "cyan"), box(ladder + 24, y + 14, 4, 52, "cyan")]
        parts += [box(ladder, y + 26 + 12 * r, 28, 3, "cyan") for r in range(3)]
        if level < 4:
            parts += sprite(left + 40 + d.below(400), y - 28, 28, hue_colour(str(level) + bright, 0.7, 1), d)
    parts += [box(40, 436, 560, 12, bright), box(300, 404, 24, 32, "white"), box(64, 72, 56, 48, "0xA05020")]
    return parts


def formation(d, bright, dark):
    parts = [box(d.below(640), 48 + d.below(400), 3, 3, "white") for _ in range(40)]
    rows = 4 + d.below(2)
    for row in range(rows):
        colour = hue_colour(bright + str(row), 0.8, 1)
        for col in range(8):
            if row > 0 or col in (2, 3, 4, 5):
                parts += sprite(128 + col * 50, 80 + row * 44, 30, colour, d)
    parts += [box(320 + 18, 300 + 40 * d.below(3), 4, 14, "yellow")]
    parts += ship(300, 404, bright)
    return parts


def scroller(d, bright, dark):
    parts = []
    for _ in range(7):
        w, h = 96 + 16 * d.below(10), 48 + 16 * d.below(6)
        parts += [box(d.below(640 - w), 48 + d.below(400 - h), w, h, hue_colour(dark, 0.5, 0.45, 0.3))]
    parts += [box(260, 48, 120, 400, "0x203A70")]
    for _ in range(5):
        parts += sprite(40 + d.below(540), 60 + d.below(200), 30, bright, d)
    parts += ship(302, 392, "0xD0D0D0") + [box(318, 340, 4, 14, "yellow"), box(318, 300, 4, 14, "yellow")]
    return parts


def lanes(d, bright, dark):
    parts = [box(0, 48, 640, 36, "0x20A040"), box(0, 84, 640, 150, "0x102890"), box(0, 234, 640, 30, "0x6030A0"),
             box(0, 264, 640, 150, "0x202020"), box(0, 414, 640, 34, "0x6030A0")]
    for lane in range(5):
        y = 90 + lane * 29
        parts += [box((lane * 131 + d.below(200)) % 520, y, 120 + d.below(60), 20, "0x8B4A20")]
        parts += [box((lane * 97 + d.below(300)) % 560, 270 + lane * 29, 48, 20, hue_colour(bright + str(lane), 0.8, 1))]
    parts += [box(304, 420, 28, 24, "0x40FF40"), box(308, 424, 6, 6, "red"), box(322, 424, 6, 6, "red")]
    return parts


def terrain(d, bright, dark):
    parts = [box(d.below(640), 80 + d.below(300), 2, 2, "white") for _ in range(30)]
    parts += [box(160, 50, 320, 28, bright, 2)]
    x, height = 0, 60
    while x < 640:
        width = 32 + 16 * d.below(4)
        height = max(24, min(140, height + 24 * (d.below(5) - 2)))
        parts.append(box(x, 448 - height, width, height, hue_colour(bright, 0.6, 0.55, 0.1)))
        x += width
    parts += [box(120, 240, 56, 16, "white"), box(108, 246, 12, 6, "orange")]
    for _ in range(4):
        parts += sprite(260 + d.below(340), 120 + d.below(160), 26, "0x40FF40", d)
    return parts


def field(d, bright, dark):
    parts = [box(16, 52, 608, 392, bright, 4)]
    for _ in range(36):
        parts.append(box(32 + d.below(560), 64 + d.below(360), 18, 14, hue_colour(bright, 0.7, 0.9, 0.5)))
    for _ in range(8):
        parts += sprite(40 + d.below(540), 70 + d.below(330), 24, hue_colour(bright, 0.9, 1, 0.25), d)
    parts += [box(306, 404, 28, 28, "white"), box(312, 396, 16, 8, bright)]
    return parts


STYLES = {f.__name__: f for f in (maze, dig, pyramid, platforms, formation, scroller, lanes, terrain, field)}


def snap(rom, title, bright, dark):
    d = Dice(rom)
    playfield = STYLES[STYLE.get(rom, "field")](d, bright, dark)
    header = [text("1UP", 18, "red", 6, "24"), text("%02d0" % d.below(100), 18, "white", 26, "24"),
              text(title.upper(), 22, bright, 12, extra="borderw=2:bordercolor=black"),
              text("HI %d0000" % (1 + d.below(9)), 18, "white", 12, "w-text_w-24"),
              text("CREDIT %d" % d.below(3), 16, "white", 456, "24"),
              text("INSERT COIN", 16, bright, 456, "w-text_w-24")]
    return playfield + header


def marquee(rom, title, bright, dark):
    lines = [title.upper()]
    size = fitting_size(lines, 800, 120)
    light = hue_colour(rom, 0.35, 1.0)
    parts = [box(0, 0, 1024, 256, bright), box(48, 32, 928, 192, light), box(96, 56, 832, 144, "white@0.35"),
             box(0, 0, 1024, 18, dark), box(0, 238, 1024, 18, dark), box(0, 18, 1024, 4, "white@0.6"),
             box(0, 234, 1024, 4, "white@0.6")]
    for x in (20, 980):
        parts += [box(x, 60 + 40 * i, 24, 24, dark) for i in range(4)]
    parts.append(text("\n".join(lines), size, bright, "(h-text_h)/2",
                      extra="borderw=%d:bordercolor=%s:shadowx=6:shadowy=6:shadowcolor=black@0.5"
                      % (max(4, size // 12), dark)))
    return parts


def flyer(rom, title, bright, dark):
    lines = wrap(title.upper(), 10)
    size = fitting_size(lines, 1000, 160)
    background = [box(0, 0, 1200, 1600, bright), box(0, 0, 1200, 440, dark), box(0, 440, 1200, 16, "white"),
                  box(0, 1380, 1200, 220, dark), box(0, 1364, 1200, 16, "white")]
    background += [box(0, 520 + 56 * i, 80 - 12 * i, 24, dark) for i in range(6)]
    background += [box(1120 + 12 * i, 520 + 56 * i, 80 - 12 * i, 24, dark) for i in range(6)]
    frame = [box(148, 500, 904, 684, "white")]
    words = [text("\n".join(lines), size, "white", "(440-text_h)/2",
                  extra="borderw=%d:bordercolor=black" % (size // 20)),
             text("THE NEW ARCADE SENSATION", 48, "white", 1224, extra="borderw=3:bordercolor=black"),
             text("1 OR 2 PLAYERS", 40, dark, 1294),
             text("ARCADE", 96, bright, 1430)]
    return background + frame, words, (880, 660, 160, 512)


def cabinet(rom, title, bright, dark):
    lines = wrap(title.upper(), 10)
    size = fitting_size(lines, 500, 72)
    body = [box(0, 0, 1200, 1600, "0xD8D8D0"), box(0, 1500, 1200, 100, "0xB0B0A8"),
            box(240, 1540, 720, 24, "0x909088"),
            box(300, 60, 600, 1490, dark), box(300, 60, 36, 1490, bright), box(864, 60, 36, 1490, bright),
            box(336, 90, 528, 190, bright), box(344, 98, 512, 174, "white@0.3"),
            box(336, 300, 528, 440, "black"),
            box(250, 760, 700, 130, bright), box(250, 880, 700, 20, "black@0.4"),
            box(400, 770, 16, 60, "black"), box(388, 750, 40, 40, "red")]
    body += [box(560 + 80 * i, 800, 44, 44, c) for i, c in enumerate(("yellow", "0x40C0FF", "white"))]
    body += [box(500, 1060, 200, 260, "0x303030"), box(500, 1060, 200, 260, "0x808080", 4),
             box(540, 1110, 40, 70, "orange"), box(620, 1110, 40, 70, "orange"),
             box(300, 1470, 600, 80, "black@0.5")]
    words = [text("\n".join(lines), size, "white", "90+(190-text_h)/2",
                  extra="borderw=%d:bordercolor=black" % max(2, size // 16))]
    return body, words, (480, 360, 360, 340)


def render(out, size, filters, picture=None, place=None):
    """Draws the filters on a black card (over the snap PICTURE scaled into PLACE: w, h, x, y) and
    writes a PNG of at most 32 colours."""
    width, height = size
    graph = "[0:v]%s[card];" % ",".join(filters[0])
    if picture:
        w, h, x, y = place
        graph += "[1:v]scale=%d:%d:flags=neighbor[pic];[card][pic]overlay=%d:%d[card];" % (w, h, x, y)
    graph += "[card]%s,split[a][b];[a]palettegen=max_colors=32:stats_mode=single[p];" \
             "[b][p]paletteuse=dither=none[out]" % (",".join(filters[1]) or "null")
    script = os.path.join(work, "art-graph.txt")
    with open(script, "w", encoding="utf-8") as f:
        f.write(graph)
    command = ["ffmpeg", "-nostdin", "-hide_banner", "-loglevel", "error", "-y",
               "-f", "lavfi", "-i", "color=c=black:s=%dx%d:d=1" % (width, height)]
    if picture:
        command += ["-i", picture]
    command += ["-filter_complex_script", script, "-map", "[out]", "-frames:v", "1"] + FF_OPTIONS
    command += ["-pix_fmt", "pal8", "-compression_level", "9", out]
    subprocess.run(command, check=True)


for line in open(manifest, encoding="utf-8"):
    rom, kinds, title = line.rstrip("\n").split("\t")
    kinds = kinds.split(",")
    bright, dark = hue_colour(rom, 0.75, 0.85), hue_colour(rom, 0.8, 0.25)
    # The snap is drawn first, even for a game that ships none, because flyer and cabinet show it.
    parts = snap(rom, title, bright, dark)
    snap_file = os.path.join(art, "snap", rom + ".png") if "snap" in kinds else os.path.join(work, "snap.png")
    render(snap_file, SNAP, (parts, []))
    if "marquees" in kinds:
        parts = marquee(rom, title, bright, dark)
        render(os.path.join(art, "marquees", rom + ".png"), MARQUEE, (parts, []))
    for kind, draw in (("flyers", flyer), ("cabinets", cabinet)):
        if kind in kinds:
            under, over, place = draw(rom, title, bright, dark)
            render(os.path.join(art, kind, rom + ".png"), POSTER, (under, over), snap_file, place)
