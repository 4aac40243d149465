# Sourced by ./run and ./test, in the project's folder: packages and builds.
# shellcheck shell=bash

# Debian's own tools, whatever else stands in front of them on this machine.
export PATH="/usr/bin:/bin:$PATH"

die()
{
    echo "$*" >&2
    exit 1
}

# Which packages of the given groups this machine lacks.
missing_packages()
{
    local group package wanted=" $* "
    while read -r group package; do
        [[ -n $package && $wanted == *" $group "* ]] || continue
        [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) == installed ]] ||
            echo "$package"
    done < <(sed 's/#.*//' packaging/debian-packages)
}

# Installs what is missing of the given groups, without a question of its own.
need_packages()
{
    command -v dpkg-query >/dev/null ||
        die "This is no Debian system; packaging/debian-packages lists what to install by hand."
    local missing as_root=()
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]} > 0)) || return 0
    echo "Installing: ${missing[*]}"
    if (($(id -u) != 0)); then
        command -v sudo >/dev/null ||
            die "Root rights are needed: run as root  apt-get install ${missing[*]}"
        as_root=(sudo)
        [[ -t 0 ]] || as_root=(sudo -n)
    fi
    local apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive
        apt-get -q -y -o DPkg::Lock::Timeout=300 -o Acquire::Retries=3)
    "${apt[@]}" update </dev/null ||
        echo "The package lists could not be renewed; going on with those at hand." >&2
    "${apt[@]}" install --no-install-recommends "${missing[@]}" </dev/null ||
        die "The packages could not be installed: ${missing[*]}"
}

# build PRESET [TARGET...]: configures and builds the preset, all of it or the given targets.
build()
{
    local preset=$1
    shift
    local targets=()
    (($# == 0)) || targets=(--target "$@")
    cmake --preset "$preset"
    cmake --build --preset "$preset" --parallel "$(nproc)" "${targets[@]}"
    echo "Ready to go on after $SECONDS s: preset $preset is built."
}
