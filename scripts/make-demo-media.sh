#!/usr/bin/env bash
# Makes the demo cabinet's content in demo/: the master game list, placeholder ROM files, the
# list files, the Extras list, the skins "Ombrel", "Parlour", "Phosphor" and "Gallery", logos, artwork
# (drawn by demo-art.py beside this script), sounds and the intro film.
#
# Needs only ffmpeg and python3 (standard library). The output is the same on every run with the
# same ffmpeg: no random seeds, no time stamps, single-threaded encoders. The hand-written files
# of the cabinet (ombrel.ini, ombrel.cfg, omkeys.cfg, the emulator in emu/) are not touched.
#
# Usage: scripts/make-demo-media.sh [DEMO_DIR]     (default: demo/ next to this script's folder)
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
demo=${1:-$root/demo}
font=/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf
face=$font # the face of drawn text

for tool in ffmpeg python3; do
    command -v "$tool" >/dev/null || { echo "make-demo-media: $tool is missing" >&2; exit 1; }
done
for file in "$font" "${font%/*}/DejaVuSerif-Bold.ttf" "${font%/*}/DejaVuSansMono-Bold.ttf"; do
    [ -f "$file" ] || { echo "make-demo-media: font $file is missing (fonts-dejavu-core)" >&2; exit 1; }
done

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$demo"

# ---------------------------------------------------------------------------------------------
# Text files. The game table (demo-games.txt beside this script) is the one source of
# gamelist.lst, the placeholder ROMs and the list files, so the three always agree.
# ---------------------------------------------------------------------------------------------
python3 - "$demo" "$work" "$root/scripts/demo-games.txt" <<'PY'
import os, shutil, sys

demo, work, table = sys.argv[1], sys.argv[2], sys.argv[3]

# Games of the arcade folder that get artwork, and which kinds: a few have only some kinds, so
# the demo shows panels appearing and disappearing as the selection moves.
ALL = "snap marquees flyers cabinets"
ART = {
    "pacman": ALL, "mspacman": ALL, "galaga": ALL, "galaxian": ALL, "dkong": ALL,
    "digdug": ALL, "frogger": ALL, "centiped": ALL, "defender": ALL, "robotron": ALL,
    "joust": ALL, "qbert": ALL, "mrdo": ALL, "bublbobl": ALL, "xevious": ALL, "mpatrol": ALL,
    "1942": "snap marquees", "invaders": "snap marquees flyers", "irobot": "snap",
    "mmaze": "marquees",
}

# The demo ships no list files: no list has a game at the first start, so the front end scans its
# folders by itself and writes them (names kept here to remove stale copies).
FOLDERS = {"M": ("roms/mame", "l 1.lst"), "V": ("roms/vector", "l 2.lst"),
           "S": ("roms/sports", "l 3.lst"), "H": ("roms/homebrew", "l 4.lst"),
           "P": ("roms/pong", "l 5.lst"), "U": ("emus/u64/roms", "l23.lst")}
ENDINGS = {"U": ".img"}


def crlf_file(name, lines):
    """Writes lines in the cabinet's single-byte code page, each ending in CR LF."""
    with open(os.path.join(demo, name), "wb") as out:
        for line in lines:
            out.write(line.encode("cp1252") + b"\r\n")


def quoted(rom, description):
    return '"%s","%s"' % (rom, description)


games = []
for line in open(table, encoding="utf-8"):
    if line.startswith("#") or not line.strip():
        continue
    rom, description, where = line.rstrip("\n").split("|")
    games.append((rom, description, where))
games.sort(key=lambda g: (g[1].casefold(), g[0]))

roms = [g[0] for g in games]
assert len(set(roms)) == len(roms), "a ROM name is listed twice"
assert all('"' not in g[1] for g in games), "a description can't hold a double quote"
assert all(r in roms and dict((g[0], g[2]) for g in games)[r] == "M" for r in ART)

# The other arcade games: a snap for four in five and a marquee for every other one, so that the
# picture strip is full of games and the panels still come and go as the selection moves.
for i, rom in enumerate(g[0] for g in games if g[2] == "M" and g[0] not in ART):
    kinds = (["snap"] if i % 5 != 4 else []) + (["marquees"] if i % 2 == 0 else [])
    if kinds:
        ART[rom] = " ".join(kinds)

crlf_file("gamelist.lst", [quoted(rom, description) for rom, description, _ in games])

# Placeholder ROMs; the list files are the front end's to write.
for folder, _ in FOLDERS.values():
    shutil.rmtree(os.path.join(demo, folder), ignore_errors=True)
    os.makedirs(os.path.join(demo, folder))
for key, (folder, list_name) in FOLDERS.items():
    present = [(rom, d) for rom, d, where in games if where == key]
    for rom, _ in present:
        open(os.path.join(demo, folder, rom + ENDINGS.get(key, ".zip")), "wb").close()
    if os.path.exists(os.path.join(demo, list_name)):
        os.remove(os.path.join(demo, list_name))

with open(os.path.join(demo, "emus/u64/README.txt"), "w") as out:
    out.write("Folder of the Ultra 64 emulator of the demo cabinet. u64emu and u64emu2 stand in for its\n"
              "two programs: they start the demo emulator, which shows the keys pressed into it.\n"
              "roms/ holds empty placeholder images so that a scan finds the three games.\n")

crlf_file("extra.lst", [
    "* Programs of the Extras list. A record starts at a line holding only an opening brace",
    "* and has five lines behind it: program; caption; folder; options; closing brace.",
    "* Lines between records are ignored. Keep commas and double quotes out of them.",
    "{",
    "Exe=demoemu",
    "Display=Demo Emulator Test Screen",
    "Path=emu\\",
    "Options=-test",
    "}",
    "",
    "* The demo cabinet's notes; the desktop's viewer opens them.",
    "{",
    "Exe=xdg-open",
    "Display=Open the README",
    "Path=docs\\",
    "Options=README.txt",
    "}",
])

os.makedirs(os.path.join(demo, "docs"), exist_ok=True)
with open(os.path.join(demo, "docs/README.txt"), "w") as out:
    out.write(
        "Ombrel demo cabinet\n"
        "===================\n\n"
        "This is a cabinet with no real games in it: the ROM files are empty placeholders,\n"
        "and the Arcade Classics list runs a small demo emulator that only shows which game\n"
        "it was asked for. The other lists hold vector and sports games, a few pong games for\n"
        "a MAME installed on the system, Ultra 64 titles, and this Extras list. The keys are\n"
        "those of omkeys.cfg; the configuration menu changes them.\n\n"
        "The Homebrew list has no list file yet: its games are in roms/homebrew, and the\n"
        "REFRESH key (F5) looks through every folder and writes the lists of what it finds.\n\n"
        "Everything here but the settings is made by scripts/make-demo-media.sh.\n")

# The skins, one folder each below omthemes/: the player picks one by its folder name.
#
# skin.ini holds 20 values in a fixed order, on the 7680 x 5760 design form; the front end scales
# them to the screen, while fonts keep their size, so a larger screen shows more rows. Rectangles
# are Top, Left, Width, Height, except the logo's: Top, Left, Height, Width. The panels keep the
# proportions of the artwork (snap 4:3, marquee 4:1, flyer and cabinet 3:4, logo 5:2) at 640x480.
def layout(snap, cabinet, flyer, marquee, strip, columns, kind, cell, path, nav, gap, align, logo):
    """The 20 values of a skin.ini. Each panel is (rectangle, shown); kind is "list" for a text list,
    columns its number of columns (empty: one), align where a one-column list's rows stand (0 left,
    1 right, 2 centred); cell and gap size the cells of a picture strip instead."""
    flag = lambda shown: "#TRUE#" if shown else "#FALSE#"
    numbers = lambda values: ",".join(str(v) for v in values)
    lines = []
    for rectangle, shown in (snap, cabinet, flyer, marquee):
        lines += [numbers(rectangle), flag(shown)]
    lines += [numbers(strip), str(columns), kind, numbers(cell)]
    lines += [numbers(path[0]), flag(path[1]), numbers(nav[0]), flag(nav[1])]
    lines += [str(gap), str(align), numbers(logo[0]), flag(logo[1])]
    assert len(lines) == 20
    return lines

HIDDEN = ((0, 0, 0, 0), False)

def colour(r, g, b):
    """The cabinet's colour number: blue x 65536 + green x 256 + red."""
    return str(b * 65536 + g * 256 + r)

def pulse_colour(r, g, b):
    """The selection colour. The selected row pulses by scaling this colour as one number, so a
    green or blue that 8 does not divide lends bits to the channel below it and the pulse flashes
    another hue; multiples of 8 dim it evenly through 1/2, 1/4 and 1/8."""
    assert g % 8 == 0 and b % 8 == 0, "selection colour would change hue as it pulses"
    return colour(r, g, b)

SKINS = {
    # Marquee over the snap at the top centre, cabinet left, flyer right, the logo under the snap,
    # caption and arrows over a one-column list across the lower third.
    "Ombrel": (layout(
        snap=((960, 2640, 2400, 1800), True), cabinet=((480, 240, 2160, 2880), True),
        flyer=((480, 5280, 2160, 2880), True), marquee=((240, 2640, 2400, 600), True),
        strip=(3720, 240, 7200, 1800), columns=1, kind="list", cell=(1200, 900),
        path=((3360, 240), True), nav=((3360, 3390), True), gap=60, align=2,
        logo=((2820, 3240, 480, 1200), True)),
        ['"DejaVu Sans"', "12", colour(16, 20, 40), colour(200, 210, 230), pulse_colour(255, 184, 40)]),
    # A games-room look in serif type: snap left and flyer right under the marquee, caption, logo
    # and arrows between them, and a three-column list below; no cabinet picture.
    "Parlour": (layout(
        snap=((1080, 480, 2640, 1980), True), cabinet=HIDDEN,
        flyer=((1140, 5760, 1440, 1920), True), marquee=((240, 2400, 2880, 720), True),
        strip=(3360, 480, 6720, 2160), columns=3, kind="list", cell=(1200, 900),
        path=((1140, 3540), True), nav=((2460, 3990), True), gap=60, align=2,
        logo=((1500, 3540, 720, 1800), True)),
        ['"DejaVu Serif"', "11", colour(52, 14, 22), colour(238, 226, 200), pulse_colour(232, 184, 80)]),
    # The list alone, in green monospace on black: no caption, arrows, logo or pictures. The empty
    # column count means one column, whose rows stand at the left.
    "Phosphor": (layout(
        snap=HIDDEN, cabinet=HIDDEN, flyer=HIDDEN, marquee=HIDDEN,
        strip=(480, 960, 5760, 4800), columns="", kind="list", cell=(0, 0),
        path=((0, 0), False), nav=((0, 0), False), gap=0, align=0,
        logo=((0, 0, 0, 0), False)),
        ['"DejaVu Sans Mono"', "12", colour(4, 14, 8), colour(70, 200, 100), pulse_colour(170, 248, 176)]),
    # Snaps on a wall: a 3 x 3 picture strip of snaps at the left under the marquee, the flyer over the
    # cabinet at the right, the logo in the top left corner; the caption carries the selected game's
    # name and the arrows stand above the flyer. The strip's 5100 hold three 1600-wide cells but not
    # four, and the third cell of a row ends at 4992 with its two gaps of 96, inside the one gap of
    # slack past the right edge; its 3960 hold three rows of 1200 and their gaps (3792). The gap grows
    # with the screen's width and the rows with its height, so this leaves the gap room to grow by
    # seven eighths more than the rows: the nine cells stay nine up to 21:9.
    "Gallery": (layout(
        snap=HIDDEN, cabinet=((3540, 5790, 1440, 1920), True),
        flyer=((1500, 5790, 1440, 1920), True), marquee=((180, 2040, 3600, 900), True),
        strip=(1500, 240, 5100, 3960), columns="", kind="snap", cell=(1600, 1200),
        path=((1140, 240), True), nav=((1140, 6060), True), gap=96, align=2,
        logo=((240, 240, 600, 1500), True)),
        ['"DejaVu Sans"', "10", colour(22, 22, 26), colour(232, 228, 218), pulse_colour(64, 208, 200)]),
}

def strip_cells(strip, cell, gap, gap_stretch):
    """Cells a row and cells in all of a picture strip, placed as the front end places them: it
    tries as many as the strip holds whole cells across and down, wraps a cell that passes the right
    edge by more than one gap and stops at a row that passes the bottom edge. gap_stretch: how much
    more the gap grows than the cells' height, on a screen wider than 4:3."""
    _, _, width, height = strip
    cell_width, cell_height = cell
    x, y, row, placed = 0, 0, 0, 1
    for _ in range(int(width / cell_width) * int(height / cell_height) - 1):
        x += cell_width + gap
        if x + cell_width > width + gap:
            x, y = 0, y + cell_height + gap * gap_stretch
            row = row or placed
            if y + cell_height > height:
                break
        placed += 1
    return row or placed, placed

# The Gallery's strip (line 9), cell (line 12) and gap (line 17) give 3 x 3 on 4:3, 16:9 and 21:9 screens.
gallery = [[int(v) for v in SKINS["Gallery"][0][line].split(",")] for line in (8, 11, 16)]
assert all(strip_cells(gallery[0], gallery[1], gallery[2][0], stretch) == (3, 9)
           for stretch in (1, 4 / 3, 7 / 4)), "the Gallery strip is no longer 3 x 3"

for name, (lines, scheme) in SKINS.items():
    os.makedirs(os.path.join(demo, "omthemes", name), exist_ok=True)
    crlf_file("omthemes/%s/skin.ini" % name, lines)
    crlf_file("omthemes/%s/scheme.cfg" % name, scheme)

# Artwork manifest for the picture step below: rom, kinds and title, tab-separated.
descriptions = {rom: d for rom, d, _ in games}
with open(os.path.join(work, "art.tsv"), "w", encoding="utf-8") as manifest:
    for rom in sorted(ART):
        manifest.write("%s\t%s\t%s\n" % (rom, ",".join(ART[rom].split()), descriptions[rom]))

counts = {k: sum(1 for g in games if g[2] == k) for k in FOLDERS}
print("make-demo-media: %d games in the master list; present: %s" % (
    len(games), ", ".join("%s %d" % (FOLDERS[k][0], n) for k, n in counts.items())))
PY

# ---------------------------------------------------------------------------------------------
# Pictures, sounds and the film. Every output goes through the same bit-exact options.
# ---------------------------------------------------------------------------------------------
exact=(-fflags +bitexact -flags:v +bitexact -flags:a +bitexact -map_metadata -1 -threads 1)

ff() { ffmpeg -nostdin -hide_banner -loglevel error -y "$@"; }

# still OUT SIZE COLOUR FILTERS [codec options...]: one frame of a plain colour, then FILTERS.
still() {
    local out=$1 size=$2 back=$3 filters=$4
    shift 4
    ff -f lavfi -i "color=c=$back:s=$size:d=1" -vf "$filters" -frames:v 1 "${exact[@]}" "$@" "$out"
}

jpg() { still "$@" -pix_fmt yuvj420p -q:v 3; }

# text FILE SIZE COLOUR Y [extra drawtext options]: a centred drawtext filter for a text file.
text() {
    echo "drawtext=fontfile=$face:textfile=$1:expansion=none:fontsize=$2:fontcolor=$3:x=(w-text_w)/2:y=$4:line_spacing=2${5:+:$5}"
}

# Logos: a title over a small caption on a coloured card, reduced to a GIF palette.
logo() {
    local out=$1 back=$2 title=$3 caption=$4
    printf '%s' "$title" >"$work/title.txt"
    printf '%s' "$caption" >"$work/caption.txt"
    still "$demo/$out" 240x96 "$back" \
        "drawbox=x=4:y=4:w=iw-8:h=ih-8:color=white@0.6:t=2,$(text "$work/title.txt" 36 white 16 \
        'borderw=2:bordercolor=black@0.5'),$(text "$work/caption.txt" 14 white@0.85 66),split[a][b];\
[a]palettegen=max_colors=32:stats_mode=single[p];[b][p]paletteuse=dither=none"
}
logo arcade.gif  0x8A1C1C "ARCADE"   "CLASSICS"
logo vector.gif  0x103050 "VECTOR"   "GAMES"
logo sports.gif  0x1C6A2A "SPORTS"   "GAMES"
logo pong.gif    0x202020 "PONG"     "AND FRIENDS"
logo u64.gif     0x5A2A7A "ULTRA 64" "EMULATOR"
logo Extras.gif  0x7A5A10 "EXTRAS"   "PROGRAMS"
logo impact.gif  0x7A3A10 "IMPACT"   "EMULATOR"
logo modeler.gif 0x10566A "MODELER"  "EMULATOR"
logo vp.gif      0x2A3A8A "PINBALL"  "VISUAL PINBALL"
logo s11.gif     0x6A1050 "S11 EMU"  "PINBALL"
logo daphne.gif  0x3A3A3A "DAPHNE"   "LASERDISC"

# Artwork at the sizes real cabinets have: snap 640x480, marquee 1024x256, flyer and cabinet 1200x1600.
mkdir -p "$demo/art"
for kind in snap marquees flyers cabinets; do
    rm -rf "${demo:?}/art/$kind"
    mkdir -p "$demo/art/$kind"
done
printf '%s\n' "${exact[@]}" >"$work/ffmpeg-options.txt"
python3 "$root/scripts/demo-art.py" "$work/ffmpeg-options.txt" "$demo/art" "$work" "$work/art.tsv" "$font"

# The skins' backgrounds (640x480, stretched to the screen, so each mark lies under the element it
# frames at every screen size), default pictures and sounds.
printf 'OMBREL' >"$work/ombrel.txt"
printf 'O  M  B  R  E  L' >"$work/spaced.txt"
ff -f lavfi -i "color=c=black:s=640x480:d=1,format=rgb24,\
geq=r='10+14*Y/H+6*exp(-((X-320)*(X-320)+(Y-150)*(Y-150))/40000)':\
g='12+16*Y/H+8*exp(-((X-320)*(X-320)+(Y-150)*(Y-150))/40000)':\
b='26+34*Y/H+16*exp(-((X-320)*(X-320)+(Y-150)*(Y-150))/40000)'" \
    -vf "$(text "$work/ombrel.txt" 110 white@0.06 95),\
drawbox=x=20:y=302:w=600:h=1:color=0xFFBE28@0.35:t=fill,\
$(text "$work/spaced.txt" 11 white@0.35 465)" \
    -frames:v 1 "${exact[@]}" -pix_fmt yuvj420p -q:v 3 "$demo/omthemes/Ombrel/background.jpg"

# Parlour: burgundy under a warm light, a gold frame, and dark recesses where the marquee, snap,
# flyer and list stand, so a game without a picture leaves an empty slot rather than a hole.
recess() { echo "drawbox=x=$1:y=$2:w=$3:h=$4:color=black@0.28:t=fill,drawbox=x=$1:y=$2:w=$3:h=$4:color=0xE8B850@0.35:t=1"; }
ff -f lavfi -i "color=c=black:s=640x480:d=1,format=rgb24,\
geq=r='58-26*Y/H+24*exp(-((X-320)*(X-320)+(Y-170)*(Y-170))/60000)':\
g='14-6*Y/H+10*exp(-((X-320)*(X-320)+(Y-170)*(Y-170))/60000)':\
b='22-8*Y/H+8*exp(-((X-320)*(X-320)+(Y-170)*(Y-170))/60000)'" \
    -vf "drawbox=x=6:y=6:w=628:h=468:color=0xE8B850@0.55:t=1,drawbox=x=10:y=10:w=620:h=460:color=0xE8B850@0.25:t=1,\
$(recess 196 16 248 68),$(recess 36 86 228 173),$(recess 476 91 128 168),$(recess 32 274 576 190)" \
    -frames:v 1 "${exact[@]}" -pix_fmt yuvj420p -q:v 3 "$demo/omthemes/Parlour/background.jpg"

# Phosphor: a dark screen glowing faintly at its centre, a thin frame round the list.
printf 'PHOSPHOR' >"$work/phosphor.txt"
face=${font%/*}/DejaVuSansMono-Bold.ttf
ff -f lavfi -i "color=c=black:s=640x480:d=1,format=rgb24,\
geq=r='3+5*exp(-((X-320)*(X-320)+(Y-240)*(Y-240))/90000)':\
g='8+20*exp(-((X-320)*(X-320)+(Y-240)*(Y-240))/90000)':\
b='5+9*exp(-((X-320)*(X-320)+(Y-240)*(Y-240))/90000)'" \
    -vf "drawbox=x=68:y=30:w=504:h=420:color=0x46C864@0.35:t=1,$(text "$work/phosphor.txt" 10 0x46C864@0.4 458)" \
    -frames:v 1 "${exact[@]}" -pix_fmt yuvj420p -q:v 3 "$demo/omthemes/Phosphor/background.jpg"
face=$font

# Gallery: a charcoal wall under a soft light from above, a dark frame where each picture hangs: the
# nine cells of the strip (133 x 100 with gaps of 8 at 640x480), the marquee, the flyer and the cabinet.
frame() { echo "drawbox=x=$(($1 - 3)):y=$(($2 - 3)):w=$(($3 + 6)):h=$(($4 + 6)):color=0xE8E4DA@0.18:t=1,\
drawbox=x=$1:y=$2:w=$3:h=$4:color=black@0.35:t=fill"; }
cells=""
for row in 125 233 341; do
    for column in 20 161 303; do
        cells+="$(frame "$column" "$row" 133 100),"
    done
done
printf 'G  A  L  L  E  R  Y' >"$work/gallery.txt"
ff -f lavfi -i "color=c=black:s=640x480:d=1,format=rgb24,\
geq=r='20+14*exp(-((X-320)*(X-320)+(Y+40)*(Y+40))/120000)':\
g='20+13*exp(-((X-320)*(X-320)+(Y+40)*(Y+40))/120000)':\
b='24+10*exp(-((X-320)*(X-320)+(Y+40)*(Y+40))/120000)'" \
    -vf "$cells$(frame 170 15 300 75),$(frame 483 125 120 160),$(frame 483 295 120 160),\
$(text "$work/gallery.txt" 10 0xE8E4DA@0.3 464)" \
    -frames:v 1 "${exact[@]}" -pix_fmt yuvj420p -q:v 3 "$demo/omthemes/Gallery/background.jpg"

# defaults SKIN BACK BORDER INK [PERCENT]: the four default pictures, which the picture strip shows for
# a game without that picture, at the sizes of the artwork they stand in for, in the skin's colours and
# in $face (PERCENT: of the usual text size, for a wider face).
defaults() {
    local pic file size text_size edge label
    for pic in "marquee32.jpg 1024x256 84 12 NO MARQUEE" "screen32.jpg 640x480 60 8 NO SNAP" \
               "flyer32.jpg 600x800 70 8 NO FLYER" "cabinet32.jpg 600x800 70 8 NO CABINET"; do
        read -r file size text_size edge label <<<"$pic"
        printf '%s' "$label" >"$work/label.txt"
        jpg "$demo/omthemes/$1/$file" "$size" "$2" "drawbox=x=$edge:y=$edge:w=iw-$((2 * edge)):h=ih-$((2 * edge)):\
color=$3:t=$edge,$(text "$work/label.txt" $((text_size * ${5:-100} / 100)) "$4" '(h-text_h)/2')"
    done
}
defaults Ombrel 0x1A1E2E 0x50587A 0xC8D2E6
face=${font%/*}/DejaVuSerif-Bold.ttf
defaults Parlour 0x340E16 0xE8B850 0xEEE2C8 86
face=${font%/*}/DejaVuSansMono-Bold.ttf
defaults Phosphor 0x040E08 0x46C864 0x46C864
face=$font
defaults Gallery 0x16161A 0x40D0C8 0xE8E4DA

# tone OUT SECONDS EXPRESSION: a mono sound of the given length, as a small MP3.
tone() {
    ff -f lavfi -i "aevalsrc=exprs='$3':s=22050:d=$2" -ac 1 -c:a libmp3lame -b:a 32k "${exact[@]}" "$1"
}
# sounds SKIN CLICK_HZ SWEEP_PITCH CHIME_HZ CHIME2_HZ: a short click; a rising and a falling sweep
# (phase of a linear sweep: f0 t + (f1 - f0) t^2 / 2T), both scaled by SWEEP_PITCH; and a two-note
# chime for the browser coming up.
sounds() {
    local skin=$demo/omthemes/$1 p=$3
    tone "$skin/pop.mp3" 0.06 "0.7*sin(2*PI*$2*t)*exp(-t*80)"
    tone "$skin/com.mp3" 0.6 \
        "(1-exp(-t*200))*(1-(t/0.6)^8)*(0.45*sin(2*PI*$p*(440*t+733.3*t*t))+0.15*sin(4*PI*$p*(440*t+733.3*t*t)))"
    tone "$skin/end.mp3" 1.0 \
        "(1-exp(-t*200))*exp(-t*2)*(1-t^8)*(0.45*sin(2*PI*$p*(880*t-330*t*t))+0.15*sin(4*PI*$p*(880*t-330*t*t)))"
    tone "$skin/start.mp3" 0.7 \
        "0.4*sin(2*PI*$4*t)*exp(-t*6)+0.4*gte(t,0.15)*sin(2*PI*$5*(t-0.15))*exp(-(t-0.15)*6)"
}
sounds Ombrel 1800 1 523.25 783.99
sounds Parlour 1200 0.75 392.00 587.33
sounds Phosphor 2400 1.5 880.00 1760.00
sounds Gallery 1500 1.25 659.25 987.77

# The intro film: the name fading in over a moving plasma, with a rising three-note chime.
printf 'arcade front end' >"$work/tagline.txt"
ff -f lavfi -i "color=c=black:s=320x240:r=25:d=3,format=yuv420p,\
geq=lum='80+25*sin(X/19+T*2.1)+25*sin(Y/13-T*2.9)+15*sin((X+Y)/29+T*1.3)':\
cb='128+40*sin(X/41-T*1.7)':cr='128+40*sin(Y/37+T*1.1)'" \
    -f lavfi -i "aevalsrc=exprs='0.3*sin(2*PI*659.25*t)*exp(-t*3)\
+0.3*gte(t,0.35)*sin(2*PI*830.61*(t-0.35))*exp(-(t-0.35)*3)\
+0.3*gte(t,0.7)*sin(2*PI*987.77*(t-0.7))*exp(-(t-0.7)*2.5)':s=44100:d=3" \
    -vf "$(text "$work/ombrel.txt" 56 white 80 "borderw=3:bordercolor=black@0.6:alpha='clip(t-0.3,0,1)'"),\
$(text "$work/tagline.txt" 16 white@0.9 150 "alpha='clip(t-1.2,0,1)'"),fade=t=out:st=2.5:d=0.5" \
    -af "afade=t=out:st=2.4:d=0.6" \
    -c:v mpeg1video -q:v 6 -g 12 -bf 0 -c:a mp2 -b:a 64k -ac 1 -t 3 "${exact[@]}" -f mpeg \
    "$demo/intro.mpeg"

echo "make-demo-media: done; demo/ holds $(du -sh "$demo" | cut -f1)"
