// A number times b's inverse as the table has it: 384 and the digits in base 4 of a row, each as its value plus 1.
//   step scale:  rows of the product; three times the number
//   step near:   the product
module xfc_divfp2x_scale
  #(parameter scale_border = 1)  // 1: a register behind the step
  (input sysclk, enable,
   input [53:0] number,
   input [8:0] row,              // with the highest bit the last digit, of code 3, is -2
   output [62:0] product);

  localparam number_bits = 54;
  localparam digit_bits = 8;
  localparam product_bits = number_bits + digit_bits + 1;

  // scale
  wire [product_bits-1:0] rows_d;
  wire short_d;
  xfc_product_rows #(number_bits + 1, 4) add_rows
    (sysclk, enable, {1'b0, number}, {number_bits+2{1'b0}}, 1'b0, row[digit_bits-1:0], row[digit_bits], rows_d,
     short_d);
  wire [number_bits+1:0] triple_d = {2'b00, number} + {1'b0, number, 1'b0};

  wire [product_bits-1:0] rows;
  wire short;
  wire [number_bits+1:0] triple;
  xfc_register #(product_bits, scale_border) scale_0 (sysclk, enable, rows_d, rows);
  xfc_register #(1, scale_border) scale_1 (sysclk, enable, short_d, short);
  xfc_register #(number_bits + 2, scale_border) scale_2 (sysclk, enable, triple_d, triple);

  // near: 384 is three times 2 ** 7
  assign product = {triple, 6'd0, short} + rows;
endmodule
