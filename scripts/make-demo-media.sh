#!/usr/bin/env bash
# Makes the demo cabinet's content in demo/: the master game list, placeholder ROM files, the
# list files, the Extras list, the skin "Ombrel", logos, artwork, sounds and the intro film.
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
skin=$demo/omthemes/Ombrel

for tool in ffmpeg python3; do
    command -v "$tool" >/dev/null || { echo "make-demo-media: $tool is missing" >&2; exit 1; }
done
[ -f "$font" ] || { echo "make-demo-media: font $font is missing (fonts-dejavu-core)" >&2; exit 1; }

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$demo" "$skin"

# ---------------------------------------------------------------------------------------------
# Text files: the game table is the one source of gamelist.lst, the ROM folders and the lists.
# Column 3 says where a game's placeholder ROM goes: M arcade, V vector, S sports, P pong,
# U Ultra 64; lower case means known to the master list but not present in the cabinet.
# ---------------------------------------------------------------------------------------------
python3 - "$demo" "$work" <<'PY'
import os, shutil, sys, zlib

demo, work = sys.argv[1], sys.argv[2]

GAMES = """
1941|1941: Counter Attack|M
1942|1942|M
1943|1943: The Battle of Midway|M
1943kai|1943 Kai: Midway Kaisen|m
19xx|19XX: The War Against Destiny|m
3wonders|Three Wonders|m
64street|64th. Street: A Detective Story|m
88games|'88 Games|S
10yard|10-Yard Fight|S
280zzzap|280-ZZZAP|s
720|720 Degrees|S
abaseb|Atari Baseball|s
aburner2|After Burner II|M
aerofgt|Aero Fighters|m
airwolf|Airwolf|m
alexkidd|Alex Kidd: The Lost Stars|M
aliens|Aliens|M
alpine|Alpine Ski|S
altbeast|Altered Beast|M
amidar|Amidar|M
anteater|Anteater|m
apb|APB: All Points Bulletin|m
arabian|Arabian|M
arkanoid|Arkanoid|M
arkretrn|Arkanoid Returns|m
armedf|Armed Formation|m
armora|Armor Attack|V
armwrest|Arm Wrestling|S
assault|Assault|m
astdelux|Asteroids Deluxe|V
asterix|Asterix|M
asteroid|Asteroids|V
astinvad|Astro Invader|m
astrob|Astro Blaster|M
atarifb|Atari Football|S
atetris|Tetris (Atari)|M
athena|Athena|m
avengers|Avengers|m
avsp|Alien vs. Predator|M
aztarac|Aztarac|V
baddudes|Bad Dudes vs. DragonNinja|M
bagman|Bagman|M
bankp|Bank Panic|M
baraduke|Baraduke|m
barrier|Barrier|v
batman|Batman|m
bbusters|Beast Busters|m
bermudat|Bermuda Triangle|m
berzerk|Berzerk|M
bionicc|Bionic Commando|M
bjtwin|Bombjack Twin|m
bking|Birdie King|s
blaster|Blaster|m
blktiger|Black Tiger|M
blockout|Block Out|m
bloxeed|Bloxeed|m
blstroid|Blasteroids|M
bnj|Bump 'n' Jump|M
bodyslam|Body Slam|s
bombjack|Bomb Jack|M
bosco|Bosconian|M
bottom9|Bottom of the Ninth|S
boxingb|Boxing Bugs|V
breakout|Breakout|P
brkthru|Break Thru|m
bshark|Battle Shark|m
bsktball|Basketball|S
btime|BurgerTime|M
bubbles|Bubbles|M
bublbobl|Bubble Bobble|M
buckrog|Buck Rogers: Planet of Zoom|m
buggychl|Buggy Challenge|m
bwidow|Black Widow|V
bzone|Battlezone|V
cabal|Cabal|M
cadash|Cadash|m
captcomm|Captain Commando|M
carnival|Carnival|M
cawing|Carrier Air Wing|m
ccastles|Crystal Castles|M
cchasm|Cosmic Chasm|v
cclimber|Crazy Climber|M
centiped|Centipede|M
chaknpop|Chack'n Pop|m
champbas|Champion Baseball|S
champwr|Champion Wrestler|s
chasehq|Chase H.Q.|M
chelnov|Chelnov: Atomic Runner|m
choplift|Choplifter|M
circusc|Circus Charlie|M
cloak|Cloak & Dagger|m
cninja|Caveman Ninja|m
columns|Columns|M
commando|Commando|M
congo|Congo Bongo|M
contra|Contra|M
crbaloon|Crazy Balloon|m
crimfght|Crime Fighters|m
crush|Crush Roller|m
csprint|Championship Sprint|S
ctribe|The Combatribes|m
curvebal|Curve Ball|s
cyberbal|Cyberball|S
darius|Darius|M
ddonpach|DoDonPachi|m
ddragon|Double Dragon|M
ddragon2|Double Dragon II: The Revenge|M
ddragon3|Double Dragon 3: The Rosetta Stone|m
ddtod|Dungeons & Dragons: Tower of Doom|m
defender|Defender|M
demon|Demon|V
digdug|Dig Dug|M
digdug2|Dig Dug II|m
dino|Cadillacs and Dinosaurs|M
dkong|Donkey Kong|M
dkong3|Donkey Kong 3|M
dkongjr|Donkey Kong Junior|M
docastle|Mr. Do's Castle|M
domino|Domino Man|m
donpachi|DonPachi|m
dotron|Discs of Tron|M
dspirit|Dragon Spirit|M
dunkshot|Dunk Shot|S
dynwar|Dynasty Wars|m
ebases|Extra Bases|s
elevator|Elevator Action|M
elim2|Eliminator|V
enduror|Enduro Racer|S
eprom|Escape from the Planet of the Robot Monsters|m
esb|The Empire Strikes Back|V
espial|Espial|m
exctsccr|Exciting Soccer|S
exedexes|Exed Exes|m
exerion|Exerion|M
exprraid|Express Raider|m
f1dream|F-1 Dream|s
fantzone|Fantasy Zone|M
ffight|Final Fight|M
finalizr|Finalizer: Super Transformation|m
finallap|Final Lap|S
fitegolf|Fighting Golf|s
flicky|Flicky|M
flyball|Flyball|s
foodf|Food Fight|M
forgottn|Forgotten Worlds|M
frenzy|Frenzy|m
frogger|Frogger|M
frontlin|Front Line|m
galaga|Galaga|M
galaga88|Galaga '88|M
galaxian|Galaxian|M
gaplus|Gaplus|M
gaunt2|Gauntlet II|M
gauntlet|Gauntlet|M
gberet|Green Beret|M
genpeitd|Genpei ToumaDen|m
ghostb|The Real Ghostbusters|m
ghouls|Ghouls'n Ghosts|M
gng|Ghosts'n Goblins|M
goldnaxe|Golden Axe|M
gorf|Gorf|M
gradius3|Gradius III|m
gravitar|Gravitar|V
grobda|Grobda|m
growl|Growl|m
gunsmoke|Gun.Smoke|M
gwar|Guerrilla War|m
gyruss|Gyruss|M
hangon|Hang-On|S
hbarrel|Heavy Barrel|m
hcastle|Haunted Castle|m
higemaru|Pirate Ship Higemaru|m
hiimpact|High Impact Football|S
hopmappy|Hopping Mappy|m
hydra|Hydra|m
hyperspt|Hyper Sports|S
idsoccer|Indoor Soccer|s
ikari|Ikari Warriors|M
imgfight|Image Fight|m
indytemp|Indiana Jones and the Temple of Doom|M
insector|Insector|m
invaders|Space Invaders|M
invadpt2|Space Invaders Part II|m
irobot|I, Robot|M
ironhors|Iron Horse|m
jackal|Jackal|M
jailbrek|Jail Break|m
joust|Joust|M
joust2|Joust 2: Survival of the Fittest|M
journey|Journey|m
jrpacman|Jr. Pac-Man|M
jumpbug|Jump Bug|m
junglek|Jungle King|m
jungler|Jungler|M
kangaroo|Kangaroo|M
karnov|Karnov|M
kchamp|Karate Champ|M
kick|Kick|m
kidniki|Kid Niki: Radical Ninja|m
kinst|Killer Instinct|U
kinst2|Killer Instinct 2|U
klax|Klax|M
knights|Knights of the Round|m
kod|The King of Dragons|M
kroozr|Kozmik Kroozr|m
krull|Krull|M
kungfum|Kung-Fu Master|M
ladybug|Lady Bug|M
lastduel|Last Duel|m
ldrun|Lode Runner|M
liberatr|Liberator|m
liblrabl|Libble Rabble|m
lifefrce|Life Force|m
lkage|The Legend of Kage|M
llander|Lunar Lander|V
lnc|Lock'n'Chase|M
locomotn|Loco-Motion|M
lwings|Legendary Wings|M
mace|Mace: The Dark Age|U
mainevt|The Main Event|S
majtitle|Major Title|s
mappy|Mappy|M
marble|Marble Madness|M
mario|Mario Bros.|M
maxrpm|Max RPM|m
megazone|Mega Zone|m
mercs|Mercs|m
mhavoc|Major Havoc|V
midres|Midnight Resistance|M
mikie|Mikie|M
milliped|Millipede|M
missile|Missile Command|M
mk|Mortal Kombat|M
mk2|Mortal Kombat II|M
mk3|Mortal Kombat 3|m
mmaze|Märchen Maze|M
motos|Motos|m
mpatrol|Moon Patrol|M
mplanets|Mad Planets|m
mrdo|Mr. Do!|M
mrtnt|Mr. TNT|m
mspacman|Ms. Pac-Man|M
msword|Magic Sword|m
mtrap|Mouse Trap|M
mtwins|Mega Twins|m
narc|NARC|M
nbajam|NBA Jam|S
nbajamte|NBA Jam Tournament Edition|S
nemesis|Nemesis|M
nibbler|Nibbler|M
ninjaw|The Ninja Warriors|m
nitedrvr|Night Driver|S
nrallyx|New Rally-X|M
omegrace|Omega Race|V
opwolf|Operation Wolf|M
outrun|Out Run|S
outzone|Out Zone|m
pacland|Pac-Land|M
pacman|Pac-Man|M
pacmania|Pac-Mania|M
pang|Pang|M
paperboy|Paperboy|M
parodius|Parodius DA!|m
pbaction|Pinball Action|m
pbobble|Puzzle Bobble|M
pdrift|Power Drift|S
pengo|Pengo|M
pepper2|Pepper II|m
peterpak|Peter Pack Rat|m
phoenix|Phoenix|M
phozon|Phozon|m
pigskin|Pigskin 621AD|S
pingpong|Konami's Ping-Pong|S
pitfall2|Pitfall II|M
pleiads|Pleiads|M
polepos|Pole Position|S
polepos2|Pole Position II|S
pong|Pong|P
pongd|Pong Doubles|P
pooyan|Pooyan|M
popeye|Popeye|M
profpac|Professor Pac-Man|m
punchout|Punch-Out!!|S
punisher|The Punisher|m
punkshot|Punk Shot|s
qbert|Q*bert|M
qbertqub|Q*bert's Qubes|m
qix|Qix|M
qix2|Qix II: Tournament|m
quantum|Quantum|V
radarscp|Radar Scope|m
raiden|Raiden|M
rainbow|Rainbow Islands|M
rallyx|Rally-X|M
rampage|Rampage|M
rampart|Rampart|M
rastan|Rastan|M
reactor|Reactor|m
rebound|Rebound|P
redbaron|Red Baron|V
relief|Relief Pitcher|s
renegade|Renegade|M
revx|Revolution X|m
ripoff|Rip Off|V
roadblst|Road Blasters|M
roadf|Road Fighter|m
roadrunn|Road Runner|m
robocop|RoboCop|M
robotron|Robotron: 2084|M
rocnrope|Roc'n Rope|M
rthunder|Rolling Thunder|M
rtype|R-Type|M
rtype2|R-Type II|m
rygar|Rygar|M
salamand|Salamander|M
sarge|Sarge|m
scobra|Super Cobra|M
scramble|Scramble|M
sdi|SDI: Strategic Defense Initiative|m
sectionz|Section Z|m
sf2|Street Fighter II: The World Warrior|M
sf2ce|Street Fighter II': Champion Edition|M
sfa|Street Fighter Alpha: Warriors' Dreams|m
shaolins|Shao-lin's Road|M
sharrier|Space Harrier|M
shinobi|Shinobi|M
shollow|Satan's Hollow|M
sidearms|Side Arms: Hyper Dyne|m
silkworm|Silkworm|m
simpsons|The Simpsons|M
sinistar|Sinistar|M
skykid|Sky Kid|M
slammast|Saturday Night Slam Masters|s
slapfght|Slap Fight|m
smashtv|Smash T.V.|M
snowbros|Snow Bros.: Nick & Tom|M
soccer|Atari Soccer|s
solarfox|Solar Fox|m
solarq|Solar Quest|V
solomon|Solomon's Key|M
sonson|Son Son|m
spacduel|Space Duel|V
spacewar|Space Wars|V
spacfury|Space Fury|V
spdodgeb|Super Dodge Ball|S
speedfrk|Speed Freak|v
splat|Splat!|m
splatter|Splatterhouse|M
spnchout|Super Punch-Out!!|S
sprint1|Sprint 1|s
sprint2|Sprint 2|S
spyhunt|Spy Hunter|M
spyhunt2|Spy Hunter II|m
sqbert|Faster, Harder, More Challenging Q*bert|m
srumbler|The Speed Rumbler|m
ssf2|Super Street Fighter II: The New Challengers|m
ssprint|Super Sprint|S
ssriders|Sunset Riders|M
starcas|Star Castle|V
starforc|Star Force|M
stargate|Stargate|M
starhawk|Star Hawk|v
startrek|Star Trek|V
starwars|Star Wars|V
strider|Strider|M
sundance|Sundance|V
superpac|Super Pac-Man|M
swimmer|Swimmer|m
tacscan|Tac/Scan|V
tailg|Tailgunner|V
tapper|Tapper|M
targ|Targ|m
tbowl|Tecmo Bowl|S
tdfever|TouchDown Fever|s
tehkanwc|Tehkan World Cup|S
tempest|Tempest|V
term2|Terminator 2: Judgment Day|M
terracre|Terra Cresta|M
tetris|Tetris (Sega)|M
thepit|The Pit|m
thndrbld|Thunder Blade|m
tigerh|Tiger Heli|M
timber|Timber|m
timeplt|Time Pilot|M
tmnt|Teenage Mutant Ninja Turtles|M
tmnt2|Teenage Mutant Ninja Turtles: Turtles in Time|M
tnzs|The NewZealand Story|M
todruaga|The Tower of Druaga|m
toki|Toki|M
tokio|Tokio|m
toobin|Toobin'|M
topspeed|Top Speed|s
totcarn|Total Carnage|m
tp84|Time Pilot '84|M
trackfld|Track & Field|S
travrusa|Traverse USA|m
troangel|Tropical Angel|m
trog|Trog|m
trojan|Trojan|m
tron|Tron|M
truxton|Truxton|m
tumblep|Tumble Pop|m
turbo|Turbo|S
tutankhm|Tutankham|M
twincobr|Twin Cobra|M
umk3|Ultimate Mortal Kombat 3|m
unsquad|U.N. Squadron|m
vball|U.S. Championship V'ball|S
venture|Venture|M
vigilant|Vigilante|M
vimana|Vimana|m
vindictr|Vindicators|m
vulcan|Vulcan Venture|m
vulgus|Vulgus|m
wacko|Wacko|m
wardner|Wardner|m
warlords|Warlords|M
warrior|Warrior|v
wb3|Wonder Boy III: Monster Lair|m
wbml|Wonder Boy in Monster Land|M
wboy|Wonder Boy|M
wc90|Tecmo World Cup '90|s
wecleman|WEC Le Mans 24|s
willow|Willow|m
wotw|War of the Worlds|V
wow|Wizard of Wor|M
wrestwar|Wrestle War|s
ws|World Stadium|s
wwfmania|WWF WrestleMania|s
wwfsstar|WWF Superstars|S
wwfwfest|WWF WrestleFest|S
xenophob|Xenophobe|m
xevious|Xevious|M
xmen|X-Men|M
xybots|Xybots|m
yiear|Yie Ar Kung-Fu|M
zaxxon|Zaxxon|M
zektor|Zektor|V
zerowing|Zero Wing|M
zookeep|Zoo Keeper|M
zwackery|Zwackery|m
"""

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

FOLDERS = {"M": ("roms/mame", "l 1.lst"), "V": ("roms/vector", "l 2.lst"),
           "S": ("roms/sports", "l 3.lst"), "P": ("roms/pong", "l 5.lst"),
           "U": ("emus/u64/roms", "l23.lst")}
ENDINGS = {"U": ".img"}


def crlf_file(name, lines):
    """Writes lines in the cabinet's single-byte code page, each ending in CR LF."""
    with open(os.path.join(demo, name), "wb") as out:
        for line in lines:
            out.write(line.encode("cp1252") + b"\r\n")


def quoted(rom, description):
    return '"%s","%s"' % (rom, description)


games = []
for line in GAMES.strip().splitlines():
    rom, description, where = line.split("|")
    games.append((rom, description, where))
games.sort(key=lambda g: (g[1].casefold(), g[0]))

roms = [g[0] for g in games]
assert len(set(roms)) == len(roms), "a ROM name is listed twice"
assert all('"' not in g[1] for g in games), "a description can't hold a double quote"
assert all(r in roms and dict((g[0], g[2]) for g in games)[r] == "M" for r in ART)

crlf_file("gamelist.lst", [quoted(rom, description) for rom, description, _ in games])

# Placeholder ROMs and the list files, in the master list's order as a scan writes them.
for folder, _ in FOLDERS.values():
    shutil.rmtree(os.path.join(demo, folder), ignore_errors=True)
    os.makedirs(os.path.join(demo, folder))
for key, (folder, list_name) in FOLDERS.items():
    present = [(rom, d) for rom, d, where in games if where == key]
    for rom, _ in present:
        open(os.path.join(demo, folder, rom + ENDINGS.get(key, ".zip")), "wb").close()
    crlf_file(list_name, [quoted(rom, d) for rom, d in present])

with open(os.path.join(demo, "emus/u64/README.txt"), "w") as out:
    out.write("Folder of the Ultra 64 emulator of the demo cabinet. No emulator is shipped;\n"
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
        "it was asked for. Use the arrow keys to move through a list, Page Up and Page Down\n"
        "for a page, the path keys to change lists, Enter to start a game, and Esc to leave.\n\n"
        "Everything here but the settings is made by scripts/make-demo-media.sh.\n")

# Layout of the skin on the 7680 x 5760 design form: marquee over the snap at the top centre,
# cabinet left, flyer right, the logo under the snap, caption and arrows over the list strip.
crlf_file("omthemes/Ombrel/skin.ini", [
    "960,2640,2400,1800",     # snap: Top, Left, Width, Height
    "#TRUE#",
    "480,240,2160,2880",      # cabinet
    "#TRUE#",
    "480,5280,2160,2880",     # flyer
    "#TRUE#",
    "240,2640,2400,600",      # marquee
    "#TRUE#",
    "3720,240,7200,1800",     # list strip
    "1",                      # columns
    "list",                   # text strip
    "1200,900",               # cell of a picture strip: Width, Height
    "3360,240",               # list caption: Top, Left
    "#TRUE#",
    "3360,3390",              # first arrow label: Top, Left
    "#TRUE#",
    "60",                     # gap between cells of a picture strip
    "2",                      # rows centred
    "2820,3240,480,1200",     # logo: Top, Left, Height, Width
    "#TRUE#",
])

def colour(r, g, b):
    """The cabinet's colour number: blue x 65536 + green x 256 + red."""
    return str(b * 65536 + g * 256 + r)

crlf_file("omthemes/Ombrel/scheme.cfg", [
    '"DejaVu Sans"', "12",
    colour(16, 20, 40),       # back: deep navy
    colour(200, 210, 230),    # list text: pale blue grey
    colour(255, 190, 40),     # titles and selection: amber
])

# Artwork manifest for the picture step below: rom, kinds, colours, and the name wrapped for
# each card size in a text file (drawtext reads it, which spares the filter-graph escaping).
def wrap(text, width):
    lines, line = [], ""
    for word in text.split():
        if line and len(line) + 1 + len(word) > width:
            lines.append(line)
            line = word
        else:
            line = (line + " " + word).strip()
    lines.append(line)
    return "\n".join(lines)

def hue_colour(name, saturation, value):
    import colorsys
    hue = (zlib.crc32(name.encode()) % 360) / 360.0
    r, g, b = colorsys.hsv_to_rgb(hue, saturation, value)
    return "0x%02X%02X%02X" % (round(r * 255), round(g * 255), round(b * 255))

descriptions = {rom: d for rom, d, _ in games}
with open(os.path.join(work, "art.txt"), "w") as manifest:
    for rom in sorted(ART):
        name = descriptions[rom]
        for kind, width in (("snap", 12), ("marquees", 14), ("flyers", 9), ("cabinets", 10)):
            with open(os.path.join(work, "%s.%s.txt" % (rom, kind)), "w", encoding="utf-8") as f:
                f.write(wrap(name.upper() if kind == "marquees" else name, width))
        manifest.write("%s %s %s %s\n" % (rom, ",".join(ART[rom].split()),
                                          hue_colour(rom, 0.75, 0.85), hue_colour(rom, 0.8, 0.25)))

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

png() { still "$@" -pix_fmt rgb24; }
jpg() { still "$@" -pix_fmt yuvj420p -q:v 3; }

# text FILE SIZE COLOUR Y [extra drawtext options]: a centred drawtext filter for a text file.
text() {
    echo "drawtext=fontfile=$font:textfile=$1:expansion=none:fontsize=$2:fontcolor=$3:x=(w-text_w)/2:y=$4:line_spacing=2${5:+:$5}"
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

# Artwork cards: snap (a little game screen), marquee, flyer and cabinet.
mkdir -p "$demo/art"
for kind in snap marquees flyers cabinets; do
    rm -rf "${demo:?}/art/$kind"
    mkdir -p "$demo/art/$kind"
done
printf '1UP  00000' >"$work/score.txt"
printf 'INSERT COIN' >"$work/coin.txt"
printf 'ARCADE' >"$work/arcade.txt"
while read -r rom kinds bright dark; do
    for kind in ${kinds//,/ }; do
        out=$demo/art/$kind/$rom.png
        name=$work/$rom.$kind.txt
        case $kind in
        snap)
            png "$out" 160x120 "$dark" "drawbox=x=6:y=16:w=148:h=88:color=$bright@0.5:t=1,\
drawbox=x=40:y=70:w=8:h=8:color=$bright:t=fill,drawbox=x=112:y=40:w=8:h=8:color=yellow:t=fill,\
$(text "$work/score.txt" 9 white 4),$(text "$name" 14 white 30 'borderw=1:bordercolor=black'),\
$(text "$work/coin.txt" 9 $bright 107)" ;;
        marquees)
            png "$out" 256x64 "$bright" "drawbox=x=0:y=0:w=iw:h=ih:color=black@0.6:t=4,\
$(text "$name" 20 white '(h-text_h)/2' 'borderw=2:bordercolor=black')" ;;
        flyers)
            png "$out" 120x160 "$bright" "drawbox=x=0:y=100:w=iw:h=60:color=$dark:t=fill,\
drawbox=x=0:y=0:w=iw:h=ih:color=white:t=3,$(text "$name" 16 white 14 'borderw=1:bordercolor=black'),\
$(text "$work/arcade.txt" 12 white 130)" ;;
        cabinets)
            png "$out" 120x160 0xD8D8D0 "drawbox=x=28:y=8:w=64:h=150:color=$dark:t=fill,\
drawbox=x=28:y=8:w=64:h=24:color=$bright:t=fill,drawbox=x=36:y=40:w=48:h=40:color=black:t=fill,\
drawbox=x=32:y=92:w=56:h=10:color=$bright@0.7:t=fill,$(text "$name" 8 white 12)" ;;
        esac
    done
done <"$work/art.txt"

# The skin: background, default pictures, sounds.
printf 'OMBREL' >"$work/ombrel.txt"
printf 'O  M  B  R  E  L' >"$work/spaced.txt"
ff -f lavfi -i "color=c=black:s=640x480:d=1,format=rgb24,\
geq=r='10+14*Y/H+6*exp(-((X-320)*(X-320)+(Y-150)*(Y-150))/40000)':\
g='12+16*Y/H+8*exp(-((X-320)*(X-320)+(Y-150)*(Y-150))/40000)':\
b='26+34*Y/H+16*exp(-((X-320)*(X-320)+(Y-150)*(Y-150))/40000)'" \
    -vf "$(text "$work/ombrel.txt" 110 white@0.06 95),\
drawbox=x=20:y=302:w=600:h=1:color=0xFFBE28@0.35:t=fill,\
$(text "$work/spaced.txt" 11 white@0.35 465)" \
    -frames:v 1 "${exact[@]}" -pix_fmt yuvj420p -q:v 3 "$skin/background.jpg"

for pic in "marquee32.jpg 256x64 NO MARQUEE" "screen32.jpg 160x120 NO SNAP" \
           "flyer32.jpg 120x160 NO FLYER" "cabinet32.jpg 120x160 NO CABINET"; do
    read -r file size label <<<"$pic"
    printf '%s' "$label" >"$work/label.txt"
    jpg "$skin/$file" "$size" 0x1A1E2E "drawbox=x=2:y=2:w=iw-4:h=ih-4:color=0x50587A:t=2,\
$(text "$work/label.txt" 14 0xC8D2E6 '(h-text_h)/2')"
done

# tone OUT SECONDS EXPRESSION: a mono sound of the given length, as a small MP3.
tone() {
    ff -f lavfi -i "aevalsrc=exprs='$3':s=22050:d=$2" -ac 1 -c:a libmp3lame -b:a 32k "${exact[@]}" "$1"
}
# A short click; a rising and a falling sweep (phase of a linear sweep: f0 t + (f1 - f0) t^2 / 2T);
# and a two-note chime for the browser coming up.
tone "$skin/pop.mp3" 0.06 '0.7*sin(2*PI*1800*t)*exp(-t*80)'
tone "$skin/com.mp3" 0.6 \
    '(1-exp(-t*200))*(1-(t/0.6)^8)*(0.45*sin(2*PI*(440*t+733.3*t*t))+0.15*sin(4*PI*(440*t+733.3*t*t)))'
tone "$skin/end.mp3" 1.0 \
    '(1-exp(-t*200))*exp(-t*2)*(1-t^8)*(0.45*sin(2*PI*(880*t-330*t*t))+0.15*sin(4*PI*(880*t-330*t*t)))'
tone "$skin/start.mp3" 0.7 \
    '0.4*sin(2*PI*523.25*t)*exp(-t*6)+0.4*gte(t,0.15)*sin(2*PI*783.99*(t-0.15))*exp(-(t-0.15)*6)'

# The intro film: the name fading in over a moving plasma, with a rising three-note chime.
printf 'arcade front end' >"$work/tagline.txt"
ff -f lavfi -i "color=c=black:s=320x240:r=25:d=3,format=yuv420p,\
geq=lum='70+30*sin(X/19+T*2.1)+30*sin(Y/13-T*2.9)+20*sin((X+Y)/29+T*1.3)':\
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
