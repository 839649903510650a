#!/usr/bin/env bash
# Proves that the checks of the sources find faults: breaks a small project in one way at a time and expects the line that names
# the fault. Exits 1 if a fault is missed or if the unbroken project has one.
# shellcheck disable=SC2016  # the commands expand when they break the project
set -euo pipefail
shopt -s inherit_errexit
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# A repository around the temporary folder must have no effect.
export GIT_CEILING_DIRECTORIES=$work
failures=0
cases=0
fail() {
    printf '%s\n' "$@" | head -n 20
    failures=$((failures + 1))
}

make_project() {
    mkdir -p "$1/scripts" "$1/docs" "$1/floppy" "$1/src/common" "$1/src/disk" "$1/tools/shared" "$1/tools/cabarc" "$1/realmode/unpack"
    cp "$root"/scripts/{check,include-fence,make-zip,sources}.sh "$root/scripts/tidy.py" "$1/scripts/"
    cp "$root/.clang-format" "$root/.clang-tidy" "$1/"
    cd "$1"
    printf '#pragma once\n#include <string>\n' | tee src/common/Text.h src/disk/Folder.h src/disk/Tree.h tools/shared/Bytes.h >tools/cabarc/Packer.h
    printf '#include <windows.h>\n' >src/common/Text.cpp
    printf '#include "src/disk/Folder.h"\n\n#include <algorithm>\n\n#include "src/common/Text.h"\n' >src/disk/Folder.cpp
    printf '#include <unistd.h>\n' >tools/shared/Bytes_posix.cpp
    printf '#include <zlib.h>\n' >tools/cabarc/MsZipCompressor.cpp
    printf '#pragma once\n#include <string>\n' >floppy/Sector.h
    printf '#pragma once\n#include <stdint.h>\n' >realmode/unpack/Window.h
    printf '#pragma once\n#include "floppy/Sector.h"\n' >floppy/Sum.h
    : >CMakeLists.txt
    printf 'The [other](other page.md#part), the [same](page.md), the [web](https://example.org/).\n' >docs/page.md
    printf 'Nothing.\n' >'docs/other page.md'
    git init -q
    git add .
}
(make_project "$work/whole")

# run CHECK...: runs a check of the project $work/a clone from another folder; its output goes to $report, its exit code to
# $status.
run() {
    status=0
    report=$(cd / && "$work/a clone/scripts/$1" "${@:2}" 2>&1) || status=$?
}
# broken COMMANDS: a fresh copy of the project, changed by shell commands.
broken() {
    rm -rf "$work/a clone"
    cp -a "$work/whole" "$work/a clone"
    (cd "$work/a clone" && eval "$1")
}
# expect TEXT COMMANDS [CHECK...]: in a project that is changed by the commands the check, check.sh --quick when none is given,
# fails and one line has the text.
expect() {
    local check=("${@:3}")
    [ ${#check[@]} -gt 0 ] || check=(check.sh --quick)
    cases=$((cases + 1))
    broken "$2"
    run "${check[@]}"
    [ "$status" != 0 ] || fail "${check[*]} succeeds after: $2"
    grep -qF -- "$1" <<<"$report" || fail "${check[*]} does not say \"$1\" after: $2" "$report"
    if [[ $report == *'nothing found'* ]]; then fail "${check[*]} finds nothing after: $2"; fi
}
# expect_nothing COMMANDS CHECK...: the check succeeds.
expect_nothing() {
    cases=$((cases + 1))
    broken "$1"
    run "${@:2}"
    [ "$status" = 0 ] || fail "${*:2} fails after: $1" "$report"
}

expect_nothing : check.sh --quick
[[ $report == *'nothing found'* ]] || fail 'check.sh does not say that it found nothing' "$report"
expect_nothing : include-fence.sh
expect_nothing 'printf "int* place = nullptr;\n" >src/disk/Folder.cpp' tidy.py

expect 'The format differs' 'printf "int  x ;\n" >>src/disk/Folder.cpp'
expect 'docs/page.md has trailing spaces or CR LF' 'printf "end \n" >>docs/page.md'
expect 'docs/other page.md has trailing spaces or CR LF' 'printf "end\r\n" >>"docs/other page.md"'
expect 'docs/page.md links to absent.md' 'echo "[a](absent.md)" >>docs/page.md'
expect 'docs/other page.md links to absent.md#part' 'echo "[a](page.md) [b](absent.md#part)" >>"docs/other page.md"'
expect 'SC2086' 'printf "#!/bin/sh\nls \$1\n" >scripts/new.sh'
# Composed of parts, or the check would find them here.
disable=disable
silence="shellcheck $disable=SC2086"
lint=NO
lint+=LINT
for lines in "# $silence\nls \$1" "#!/bin/sh\n# $silence #\nls \$1" "# shellcheck source=/dev/null\n# $silence\nls \$1"; do
    expect 'scripts/new.sh:' "printf '#!/bin/sh\n$lines\n' >scripts/new.sh"
    grep -q '^scripts/new.sh:[0-9]* silences a checker' <<<"$report" || fail "a bare directive is missed: $lines" "$report"
done
for line in "int x;  // $lint" "int x;  // $lint(bugprone-*)" "// ${lint}NEXTLINE(bugprone-*)\nint x;" \
    '#pragma GCC diagnostic ignored "-Wall"' "#include <string>\nint x;  // $lint"; do
    expect 'silences a checker and does not say why' "printf '%b\n' '$line' >src/disk/Bare.h"
done
expect_nothing "printf '#!/bin/sh\n# $silence  # words to be split\nls \$1\n# Words to be split.\n# $silence\nls \$1\n' >scripts/new.sh" \
    check.sh --quick
expect_nothing "printf '// A reason.\nint a;  // $lint\nint b;  // $lint(bugprone-*): a reason\n' >src/disk/Reason.h" check.sh --quick

expect 'can be predicted: scripts/new.sh:2:' "printf '#!/bin/sh\n: >/tm''p/name.\$\$\n' >scripts/new.sh"
expect 'can be predicted: src/disk/Folder.cpp:' "echo 'std::string name = \"/tm''p/name\";' >>src/disk/Folder.cpp"
expect 'can be predicted: src/disk/Folder.cpp:' \
    "echo 'const auto folder = std::filesystem::temp_directory_path() / \"name\";' >>src/disk/Folder.cpp"

expect 'modernize-use-nullptr' 'printf "int* place = 0;\n" >src/disk/Folder.cpp' tidy.py src/disk/Folder.cpp

# The files of a folder are checked as one text, in the order of their names.
expect 'src/disk/Tree.cpp:3:' 'printf "// A tree.\n\nint* tree = 0;\n" >src/disk/Tree.cpp' tidy.py
expect 'src/disk/Tree.cpp:3:' 'printf "const int kSize = 1;\nint size = kSize;\n" >>src/disk/Folder.cpp
    printf "const int kSize = 2;\nint sizes = kSize;\nint* tree = 0;\n" >src/disk/Tree.cpp' tidy.py
expect 'src/disk/Tree.cpp:1:' 'echo "std::string tree;" >src/disk/Tree.cpp' tidy.py
expect 'src/disk/Tree.cpp:1:' 'echo "#include <nowhere>" >src/disk/Tree.cpp' tidy.py src/disk/Tree.cpp

expect 'src/common/Text.h includes src/disk/Folder.h, which is in no layer below' 'echo "#include \"src/disk/Folder.h\"" >>src/common/Text.h'
expect 'src/disk/Folder.cpp includes tools/shared/Bytes.h: the program and the companions share no code' 'echo "# include \"tools/shared/Bytes.h\"" >>src/disk/Folder.cpp'
expect 'floppy/Sum.h includes src/common/Text.h, which is in no layer below' 'echo "#include \"src/common/Text.h\"" >>floppy/Sum.h' include-fence.sh
expect 'floppy/Sum.h includes tools/shared/Bytes.h, which is in no layer below' 'echo "#include \"tools/shared/Bytes.h\"" >>floppy/Sum.h' include-fence.sh
expect_nothing 'echo "#include \"floppy/Sum.h\"" | tee -a src/common/Text.h >>tools/shared/Bytes.h' include-fence.sh
expect 'realmode/unpack/Window.h includes <string>' 'echo "#include <string>" >>realmode/unpack/Window.h' include-fence.sh
expect 'realmode/unpack/Window.h includes tools/shared/Bytes.h' 'echo "#include \"tools/shared/Bytes.h\"" >>realmode/unpack/Window.h' include-fence.sh
expect 'src/disk/Tree and src/disk/Folder include each other' 'echo "#include \"src/disk/Tree.h\"" >>src/disk/Folder.h
    echo "#include \"src/disk/Folder.h\"" >>src/disk/Tree.h'
expect 'src/disk/New.h includes <windows.h>' 'echo "#include <windows.h>" >src/disk/New.h' include-fence.sh
for header in windows.h fdi.h shlobj.h commctrl.h io.h fcntl.h direct.h unistd.h sys/stat.h stdio.h zlib.h; do
    expect "src/disk/Folder.cpp includes <$header>, which is not of the C++ standard library" \
        "echo '#include <$header>' >>src/disk/Folder.cpp" include-fence.sh
    expect "tools/cabarc/Packer.h includes <$header>, which is not of the C++ standard library" \
        "echo '  #  include<$header> // needed' >>tools/cabarc/Packer.h" include-fence.sh
done
expect 'tools/cabarc/MsZipCompressor.cpp includes <windows.h>' 'echo "#include <windows.h>" >>tools/cabarc/MsZipCompressor.cpp' include-fence.sh
expect 'src/disk/Folder.cpp includes windows.h, which is in no layer below' 'echo "#include \"windows.h\"" >>src/disk/Folder.cpp' include-fence.sh
expect 'src/disk/Folder.cpp includes in a way that cannot be followed' 'echo "#include HEADER" >>src/disk/Folder.cpp' include-fence.sh

# git lists the files to check: no list, half a list and an empty list are failures.
for check in 'check.sh --quick' include-fence.sh tidy.py; do
    read -ra words <<<"$check"
    expect 'git cannot list the files' 'rm -rf .git' "${words[@]}"
    expect 'there is no file to check' 'rm -r floppy realmode src tools && git add -A' "${words[@]}"
done
mkdir "$work/bin"
cat >"$work/bin/git" <<'GIT'
#!/bin/sh
printf 'src/common/Text.h\0'
exit 1
GIT
chmod +x "$work/bin/git"
for check in 'check.sh --quick' include-fence.sh tidy.py; do
    read -ra words <<<"$check"
    PATH=$work/bin:$PATH expect 'git cannot list the files' : "${words[@]}"
done
expect 'grep fails' 'rm docs/page.md && ln -s absent docs/page.md'

# Root may check what belongs to another user. Without the exception for this one folder git refuses.
export GIT_TEST_ASSUME_DIFFERENT_OWNER=1
broken :
if git -C "$work/a clone" ls-files >/dev/null 2>&1; then fail 'git ignores the owner, so this proves nothing'; fi
expect_nothing : check.sh --quick
expect_nothing : include-fence.sh
expect_nothing 'git -c safe.directory="$PWD" -c user.name=a -c user.email=a@b commit -q -m "Begin" && mkdir ../packed && echo a >../packed/a' \
    make-zip.sh "$work/packed" "$work/packed.zip"
unset GIT_TEST_ASSUME_DIFFERENT_OWNER

[ "$failures" = 0 ] || exit 1
echo "$cases cases, all as expected"
