#!/usr/bin/env bash
# SPDX-FileCopyrightText: VARDO Technologies
# SPDX-License-Identifier: LicenseRef-VARDO
#
# lint.sh [--quick]
#
# Runs every check that does not run the code. Says what is wrong, and how to put it right; ends with 1 after a failed
# check. With --quick it leaves out clang-tidy and the compilation of each header alone, which take minutes.
source "$(dirname "$0")/lib.sh"

FAILED=()

# check NAME REMEDY COMMAND...: runs the command; when it fails, the remedy is printed here and the name at the end.
check() {
    local name=$1 remedy=$2
    shift 2
    say "$name"
    "$@" && return
    FAILED+=("$name")
    printf '*** %s failed. %s\n' "$name" "$remedy" >&2
}

# ours PATTERN...: prints the project's own files, those not yet committed included, with a NUL after each.
ours() {
    local file
    git ls-files -co --exclude-standard -z -- "$@" | while IFS= read -r -d '' file; do
        [[ ! -e $file ]] || printf '%s\0' "$file"
    done
}

layout() { ours '*.cpp' '*.h' | xargs -0 clang-format --dry-run -Werror; }

white_space() {
    local found
    found=$(ours '*.cpp' '*.h' '*.ui' '*.sh' '*.cmake' '*.txt' '*.md' '*.xml' '*.in' '*.conf' '*.json' |
        xargs -0 grep -nP '[ \t]+$|\t' /dev/null) || true
    [[ -z $found ]] || { printf '%s\n' "$found" && return 1; }
}

owners() {
    local file bad=0
    while IFS= read -r -d '' file; do
        if ! head -n 4 "$file" | grep -q 'SPDX-FileCopyrightText:' ||
            ! head -n 4 "$file" | grep -q 'SPDX-License-Identifier:'; then
            echo "$file: no SPDX lines at its head"
            bad=1
        fi
    done < <(ours '*.cpp' '*.h' '*.sh' '*.cmake' '*CMakeLists.txt')
    return "$bad"
}

shell_scripts() { ours '*.sh' .ci/run samples/installation/gallery/content-tool | xargs -0 shellcheck -x -P scripts; }

# tidy BUILD PATTERN...: checks those sources as that build folder compiles them.
tidy() {
    local build=$1
    shift
    ours "$@" | xargs -0 -n 1 -P "$(nproc)" clang-tidy-16 -p "$build" --quiet 2>/dev/null
}

# cppcheck knows neither a test suite without a prefix, nor that readdir is safe while each thread reads a stream of its
# own (readdir(3)). In a test no other thread asks for the user's name.
CPPCHECK=('--enable=warning,performance,portability' --inline-suppr --error-exitcode=1 --quiet --std=c++20
    --library=qt --library=posix --library=boost --library=googletest '-DINSTANTIATE_TEST_SUITE_P(...)='
    --suppress=readdirCalled '--suppress=getpwuidCalled:tests/*')

other_slips() { ours '*.cpp' | xargs -0 cppcheck -j "$(nproc)" "${CPPCHECK[@]}" -I . -I tests; }

headers_alone() { cmake --build --preset debug --target check-headers; }

# Counts the lines that are not blank: of the tests, with their fixtures and fuzzers, and of all other code.
share_of_tests() {
    local tests code
    tests=$(ours 'tests/*.cpp' 'tests/*.h' 'tests/*.sh' | xargs -0 cat | grep -c '[^[:space:]]')
    code=$(ours '*.cpp' '*.h' '*.sh' ':!tests' | xargs -0 cat | grep -c '[^[:space:]]')
    echo "tests: $tests lines of at most $((MOST_TESTS * code / 100)), other code: $code lines"
    [[ $((100 * tests)) -le $((MOST_TESTS * code)) ]]
}
MOST_TESTS=36  # to 100 lines of other code

# The desktop's files hold their texts in every language that the program speaks.
desktop_languages() {
    local file pattern bad=0
    while read -r file pattern; do
        diff <(grep -oP 'Code="(?!en)\K\w+' i18n/translations/languages.xml | sort) \
            <(grep -oP "$pattern" "packaging/desktop/$file" | tr - _ | sort) && continue
        echo "$file: $pattern"
        bad=1
    done <<'END'
vardo-product-update.desktop.in ^GenericName\[\K\w+(?=\]=.)
vardo-product-update.desktop.in ^Comment\[\K\w+(?=\]=.)
vardo-product-update.desktop.in ^Keywords\[\K\w+(?=\]=.*;$)
autostart.desktop.in ^Comment\[\K\w+(?=\]=.)
metainfo.xml.in <summary\ xml:lang="\K[\w-]+(?=">.)
metainfo.xml.in <p\ xml:lang="\K[\w-]+(?=">.)
END
    return "$bad"
}

# The program has no help text: its manual page names the options of its command line in the synopsis and in headings.
manual_page() {
    local options page=packaging/man/VARDOProductUpdate.1.in
    options=$(grep -oP 'Add(Flag|Value)Parameter\("\K\w+' app/CApplicationFactory.cpp | sort)
    diff <(echo "$options") <(grep -oP '^\.RB \[ \\-\K\w+' "$page" | sort) &&
        diff <(echo "$options") <(grep -A 1 -x '\.TP' "$page" | grep -oP '^\.BI? \\-\K\w+' | sort)
}

QUICK=${1:-}
[[ $QUICK =~ ^(--quick)?$ ]] || fail "usage: lint.sh [--quick]"
ensure_packages build fuzz lint
check "Layout" "Run: git ls-files '*.cpp' '*.h' | xargs clang-format -i" layout
check "White space" "Remove the blanks at the ends of these lines, and write blanks for tabs." white_space
check "SPDX lines" "Begin the file with the two lines that every other file begins with." owners
check "Shell scripts" "See what shellcheck says above." shell_scripts
check "Share of tests" "Drop what others hold or what restates the code, and make rows of one table." share_of_tests
check "Desktop files" "Add or remove the languages above." desktop_languages
check "Manual page" "Bring its synopsis and OPTIONS (>) in line with the command line (<)." manual_page
check "cppcheck" "Mend it, or suppress it in the line before with cppcheck-suppress, what it is, and a reason." other_slips
if [[ -z $QUICK ]]; then
    build debug
    check "Headers alone" "A header includes all that it needs itself." headers_alone
    check "clang-tidy" "Mend it, or suppress it in the line with NOLINT(check) and a reason." \
        tidy build/debug '*.cpp' ':!tests/fuzz'
    # clang-tidy reads how to compile the fuzzers from a build folder that clang has configured but not built.
    cmake --preset fuzz -B build/fuzz-lint --log-level=WARNING >/dev/null
    check "clang-tidy of the fuzzers" "The same." tidy build/fuzz-lint 'tests/fuzz/*.cpp'
fi
[[ ${#FAILED[@]} == 0 ]] || fail "failed: $(printf '%s, ' "${FAILED[@]}" | sed 's/, $//')"
say "Nothing to complain about"
