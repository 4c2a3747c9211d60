#!/usr/bin/env bash
# The bars of a barcode, drawn as filled rectangles of whole dots, must come out exactly as wide.
#
#   bars_test.sh DOCUMENT PPD RASTER_HEADER CUPSFILTER GS
#
# DOCUMENT is postscript or pdf.
set -euo pipefail

document=$1 ppd=$2 raster_header=$3 cupsfilter=$4 gs=$5
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# first dot and width of each bar
expected="10+1 20+2 30+3 40+4 51+1 62+2 73+3 84+4 96+1 98+1 100+2 104+3 "
{
    printf '%%!PS-Adobe-3.0\n%%%%Pages: 1\n%%%%EndComments\n%%%%Page: 1 1\n'
    # the default page of the PPD, so that nothing is moved
    sed -n 's/^\*DefaultPageSize: \(.*\)/\1/p' "$ppd" | while read -r name; do
        sed -n "s|^\*PaperDimension $name/.*: \"\(.*\)\"|<</PageSize [\1]>> setpagedevice|p" "$ppd"
    done
    echo '/dot 72 203 div def'
    for bar in $expected; do
        echo "${bar%+*} dot mul 10 ${bar#*+} dot mul 50 rectfill"
    done
    echo showpage
} >"$work/page.postscript"
"$gs" -q -dSAFER -sDEVICE=pdfwrite -o "$work/page.pdf" "$work/page.postscript"

"$cupsfilter" -p "$ppd" -i "application/$document" -m application/vnd.cups-raster \
    "$work/page.$document" >"$work/raster" 2>"$work/log" || { cat "$work/log" && exit 1; }
# through the middle of the bars, 36 points above the foot of the page
height=$("$raster_header" <"$work/raster" | sed 's/.* height=\([0-9]*\) .*/\1/')
actual=$("$raster_header" $((height - 36 * 203 / 72)) <"$work/raster")
echo "expected $expected"
echo "actual   $actual"
[[ $actual == "$expected" ]]
