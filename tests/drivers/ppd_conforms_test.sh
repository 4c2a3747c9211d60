#!/usr/bin/env bash
# The spooler's own test passes a PPD in all its languages, with no warning but the known ones.
#
#   ppd_conforms_test.sh PPD CUPSTESTPPD [OPTION]...
set -euo pipefail
export LC_ALL=C

ppd=$1
shift
report=$("$@" "$ppd") || { echo "$report" && exit 1; }
echo "$report"

known=(
    # Our names are those on the box of labels, or known to the border code.
    'WARN    Size "[^"]*" should be the Adobe standard name "[^"]*"\.'
    # An attribute for the raster driver, not the default of an option.
    'WARN    DefaultCenterOfPixel has no corresponding options\.'
    # No file system needs names of eight letters.
    'WARN    PCFileName longer than 8\.3 in violation of PPD spec\.'
    'REF: Pages 61-62, section 5\.3\.'
)
unknown=$(tail -n +2 <<<"$report" | sed 's/^ *//' | grep . |
    grep -vxE "$(IFS='|' && echo "${known[*]}")") || true
[[ $(head -n 1 <<<"$report") == *": PASS" ]]
if [[ -n $unknown ]]; then
    printf 'not expected:\n%s\n' "$unknown"
    exit 1
fi
