# What the checks share. A case begins with its sentence, runs the compiler, and says what it expects.

failures=0
cases=0
sentence=
status=0

# Starts a case in a new empty folder; the sentence is printed when the case fails.
case_is() {
    sentence=$1
    cases=$((cases + 1))
    cd "$room" || exit 1
    [ "$cases" -eq 1 ] || rm -rf "$room/$((cases - 1))"
    mkdir -m 755 "$cases"
    cd "$cases" || exit 1
}

complain() {
    echo "not so: $sentence: $*" >&2
    failures=$((failures + 1))
}

# Runs the compiler; keeps status, standard output and standard error outside of the case's folder.
run() {
    "$xfc" "$@" >"$room/out" 2>"$room/err"
    status=$?
}

expect_status() {
    [ "$status" -eq "$1" ] || complain "status is $status instead of $1; standard error: $(head -c 200 "$room/err")"
}

# The standard error is exactly this text (printf's escapes count).
expect_error() {
    printf "$1" >"$room/expected"
    cmp -s "$room/expected" "$room/err" || complain "standard error is: $(head -c 200 "$room/err")"
}

expect_log_begins() {
    printf "$1" >"$room/expected"
    head -c "$(wc -c <"$room/expected")" "$room/out" | cmp -s - "$room/expected" ||
        complain "standard output begins with: $(head -c 120 "$room/out")"
}

expect_log_ends() {
    printf "$1" >"$room/expected"
    tail -c "$(wc -c <"$room/expected")" "$room/out" | cmp -s - "$room/expected" ||
        complain "standard output ends with: $(tail -c 120 "$room/out")"
}

good_verdict='\n\n\nNo syntax error was found by the parser\n\n\n'

# A run without errors that wrote the file whole.
expect_success() {
    expect_status 0
    expect_error ''
    expect_log_ends "$good_verdict"
    expect_whole "$1"
}

# A run that found so many syntax errors, read so many lines and wrote the file from what it understood.
expect_syntax_errors() {
    expect_status 1
    if [ "$1" -eq 1 ]; then
        expect_error '\n\n 1 error found by the parser  \n\n\n'
    else
        expect_error "\n\n $1 errors found by the parser  \n\n\n"
    fi
    expect_log_ends "linenumber $2\n"
    expect_whole "$3"
}

# A run that ended early with this text on the standard error, and left nothing.
expect_refusal() {
    expect_status 1
    expect_error "$1"
    expect_missing p.vhd
}

expect_whole() {
    if [ ! -f "$1" ]; then
        complain "$1 is missing"
    elif [ "$(tail -n 2 "$1" | head -n 1)" != 'END GEN;' ]; then
        complain "$1 does not end as a design does"
    fi
}

expect_missing() {
    { [ ! -e "$1" ] && [ ! -L "$1" ]; } || complain "$1 was left behind"
}

expect_same() {
    cmp -s "$1" "$2" || complain "$1 differs from $2"
}

# The file is either as it should be or not there.
expect_whole_or_missing() {
    [ ! -e "$1" ] || expect_same "$1" "$2"
}

# COUNT characters, one by one the same; the character is given as tr knows it.
repeat_character() {
    head -c "$1" /dev/zero | tr '\0' "$2"
}

# COUNT times the line or, without its newline, the text.
repeat_line() {
    awk -v count="$1" -v text="$2" 'BEGIN { for (i = 0; i < count; i++) print text }'
}
repeat_text() {
    awk -v count="$1" -v text="$2" 'BEGIN { for (i = 0; i < count; i++) printf "%s", text }'
}

# A program of COUNT statements; its log and its output are some hundred bytes a statement.
write_squares() {
    awk -v count="$1" 'BEGIN {
        printf "float v0"
        for (i = 1; i <= count; i++) printf ", v%d", i
        printf ";\nmain() {\n"
        for (i = 1; i <= count; i++) printf "v%d = v0 * v0;\n", i
        printf "}\n"
    }'
}

write_small() {
    printf 'float a, b, y;\nmain() { y = a * b; }\n'
}
