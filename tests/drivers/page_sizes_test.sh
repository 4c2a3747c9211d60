#!/usr/bin/env bash
# Prints a page in every size of a PPD up to the filter, by the spooler's real filters and the page
# fitter, and compares the header of the raster that arrives with the table of sizes.
#
#   page_sizes_test.sh DOCUMENT ORIENTATION PPD BIN RASTER_HEADER CUPSFILTER GS
#
# DOCUMENT is postscript, pdf, png, jpeg, text, or larger_pdf: one larger than any page here, and so
# cropped. ORIENTATION is portrait or landscape. BIN is the folder of our filters. The first two
# documents have ink in the upper left quarter of the page.
set -euo pipefail
export LC_ALL=C

document=$1 orientation=$2 ppd=$3 bin=$4 raster_header=$5 cupsfilter=$6 gs=$7
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=scripts/lib.sh
. "$here/../../scripts/lib.sh"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
spooler_folders "$work" "$bin"

# ink and paper as the model's colour space has them
color_space=$(sed -n 's/^\*ColorModel .*cupsColorSpace \([0-9]*\).*/\1/p' "$ppd")
case $(basename "$ppd"):$color_space in
    kelp-label-*:3) corners="upperLeft=255 lowerRight=0" ;;
    kelp-stencil-*:0) corners="upperLeft=0 lowerRight=255" ;;
    *) die "$ppd has colour space '$color_space'" ;;
esac
[[ $orientation == portrait ]] && requested=3 || requested=4

# make_page WIDTH LENGTH, in points: the document, its name in $file
make_page() {
    file=$work/page.ps
    printf '%%!PS-Adobe-3.0\n%%%%Pages: 1\n%%%%EndComments\n%%%%Page: 1 1\n' >"$file"
    printf '<</PageSize [%s %s]>> setpagedevice\n0 %s 2 div %s 2 div %s rectfill\nshowpage\n' \
        "$1" "$2" "$2" "$1" "$2" >>"$file"
    case $document in
        *pdf) "$gs" -q -dSAFER -sDEVICE=pdfwrite -o "$work/page.pdf" "$file" && file=$work/page.pdf ;;
        # 300 x 200 pixels, a shape that no page has
        png | jpeg)
            "$gs" -q -dSAFER -sDEVICE="${document/png/png16m}" -r100 -g300x200 \
                -o "$work/page.$document" "$file"
            file=$work/page.$document
            ;;
        text) file=$work/page.txt && printf 'A line.\nAnother.\n' >"$file" ;;
    esac
}

# what the PPD offers: name, width, length
offered() {
    sed -n 's|^\*PaperDimension \([^/:]*\).*: "\([0-9.]*\) \([0-9.]*\)"|\1 \2 \3|p' "$ppd"
}

failures=0 tested=0
# check NAME POINTS_WIDE POINTS_LONG DOTS_WIDE DOTS_LONG
check() {
    local expected actual
    expected="page=1 size=$1 width=$4 height=$5 bytesPerLine=$4 bitsPerPixel=8"
    expected+=" colorSpace=$color_space colorOrder=0 resolution=203x203"
    case $document-$orientation in
        larger_pdf-*) make_page 842 1191 ;;
        postscript-portrait | pdf-portrait) make_page "$2" "$3" && expected+=" $corners" ;;
        *) make_page "$2" "$3" ;;
    esac
    "$cupsfilter" -c "$work/cups-files.conf" -p "$ppd" -m application/vnd.kelp-raster \
        -o "PageSize=$1" -o "orientation-requested=$requested" "$file" \
        >"$work/raster" 2>"$work/log" || { echo "FAILED: cupsfilter on $1" && cat "$work/log"; }
    actual=$("$raster_header" <"$work/raster" 2>&1) || true
    [[ $expected == *upperLeft* ]] || actual=${actual% upperLeft=*}
    # each rasteriser has a name of its own for a custom size
    [[ $1 != Custom.* || $actual != *" size=Custom"* ]] || actual="${actual%% size=*} size=$1 width=${actual#* width=}"
    tested=$((tested + 1))
    if [[ $actual != "$expected" ]]; then
        printf 'FAILED: %s\n  expected %s\n  actual   %s\n' "$1" "$expected" "$actual"
        failures=$((failures + 1))
    else
        echo "$actual"
    fi
}

while read -r name points_wide points_long; do
    if ! read -r _ width height < <(awk -v name="$name" '$1 == name' "$here/page.sizes"); then
        die "$name is not in the table of sizes"
    fi
    check "$name" "$points_wide" "$points_long" "$width" "$height"
done < <(offered)
# 50 mm are 399.6 dots, 40 mm 319.7; 1.5 inch are 304.5 dots, which rounds up
check Custom.50x40mm 141.73 113.39 396 320
check Custom.1.5x1in 108 72 300 203

echo "$tested sizes tested, $failures failures"
((tested == $(offered | wc -l) + 2 && tested > 3 && failures == 0))
