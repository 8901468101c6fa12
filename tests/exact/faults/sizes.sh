# Programs that are too large, too deep or too long.

case $size in
    full) many_statements=200000 large_mebibytes=100 ;;
    *) many_statements=10000 large_mebibytes=4 ;;
esac

# The output of `float a, y; main() { y = a; }`, for programs that must come to the same.
write_plain_copy() {
    printf 'float a, y;\nmain() { y = a; }\n' >p.c
    run p.c
    mv p.vhd "$1"
}

free_kibibytes=$(df -Pk "$room" | awk 'NR == 2 { print $4 }')
if [ "$free_kibibytes" -ge 1048576 ]; then
    case_is 'a very large source of one line compiles'
    write_plain_copy q.vhd
    { printf 'float a, y; main() { /*' && repeat_text $((large_mebibytes * 65536)) '* comment text *' &&
        printf '/ y = a; }'; } >p.c
    run p.c
    expect_success p.vhd
    expect_same p.vhd q.vhd

    case_is 'a very large source of many lines compiles and its lines are counted'
    write_plain_copy q.vhd
    { printf 'float a, y; main() {\n' && repeat_line $((large_mebibytes * 65536)) ' #include <file>' &&
        printf 'y = a; }\n=\n'; } >p.c
    run p.c
    expect_log_begins "line $((large_mebibytes * 65536 + 3)) error syntax error at =\n"
    expect_syntax_errors 1 $((large_mebibytes * 65536 + 4)) p.vhd
    expect_same p.vhd q.vhd

    case_is 'a very large source without sense is one syntax error'
    repeat_text $((large_mebibytes * 65536)) ') 1 } = + "x" , ' >p.c
    run p.c
    expect_log_begins 'line 1 error syntax error at )\n'
    expect_syntax_errors 1 1 p.vhd
fi

# Nesting that the parser has room for is nothing special; deeper nesting fills its stack. The source's second line is
# the text, so many times the repeated one, and the rest.
too_deep=1000000
nest() {
    printf '%s\n%s' "$1" "$2"
    repeat_text "$3" "$4"
    printf '%s' "$5"
}
overflow='line 2 error pcyacc internal stack overflow at'

case_is 'forty parentheses around an operand are no operation'
write_plain_copy q.vhd
nest 'float a, y;' 'main() { y = ' 40 '(' "a$(repeat_text 40 ')'); }" >p.c
run p.c
expect_success p.vhd
expect_same p.vhd q.vhd

case_is 'forty blocks are as good as one'
write_plain_copy q.vhd
nest 'float a, y;' 'main() { ' 40 '{' "y = a; }$(repeat_text 40 '}')" >p.c
run p.c
expect_success p.vhd
expect_same p.vhd q.vhd

expect_overflow() {
    run p.c
    expect_log_begins "$overflow $1\n"
    expect_success p.vhd
}

case_is 'a million parentheses fill the stack of the parser'
nest 'float a, y;' 'main() { y = ' $too_deep '(' 'a' >p.c
expect_overflow '('

case_is 'a million blocks fill the stack of the parser'
nest 'float a, y;' 'main() ' $too_deep '{' '' >p.c
expect_overflow '{'

case_is 'a million declarators fill the stack of the parser'
nest 'float a, y;' 'float ' $too_deep '(' 'b' >p.c
expect_overflow '('

case_is 'a million initializers fill the stack of the parser'
nest 'float a, y;' 'float b = ' $too_deep '{' '1' >p.c
expect_overflow '{'

case_is 'a million minus signs fill the stack of the parser'
nest 'float a, y;' 'main() { y = ' $too_deep '- ' 'a' >p.c
expect_overflow '-'

case_is 'a million pointers fill the stack of the parser'
nest 'float a, y;' 'float ' $too_deep '*' 'p;' >p.c
expect_overflow '*'

case_is 'a million assignments in one fill the stack of the parser'
nest 'float a, y;' 'main() { ' $too_deep 'y = ' 'a; }' >p.c
run p.c
expect_log_begins "$overflow"
expect_success p.vhd

case_is 'a million conditions fill the stack of the parser'
nest 'float a, y;' 'main() { ' $too_deep 'if (a) ' 'y = a; }' >p.c
run p.c
expect_log_begins "$overflow"
expect_success p.vhd

case_is 'a sum of a million operands has too many tokens'
nest 'float a, y;' 'main() { y = ' $too_deep 'a + ' 'a; }' >p.c
run p.c
expect_refusal 'Expression assigned to y has more than 1000 tokens\n'

case_is 'a million subscripts on the left are no plain name'
nest 'float a, y;' 'main() { a' $too_deep '[1]' ' = y; }' >p.c
run p.c
expect_refusal ''
expect_log_ends 'DFG3: Error in Expression'

case_is 'very many statements give as many instances'
{ printf 'float a, b, y;\nmain() {\n' && repeat_line $many_statements 'y = a + b;' && printf '}\n'; } >p.c
run p.c
expect_success p.vhd
instances=$(grep -c ': xfc_alufp1x$' p.vhd)
[ "$instances" -eq $many_statements ] || complain "there are $instances adders"

case_is 'twenty thousand variables give as many ports'
awk 'BEGIN {
    printf "float v0"
    for (i = 1; i < 20000; i++) printf ", v%d", i
    print ";\nmain() { v1 = v0; }"
}' >p.c
run p.c
expect_success p.vhd
# Only v1 is no input, only v0 no output.
inputs=$(grep -c '^ *v[0-9]* : IN STD_LOGIC_VECTOR' p.vhd)
outputs=$(grep -c '^ *v[0-9]* : OUT STD_LOGIC_VECTOR' p.vhd)
[ "$inputs" -eq 19999 ] && [ "$outputs" -eq 19999 ] || complain "there are $inputs inputs and $outputs outputs"

# Constants: 31 characters are read; numbers too large for an integer are the largest integer.
write_scaled() {
    printf 'double x, y;\nmain() { y = x * %s; }\n' "$1" >p.c
    run p.c
}

case_is 'an integer constant of many digits is clamped'
printf 'long n, m;\nmain() { m = n * %s; }\n' "$(repeat_text 500 9)" >p.c
run p.c
expect_success p.vhd
grep -q '<= conv_std_logic_vector(2147483647,32);  -- Long$' p.vhd || complain 'the largest integer is not there'

case_is 'a floating constant of many digits is read up to its 31st character'
write_scaled "99999999999999999999999999999.0$(repeat_text 400 7)"
expect_success p.vhd
grep -q -e '-- 99999999999999991433150857216.000000$' p.vhd || complain 'its value is another one'

case_is 'a floating constant whose digits come late is zero'
write_scaled "0.$(repeat_text 400 0)1"
expect_success p.vhd
mv p.vhd q.vhd
write_scaled 0.0
expect_same p.vhd q.vhd

case_is 'a constant of thousands of digits does not fit'
write_scaled "$(repeat_text 5000 9)"
expect_refusal 'L0029: PCLEX input buffer overflowed\n'

case_is 'an initializer of many digits keeps 32 bits of the largest 64-bit number'
printf 'long n = %s, m;\nmain() { m = n; }\n' "$(repeat_text 500 9)" >p.c
run p.c
expect_success p.vhd
grep -q '^Value : -1\*\*\*MAKE EXPRESSIONS' "$room/out" || complain 'the value is another one'
