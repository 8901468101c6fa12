// Square root of an IEEE single, correctly rounded to nearest; for which operands and by which steps is said at
// xfc_square_root, which it consists of.
// Latency 28 cycles.
module fp_sqr
  (input sysclk, reset, enable,
   input signin,
   input [8:1] exponentin,
   input [23:1] mantissain,
   output signout,
   output [8:1] exponentout,
   output [23:1] mantissaout);

  wire unused = &{1'b0, reset};

  xfc_square_root #(8, 23) square_root
    (sysclk, enable, signin, exponentin, mantissain, {signout, exponentout, mantissaout});
endmodule
