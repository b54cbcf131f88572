# shellcheck shell=bash disable=SC2034
# Shared by ./run, ./test, .ci/run and scripts/lint: what Debian packages they need and how the
# program is built. To be sourced by bash from the top folder of the repository.

# What the build takes.
BUILD_PACKAGES=(cmake ninja-build g++ libcurl4-openssl-dev libxcb1-dev qt6-base-dev
    qt6-tools-dev qt6-l10n-tools)
# What the program takes to work: the authorities that vouch for secure servers, the encoder, the plugin
# for Wayland (the one for X11 comes with Qt's own library), a font, Qt's own texts in other languages.
PROGRAM_PACKAGES=(
    ca-certificates
    ffmpeg
    fonts-dejavu-core
    qt6-translations-l10n
    qt6-wayland
)
# A desktop that nobody sees, and what uses the window there.
DESKTOP_PACKAGES=(
    at-spi2-core
    dbus
    dbus-daemon
    gir1.2-atspi-2.0
    imagemagick
    openbox
    python3
    python3-gi
    xvfb
)
# What the tests take besides: fonts of other desktops than this one, a Wayland desktop.
TEST_PACKAGES=(
    fonts-cantarell
    fonts-liberation
    grim
    libglib2.0-bin
    libimage-exiftool-perl
    python3-dbusmock
    sway
    wtype
    xauth
    xdg-utils
    xdotool
)
# What makes the Debian package, and what looks it over and tries it out.
PACKAGE_PACKAGES=(dpkg-dev file gzip)
PACKAGE_TEST_PACKAGES=(lintian desktop-file-utils appstream man-db)
# What makes a bare system in a folder.
ROOT_PACKAGES=(debian-archive-keyring mmdebstrap)
# What the checks of .ci/run take besides.
CHECK_PACKAGES=(clang-14 clang-format-14 clang-tidy-14 libclang-rt-14-dev
    python3 shellcheck)

# The status of what could not be fetched and may do on another day.
UNAVAILABLE=75

# A bare system has no locale set, which Qt's tools complain about for every text.
[[ $(locale charmap 2>/dev/null) == UTF-8 ]] || export LC_ALL=C.UTF-8

say() { printf '\n==> %s\n' "$*"; }
fail() { printf '%s: %s\n' "$0" "$*" >&2; exit 1; }

# missing_packages NAME...: the ones that are not installed, a line each.
missing_packages() {
    local installed
    installed=$(dpkg-query -W -f='${db:Status-Status} ${Package}\n' "$@" 2>/dev/null || true)
    local name
    for name in "$@"; do
        grep -qxF "installed $name" <<<"$installed" || printf '%s\n' "$name"
    done
}

# require_packages NAME...: installs what is missing with apt, as root or through sudo. Asks nothing
# and needs no network when everything is there.
require_packages() {
    if ! command -v dpkg-query >/dev/null; then
        say "This is not a Debian system, so nothing is installed; needed are the likes of: $*"
        return
    fi
    local missing
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]} > 0)) || return 0
    say "Installing with apt: ${missing[*]}"
    local as_root=()
    if ((EUID != 0)); then
        command -v sudo >/dev/null ||
            fail "run this as root, or: apt-get install ${missing[*]}"
        as_root=(sudo)
        [[ -t 0 ]] || as_root+=(-n)
    fi
    local apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -o Dpkg::Use-Pty=0
        -o Acquire::Retries=3)
    mkdir -p build
    "${apt[@]}" update || say "The package lists could not be refreshed; trying with the old ones."
    "${apt[@]}" install -y --no-install-recommends "${missing[@]}" >build/apt.log || {
        tail -n 20 build/apt.log >&2
        say "apt could not install the packages named above" >&2
        exit "$UNAVAILABLE"
    }
}

# configure PRESET [CMAKE ARGUMENT...]: quiet unless it fails.
configure() {
    local preset=$1 log
    shift
    say "Configuring build/$preset"
    mkdir -p "build/$preset"
    log="build/$preset/configure.log"
    cmake --preset "$preset" "$@" >"$log" 2>&1 || { cat "$log" >&2; fail "cmake failed"; }
}

has_display() { [[ -n ${DISPLAY:-} || -n ${WAYLAND_DISPLAY:-} ]]; }

# samples_setting: the CMake argument for a folder with real movies, when one is named.
samples_setting() { printf '%s' "-DREELSHIFT_SAMPLES=${REELSHIFT_SAMPLES:-}"; }
