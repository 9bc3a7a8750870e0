#!/bin/sh
# The batch file of the compile kit: compiles the written C file and the kit's runtime into one program.
# Its only argument is the output name. The C file is $TESSALY_C_FILE, or the setting FCompFileName, looked up here.
# What is printed about the C file is also in the log, the file of that name with ".log" after it.
# Exit status: 0 done, 64 wrong argument, 127 no compiler, 1 no C file to compile, else the compiler's own.
set -u
newline='
'

say() {
    printf 'compile.sh: %s\n' "$1" >&2
}

# An old program must not pass for the result of a compile that never came about.
fail() {
    rm -f -- "$output"
    say "$2"
    exit "$1"
}

# Sets $kit, the folder this file really is in: the editor may start it through a link.
find_kit() {
    self=$0
    while [ -h "$self" ]; do
        link=$(readlink -- "$self")
        case $link in
        /*) self=$link ;;
        *) self=$(dirname -- "$self")/$link ;;
        esac
    done
    case $self in
    /*) kit=${self%/*} ;;
    */*) kit=$(pwd)/${self%/*} ;;
    *) kit=$(pwd) ;;
    esac
}

# Looks into a settings file, if it is there, and sets $source. Succeeds when the search ends here: with the setting, or
# because the file takes it away.
look_into() {
    [ -f "$1" ] || return
    [ -r "$1" ] || fail 1 "cannot read the settings file $1"
    [ -n "$settings" ] || settings=$1
    source=$(od -An -v -tu1 <"$1" | LC_ALL=C awk -f "$kit/setting.awk")
    [ $? -ne 1 ] && settings=$1
}

# The same in a folder with settings. Relative folders are passed over.
look_into_folder() {
    case $1 in
    /*) look_into "$1/tessaly/settings.reg" ;;
    *) return 1 ;;
    esac
}

# The files that the editor reads, the one that counts most first.
look_into_all() {
    if [ -n "${TESSALY_SETTINGS:-}" ]; then
        look_into "$TESSALY_SETTINGS"
        return
    fi
    case ${XDG_CONFIG_HOME:-} in
    /*) own=$XDG_CONFIG_HOME ;;
    *) own=${HOME:-}/.config ;;
    esac
    look_into_folder "$own" && return
    folders=${XDG_CONFIG_DIRS:-/etc/xdg}
    while [ -n "$folders" ]; do
        if look_into_folder "${folders%%:*}"; then
            # In a file for all users ~/ is the home of each.
            case $source in [~]/*) [ -z "${HOME:-}" ] || source=$HOME/${source#??} ;; esac
            return
        fi
        case $folders in
        *:*) folders=${folders#*:} ;;
        *) folders= ;;
        esac
    done
}

# Sets $source, the C file as the setting names it.
find_source() {
    settings=
    source=${TESSALY_C_FILE:-}
    if [ -z "$source" ]; then
        look_into_all
        [ -n "$settings" ] ||
            fail 1 "no settings file: ${TESSALY_SETTINGS:-tessaly/settings.reg in the configuration folders} does not exist"
        [ -n "$source" ] ||
            fail 1 "the setting FCompFileName, the path of the C file, is missing in $settings"
    fi
    log=$source.log
    case $output in
    "$source") is="the C file itself" ;;
    "$log") is="that of the log" ;;
    *) return ;;
    esac
    say "the output name is $is: $output"
    exit 64
}

# Sets $cache to our folder in the user's cache, or to nothing where there is no place for one.
find_cache() {
    case ${XDG_CACHE_HOME:-} in
    /*) cache=$XDG_CACHE_HOME/tessaly ;;
    *) cache=${HOME:-}/.cache/tessaly ;;
    esac
    case $cache in
    /*) [ -d "$cache" ] || mkdir -p -- "$cache" 2>/dev/null || cache= ;;
    *) cache= ;;
    esac
}

# Prints what is other when clang is: marks of the program "$1" and of the list of all libraries. Fails for other
# compilers, which are quick to tell, and where that may be another program.
clang_marks() {
    case ${1##*/} in
    clang* | cc) program=$(readlink -f -- "$(command -v -- "$1")") ;;
    *) return 1 ;;
    esac
    case ${program##*/} in clang*) ;; *) return 1 ;; esac
    IFS= read -r start <"$program"
    case $start in ?ELF*) ;; *) return 1 ;; esac
    [ -z "${LD_LIBRARY_PATH:-}" ] && stat -L -c '%d %i %s %.9Y %.9Z' -- "$program" /etc/ld.so.cache
}

# Sets $version to what the compiler "$@" says that it is. clang takes a quarter of a compile to say it, so its answer is
# kept, after its marks.
find_version() {
    if [ -z "$cache" ] || ! marks=$(clang_marks "$1" 2>/dev/null); then
        version=$("$@" --version 2>/dev/null)
        return
    fi
    { IFS= read -r program && IFS= read -r libraries && IFS= read -r version; } 2>/dev/null <"$cache/clang" &&
        [ "$program$newline$libraries" = "$marks" ] && return
    version=$("$1" --version 2>/dev/null)
    version=${version%%"$newline"*}
    own=$(mktemp -- "$cache/new-XXXXXX" 2>/dev/null) || return
    printf '%s\n' "$marks" "$version" >"$own" && mv -f -- "$own" "$cache/clang"
}

# Sets $runtime to the runtime as an object, compiled by "$@", or to its source where there is no place for that. The
# object is kept in the user's cache under the hash of all that it is made from: each program would have it compiled
# again. Several builds may make it at once; each gives a whole file that name. Optimizing it takes twice the time, and a
# frame then gains 0.2 microseconds.
find_runtime() {
    [ -n "$cache" ] || return
    hash=$({
        { printf '%s\n' "$version" "$@" && cat -- "$kit/runtime.c" "$kit"/runtime/* "$kit"/include/*; } | sha256sum
    } 2>/dev/null)
    [ -n "$hash" ] || return
    runtime=$cache/runtime-${hash%% *}.o
    [ -f "$runtime" ] || make_runtime "$@"
    [ -f "$runtime" ]
}

make_runtime() {
    find "$cache" -name 'runtime-*.o' -mtime +90 -exec rm -f {} + 2>/dev/null
    own=$(mktemp -d -- "$cache/new-XXXXXX" 2>/dev/null) || return
    for word; do
        shift
        case $word in --coverage | -ftest-coverage | -fprofile-*) ;; *) set -- "$@" "$word" ;; esac
    done
    "$@" -w -O0 -c -o "$own/all" "$kit/runtime.c" >/dev/null 2>&1 && mv -f -- "$own/all" "$runtime" 2>/dev/null
    rm -rf -- "$own"
}

compile() {
    find_cache
    find_version "$@"
    # clang would warn about every letter of the ANSI code page in a text; gcc takes the bytes as they are.
    case $version in
    *clang*) set -- "$@" -Wno-invalid-source-encoding ;;
    # gcc counts the lone CR after a prototype as a line end, but not when it quotes the source. Its excerpts would
    # show the wrong lines.
    *"Free Software Foundation"*) set -- "$@" -fno-diagnostics-show-caret ;;
    esac
    # A name like -x.c or @x would be taken for an option.
    case $source in [-@]*) source=./$source ;; esac
    case $output in [-@]*) output=./$output ;; esac
    # Not all that a handler is given must be used, nor all fields of a frame be set.
    set -- "$@" -Wall -Wextra -Wno-unused-parameter -Wno-missing-field-initializers -Wformat-security -Wshadow
    # The user's options are words, as make takes them.
    set -f
    # shellcheck disable=SC2086
    set -- "$@" -g -O1 -std=gnu11 -I "$kit/include" ${CFLAGS:-}
    set +f
    find_runtime "$@" || runtime=$kit/runtime.c
    # shellcheck disable=SC2086
    set -- "$@" $hidden
    # gcov's notes and counts go beside the C file, under the name that gcc gives them there. The runtime has none.
    if [ -n "${TESSALY_COVERAGE:-}" ]; then
        notes=${source##*/}
        notes=$source.${notes%.*}
        case $version in
        *clang*) set -- "$@" -Xclang "-coverage-notes-file=$notes.gcno" -Xclang "-coverage-data-file=$notes.gcda" ;;
        *) set -- "$@" -dumpdir "$source." ;;
        esac
        set -- "$@" -O0 --coverage
    fi
    # Files of the user are beside the PSF file, and the program comes there, too.
    case $output in */*) set -- "$@" -I "${output%/*}/" ;; *) set -- "$@" -I . ;; esac
    # -x c: the suffix of the C file is the user's choice, and .C would be C++.
    # shellcheck disable=SC2086
    set -f && "$@" -o "$output" -x c "$source" -x none "$runtime" ${LDFLAGS:-} -lm
}

# Prints the first compiler there is.
find_compiler() {
    for name in cc gcc clang; do
        command -v "$name" && return
    done
    say "there is no C compiler: none of cc, gcc and clang is installed. Install gcc or clang, or set CC."
    return 1
}

build() {
    if [ ! -f "$source" ]; then
        say "the C file does not exist: $source (setting FCompFileName in $settings)"
        return 1
    fi
    if [ ! -r "$source" ]; then
        say "cannot read the C file: $source"
        return 1
    fi
    [ -n "${CC:-}" ] || CC=$(find_compiler) || return 127
    if command -v "$CC" >/dev/null; then
        compile "$CC"
        return
    fi
    # CC may hold options, too, as in "ccache gcc"; a path with spaces has been found above.
    set -f
    # shellcheck disable=SC2086
    set -- $CC
    set +f
    if ! command -v "${1:-}" >/dev/null; then
        say "there is no C compiler: CC is set to '$CC', which is not found. Install gcc or clang, or correct CC."
        return 127
    fi
    compile "$@"
}

# Builds with all that is printed in the log, and sets $status.
build_with_log() {
    build >"$log" 2>&1
    status=$?
}

# Sets $hidden to options that leave out those of the kit's own calls whose names the block has itself: the compiler
# points at them. Fails when there is none.
hide_names() {
    while read -r directive name; do
        case "$directive $name" in
        '#ifndef '[A-Z][a-z]*) ! grep -q "^$name in vexlib\.h:" "$log" || hidden="$hidden -D$name=$name" ;;
        esac
    done <"$kit/include/vexlib.h"
    [ -n "$hidden" ]
}

if [ $# -ne 1 ] || [ -z "$1" ]; then
    echo "usage: compile.sh OUTPUT" >&2
    exit 64
fi
output=$1
case $output in
*.[cChH] | *.[pP][sS][fF])
    say "the output name is that of a source file: $output"
    exit 64
    ;;
esac
# It is going to be removed: not a folder, and not /dev/null either.
if [ -e "$output" ] && [ ! -f "$output" ]; then
    say "the output name is not that of a file: $output"
    exit 64
fi

find_kit
find_source
rm -f -- "$output" "$log" 2>/dev/null
hidden=
# Through a file and not a pipe: a compiler may leave something running that holds the end of a pipe open.
if { true >"$log"; } 2>/dev/null; then
    build_with_log
    if [ "$status" -ne 0 ] && hide_names; then
        build_with_log
        # Where the block misses the call after all, it was only called in a wrong way.
        if [ "$status" -ne 0 ] && grep -q 'implicit-function-declaration\]' "$log"; then
            hidden=
            build_with_log
        fi
    fi
    [ ! -s "$log" ] || cat -- "$log" >&2
else
    build
    status=$?
fi
[ "$status" -eq 0 ] || rm -f -- "$output"
exit "$status"
