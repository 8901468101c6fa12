// Converts an XFloat value in adder form to an integer of 32 bits, toward zero as C does. Out of range it is the
// nearest end, nan is 0. Exponent field 0 is zero.
//   step place:     a window for the integer's bits and 31 behind them, shifted by no, one or two words
//   step coarse:    shift right by whole bytes
//   step fine:      shift right by single bits, with what goes over the edge
//   step truncate:  toward zero is one more for a negative number that lost bits
//   step settle:    the ends of the range
// Latency 1 + normspeed cycles: registers behind fine and settle; a third stands behind place, a fourth behind coarse.
module xfc_castxtol
  #(parameter mantissa = 32, normspeed = 3)
  (input sysclk, reset, enable,
   input [mantissa+10:1] aa,
   input aasat, aazip, aanan,
   output [32:1] cc);

  generate
    if ((mantissa != 32 && mantissa != 36) || normspeed < 1 || normspeed > 3)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam exponent_bits = 10;
  localparam wide_bits = 64;
  localparam exponent_without_shift = 152 + mantissa;   // the mantissa's lowest bit is worth 2 ** 31
  localparam place_border = normspeed / 2;
  localparam coarse_border = normspeed / 3;
  localparam truncate_border = 0;

  // place, coarse, fine, truncate, settle
  wire [wide_bits-1:0] wide = {{wide_bits-mantissa{aa[mantissa+exponent_bits]}},
                               aa[mantissa+exponent_bits:exponent_bits+1]};
  xfc_adder_form_to_long #(exponent_bits, exponent_without_shift, place_border, coarse_border, truncate_border)
    to_long (sysclk, enable, wide, aa[exponent_bits:1], {aanan, aazip, aasat}, cc);
endmodule
