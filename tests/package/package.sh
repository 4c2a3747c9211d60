#!/usr/bin/env bash
# package.sh BUILD WORLD DOCUMENT: makes the Debian packages of the build and follows them through a life in
# a scratch folder: lintian, install, models, a print, reinstall over an older version, purge.
set -euo pipefail
export LC_ALL=C.UTF-8
PATH=$PATH:/usr/sbin:/sbin
umask 022

build=$1 world=$2 document=$3
scratch=$(mktemp -d)
chmod 755 "$scratch"
spooler=
# shellcheck disable=SC2329
finish() {
    [[ -z $spooler ]] || { kill "$spooler" && wait "$spooler"; } 2>/dev/null || true
    rm -rf "$scratch"
}
trap finish EXIT

fail() {
    echo "FAILED: $*"
    [[ ! -e $scratch/log ]] || tail -40 "$scratch/log"
    exit 1
}

# wait_for COMMAND...: until it succeeds
wait_for() {
    local end=$((SECONDS + 60))
    until "$@" >/dev/null 2>&1; do
        ((SECONDS < end)) || fail "waited in vain for: $*"
        sleep 0.1
    done
}

echo "== the package"
cmake --build "$build" --target packaging rastertokelp rastertokelpraster kelp-preview \
    kelp-printer-app >/dev/null
cpack -G DEB --config "$build/CPackConfig.cmake" -B "$scratch/cpack" >"$scratch/log" 2>&1 ||
    fail "cpack"
deb=$(echo "$scratch"/cpack/printer-driver-kelp_*.deb)
preview=$(echo "$scratch"/cpack/kelp-preview_*.deb)
app=$(echo "$scratch"/cpack/kelp-printer-app_*.deb)
version=$(dpkg-deb -f "$deb" Version)
[[ ${deb##*/} == "printer-driver-kelp_$version"_$(dpkg-deb -f "$deb" Architecture).deb ]] ||
    fail "the name $deb"
chmod -R a+rX "$scratch/cpack"
[[ $(dpkg-deb -f "$preview" Version) == "$version" ]] || fail "the version of $preview"
[[ $(dpkg-deb -f "$app" Version) == "$version" ]] || fail "the version of $app"
lintian --allow-root --fail-on error,warning "$deb" "$preview" "$app" || fail "lintian"
for name in libcairo2 libjpeg62-turbo libpng16-16; do
    [[ ", $(dpkg-deb -f "$preview" Depends)" == *", $name"[\ ,]* ]] || fail "no dependency on $name"
    [[ ", $(dpkg-deb -f "$deb" Depends)" != *", $name"[\ ,]* ]] || fail "the driver wants $name"
done
for name in libpappl1 libcups2 libc6 libcairo2 libpng16-16 libjpeg62-turbo; do
    [[ ", $(dpkg-deb -f "$app" Depends)" == *", $name"[\ ,]* ]] || fail "no dependency on $name"
done
for name in cups ghostscript printer-driver-kelp; do
    [[ ", $(dpkg-deb -f "$app" Depends)," != *", $name"[\ ,]* ]] || fail "the application wants $name"
done
for name in libcups2 libc6 cups cups-filters ghostscript; do
    [[ ", $(dpkg-deb -f "$deb" Depends)" == *", $name"[\ ,]* ]] || fail "no dependency on $name"
done
[[ $(dpkg-deb -I "$deb") != *conffiles* ]] || fail "conffiles"
dpkg-deb -c "$deb" >"$scratch/contents"
dpkg-deb -c "$preview" >"$scratch/preview"
dpkg-deb -c "$app" >"$scratch/app"
while read -r mode owner _ _ _ path; do
    [[ $owner == root/root ]] || fail "owner $owner of $path"
    case $path in
        */ | ./usr/lib/cups/filter/* | ./usr/bin/*) [[ $mode == ?rwxr-xr-x ]] || fail "mode $mode of $path" ;;
        *) [[ $mode == -rw-r--r-- ]] || fail "mode $mode of $path" ;;
    esac
done < <(cat "$scratch/contents" "$scratch/preview" "$scratch/app")
models=(label-2inch label-3inch label-4inch stencil-a4 stencil-a5)
docs=usr/share/doc/printer-driver-kelp
for path in usr/lib/cups/filter/rastertokelp usr/lib/cups/filter/rastertokelpraster \
    usr/lib/tmpfiles.d/kelp.conf usr/share/cups/mime/kelp.convs usr/share/cups/mime/kelp.types \
    usr/share/cups/ppd-updaters/printer-driver-kelp.ppd-updater \
    usr/share/man/man8/rastertokelp.8.gz usr/share/man/man8/rastertokelpraster.8.gz \
    "$docs/copyright" "$docs/changelog.gz" "$docs/changelog.Debian.gz" "$docs/README.md" \
    "${models[@]/#/usr/share/ppd/kelp/kelp-}"; do
    grep -q " \./$path" "$scratch/contents" || fail "not in the package: $path"
done
for path in usr/bin/kelp-preview usr/share/man/man1/kelp-preview.1.gz \
    usr/share/bash-completion/completions/kelp-preview usr/share/doc/kelp-preview/copyright \
    usr/share/doc/kelp-preview/changelog.Debian.gz; do
    grep -q " \./$path" "$scratch/preview" || fail "not in the package: $path"
done
unit=usr/lib/systemd/system/kelp-printer-app.service
for path in usr/bin/kelp-printer-app "$unit" usr/share/man/man8/kelp-printer-app.8.gz \
    usr/share/doc/kelp-printer-app/copyright usr/share/doc/kelp-printer-app/changelog.Debian.gz; do
    grep -q " \./$path" "$scratch/app" || fail "not in the package: $path"
done
[[ $(cat "$scratch/contents" "$scratch/preview" "$scratch/app" | grep -v '/$' |
    awk '{print $6}' | sort | uniq -d) == "" ]] || fail "a file is in two packages"

echo "== the links of its documents"
dpkg-deb -x "$deb" "$scratch/documents"
links=0
while IFS=: read -r file link; do
    link=$(sed -E 's/^(\]\(|src=")//; s/[)"]$//; s/#.*//' <<<"$link")
    [[ -n $link && $link != *://* ]] || continue
    links=$((links + 1))
    [[ -e ${file%/*}/$link ]] || fail "${file##*/} links to $link, which is not installed"
done < <(grep -roE '\]\([^)]+\)|src="[^"]+"' --include='*.md' "$scratch/documents/$docs")
((links > 20)) || fail "only $links links in the documents"

echo "== an older version, and this one over it"
root=$scratch/root
mkdir -p "$root"/var/lib/dpkg/{info,updates,triggers} "$root"/var/spool/cups/tmp
touch "$root"/var/lib/dpkg/{status,available}
# like dpkg, but in the scratch folder, and no maintainer script touches this system
scratch_dpkg() {
    dpkg --root="$root" --log=/dev/null --force-not-root --force-depends \
        --force-script-chrootless "$@" >"$scratch/log" 2>&1 || fail "dpkg $*"
}
dpkg-deb -R "$deb" "$scratch/older"
sed -i 's/^Version: .*/Version: 0.1-1/' "$scratch/older/DEBIAN/control"
echo old >"$scratch/older/usr/share/ppd/kelp/of-the-older-version"
dpkg-deb --root-owner-group -b "$scratch/older" "$scratch/older.deb" >/dev/null
scratch_dpkg -i "$scratch/older.deb"
[[ -e $root/usr/share/ppd/kelp/of-the-older-version ]] || fail "the older version"
scratch_dpkg -i "$deb" "$preview" "$app"
[[ ! -e $root/usr/share/ppd/kelp/of-the-older-version ]] || fail "the older version's file stays"

echo "== the installed drivers, with the filters they name"
# It wants filters to be root's; those that another user installs here are not.
ignored=()
((EUID == 0)) || ignored=(-I filters)
for model in "${models[@]}"; do
    cupstestppd -q "${ignored[@]}" -R "$root" "$root/usr/share/ppd/kelp/kelp-$model.ppd.gz" || fail "cupstestppd: $model"
done

echo "== the installed preview"
[[ $("$root/usr/bin/kelp-preview" --version) == "kelp-preview ${version%-*}" ]] || fail "its version"

echo "== the installed application"
[[ $("$root/usr/bin/kelp-printer-app" --version) == "${version%-*}" ]] || fail "its version"
enabled=$root/etc/systemd/system/multi-user.target.wants/kelp-printer-app.service
[[ -L $enabled ]] || fail "the service is not enabled"
# with the program where it lies here
mkdir "$scratch/unit"
sed "s,^ExecStart=,&$root," "$root/$unit" >"$scratch/unit/kelp-printer-app.service"
systemd-analyze verify --man=no "$scratch/unit/kelp-printer-app.service" >"$scratch/log" 2>&1 ||
    fail "systemd-analyze verify"
[[ ! -s $scratch/log ]] || fail "systemd-analyze verify"
# in tenths; without what it is made of, network and USB, it cannot be much less
systemd-analyze security --offline=true --no-pager --threshold=15 \
    "$scratch/unit/kelp-printer-app.service" >"$scratch/log" || fail "systemd-analyze security"

echo "== what an administrator disabled stays so"
rm "$enabled"
scratch_dpkg -i "$app"
[[ ! -L $enabled ]] || fail "an upgrade enables the service"

echo "== the queues that an upgrade updates"
# the spooler's package reads the file, and compares models and nicknames by what is in it
# shellcheck disable=SC1091
. "$root/usr/share/cups/ppd-updaters/printer-driver-kelp.ppd-updater"
nickname=$(zcat "$root/usr/share/ppd/kelp/kelp-label-2inch.ppd.gz" |
    sed -n 's/^\*NickName: "\(.*\)"/\1/p')
[[ $(perl -pe "$GENNICKNAME_REGEXP" <<<"$nickname") == "Kelp Label Printer 2 inch" ]] ||
    fail "the nickname $nickname"
grep -qE "$DRIVER_REGEXP" <<<"lsb/usr/kelp/kelp-label-2inch.ppd.gz" || fail "the models' folder"
if grep -qE "$DRIVER_REGEXP" <<<"lsb/usr/other/kelp-label-2inch.ppd.gz"; then fail "others"; fi

echo "== a spooler with it"
lib=$(cups-config --serverbin) share=$(cups-config --datadir) own=$scratch/spooler
mkdir -p "$own"/{etc,bin/filter,data/model,data/mime,cache,state,log,spool}
mkdir -m 1777 "$own/spool/tmp"
ln -s "$lib/backend" "$lib/daemon" "$own/bin/"
for name in gstopdf gstoraster gziptoany pdftopdf pstops; do
    ln -s "$lib/filter/$name" "$own/bin/filter/"
done
ln -s "$root/usr/lib/cups/filter/rastertokelpraster" "$own/bin/filter/"
# The filter's snapshots and log go to the scratch folder, not to the machine's own.
mkdir -p "$own"/world/var/spool/cups
mkdir -m 1777 "$own"/world/{tmp,var/spool/cups/tmp}
cp "$world" "$own/world.so"
cat >"$own/bin/filter/rastertokelp" <<END
#!/bin/sh
LD_PRELOAD=$own/world.so KELP_TEST_WORLD=$own/world exec $root/usr/lib/cups/filter/rastertokelp "\$@"
END
chmod 755 "$own/bin/filter/rastertokelp"
for file in "$share"/mime/*; do
    [[ ${file##*/} == kelp.* ]] || ln -s "$file" "$own/data/mime/"
done
ln -s "$root"/usr/share/cups/mime/* "$own/data/mime/"
ln -s "$root/usr/share/ppd/kelp" "$own/data/model/kelp"
for name in charsets data profiles usb; do ln -s "$share/$name" "$own/data/"; done
{
    ((EUID)) || printf 'User lp\nGroup lp\n'
    printf '%s\n' "ServerRoot $own/etc" "ServerBin $own/bin" "DataDir $own/data" \
        "RequestRoot $own/spool" "TempDir $own/spool/tmp" "CacheDir $own/cache" \
        "StateDir $own/state" "AccessLog $own/log/access" "PageLog $own/log/page" \
        "ErrorLog $own/log/error" "FileDevice Yes"
} >"$own/files.conf"
cat >"$own/cupsd.conf" <<END
Listen $own/sock
LogLevel debug
WebInterface No
Browsing No
DefaultAuthType None
<Location />
  Order allow,deny
  Allow all
</Location>
<Policy default>
  <Limit All>
    Order allow,deny
    Allow all
  </Limit>
</Policy>
END
cupsd -f -c "$own/cupsd.conf" -s "$own/files.conf" >"$scratch/log" 2>&1 &
spooler=$!
export CUPS_SERVER=$own/sock HOME=$own
wait_for lpstat -r
wait_for test -S "$own/sock"
lpinfo -m >"$scratch/models"
for model in "${models[@]}"; do
    grep -q "^[^ ]*kelp/kelp-$model.ppd.gz Kelp " "$scratch/models" || fail "lpinfo -m: no $model"
done
# what a printer found on USB or the network says of itself
lpinfo --device-id 'MFG:Kelp;CMD:ZPL,EPL;MDL:Label Printer 3 inch;' -m >"$scratch/offered"
[[ $(grep -o 'kelp-[a-z0-9-]*\.ppd' "$scratch/offered") == kelp-label-3inch.ppd ]] ||
    fail "offered by the device id: $(cat "$scratch/offered")"

echo "== a print"
lpadmin -p label -E -v "file:$own/printed" -m "$(
    grep -o '^[^ ]*kelp-label-4inch.ppd.gz' "$scratch/models"
)" 2>/dev/null || fail "lpadmin"
: >"$own/printed"
chmod 666 "$own/printed"
ps2pdf "$document" "$scratch/document.pdf"
lp -d label "$scratch/document.pdf" >/dev/null
completed() { [[ -n $(lpstat -W completed -o label) ]]; }
cp "$own/log/error" "$scratch/log"
wait_for completed
cp "$own/log/error" "$scratch/log"
cmp <(head -c 64 "$own/printed") <(printf '\n%.0s' {1..64}) || fail "no 64 line feeds"
head -c 200 "$own/printed" | grep -aq '^SIZE 101\.[0-9] mm, 152\.[0-9] mm' || fail "no label size"
grep -aq '^\^PQ1' "$own/printed" || fail "no print quantity"
[[ -n $(find "$own/world" -name 'dithered_*.bmp') ]] || fail "the filter wrote elsewhere"
kill "$spooler"
wait "$spooler" || true
spooler=

echo "== gone"
touch "$root"/var/spool/cups/tmp/{origin_1,dithered_1,foreign}.bmp "$root"/var/spool/cups/tmp/kelp-1.bin
mkdir -p "$root/tmp"
touch "$root/tmp/xxxxx.log"
mkdir -p "$root"/var/lib/private/kelp-printer-app/spool
touch "$root"/var/lib/private/kelp-printer-app/{printers.state,spool/1.png}
ln -s private/kelp-printer-app "$root/var/lib/kelp-printer-app"
scratch_dpkg -r printer-driver-kelp kelp-preview kelp-printer-app
[[ -e $root/var/lib/kelp-printer-app/printers.state ]] || fail "a removal takes the printers"
[[ -e $root/var/spool/cups/tmp/kelp-1.bin ]] || fail "a removal takes recordings"
scratch_dpkg -P printer-driver-kelp kelp-preview kelp-printer-app
[[ ! -e $root/var/lib/private/kelp-printer-app ]] || fail "a purge leaves the printers"
left=$(find "$root" -path "$root/var/lib/dpkg" -prune -o ! -type d -print)
[[ $left == "$root/var/spool/cups/tmp/foreign.bmp" ]] || fail "left behind: $left"
[[ ! -d $root/usr/share/ppd/kelp ]] || fail "a folder is left behind"
echo "== passed"
