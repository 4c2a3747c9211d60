# shellcheck shell=bash
# Shared by the scripts in this folder; sourced, not run.

# What it takes to build, to run the tests besides, and to run scripts/demo besides.
# shellcheck disable=SC2034
build_packages=(cmake ninja-build g++ libcups2-dev cups-ppdc)
# shellcheck disable=SC2034
demo_packages=(cups cups-filters ghostscript)
# shellcheck disable=SC2034
test_packages=(libgtest-dev libgmock-dev cups-client "${demo_packages[@]}")

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
