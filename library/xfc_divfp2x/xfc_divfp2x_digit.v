// One digit of a quotient whose divisor b is near 1. What is left of the dividend comes as `remainder`, 61 bits behind
// the point (as b has them); the digit is the integer nearest to it 2 ** shift times. Behind the digit
// remainder * 2 ** shift - digit * b is left, in magnitude below 1. `codes` are what xfc_product_rows multiplies by to
// subtract: the digits of minus the digit, xfc_divfp2x_codes makes them.
//   step rows:  digit times b, subtracted; the quotient's next digit
//   step rest:  what is left; its codes
module xfc_divfp2x_digit
  #(parameter shift       = 7,
    parameter rows_border = 1,   // 1: a register behind the step
    parameter rest_border = 1)
  (input sysclk, enable,
   input [61:0] b,
   input [63:0] remainder,       // two's complement
   input [8:0] codes,
   input [54:0] quotient,
   output [61:0] next_b,
   output [63:0] next_remainder,
   output [8:0] next_codes,
   output [54:0] next_quotient);

  localparam point = 61;
  localparam divisor_bits = point + 1;
  localparam digit_bits = 8;
  localparam rows_bits = divisor_bits + 1 + digit_bits;
  localparam quotient_bits = 55;
  localparam low_bits = point + 1 - shift;         // of the remainder, below the digit

  // rows
  wire [rows_bits-1:0] rows_d;
  wire short_d;
  xfc_product_rows #(divisor_bits + 1, 4) subtract
    (sysclk, enable, {1'b0, b}, {divisor_bits+2{1'b0}}, 1'b0, codes[digit_bits-1:0], codes[digit_bits], rows_d,
     short_d);
  wire [digit_bits-1:0] digit = remainder[point-shift+digit_bits-1:point-shift];
  wire [quotient_bits:0] quotient_sum =            // a bit below carries the rounding in
    {quotient[quotient_bits-shift-1:0], {shift{1'b0}}, 1'b1} +
    {{quotient_bits-digit_bits{digit[digit_bits-1]}}, digit, remainder[point-shift-1]};
  wire unused = &{1'b0, rows_d, quotient, quotient_sum[0], remainder};

  wire [divisor_bits-1:0] rows, rows_b;
  wire short;
  wire [low_bits-1:0] low;
  wire [quotient_bits-1:0] rows_quotient;
  xfc_register #(divisor_bits, rows_border) rows_0 (sysclk, enable, rows_d[divisor_bits-1:0], rows);
  xfc_register #(1, rows_border) rows_1 (sysclk, enable, short_d, short);
  xfc_register #(divisor_bits, rows_border) rows_2 (sysclk, enable, b, rows_b);
  xfc_register #(low_bits, rows_border) rows_3 (sysclk, enable, remainder[low_bits-1:0], low);
  xfc_register #(quotient_bits, rows_border) rows_4 (sysclk, enable, quotient_sum[quotient_bits:1], rows_quotient);

  // rest: its sign is the highest of so many bits
  wire [point:0] rest = {low, {shift-1{1'b0}}, short} + rows;
  wire [point+2:0] remainder_d = {{2{rest[point]}}, rest};
  wire [digit_bits:0] codes_d;
  xfc_divfp2x_codes next_digit (rest[point], rest[point:point-7], rest[point-8], codes_d);

  xfc_register #(divisor_bits, rest_border) rest_0 (sysclk, enable, rows_b, next_b);
  xfc_register #(point + 3, rest_border) rest_1 (sysclk, enable, remainder_d, next_remainder);
  xfc_register #(digit_bits + 1, rest_border) rest_2 (sysclk, enable, codes_d, next_codes);
  xfc_register #(quotient_bits, rest_border) rest_3 (sysclk, enable, rows_quotient, next_quotient);
endmodule
