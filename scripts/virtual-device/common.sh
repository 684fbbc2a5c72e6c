# A device in QEMU, for scripts/device and the tests on one. Sourced, after scripts/common.sh.
#
# Its init is busybox's, its root is read-only, and a shell on its second serial port does what `guest` is told.
# What it says while it runs stays in build/device, in a file named after the script.

devicePackages=(cpio qemu-system-x86 xz-utils)
device=$PWD/build/device
console=$device/$(basename "$0").log
failures=0
modules=(bochs virtio_pci virtio-gpu evdev uinput uhid hid-multitouch hid-generic usbhid uhci-hcd vgem)

# Debian's kernel, the modules and busybox, out of their packages: nothing of it is to run on this machine.
fetch_kernel() {
    ! grep -qsxF "${modules[*]}" "$device/kernel/complete" || return 0
    [ "$(dpkg --print-architecture 2>/dev/null)" = amd64 ] || fail "the virtual device needs Debian's amd64 packages"
    say "Fetching Debian's kernel for the virtual device"
    local kernel version
    kernel=$(apt-cache depends linux-image-amd64 | sed -n 's/.*Depends: \(linux-image-.*\)/\1/p')
    mkdir "$scratch/kernel"
    (cd "$scratch/kernel" && apt-get -qq download "$kernel" busybox-static 2>download.log) ||
        { cat "$scratch/kernel/download.log" >&2; fail "the kernel cannot be fetched; perhaps after apt-get update"; }
    for package in "$scratch"/kernel/*.deb; do
        dpkg -x "$package" "$scratch/kernel"
    done
    cp -rl "$scratch/kernel/usr/." "$scratch/kernel" # where Debian 13 has all of it
    version=${kernel#linux-image-}
    "$scratch/kernel/bin/busybox" depmod -b "$scratch/kernel" "$version"
    rm -rf "$device/kernel"
    mkdir -p "$device/kernel/lib/modules/$version"
    cp "$scratch/kernel/boot/vmlinuz-$version" "$device/kernel/vmlinuz"
    cp "$scratch/kernel/bin/busybox" "$device/kernel"
    (cd "$scratch/kernel/lib/modules/$version" || exit
        for module in "${modules[@]}"; do
            grep -E "/$module\.ko(\.xz)?:" modules.dep || grep -q "/$module\.ko" modules.builtin ||
                fail "the kernel has no module $module"
        done | tr -d : | xargs -n1 | sort -u | xargs cp --parents -t "$device/kernel/lib/modules/$version")
    find "$device/kernel" -name '*.xz' -exec xz -d {} +
    "$device/kernel/busybox" depmod -b "$device/kernel" "$version"
    echo "${modules[*]}" >"$device/kernel/complete"
}

# make_device BUILD: the root file system, in $scratch/root, from what that build installs. With DirectFB2 it is that of
# a device without a frame buffer.
make_device() {
    mkdir -p "$device"
    exec {lock}>"$device/lock" # one of several tests fetches it, and the others wait
    flock "$lock"
    fetch_kernel
    exec {lock}>&-
    say "Making the virtual device"
    local root=$scratch/root libraries directfb system=fbdev settings=examples/directfbrc folder=/etc
    directfb2=
    if [[ $(cached "$1" DIRECTFB_VERSION) != 1.* ]]; then
        directfb2=yes
        system=drmkms
        settings=examples/directfbrc-directfb2
        folder=$(cached "$1" DIRECTFB_PREFIX)/etc
        [ "$folder" != /usr/etc ] || folder=/etc
    fi
    mkdir -p "$root"/{bin,dev,etc/init.d,etc/pebbleton/actions,proc,run,sys,usr/local/bin} "$scratch/pictures"
    DESTDIR=$root cmake --install "$1" --prefix /usr --component pebbleton >"$scratch/install.log" || fail "cannot be installed"
    rm -r "${root:?}/usr/share"
    cp "$1/scripts/virtual-device/virtual-panel" "$root/usr/bin"
    cp -r "$device/kernel/lib" "$root"
    cp "$device/kernel/busybox" "$root/bin"
    for applet in $("$root/bin/busybox" --list); do
        [ "$applet" = busybox ] || ln -s busybox "$root/bin/$applet"
    done
    ln -s bin/busybox "$root/init"
    libraries=$(cached "$1" DIRECTFB_LIBDIR)
    directfb=$(PKG_CONFIG_PATH=$libraries/pkgconfig pkg-config --variable=moduledir directfb-internal) ||
        fail "where are DirectFB's modules?"
    find "$directfb"/{wm,inputdrivers,systems/libdirectfb_$system.so,interfaces/IDirectFBImageProvider} -name '*.so' \
        -exec cp --parents -t "$root" {} +
    find "$root" -type f \( -path '*/usr/bin/*' -o -name '*.so' \) -exec ldd {} + |
        sed -n 's|.*\s\(/[^ :]*\) (.*|\1|p' | sort -u | xargs cp --parents -Lt "$root"
    install -D "$settings" -T "$root$folder/directfbrc.pebbleton"
    cp examples/pebbleton-{launcher,sleep} "$root/usr/local/bin"
    cp scripts/virtual-device/{rcS,shell} "$root/etc/init.d"
    echo "${modules[@]%vgem}" >"$root/etc/modules"
    printf '%s\n' ::sysinit:/etc/init.d/rcS ttyS1::once:/etc/init.d/shell >"$root/etc/inittab"
}

# cached BUILD NAME: what CMake found out for that build.
cached() {
    sed -n "s/^$2:[A-Z]*=//p" "$1/CMakeCache.txt"
}

# The device guide's line for busybox's init, which starts the launcher. Each of the named codes gets an action, which
# says on the console that it ran.
start_launcher_at_boot() {
    local line code
    line=$(sed -n '/^### With busybox init/,/^#* /s/^    \(tty.*\)/\1/p' docs/device-guide.md)
    [ -n "$line" ] || fail "the device guide has no line for busybox's init"
    printf '%s\n' "$line" >>"$scratch/root/etc/inittab"
    for code in "$@"; do
        install scripts/virtual-device/action "$scratch/root/etc/pebbleton/actions/$code"
    done
}

# add_picture NAME CONVERT'S ARGUMENTS...: what the screen is to show.
add_picture() {
    convert "${@:2}" -alpha off -depth 8 "PPM:$scratch/pictures/$1"
}

# start_device SIZE [QEMU's options]: boots it with a screen of that size, and waits for its shell.
start_device() {
    local size=$1 screen=(-device VGA) boot=video=$1
    if [ -n "$directfb2" ]; then
        screen=(-device "virtio-gpu-pci,xres=${size%x*},yres=${size#*x}")
        boot=drm_kms_helper.fbdev_emulation=0
    fi
    (cd "$scratch/root" && find . | cpio --quiet -o -H newc -R 0:0) >"$scratch/initramfs"
    mkfifo "$scratch"/{control,qmp}.{in,out}
    qemu-system-x86_64 -nodefaults -no-user-config -no-reboot -accel tcg,thread=multi -m 512 -usb \
        -kernel "$device/kernel/vmlinuz" -initrd "$scratch/initramfs" -append "console=ttyS0 panic=-1 $boot" \
        "${screen[@]}" -serial "file:$console" \
        -chardev "pipe,id=control,path=$scratch/control" -serial chardev:control \
        -chardev "pipe,id=qmp,path=$scratch/qmp" -mon chardev=qmp,mode=control "${@:2}" &
    qemu=$!
    exec {control}<>"$scratch/control.in" {answer}<>"$scratch/control.out" {qmp}<>"$scratch/qmp.in" {event}<>"$scratch/qmp.out"
    tell_qemu '"qmp_capabilities"'
    await_answer
}

# tell_qemu COMMAND: in QEMU's own protocol.
tell_qemu() {
    local line
    printf '{"execute":%s}\n' "$1" >&"$qmp"
    while read -r -t 90 -u "$event" line; do
        case $line in
        *'"return"'*) return 0 ;;
        *'"error"'*) fail "QEMU: $line" ;;
        esac
    done
    fail "QEMU does not answer"
}

# guest COMMAND...: runs that in the device's shell, prints what it prints and ends with its status. What the shell asks
# meanwhile, it is told.
guest() {
    printf '%s\n' "${*//$'\n'/ }" >&"$control"
    await_answer "$@"
}

await_answer() {
    local line
    while read -r -t 300 -u "$answer" line; do
        case $line in
        =*) return "${line#=}" ;;
        \?*)
            # shellcheck disable=SC2086 # a command and its arguments
            { device_${line#\?} && echo yes || echo no; } >&"$control" ;;
        '') ;;
        *) printf '%s\n' "$line" ;;
        esac
    done
    fail "the device does not answer: $*"
}

# device_shows PICTURE: whether the screen does, pixel for pixel.
device_shows() {
    look && cmp -s "$scratch/screen" "$scratch/pictures/$1"
}

# device_has PICTURE PIXEL COUNT: whether so many pixels of the screen, from that one on, are those of the picture.
device_has() {
    local header
    header=$(head -n 3 "$scratch/pictures/$1" | wc -c)
    look && cmp -s -i $((header + $2 * 3)) -n $(($3 * 3)) "$scratch/screen" "$scratch/pictures/$1"
}

look() {
    tell_qemu "\"screendump\",\"arguments\":{\"filename\":\"$scratch/screen\"}"
}

stop_device() {
    tell_qemu '"quit"'
    wait "$qemu"
}

# picture NAME: keeps what the screen shows.
picture() {
    tell_qemu "\"screendump\",\"arguments\":{\"filename\":\"$device/$1.png\",\"format\":\"png\"}"
    say "Picture: $device/$1.png"
}

# start_example_device BUILD: for a test, with the example theme, whose pictures are normal and pressed, and with the
# launcher, which has an action for the button 3.
start_example_device() {
    need_tools apt-get cpio convert dpkg flock qemu-system-x86_64 xz
    make_device "$1"
    add_picture normal theme/normal.png
    add_picture pressed theme/pressed.png
    start_launcher_at_boot 3
    start_device 800x480 -display none
}

# told WHAT COMMAND...: has the device do that, and keeps the evidence if it fails.
told() {
    guest "${@:2}" >"$scratch/said" && say "$1" && return
    picture "$(basename "$0")-failure-$((failures += 1))"
    say "FAILED: $1" "(status $(guest 'echo $ended'))"
    cat "$scratch/said"
    guest 'tail -n 20 said; logread | tail -n 12; kill -9 $menu; killall -9 pebbleton' || true
}

# stories: each line that it reads is one menu: what is tried, the status that the menu must end with, the adapter's
# options, the panel, the steps. "=" is the panel that there was, "-" is none. A step is a report of the panel as
# virtual-panel reads it, or a command.
stories() {
    local IFS='|' what status options panel steps
    while read -r what status options panel steps; do
        unset IFS
        [ "$panel" = = ] || guest unplug
        [[ $panel = [=-] ]] || guest "plug $panel"
        told "$what" "start pebbleton-touch $options -- pebbleton && steps '${steps//; /\' \'}' && ends $status"
        IFS='|'
    done
}

# end_stories: fails if one of them did.
end_stories() {
    stop_device
    [ "$failures" -eq 0 ] || fail "$failures of the above failed"
}
