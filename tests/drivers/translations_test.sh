#!/usr/bin/env bash
# Every text of the drivers is translated in a catalogue, and the catalogue is well formed.
#
#   translations_test.sh DRIVERS_FOLDER CATALOGUE PPDPO
set -euo pipefail

drivers=$1 catalogue=$2 ppdpo=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cd "$drivers"
"$ppdpo" -D KELP_VERSION=0 -o "$work/english.po" kelp.drv
count=$(grep -c ^msgid "$work/english.po")
echo "$count texts"
((count > 140))
msgfmt -c -o /dev/null "$catalogue"
# fails for a text that is missing, empty or fuzzy
msgcmp "$catalogue" "$work/english.po"
