#!/usr/bin/env bash
# tmpfiles.sh RULE: run over a spooler's folder, it removes old pictures and nothing else.
set -euo pipefail

root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
chmod 755 "$root"
folder=$root/var/spool/cups/tmp
mkdir -p "$folder/foreign-folder" "$root/usr/lib/tmpfiles.d" "$root/outside"
cp "$1" "$root/usr/lib/tmpfiles.d/kelp.conf"

old=(origin_2026-1-2_3_4_5_0.bmp dithered_2026-1-2_3_4_5_1.bmp)
kept=(kelp-20260102030405.bin prnimg_1.bmp origin.bmp originx_1.bmp dithered_1.bin origin_1.bmpx
    xorigin_1.bmp o d p mp bmp .bmp origin_1.Bmp origin_1.bXp origin_1.bmX .origin_1.bmp origin_1bmp Origin_1.bmp d0001-001 document.bmp
    foreign-folder/origin_1.bmp)
new=(origin_2026-9-9_9_9_9_0.bmp dithered_2026-9-9_9_9_9_1.bmp)
# one letter off, at every place
for word in origin_ dithered_; do
    for ((i = 0; i < ${#word}; i++)); do
        kept+=("${word:0:i}Z${word:i+1}1.bmp")
    done
done
for name in "${old[@]}" "${kept[@]}"; do
    echo content >"$folder/$name"
    touch -d '-25 hours' "$folder/$name"
done
for name in "${new[@]}"; do
    echo content >"$folder/$name"
    touch -d '-23 hours' "$folder/$name"
done
# planted: the link may go, what it leads to may not
echo content >"$root/outside/target"
touch -d '-25 hours' "$root/outside/target"
ln -s "$root/outside/target" "$folder/origin_link.bmp"
ln -s "$root/outside" "$folder/dithered_link.bmp"
touch -h -d '-25 hours' "$folder/origin_link.bmp" "$folder/dithered_link.bmp"

systemd-tmpfiles --root="$root" --clean kelp.conf

status=0
for name in "${old[@]}"; do
    [[ ! -e $folder/$name ]] || { echo "still there: $name" && status=1; }
done
for name in "${kept[@]}" "${new[@]}"; do
    [[ -e $folder/$name ]] || { echo "removed: $name" && status=1; }
done
[[ -e $root/outside/target ]] || { echo "a link was followed" && status=1; }
exit $status
