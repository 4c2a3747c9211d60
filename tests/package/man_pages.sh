#!/usr/bin/env bash
# man_pages.sh FOLDER: every manual page in it is understood by both formatters without a warning.
set -euo pipefail

status=0 pages=0
for page in "$1"/*.[1-8]; do
    pages=$((pages + 1))
    mandoc -T lint -W warning "$page" || status=1
    said=$(LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" \
        2>&1 >/dev/null)
    [[ -z $said ]] || { echo "$page: $said" && status=1; }
done
((pages >= 2)) || { echo "only $pages pages in $1" && status=1; }
exit $status
