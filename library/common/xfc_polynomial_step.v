// A step of a polynomial whose coefficients alternate in sign: `coefficient` less `value` times the position, which is
// below 1. The product is truncated to the coefficient's units; no difference is negative.
//   step multiply:  value times position
//   step subtract:  the coefficient less that
// The position comes a cycle before value and coefficient, for its triple. Behind these it takes a cycle for each bit
// of `borders`, told at xfc_unsigned_product, and one more.
module xfc_polynomial_step
  #(parameter position_bits    = 16,   // all behind the point
    parameter value_bits       = 16,   // at most 64
    parameter coefficient_bits = 25,   // at least value_bits
    parameter borders = 0,
    parameter blocks  = 0)
  (input sysclk, enable,
   input [position_bits-1:0] early_position,
   input [value_bits-1:0] value,
   input [coefficient_bits-1:0] coefficient,
   output [coefficient_bits-1:0] difference);

  localparam cycles = (borders & 1) + (borders >> 1 & 1) + (borders >> 2 & 1) + (borders >> 3 & 1) +
                      (borders >> 4 & 1) + (borders >> 5 & 1);

  // multiply
  wire [position_bits+1:0] triple_d = {2'b00, early_position} + {1'b0, early_position, 1'b0};
  wire [position_bits-1:0] position;
  wire [position_bits+1:0] triple;
  xfc_register #(position_bits, 1) multiply_0 (sysclk, enable, early_position, position);
  xfc_register #(position_bits + 2, 1) multiply_1 (sysclk, enable, triple_d, triple);

  wire [position_bits+value_bits-1:0] product;
  wire [coefficient_bits-1:0] subtract_coefficient;
  xfc_unsigned_product #(position_bits, value_bits, borders, blocks) multiply
    (sysclk, enable, position, triple, value, product);
  xfc_registers #(coefficient_bits, cycles) multiply_2 (sysclk, enable, coefficient, subtract_coefficient);
  wire unused = &{1'b0, product[position_bits-1:0]};

  // subtract
  wire [coefficient_bits:0] subtrahend = {{coefficient_bits+1-value_bits{1'b0}}, product[position_bits+:value_bits]};
  wire [coefficient_bits-1:0] difference_d = subtract_coefficient - subtrahend[coefficient_bits-1:0];
  wire unused_top = &{1'b0, subtrahend[coefficient_bits]};

  xfc_register #(coefficient_bits, 1) subtract_0 (sysclk, enable, difference_d, difference);
endmodule
