# Sourced by the commands beside it: the Debian packages of each job, and the few functions they share.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build_packages=(g++ cmake ninja-build ccache pkg-config)
example_packages=(libcli11-dev nlohmann-json3-dev libgeos-dev tzdata)
test_packages=(libgtest-dev libgmock-dev librapidcheck-dev locales python3 gdb abigail-tools)
package_packages=(dpkg-dev file help2man lintian debootstrap)
check_packages=(clang clang-format clang-tidy libclang-rt-14-dev libopenmpi-dev openmpi-bin)
docs_packages=(doxygen graphviz)
mutate_packages=(clang python3-clang-14)
bench_packages=(libbenchmark-dev python3 python3-matplotlib fonts-dejavu-core)
peer_packages=(libboost-dev libboost-graph-dev libcgal-dev libsigc++-2.0-dev libcereal-dev libicu-dev libabsl-dev
    libpagmo-dev)

log_dir=build/log

say() {
    printf '==> %s\n' "$*"
}

as_root() {
    if [[ $(id -u) == 0 ]]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        printf 'This needs root or sudo: %s\n' "$*" >&2
        return 1
    fi
}

# logged NAME COMMAND...: runs a command into build/log/NAME.log and shows the log's end if it fails.
logged() {
    local log="$log_dir/$1.log"
    shift
    mkdir -p "$log_dir"
    if ! "$@" >"$log" 2>&1; then
        tail -n 60 "$log" >&2
        printf 'Failed: %s (all of it in %s)\n' "$*" "$PWD/$log" >&2
        return 1
    fi
}

# install_missing PACKAGE...: installs those that are not there yet.
install_missing() {
    local package missing=()
    for package; do
        if ! dpkg-query --show --showformat='${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed; then
            missing+=("$package")
        fi
    done
    ((${#missing[@]})) || return 0

    if ! command -v apt-get >/dev/null; then
        printf 'Please install what corresponds to these Debian packages: %s\n' "${missing[*]}" >&2
        return 1
    fi
    say "Installing ${missing[*]}"
    logged apt-update as_root apt-get -o DPkg::Lock::Timeout=300 update
    logged apt-install as_root env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300 \
        install --yes --no-install-recommends "${missing[@]}"
}

# build PRESET: configures and builds it.
build() {
    say "Building the $1 preset"
    logged "$1-configure" cmake --preset "$1"
    logged "$1-build" cmake --build --preset "$1" --parallel "$(nproc)"
}

# run_tests PRESET: runs its tests, properties on the same cases every time unless RC_PARAMS says otherwise; a summary is
# ctest's own last lines.
run_tests() {
    say "Testing the $1 preset"
    RC_PARAMS="${RC_PARAMS-seed=1}" ctest --preset "$1" --parallel "$(nproc)" --progress
}
