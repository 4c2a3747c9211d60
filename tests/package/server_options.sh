#!/usr/bin/env bash
# server_options.sh SERVER.CPP SERVER.H ATTRIBUTES.CPP PAGE: what the server reads from its command
# line, and the attributes of our own with their keywords, are in the manual page, and no option
# is told that it does not read.
set -euo pipefail
export LC_ALL=C

server=$1 header=$2 attributes=$3 page=$4
status=0
wrong() { echo "$*" && status=1; }

read_options=$(grep -oE '\.(text|is)\("[a-z-]+"' "$server" | cut -d'"' -f2 | sort -u)
(($(wc -w <<<"$read_options") >= 9)) || wrong "only these options found in $server: $read_options"
told=$(sed -n '/^\.Ss Options of the server/,/^\.Ss Options of jobs/s/^\.It Cm \([a-z-]*\) .*/\1/p' "$page" |
    sort -u)
[[ $read_options == "$told" ]] ||
    wrong "read, but not told, or the other way round: $(comm -3 <(cat <<<"$read_options") <(cat <<<"$told"))"
for option in $read_options; do
    grep -qE "(^|[^a-z-])$option([^a-z-]|$)" "$header" || wrong "not in $header: $option"
done

keywords=$(grep -oE '\{"[a-z0-9-]+"' "$attributes" | cut -d'"' -f2 | sort -u)
(($(wc -w <<<"$keywords") >= 20)) || wrong "only these keywords found in $attributes: $keywords"
for keyword in $keywords; do
    grep -qE "^\.(It Cm|Ql).* ?$keyword( |$)|\| $keyword( |$)" "$page" || wrong "not in $page: $keyword"
done
exit $status
