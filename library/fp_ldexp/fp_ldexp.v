// Multiplies an IEEE single by two to the power bb, a signed integer: exact, or infinite when too large and zero when
// below the normal numbers, for every bb; for which operands and by which steps is said at xfc_scale_ieee, which it
// consists of.
// Latency 2 cycles.
module fp_ldexp
  (input sysclk, reset, enable,
   input signin,
   input [8:1] exponentin,
   input [23:1] mantissain,
   input [32:1] bb,
   output signout,
   output [8:1] exponentout,
   output [23:1] mantissaout);

  wire unused = &{1'b0, reset};

  xfc_scale_ieee #(8, 23) scale_ieee
    (sysclk, enable, signin, exponentin, mantissain, bb, {signout, exponentout, mantissaout});
endmodule
