#!/usr/bin/env bash
# Builds the emulated router's kernel from Debian's source package: build_kernel.sh FOLDER DRIVER.c
# The folder keeps the source tree, so that a change of the driver costs a relink; FOLDER/vmlinux is the kernel.
set -euo pipefail
here=$(dirname "$(realpath "${BASH_SOURCE[0]}")")
driver=$(realpath -e "$2")
mkdir -p "$1"
cd "$1"
! cat "$driver" "$here/kernel.config" | cmp -s - kernel.built || exit 0

if ! [ -e linux/.unpacked ]; then
    rm -rf linux
    mkdir linux
    tar -xf /usr/src/linux-source-6.1.tar.xz -C linux --strip-components=1
    echo 'obj-y += lcd_sink.o' >> linux/drivers/misc/Makefile
    # The emulator's counted clock hangs on the processor's own counter, which nobody asks for its time when it wraps:
    # it stands still, and the board's timer alone keeps the time.
    sed -i '/^config MIPS_MALTA$/,/select CSRC_R4K/{/select C[A-Z]*_R4K/d}' linux/arch/mips/Kconfig
    sed -i 's/^\testimate_frequencies();/\tset_c0_cause(CAUSEF_DC);/' linux/arch/mips/mti-malta/malta-time.c
    touch linux/.unpacked
fi
cp "$driver" linux/drivers/misc/lcd_sink.c
cmp -s "$here/kernel.config" linux/.fragment || rm -f linux/.config

kernel_make() { nice make -s -C linux ARCH=mips CROSS_COMPILE=mips-linux-gnu- KBUILD_BUILD_TIMESTAMP=@0 "$@"; }
if ! [ -e linux/.config ]; then
    kernel_make tinyconfig
    (cd linux && scripts/kconfig/merge_config.sh -m .config "$here/kernel.config")
    kernel_make olddefconfig
    cp "$here/kernel.config" linux/.fragment
fi
kernel_make -j"$(nproc)" vmlinux
mips-linux-gnu-strip -o vmlinux linux/vmlinux
cat "$driver" "$here/kernel.config" > kernel.built
