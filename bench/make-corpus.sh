#!/usr/bin/env bash
# Creates the six reference sets for measuring how files are packed, only from files of Debian 12 packages, and beside
# each set <set>.cat, its files one after the other. All times are the same, so that two runs give the same bytes.
# usage: make-corpus.sh DESTINATION   (needs: apt-get download, dpkg-deb, gzip)
set -euo pipefail
export LC_ALL=C
destination=$(realpath -m "${1:?usage: make-corpus.sh DESTINATION}")
packages=(bochsbios seabios vgabios loadlin grub-legacy grub-pc-bin syslinux-common elks-libc nsis-common
    libz-mingw-w64 memtest86+ console-data pci.ids ipxe)

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
chmod 755 "$work" # apt's own user reads and writes here
cd "$work"
apt-get -qq download "${packages[@]}" >/dev/null
mkdir x
for archive in *.deb; do dpkg-deb -x "$archive" "x/${archive%%_*}"; done
from=$work/x
nsis=$from/nsis-common/usr/share/nsis

rm -rf "$destination"
mkdir -p "$destination"/{s1_boot16,s2_pe32,s3_drv32,s4_text,s5_packed,s6_floppy/{BIN,DRV,LIB,NET}}

# 16-bit real-mode code: BIOS images, boot loaders, a DOS program, 16-bit object libraries
set1=$destination/s1_boot16
cp "$from"/bochsbios/usr/share/bochs/BIOS-bochs-{latest,legacy} "$set1"
cp "$from"/seabios/usr/share/seabios/{bios,vgabios-stdvga,vgabios-cirrus}.bin "$set1"
cp "$from"/vgabios/usr/share/vgabios/vgabios{,.cirrus}.bin "$set1"
gzip -dc "$from/loadlin/usr/lib/loadlin/loadlin.exe.gz" >"$set1/loadlin.exe"
for file in "$from"/grub-legacy/usr/lib/grub/x86_64-pc/*; do
    [ "${file##*/}" = stage2_eltorito ] || cp "$file" "$set1/gl_${file##*/}"
done
for file in "$from"/grub-pc-bin/usr/lib/grub/i386-pc/*.img; do cp "$file" "$set1/g2_${file##*/}"; done
cp "$from"/syslinux-common/usr/lib/syslinux/{memdisk,mbr/mbr.bin,mbr/gptmbr.bin} "$set1"
cp "$from"/elks-libc/usr/lib/bcc/{libc,libc_f,libdos,libc_s}.a "$set1"

# 32-bit Windows programs, libraries, icons, pictures
set2=$destination/s2_pe32
for name in zlib-x86-ansi bzip2-x86-unicode lzma_solid-x86-ansi; do cp "$nsis/Stubs/$name" "$set2/$name.exe"; done
cp "$nsis"/Plugins/x86-ansi/*.dll "$nsis"/Contrib/UIs/{default,modern,sdbarker_tiny}.exe "$set2"
cp "$nsis/Bin/RegTool-x86.bin" "$set2/regtool.exe"
cp "$from/libz-mingw-w64/usr/i686-w64-mingw32/lib/zlib1.dll" "$set2"
cp "$nsis"/Contrib/Graphics/Icons/{nsis3-install,nsis3-uninstall,modern-install,orange-install}.ico "$set2"
cp "$nsis"/Contrib/Graphics/Wizard/{nsis3-grey,orange}.bmp "$set2"

# many small driver-like modules and one flat 32-bit image
set3=$destination/s3_drv32
cp "$from"/grub-pc-bin/usr/lib/grub/i386-pc/*.mod "$from"/syslinux-common/usr/lib/syslinux/modules/bios/*.c32 "$set3"
cp "$from/memtest86+/boot/memtest86+ia32.bin" "$set3/mtest32.bin"

# text: key maps, scripts with CR LF, headers, an id table
set4=$destination/s4_text
while IFS= read -r file; do
    folder=$(basename "$(dirname "$file")")
    name=${file##*/}
    gzip -dc "$file" >"$set4/${folder}_${name%.gz}"
done < <(find "$from/console-data/usr/share/keymaps/i386" -name '*.kmap.gz' | sort)
for file in "$nsis"/Include/*.nsh; do
    name=${file##*/}
    sed 's/\r$//; s/$/\r/' "$file" >"$set4/${name%.nsh}.bat"
done
for file in "$nsis/Contrib/Modern UI 2"/*.nsh; do cp "$file" "$set4/mui_${file##*/}"; done
cp "$from"/elks-libc/usr/lib/bcc/include/*.h "$set4"
head -c 524288 "$from/pci.ids/usr/share/misc/pci.ids" >"$set4/pci.ids"
for name in grub-install update-grub; do cp "$from/grub-legacy/usr/sbin/$name" "$set4/$name.sh"; done

# already compressed data
set5=$destination/s5_packed
cp "$from/ipxe/boot/ipxe.lkrn" "$set5/ipxe.krn"
cp "$from/ipxe/usr/lib/ipxe/undionly.kpxe" "$set5/undionly.kpx"
cp "$from"/console-data/usr/share/consolefonts/lat*.psf.gz "$set5"

# a 40-file tree with 8.3 names that fits one 1.44 MB floppy
set6=$destination/s6_floppy
cp "$set1/BIOS-bochs-latest" "$set6/IO.SYS"
cp "$set1/gl_stage2" "$set6/COMMAND.COM"
cp "$set1/gptmbr.bin" "$set6/MSDOS.SYS"
cp "$set4/FileFunc.bat" "$set6/AUTOEXEC.BAT"
cp "$set4/LogicLib.bat" "$set6/CONFIG.SYS"
cp "$set1/loadlin.exe" "$set6/LOADLIN.EXE"
numbered() { # numbered TARGET-PREFIX TARGET-EXTENSION FILE...
    local prefix=$1 extension=$2 number=0
    shift 2
    for file in "$@"; do cp "$file" "$set6/$prefix$((++number)).$extension"; done
}
numbered BIN/PROG EXE "$set2"/{default.exe,modern.exe,System.dll,Math.dll,NSISdl.dll,nsDialogs.dll,InstallOptions.dll} \
    "$set2"/{BgImage.dll,regtool.exe,Splash.dll}
numbered DRV/DRV SYS "$set3"/{ahci,ehci,uhci,usb,usbms,usb_keyboard,ata,scsi,net,http,fat,iso9660,gfxmenu}.mod
numbered LIB/LIB BIN "$set1"/{libc.a,libdos.a,memdisk,vgabios.bin}
numbered NET/TEXT TXT "$set4"/{qwerty_us.kmap,qwertz_de.kmap,azerty_fr.kmap,pci.ids,WinMessages.bat,nsDialogs.bat}
head -c 32768 "$set4/pci.ids" >"$set6/NET/TEXT4.TXT"
cp "$set5/undionly.kpx" "$set6/NET/UNDI.DAT"

find "$destination" -exec touch -h -d '2005-01-02 03:04:06 UTC' {} +
for set in "$destination"/s?_*/; do
    set=${set%/}
    (cd "$set" && find . -type f -print0 | sort -z | xargs -0 cat) >"$set.cat"
    touch -d '2005-01-02 03:04:06 UTC' "$set.cat"
    printf '%-10s %4d files %9d bytes  sha256 %s\n' "${set##*/}" "$(find "$set" -type f | wc -l)" \
        "$(stat -c %s "$set.cat")" "$(sha256sum <"$set.cat" | cut -c1-32)"
done
