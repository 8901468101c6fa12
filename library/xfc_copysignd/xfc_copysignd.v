// An IEEE double with the sign of another one: exact, the sign bit alone changes, of zero, infinity and nan too.
//   step sign:  the new sign
// Latency 1 cycle.
module xfc_copysignd
  (input sysclk, reset, enable,
   input [64:1] aa,
   input [64:1] bb,
   output [64:1] cc);

  localparam width = 64;
  wire unused = &{1'b0, reset, aa[width], bb[width-1:1]};

  // sign
  wire [width:1] signed_d = {bb[width], aa[width-1:1]};

  xfc_register #(width, 1) sign_0 (sysclk, enable, signed_d, cc);
endmodule
