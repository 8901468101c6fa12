// Multiplies two integers of 32 bits; the result is the low 32 bits of the product, the same for signed and unsigned.
//   step choose:  the rows of the product, for each two bits of bb
//   step rows:    sums of four rows
//   step sum:     the product
// Latency 3 cycles: a register behind each step.
module xfc_mullong
  (input sysclk, reset, enable,
   input [32:1] aa,
   input [32:1] bb,
   output [32:1] cc);

  localparam width = 32;

  // choose, rows, sum
  wire [2*width-1:0] product;
  xfc_product #(width, 0, 0, 1, 0, 0, 0, 1) multiply (sysclk, enable, aa, bb, product);
  wire unused = &{1'b0, reset, product[2*width-1:width]};

  xfc_register #(width, 1) sum_0 (sysclk, enable, product[width-1:0], cc);
endmodule
