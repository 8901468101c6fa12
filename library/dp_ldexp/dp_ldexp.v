// Multiplies an IEEE double by two to the power bb, a signed integer: exact, or infinite when too large and zero when
// below the normal numbers, for every bb; for which operands and by which steps is said at xfc_scale_ieee, which it
// consists of.
// Latency 2 cycles.
module dp_ldexp
  (input sysclk, reset, enable,
   input signin,
   input [11:1] exponentin,
   input [52:1] mantissain,
   input [32:1] bb,
   output signout,
   output [11:1] exponentout,
   output [52:1] mantissaout);

  wire unused = &{1'b0, reset};

  xfc_scale_ieee #(11, 52) scale_ieee
    (sysclk, enable, signin, exponentin, mantissain, bb, {signout, exponentout, mantissaout});
endmodule
