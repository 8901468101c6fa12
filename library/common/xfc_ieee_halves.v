// How two IEEE numbers stand to each other, in two halves of their magnitudes, so that no carry chain is long.
// marks, from high to low: signs of a and b, nan of a and b, both zero, then a less than and equal to b in the upper
// half and in the lower half of exponent and fraction. Subnormal numbers are zeros.
module xfc_ieee_halves
  #(parameter exponent_bits = 8,
    parameter fraction_bits = 23)
  (input [exponent_bits+fraction_bits:0] a,
   input [exponent_bits+fraction_bits:0] b,
   output [8:0] marks);

  localparam magnitude_bits = exponent_bits + fraction_bits;
  localparam lower_bits = (magnitude_bits + 1) / 2;

  wire [magnitude_bits-lower_bits-1:0] a_upper = a[magnitude_bits-1:lower_bits];
  wire [magnitude_bits-lower_bits-1:0] b_upper = b[magnitude_bits-1:lower_bits];
  wire [lower_bits-1:0] a_lower = a[lower_bits-1:0];
  wire [lower_bits-1:0] b_lower = b[lower_bits-1:0];
  wire a_is_nan = (&a[magnitude_bits-1:fraction_bits]) & (a[fraction_bits-1:0] != 0);
  wire b_is_nan = (&b[magnitude_bits-1:fraction_bits]) & (b[fraction_bits-1:0] != 0);
  wire both_are_zero = !(|(a[magnitude_bits-1:fraction_bits] | b[magnitude_bits-1:fraction_bits]));
  assign marks = {a[magnitude_bits], b[magnitude_bits], a_is_nan, b_is_nan, both_are_zero,
                  a_upper < b_upper, a_upper == b_upper, a_lower < b_lower, a_lower == b_lower};
endmodule
