// The natural logarithm of an IEEE double, within 0.53 ulp. Subnormal operands are zero; zero gives -infinity, a
// negative operand nan, 1 gives +0.
//   step look_up:   x = m * 2 ** whole with m from 0.75 to 1.5; |m - 1|; coefficients of m's segment, where
//                   ln(m) / (m - 1) is c0 - c1 * u + c2 * u ** 2 - c3 * u ** 3 + c4 * u ** 4 - c5 * u ** 5
//   step fourth:    c4 less c5 times the position u
//   step third:     c3 less that times u
//   step second:    c2 less that times u
//   step first:     c1 less that times u
//   step level:     c0 less that times u
//   step zeros:     leading zeros of |m - 1| where the whole power is 0, else none
//   step coarse:    shift |m - 1| left by them, by whole bytes
//   step fine:      by single bits
//   step multiply:  level times |m - 1|; beside it the whole power times ln(2)
//   step add:       both
//   step count:     leading zeros
//   step shift:     shift left by them
//   step round:     to nearest, into the exponent
//   step pack:      marks
// Latency 27 + 7 doublespeed + roundconvert (1 + doublespeed) cycles, 27 to 36: the more there are, the more borders
// the products have. zeros, coarse and fine take the last cycles of level. The generics change no result. README.md has
// the bound of the error.
module dp_log
  #(parameter device       = 0,
    parameter doublespeed  = 0,
    parameter synthesize   = 0,
    parameter roundconvert = 0)
  (input sysclk, reset, enable,
   input signin,
   input [11:1] exponentin,
   input [52:1] mantissain,
   output signout,
   output [11:1] exponentout,
   output [52:1] mantissaout);

  generate
    if (device < 0 || device > 2 || doublespeed < 0 || doublespeed > 1 || synthesize < 0 || synthesize > 1 ||
        roundconvert < 0 || roundconvert > 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam exponent_bits = 11;
  localparam fraction_bits = 52;
  localparam [exponent_bits:0] bias = 1023;
  localparam whole_bits = 11;
  localparam ln_2_bits = 73;                        // behind the point
  localparam [ln_2_bits-1:0] ln_2 = 73'h162E42FEFA39EF35794;
  localparam [ln_2_bits+1:0] triple_ln_2 = 75'h428AC8FCEEADCDA06BC;
  localparam distance_bits = 52;                    // of |m - 1|, whose units are 2 ** -53
  localparam index_bits = 8;
  localparam position_bits = 45;
  localparam c0_bits = 62;                          // one before the point
  localparam c1_bits = 53;
  localparam c2_bits = 45;
  localparam c3_bits = 37;
  localparam c4_bits = 29;
  localparam c5_bits = 21;
  localparam product_bits = distance_bits + c0_bits;
  localparam point_bits = 63;                       // of the product and of the sum, behind the point
  localparam sum_bits = 73;
  localparam window_bits = 13;                      // of the sum, that the leading one is in
  localparam window_levels = 4;
  localparam zero_levels = 6;
  localparam fine_levels = 3;                       // distances below 8
  localparam coarse_levels = zero_levels - fine_levels;
  localparam first_exponent = 1032;                 // of the sum's highest bit
  localparam mark_bits = 4;                         // negative, nan, zip, infinite

  // Cycles beyond the fewest go behind levels of the products' trees that had no register of their own.
  localparam extra = roundconvert * (doublespeed + 1) + 7 * doublespeed;
  localparam fourth_borders = extra > 4 ? 26 : 20;
  localparam fourth_cycles = extra > 4 ? 3 : 2;
  localparam third_borders = extra > 5 ? 26 : 20;
  localparam third_cycles = extra > 5 ? 3 : 2;
  localparam second_borders = extra > 3 ? 58 : 42;
  localparam second_cycles = extra > 3 ? 4 : 3;
  localparam first_borders = extra > 8 ? 62 : extra > 2 ? 58 : 42;
  localparam first_cycles = extra > 8 ? 5 : extra > 2 ? 4 : 3;
  localparam level_borders = extra > 7 ? 62 : extra > 1 ? 58 : 42;
  localparam level_cycles = extra > 7 ? 5 : extra > 1 ? 4 : 3;
  localparam multiply_borders = extra > 6 ? 62 : extra > 0 ? 58 : 42;
  localparam multiply_cycles = extra > 6 ? 5 : extra > 0 ? 4 : 3;
  localparam whole_borders = 10;
  localparam whole_cycles = 2;
  localparam normal_cycles = 3;                     // zeros, coarse and fine
  // Behind look_up's registers, the cycle from which on the name's value is known.
  localparam fourth_cycle = fourth_cycles + 1;
  localparam third_cycle = fourth_cycle + third_cycles + 1;
  localparam second_cycle = third_cycle + second_cycles + 1;
  localparam first_cycle = second_cycle + first_cycles + 1;
  localparam level_cycle = first_cycle + level_cycles + 1;
  localparam product_cycle = level_cycle + multiply_cycles;

  // look_up
  wire zero = exponentin == 0;
  wire top = &exponentin;
  wire fractional = |mantissain;
  wire below = mantissain[fraction_bits];
  wire [whole_bits:0] power = {1'b0, exponentin} - bias + {{whole_bits{1'b0}}, below};
  wire [whole_bits:0] minus_power = bias - {1'b0, exponentin} - {{whole_bits{1'b0}}, below};
  wire whole_negative = power[whole_bits];
  wire whole_zero_d = power == 0;
  wire [whole_bits-1:0] whole_d = whole_negative ? minus_power[whole_bits-1:0] : power[whole_bits-1:0];
  wire same_d = whole_zero_d | (whole_negative == below);
  wire [distance_bits-1:0] distance_d = below ? -mantissain : {mantissain[fraction_bits-1:1], 1'b0};
  wire [index_bits-1:0] index = below ? {2'b10, mantissain[51:46]} : {1'b0, mantissain[51:45]};
  wire [position_bits-1:0] position = below ? mantissain[45:1] : {mantissain[44:1], 1'b0};
  wire nan_d = (top & fractional) | (signin & !zero);
  wire infinite_d = top | zero;
  wire zip_d = whole_zero_d & !fractional;
  wire negative_d = zero | (!zip_d & !infinite_d & (whole_negative | (whole_zero_d & below)));
  wire unused_power = &{1'b0, minus_power[whole_bits]};
  wire [c0_bits-1:0] c0_d, c0;
  wire [c1_bits-1:0] c1_d, c1;
  wire [c2_bits-1:0] c2_d, c2;
  wire [c3_bits-1:0] c3_d, c3;
  wire [c4_bits-1:0] c4_d, c4;
  wire [c5_bits-1:0] c5_d, c5;
  dp_log_table coefficients (index, {c0_d, c1_d, c2_d, c3_d, c4_d, c5_d});

  wire [distance_bits-1:0] distance;
  wire whole_zero;
  wire [whole_bits-1:0] whole;
  wire same;
  wire [mark_bits-1:0] pack_marks;
  xfc_registers #(c0_bits, first_cycle + 1) look_up_0 (sysclk, enable, c0_d, c0);
  xfc_registers #(c1_bits, second_cycle + 1) look_up_1 (sysclk, enable, c1_d, c1);
  xfc_registers #(c2_bits, third_cycle + 1) look_up_2 (sysclk, enable, c2_d, c2);
  xfc_registers #(c3_bits, fourth_cycle + 1) look_up_3 (sysclk, enable, c3_d, c3);
  xfc_register #(c4_bits, 1) look_up_4 (sysclk, enable, c4_d, c4);
  xfc_register #(c5_bits, 1) look_up_5 (sysclk, enable, c5_d, c5);
  xfc_registers #(distance_bits, level_cycle - normal_cycles) look_up_6 (sysclk, enable, distance_d, distance);
  xfc_registers #(1, level_cycle - normal_cycles) look_up_7 (sysclk, enable, whole_zero_d, whole_zero);
  xfc_registers #(whole_bits, product_cycle + 1 - whole_cycles) look_up_8 (sysclk, enable, whole_d, whole);
  xfc_registers #(1, product_cycle + 1) look_up_9 (sysclk, enable, same_d, same);
  xfc_registers #(mark_bits, product_cycle + 5) look_up_10
    (sysclk, enable, {negative_d, nan_d, zip_d, infinite_d}, pack_marks);

  // fourth
  wire [c4_bits-1:0] fourth;
  xfc_polynomial_step #(c5_bits, c5_bits, c4_bits, fourth_borders, synthesize) fourth_step
    (sysclk, enable, position[position_bits-1:position_bits-c5_bits], c5, c4, fourth);

  wire [position_bits-1:0] fourth_position;
  xfc_registers #(position_bits, fourth_cycle) fourth_0 (sysclk, enable, position, fourth_position);

  // third
  wire [c3_bits-1:0] third;
  xfc_polynomial_step #(c4_bits, c4_bits, c3_bits, third_borders, synthesize) third_step
    (sysclk, enable, fourth_position[position_bits-1:position_bits-c4_bits], fourth, c3, third);

  wire [position_bits-1:0] third_position;
  xfc_registers #(position_bits, third_cycles + 1) third_0 (sysclk, enable, fourth_position, third_position);

  // second
  wire [c2_bits-1:0] second;
  xfc_polynomial_step #(c3_bits, c3_bits, c2_bits, second_borders, synthesize) second_step
    (sysclk, enable, third_position[position_bits-1:position_bits-c3_bits], third, c2, second);

  wire [position_bits-1:0] second_position;
  xfc_registers #(position_bits, second_cycles + 1) second_0 (sysclk, enable, third_position, second_position);

  // first
  wire [c1_bits-1:0] first;
  xfc_polynomial_step #(position_bits, c2_bits, c1_bits, first_borders, synthesize) first_step
    (sysclk, enable, second_position, second, c1, first);

  wire [position_bits-1:0] first_position;
  xfc_registers #(position_bits, first_cycles + 1) first_0 (sysclk, enable, second_position, first_position);

  // level
  wire [c0_bits-1:0] level;
  xfc_polynomial_step #(position_bits, c1_bits, c0_bits, level_borders, synthesize) level_step
    (sysclk, enable, first_position, first, c0, level);

  // zeros: only where nothing is added to the product
  wire [zero_levels-1:0] distance_zeros;
  xfc_leading_zeros #(distance_bits, zero_levels) count_distance (distance, distance_zeros);
  wire [zero_levels-1:0] zeros_d = distance_zeros & {zero_levels{whole_zero}};

  wire [zero_levels-1:0] zeros, shift_zeros;
  wire [distance_bits-1:0] zeros_distance;
  xfc_register #(zero_levels, 1) zeros_0 (sysclk, enable, zeros_d, zeros);
  xfc_register #(distance_bits, 1) zeros_1 (sysclk, enable, distance, zeros_distance);
  xfc_registers #(zero_levels, multiply_cycles + 5) zeros_2 (sysclk, enable, zeros, shift_zeros);

  // coarse
  wire [distance_bits-1:0] coarse_d, coarse;
  wire [fine_levels-1:0] fine_zeros;
  xfc_shift_left #(distance_bits, coarse_levels, 1 << fine_levels) shift_coarse
    (zeros_distance, zeros[zero_levels-1:fine_levels], 1'b0, coarse_d);

  xfc_register #(distance_bits, 1) coarse_0 (sysclk, enable, coarse_d, coarse);
  xfc_register #(fine_levels, 1) coarse_1 (sysclk, enable, zeros[fine_levels-1:0], fine_zeros);

  // fine
  wire [distance_bits-1:0] fine_d, early_normal;
  xfc_shift_left #(distance_bits, fine_levels, 1) shift_fine (coarse, fine_zeros, 1'b0, fine_d);

  xfc_register #(distance_bits, 1) fine_0 (sysclk, enable, fine_d, early_normal);

  // multiply
  wire [product_bits-1:0] product;
  xfc_early_product #(distance_bits, c0_bits, multiply_borders, synthesize) multiply_product
    (sysclk, enable, early_normal, level, product);
  wire [ln_2_bits+whole_bits-1:0] whole_product;
  xfc_unsigned_product #(ln_2_bits, whole_bits, whole_borders, synthesize) multiply_whole
    (sysclk, enable, ln_2, triple_ln_2, whole, whole_product);
  wire unused_products = &{1'b0, product[product_bits-point_bits-1:0], whole_product[ln_2_bits-point_bits-1:0],
                           whole_product[ln_2_bits+whole_bits-1:ln_2_bits-point_bits+sum_bits]};

  // add
  wire [sum_bits-1:0] part = {{sum_bits-point_bits{1'b0}}, product[product_bits-1:product_bits-point_bits]};
  wire [sum_bits-1:0] sum_d = whole_product[ln_2_bits-point_bits+sum_bits-1:ln_2_bits-point_bits] +
                              (part ^ {sum_bits{!same}}) + {{sum_bits-1{1'b0}}, !same};

  wire [sum_bits-1:0] sum;
  xfc_register #(sum_bits, 1) add_0 (sysclk, enable, sum_d, sum);

  // count, shift, round, pack
  xfc_sum_to_ieee
    #(exponent_bits, fraction_bits, sum_bits, window_bits, window_levels, zero_levels, first_exponent) pack
    (sysclk, enable, sum, shift_zeros, pack_marks, {signout, exponentout, mantissaout});
endmodule
