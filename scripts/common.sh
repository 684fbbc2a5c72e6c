# What the scripts share. Sourced, after which the current directory is the project's.

set -euo pipefail
# A relative path is meant from where the user is.
if [ -n "${DIRECTFB2_SOURCES-}" ]; then
    DIRECTFB2_SOURCES=$(realpath -m "$DIRECTFB2_SOURCES")
    export DIRECTFB2_SOURCES
fi
cd "$(dirname "${BASH_SOURCE[0]}")/.."

toolPackages=(cmake g++ libboost-dev libboost-program-options-dev libevdev-dev ninja-build pkg-config)
buildPackages=("${toolPackages[@]}" libdirectfb-dev libdirectfb-extra)
buildOptions=()
variant= # with which the names of the presets end
themePackages=(libcairo2-dev libfontconfig-dev libpango1.0-dev libpng-dev librsvg2-dev libxcb1-dev libxml2-dev)
displayPackages=(imagemagick x11-utils xdotool xvfb)
browserPackages=(chromium chromium-driver python3-selenium)
skinPackages=(imagemagick librsvg2-bin)
testPackages=("${displayPackages[@]}" "${skinPackages[@]}" "${browserPackages[@]}" binutils clang dpkg-dev file
    fonts-dejavu-core libgmock-dev libgtest-dev mandoc pngquant)

# Whatever is started puts its own temporary files there too, so that nothing stays even of what is killed. Those of a
# script that a script starts lie in the first one's, not deeper: a browser's socket takes a path of 107 bytes at the most.
[ -d "${SCRIPTS_SCRATCH-}" ] || SCRIPTS_SCRATCH=
scratch=$(mktemp -d ${SCRIPTS_SCRATCH:+-p "$SCRIPTS_SCRATCH"})
export TMPDIR=$scratch TEST_TMPDIR=$scratch SCRIPTS_SCRATCH=${SCRIPTS_SCRATCH:-$scratch}
clean_up=() # what else is called at the end, before the children are stopped
finishing=
trap finish EXIT
trap 'stop 129' HUP
trap 'stop 130' INT
trap 'stop 143' TERM

# A second signal, such as that of a terminal that closes, must not end the clean-up half-way.
stop() {
    [ -z "$finishing" ] || return 0
    finishing=yes
    exit "$1"
}

finish() {
    local status=$? function
    finishing=yes
    trap '' HUP INT TERM
    for function in "${clean_up[@]}"; do
        "$function" || true
    done
    stop_children
    rm -rf "$scratch" || { sleep 1; rm -rf "$scratch"; } # what was killed may have been writing
    exit "$status"
}

say() {
    printf '== %s\n' "$*"
}

fail() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# descendants PID: its children and theirs, whichever thread started them, but for the subshell that asks.
descendants() {
    local child children
    children=$(cat "/proc/$1/task"/*/children)
    for child in $children; do
        [ "$child" -ne "$BASHPID" ] || continue
        echo "$child"
        descendants "$child"
    done
}

# Grandchildren are told as well: a subshell or a timeout that is stopped leaves behind what it runs. Each of them may
# have something to clean up, and nothing is removed under their hands.
# shellcheck disable=SC2086 # one number a word
stop_children() {
    local signal=TERM started known="" end=$((SECONDS + 5))
    while :; do
        started=$(descendants $$ 2>/dev/null)
        known=$(running $known $started)
        [ -n "$known" ] || break
        [ "$SECONDS" -lt "$end" ] || signal=KILL
        kill -s $signal $known 2>/dev/null || true
        [ $signal = TERM ] || break
        sleep 0.05
    done
    wait
}

# running PID...: those of them that have not ended.
running() {
    local process state
    for process in "$@"; do
        read -r state 2>/dev/null <"/proc/$process/stat" || continue
        [[ ${state##*) } = [ZX]* ]] || echo "$process"
    done | sort -nu
}

# attend COMMAND...: runs it so that a signal to this script is heard at once, not only when the command has ended.
attend() {
    "$@" <&0 &
    wait $!
}

# keep_log FILE COMMAND...: what it says is seen, and stays there.
keep_log() {
    "${@:2}" | tee "$1"
}

# skip WHY: ends a test that cannot run here. CTest repeats the line at its end.
skip() {
    say "SKIPPED: $(basename "$0"): $*" | tee -a "${SKIPPED_TESTS:-/dev/null}"
    exit 77
}

# need_tools TOOL...: for a test, which ends as skipped where one of these is missing.
need_tools() {
    local tool missing=()
    for tool in "$@"; do
        command -v "$tool" >/dev/null || missing+=("$tool")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    skip "missing here: ${missing[*]}"
}

# Installs those of the named Debian packages that are missing.
# shellcheck disable=SC2086,SC2206 # one package a word
need_packages() {
    local missing
    command -v dpkg-query >/dev/null || { say "Not Debian: this needs what corresponds to" "$@"; return 0; }
    missing=$(comm -23 <(printf '%s\n' "$@" | sort -u) \
        <(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null | sed -n 's/^installed //p' | sort))
    [ -n "$missing" ] || return 0
    command -v apt-get >/dev/null || fail "no apt-get here; install what corresponds to:" $missing
    update_packages $missing
    know_packages $missing
    local install=(apt-get install --no-install-recommends $missing)
    say "Installing ($("${install[@]}" -qq --print-uris | awk '{ sum += $3 } END { print int(sum / 1e6) + 1 }') MB to fetch)" $missing
    if [ -t 1 ]; then
        as_root "${install[@]}" -y || fail "the packages cannot be installed"
    else
        as_root "${install[@]}" -y >"$scratch/install.log" 2>&1 ||
            { cat "$scratch/install.log" >&2; fail "the packages cannot be installed"; }
    fi
}

as_root() {
    local sudo=(sudo)
    [ "$(id -u)" -ne 0 ] || sudo=()
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive "$@"
}

# update_packages PACKAGE...: has apt-get learn what there is now. Where it cannot, these must be there already.
update_packages() {
    [ "$(id -u)" -eq 0 ] || command -v sudo >/dev/null ||
        fail "neither root nor sudo, so that these must be installed first:" "$@"
    as_root apt-get -qq update || fail "the package lists cannot be updated"
}

# Ends where there is a package that this system does not have, or has too old.
know_packages() {
    local unknown
    [[ " $* " != *" cmake "* ]] || know_cmake "$(apt-cache policy cmake | sed -n 's/ *Candidate: //p')"
    unknown=$(comm -23 <(printf '%s\n' "${@%:*}" | sort) <(apt-cache pkgnames | sort))
    case $unknown in
    *libdirectfb-*) fail "needs DirectFB 1.7, which Debian 12 has and this system has not:" \
        "scripts/fresh scripts/$(basename "$0") runs it in a root of Debian 12" ;;
    ?*) fail "this system has no package" "${unknown//$'\n'/ }" ;;
    esac
}

know_cmake() {
    sort -CV <<<"3.20"$'\n'"$1" ||
        fail "the scripts need CMake 3.20, and this system has $1: README.md says how to build by hand"
}

# build PRESET [CMake options]: leaves the result in build/PRESET.
build() {
    local cache=build/$1/CMakeCache.txt
    know_cmake "$(cmake --version | sed -n '1s/[^0-9]*//p')"
    [ ! -e "$cache" ] || [ "$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$cache")" -ef . ] ||
        fail "build/ is that of another place: rm -r build"
    [[ $1 = *-directfb2 ]] || ! pkg-config --atleast-version=2 directfb 2>/dev/null ||
        fail "PKG_CONFIG_PATH leads to DirectFB2, which is asked for with --directfb2 or test-directfb2: unset it"
    # CMake does not look again for what it has found.
    [ ! -e "$cache" ] || grep -qxF "DIRECTFB_LIBDIR:INTERNAL=$(pkg-config --variable=libdir directfb)" "$cache" ||
        rm "$cache"
    say "Building ($1)"
    cmake --preset "$@" "${buildOptions[@]}" >"$scratch/configure.log" ||
        { cat "$scratch/configure.log" >&2; fail "CMake failed"; }
    attend keep_log "$scratch/build.log" cmake --build --preset "$1" || {
        sed -n '/^FAILED: /,/^\[/p' "$scratch/build.log" >&2 # the other steps go on for a while after it
        fail "the build failed"
    }
}

# run_tests PRESET... [CTEST'S OPTIONS]: the tests of these builds in one run, so that none waits for the slowest of
# another build. Each build must have tests, and none may be skipped.
run_tests() {
    local builds=()
    while [[ ${1--} != -* ]]; do
        [[ $(ctest --preset "$1" -N) =~ "Total Tests: "[1-9] ]] || fail "the build $1 has no tests"
        builds+=("$1")
        shift
    done
    say "Testing (${builds[*]})"
    mkdir -p build/tests
    printf 'subdirs("%s")\n' "${builds[@]/#/$PWD/build/}" >build/tests/CTestTestfile.cmake
    # One more than there are processors, since a virtual device waits much of its time.
    attend keep_log "$scratch/tests.log" ctest --test-dir build/tests --parallel $(($(nproc) + 1)) \
        --output-on-failure "$@" || fail "a test failed"
    if grep -q '\*\*\*Skipped' "$scratch/tests.log"; then
        grep '^== SKIPPED' build/tests/Testing/Temporary/LastTest.log >&2 || true
        fail "no test may be skipped"
    fi
}

# choose_directfb PREFIX: from now on the DirectFB2 that is installed there is what is built against. Without a prefix it
# is DirectFB 1.7, or on a system without that DirectFB2, which is built first unless it is there.
choose_directfb() {
    local prefix=$1
    if [ -z "$prefix" ]; then
        ! has_directfb || return 0
        prefix=$PWD/build/directfb2
        say "This system has no DirectFB 1.7: DirectFB2, in build/directfb2, takes its place"
        attend scripts/directfb2 "$prefix"
    fi
    use_directfb2 "$prefix"
}

# Whether DirectFB 1.7 is installed or there are packages of it. A system that has been found without them once is not
# asked to look for new ones.
has_directfb() {
    ! pkg-config --exists 'directfb >= 1.7' 'directfb < 2' 2>/dev/null || return 0
    command -v apt-get >/dev/null || return 1
    ! knows_directfb || return 0
    [ ! -e build/directfb2/built-by ] || return 1
    update_packages "${buildPackages[@]}"
    knows_directfb
}

knows_directfb() {
    [ -n "$(apt-cache pkgnames libdirectfb-dev)" ]
}

# use_directfb2 PREFIX: from now on DirectFB2, which is installed there, is what is built against.
use_directfb2() {
    local folder found=
    command -v pkg-config >/dev/null || need_packages pkg-config
    for folder in "$1"/lib/pkgconfig "$1"/lib/*/pkgconfig "$1"/lib64/pkgconfig; do
        [ ! -e "$folder/directfb.pc" ] || found=$(realpath "$folder")
    done
    [ -n "$found" ] || fail "no DirectFB2 is installed in $1: docs/device-guide.md says how to do that"
    export PKG_CONFIG_PATH=$found
    pkg-config --atleast-version=2 directfb ||
        fail "in $1 is DirectFB $(pkg-config --modversion directfb), not DirectFB2"
    variant=-directfb2
    buildPackages=("${toolPackages[@]}")
    buildOptions=(-DCMAKE_INSTALL_RPATH="$(pkg-config --variable=libdir directfb)")
}

# with_readme COMMAND...: gives the command each of the two of README.md that do all the set-up, word for word.
with_readme() {
    local line lines
    mapfile -t lines < <(sed -n '/^## Try it/,/^## /{ s/ *#.*//; s|^    scripts/|scripts/|p }' README.md)
    [ ${#lines[@]} -eq 2 ] || fail "README.md has no longer two commands under \"Try it\""
    for line in "${lines[@]}"; do
        # shellcheck disable=SC2086 # a command and its arguments
        "$@" $line
    done
}

# start_display WIDTHxHEIGHT: an X server of our own on a free display number. DirectFB does not open on one with GLX,
# and one that resets when its last client goes may do so while DirectFB comes.
start_display() {
    Xvfb -screen 0 "${1}x24" -noreset -displayfd 3 -extension GLX -nolisten tcp 3>"$scratch/display" \
        2>"$scratch/display.log" &
    until_true test -s "$scratch/display" || { cat "$scratch/display.log" >&2; fail "the X server does not start"; }
    DISPLAY=:$(cat "$scratch/display")
    export DISPLAY
}

# start_menu PROGRAM WIDTHxHEIGHT THEME: the menu in a window of that size, in the background. What DirectFB says goes
# to $scratch/menu.log, and what it may drop beside itself when it is killed, to $scratch.
start_menu() {
    (cd "$scratch" && DFBARGS=system=x11,mode=$2,quiet,no-cursor exec "$1" -c "$3" 2>menu.log) &
    menu=$!
}

# until_true COMMAND...: waits for the command to succeed, for half a minute at the most, and while the menu, if one was
# started, is there.
until_true() {
    local end=$((SECONDS + 30))
    until "$@"; do
        [ "$SECONDS" -lt "$end" ] || return 1
        [ -z "${menu-}" ] || kill -0 "$menu" 2>/dev/null || return 1
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

# in_parts FUNCTION FILE: has the function read the file in as many parts as there are processors, side by side, each
# with a copy of the current folder for its own, and prints what they print, in the order of the file.
in_parts() {
    local part parts jobs=()
    parts=$(mktemp -d "$scratch/parts.XXXXXX")
    split -n "l/$(nproc)" "$2" "$parts/"
    for part in "$parts"/*; do
        mkdir "$part.folder"
        find . -mindepth 1 -maxdepth 1 ! -name 'parts.*' -exec cp -a -t "$part.folder" {} +
        (cd "$part.folder" && "$1" <"$part" >"$part.printed" 2>&1) &
        jobs+=($!)
    done
    for part in "${jobs[@]}"; do
        wait "$part" || fail "a part of $2 was not run to its end"
    done
    cat "$parts"/*.printed
}

# draw_skins FOLDER: the example theme's skins from their drawing, in true colour.
draw_skins() {
    rsvg-convert -b black theme/menu.svg | convert - -alpha off -strip "PNG24:$1/normal.png"
    sed 's/<svg /&class="pressed" /' theme/menu.svg | rsvg-convert -b black |
        convert - -alpha off -strip "PNG24:$1/pressed.png"
}

# touch_anew X Y PICTURE: slides off whatever is held, touches there, and tells whether the screen becomes that picture.
# The menu drops a touch that comes while it starts. It waits for less than the three seconds that make a long press of
# the touch when the next one slides off.
touch_anew() {
    local end=$((SECONDS + 2))
    touch_move 0 0
    touch_up
    touch_down "$1" "$2"
    until screen_shows "$3"; do
        [ "$SECONDS" -lt "$end" ] || return 1
    done
}
