# shellcheck shell=bash
# Shared by the scripts in this folder; sourced, not run.

# What it takes to build; and besides to run scripts/demo, to package, and to run the tests.
# shellcheck disable=SC2034
build_packages=(cmake ninja-build g++ pkg-config libcups2-dev cups-ppdc libhwy-dev libpng-dev libjpeg-dev
    libcairo2-dev libcli11-dev libmicrohttpd-dev nlohmann-json3-dev libpappl-dev)
# shellcheck disable=SC2034
demo_packages=(cups cups-filters ghostscript)
# shellcheck disable=SC2034
package_packages=(dpkg-dev file)
# shellcheck disable=SC2034
test_packages=(libgtest-dev libgmock-dev chromium cups-client cups-ipp-utils zbar-tools gettext
    "${demo_packages[@]}" "${package_packages[@]}" lintian man-db mandoc groff-base systemd)

# die MESSAGE...: prints the message to standard error and ends the script
die() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# as_root COMMAND...
as_root() {
    if ((EUID == 0)); then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        die "needs root or sudo for: $*"
    fi
}

# need_packages PACKAGE...: installs those Debian packages that are missing; does nothing, and
# needs no root, when all are there
need_packages() {
    local package status missing=()
    command -v dpkg-query >/dev/null || die "this is no Debian system; install by hand: $*"
    for package in "$@"; do
        # no status is not an error: the package is unknown here
        status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) || status=
        [[ $status == installed ]] || missing+=("$package")
    done
    ((${#missing[@]})) || return 0
    echo "Installing: ${missing[*]}"
    as_root apt-get -q update
    as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get -q -y install --no-install-recommends "${missing[@]}"
}

# spooler_folders DIR BIN: makes in DIR what cupsfilter needs to run the system's filters and ours of
# the folder BIN, and DIR/cups-files.conf to tell it
spooler_folders() {
    local dir=$1 bin=$2 filter entry system_filters system_data
    system_filters=$(cups-config --serverbin)/filter
    system_data=$(cups-config --datadir)
    mkdir -p "$dir/cups/filter" "$dir/share/mime"
    for filter in gstopdf pdftopdf gstoraster imagetopdf imagetoraster texttopdf; do
        [[ -x $system_filters/$filter ]] || die "$system_filters/$filter is missing"
        ln -s "$system_filters/$filter" "$dir/cups/filter/"
    done
    # copies: a root's cupsfilter takes only filters that root owns
    install -m 755 "$bin/rastertokelp" "$bin/rastertokelpraster" "$dir/cups/filter/"
    for entry in "$system_data"/* "$system_data"/mime/*; do
        case $entry in
            */mime) ;;
            */mime/kelp.*) ;;  # of an installed Kelp
            */mime/*) ln -s "$entry" "$dir/share/mime/" ;;
            *) ln -s "$entry" "$dir/share/" ;;
        esac
    done
    ln -s "$(dirname "${BASH_SOURCE[0]}")"/../drivers/mime/kelp.* "$dir/share/mime/"
    printf 'ServerBin %s\nDataDir %s\n' "$dir/cups" "$dir/share" >"$dir/cups-files.conf"
}
