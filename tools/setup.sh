# Shared by ./run and ./check: installs what is missing, builds. To be sourced; $root is the repository.

fail() {
    echo "$(basename "$0"): $*" >&2
    exit 1
}

# The packages of packages.txt that are not installed, one a line.
missing_packages() {
    sed 's/#.*//' "$root/packages.txt" | tr -s ' \t' '\n' | while read -r package; do
        [ -z "$package" ] && continue
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || echo "$package"
    done
}

install_packages() {
    command -v dpkg-query >/dev/null || fail "this needs Debian 12 or a system with its packages (packages.txt)"
    missing=$(missing_packages | tr '\n' ' ')
    [ -z "$missing" ] && return 0
    as_root=
    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null || fail "install these packages as root first: $missing"
        as_root=sudo
    fi
    echo "Installing: $missing" >&2
    $as_root apt-get update -qq >&2 || fail "apt-get update failed: is the machine online?"
    $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing \
        >/dev/null || fail "apt-get could not install: $missing"
}

# build PRESET [TARGET...]: configures where need be and builds; speaks only when something is wrong.
build() {
    preset=$1
    shift
    log=$(mktemp)
    if ! (cd "$root" && cmake --preset "$preset") >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        fail "cmake failed"
    fi
    rm -f "$log"
    echo "Building ($preset) ..." >&2
    ninja -C "$root/build/$preset" --quiet "$@" >&2 || fail "the build failed"
}
