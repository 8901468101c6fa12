// The exponential of an IEEE single, within 0.63 ulp. Subnormal operands are zero; results below the smallest normal
// number are 0.
//   step scale:    the significand times log2(e), its triple a constant
//   step coarse:   shift to a fixed point by whole bytes; a zero is shifted out
//   step fine:     shift by single bits; a negative number is inverted, one unit below as the truncated positive one
//   step look_up:  coefficients of the fraction's segment, whose value is level + slope * u + curve * u ** 2
//   step bend:     curve times the high bits of the position
//   step slope:    slope plus bend
//   step rise:     that times the position
//   step settle:   level plus rise; half a unit of the result is in level, so the lower bits are dropped
//   step pack:     the whole number and a value of 2 make the exponent; marks
// Latency 16 cycles. README.md has the bound of the error.
module fp_exp
  #(parameter synthesize = 0)
  (input sysclk, reset, enable,
   input signin, input [8:1] exponentin, input [23:1] mantissain,
   output signout, output [8:1] exponentout, output [23:1] mantissaout);

  generate
    if (synthesize < 0 || synthesize > 1) parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam exponent_bits = 8;
  localparam fraction_bits = 23;
  localparam scale_bits = 36;                       // of log2(e), one before the point
  localparam [scale_bits-1:0] log2_e = 36'hB8AA3B296;
  localparam [scale_bits+1:0] triple_log2_e = 38'h229FEB17C2;
  localparam product_bits = scale_bits + fraction_bits + 1;
  localparam whole_bits = 8;                        // of the fixed point, without sign
  localparam segment_bits = 7;
  localparam position_bits = 21;
  localparam fixed_bits = whole_bits + segment_bits + position_bits;
  localparam short_bits = 12;                       // of the position, for the curve
  localparam level_bits = 27;                       // behind the point
  localparam slope_bits = 21;
  localparam curve_bits = 12;
  localparam wide_bits = exponent_bits + 2;         // exponent below zero and above the field
  localparam fine_levels = 3;                       // distances below 8
  localparam coarse_levels = 3;
  localparam [exponent_bits:0] largest = 133;                        // exponent field of the operands from 64 to 128
  localparam mark_bits = 3;                         // nan, beyond the range of exponents, negative
  localparam scale_borders = 30;                    // behind each of four levels; the multiples are constants
  localparam scale_cycles = 4;
  localparam bend_borders = 10;                     // behind the first and the third level
  localparam bend_cycles = 2;
  localparam rise_borders = 30;
  localparam rise_cycles = 4;

  // scale
  wire zero = exponentin == 0;
  wire beyond = {1'b0, exponentin} > largest;
  wire [exponent_bits:0] difference = largest - {1'b0, exponentin};
  wire far = zero | (|difference[exponent_bits-1:coarse_levels+fine_levels]);
  wire [coarse_levels+fine_levels-1:0] distance_d =
    difference[coarse_levels+fine_levels-1:0] | {coarse_levels+fine_levels{far}};
  wire [mark_bits-1:0] marks_d = {(&exponentin) & (|mantissain), beyond, signin};
  wire unused_sign = &{1'b0, difference[exponent_bits]};
  wire [product_bits-1:0] product;
  xfc_unsigned_product #(scale_bits, fraction_bits + 1, scale_borders, synthesize) scale_product
    (sysclk, enable, log2_e, triple_log2_e, {1'b1, mantissain}, product);
  wire unused_product = &{1'b0, product[product_bits-fixed_bits-1:0]};

  wire [coarse_levels+fine_levels-1:0] distance;
  wire [mark_bits-1:0] scale_marks;
  xfc_registers #(coarse_levels + fine_levels, scale_cycles) scale_0 (sysclk, enable, distance_d, distance);
  xfc_registers #(mark_bits, scale_cycles) scale_1 (sysclk, enable, marks_d, scale_marks);

  // coarse
  wire [fixed_bits:0] coarse_d;
  wire coarse_lost;
  xfc_shift_right #(fixed_bits + 1, coarse_levels, 1 << fine_levels) shift_coarse
    ({1'b0, product[product_bits-1:product_bits-fixed_bits]}, distance[coarse_levels+fine_levels-1:fine_levels], 1'b0,
     coarse_d, coarse_lost);

  wire [fixed_bits:0] coarse;
  wire [fine_levels-1:0] fine_distance;
  wire [mark_bits-1:0] coarse_marks;
  xfc_register #(fixed_bits + 1, 1) coarse_0 (sysclk, enable, coarse_d, coarse);
  xfc_register #(fine_levels, 1) coarse_1 (sysclk, enable, distance[fine_levels-1:0], fine_distance);
  xfc_register #(mark_bits, 1) coarse_2 (sysclk, enable, scale_marks, coarse_marks);

  // fine
  wire [fixed_bits:0] shifted;
  wire fine_lost;
  xfc_shift_right #(fixed_bits + 1, fine_levels, 1) shift_fine (coarse, fine_distance, 1'b0, shifted, fine_lost);
  wire [fixed_bits:0] fixed_d = shifted ^ {fixed_bits+1{coarse_marks[0]}};   // two's complement
  wire unused_lost = &{1'b0, coarse_lost, fine_lost};

  wire [fixed_bits:0] fixed;
  wire [1:0] pack_marks;
  xfc_register #(fixed_bits + 1, 1) fine_0 (sysclk, enable, fixed_d, fixed);
  xfc_registers #(2, bend_cycles + rise_cycles + 4) fine_1 (sysclk, enable, coarse_marks[2:1], pack_marks);

  // look_up
  wire [level_bits+slope_bits+curve_bits-1:0] row_d, row;
  fp_exp_table coefficients (fixed[position_bits+segment_bits-1:position_bits], row_d);
  wire [short_bits-1:0] short_d = fixed[position_bits-1:position_bits-short_bits];
  wire [short_bits+1:0] triple_short_d = {2'b00, short_d} + {1'b0, short_d, 1'b0};

  wire [short_bits-1:0] short;
  wire [short_bits+1:0] triple_short;
  wire [position_bits-1:0] position;
  wire [whole_bits:0] pack_whole;
  xfc_register #(level_bits + slope_bits + curve_bits, 1) look_up_0 (sysclk, enable, row_d, row);
  xfc_register #(short_bits + 2, 1) look_up_1 (sysclk, enable, triple_short_d, triple_short);
  xfc_register #(position_bits, 1) look_up_2 (sysclk, enable, fixed[position_bits-1:0], position);
  xfc_registers #(whole_bits + 1, bend_cycles + rise_cycles + 3) look_up_3
    (sysclk, enable, fixed[fixed_bits:position_bits+segment_bits], pack_whole);
  assign short = position[position_bits-1:position_bits-short_bits];

  // bend
  wire [short_bits+curve_bits-1:0] bend;
  xfc_unsigned_product #(short_bits, curve_bits, bend_borders, synthesize) bend_product
    (sysclk, enable, short, triple_short, row[curve_bits-1:0], bend);
  wire unused_bend = &{1'b0, bend[short_bits-1:0]};

  wire [slope_bits-1:0] linear;
  wire [position_bits-1:0] bend_position;
  xfc_registers #(slope_bits, bend_cycles) bend_0 (sysclk, enable, row[slope_bits+curve_bits-1:curve_bits], linear);
  xfc_registers #(position_bits, bend_cycles) bend_1 (sysclk, enable, position, bend_position);

  // slope
  wire [slope_bits-1:0] slope_d = linear + {{slope_bits-curve_bits{1'b0}}, bend[short_bits+curve_bits-1:short_bits]};
  wire [position_bits+1:0] triple_position_d = {2'b00, bend_position} + {1'b0, bend_position, 1'b0};

  wire [slope_bits-1:0] slope;
  wire [position_bits-1:0] slope_position;
  wire [position_bits+1:0] triple_position;
  xfc_register #(slope_bits, 1) slope_0 (sysclk, enable, slope_d, slope);
  xfc_register #(position_bits, 1) slope_1 (sysclk, enable, bend_position, slope_position);
  xfc_register #(position_bits + 2, 1) slope_2 (sysclk, enable, triple_position_d, triple_position);

  // rise
  wire [position_bits+slope_bits-1:0] rise;
  xfc_unsigned_product #(position_bits, slope_bits, rise_borders, synthesize) rise_product
    (sysclk, enable, slope_position, triple_position, slope, rise);
  wire unused_rise = &{1'b0, rise[position_bits-1:0]};

  wire [level_bits-1:0] rise_level;
  xfc_registers #(level_bits, bend_cycles + 1 + rise_cycles) rise_0
    (sysclk, enable, row[level_bits+slope_bits+curve_bits-1:slope_bits+curve_bits], rise_level);

  // settle
  wire [level_bits:0] level_d =
    {1'b0, rise_level} + {{level_bits+1-slope_bits{1'b0}}, rise[position_bits+slope_bits-1:position_bits]};

  wire [fraction_bits:0] level;
  xfc_register #(fraction_bits + 1, 1) settle_0 (sysclk, enable, level_d[level_bits:level_bits-fraction_bits], level);
  wire unused_level = &{1'b0, level_d[level_bits-fraction_bits-1:0]};

  // pack
  wire [wide_bits-1:0] result_exponent =   // two's complement
    {pack_whole[whole_bits], pack_whole} + 10'd127 + {{wide_bits-1{1'b0}}, level[fraction_bits]};
  wire negative = pack_whole[whole_bits];
  wire too_small = result_exponent[wide_bits-1] | (result_exponent == 0);
  wire too_large = result_exponent[exponent_bits] | (&result_exponent[exponent_bits-1:0]);
  wire nan = pack_marks[1];
  wire sat = !negative & (pack_marks[0] | too_large);
  wire zip = negative & (pack_marks[0] | too_small);
  wire [exponent_bits+fraction_bits:0] packed_d =
    nan ? 32'h7FC00000 :
    sat ? {1'b0, {exponent_bits{1'b1}}, {fraction_bits{1'b0}}} :
    zip ? 32'd0 : {1'b0, result_exponent[exponent_bits-1:0], level[fraction_bits-1:0]};

  xfc_register #(1 + exponent_bits + fraction_bits, 1) pack_0
    (sysclk, enable, packed_d, {signout, exponentout, mantissaout});
endmodule
