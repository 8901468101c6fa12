// Square root of an IEEE double, correctly rounded to nearest; for which operands and by which steps is said at
// xfc_square_root, which it consists of.
// Latency 57 cycles.
module dp_sqr
  (input sysclk, reset, enable,
   input signin,
   input [11:1] exponentin,
   input [52:1] mantissain,
   output signout,
   output [11:1] exponentout,
   output [52:1] mantissaout);

  wire unused = &{1'b0, reset};

  xfc_square_root #(11, 52) square_root
    (sysclk, enable, signin, exponentin, mantissain, {signout, exponentout, mantissaout});
endmodule
