#!/bin/sh
# install-layout.sh BUILD FIXTURES WITH_QT
# Installs BUILD with the prefix /usr into a scratch root, checks the layout, then runs the
# installed programs through their links with the program folder read-only: what they write must
# land in XDG_CONFIG_HOME, and the program folder must stay as installed (also when run by root).
set -u
build=$1
fixtures=$2
with_qt=$3
tools=$(cd "$(dirname "$0")" && pwd)
scratch=$(mktemp -d "${TMPDIR:-/tmp}/fw-install.XXXXXX")
gui_pid=
cleanup() {
    [ -n "$gui_pid" ] && kill "$gui_pid" 2>/dev/null
    chmod -R u+w "$scratch" 2>/dev/null
    rm -rf "$scratch"
}
trap cleanup EXIT
failures=0
fail() {
    echo "FAIL: $*"
    failures=$((failures + 1))
}

root=$scratch/root
if ! DESTDIR=$root cmake --install "$build" --prefix /usr >"$scratch/install.log" 2>&1; then
    cat "$scratch/install.log"
    echo "FAIL: cmake --install"
    exit 1
fi

folder=$root/usr/lib/fieldwright
programs="fieldwright-cli"
[ "$with_qt" = ON ] && programs="$programs fieldwright"
for p in $programs; do
    [ -x "$folder/$p" ] || fail "$p missing from the program folder"
    [ -L "$root/usr/bin/$p" ] || fail "/usr/bin/$p is not a link"
    [ "$(readlink -f "$root/usr/bin/$p")" = "$(readlink -f "$folder/$p")" ] || fail "/usr/bin/$p points elsewhere"
done
for f in API/fwt_building1.api Texture/taxi.bmp Resource/fs5.pal Fieldwright.htm Fieldwright.installed; do
    [ -f "$folder/$f" ] || fail "$f missing from the program folder"
done
if [ "$with_qt" = ON ]; then
    share=$root/usr/share
    for f in applications/fieldwright.desktop mime/packages/fieldwright.xml \
             icons/hicolor/scalable/apps/fieldwright.svg icons/hicolor/48x48/apps/fieldwright.png \
             icons/hicolor/256x256/apps/fieldwright.png; do
        [ -f "$share/$f" ] || fail "$f not installed"
    done
    # Started from the menu without a file: the program reads no arguments.
    grep -qx 'Exec=fieldwright' "$share/applications/fieldwright.desktop" || fail "desktop entry's Exec"
    grep -qx 'MimeType=application/x-fieldwright-project;' "$share/applications/fieldwright.desktop" ||
        fail "desktop entry's MimeType"
    grep -q 'type="application/x-fieldwright-project"' "$share/mime/packages/fieldwright.xml" || fail "MIME type"
    grep -q '<glob pattern="\*.fwt"/>' "$share/mime/packages/fieldwright.xml" || fail "MIME glob"
fi
found=$(find "$root" -name Fieldwright.cfg)
[ -z "$found" ] || fail "the install holds a configuration: $found"

# Run as installed: read-only folder, no FIELDWRIGHT_HOME, a home of its own.
chmod -R a-w "$folder"
(cd "$folder" && find . -exec ls -ld --time-style=+%s {} + | sort) >"$scratch/before"
unset FIELDWRIGHT_HOME FIELDWRIGHT_SCASM
export HOME=$scratch/home XDG_CONFIG_HOME=$scratch/config XDG_STATE_HOME=$scratch/state
mkdir -p "$HOME" "$scratch/out"
user=$XDG_CONFIG_HOME/Fieldwright

cli=$root/usr/bin/fieldwright-cli
"$cli" export "$fixtures/export2/every_kind.fwt" "$scratch/out/all.txt" >/dev/null 2>&1 || fail "installed export"
"$cli" resave "$fixtures/export2/every_kind.fwt" "$scratch/out/all.fwt" >/dev/null 2>&1 || fail "installed resave"
FIELDWRIGHT_SCASM=$tools/fake-scasm.sh FAKE_SCASM_RECORD=$scratch/out/record \
    "$cli" compile "$fixtures/export2/every_kind.fwt" "$scratch/out/all.bgl" >/dev/null 2>&1 || fail "installed compile"
[ -f "$scratch/out/all.bgl" ] || fail "no .bgl from the installed compile"
grep -qx "arg=$user/exp.temp01" "$scratch/out/record" 2>/dev/null || fail "the compile's temporary file is not in $user"
[ ! -e "$user/exp.temp01" ] || fail "the temporary file was left behind"

if [ "$with_qt" = ON ]; then
    QT_QPA_PLATFORM=offscreen "$root/usr/bin/fieldwright" >"$scratch/gui.log" 2>&1 &
    gui_pid=$!
    # The configuration is read, and so created, before the first window shows.
    n=0
    while [ ! -f "$user/Fieldwright.cfg" ] && [ $n -lt 300 ] && kill -0 "$gui_pid" 2>/dev/null; do
        sleep 0.1
        n=$((n + 1))
    done
    [ -f "$user/Fieldwright.cfg" ] || { cat "$scratch/gui.log"; fail "the program wrote no configuration to $user"; }
    kill "$gui_pid" 2>/dev/null
    wait "$gui_pid" 2>/dev/null
    gui_pid=
fi

(cd "$folder" && find . -exec ls -ld --time-style=+%s {} + | sort) >"$scratch/after"
diff "$scratch/before" "$scratch/after" >/dev/null || { diff "$scratch/before" "$scratch/after"; fail "the program folder changed"; }

[ $failures -eq 0 ] && echo "install layout: ok"
[ $failures -eq 0 ]
