#!/usr/bin/env bash
# Rasterises a page in every size of a PPD by the spooler's real filters and compares the raster
# header with the table of sizes. The page has ink in its upper left quarter.
#
#   page_sizes_test.sh DOCUMENT PPD SIZES RASTER_HEADER CUPSFILTER GS
#
# DOCUMENT is postscript, pdf, or larger_pdf: one larger than any page here, and so cropped.
set -euo pipefail

document=$1 ppd=$2 sizes=$3 raster_header=$4 cupsfilter=$5 gs=$6
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# ink and paper as the model's colour space has them
color_space=$(sed -n 's/^\*ColorModel .*cupsColorSpace \([0-9]*\).*/\1/p' "$ppd")
case $(basename "$ppd"):$color_space in
    kelp-label-*:3) corners="upperLeft=255 lowerRight=0" ;;
    kelp-stencil-*:0) corners="upperLeft=0 lowerRight=255" ;;
    *) echo "$ppd has colour space '$color_space'" && exit 1 ;;
esac

# make_page WIDTH LENGTH, in points: the document in $work/page.EXT
make_page() {
    printf '%%!PS-Adobe-3.0\n%%%%Pages: 1\n%%%%EndComments\n%%%%Page: 1 1\n' >"$work/page.ps"
    printf '<</PageSize [%s %s]>> setpagedevice\n0 %s 2 div %s 2 div %s rectfill\nshowpage\n' \
        "$1" "$2" "$2" "$1" "$2" >>"$work/page.ps"
    if [[ $document != postscript ]]; then
        "$gs" -q -dSAFER -sDEVICE=pdfwrite -o "$work/page.pdf" "$work/page.ps"
    fi
}

# what the PPD offers: name, width, length
sed -n 's|^\*PaperDimension \([^/:]*\).*: "\([0-9.]*\) \([0-9.]*\)"|\1 \2 \3|p' "$ppd" \
    >"$work/offered"

failures=0
tested=0
while read -r name width height; do
    if ! read -r _ points_wide points_long < <(awk -v name="$name" '$1 == name' "$work/offered"); then
        echo "FAILED: $name is not in $ppd"
        failures=$((failures + 1))
        continue
    fi
    expected="page=1 size=$name width=$width height=$height bytesPerLine=$width bitsPerPixel=8"
    expected+=" colorSpace=$color_space colorOrder=0 resolution=203x203"
    case $document in
        postscript) make_page "$points_wide" "$points_long"; file=page.ps ;;
        pdf) make_page "$points_wide" "$points_long"; file=page.pdf ;;
        larger_pdf) [[ -e $work/page.pdf ]] || make_page 842 1191; file=page.pdf ;;
    esac
    [[ $document == larger_pdf ]] || expected+=" $corners"

    "$cupsfilter" -p "$ppd" -m application/vnd.cups-raster -o "PageSize=$name" "$work/$file" \
        >"$work/raster" 2>"$work/log" || { echo "FAILED: cupsfilter on $name"; cat "$work/log"; }
    actual=$("$raster_header" <"$work/raster" 2>&1) || true
    [[ $document != larger_pdf ]] || actual=${actual% upperLeft=*}

    tested=$((tested + 1))
    if [[ $actual != "$expected" ]]; then
        printf 'FAILED: %s\n  expected %s\n  actual   %s\n' "$name" "$expected" "$actual"
        failures=$((failures + 1))
    elif ((width % 8 != 4)); then
        echo "FAILED: $name is $width dots wide, not 4 more than a multiple of 8"
        failures=$((failures + 1))
    else
        echo "$actual"
    fi
done < <(grep -v '^#' "$sizes")

offered=$(wc -l <"$work/offered")
echo "$tested sizes tested, $offered offered, $failures failures"
((tested > 0 && tested == offered && failures == 0))
