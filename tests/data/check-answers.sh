# shellcheck shell=bash
# Sourced by check-data.sh: compares the templates of the answer files with answers.table. Uses its $data, fault and shown.
# shellcheck disable=SC2154  # check-data.sh sets them

# Fills known with the regular expression of each value, by TEMPLATE/SECTION/KEY.
declare -A known=()
read_answers() {
    local line section='' name key number=0
    local -a names=()
    while IFS= read -r line; do
        number=$((number + 1))
        if [[ $line == 'templates '* ]]; then
            read -r -a names <<<"${line#templates }"
        elif [[ $line == '['*']' ]]; then
            section=${line:1:-1}
        elif [[ $line == *=* && $line != '#'* ]]; then
            key=${line%%=*}
            for name in "${names[@]}"; do known[$name/$section/$key]=${line#*=}; done
        elif [[ -n $line && $line != '#'* ]]; then
            fault "tests/data/answers.table line $number" "neither a section nor a key: $line"
        fi
    done <"$(dirname "${BASH_SOURCE[0]}")/answers.table"
}

# check_answers NAME: answers.table has every line of the template NAME with its value, no line occurs twice, and none is
# missing.
check_answers() {
    local file=$data/files/inf_files/$1_template.inf name line section='' key pair where number=0
    local -A found=()
    name=$(shown "$file")
    while IFS= read -r line; do
        number=$((number + 1))
        line=${line%$'\r'}
        where="$name line $number"
        [[ -n $line && $line != ';'* ]] || continue
        if [[ $line == '['*']' ]]; then
            section=${line:1:-1}
            continue
        fi
        key=${line%%=*}
        pair=$1/$section/$key
        if [[ $line != *=* ]]; then
            fault "$where" "neither a section nor an answer: $line"
        elif [[ -z ${known[$pair]+x} ]]; then
            fault "$where" "the setup knows no such answer: [$section] $key"
        elif [[ ! ${line#*=} =~ ^(${known[$pair]})$ ]]; then
            fault "$where" "the setup knows no such value: $line"
        elif [[ -n ${found[$pair]+x} ]]; then
            fault "$where" "the same answer is given twice: [$section] $key"
        fi
        found[$pair]=1
    done <"$file"
    for pair in "${!known[@]}"; do
        [[ $pair != "$1"/* || -n ${found[$pair]+x} ]] || fault "$name" "this answer is missing: ${pair#*/}"
    done
}
