// Adds two YDouble values in adder form, or subtracts the second when addsub is 1: the common part xfc_add_internal with
// the sum in two halves, whose header says how. A sum of two converted IEEE doubles, converted back, is correctly
// rounded.
// Latency 4 + shiftspeed + doublespeed cycles: a register behind order, align, carry and settle always, another behind
// difference with shiftspeed, another behind add with doublespeed. synthesize changes nothing.
module xfc_alufp2x
  #(parameter shiftspeed = 1, doublespeed = 0, synthesize = 0)
  (input sysclk, reset, enable, addsub,
   input [77:1] aa,
   input aasat, aazip, aanan,
   input [77:1] bb,
   input bbsat, bbzip, bbnan,
   output [77:1] cc,
   output ccsat, cczip, ccnan);

  generate
    if (shiftspeed < 0 || shiftspeed > 1 || doublespeed < 0 || doublespeed > 1 || synthesize < 0 || synthesize > 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  xfc_add_internal #(64, 13, 1, shiftspeed, doublespeed, 1) add
    (sysclk, enable, addsub, aa, aasat, aazip, aanan, bb, bbsat, bbzip, bbnan, cc, ccsat, cczip, ccnan);
endmodule
