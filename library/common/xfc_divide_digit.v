// One digit of a quotient in base 4: how often the divisor goes into four times the remainder, which is below the
// divisor before and after. The state has, from high to low, remainder, the complements of the divisor and of three
// times the divisor (two bits more), whose addition subtracts without inverters, and the quotient's digits so far,
// which move up by two bits.
module xfc_divide_digit
  #(parameter width         = 24,   // bits of remainder and divisor
    parameter quotient_bits = 25,
    parameter enabled       = 1)    // 1: a register behind, 0: none
  (input sysclk, enable,
   input [3*width+2+quotient_bits-1:0] state,
   output [3*width+2+quotient_bits-1:0] next_state);

  wire [width-1:0] remainder, not_divisor;
  wire [width+1:0] not_triple;
  wire [quotient_bits-1:0] quotient;
  assign {remainder, not_divisor, not_triple, quotient} = state;
  wire unused = &{1'b0, quotient[quotient_bits-1:quotient_bits-2]};

  // The three differences are computed at once, modulo 2 ** (width + 2); the carries say that they are not negative.
  // A bit below the lowest carries the complements' unit in.
  wire [width+1:0] wide = {remainder, 2'b00};
  wire [width+3:0] less_one = {1'b0, wide, 1'b1} + {3'b011, not_divisor, 1'b1};
  wire [width+3:0] less_two = {1'b0, wide, 1'b1} + {2'b01, not_divisor, 2'b11};
  wire [width+3:0] less_three = {1'b0, wide, 1'b1} + {1'b0, not_triple, 1'b1};
  wire two = less_two[width+3];
  wire odd = two ? less_three[width+3] : less_one[width+3];
  wire [width-1:0] next_remainder =
    two ? (less_three[width+3] ? less_three[width:1] : less_two[width:1]) :
    (less_one[width+3] ? less_one[width:1] : wide[width-1:0]);
  wire unused_bits = &{1'b0, wide[width+1:width], less_one[width+2:width+1], less_two[width+2:width+1],
                       less_three[width+2:width+1], less_one[0], less_two[0], less_three[0]};

  xfc_register #(3 * width + 2 + quotient_bits, enabled) divide_digit_0
    (sysclk, enable, {next_remainder, not_divisor, not_triple, quotient[quotient_bits-3:0], two, odd}, next_state);
endmodule
