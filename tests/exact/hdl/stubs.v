// Stub components: names, parameters and ports as the generated instances use them, no behaviour, every output
// tied to 0. They let a Verilog tool elaborate a generated design.
//
// Buses are numbered from 1; aa, bb and cc carry the value field, the flags sat, zip and nan have ports of their
// own. Widths in bits: single precision mantissa+10, double precision 77 or 67 (multiplier form), IEEE 32 or 64.

`timescale 1 ps / 1 ps

// Bits of the single precision mantissa, for the two conversions whose parameters do not tell it.
`ifndef XFC_MANTISSA
`define XFC_MANTISSA 32
`endif

// Verilog wants a default for every parameter. -1 (4 for optimization, which may be negative) lies out of range,
// so that an instance which forgets a parameter is refused.
`define XFC_SWITCH(value) `XFC_RANGE(value, 0, 1)
`define XFC_RANGE(value, low, high) (value) >= (low) && (value) <= (high)

// A module that exists nowhere: elaborating it is the one portable way to refuse a parameter value.
`define XFC_REQUIRE(condition) \
  generate if (!(condition)) parameter_missing_or_out_of_range refused (); endgenerate

// integer arithmetic

module xfc_alulong
  (input sysclk, reset, enable, addsub,
   input [32 : 1] aa,
   input [32 : 1] bb,
   output [32 : 1] cc);
  assign cc = 0;
endmodule

module xfc_mullong
  (input sysclk, reset, enable,
   input [32 : 1] aa,
   input [32 : 1] bb,
   output [32 : 1] cc);
  assign cc = 0;
endmodule

// single precision arithmetic

module xfc_alufp1_dot
  #(parameter mantissa = -1, shiftspeed = -1, outputpipe = -1)
  (input sysclk, reset, enable, addsub,
   input [mantissa + 10 : 1] aa, input aasat, aazip, aanan,
   input [mantissa + 10 : 1] bb, input bbsat, bbzip, bbnan,
   output [mantissa + 10 : 1] cc, output ccsat, cczip, ccnan);
  `XFC_REQUIRE((mantissa == 32 || mantissa == 36) && `XFC_SWITCH(shiftspeed) && `XFC_SWITCH(outputpipe))
  assign cc = 0, ccsat = 0, cczip = 0, ccnan = 0;
endmodule

module xfc_alufp1x
  #(parameter mantissa = -1, shiftspeed = -1, outputpipe = -1)
  (input sysclk, reset, enable, addsub,
   input [mantissa + 10 : 1] aa, input aasat, aazip, aanan,
   input [mantissa + 10 : 1] bb, input bbsat, bbzip, bbnan,
   output [mantissa + 10 : 1] cc, output ccsat, cczip, ccnan);
  `XFC_REQUIRE((mantissa == 32 || mantissa == 36) && `XFC_SWITCH(shiftspeed) && `XFC_SWITCH(outputpipe))
  assign cc = 0, ccsat = 0, cczip = 0, ccnan = 0;
endmodule

module xfc_mulfp1_dot
  #(parameter mantissa = -1, device = -1, optimization = 4, synthesize = -1)
  (input sysclk, reset, enable,
   input [32 : 1] aa,
   input [32 : 1] bb,
   output [mantissa + 10 : 1] cc, output ccsat, cczip, ccnan);
  `XFC_REQUIRE((mantissa == 32 || mantissa == 36) && `XFC_RANGE(device, 0, 2) && optimization <= 3 &&
               `XFC_SWITCH(synthesize))
  assign cc = 0, ccsat = 0, cczip = 0, ccnan = 0;
endmodule

module xfc_mulfp1x
  #(parameter mantissa = -1, ieeeoutput = -1, xoutput = -1, multoutput = -1, divoutput = -1,
    outputscale = -1, synthesize = -1)
  (input sysclk, reset, enable,
   input [mantissa + 10 : 1] aa, input aasat, aazip, aanan,
   input [mantissa + 10 : 1] bb, input bbsat, bbzip, bbnan,
   output [(ieeeoutput ? 32 : mantissa + 10) : 1] cc, output ccsat, cczip, ccnan);
  `XFC_REQUIRE((mantissa == 32 || mantissa == 36) && `XFC_SWITCH(ieeeoutput) && `XFC_SWITCH(xoutput) &&
               `XFC_SWITCH(multoutput) && `XFC_SWITCH(divoutput) && `XFC_SWITCH(outputscale) &&
               `XFC_SWITCH(synthesize) && ieeeoutput + xoutput + multoutput + divoutput == 1)
  assign cc = 0, ccsat = 0, cczip = 0, ccnan = 0;
endmodule

module xfc_divfp1x
  #(parameter mantissa = -1, ieeeoutput = -1, xoutput = -1, multoutput = -1, divoutput = -1,
    roundconvert = -1, synthesize = -1)
  (input sysclk, reset, enable,
   input [mantissa + 10 : 1] aa, input aasat, aazip, aanan,
   input [mantissa + 10 : 1] bb, input bbsat, bbzip, bbnan,
   output [(ieeeoutput ? 32 : mantissa + 10) : 1] cc, output ccsat, cczip, ccnan);
  `XFC_REQUIRE((mantissa == 32 || mantissa == 36) && `XFC_SWITCH(ieeeoutput) && `XFC_SWITCH(xoutput) &&
               `XFC_SWITCH(multoutput) && `XFC_SWITCH(divoutput) && `XFC_SWITCH(roundconvert) &&
               `XFC_SWITCH(synthesize) && ieeeoutput + xoutput + multoutput + divoutput == 1)
  assign cc = 0, ccsat = 0, cczip = 0, ccnan = 0;
endmodule

module xfc_normfp1x
  #(parameter mantissa = -1, inputnormalize = -1, roundnormalize = -1, normspeed = -1, target = -1)
  (input sysclk, reset, enable,
   input [mantissa + 10 : 1] aa, input aasat, aazip, aanan,
   output [mantissa + 10 : 1] cc, output ccsat, cczip, ccnan);
  `XFC_REQUIRE((mantissa == 32 || mantissa == 36) && `XFC_SWITCH(inputnormalize) &&
               `XFC_SWITCH(roundnormalize) && `XFC_RANGE(normspeed, 1, 3) && `XFC_RANGE(target, 0, 2))
  assign cc = 0, ccsat = 0, cczip = 0, ccnan = 0;
endmodule

// double precision arithmetic

module xfc_alufp2x
  #(parameter shiftspeed = -1, doublespeed = -1, synthesize = -1)
  (input sysclk, reset, enable, addsub,
   input [77 : 1] aa, input aasat, aazip, aanan,
   input [77 : 1] bb, input bbsat, bbzip, bbnan,
   output [77 : 1] cc, output ccsat, cczip, ccnan);
  `XFC_REQUIRE(`XFC_SWITCH(shiftspeed) && `XFC_SWITCH(doublespeed) && `XFC_SWITCH(synthesize))
  assign cc = 0, ccsat = 0, cczip = 0, ccnan = 0;
endmodule

module xfc_mulfp2x
  #(parameter ieeeoutput = -1, xoutput = -1, multoutput = -1, roundconvert = -1, roundnormalize = -1,
    doublespeed = -1, outputpipe = -1, doubleaccuracy = -1, device = -1, synthesize = -1)
  (input sysclk, reset, enable,
   input [67 : 1] aa, input aasat, aazip, aanan,
   input [67 : 1] bb, input bbsat, bbzip, bbnan,
   output [64 * ieeeoutput + 77 * xoutput + 67 * multoutput : 1] cc, output ccsat, cczip, ccnan);
  `XFC_REQUIRE(`XFC_SWITCH(ieeeoutput) && `XFC_SWITCH(xoutput) && `XFC_SWITCH(multoutput) &&
               `XFC_SWITCH(roundconvert) && `XFC_SWITCH(roundnormalize) && `XFC_SWITCH(doublespeed) &&
               `XFC_SWITCH(outputpipe) && `XFC_SWITCH(doubleaccuracy) && `XFC_RANGE(device, 0, 2) &&
               `XFC_SWITCH(synthesize) && ieeeoutput + xoutput + multoutput == 1)
  assign cc = 0, ccsat = 0, cczip = 0, ccnan = 0;
endmodule

module xfc_divfp2x
  #(parameter ieeeoutput = -1, xoutput = -1, divoutput = -1, roundconvert = -1, doublespeed = -1,
    doubleaccuracy = -1, device = -1, synthesize = -1)
  (input sysclk, reset, enable,
   input [67 : 1] aa, input aasat, aazip, aanan,
   input [67 : 1] bb, input bbsat, bbzip, bbnan,
   output [64 * ieeeoutput + 77 * xoutput + 67 * divoutput : 1] cc, output ccsat, cczip, ccnan);
  `XFC_REQUIRE(`XFC_SWITCH(ieeeoutput) && `XFC_SWITCH(xoutput) && `XFC_SWITCH(divoutput) &&
               `XFC_SWITCH(roundconvert) && `XFC_SWITCH(doublespeed) && `XFC_SWITCH(doubleaccuracy) &&
               `XFC_RANGE(device, 0, 2) && `XFC_SWITCH(synthesize) && ieeeoutput + xoutput + divoutput == 1)
  assign cc = 0, ccsat = 0, cczip = 0, ccnan = 0;
endmodule

module xfc_normfp2x
  #(parameter roundconvert = -1, roundnormalize = -1, normspeed = -1, doublespeed = -1, target = -1,
    synthesize = -1)
  (input sysclk, reset, enable,
   input [77 : 1] aa, input aasat, aazip, aanan,
   output [10 * target + 67 : 1] cc, output ccsat, cczip, ccnan);
  `XFC_REQUIRE(`XFC_SWITCH(roundconvert) && `XFC_SWITCH(roundnormalize) && `XFC_RANGE(normspeed, 1, 3) &&
               `XFC_SWITCH(doublespeed) && `XFC_SWITCH(target) && `XFC_SWITCH(synthesize))
  assign cc = 0, ccsat = 0, cczip = 0, ccnan = 0;
endmodule

// delay line

module xfc_delay
  #(parameter width = -1, delay = -1, synthesize = -1)
  (input sysclk, reset, enable,
   input [width : 1] aa,
   output [width : 1] cc);
  `XFC_REQUIRE(width > 0 && delay > 0 && `XFC_SWITCH(synthesize))
  assign cc = 0;
endmodule

// conversions

module xfc_castftox
  #(parameter target = -1, roundconvert = -1, mantissa = -1, outputpipe = -1)
  (input sysclk, reset, enable,
   input [32 : 1] aa,
   output [mantissa + 10 : 1] cc, output ccsat, cczip, ccnan);
  `XFC_REQUIRE(`XFC_RANGE(target, 0, 2) && `XFC_SWITCH(roundconvert) &&
               (mantissa == 32 || mantissa == 36) && `XFC_SWITCH(outputpipe))
  assign cc = 0, ccsat = 0, cczip = 0, ccnan = 0;
endmodule

module xfc_castxtof
  #(parameter mantissa = -1, normspeed = -1)
  (input sysclk, reset, enable,
   input [mantissa + 10 : 1] aa, input aasat, aazip, aanan,
   output [32 : 1] cc);
  `XFC_REQUIRE((mantissa == 32 || mantissa == 36) && `XFC_RANGE(normspeed, 1, 3))
  assign cc = 0;
endmodule

module castftoy
  #(parameter target = -1, roundconvert = -1, mantissa = -1)
  (input sysclk, reset, enable,
   input [32 : 1] aa,
   output [10 * target + 67 : 1] cc, output ccsat, cczip, ccnan);
  `XFC_REQUIRE(`XFC_SWITCH(target) && `XFC_SWITCH(roundconvert) && (mantissa == 32 || mantissa == 36))
  assign cc = 0, ccsat = 0, cczip = 0, ccnan = 0;
endmodule

module xfc_castdtoy
  #(parameter target = -1, roundconvert = -1, outputpipe = -1, doublespeed = -1, synthesize = -1)
  (input sysclk, reset, enable,
   input [64 : 1] aa,
   output [10 * target + 67 : 1] cc, output ccsat, cczip, ccnan);
  `XFC_REQUIRE(`XFC_SWITCH(target) && `XFC_SWITCH(roundconvert) && `XFC_SWITCH(outputpipe) &&
               `XFC_SWITCH(doublespeed) && `XFC_SWITCH(synthesize))
  assign cc = 0, ccsat = 0, cczip = 0, ccnan = 0;
endmodule

// No parameter tells the mantissa, so the bus takes the macro.
module castdtox
  #(parameter target = -1, roundconvert = -1, doublespeed = -1)
  (input sysclk, reset, enable,
   input [64 : 1] aa,
   output [`XFC_MANTISSA + 10 : 1] cc, output ccsat, cczip, ccnan);
  `XFC_REQUIRE(`XFC_RANGE(target, 0, 2) && `XFC_SWITCH(roundconvert) && `XFC_SWITCH(doublespeed))
  assign cc = 0, ccsat = 0, cczip = 0, ccnan = 0;
endmodule

module castxtod
  #(parameter mantissa = -1, roundconvert = -1, doublespeed = -1)
  (input sysclk, reset, enable,
   input [mantissa + 10 : 1] aa, input aasat, aazip, aanan,
   output [64 : 1] cc);
  `XFC_REQUIRE((mantissa == 32 || mantissa == 36) && `XFC_SWITCH(roundconvert) && `XFC_SWITCH(doublespeed))
  assign cc = 0;
endmodule

// Combinational: no clock ports.
module castxtoy
  #(parameter target = -1, mantissa = -1)
  (input [mantissa + 10 : 1] aa, input aasat, aazip, aanan,
   output [77 : 1] cc, output ccsat, cczip, ccnan);
  `XFC_REQUIRE(target == 1 && (mantissa == 32 || mantissa == 36))
  assign cc = 0, ccsat = 0, cczip = 0, ccnan = 0;
endmodule

module xfc_castytod
  #(parameter roundconvert = -1, normspeed = -1, doublespeed = -1, synthesize = -1)
  (input sysclk, reset, enable,
   input [77 : 1] aa, input aasat, aazip, aanan,
   output [64 : 1] cc);
  `XFC_REQUIRE(`XFC_SWITCH(roundconvert) && `XFC_RANGE(normspeed, 1, 3) && `XFC_SWITCH(doublespeed) &&
               `XFC_SWITCH(synthesize))
  assign cc = 0;
endmodule

// The flags lie beside a 32-bit result because its instances name them.
module xfc_castytof
  #(parameter roundconvert = -1)
  (input sysclk, reset, enable,
   input [77 : 1] aa, input aasat, aazip, aanan,
   output [32 : 1] cc, output ccsat, cczip, ccnan);
  `XFC_REQUIRE(`XFC_SWITCH(roundconvert))
  assign cc = 0, ccsat = 0, cczip = 0, ccnan = 0;
endmodule

module xfc_castytox
  #(parameter roundconvert = -1, mantissa = -1)
  (input sysclk, reset, enable,
   input [77 : 1] aa, input aasat, aazip, aanan,
   output [mantissa + 10 : 1] cc, output ccsat, cczip, ccnan);
  `XFC_REQUIRE(`XFC_SWITCH(roundconvert) && (mantissa == 32 || mantissa == 36))
  assign cc = 0, ccsat = 0, cczip = 0, ccnan = 0;
endmodule

// As castdtox: mantissa+10 bits without a parameter that tells the mantissa.
module xfc_castdtof
  #(parameter roundconvert = -1)
  (input sysclk, reset, enable,
   input [64 : 1] aa,
   output [`XFC_MANTISSA + 10 : 1] cc);
  `XFC_REQUIRE(`XFC_SWITCH(roundconvert))
  assign cc = 0;
endmodule

module xfc_castftod
  (input sysclk, reset, enable,
   input [32 : 1] aa,
   output [64 : 1] cc);
  assign cc = 0;
endmodule

// single precision functions

module fp_sqr
  (input sysclk, reset, enable,
   input signin, input [8 : 1] exponentin, input [23 : 1] mantissain,
   output signout, output [8 : 1] exponentout, output [23 : 1] mantissaout);
  assign signout = 0, exponentout = 0, mantissaout = 0;
endmodule

module fp_invsqr
  #(parameter synthesize = -1)
  (input sysclk, reset, enable,
   input signin, input [8 : 1] exponentin, input [23 : 1] mantissain,
   output signout, output [8 : 1] exponentout, output [23 : 1] mantissaout);
  `XFC_REQUIRE(`XFC_SWITCH(synthesize))
  assign signout = 0, exponentout = 0, mantissaout = 0;
endmodule

module fp_inv
  #(parameter synthesize = -1)
  (input sysclk, reset, enable,
   input signin, input [8 : 1] exponentin, input [23 : 1] mantissain,
   output signout, output [8 : 1] exponentout, output [23 : 1] mantissaout);
  `XFC_REQUIRE(`XFC_SWITCH(synthesize))
  assign signout = 0, exponentout = 0, mantissaout = 0;
endmodule

module fp_exp
  #(parameter synthesize = -1)
  (input sysclk, reset, enable,
   input signin, input [8 : 1] exponentin, input [23 : 1] mantissain,
   output signout, output [8 : 1] exponentout, output [23 : 1] mantissaout);
  `XFC_REQUIRE(`XFC_SWITCH(synthesize))
  assign signout = 0, exponentout = 0, mantissaout = 0;
endmodule

module fp_log
  (input sysclk, reset, enable,
   input signin, input [8 : 1] exponentin, input [23 : 1] mantissain,
   output signout, output [8 : 1] exponentout, output [23 : 1] mantissaout);
  assign signout = 0, exponentout = 0, mantissaout = 0;
endmodule

module fp_ldexp
  (input sysclk, reset, enable,
   input signin, input [8 : 1] exponentin, input [23 : 1] mantissain,
   input [32 : 1] bb,
   output signout, output [8 : 1] exponentout, output [23 : 1] mantissaout);
  assign signout = 0, exponentout = 0, mantissaout = 0;
endmodule

module fp_fabs
  (input sysclk, reset, enable,
   input signin, input [8 : 1] exponentin, input [23 : 1] mantissain,
   output signout, output [8 : 1] exponentout, output [23 : 1] mantissaout);
  assign signout = 0, exponentout = 0, mantissaout = 0;
endmodule

module fp_neg
  (input sysclk, reset, enable,
   input signin, input [8 : 1] exponentin, input [23 : 1] mantissain,
   output signout, output [8 : 1] exponentout, output [23 : 1] mantissaout);
  assign signout = 0, exponentout = 0, mantissaout = 0;
endmodule

// double precision functions

module dp_sqr
  (input sysclk, reset, enable,
   input signin, input [11 : 1] exponentin, input [52 : 1] mantissain,
   output signout, output [11 : 1] exponentout, output [52 : 1] mantissaout);
  assign signout = 0, exponentout = 0, mantissaout = 0;
endmodule

module dp_invsqr
  #(parameter doubleaccuracy = -1, doublespeed = -1, device = -1, synthesize = -1)
  (input sysclk, reset, enable,
   input signin, input [11 : 1] exponentin, input [52 : 1] mantissain,
   output signout, output [11 : 1] exponentout, output [52 : 1] mantissaout);
  `XFC_REQUIRE(`XFC_SWITCH(doubleaccuracy) && `XFC_SWITCH(doublespeed) && `XFC_RANGE(device, 0, 2) &&
               `XFC_SWITCH(synthesize))
  assign signout = 0, exponentout = 0, mantissaout = 0;
endmodule

module dp_inv
  #(parameter roundconvert = -1, doubleaccuracy = -1, doublespeed = -1, device = -1, synthesize = -1)
  (input sysclk, reset, enable,
   input signin, input [11 : 1] exponentin, input [52 : 1] mantissain,
   output signout, output [11 : 1] exponentout, output [52 : 1] mantissaout);
  `XFC_REQUIRE(`XFC_SWITCH(roundconvert) && `XFC_SWITCH(doubleaccuracy) && `XFC_SWITCH(doublespeed) &&
               `XFC_RANGE(device, 0, 2) && `XFC_SWITCH(synthesize))
  assign signout = 0, exponentout = 0, mantissaout = 0;
endmodule

module dp_exp
  #(parameter roundconvert = -1, doubleaccuracy = -1, doublespeed = -1, device = -1, synthesize = -1)
  (input sysclk, reset, enable,
   input signin, input [11 : 1] exponentin, input [52 : 1] mantissain,
   output signout, output [11 : 1] exponentout, output [52 : 1] mantissaout);
  `XFC_REQUIRE(`XFC_SWITCH(roundconvert) && `XFC_SWITCH(doubleaccuracy) && `XFC_SWITCH(doublespeed) &&
               `XFC_RANGE(device, 0, 2) && `XFC_SWITCH(synthesize))
  assign signout = 0, exponentout = 0, mantissaout = 0;
endmodule

module dp_log
  #(parameter device = -1, doublespeed = -1, synthesize = -1)
  (input sysclk, reset, enable,
   input signin, input [11 : 1] exponentin, input [52 : 1] mantissain,
   output signout, output [11 : 1] exponentout, output [52 : 1] mantissaout);
  `XFC_REQUIRE(`XFC_RANGE(device, 0, 2) && `XFC_SWITCH(doublespeed) && `XFC_SWITCH(synthesize))
  assign signout = 0, exponentout = 0, mantissaout = 0;
endmodule

module dp_ldexp
  (input sysclk, reset, enable,
   input signin, input [11 : 1] exponentin, input [52 : 1] mantissain,
   input [32 : 1] bb,
   output signout, output [11 : 1] exponentout, output [52 : 1] mantissaout);
  assign signout = 0, exponentout = 0, mantissaout = 0;
endmodule

module dp_fabs
  (input sysclk, reset, enable,
   input signin, input [11 : 1] exponentin, input [52 : 1] mantissain,
   output signout, output [11 : 1] exponentout, output [52 : 1] mantissaout);
  assign signout = 0, exponentout = 0, mantissaout = 0;
endmodule

module dp_neg
  (input sysclk, reset, enable,
   input signin, input [11 : 1] exponentin, input [52 : 1] mantissain,
   output signout, output [11 : 1] exponentout, output [52 : 1] mantissaout);
  assign signout = 0, exponentout = 0, mantissaout = 0;
endmodule

