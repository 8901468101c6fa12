// A quadratic whose coefficients alternate in sign: level - slope * u + curve * u ** 2 for the position u.
//   step bend:  slope less curve times the high bits of the position
//   step fall:  level less that times the position
// The position comes a cycle before the coefficients. Behind these it takes a cycle for each bit of both borders, told
// at xfc_unsigned_product, and two more.
module xfc_quadratic
  #(parameter position_bits = 16,   // all behind the point
    parameter short_bits    = 12,   // of the position, for the curve
    parameter level_bits    = 28,
    parameter slope_bits    = 21,
    parameter curve_bits    = 13,
    parameter bend_borders  = 0,
    parameter fall_borders  = 0,
    parameter blocks        = 0)
  (input sysclk, enable,
   input [position_bits-1:0] early_position,
   input [level_bits+slope_bits+curve_bits-1:0] row,   // level, slope, curve
   output [level_bits-1:0] level);

  localparam bend_cycles = (bend_borders & 1) + (bend_borders >> 1 & 1) + (bend_borders >> 2 & 1) +
                           (bend_borders >> 3 & 1) + (bend_borders >> 4 & 1) + (bend_borders >> 5 & 1) + 1;

  // bend
  wire [slope_bits-1:0] slope;
  xfc_polynomial_step #(short_bits, curve_bits, slope_bits, bend_borders, blocks) bend
    (sysclk, enable, early_position[position_bits-1:position_bits-short_bits], row[curve_bits-1:0],
     row[curve_bits+slope_bits-1:curve_bits], slope);

  wire [position_bits-1:0] fall_position;
  wire [level_bits-1:0] fall_level;
  xfc_registers #(position_bits, bend_cycles) bend_0 (sysclk, enable, early_position, fall_position);
  xfc_registers #(level_bits, bend_cycles) bend_1
    (sysclk, enable, row[level_bits+slope_bits+curve_bits-1:slope_bits+curve_bits], fall_level);

  // fall
  xfc_polynomial_step #(position_bits, slope_bits, level_bits, fall_borders, blocks) fall
    (sysclk, enable, fall_position, slope, fall_level, level);
endmodule
