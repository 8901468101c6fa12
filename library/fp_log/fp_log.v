// The natural logarithm of an IEEE single, within 0.61 ulp. Subnormal operands are zero; zero gives -infinity, a
// negative operand nan, 1 gives +0.
//   step unpack:    x = m * 2 ** whole with m from 0.75 to 1.5; |m - 1|; segment of m and position in it
//   step look_up:   coefficients of the segment, where ln(m) / (m - 1) is level - slope * u + curve * u ** 2
//   step bend:      slope less curve times the high bits of the position
//   step fall:      level less that times the position
//   step zeros:     leading zeros of |m - 1| where the whole power is 0, else none
//   step coarse:    shift |m - 1| left by them, by whole bytes
//   step fine:      by single bits
//   step multiply:  that value times |m - 1|; beside it the whole power times ln(2)
//   step add:       both
//   step count:     leading zeros
//   step shift:     shift left by them
//   step round:     to nearest, into the exponent
//   step pack:      marks
// Latency 21 cycles; zeros, coarse and fine end a cycle before fall does. README.md has the bound of the error.
module fp_log
  (input sysclk, reset, enable,
   input signin, input [8:1] exponentin, input [23:1] mantissain,
   output signout, output [8:1] exponentout, output [23:1] mantissaout);

  wire unused = &{1'b0, reset};

  localparam exponent_bits = 8;
  localparam fraction_bits = 23;
  localparam bias = 127;
  localparam whole_bits = 8;
  localparam ln_2_bits = 32;                        // behind the point
  localparam [ln_2_bits-1:0] ln_2 = 32'hB17217F8;
  localparam [ln_2_bits+1:0] triple_ln_2 = 34'h2145647E8;
  localparam distance_bits = 23;                    // of |m - 1|, whose units are 2 ** -24
  localparam index_bits = 8;
  localparam position_bits = 16;
  localparam short_bits = 12;                       // of the position, for the curve
  localparam level_bits = 29;                       // one before the point
  localparam slope_bits = 20;
  localparam curve_bits = 12;
  localparam product_bits = distance_bits + level_bits;
  localparam part_bits = 32;                        // of the product, behind the point
  localparam sum_bits = 39;                         // 7 before the point
  localparam window_bits = 10;                      // of the sum, that the leading one is in
  localparam window_levels = 4;
  localparam zero_levels = 5;
  localparam fine_levels = 3;                       // distances below 8
  localparam coarse_levels = zero_levels - fine_levels;
  localparam first_exponent = 133;                  // of the sum's highest bit
  localparam mark_bits = 4;                         // negative, nan, zip, infinite
  localparam bend_borders = 14;                     // behind each of three levels
  localparam bend_cycles = 3;
  localparam fall_borders = 30;                     // behind each of four levels
  localparam fall_cycles = 4;
  localparam multiply_borders = 31;                 // behind the multiples too
  localparam multiply_cycles = 5;
  localparam whole_borders = 6;
  localparam whole_cycles = 2;
  localparam normal_cycles = 3;                     // zeros, coarse and fine
  localparam level_cycles = bend_cycles + fall_cycles + 3;   // in front of fall's last one
  localparam sum_cycles = level_cycles + 1 + multiply_cycles;   // in front of add

  // unpack
  wire zero = exponentin == 0;
  wire top = &exponentin;
  wire fractional = |mantissain;
  wire below = mantissain[fraction_bits];
  wire [whole_bits:0] power = {1'b0, exponentin} - bias[whole_bits:0] + {{whole_bits{1'b0}}, below};
  wire [whole_bits:0] minus_power = bias[whole_bits:0] - {1'b0, exponentin} - {{whole_bits{1'b0}}, below};
  wire whole_negative = power[whole_bits];
  wire whole_zero_d = power == 0;
  wire [whole_bits-1:0] whole_d = whole_negative ? minus_power[whole_bits-1:0] : power[whole_bits-1:0];
  wire same_d = whole_zero_d | (whole_negative == below);
  wire [distance_bits-1:0] distance_d = below ? -mantissain : {mantissain[fraction_bits-1:1], 1'b0};
  wire [index_bits-1:0] index_d = below ? {2'b10, mantissain[22:17]} : {1'b0, mantissain[22:16]};
  wire [position_bits-1:0] position_d = below ? mantissain[16:1] : {mantissain[15:1], 1'b0};
  wire nan_d = (top & fractional) | (signin & !zero);
  wire infinite_d = top | zero;
  wire zip_d = whole_zero_d & !fractional;
  wire negative_d = zero | (!zip_d & !infinite_d & (whole_negative | (whole_zero_d & below)));
  wire unused_power = &{1'b0, minus_power[whole_bits]};

  wire [distance_bits-1:0] distance;
  wire [index_bits-1:0] index;
  wire [position_bits-1:0] position;
  wire whole_zero;
  wire [whole_bits-1:0] whole;
  wire same;
  wire [mark_bits-1:0] pack_marks;
  xfc_registers #(distance_bits, level_cycles - normal_cycles) unpack_0 (sysclk, enable, distance_d, distance);
  xfc_register #(index_bits, 1) unpack_1 (sysclk, enable, index_d, index);
  xfc_register #(position_bits, 1) unpack_2 (sysclk, enable, position_d, position);
  xfc_registers #(1, level_cycles - normal_cycles) unpack_3 (sysclk, enable, whole_zero_d, whole_zero);
  xfc_registers #(whole_bits, sum_cycles - whole_cycles) unpack_4 (sysclk, enable, whole_d, whole);
  xfc_registers #(1, sum_cycles) unpack_5 (sysclk, enable, same_d, same);
  xfc_registers #(mark_bits, sum_cycles + 4) unpack_6
    (sysclk, enable, {negative_d, nan_d, zip_d, infinite_d}, pack_marks);

  // look_up
  wire [level_bits+slope_bits+curve_bits-1:0] row_d, row;
  fp_log_table coefficients (index, row_d);

  xfc_register #(level_bits + slope_bits + curve_bits, 1) look_up_0 (sysclk, enable, row_d, row);

  // bend, fall
  wire [level_bits-1:0] level;
  xfc_quadratic #(position_bits, short_bits, level_bits, slope_bits, curve_bits, bend_borders, fall_borders, 0) fall
    (sysclk, enable, position, row, level);

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
  wire [distance_bits-1:0] fine_d, fine;
  xfc_shift_left #(distance_bits, fine_levels, 1) shift_fine (coarse, fine_zeros, 1'b0, fine_d);

  xfc_register #(distance_bits, 1) fine_0 (sysclk, enable, fine_d, fine);

  // multiply
  wire [product_bits-1:0] product;
  xfc_early_product #(distance_bits, level_bits, multiply_borders, 0) multiply_product
    (sysclk, enable, fine, level, product);
  wire [ln_2_bits+whole_bits-1:0] whole_product;
  xfc_unsigned_product #(ln_2_bits, whole_bits, whole_borders, 0) multiply_whole
    (sysclk, enable, ln_2, triple_ln_2, whole, whole_product);
  wire unused_products = &{1'b0, product[product_bits-part_bits-1:0], whole_product[ln_2_bits+whole_bits-1]};

  // add
  wire [sum_bits-1:0] part = {{sum_bits-part_bits{1'b0}}, product[product_bits-1:product_bits-part_bits]};
  wire [sum_bits-1:0] sum_d =
    whole_product[sum_bits-1:0] + (part ^ {sum_bits{!same}}) + {{sum_bits-1{1'b0}}, !same};

  wire [sum_bits-1:0] sum;
  xfc_register #(sum_bits, 1) add_0 (sysclk, enable, sum_d, sum);

  // count, shift, round, pack
  xfc_sum_to_ieee
    #(exponent_bits, fraction_bits, sum_bits, window_bits, window_levels, zero_levels, first_exponent) pack
    (sysclk, enable, sum, shift_zeros, pack_marks, {signout, exponentout, mantissaout});
endmodule
