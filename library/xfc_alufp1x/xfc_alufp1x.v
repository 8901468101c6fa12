// Adds two XFloat values in adder form, or subtracts the second when addsub is 1: the common part xfc_add_xfloat, whose
// header says how. A sum of two converted IEEE singles, converted back, is correctly rounded.
// Latency 3 + shiftspeed + outputpipe cycles.
module xfc_alufp1x
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
