# shellcheck shell=sh disable=SC2154
# Completion for bash, as a shell would ask for it.

check_completion() {
    command -v bash >/dev/null || return 0
    mkdir -p "$folder/complete/folder"
    cd "$folder/complete" || return
    : >'a filter.c'
    : >fir.c
    : >fir.vhd
    # complete_words WORD...: the completions of the last word
    cat >"$temporary/complete.bash" <<'SCRIPT'
source "$1"
shift
COMP_WORDS=("$@")
COMP_CWORD=$(($# - 1))
COMPREPLY=()
# Debian's own helper, where it is loaded, reads the word from cur.
[ -z "${WITH_HELPER:-}" ] || _filedir() { COMPREPLY=("helper: *.$1 for $cur"); }
[[ $(complete -p xfc) == *'-F _xfc xfc' ]] || echo 'not registered'
_xfc
printf '%s\n' "${COMPREPLY[@]}" | LC_ALL=C sort
SCRIPT
    completes() {
        bash --norc --noprofile "$temporary/complete.bash" "$prefix/share/bash-completion/completions/xfc" "$@"
    }
    expect() {
        expected=$1
        shift
        actual=$(completes "$@" | tr '\n' '|')
        [ "$actual" = "$expected|" ] || fail "completion of '$*' gives '$actual'"
    }

    expect 'a filter.c|fir.c|folder' xfc ''
    expect 'fir.c' xfc 'fi'
    expect '' xfc -
    expect "$(echo "$switches" | LC_ALL=C sort | tr '\n' '|' | sed 's/|$//')" xfc fir.c ''
    expect '-s3|-s5|-sy' xfc fir.c -rc -s
    expect '32|36' xfc fir.c -mm ''
    expect '36' xfc fir.c -mm 36
    expect '1|2|3' xfc fir.c -ns ''
    expect '0|1|2|3' xfc fir.c -mv ''
    expect '10|11|12|13|14|15|16' xfc fir.c -xc 1
    expect '' xfc fir.c -fd ''
    WITH_HELPER=yes expect 'helper: *.c for fi' xfc 'fi'
    # A source called like a switch takes no value.
    expect '-vlg' xfc -mm -v
    cd "$folder" || return
}
