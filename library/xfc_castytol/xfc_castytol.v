// Converts a YDouble value in adder form to an integer of 32 bits, toward zero as C does. Out of range it is the
// nearest end, nan is 0. Exponent field 0 is zero.
//   step place:     a window for the integer's bits and 31 behind them, shifted by no, one or two words
//   step coarse:    shift right by whole bytes
//   step fine:      shift right by single bits, with what goes over the edge
//   step truncate:  toward zero is one more for a negative number that lost bits
//   step settle:    the ends of the range
// Latency 2 + normspeed cycles: registers behind place, fine and settle; a fourth stands behind coarse, then truncate.
module xfc_castytol
  #(parameter normspeed = 3)
  (input sysclk, reset, enable,
   input [77:1] aa,
   input aasat, aazip, aanan,
   output [32:1] cc);

  generate
    if (normspeed < 1 || normspeed > 3)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam exponent_bits = 13;
  localparam mantissa_bits = 64;
  localparam exponent_without_shift = 1112;   // the mantissa's lowest bit is worth 2 ** 31
  localparam place_border = 1;
  localparam coarse_border = normspeed / 2;
  localparam truncate_border = normspeed / 3;

  // place, coarse, fine, truncate, settle
  xfc_adder_form_to_long #(exponent_bits, exponent_without_shift, place_border, coarse_border, truncate_border)
    to_long (sysclk, enable, aa[mantissa_bits+exponent_bits:exponent_bits+1], aa[exponent_bits:1],
             {aanan, aazip, aasat}, cc);
endmodule
