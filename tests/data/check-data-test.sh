#!/usr/bin/env bash
# Proves that check-data.sh finds faults: breaks a copy of the data in one way at a time and expects the
# line that names the fault from the check responsible for it, without waiting for the others. Exits 1 if a
# fault is missed or if the unbroken copy has one.
# shellcheck disable=SC2016  # $ and backquotes belong to the sed commands and to the expected texts
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/../.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -a "$root/data" "$root/demo" "$root/docs" "$root/help" "$work/"
failures=0
cases=0
checks=() # the names of those that the next cases run

# expect TEXT FILE SED...: with FILE changed by the sed commands, one line of the report contains TEXT.
expect() {
    local text=$1 file=$2 report
    shift 2
    cp -a "$work/$file" "$work/saved"
    sed -i "$@" "$work/$file"
    if cmp -s "$work/$file" "$work/saved"; then
        echo "the case \"$text\" changes nothing in $file"
        failures=$((failures + 1))
    fi
    report=$("$here/check-data.sh" "$work" "${checks[@]}" 2>&1) && report+=' (and it reports success)'
    mv "$work/saved" "$work/$file"
    judge "$text" "$report"
}
# expect_with TEXT COMMAND UNDO: the same for changes that are more than an edit of one file.
expect_with() {
    local text=$1 report
    (cd "$work" && eval "$2")
    report=$("$here/check-data.sh" "$work" "${checks[@]}" 2>&1) && report+=' (and it reports success)'
    (cd "$work" && eval "$3")
    judge "$text" "$report"
}
judge() {
    cases=$((cases + 1))
    if [[ $2 != *"$1"* || $2 == *'reports success'* ]]; then
        printf 'missed: %s\n%s\n' "$1" "$2" | head -n 12
        failures=$((failures + 1))
    fi
}

if ! "$here/check-data.sh" "$work"; then
    echo 'the data has faults before anything is broken'
    exit 1
fi

minimal=data/files/minimal.ini
setup=data/files/setup.ini
list=data/files/disklist.ini
menu=data/files/base_files/bin/MENU.BAT
finddrv=data/files/base_files/bin/FINDDRV.BAT

# Text files and names
checks=(text_files names)
expect 'a line does not end in CR LF' $menu '5s/\r$//'
expect 'a line does not end in CR LF' demo/files/demo.ini '1s/\r$//'
expect_with 'the last line has no line end' "printf 'REM' >>$menu" "sed -i '\$d' $menu"
expect 'neither printable ASCII nor a space' data/keyfile.sample.txt '6s/\r/\t\r/; 7s/Jane/J\xe4ne/; s/Doe/D\xf6/'
expect_with 'not an upper-case name of the form 8.3' 'mv data/files/keyb/bin/LAYOUT.BAT data/files/keyb/bin/KEYLAYOUT.BAT' \
    'mv data/files/keyb/bin/KEYLAYOUT.BAT data/files/keyb/bin/LAYOUT.BAT'
expect_with 'not an upper-case name of the form 8.3' 'mv data/files/keyb/bin/LAYOUT.BAT data/files/keyb/bin/layout.bat' \
    'mv data/files/keyb/bin/layout.bat data/files/keyb/bin/LAYOUT.BAT'
expect_with 'the name of the folder is not of the form 8.3' 'mkdir "data/files/keyb/more files"' 'rmdir "data/files/keyb/more files"'
expect_with 'this base file is missing' 'mv data/files/base_files/MSDOS.SYS .' 'mv MSDOS.SYS data/files/base_files/'

# The batch language
checks=(batch_files)
for line in 'SET /P X=' 'FOR /F %%A IN (X) DO ECHO' 'IF DEFINED X ECHO' 'IF NOT DEFINED X ECHO' 'GOTO :EOF' 'ECHO %~dp0' \
    'ECHO A& ECHO B' 'DIR 2>NUL' 'ECHO %DATE%' 'if /i A==B ECHO' 'IF 1 EQU 1 ECHO'; do
    expect 'not in the language of DOS' $menu "2a ${line//&/\\&}\r"
done
expect 'more than 127 characters' $menu "2a $(printf 'ECHO %0125d' 0)\r"
expect 'a pipe needs a disk' $menu '2a DIR | MORE\r'
expect 'names drive A:' $menu '2a DIR A:\\BIN\r'
expect 'names drive D:' $menu '2a IF EXIST D:\\VEL\\X.BAT GOTO AGAIN\r'
expect 'names drive A:' data/files/setupwin/bin/SETUPWIN.BAT '2a DIR A:\\BIN\r'
expect 'NUL is there on drives that are not' $menu '2a IF EXIST %MODDRV%\\NUL GOTO AGAIN\r'
expect 'guesses the letter of a drive' $menu '2a FOR %%D IN (C D E) DO IF EXIST %%D:\\X.TXT SET X=%%D\r'
for line in 'ECHO X>%BOOT%\\X.TXT' 'ECHO X>>X.TXT' 'MD %X%\\VEL' 'IF "%X%"=="" MD \\VEL' 'COPY %BOOT%\\X.TXT %X%\\X.TXT' \
    'DEL %X%\\X.TXT' '%BOOT%\\BIN\\UNPACK %BOOT%\\LIB\\X.CAB %X%\\X' 'FORMAT %X%'; do
    expect 'writes to a drive that nobody agreed to' $menu "2a $line\r"
done
expect 'takes a hard disk without a yes' $finddrv '/^CHOICE/d'
expect 'takes a hard disk without a yes' $finddrv 's/T:N,60/T:Y,60/'
expect 'takes a hard disk without a yes' $finddrv '/^IF NOT ERRORLEVEL 1/d'
layout=data/files/keyb/bin/LAYOUT.BAT
expect 'writes to a drive that nobody agreed to' $layout 's/>%BOOT%.ETC/>%BOOT%\\BIN/'
expect 'writes to a drive that nobody agreed to' $layout 's/MD %BOOT%.ETC/MD %BOOT%\\SAVED/'
expect 'writes to the boot disk without a yes' $layout 's/T:N,60/T:Y,60/'
expect 'writes to the boot disk without a yes' $layout '/^IF NOT ERRORLEVEL 1 GOTO END/d'
expect 'writes to the boot disk without a yes, or without a trial' $layout '/WHICHDRV %BOOT% WRITE/d'
expect 'the exit code is not COPY'\''s' $finddrv '2a COPY A B\r\nIF ERRORLEVEL 1 GOTO BAD\r'
expect 'without an answer it must' $finddrv 's/^IF ERRORLEVEL 2 GOTO END/IF ERRORLEVEL 3 GOTO END/'
expect 'without an answer it must' data/files/dos_files/menu/DOS.BAT '/^IF ERRORLEVEL 5/d'
expect 'the exit code does not survive a CALL' $menu '2a CALL HELP.BAT\r\nIF ERRORLEVEL 1 GOTO AGAIN\r'
expect 'EXTRACT.EXE is on no disk' $menu '2a EXTRACT /Y X.CAB\r'
expect 'wider than the screen' $menu "2a $(printf 'ECHO %080d' 0)\r"
expect 'there is no label FIXED' $menu 's/^:FIXED/:LOOSE/'
expect 'begin with the same eight characters' $menu 's/^:FIXED/:FIXED\r\n:ABCDEFGH1\r\n:ABCDEFGH2/'
expect 'it calls BIN\MENUROW.BAT' $menu 's/MENUITEM/MENUROW/'

# CONFIG.SYS
checks=(config_sys)
expect 'names a drive: DEVICE=A:' data/files/config/CDROM.CFG 's/^DEVICE=.HIMEM/DEVICE=A:\\HIMEM/'
expect 'names a drive: 12345?SHELL=A:' data/files/config/CDROM.FD 's/SHELL=./SHELL=A:\\/'
expect 'loads other files than' data/files/base_files/FDCONFIG.SYS '/VELRAM/d'
expect 'differs from data/files/base_files/CONFIG.SYS in more' data/files/config/NETWORK.CFG 's/^FILES=30/FILES=40/'
expect 'differs from data/files/base_files/FDCONFIG.SYS in more' data/files/base_files/FDCONFIG.SYS 's/BUFFERS=20/BUFFERS=30/'
expect_with 'there is no twin for FreeDOS' 'mv data/files/config/CLEAN.FD .' 'mv CLEAN.FD data/files/config/'

# The catalogue
checks=(catalogue)
expect 'but the sections are' $list 's/^Count=.*/Count=99\r/'
expect 'fewer than four disks' $list 's/^Count=.*/Count=3\r/'
expect 'there is no file key' $list '0,/^file=/{/^file=/d}'
expect 'there is no file key' $list '/^file=tools/d'
expect 'there is no file key' demo/disklist.rows.ini '/^file=/d'
expect 'aspi is not 0 or 1' $list '0,/^aspi=0/s//aspi=yes/'
expect 'Name is no lower-case name' $list 's/^Name=tools/Name=Tools/'
expect 'there is no configuration tool.ini' $list 's/^Name=tools/Name=tool/'
expect 'no row of the catalogue names this configuration' $list 's/^Name=tools/Name=tool/'
expect 'two rows are named cdrom' $list 's/^Name=tools/Name=cdrom/'
expect 'the rows could not be added' demo/disklist.rows.ini 's/^Name=demo/Name=tools/'
expect 'the disk flash is not in the table' docs/disk-catalogue.md '/^| `flash`/d'
expect 'the disk nwlan is not in the table' help/topics/1320-disk.md '/^| nwlan/d'
expect 'there is no Desc' $list '/^Desc=Tools/d'
expect 'Icon is not from 1 to 8' $list 's/^Icon=5/Icon=9/'
expect_with 'the configuration of the custom row is missing' 'mv data/files/custom.ini .' 'mv custom.ini data/files/'

# Configurations
checks=(catalogue sample_drivers configurations)
expect 'no such section: [Copy_files]' $minimal 's/^\[Copy_Files\]/[Copy_files]/'
expect 'no such section: [Copy_Files] ' $minimal 's/^\[Copy_Files\]/[Copy_Files] /'
expect 'the line is in no section' $minimal '/^\[Copy_CABs\]/d'
expect 'no "=": io.sys' $minimal 's/^io.sys=.*/io.sys\r/'
expect 'more than one "="' $minimal 's/^edit.com=BIN/edit.com=BIN\\EDIT.COM=BIN/'
expect 'one side is empty' $minimal 's/^edit.com=.*/edit.com= \r/'
expect 'no path of 8.3 names' $minimal 's/BIN.EDIT.COM/BIN\\TEXTEDITOR.COM/'
expect 'the right side names no file' $minimal 's/BIN.EDIT.COM/BIN/'
expect 'not in capitals' $minimal 's/BIN.EDIT.COM/BIN\\edit.com/'
expect 'neither shipped nor one of the DOS files: edlin.com' $minimal 's/^edit.com=/edlin.com=/'
expect 'neither shipped nor one of the DOS files: files\missing' $minimal 's/^edit.com=/files\\missing\\*.*=/'
expect 'neither shipped nor described' data/files/cdrom.ini 's/^devload.com=/loader.com=/'
expect 'only *.* is copied as a pattern' data/files/custom.ini 's/^modules\\\*\.\*/modules\\*.cab/'
expect 'a folder is copied with \*.* after it' demo/files/demo.ini 's/^files\\demo\\\*\.\*/files\\demo/'
expect 'another line has the same target' $minimal 's/BIN.EDIT.COM/BIN\\SYS.COM/'
expect 'neither shipped nor one of the DOS files: himemx.exe' $minimal '/^himemx.exe/d; /^mem.exe/a himemx.exe=HIMEM.SYS\r'
expect 'himemx.exe must come after the line of HIMEM.SYS' $minimal '/^himemx.exe/d; /^kernel.sys/a himemx.exe=HIMEM.SYS\r'
expect 'whose place it takes' $minimal 's/^himemx.exe=.*/himemx.exe=XMS.SYS\r/'
expect 'a base file is replaced' $minimal 's/BIN.EDIT.COM/AUTOEXEC.BAT/'
expect 'the disk gets no IO.SYS' $minimal '/^io.sys/d'
expect 'the disk gets no IO.SYS' $minimal 's/=IO.SYS/=io.sys/'
expect 'the disk gets no COMMAND.COM' data/files/custom.ini '/^command.com/d'
expect 'the disk gets no COMMAND.COM' demo/files/demo.ini '/^command.com/d'
expect 'the disk gets no BIN\CHOICE.COM' $minimal '/^choice.com/d'
expect 'CONFIG.SYS loads HIMEM.SYS, which the disk does not get' $minimal '/^himem.sys/d'
expect 'CONFIG.SYS loads CDROM.SYS, which the disk does not get' $setup '/^cdrom.sys/d'
expect 'come from different files' $setup '/CDROM.FD/d'
expect 'the disk gets no BIN\WHICHDRV.COM' $minimal '/WHICHDRV/d'
expect 'no BIN\UNPACK.EXE' data/files/tools.ini '/UNPACK/d'
expect 'BIN\EXTRACT.EXE serves nothing' data/files/tools.ini '/UNPACK/a extract.exe=BIN\\EXTRACT.EXE\r'
expect 'there is no module folder files\keys' data/files/custom.ini 's/^keyb=LIB/keys=LIB/'
expect 'looks for its modules in LIB only' data/files/custom.ini 's/^keyb=LIB/keyb=BIN/'
expect 'only files\dos may receive files' data/files/tools.ini 's/^attrib.exe=dos/attrib.exe=keyb/'
expect 'a line that performs nothing' $setup '2a [Create_CABs]\r\nSetupWin=LIB\r'
expect 'do not fit on a disk' data/files/network.ini '/^mem.exe/a scandisk.exe=A\\SCANDISK.EXE\r\nscandisk.exe=B\\SCANDISK.EXE\r\nscandisk.exe=C\\SCANDISK.EXE\r\nscandisk.exe=D\\SCANDISK.EXE\r'

# Default drivers
expect 'no driver: SCSI' $minimal '$a [DefaultDrivers]\r\nSCSI\\AHA\r'
expect 'no driver: NDIS' demo/files/demonet.ini 's/^NDIS.E100B/NDIS/'
expect 'no driver: NDIS\E100B.CAB.OLD' demo/files/demonet.ini 's/^NDIS.E100B/&.CAB.OLD/'
expect 'the demonstration has no driver NDIS\E1000' demo/files/demonet.ini 's/^NDIS.E100B/NDIS\\E1000/'
expect 'the demonstration has no driver ODI16\CE100B' demo/files/demoodi.ini 's/^ODI32.CE100B/ODI16\\CE100B/'
expect 'the disk takes no drivers of the group ASPI' demo/files/demonet.ini 's/^NDIS.E100B/ASPI\\BTDOSM/'
expect 'the disk takes no drivers of the group ODI32' demo/disklist.rows.ini 's/^netw=1/netw=0/'
expect 'the store ships empty' data/files/network.ini '$a [DefaultDrivers]\r\nNDIS\\E100B\r'

# The driver store and the sample drivers
checks=(text_files driver_store sample_drivers)
readme=data/drivers/odi16/README.TXT
adapters=demo/drivers/adapters.table
drivers=demo/drivers/drivers.table
expect_with 'nothing says how to add a driver' "mv $readme ." "mv README.TXT data/drivers/odi16/"
expect 'it does not mention odi16.pci' $readme 's/odi16.pci/odi32.pci/'
expect 'it does not mention odi.txt' $readme 's/odi.txt/ndis.txt/'
expect 'it does not mention NAME.COM' $readme 's/NAME.COM/NAME.LAN/'
expect 'it does not mention NAME.COM' data/drivers/ndis/README.TXT 's/NAME.COM/NAME.EXE/'
expect 'packs into another group' $readme 's/drivers.odi16.PCNTNW/drivers\\odi32\\PCNTNW/'
expect_with 'the store ships nothing but' 'cp data/keyfile.sample.txt data/drivers/ndis/E100B.CAB' 'rm data/drivers/ndis/E100B.CAB'
expect_with 'the store ships nothing but' 'mkdir data/drivers/odi' 'rmdir data/drivers/odi'
expect 'no PCI numbers of four hexadecimal digits' $adapters 's/ 9055 / 0x9055 /'
expect 'no PCI numbers of four hexadecimal digits' $adapters 's/ 10EC 8139/ 10ec 8139/'
expect 'the adapter has no name' $adapters 's/ 8139 .*/ 8139/'
expect 'another line has the adapter 10B7 9055' $adapters 's/ 9050 / 9055 /'
expect 'no driver is for the family spare' $adapters '$a spare 1234 5678 Spare'
expect 'there is no family intel-pro1000' $drivers 's/intel-pro100 /intel-pro1000 /'
expect 'there is no group odi' $drivers 's/^odi16/odi/'
expect 'no name of at most eight capitals' $drivers 's/E100BODI/E100B_ODI/'
expect 'no name of at most eight capitals' $drivers 's/RTL8139/rtl8139/'
expect 'the driver has no description' $drivers 's/Intel PRO.*//'
expect 'another line has the driver E100B of this group' $drivers 's/RTL8029/E100B/'
expect 'fewer than three drivers of the group odi32' $drivers '/^odi32 *CE100B/d'
expect 'no driver has the same name in odi16 and odi32' $drivers '/^odi16 *PCNTNW/d'
expect 'these settings belong to no driver' $drivers 's/RTL8139/RTL8100/'
expect 'there is no DriverName' demo/drivers/ndis/RTL8139.NIC 's/DriverName/Driver/'
expect 'a line does not end in CR LF' demo/drivers/ndis/RTL8139.NIC 's/\r$//'

# The templates of the answer files
checks=(templates)
templates=data/files/inf_files
expect_with 'this template is missing' "mv $templates/key_template.inf ." "mv key_template.inf $templates/"
expect 'there is not one section [VREDIR]' $templates/winme_template.inf 's/^.VREDIR/[VREDIRECT/'
expect 'there is not one section [Setup]' $templates/key_template.inf '$a [Setup]\r'
expect '[Network] has no line for Workgroup' $templates/win98_template.inf '/^Workgroup/d'
expect '[NameAndOrg] has no line for Display' $templates/winme_template.inf '/^Org=/{n;d}'
expect '[UserData] has no line for ProductID' $templates/win2k_template.inf 's/^ProductID/ProductKey/'
expect 'a comment has a "="' $templates/win2k_template.inf '2s/$/X=1\r/; 2s/\r//'
expect '[Unattended] does not say Repartition=No' $templates/win2k_template.inf 's/^Repartition=No/Repartition=Yes/'
expect '[Data] does not say AutoPartition=0' $templates/win2k_template.inf '/^AutoPartition/d'
expect '[Unattended] does not say FileSystem=LeaveAlone' $templates/win2k_template.inf 's/LeaveAlone/ConvertNTFS/'
expect 'the setup knows no such answer: [Setup] NoPrompt2Bot' $templates/winme_template.inf 's/^NoPrompt2Boot/NoPrompt2Bot/'
expect 'the setup knows no such answer: [OptionalComponents] "Screen Savers"' $templates/win98_template.inf 's/^"Additional /"/'
expect 'the setup knows no such answer: [Setup] CCP' $templates/key_template.inf '$a CCP=0\r'
expect 'the setup knows no such answer: [Unatended] TargetPath' $templates/win2k_template.inf 's/^.Unattended.\r/[Unatended]\r/'
expect 'the setup knows no such value: UnattendMode=DefaultHidden' $templates/win2k_template.inf 's/^UnattendMode=.*\r/UnattendMode=DefaultHidden\r/'
expect 'the setup knows no such value: WINS=0' $templates/win98_template.inf 's/^WINS=D/WINS=0/'
expect 'neither a section nor an answer: EBD' $templates/winme_template.inf 's/^EBD=0/EBD/'
expect 'the same answer is given twice: [Setup] Express' $templates/key_template.inf '$a Express=1\r'
expect 'this answer is missing: Setup/NoPrompt2Boot' $templates/winme_template.inf '/^NoPrompt2Boot/d'

# Plugins, and what the documentation says
checks=(plugins shipped)
expect_with 'a plugin without a folder' 'mv data/plugins/stamp .' 'mv stamp data/plugins/'
expect 'docs/ does not mention `files\keyb\KEYB.BAT`' docs/shipped-files.md '/keyb.KEYB/d'
expect 'there is no file files\keyb\NONE.BAT' docs/shipped-files.md 's/^| `files.keyb.KEYB.BAT.*/&\n| `files\\keyb\\NONE.BAT` | none |/'
expect_with 'ship no key file' 'cp data/keyfile.sample.txt data/keyfile.txt' 'rm data/keyfile.txt'
expect_with 'would hide the import' 'mkdir data/dos' 'rmdir data/dos'

if ((failures > 0)); then
    echo "check-data-test: $failures of $cases faults were missed" >&2
    exit 1
fi
echo "check-data-test: all $cases faults were found"
