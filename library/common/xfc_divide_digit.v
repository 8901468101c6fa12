// One digit of a quotient in base 4: how often the divisor goes into four times the remainder, which is below the
// divisor before and after. The state has, from high to low, remainder, the complements of the divisor and of three
// times the divisor (its two low bits left out), whose addition subtracts without inverters, whether the divisor's two
// low bits are zero, and the quotient's digits so far, which move up by two bits.
module xfc_divide_digit
  #(parameter width         = 24,   // bits of remainder and divisor
    parameter quotient_bits = 25,
    parameter enabled       = 1)    // 1: a register behind, 0: none
  (input sysclk, enable,
   input [3*width+1+quotient_bits-1:0] state,
   output [3*width+1+quotient_bits-1:0] next_state);

  wire [width-1:0] remainder, not_divisor, not_triple;
  wire low_is_zero;
  wire [quotient_bits-1:0] quotient;
  assign {remainder, not_divisor, not_triple, low_is_zero, quotient} = state;
  wire unused = &{1'b0, quotient[quotient_bits-1:quotient_bits-2]};

  // The three differences are computed at once, modulo 2 ** (width + 2) and without their two low bits, in which four
  // times the remainder has zeros; the carries say that they are not negative. A bit below the lowest takes in the
  // carry from there: the complements' unit gets through where the subtrahend's two low bits are zero.
  wire [width+1:0] minuend = {1'b0, remainder, 1'b1};
  wire [width+1:0] less_one = minuend + {3'b011, not_divisor[width-1:2], low_is_zero};
  wire [width+1:0] less_two = minuend + {2'b01, not_divisor};
  wire [width+1:0] less_three = minuend + {1'b0, not_triple, low_is_zero};
  wire two = less_two[width+1];
  wire odd = two ? less_three[width+1] : less_one[width+1];
  wire [width-3:0] high =
    odd ? (two ? less_three[width-2:1] : less_one[width-2:1]) :
    (two ? less_two[width-2:1] : remainder[width-3:0]);
  wire [1:0] low = {odd ? not_divisor[1] ^ (two | not_divisor[0]) : two & !not_divisor[0], odd & !not_divisor[0]};
  wire unused_bits = &{1'b0, less_one[width:width-1], less_two[width:width-1], less_three[width:width-1],
                       less_one[0], less_two[0], less_three[0]};

  xfc_register #(3 * width + 1 + quotient_bits, enabled) divide_digit_0
    (sysclk, enable, {high, low, not_divisor, not_triple, low_is_zero, quotient[quotient_bits-3:0], two, odd},
     next_state);
endmodule
