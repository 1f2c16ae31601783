#!/usr/bin/env bash
# Makes docs/images/browser.png, the picture at the top of the README: the demo cabinet's browser
# screen with Donkey Kong selected, as a replay run paints it. The run works on a copy of demo/, since
# the program writes into its folder, with the release build, or the dev build when only that one is
# configured; the script builds it first.
# Usage: scripts/make-readme-picture.sh [--skin NAME] [--screen WxH] [--out FILE]
#        (default: Ombrel at 1024x768 into docs/images/browser.png)
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)

skin=Ombrel
size=1024x768
out=docs/images/browser.png
while [ $# -gt 0 ]; do
  case $1 in
    --skin) skin=${2:?--skin needs a folder name of demo/omthemes}; shift 2 ;;
    --screen) size=${2:?--screen needs a size such as 800x600}; shift 2 ;;
    --out) out=${2:?--out needs a file name}; shift 2 ;;
    *) echo "usage: $0 [--skin NAME] [--screen WxH] [--out FILE]" >&2; exit 2 ;;
  esac
done
[ -f "demo/omthemes/$skin/skin.ini" ] || { echo "make-readme-picture: no skin demo/omthemes/$skin" >&2; exit 2; }

"$root/scripts/install-deps.sh" build
if [ -d build ] && [ ! -d build-release ]; then
  dir=build
else
  dir=build-release
  cmake --preset release >/dev/null
fi
cmake --build "$dir" --target ombrel -j"$(nproc)"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -R demo "$work/cabinet"
# The saved state's first line names the skin.
{ printf '"\\%s\\"\r\n' "$skin"; tail -n +2 demo/ombrel.cfg; } >"$work/cabinet/ombrel.cfg"

# The intro film ends after 3 s and the browser comes up on the first game of Arcade Classics; 31 steps
# down reach Donkey Kong, which has all four pictures.
{
  t=4000
  for _ in $(seq 31); do
    echo "at $t key down 40"
    echo "at $((t + 100)) key up 40"
    t=$((t + 200))
  done
  echo "at $((t + 800)) screenshot browser.png"
  echo "at $((t + 800)) end"
} >"$work/walk.replay"

(cd "$work" && "$root/$dir/src/app/ombrel" --home "$work/cabinet" --replay walk.replay --screen "$size" \
  --trace walk.trace)
grep -q ' select 1 31 "Donkey Kong"$' "$work/walk.trace" \
  || { echo "make-readme-picture: the walk did not reach Donkey Kong; see the trace:" >&2; tail "$work/walk.trace" >&2; exit 1; }
mkdir -p "$(dirname "$out")"
cp "$work/browser.png" "$out"
echo "make-readme-picture: $out ($skin, $size)"
