// Adds two products of xfc_mulfp1_dot, or subtracts the second when addsub is 1: the common part xfc_add_xfloat, as in
// xfc_alufp1x. Products up to 4 use up one guard bit, and the sum is halved when it uses up the last.
// Latency 3 + shiftspeed + outputpipe cycles.
module xfc_alufp1_dot
  #(parameter mantissa = 32, shiftspeed = 1, outputpipe = 1)
  (input sysclk, reset, enable, addsub,
   input [mantissa+10:1] aa,
   input aasat, aazip, aanan,
   input [mantissa+10:1] bb,
   input bbsat, bbzip, bbnan,
   output [mantissa+10:1] cc,
   output ccsat, cczip, ccnan);

  xfc_add_xfloat #(mantissa, shiftspeed, outputpipe) add
    (sysclk, reset, enable, addsub, aa, aasat, aazip, aanan, bb, bbsat, bbzip, bbnan, cc, ccsat, cczip, ccnan);
endmodule
