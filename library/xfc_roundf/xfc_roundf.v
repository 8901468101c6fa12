// Rounds an IEEE single to an integer: down, up, toward zero, to nearest with halves away from zero for rounding 0 to
// 3. Exact; the sign stays, of a zero too. Subnormal numbers are zeros, infinities stay, nan is the quiet one.
//   step place:  the bits of the fraction that are worth less than 1
//   step cut:    without them; whether one unit comes to the magnitude. Below 1 the number becomes 1/2
//   step lower:  the unit and the lower half of the sum
//   step upper:  the upper half, which carries into the exponent; zeros and nan
// Latency 3 cycles: a register behind place, cut and upper.
module xfc_roundf
  #(parameter rounding = 0)
  (input sysclk, reset, enable,
   input [32:1] aa,
   output [32:1] cc);

  generate
    if (rounding < 0 || rounding > 3)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam exponent_bits = 8;
  localparam fraction_bits = 23;
  localparam lower_border = 0;

  // place, cut, lower, upper
  xfc_round_ieee #(exponent_bits, fraction_bits, rounding, lower_border) round (sysclk, enable, aa, cc);
endmodule
