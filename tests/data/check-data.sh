#!/usr/bin/env bash
# Checks the starter tree (data/) and what the demonstration adds to it (demo/) without running the program:
# line ends, names, the catalogue, every line of every disk configuration, the batch language, the size of
# each disk, the driver store, the sample drivers, the templates, and that docs/ mentions everything that ships.
# Prints one line for each fault and exits 1 if there was any.
# check-data.sh [-v] [ROOT [CHECK...]] checks another checkout; with CHECKs it runs only those, by their names in the list at
# the end. -v shows how full each disk can be.
set -euo pipefail
export LC_ALL=C

verbose=no
if [[ ${1-} == -v ]]; then
    verbose=yes
    shift
fi
root=${1:-$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)}
if [[ ! -d $root/data/files || ! -d $root/demo/files || ! -d $root/docs ]]; then
    echo "check-data: $root is not a checkout of the project" >&2
    exit 2
fi
data=$root/data
demo=$root/demo
faults=0
fault() {
    printf '%s: %s\n' "$1" "$2"
    faults=$((faults + 1))
}
# The path as the report shows it.
shown() { printf '%s' "${1#"$root"/}"; }

# The DOS files that the program requires, with the approximate size of each on a Windows 98 SE CD.
declare -A dosBytes=(
    [io.sys]=223000 [command.com]=94000 [attrib.exe]=16000 [choice.com]=6000 [deltree.exe]=20000
    [diskcopy.com]=22000 [edit.com]=70000 [emm386.exe]=126000 [extract.exe]=94000 [fc.exe]=21000
    [fdisk.exe]=64000 [format.com]=50000 [himem.sys]=34000 [label.exe]=10000 [mem.exe]=33000
    [mode.com]=30000 [more.com]=11000 [move.exe]=28000 [scandisk.exe]=246000 [smartdrv.exe]=46000
    [sort.exe]=26000 [sys.com]=20000 [xcopy.exe]=5000 [xcopy32.exe]=4000 [xcopy32.mod]=42000
)
# What more-dos.bat adds to them: a disk must fit with all of it.
dosBytes+=(
    [mscdex.exe]=26000 [cdrom.sys]=42000 [keyb.com]=20000 [keyboard.sys]=35000 [keybrd2.sys]=32000 [keybrd3.sys]=32000
    [keybrd4.sys]=14000 [doskey.com]=16000 [mouse.com]=31000 [chkdsk.exe]=29000 [debug.exe]=21000 [aspicd.sys]=30000
)
# What takes the place of a DOS file on the disk when the user has it.
declare -A insteadOf=([himemx.exe]=HIMEM.SYS [jemm386.exe]=EMM386.EXE)
# The programs that are assembled when the application is built, each with the most bytes that it may have.
declare -A builtBytes=(
    [velram.sys]=4096 [findram.com]=1024 [whichdrv.com]=1024 [pcifind.com]=2048 [boothd.com]=1024 [unpack.exe]=17000
    [io.sys]=2048
)
diskBytes=$((2847 * 512))

# Every file and folder by its path in lower case, because Windows ignores the case of names.
declare -A index=()
while IFS= read -r -d '' path; do index[${path,,}]=$path; done < <(find "$data" "$demo" -print0)
documentation=$(cat "$root/docs"/*.md)

# Functions that are called for every line return their result in REPLY: a subshell for each would take most of the time.

# find_in BASE PATH: sets REPLY to the path of what Windows would open, or fails.
find_in() {
    local path=$1/${2//\\//}
    REPLY=${index[${path,,}]:-}
    [[ -n $REPLY ]]
}

is_dos_name() { [[ $1 =~ ^[A-Z0-9_~!#$%\&@-]{1,8}(\.[A-Z0-9_~!#$%\&@-]{1,3})?$ ]]; }
is_dos_path() {
    local part
    local -a parts
    IFS=/ read -r -a parts <<<"${1//\\//}"
    ((${#parts[@]} > 0)) || return 1
    for part in "${parts[@]}"; do is_dos_name "${part^^}" || return 1; done
}
# trim TEXT: sets REPLY to TEXT without the spaces around it.
trim() {
    REPLY=${1#"${1%%[! ]*}"}
    REPLY=${REPLY%"${REPLY##*[! ]}"}
}

check_text_files() {
    local file
    local -a files
    mapfile -d '' files < <(find "$data" "$demo/files" "$demo/modules" "$demo/drivers"/*/ "$demo/disklist.rows.ini" \
        "$demo/keyfile.txt" -type f -size +0 \
        ! -name '*.bin' ! -name '*.cab' -print0)
    while IFS= read -r -d '' file; do
        fault "$(shown "$file")" 'a line does not end in CR LF'
    done < <(grep -l -Z -v $'\r$' "${files[@]}")
    while IFS= read -r -d '' file; do
        fault "$(shown "$file")" 'the last line has no line end'
    done < <(grep -L -Z -z -P '\n\z' "${files[@]}")
    while IFS= read -r -d '' file; do
        fault "$(shown "$file")" 'a character is neither printable ASCII nor a space'
    done < <(grep -l -Z $'[^\r -~]\|\r.' "${files[@]}")
}

# What is in this folder runs on Windows.
windowsFolder=$data/files/freedos/

# Names that become names on the floppy: files in capitals, folders in either case, both 8.3.
check_names() {
    local folder path name
    for folder in "$data/files"/*/ "$data/plugins"/*/ "$demo/files"/*/ "$demo/modules"/; do
        [[ -d $folder && $(basename "$folder") != inf_files && $folder != "$windowsFolder" ]] || continue
        while IFS= read -r -d '' path; do
            name=${path##*/}
            if [[ -d $path ]]; then
                is_dos_name "${name^^}" || fault "$(shown "$path")" 'the name of the folder is not of the form 8.3'
            elif ! is_dos_name "$name"; then
                fault "$(shown "$path")" 'the name is not an upper-case name of the form 8.3'
            fi
        done < <(find "$folder" -mindepth 1 -print0)
    done
    for name in CONFIG.SYS AUTOEXEC.BAT MSDOS.SYS; do
        [[ -f $data/files/base_files/$name ]] || fault "data/files/base_files/$name" 'this base file is missing'
    done
}

# Where a batch file may name a drive: Windows is set up on C:, NEWDISK formats the drive that its user names.
declare -A namedDrives=(
    [LETTER.BAT]=A-Z [NEWDISK.BAT]=C-H [SETUPWIN.BAT]=C [SETUPNT.BAT]=C [SETUP.BAT]=C [DOS.BAT]=C
)

# check_drives NAME FILE LINE: no drive letter is guessed, and none is used for the drive that DOS started from.
check_drives() {
    local allowed=${namedDrives[$2]:-} rest=$3 letter
    [[ ! $3 =~ EXIST\ [^\ ]*\\NUL(\ |$) ]] ||
        fault "$1" "NUL is there on drives that are not, and not on a CD: $3"
    [[ ! $3 =~ %%[A-Z]: ]] || fault "$1" "guesses the letter of a drive: $3"
    [[ $rest != ECHO* ]] || return 0
    rest=${rest%% ECHO *}
    while [[ $rest =~ (^|[^A-Z/%])([A-Z]): ]]; do
        letter=${BASH_REMATCH[2]}
        [[ -n $allowed && $letter == [$allowed] ]] || fault "$1" "names drive $letter: where a variable has the letter: $3"
        rest=${rest#*"$letter:"}
    done
}

# check_writes NAME FILE LINE: what is written goes to the drive that the modules are on, which the user agreed to.
check_writes() {
    local target='' word
    local -a words=()
    if [[ $3 =~ \>\>?([^\>\ ]+) ]]; then
        target=${BASH_REMATCH[1]}
        [[ $target == NUL || $target =~ ^%(MODDIR|TEMP|INI)% || ($2 == FINDDRV.BAT && $target == %USEDRV%*) ||
            ($2 == LAYOUT.BAT && $target == '%BOOT%\ETC\LAYOUT.BAT') ]] ||
            fault "$1" "writes to a drive that nobody agreed to: $3"
    fi
    target=${3%% ECHO *}
    [[ $target != ECHO* && $target != CHOICE* ]] || return 0
    read -r -a words <<<"${target%%>*}"
    for word in "${!words[@]}"; do
        case ${words[word]##*\\} in
            MD | DEL) target=${words[word + 1]:-} ;;
            COPY | UNPACK) target=${words[word + 2]:-} ;;
            FORMAT | SYS | FDISK)
                [[ $2 == NEWDISK.BAT || $2 == DOS.BAT || ${words[word > 0 ? word - 1 : 0]} == GOTO ]] ||
                    fault "$1" "writes to a drive that nobody agreed to: $3"
                continue
                ;;
            *) continue ;;
        esac
        [[ ${words[word > 0 ? word - 1 : 0]} == GOTO || $target =~ ^%(MODDIR|TEMP)% || ($2 == FINDDRV.BAT && $target == %USEDRV%*) ||
            ($2 == DRVDESC.BAT && $target == %%F) || ($2 == LAYOUT.BAT && $target == '%BOOT%\ETC') ]] || fault "$1" "writes to a drive that nobody agreed to: $3"
    done
}

# check_agreement NAME TEXT: a batch file that chooses a hard disk by itself, or writes to the boot disk, asks first, and treats a
# missing answer as no. The boot disk may be write-protected or full, which DOS must not ask about.
check_agreement() {
    local asks='WHICHDRV HD.*CHOICE /C:YN /T:N,[0-9]+ .*IF ERRORLEVEL 2 GOTO END.*IF NOT ERRORLEVEL 1 GOTO END.*GOTO USE'
    [[ $2 != *LETTER.BAT*WHICHDRV\ HD* || $2 =~ $asks ]] || fault "$1" 'takes a hard disk without a yes'
    asks='CHOICE /C:YN /T:N,[0-9]+ .*IF ERRORLEVEL 2 GOTO END IF NOT ERRORLEVEL 1 GOTO END .*'
    asks+='WHICHDRV %BOOT% WRITE IF NOT ERRORLEVEL 1 GOTO [A-Z]+ .*[^>]>%BOOT%'
    [[ $2 != *'>%BOOT%'* || $2 =~ $asks ]] || fault "$1" 'writes to the boot disk without a yes, or without a trial'
}

# check_calls NAME LINE PREVIOUS: what is called is on the disk, at its path or on the search path.
check_calls() {
    local path
    if [[ $2 =~ (^|[^A-Z])(CALL\ )?%(BOOT|VELDIR)%\\BIN\\([^\ %*]+\.BAT)(\ |$) ]]; then
        path=bin/${BASH_REMATCH[4]}
        find_in "$data/files/base_files" "$path" || fault "$1" "it calls BIN\\${BASH_REMATCH[4]}, which no base file becomes"
    fi
    # A free COMMAND.COM resets the exit code when it calls a batch file.
    [[ $2 != *ERRORLEVEL* || $3 != CALL\ * ]] || fault "$1" "the exit code does not survive a CALL: $2"
    if [[ $2 == *ERRORLEVEL* && $3 =~ ^(COPY|DEL|DIR|ECHO|CD|MD|RD|REN|SET|TYPE)' ' ]]; then
        fault "$1" "the exit code is not ${BASH_REMATCH[1]}'s, which sets none: $2"
    fi
    [[ ! $2 =~ (^|[^A-Z])EXTRACT(\.EXE)?( |$) ]] || fault "$1" "UNPACK unpacks, EXTRACT.EXE is on no disk: $2"
}

# check_choice NAME LINE PREVIOUS: CHOICE ends with 255 when it cannot ask, which must lead out of the menu.
check_choice() {
    local keys
    [[ $3 =~ ^CHOICE.*\ /C:([^ ]+) ]] || return 0
    keys=${#BASH_REMATCH[1]}
    [[ $2 =~ ^IF\ ERRORLEVEL\ $keys\ GOTO\ (END|PROMPT)$ ]] || fault "$1" "without an answer it must go to its end first: $2"
}

# Batch files on the floppy must be in the language of COMMAND.COM, not in that of later Windows.
check_batch_file() {
    local name label line file text='' previous=''
    local -A labels=() heads=() wanted=()
    name=$(shown "$1")
    file=${1##*/}
    local language='(^|[^A-Z])(SET /[AP]|FOR /|IF /I|IF (NOT )?(DEFINED|CMDEXTVERSION)|GOTO :|CALL :|EXIT /B|SETLOCAL|PUSHD)'
    local marks='%~|%(DATE|TIME|CD|RANDOM)%|&|\|\||[ =]2>| (EQU|NEQ|LSS|LEQ|GTR|GEQ) '
    while IFS= read -r line; do
        line=${line%$'\r'}
        line=${line^^}
        ((${#line} < 128)) || fault "$name" "a line has more than 127 characters: $line"
        [[ $line != ECHO\ * || $line == *'>'* ]] || ((${#line} < 85)) || fault "$name" "a line is wider than the screen: $line"
        [[ $line != REM* ]] || continue
        if [[ $line =~ $language || $line =~ $marks ]]; then fault "$name" "not in the language of DOS: $line"; fi
        # DOS runs a pipe through temporary files, which it cannot write on this disk.
        [[ $line != *'|'* ]] || fault "$name" "a pipe needs a disk that can be written: $line"
        if [[ $line == :* ]]; then
            label=${line#:}
            [[ -z ${heads[${label:0:8}]:-} ]] || fault "$name" "two labels begin with the same eight characters: $label"
            labels[$label]=1
            heads[${label:0:8}]=1
        fi
        if [[ $line =~ (^|[^A-Z])GOTO\ ([^\ ]+) ]]; then wanted[${BASH_REMATCH[2]}]=1; fi
        check_drives "$name" "$file" "$line"
        check_writes "$name" "$file" "$line"
        check_calls "$name" "$line" "$previous"
        check_choice "$name" "$line" "$previous"
        text+=" $line"
        previous=$line
    done <"$1"
    check_agreement "$name" "$text"
    for label in "${!wanted[@]}"; do [[ -n ${labels[$label]:-} ]] || fault "$name" "there is no label $label"; done
}
check_batch_files() {
    local file
    while IFS= read -r -d '' file; do check_batch_file "$file"; done < <(
        find "$data/files" "$demo/files" "$demo/modules" "$data/plugins"/*/ -path "${windowsFolder%/}" -prune -o \
            -type f -iname '*.bat' -print0)
}

# devices FILE: the files that a CONFIG.SYS loads, as paths on the disk and sorted.
devices() {
    tr -d '\r' <"$1" | sed -n -E 's/^([0-9]+\?)?(DEVICE(HIGH)?|SHELL|INSTALL)=\\?([^ ]*).*/\4/p' | sort -u
}

# CONFIG.SYS and its twin for FreeDOS, which has another language for menus.
check_config_sys() {
    local file twin
    for file in "$data/files/base_files/CONFIG.SYS" "$data/files/config"/*.CFG; do
        twin=${file%.CFG}.FD
        [[ $file == *.CFG ]] || twin=$data/files/base_files/FDCONFIG.SYS
        if [[ ! -f $twin ]]; then
            fault "$(shown "$file")" 'there is no twin for FreeDOS'
            continue
        fi
        diff -q <(devices "$file") <(devices "$twin") >/dev/null || fault "$(shown "$twin")" "loads other files than $(shown "$file")"
        while read -r line; do
            fault "$(shown "$file")" "names a drive: $line"
        done < <(tr -d '\r' <"$file" | cat - "$twin" | grep -E '=[A-Za-z]:')
    done
    for file in "$data/files/config"/{CLEAN,NETWORK}.{CFG,FD}; do
        twin=$data/files/base_files/CONFIG.SYS
        [[ $file == *.CFG ]] || twin=$data/files/base_files/FDCONFIG.SYS
        diff -q <(grep -v '^MENUDEFAULT' "$file") <(grep -v '^MENUDEFAULT' "$twin") >/dev/null ||
            fault "$(shown "$file")" "differs from $(shown "$twin") in more than the usual line"
    done
}

# read_ini FILE: fills ini with the values of an INI file, by SECTION/KEY; the first of two lines with one key counts.
declare -A ini=()
read_ini() {
    local line section=''
    ini=()
    while IFS= read -r line; do
        line=${line%$'\r'}
        if [[ $line == '['* ]]; then
            section=${line#'['}
            section=${section%']'*}
        elif [[ $line == *=* && $line != ';'* && -z ${ini[$section/${line%%=*}]+x} ]]; then
            ini[$section/${line%%=*}]=${line#*=}
        fi
    done <"$1"
}

# check_row FILE SECTION: checks one section of the catalogue FILE, which ini contains. Prints only faults.
check_row() {
    local file=$1 section=$2 key value
    local where
    where="$(shown "$file") [$section]"
    for key in aspi ndis netw; do
        value=${ini[$section/$key]:-}
        [[ $value =~ ^[01]$ ]] || fault "$where" "$key is not 0 or 1"
    done
    [[ -n ${ini[$section/file]:-} ]] || fault "$where" 'there is no file key'
    if [[ $section != 0 ]]; then
        value=${ini[$section/Name]:-}
        [[ $value =~ ^[a-z0-9_]{1,8}$ && $value != custom ]] ||
            fault "$where" "Name is no lower-case name for a file and for the command line: $value"
        [[ -f $data/files/$value.ini || -f $demo/files/$value.ini ]] ||
            fault "$where" "there is no configuration $value.ini"
        [[ -n ${ini[$section/Desc]:-} ]] || fault "$where" 'there is no Desc'
        value=${ini[$section/Icon]:-}
        [[ $value =~ ^[1-8]$ ]] || fault "$where" "Icon is not from 1 to 8: $value"
    fi
}

declare -A rows=()
check_catalogue() {
    local file=$data/files/disklist.ini count key section name sections expected number whole
    read_ini "$file"
    count=${ini[Disks_List/Count]:-}
    sections=$(tr -d '\r' <"$file" | sed -n 's/^\[\([0-9]*\)\]$/\1/p' | tr '\n' ' ')
    expected=
    if [[ $count =~ ^[0-9]+$ ]]; then for ((number = 0; number <= count; number++)); do expected+="$number "; done; fi
    [[ $sections == "$expected" ]] || fault "$(shown "$file")" "Count is $count, but the sections are $sections"
    [[ $count =~ ^([4-9]|[1-9][0-9]+)$ ]] || fault "$(shown "$file")" 'fewer than four disks'
    for section in $sections; do check_row "$file" "$section"; done

    # The demonstration's rows are checked as the demonstration gets them: numbered after those that ship.
    whole=$(mktemp)
    cp "$file" "$whole"
    if "$demo/add-rows.sh" "$whole" "$demo/disklist.rows.ini" >/dev/null; then
        read_ini "$whole"
        number=${ini[Disks_List/Count]}
        for ((section = count + 1; section <= number; section++)); do check_row "$whole" "$section"; done
        for ((section = 1; section <= number; section++)); do
            for key in aspi ndis netw; do
                rows[${ini[$section/Name]:-}/$key]=${ini[$section/$key]:-}
            done
        done
        while read -r name; do
            fault 'the catalogue' "two rows are named $name"
        done < <(tr -d '\r' <"$whole" | sed -n 's/^Name=//p' | sort | uniq -d)
        while read -r name; do
            for file in "docs/disk-catalogue.md:| \`$name\` |" "help/topics/1320-disk.md:| $name |"; do
                grep -q -F "${file#*:}" "$root/${file%%:*}" || fault "${file%%:*}" "the disk $name is not in the table"
            done
        done < <(tr -d '\r' <"$data/files/disklist.ini" | sed -n 's/^Name=//p')
        for file in "$data/files"/*.ini "$demo/files"/*.ini; do
            name=$(basename "$file" .ini)
            if [[ $name != disklist && $name != custom ]] && ! tr -d '\r' <"$whole" | grep -q -x "Name=$name"; then
                fault "$(shown "$file")" 'no row of the catalogue names this configuration'
            fi
        done
    else
        fault 'demo/disklist.rows.ini' 'the rows could not be added to the catalogue'
    fi
    rm -f "$whole"
    [[ -f $data/files/custom.ini ]] || fault 'data/files/custom.ini' 'the configuration of the custom row is missing'
}

# folder_bytes FOLDER [FIND-OPTION...]: sets REPLY to the bytes that FOLDER's files and the folder itself take on a floppy.
folder_bytes() {
    local size
    REPLY=1024
    while read -r size; do REPLY=$((REPLY + (size + 511) / 512 * 512)); done < <(find "$1" "${@:2}" -type f -printf '%s\n')
}

# check_configuration FILE FOLDER...: reads FILE as the program does. The sources are looked for in FOLDERs.
check_configuration() {
    local file=$1 disk name line section='' left right number=0 succeeded=no found size source base destination built config
    shift
    local -a folders=("$@")
    local -A onDisk=() moduleBytes=() baseFiles=()
    local total=0 hasIo=no hasCommand=no
    name=$(shown "$file")
    disk=$(basename "$file" .ini)
    total=$baseBytes
    for found in "$data/files/base_files"/*; do
        found=${found##*/}
        baseFiles[${found,,}]=1
    done

    resolve() {
        local folder
        for folder in "${folders[@]}"; do find_in "$folder" "$1" && return 0; done
        return 1
    }

    while IFS= read -r line || [[ -n $line ]]; do
        number=$((number + 1))
        line=${line%$'\r'}
        local where="$name line $number"
        [[ -n $line && $line != ';'* ]] || continue
        case $line in
            '[Copy_CABs]' | '[Copy_Files]' | '[Copy_Files_for_CABs]' | '[Create_CABs]' | '[DefaultDrivers]')
                section=$line
                continue
                ;;
            '['*)
                fault "$where" "no such section: $line"
                section=
                continue
                ;;
        esac
        if [[ $section == '[DefaultDrivers]' ]]; then
            check_default_driver "$where" "$line" "$disk"
            continue
        fi
        if [[ $line != *=* ]]; then
            fault "$where" "no \"=\": $line"
            continue
        fi
        if [[ ${line#*=} == *=* ]]; then fault "$where" "more than one \"=\": $line"; fi
        trim "${line%%=*}"
        left=$REPLY
        right=${line#*=}
        trim "${right%%=*}"
        right=$REPLY
        if [[ -z $section ]]; then
            fault "$where" 'the line is in no section'
            continue
        fi
        if [[ -z $left || -z $right ]]; then
            fault "$where" 'one side is empty'
            continue
        fi
        is_dos_path "$right" || fault "$where" "the right side is no path of 8.3 names: $right"

        if [[ $section == '[Create_CABs]' ]]; then
            [[ ${right^^} == LIB ]] || fault "$where" "the boot disk looks for its modules in LIB only: $right"
            base=$left
            [[ $left != dos ]] || base=dos_files
            if ! resolve "files\\$base" || [[ ! -d $REPLY ]]; then
                fault "$where" "there is no module folder files\\$left"
                continue
            fi
            folder_bytes "$REPLY"
            total=$((total + REPLY + ${moduleBytes[${left,,}]:-0}))
            if [[ ${left,,} == setupwin || ${left,,} == setupnt ]]; then
                folder_bytes "$data/files/inf_files"  # the answers are copies of templates
                total=$((total + REPLY))
                [[ $succeeded == yes ]] ||
                    fault "$where" 'a line that performs nothing before any copy or pack ends the build'
            else
                succeeded=yes
            fi
            continue
        fi

        if [[ $left == *\** && $left != *'\*.*' ]]; then fault "$where" "only *.* is copied as a pattern: $left"; fi
        succeeded=yes
        source=${left%'\*.*'}
        size=0
        built=${left,,}
        built=${built##*\\}
        if [[ $source == "$left" && -n ${dosBytes[${left,,}]:-} ]]; then
            size=${dosBytes[${left,,}]}
        elif [[ ${left,,} =~ ^files\\(realmode|freedos)\\ && -n ${builtBytes[$built]:-} ]]; then
            size=${builtBytes[$built]}
        elif [[ ${left,,} == kernel.sys && $disk == freedos ]]; then
            size=159744  # the most that its IO.SYS loads
        elif resolve "$source"; then
            found=$REPLY
            if [[ -d $found && $source != "$left" ]]; then
                folder_bytes "$found" -maxdepth 1
                size=$REPLY
            elif [[ -d $found ]]; then
                fault "$where" "a folder is copied with \\*.* after it: $left"
            else
                size=$(stat -c %s "$found")
            fi
        elif [[ $section == '[Copy_CABs]' ]]; then
            # A file that the user supplies may be missing, but the documents must mention it.
            [[ $file == "$demo"/* || ${documentation,,} == *"\`${left,,}\`"* ]] ||
                fault "$where" "neither shipped nor described in docs/: $left"
        else
            fault "$where" "neither shipped nor one of the DOS files: $left"
            continue
        fi
        size=$(((size + 511) / 512 * 512))

        if [[ $source == "$left" ]]; then
            destination=${right##*\\}
            [[ $destination == *.* ]] || fault "$where" "the right side names no file: $right"
            [[ $destination == "${destination^^}" || ${destination,,} == *.cab ]] ||
                fault "$where" "the name on the disk is not in capitals: $right"
        fi
        if [[ $section == '[Copy_Files_for_CABs]' ]]; then
            base=${right%%\\*}
            moduleBytes[${base,,}]=$((${moduleBytes[${base,,}]:-0} + size))
            # The dos folder is rebuilt at every start; a file copied to any other would stay there for ever.
            [[ ${base,,} == dos ]] || fault "$where" "only files\\dos may receive files: $right"
            continue
        fi
        if [[ -n ${insteadOf[${left,,}]:-} ]]; then
            [[ $right == "${insteadOf[${left,,}]}" && -n ${onDisk[${right,,}]:-} ]] ||
                fault "$where" "$left must come after the line of ${insteadOf[${left,,}]}, whose place it takes"
        elif [[ -n ${onDisk[${right,,}]:-} ]]; then
            fault "$where" "another line has the same target: $right"
        else
            onDisk[${right,,}]=1
        fi
        [[ -n ${baseFiles[${right,,}]:-} && ${right^^} != *CONFIG.SYS ]] && fault "$where" "a base file is replaced: $right"
        total=$((total + size))
        if [[ $section == '[Copy_Files]' && ${left##*\\} =~ ^[Ii][Oo]\.[Ss][Yy][Ss]$ && $right == IO.SYS ]]; then hasIo=yes; fi
        if [[ $section == '[Copy_Files]' && ${left,,} == command.com && $right == COMMAND.COM ]]; then hasCommand=yes; fi
    done <"$file"
    unset -f resolve

    [[ $hasIo == yes ]] || fault "$name" 'the disk gets no IO.SYS'
    [[ $hasCommand == yes ]] || fault "$name" 'the disk gets no COMMAND.COM'
    [[ -n ${onDisk['bin\choice.com']:-} ]] || fault "$name" 'the disk gets no BIN\CHOICE.COM, which the menu needs'
    for built in whichdrv.com findram.com boothd.com; do
        [[ -n ${onDisk["bin\\$built"]:-} ]] || fault "$name" "the disk gets no BIN\\${built^^}, which the base files start"
    done
    if ((${#moduleBytes[@]} > 0)) || grep -q '^\[Create_CABs\]' "$file"; then
        [[ -n ${onDisk['bin\unpack.exe']:-} ]] || fault "$name" 'the disk has modules but no BIN\UNPACK.EXE'
    fi
    [[ -z ${onDisk['bin\extract.exe']:-} ]] || fault "$name" 'BIN\EXTRACT.EXE serves nothing on a disk'
    config=$(sed -n -E 's/^files\\config\\(.*)\.CFG=CONFIG\.SYS\r$/\1/p' "$file")
    found=$(sed -n -E 's/^files\\config\\(.*)\.FD=FDCONFIG\.SYS\r$/\1/p' "$file")
    [[ $config == "$found" ]] || fault "$name" 'CONFIG.SYS and FDCONFIG.SYS come from different files'
    found=$data/files/base_files/CONFIG.SYS
    [[ -z $config ]] || found=$data/files/config/$config.CFG
    while read -r built; do
        [[ -n ${onDisk[${built,,}]:-} ]] || fault "$name" "CONFIG.SYS loads $built, which the disk does not get"
    done < <(devices "$found")
    # Modules count with their unpacked size: packed they are smaller.
    if [[ $verbose == yes ]]; then echo "$name: at most $total of $diskBytes bytes"; fi
    ((total <= diskBytes)) || fault "$name" "about $total bytes do not fit on a disk of $diskBytes"
}

check_configurations() {
    local file baseBytes
    folder_bytes "$data/files/base_files"
    baseBytes=$REPLY
    for file in "$data/files"/*.ini; do
        if [[ $(basename "$file") != disklist.ini ]]; then check_configuration "$file" "$data"; fi
    done
    for file in "$demo/files"/*.ini; do
        if [[ -f $file ]]; then check_configuration "$file" "$demo" "$data"; fi
    done
}

check_shipped() {
    local file path
    while IFS= read -r -d '' file; do
        path=${file#"$data"/}
        [[ $documentation == *"\`${path//\//\\}\`"* ]] ||
            fault "$(shown "$file")" "docs/ does not mention \`${path//\//\\}\`"
    done < <(find "$data" -type f -print0)
    # shellcheck disable=SC2016  # the backquotes are those of the table
    while read -r path; do
        [[ -e $data/${path//\\//} ]] || fault "$(shown "$root/docs/shipped-files.md")" "there is no file $path"
    done < <(sed -n 's/^| `\([^`]*\)`.*/\1/p' "$root/docs/shipped-files.md")
    if [[ -e $data/keyfile.txt ]]; then fault 'data/keyfile.txt' 'its presence replaces the registry: ship no key file'; fi
    if [[ -e $data/dos ]]; then fault 'data/dos' 'DOS files would hide the import of the real ones'; fi
}

check_plugins() {
    local program name
    for program in "$data/plugins"/*.bat "$data/plugins"/*.com "$data/plugins"/*.exe; do
        [[ -f $program ]] || continue
        name=$(basename "$program")
        [[ -d $data/plugins/${name%.*} ]] || fault "$(shown "$program")" 'a plugin without a folder cannot be named'
    done
}

# shellcheck source=tests/data/check-drivers.sh
. "$(dirname "${BASH_SOURCE[0]}")/check-drivers.sh"
# shellcheck source=tests/data/check-answers.sh
. "$(dirname "${BASH_SOURCE[0]}")/check-answers.sh"

checks=(text_files names batch_files config_sys catalogue driver_store sample_drivers configurations templates plugins shipped)
if (($# > 1)); then checks=("${@:2}"); fi
for check in "${checks[@]}"; do "check_$check"; done
if ((faults > 0)); then
    echo "check-data: $faults faults" >&2
    exit 1
fi
echo 'check-data: nothing found'
