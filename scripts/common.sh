# What the scripts share. Sourced, after which the current directory is the project's.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

buildPackages=(cmake g++ libboost-dev libboost-program-options-dev libdirectfb-dev libdirectfb-extra ninja-build pkg-config)
displayPackages=(imagemagick x11-utils xdotool xvfb)

scratch=$(mktemp -d)
trap 'stop_children; rm -rf "$scratch"' EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

say() {
    printf '== %s\n' "$*"
}

fail() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

stop_children() {
    local children
    children=$(jobs -p)
    [ -z "$children" ] || kill $children 2>/dev/null || true
    wait
}

# Installs those of the named Debian packages that are missing.
need_packages() {
    local missing
    missing=$(comm -23 <(printf '%s\n' "$@" | sort) \
        <(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null | sed -n 's/^installed //p' | sort))
    [ -n "$missing" ] || return 0
    say "Installing" $missing
    command -v apt-get >/dev/null || fail "no apt-get here; install what corresponds to:" $missing
    local asRoot=(env DEBIAN_FRONTEND=noninteractive)
    [ "$(id -u)" -eq 0 ] || asRoot=(sudo "${asRoot[@]}")
    "${asRoot[@]}" apt-get -qq update || fail "the package lists cannot be updated"
    "${asRoot[@]}" apt-get -qq install -y --no-install-recommends $missing >"$scratch/install.log" ||
        { cat "$scratch/install.log" >&2; fail "the packages cannot be installed"; }
}

# build PRESET [CMake options]: leaves the result in build/PRESET.
build() {
    say "Building ($1)"
    cmake --preset "$@" >"$scratch/configure.log" || { cat "$scratch/configure.log" >&2; fail "CMake failed"; }
    cmake --build --preset "$1" || fail "the build failed"
}

# start_display WIDTHxHEIGHT: an X server of our own on a free display number. DirectFB does not open on one with GLX.
start_display() {
    Xvfb -displayfd 3 -screen 0 "${1}x24" -extension GLX -nolisten tcp \
        3>"$scratch/display" 2>"$scratch/display.log" &
    until_true "the X server does not start: $(cat "$scratch/display.log")" test -s "$scratch/display"
    DISPLAY=:$(cat "$scratch/display")
    export DISPLAY
}

# until_true COMPLAINT COMMAND...: waits for the command to succeed, for ten seconds at the most.
until_true() {
    local complaint=$1 tries=0
    shift
    until "$@"; do
        [ $((tries += 1)) -le 200 ] || fail "$complaint"
        sleep 0.05
    done
}

# screen_shows PICTURE: whether the screen is that picture, pixel for pixel. The screen stays in $scratch/screen.png.
screen_shows() {
    import -silent -window root "$scratch/screen.png"
    [ "$(compare -metric AE "$scratch/screen.png" "$1" null: 2>&1)" = 0 ]
}

# touch_down X Y, touch_move X Y, touch_up: one finger on the screen.
touch_down() {
    xdotool mousemove "$1" "$2" mousedown 1
}

touch_move() {
    xdotool mousemove "$1" "$2"
}

touch_up() {
    xdotool mouseup 1
}
