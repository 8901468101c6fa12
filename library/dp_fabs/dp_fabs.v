// Takes the absolute value of an IEEE double: exact, the sign bit alone changes, of zero, infinity and nan too.
//   step sign:  the new sign
// Latency 1 cycle.
module dp_fabs
  (input sysclk, reset, enable,
   input signin,
   input [11:1] exponentin,
   input [52:1] mantissain,
   output signout,
   output [11:1] exponentout,
   output [52:1] mantissaout);

  wire unused = &{1'b0, reset, signin};

  // sign
  wire sign_d = 1'b0;

  xfc_register #(1, 1) sign_0 (sysclk, enable, sign_d, signout);
  xfc_register #(11, 1) sign_1 (sysclk, enable, exponentin, exponentout);
  xfc_register #(52, 1) sign_2 (sysclk, enable, mantissain, mantissaout);
endmodule
