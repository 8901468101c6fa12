# Sources that are no programs: a mebibyte of one character and the like.

mebibyte=1048576

case_is 'an empty source is one syntax error at the end of line 1'
: >p.c
run p.c
expect_log_begins 'line 1 error syntax error at \n'
expect_syntax_errors 1 1 p.vhd

case_is 'a line of a mebibyte without a blank or a line end is a token that does not fit'
repeat_character $mebibyte a >p.c
run p.c
expect_refusal 'L0029: PCLEX input buffer overflowed\n'
expect_log_ends ''

case_is 'a mebibyte of blanks is a token that does not fit'
repeat_character $mebibyte ' ' >p.c
run p.c
expect_refusal 'L0029: PCLEX input buffer overflowed\n'

case_is 'a mebibyte of line ends is one syntax error behind the last of them'
repeat_character $mebibyte '\n' >p.c
run p.c
expect_log_begins 'line 1048577 error syntax error at \n'
expect_syntax_errors 1 1048577 p.vhd

case_is 'a mebibyte of opening parentheses fills the stack of the parser'
repeat_character $mebibyte '(' >p.c
run p.c
expect_log_begins 'line 1 error pcyacc internal stack overflow at (\n'
expect_success p.vhd

case_is 'a mebibyte of minus signs is one syntax error'
repeat_character $mebibyte '\055' >p.c
run p.c
expect_log_begins 'line 1 error syntax error at -'
expect_syntax_errors 1 1 p.vhd

case_is 'a mebibyte of opening braces is one syntax error'
repeat_character $mebibyte '{' >p.c
run p.c
expect_log_begins 'line 1 error syntax error at {\n'
expect_syntax_errors 1 1 p.vhd

case_is 'a mebibyte of bytes of value 255 is one syntax error'
repeat_character $mebibyte '\377' >p.c
run p.c
expect_log_begins 'line 1 error syntax error at \377\n'
expect_syntax_errors 1 1 p.vhd

case_is 'bytes of value 0 end the source'
head -c $mebibyte /dev/zero >p.c
run p.c
expect_log_begins 'line 1 error syntax error at \n'
expect_syntax_errors 1 1 p.vhd

case_is 'a byte of value 0 behind the program hides the rest'
{ write_small && printf '\000 ) ) )'; } >p.c
write_small >q.c
run p.c
expect_success p.vhd
run q.c
sed 's/ q / p /g; s/OF q$/OF p/; s/END q;/END p;/' q.vhd | sed 's/OF q IS/OF p IS/' >r.vhd
expect_same p.vhd r.vhd

case_is 'a comment that is never closed reaches to the end'
{ printf '/*' && repeat_line 131072 '* text'; } >p.c
run p.c
expect_log_begins 'line 131073 error syntax error at \n'
expect_syntax_errors 1 131073 p.vhd

case_is 'a comment of one long line without an asterisk does not fit'
{ printf '/*' && repeat_character $mebibyte x; } >p.c
run p.c
expect_refusal 'L0029: PCLEX input buffer overflowed\n'

case_is 'a missing line end at the end changes nothing'
printf 'float a, b, y;\nmain() { y = a * b; }' >p.c
run p.c
expect_success p.vhd
mv p.vhd q.vhd
write_small >p.c
run p.c
expect_same p.vhd q.vhd
