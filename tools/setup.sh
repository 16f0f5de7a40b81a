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

# quietly COMMAND...: shows what the command says only if it fails.
quietly() {
    log=$(mktemp)
    status=0
    "$@" >"$log" 2>&1 || status=$?
    [ $status = 0 ] || cat "$log" >&2
    rm -f "$log"
    return $status
}

# build PRESET [TARGET...]: configures where need be and builds; shows progress on a terminal.
build() {
    preset=$1
    shift
    cd "$root"
    quietly cmake --preset "$preset" || fail "cmake failed"
    if [ -t 2 ]; then
        ninja -C "build/$preset" "$@" >&2 || fail "the build failed"
    else
        quietly ninja -C "build/$preset" "$@" || fail "the build failed"
    fi
    cd "$OLDPWD"
}
