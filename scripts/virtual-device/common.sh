# A device in QEMU, for scripts/device and tests/device. Sourced, after scripts/common.sh.
#
# Its init is busybox's, its root is read-only, and a shell on its second serial port does what `guest` is told.
# What it says while it runs stays in build/device/console.log.

devicePackages=(cpio qemu-system-x86)
device=$PWD/build/device
modules=(bochs evdev uinput uhid hid-multitouch hid-generic usbhid uhci-hcd)

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
    version=${kernel#linux-image-}
    "$scratch/kernel/bin/busybox" depmod -b "$scratch/kernel" "$version"
    rm -rf "$device/kernel"
    mkdir -p "$device/kernel/lib/modules/$version"
    cp "$scratch/kernel/boot/vmlinuz-$version" "$device/kernel/vmlinuz"
    cp "$scratch/kernel/bin/busybox" "$device/kernel"
    (cd "$scratch/kernel/lib/modules/$version"
        for module in "${modules[@]}"; do
            grep -E "/$module.ko:" modules.dep
        done | tr -d : | xargs -n1 | sort -u | xargs cp --parents -t "$device/kernel/lib/modules/$version")
    "$device/kernel/busybox" depmod -b "$device/kernel" "$version"
    echo "${modules[*]}" >"$device/kernel/complete"
}

# make_device BUILD: the root file system, in $scratch/root, from what that build installs.
make_device() {
    fetch_kernel
    say "Making the virtual device"
    local root=$scratch/root directfb
    mkdir -p "$root"/{bin,dev,etc/init.d,etc/pebbleton/actions,pictures,proc,run,sys,usr/local/bin}
    DESTDIR=$root cmake --install "$1" --prefix /usr >"$scratch/install.log" || fail "cannot be installed"
    rm -r "$root/usr/share"
    cp "$1/scripts/virtual-device/virtual-panel" "$root/usr/bin"
    cp -r "$device/kernel/lib" "$root"
    cp "$device/kernel/busybox" "$root/bin"
    for applet in $("$root/bin/busybox" --list); do
        [ "$applet" = busybox ] || ln -s busybox "$root/bin/$applet"
    done
    ln -s bin/busybox "$root/init"
    directfb=$(pkg-config --variable=moduledir directfb-internal) || fail "where are DirectFB's modules?"
    find "$directfb"/{wm,inputdrivers,systems/libdirectfb_fbdev.so,interfaces/IDirectFBImageProvider} -name '*.so' \
        -exec cp --parents -t "$root" {} +
    find "$root/usr" -type f \( -path '*/bin/*' -o -name '*.so' \) -exec ldd {} + | sed -n 's|.*\s\(/[^ :]*\) (.*|\1|p' | sort -u |
        xargs cp --parents -Lt "$root"
    cp examples/directfbrc "$root/etc"
    cp examples/pebbleton-launcher "$root/usr/local/bin"
    cp scripts/virtual-device/{rcS,shell} "$root/etc/init.d"
    echo "${modules[@]}" >"$root/etc/modules"
    printf '%s\n' ::sysinit:/etc/init.d/rcS ttyS1::once:/etc/init.d/shell >"$root/etc/inittab"
}

# The device guide's line for busybox's init, which starts the launcher. Each of the named codes gets an action, which says
# on the console that it ran.
start_launcher_at_boot() {
    local line code
    line=$(sed -n '/^### With busybox init/,/^#* /s/^    \(tty.*\)/\1/p' docs/device-guide.md)
    [ -n "$line" ] || fail "the device guide has no line for busybox's init"
    printf '%s\n' "$line" >>"$scratch/root/etc/inittab"
    for code in "$@"; do
        install scripts/virtual-device/action "$scratch/root/etc/pebbleton/actions/$code"
    done
}

# add_picture NAME CONVERT'S ARGUMENTS...: what the screen is to show, as the frame buffer holds it.
add_picture() {
    convert "${@:2}" -depth 8 "BGRA:$scratch/root/pictures/$1"
}

# start_device SIZE [QEMU's options]: boots it with a frame buffer of that size, and waits for its shell.
start_device() {
    local size=$1
    (cd "$scratch/root" && find . | cpio --quiet -o -H newc -R 0:0) >"$scratch/initramfs"
    mkfifo "$scratch"/{control,qmp}.{in,out}
    qemu-system-x86_64 -nodefaults -no-user-config -no-reboot -accel tcg,thread=multi -m 512 -usb \
        -kernel "$device/kernel/vmlinuz" -initrd "$scratch/initramfs" -append "console=ttyS0 panic=-1 video=$size" \
        -device VGA -serial "file:$device/console.log" -chardev "pipe,id=control,path=$scratch/control" -serial chardev:control \
        -chardev "pipe,id=qmp,path=$scratch/qmp" -mon chardev=qmp,mode=control "${@:2}" &
    qemu=$!
    exec {control}<>"$scratch/control.in" {answer}<>"$scratch/control.out" {qmp}<>"$scratch/qmp.in" {event}<>"$scratch/qmp.out"
    tell_qemu '"qmp_capabilities"'
    await_answer
}

# tell_qemu COMMAND: in QEMU's own protocol.
tell_qemu() {
    local line
    printf '{"execute":%s}\n' "$1" >&$qmp
    while read -r -t 90 -u $event line; do
        case $line in
        *'"return"'*) return 0 ;;
        *'"error"'*) fail "QEMU: $line" ;;
        esac
    done
    fail "QEMU does not answer"
}

# guest COMMAND...: runs that in the device's shell, prints what it prints and ends with its status.
guest() {
    printf '%s\n' "${*//$'\n'/ }" >&$control
    await_answer "$@"
}

await_answer() {
    local line
    while read -r -t 90 -u $answer line; do
        case $line in
        =*) return "${line#=}" ;;
        '') ;;
        *) printf '%s\n' "$line" ;;
        esac
    done
    fail "the device does not answer: $*"
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
