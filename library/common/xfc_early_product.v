// Unsigned product, of which a comes a cycle before b: its triple is made in between. `borders` and `blocks` are told
// at xfc_unsigned_product.
module xfc_early_product
  #(parameter a_bits  = 24,
    parameter b_bits  = 24,   // at most 64
    parameter borders = 0,
    parameter blocks  = 0)
  (input sysclk, enable,
   input [a_bits-1:0] early_a,
   input [b_bits-1:0] b,
   output [a_bits+b_bits-1:0] product);

  wire [a_bits+1:0] triple_d = {2'b00, early_a} + {1'b0, early_a, 1'b0};
  wire [a_bits-1:0] a;
  wire [a_bits+1:0] triple;
  xfc_register #(a_bits, 1) early_0 (sysclk, enable, early_a, a);
  xfc_register #(a_bits + 2, 1) early_1 (sysclk, enable, triple_d, triple);
  xfc_unsigned_product #(a_bits, b_bits, borders, blocks) multiply (sysclk, enable, a, triple, b, product);
endmodule
