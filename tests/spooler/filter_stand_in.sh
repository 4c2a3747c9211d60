#!/bin/bash
# Stands in a private spooler's folder where the filter of this name is expected, and becomes the
# built filter: the process id stays the one that the spooler knows, so that its signals arrive.
#
# Of rastertokelp it keeps what that is given, in records/<job>; the record is complete before the
# filter sees the end of its input.
set -u
name=${0##*/}
programs=${0%/*/*}
root=${programs%/*}
record=$root/records/$1

keep_input=false
if [[ $name == rastertokelp ]]; then
    mkdir -p "$record"
    printf '%s\0' "$@" >"$record/arguments"
    cat "$PPD" >"$record/printer.ppd"
    if (($# > 5)); then # a document that is raster by itself comes as a file
        cat "$6" >"$record/raster"
    else
        keep_input=true
    fi
fi

# libcups leaks when a spooler's "print-color-mode" stands for a driver's preset.
sanitizers=exitcode=99:verify_asan_link_order=0:detect_leaks=0:abort_on_error=0
export ASAN_OPTIONS=$sanitizers LSAN_OPTIONS=$sanitizers UBSAN_OPTIONS=$sanitizers
export KELP_TEST_WORLD=$root/world
if $keep_input; then
    exec 0< <(exec tee "$record/raster")
fi
LD_PRELOAD=$programs/world.so exec "$programs/$name" "$@"
