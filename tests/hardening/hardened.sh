#!/usr/bin/env bash
# hardened.sh PROGRAM [LANDING]: fails when something that makes a fault hard to use is missing from
# the program: it reads what the linker made of it. LANDING is the instruction that a jump must land on
# where the processor watches jumps.
set -euo pipefail
export LC_ALL=C

program=$1 landing=${2:-}
missing=0

# needs WHAT TEXT PATTERN: a line of the text fits the pattern
needs() {
    grep -Eq "$3" <<<"$2" || { echo "$program: no $1"; missing=1; }
}

# has_no WHAT TEXT PATTERN
has_no() {
    if grep -Eq "$3" <<<"$2"; then echo "$program: has $1"; missing=1; fi
}

header=$(readelf -hW "$program")
segments=$(readelf -lW "$program")
dynamic=$(readelf -dW "$program")
imports=$(nm -D --undefined-only "$program")
[[ -n $imports ]] || { echo "$program: imports nothing, so nothing can be read from it"; exit 1; }

needs "position-independent code" "$header" 'Type: +DYN '
needs "mark of a position-independent program" "$dynamic" 'FLAGS_1.* PIE'
needs "read-only relocations" "$segments" ' GNU_RELRO '
needs "binding of all symbols at the start" "$dynamic" 'FLAGS\).*BIND_NOW|FLAGS_1.* NOW'
needs "mark of a stack that is not executed" "$segments" ' GNU_STACK .* RW +0x'
needs "stack protector" "$imports" ' __stack_chk_fail(@|$)'
needs "checked functions of the C library" "$imports" ' __(v?s?n?f?printf|mem|str|read|f?reads?)[a-z]*_chk(@|$)'
has_no "a segment that is written and executed" "$segments" ' RWE '
has_no "code that is written at the start" "$dynamic" 'TEXTREL'
has_no "a library path of its own" "$dynamic" '\((RPATH|RUNPATH)\)'
if [[ -n $landing ]]; then
    needs "$landing where main begins" "$(objdump -d --no-show-raw-insn --disassemble=main "$program" |
        grep -A1 '<main>:')" "[[:space:]]$landing"
fi
exit $missing
