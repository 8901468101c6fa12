// Unsigned product: every two bits of b choose a multiple of a, a tree adds these. The triple of a comes from outside,
// where it is often ready before b is. Bit 0 of borders puts a register behind the multiples, bit L one behind level L
// of the tree; level L adds parts of 1 << L bits of b. With `blocks` the product is the operator's, for multiplier
// blocks, and as many registers stand behind it.
module xfc_unsigned_product
  #(parameter a_bits  = 24,
    parameter b_bits  = 24,   // at most 64
    parameter borders = 0,
    parameter blocks  = 0)
  (input sysclk, enable,
   input [a_bits-1:0] a,
   input [a_bits+1:0] triple,   // 3 a
   input [b_bits-1:0] b,
   output [a_bits+b_bits-1:0] product);

  localparam levels = b_bits > 32 ? 5 : b_bits > 16 ? 4 : b_bits > 8 ? 3 : b_bits > 4 ? 2 : b_bits > 2 ? 1 : 0;
  localparam registers = (borders & 1) + (borders >> 1 & 1) + (borders >> 2 & 1) + (borders >> 3 & 1) +
                         (borders >> 4 & 1) + (borders >> 5 & 1);

  generate
    if (b_bits > 64 || borders < 0 || (borders >> (levels + 1)) != 0) parameter_missing_or_out_of_range refused ();
    if (blocks == 1) begin : operator
      wire unused = &{1'b0, triple};
      wire [a_bits+b_bits-1:0] product_d = {{b_bits{1'b0}}, a} * {{a_bits{1'b0}}, b};
      xfc_registers #(a_bits + b_bits, registers) behind (sysclk, enable, product_d, product);
    end else begin : tree
      xfc_unsigned_product_part #(a_bits, b_bits, levels, borders) root (sysclk, enable, a, triple, b, product);
    end
  endgenerate
endmodule
