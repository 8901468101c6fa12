// A part of xfc_unsigned_product: a times some neighbouring bits of b. On level 0 these are two, a digit that chooses a
// multiple of a; a part on a higher level adds two of the level below. Bit L of borders puts a register behind level L.
module xfc_unsigned_product_part
  #(parameter a_bits  = 24,
    parameter b_bits  = 24,   // at most 2 << level
    parameter level   = 4,
    parameter borders = 0)
  (input sysclk, enable,
   input [a_bits-1:0] a,
   input [a_bits+1:0] triple,   // 3 a
   input [b_bits-1:0] b,
   output [a_bits+b_bits-1:0] product);

  localparam half = 1 << level;   // bits of b in the lower of two parts

  wire [a_bits+b_bits-1:0] product_d;
  generate
    if (level == 0 && b_bits == 1) begin : bit_alone
      wire unused = &{1'b0, triple};
      assign product_d = {1'b0, a & {a_bits{b}}};
    end else if (level == 0) begin : digit
      assign product_d = b[1] ? (b[0] ? triple : {1'b0, a, 1'b0}) : {2'b00, a & {a_bits{b[0]}}};
    end else if (b_bits <= half) begin : low_alone
      xfc_unsigned_product_part #(a_bits, b_bits, level - 1, borders) part (sysclk, enable, a, triple, b, product_d);
    end else begin : both
      wire [a_bits+half-1:0] low;
      wire [a_bits+b_bits-half-1:0] high;
      xfc_unsigned_product_part #(a_bits, half, level - 1, borders) low_part
        (sysclk, enable, a, triple, b[half-1:0], low);
      xfc_unsigned_product_part #(a_bits, b_bits - half, level - 1, borders) high_part
        (sysclk, enable, a, triple, b[b_bits-1:half], high);
      assign product_d = {high + {{b_bits-half{1'b0}}, low[a_bits+half-1:half]}, low[half-1:0]};
    end
  endgenerate
  xfc_register #(a_bits + b_bits, (borders >> level) & 1) behind (sysclk, enable, product_d, product);
endmodule
