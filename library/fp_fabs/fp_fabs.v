// Takes the absolute value of an IEEE single: exact, the sign bit alone changes, of zero, infinity and nan too.
//   step sign:  the new sign
// Latency 1 cycle.
module fp_fabs
  (input sysclk, reset, enable,
   input signin,
   input [8:1] exponentin,
   input [23:1] mantissain,
   output signout,
   output [8:1] exponentout,
   output [23:1] mantissaout);

  wire unused = &{1'b0, reset, signin};

  // sign
  wire sign_d = 1'b0;

  xfc_register #(1, 1) sign_0 (sysclk, enable, sign_d, signout);
  xfc_register #(8, 1) sign_1 (sysclk, enable, exponentin, exponentout);
  xfc_register #(23, 1) sign_2 (sysclk, enable, mantissain, mantissaout);
endmodule
