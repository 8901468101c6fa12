// Adds two XFloat values in adder form, or subtracts the second when addsub is 1: the common part xfc_add_internal with
// one carry chain, whose header says how. A sum of two converted IEEE singles, converted back, is correctly rounded.
// Latency 3 + shiftspeed + outputpipe cycles: the fourth register is that behind carry, the fifth behind difference.
module xfc_add_xfloat
  #(parameter mantissa = 32, shiftspeed = 1, outputpipe = 1)
  (input sysclk, reset, enable, addsub,
   input [mantissa+10:1] aa,
   input aasat, aazip, aanan,
   input [mantissa+10:1] bb,
   input bbsat, bbzip, bbnan,
   output [mantissa+10:1] cc,
   output ccsat, cczip, ccnan);

  generate
    if ((mantissa != 32 && mantissa != 36) || shiftspeed < 0 || shiftspeed > 1 || outputpipe < 0 || outputpipe > 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam difference_border = (shiftspeed + outputpipe) / 2;
  localparam carry_border = (shiftspeed + outputpipe + 1) / 2;
  xfc_add_internal #(mantissa, 10, 0, difference_border, 0, carry_border) add
    (sysclk, enable, addsub, aa, aasat, aazip, aanan, bb, bbsat, bbzip, bbnan, cc, ccsat, cczip, ccnan);
endmodule
