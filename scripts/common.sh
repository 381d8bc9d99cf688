# Sourced by ./run and ./check: messages, packages, logged steps.

# What the programs are built from and need when they run.
build_packages=(
    g++ cmake ninja-build ccache pkg-config
    qt6-base-dev qt6-svg-dev fonts-vlgothic
    libjack-jackd2-dev libasound2-dev librtaudio-dev
    libfluidsynth-dev timgm6mb-soundfont libsndfile1-dev libsamplerate0-dev
    libsimpleini-dev libcli11-dev nlohmann-json3-dev
)
# What the tests need besides.
test_packages=(
    libgtest-dev libgmock-dev jackd2 xvfb
    clang-16 libclang-rt-16-dev clang-format-14 clang-tidy-14
)

say() { printf '%s\n' "$*"; }
fail() {
    printf '%s\n' "$*" >&2
    exit 1
}

# logged LOG COMMAND...: runs the command with its output in LOG; shows the end of it when the command fails.
logged() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    "$@" >"$log" 2>&1 </dev/null && return 0
    local code=$?
    tail -n "${LOG_LINES:-60}" "$log" >&2
    say "The whole log: $log" >&2
    return $code
}

installed() { [[ $(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null) == installed ]]; }

# need PACKAGE...: installs those packages that are missing.
need() {
    local missing=() package
    command -v dpkg-query >/dev/null || fail "This script installs Debian packages; on other systems see docs/DEPENDENCIES.md."
    for package in "$@"; do
        installed "$package" || missing+=("$package")
    done
    ((${#missing[@]})) || return 0

    local as_root=()
    if ((EUID != 0)); then
        command -v sudo >/dev/null || fail "Please run as root: apt-get install ${missing[*]}"
        as_root=(sudo)
    fi
    local apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -o DPkg::Lock::Timeout=300)
    say "Installing ${missing[*]}"
    # sudo asks before its output goes into the log.
    ((EUID == 0)) || sudo -v || fail "Installing packages needs sudo."
    logged build/packages.log "${apt[@]}" update || true
    logged build/packages.log "${apt[@]}" install -y --no-install-recommends "${missing[@]}" \
        || fail "Packages could not be installed."
}
