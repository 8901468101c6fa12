// Puts an IEEE number together: what is below the normal numbers is zero, what is above them infinite; nan, then sat,
// then zip go before the number.
module xfc_pack_ieee
  #(parameter exponent_bits = 8,    // of the IEEE format
    parameter fraction_bits = 23,
    parameter wide_bits     = 12)   // bits of the exponent that comes, two's complement, more than exponent_bits + 1
  (input [wide_bits-1:0] exponent,  // with the IEEE format's bias
   input [fraction_bits-1:0] fraction,
   input [3:0] marks,               // sign, nan, zip, sat
   output [exponent_bits+fraction_bits:0] packed_number);

  wire below_zero = exponent[wide_bits-1];
  wire too_small = below_zero | (exponent == 0);
  wire too_large = !below_zero & ((|exponent[wide_bits-2:exponent_bits]) | (&exponent[exponent_bits-1:0]));
  wire flushed = !marks[0] & (marks[1] | too_small);
  wire infinite = marks[0] | too_large;
  assign packed_number =
    marks[2] ? {1'b0, {exponent_bits+1{1'b1}}, {fraction_bits-1{1'b0}}} :
    flushed ? {marks[3], {exponent_bits+fraction_bits{1'b0}}} :
    infinite ? {marks[3], {exponent_bits{1'b1}}, {fraction_bits{1'b0}}} :
    {marks[3], exponent[exponent_bits-1:0], fraction};
endmodule
