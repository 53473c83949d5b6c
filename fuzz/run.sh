#!/bin/sh
# Runs one fuzz target for a while, under nice, with everything it writes under a folder of /tmp
# (or $FW_FUZZ_DIR): its seeds copied from tests/fixtures, the corpus it grows, what it finds and
# its log. The source tree is only read.
#
#   fuzz/run.sh TARGET [SECONDS] [libFuzzer flags...]     e.g. fuzz/run.sh paint 600
#
# TARGET is the name after fuzz_: back_image, config_reader, editor_commands, export, macro_header,
# paint, project_reader, replay, scasm_check, texture. Build first (see fuzz/README.md).
set -eu
here=$(cd "$(dirname "$0")" && pwd)
root=$(dirname "$here")
target=${1:?usage: fuzz/run.sh TARGET [SECONDS] [libFuzzer flags...]}
shift
seconds=600
if [ $# -gt 0 ]; then seconds=$1; shift; fi
binary=${FW_FUZZ_BUILD:-$root/build/fuzz}/program/fuzz_$target
[ -x "$binary" ] || { echo "no $binary: build with -DFW_FUZZ=ON first" >&2; exit 2; }
work=${FW_FUZZ_DIR:-/tmp/fw-fuzz}/$target
mkdir -p "$work/seeds" "$work/corpus" "$work/artifacts" "$work/cwd"
fixtures=$root/tests/fixtures

# Seeds: the fixtures of the target's input, and the findings kept so far.
case $target in
back_image | texture) cp "$fixtures"/textures/*.bmp "$fixtures"/textures/*.r8 "$fixtures"/textures/fuzz/* "$work/seeds/" ;;
scasm_check) cp "$fixtures"/export/*.txt "$fixtures"/export2/*.txt "$work/seeds/" ;;
replay) cp "$fixtures"/editor/*.txt "$work/seeds/" ;;
config_reader) cp "$fixtures"/files/*.cfg "$work/seeds/" ;;
macro_header) cp "$fixtures"/files/macros/*.api "$work/seeds/" ;;
*) for f in "$fixtures"/files/*.fwt "$fixtures"/export2/*.fwt "$fixtures"/render/*.fwt; do
       cp "$f" "$work/seeds/$(basename "$(dirname "$f")")_$(basename "$f")"
   done ;;
esac
if [ -d "$fixtures/fuzz/$target" ]; then cp "$fixtures/fuzz/$target"/* "$work/seeds/" 2>/dev/null || true; fi

# Flags of the target: its dictionary and its longest input (fuzz_<target>.options, "key = value").
flags=""
if [ -f "$here/fuzz_$target.options" ]; then
    while IFS='= ' read -r key value; do
        case $key in
        max_len) flags="$flags -max_len=$value" ;;
        dict) flags="$flags -dict=$here/$value" ;;
        timeout) flags="$flags -timeout=$value" ;;
        esac
    done < "$here/fuzz_$target.options"
fi

# The targets name files relative to where they run only in an empty folder of their own. The
# whole log goes to log.txt; its end, with the run's figures, is shown.
cd "$work/cwd"
status=0
# shellcheck disable=SC2086
nice -n 19 "$binary" -max_total_time="$seconds" -print_final_stats=1 -artifact_prefix="$work/artifacts/" \
    $flags "$@" "$work/corpus" "$work/seeds" > "$work/log.txt" 2>&1 || status=$?
grep -E '^#[0-9]+[[:space:]]+(DONE|NEW|REDUCE|pulse)' "$work/log.txt" | tail -n 1
grep -E '^stat::|^SUMMARY|^artifact_prefix' "$work/log.txt"
exit $status
