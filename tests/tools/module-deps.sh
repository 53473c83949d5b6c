#!/bin/sh
# The modules include one another one way only: each folder of src/ may include the folders named
# here and no other. The ports and the logic never include Qt, and only the adapters see it.
src=$1
status=0
allowed() {
    case $1 in
        ports) echo "ports" ;;
        core) echo "core ports" ;;
        files) echo "files core ports" ;;
        export) echo "export files core ports" ;;
        editor) echo "editor core ports" ;;
        replay) echo "replay editor files core ports" ;;
        render) echo "render editor files core ports" ;;
        dialogs) echo "dialogs files core ports" ;;
        check) echo "check export render editor files core ports" ;;
        osm) echo "osm editor export files core ports" ;;
        gl) echo "gl ports" ;;
        posix) echo "posix ports" ;;
        qt) echo "qt gl check osm render dialogs export editor files core ports" ;;
        app) echo "app qt gl posix replay check osm render dialogs export editor files core ports" ;;
        *) echo "" ;;
    esac
}
for dir in "$src"/*/; do
    module=$(basename "$dir")
    ok=$(allowed "$module")
    if [ -z "$ok" ]; then
        echo "src/$module: a module without its place in the dependency table"
        status=1
        continue
    fi
    for used in $(grep -rhoE '#include "[a-z]+/' "$dir" | sed 's/#include "//; s#/##' | sort -u); do
        case " $ok " in
            *" $used "*) ;;
            *) echo "src/$module includes src/$used"; status=1 ;;
        esac
    done
    if [ "$module" != qt ] && [ "$module" != app ] && grep -rlE '#include <Q' "$dir" >/dev/null; then
        echo "src/$module includes a Qt header:"; grep -rlE '#include <Q' "$dir"
        status=1
    fi
done
exit $status
