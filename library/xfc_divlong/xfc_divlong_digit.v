// One digit of an unsigned quotient, without restoring: the divisor is subtracted from the remainder, added when the
// remainder is negative. The state has, from high to low, the remainder (two's complement, a bit more), the divisor and
// the dividend's bits that are still to come, behind which the quotient's digits move up. A digit is 1 where the
// remainder is not negative; it enters one step later, so that nothing stands behind the carry chain.
module xfc_divlong_digit
  #(parameter width = 32)   // bits of dividend, divisor and quotient
  (input sysclk, enable,
   input [3*width:0] state,
   output [3*width:0] next_state);

  wire [width:0] remainder;
  wire [width-1:0] divisor, quotient;
  assign {remainder, divisor, quotient} = state;

  // A bit below the lowest carries the complement's unit in.
  wire negative = remainder[width];
  wire [width+1:0] shifted = {remainder[width-1:0], quotient[width-1], 1'b1};
  wire [width+1:0] addend = {1'b0, divisor, 1'b0} ^ {width+2{!negative}};
  wire [width+1:0] sum = shifted + addend;
  wire unused = &{1'b0, sum[0]};

  xfc_register #(3 * width + 1, 1) divlong_digit_0
    (sysclk, enable, {sum[width+1:1], divisor, quotient[width-2:0], !negative}, next_state);
endmodule
