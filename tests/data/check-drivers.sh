# shellcheck shell=bash
# Sourced by check-data.sh: the checks of the driver store that ships, of the sample drivers of the demonstration and of the
# templates of the answer files. Uses its $data, $demo, fault, shown and read_ini.
# shellcheck disable=SC2154  # check-data.sh sets them

# Each group with its description file, its PCI list and the extension of its drivers.
declare -A groupMembers=([aspi]='scsi.txt scsi.pci SYS' [ndis]='ndis.txt ndis.pci DOS COM' [odi16]='odi.txt odi16.pci COM'
    [odi32]='odi.txt odi32.pci LAN')

# The store ships empty, with a text in each group that says how to fill it.
check_driver_store() {
    local group member readme path
    for group in "${!groupMembers[@]}"; do
        readme=$data/drivers/$group/README.TXT
        if [[ ! -f $readme ]]; then
            fault "$(shown "$readme")" 'nothing says how to add a driver to this group'
            continue
        fi
        for member in ${groupMembers[$group]}; do
            [[ $member == *.* ]] || member=NAME.$member
            grep -q -F " $member " "$readme" || fault "$(shown "$readme")" "it does not mention $member"
        done
        grep -q -F "\\drivers\\$group\\" "$readme" || fault "$(shown "$readme")" 'its example packs into another group'
    done
    while IFS= read -r -d '' path; do
        [[ $path =~ /(aspi|ndis|odi16|odi32)(/README\.TXT)?$ ]] ||
            fault "$(shown "$path")" 'the store ships nothing but its groups, each with a README.TXT'
    done < <(find "$data/drivers" -mindepth 1 -print0)
}

# Fills sampleDrivers with GROUP/NAME of each line of the demonstration's table, in capitals, and checks the tables.
declare -A sampleDrivers=()
check_sample_drivers() {
    local table=$demo/drivers/drivers.table adapters=$demo/drivers/adapters.table
    local group name family description vendor device path number=0 where both=no tableName adaptersName
    local -A families=() seen=() served=() perGroup=()
    tableName=$(shown "$table")
    adaptersName=$(shown "$adapters")
    while read -r family vendor device description; do
        number=$((number + 1))
        [[ -n $family && $family != '#'* ]] || continue
        where="$adaptersName line $number"
        [[ "$vendor $device" =~ ^[0-9A-F]{4}\ [0-9A-F]{4}$ ]] ||
            fault "$where" "no PCI numbers of four hexadecimal digits in capitals: $vendor $device"
        [[ -n $description && $description != *[^\ -~]* ]] || fault "$where" 'the adapter has no name'
        [[ -z ${seen[$vendor $device]:-} ]] || fault "$where" "another line has the adapter $vendor $device"
        seen[$vendor $device]=1
        families[$family]=1
    done <"$adapters"

    number=0
    while read -r group name family description; do
        number=$((number + 1))
        [[ -n $group && $group != '#'* ]] || continue
        where="$tableName line $number"
        [[ -n ${groupMembers[$group]:-} ]] || fault "$where" "there is no group $group"
        [[ $name =~ ^[A-Z0-9_]{1,8}$ ]] || fault "$where" "no name of at most eight capitals and digits: $name"
        [[ -n ${families[$family]:-} ]] || fault "$where" "there is no family $family of adapters"
        [[ -n $description && $description != *[^\ -~]* ]] || fault "$where" 'the driver has no description'
        [[ -z ${sampleDrivers[${group^^}/$name]:-} ]] || fault "$where" "another line has the driver $name of this group"
        sampleDrivers[${group^^}/$name]=1
        served[$family]=1
        perGroup[$group]=$((${perGroup[$group]:-0} + 1))
    done <"$table"
    for group in "${!groupMembers[@]}"; do
        ((${perGroup[$group]:-0} >= 3)) || fault "$tableName" "fewer than three drivers of the group $group"
    done
    for family in "${!families[@]}"; do
        [[ -n ${served[$family]:-} ]] || fault "$adaptersName" "no driver is for the family $family"
    done
    for name in "${!sampleDrivers[@]}"; do
        if [[ $name == ODI16/* && -n ${sampleDrivers[ODI32/${name#*/}]:-} ]]; then both=yes; fi
    done
    [[ $both == yes ]] || fault "$tableName" 'no driver has the same name in odi16 and odi32'
    while IFS= read -r -d '' path; do
        name=${path#"$demo/drivers/"}
        group=${name%/*}
        name=${name##*/}
        [[ -n ${sampleDrivers[${group^^}/${name%.NIC}]:-} ]] || fault "$(shown "$path")" 'these settings belong to no driver'
        [[ $group != ndis ]] || grep -q '^DriverName=.' "$path" || fault "$(shown "$path")" 'there is no DriverName'
    done < <(find "$demo/drivers" -mindepth 2 -type f -print0)
}

# check_default_driver WHERE LINE DISK: a line of [DefaultDrivers] in the configuration of DISK. rows holds the catalogue, by
# DISK/KEY.
check_default_driver() {
    local where=$1 line=${2^^} group name key
    if [[ ! $line =~ ^\ *(ASPI|NDIS|ODI16|ODI32)\ *\\\ *([A-Z0-9_]{1,8})(\.CAB)?\ *$ ]]; then
        fault "$where" "no driver: $2"
        return
    fi
    group=${BASH_REMATCH[1]}
    name=${BASH_REMATCH[2]}
    # The build would stop and ask for a driver that is missing.
    [[ $where == demo/* ]] || fault "$where" "the store ships empty, so there is no driver $group\\$name"
    [[ -n ${sampleDrivers[$group/$name]:-} ]] || fault "$where" "the demonstration has no driver $group\\$name"
    case $group in
        ASPI) key=aspi ;;
        NDIS) key=ndis ;;
        *) key=netw ;;
    esac
    [[ ${rows[$3/$key]:-} == 1 ]] || fault "$where" "the disk takes no drivers of the group $group: its row lacks $key=1"
}

# check_template NAME SECTION KEYS...: the keys that the program sets are in that section, where a reader looks for them. ini
# contains the template.
check_template() {
    local file=$data/files/inf_files/$1 section=$2 key
    shift 2
    [[ $(grep -c -x -F "[$section]"$'\r' "$file") == 1 ]] ||
        fault "$(shown "$file")" "there is not one section [$section], which the program writes to"
    for key in "$@"; do
        [[ -n ${ini[$section/$key]+x} ]] ||
            fault "$(shown "$file")" "[$section] has no line for $key, which the program sets"
    done
}

check_templates() {
    local name file line
    read_answers
    for name in key win98 winme win2k; do
        file=$data/files/inf_files/${name}_template.inf
        if [[ ! -f $file ]]; then
            fault "$(shown "$file")" 'this template is missing'
            continue
        fi
        # The profile functions treat a line with "=" as a key, whatever precedes it.
        while read -r line; do
            fault "$(shown "$file")" "a comment has a \"=\": $line"
        done < <(grep '^;.*=' "$file")
        check_answers "$name"
        name=${name}_template.inf
        read_ini "$file"
        case $name in
            key_*)
                check_template "$name" Version Signature
                check_template "$name" Setup ProductKey
                ;;
            win2k_*)
                check_template "$name" UserData FullName OrgName ProductID ComputerName
                check_template "$name" Identification JoinWorkgroup JoinDomain
                # No setup may change a disk without asking.
                for line in Data/AutoPartition=0 Unattended/Repartition=No Unattended/FileSystem=LeaveAlone; do
                    [[ ${ini[${line%=*}]:-} == "${line#*=}" ]] ||
                        fault "$(shown "$file")" "[${line%%/*}] does not say ${line#*/}: a disk may be changed unasked"
                done
                ;;
            *)
                check_template "$name" Version Signature
                check_template "$name" Setup ProductKey Express
                check_template "$name" NameAndOrg Name Org Display
                check_template "$name" Network ComputerName Workgroup Display
                check_template "$name" VREDIR LogonDomain
                ;;
        esac
    done
}
