#!/bin/sh
# A stand-in for the scenery compiler: fake-scasm.sh SOURCE OUT.bgl -l
# FAKE_SCASM_MODE: ok (default) writes the .bgl and a success log, error writes an error log,
# nolog writes nothing. FAKE_SCASM_RECORD, when set, receives the arguments and a copy of SOURCE.
src=$1
bgl=$2
log="$(dirname "$bgl")/SCAERROR.LOG"
if [ -n "$FAKE_SCASM_RECORD" ]; then
    {
        printf 'argc=%s\n' "$#"
        for a in "$@"; do printf 'arg=%s\n' "$a"; done
    } > "$FAKE_SCASM_RECORD"
    cp "$src" "$FAKE_SCASM_RECORD.source"
fi
case "${FAKE_SCASM_MODE:-ok}" in
ok)
    printf 'BGL' > "$bgl"
    printf 'Scasm compilation status: ok\r\n' > "$log"
    ;;
error)
    printf 'Scasm compilation status: 1 error(s)\r\nLine 12: unknown command\r\n' > "$log"
    ;;
nolog)
    ;;
esac
exit 0
