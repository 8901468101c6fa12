// The exponential of an IEEE double, within 0.53 ulp. Subnormal operands are zero; results below the smallest normal
// number are 0.
//   step coarse:   the significand shifted right to a fixed point by whole bytes; a zero is shifted out
//   step fine:     by single bits; a negative number is inverted, one unit below as the truncated positive one
//   step whole:    the power of two, from the fixed point's high bits: at most 0.38 below the exact exponent
//   step power:    its logarithm
//   step reduce:   the operand less that, from 0 to 0.96: two indices of 9 bits and a rest below 2 ** -18
//   step look_up:  exponentials of the indices (of the lower one less 1); a sixth of the rest's cube
//   step square:   half the rest's square
//   step small:    exponential of the rest, less 1
//   step mixed:    that times the lower exponential, less 1
//   step factor:   both and that: exponential of all below the higher index, less 1
//   step rise:     the higher exponential times that
//   step add:      the higher exponential and that
//   step round:    to nearest, into the exponent; a sum of 2 and more is halved
//   step pack:     marks
// Latency 20 + 2 doublespeed + (roundconvert - 2 device) (1 + doublespeed) cycles, 14 to 24: the more there are, the
// more borders the products have. The generics change no result. README.md has the bound of the error.
module dp_exp
  #(parameter roundconvert   = 0,
    parameter doubleaccuracy = 1,
    parameter doublespeed    = 0,
    parameter device         = 0,
    parameter synthesize     = 0)
  (input sysclk, reset, enable,
   input signin,
   input [11:1] exponentin,
   input [52:1] mantissain,
   output signout,
   output [11:1] exponentout,
   output [52:1] mantissaout);

  generate
    if (roundconvert < 0 || roundconvert > 1 || doubleaccuracy < 0 || doubleaccuracy > 1 || doublespeed < 0 ||
        doublespeed > 1 || device < 0 || device > 2 || synthesize < 0 || synthesize > 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam exponent_bits = 11;
  localparam fraction_bits = 52;
  localparam significand_bits = fraction_bits + 1;
  localparam wide_bits = exponent_bits + 2;         // exponent below zero and above the field
  localparam point_bits = 61;                       // of the fixed point, behind the point
  localparam fixed_bits = 71;                       // of its magnitude
  localparam [exponent_bits:0] largest = 1032;      // exponent field of the operands from 512 to 1024
  localparam coarse_levels = 4;
  localparam fine_levels = 3;                       // distances below 8
  localparam distance_bits = coarse_levels + fine_levels;
  localparam mark_bits = 3;                         // nan, beyond the range of exponents, negative
  localparam top_bits = 13;                         // of the fixed point, two behind the point
  localparam log2_e_bits = 15;
  localparam [log2_e_bits-1:0] log2_e = 23637;      // a quarter of it, units of 2 ** -16
  localparam [log2_e_bits+1:0] triple_log2_e = 70911;
  localparam whole_bits = 12;
  localparam whole_low = 16;                        // lowest bit of the whole power in the product
  localparam [whole_bits+whole_low-1:0] whole_offset = 44564;   // 1478 less 1024 log2(e), units of 2 ** -16
  localparam [wide_bits-1:0] whole_bias = 455;      // whole power, plus 1478, less the exponent field
  localparam ln_2_bits = 73;                        // behind the point
  localparam [ln_2_bits-1:0] ln_2 = 73'h162E42FEFA39EF35794;
  localparam [ln_2_bits+1:0] triple_ln_2 = 75'h428AC8FCEEADCDA06BC;
  localparam [point_bits-1:0] offset = 61'hF16CC18AA7B0EBA;     // 1478 ln(2) without what is before the point
  localparam segment_bits = 9;
  localparam rest_bits = point_bits - 2 * segment_bits;
  localparam cubic_bits = 6;                        // of the rest for its cube, and of the sixth of that
  localparam short_bits = 26;                       // of the rest for its square
  localparam square_low = 27;                       // lowest bit of the square that counts
  localparam small_bits = rest_bits + 2;            // units of 2 ** -62
  localparam mixed_bits = 36;                       // of both factors of the mixed product, and of it
  localparam high_bits = 62;                        // units of 2 ** -60
  localparam low_bits = 52;                         // units of 2 ** -60
  localparam factor_bits = low_bits + 1;            // units of 2 ** -61
  localparam short_high_bits = 54;                  // of the higher exponential, for the product, and of that
  localparam low_round_bit = 7;                     // of a sum below 2

  // Cycles beyond the fewest go behind levels of the products' trees that had no register of their own.
  localparam extra = (roundconvert - 2 * device) * (doublespeed + 1) + 2 * doublespeed + 6;
  localparam whole_borders = extra > 8 ? 10 : extra > 5 ? 8 : 0;
  localparam whole_cycles = extra > 8 ? 2 : extra > 5 ? 1 : 0;
  localparam power_borders = extra > 2 ? 10 : 8;
  localparam power_cycles = extra > 2 ? 2 : 1;
  localparam square_borders = extra > 7 ? 26 : extra > 4 ? 20 : 16;
  localparam square_cycles = extra > 7 ? 3 : extra > 4 ? 2 : 1;
  localparam mixed_borders = extra > 6 ? 42 : extra > 1 ? 36 : 32;
  localparam mixed_cycles = extra > 6 ? 3 : extra > 1 ? 2 : 1;
  localparam rise_borders = extra > 9 ? 58 : extra > 3 ? 42 : extra > 0 ? 36 : 32;
  localparam rise_cycles = extra > 9 ? 4 : extra > 3 ? 3 : extra > 0 ? 2 : 1;
  localparam factor_cycles = square_cycles + 1 + mixed_cycles + 1;   // from the tables to the factor
  localparam round_cycles = factor_cycles + rise_cycles + 1;         // from the tables to the sum

  // coarse
  wire zero = exponentin == 0;
  wire beyond = {1'b0, exponentin} > largest;
  wire [exponent_bits:0] difference = largest - {1'b0, exponentin};
  wire far = zero | (!beyond & (|difference[exponent_bits:distance_bits]));
  wire [distance_bits-1:0] distance = difference[distance_bits-1:0] | {distance_bits{far}};
  wire [mark_bits-1:0] marks_d = {(&exponentin) & (|mantissain), beyond, signin};
  wire [fixed_bits:0] coarse_d;
  wire coarse_lost;
  xfc_shift_right #(fixed_bits + 1, coarse_levels, 1 << fine_levels) shift_coarse
    ({2'b01, mantissain, {fixed_bits-significand_bits{1'b0}}}, distance[distance_bits-1:fine_levels], 1'b0,
     coarse_d, coarse_lost);

  wire [fixed_bits:0] coarse;
  wire [fine_levels-1:0] fine_distance;
  wire [mark_bits-1:0] coarse_marks;
  xfc_register #(fixed_bits + 1, 1) coarse_0 (sysclk, enable, coarse_d, coarse);
  xfc_register #(fine_levels, 1) coarse_1 (sysclk, enable, distance[fine_levels-1:0], fine_distance);
  xfc_register #(mark_bits, 1) coarse_2 (sysclk, enable, marks_d, coarse_marks);

  // fine
  wire [fixed_bits:0] shifted;
  wire fine_lost;
  xfc_shift_right #(fixed_bits + 1, fine_levels, 1) shift_fine (coarse, fine_distance, 1'b0, shifted, fine_lost);
  wire [fixed_bits:0] fixed_d = shifted ^ {fixed_bits+1{coarse_marks[0]}};   // two's complement
  wire unused_lost = &{1'b0, coarse_lost, fine_lost};

  wire [fixed_bits:0] fixed;
  wire [mark_bits-1:0] pack_marks;
  xfc_register #(fixed_bits + 1, 1) fine_0 (sysclk, enable, fixed_d, fixed);
  xfc_registers #(mark_bits, whole_cycles + power_cycles + round_cycles + 5) fine_1
    (sysclk, enable, coarse_marks, pack_marks);

  // whole: 1024 more than the operand, times log2(e)
  wire [top_bits-1:0] top = {!fixed[fixed_bits], fixed[fixed_bits-1:fixed_bits-top_bits+1]};
  wire [log2_e_bits+top_bits-1:0] scaled;
  xfc_unsigned_product #(log2_e_bits, top_bits, whole_borders, synthesize) whole_product
    (sysclk, enable, log2_e, triple_log2_e, top, scaled);
  wire [whole_bits+whole_low-1:0] whole_d = scaled + whole_offset;
  wire [point_bits-1:0] positive_d = fixed[point_bits-1:0] + offset;

  wire [whole_bits-1:0] whole;
  wire [point_bits-1:0] positive_operand, operand;
  xfc_register #(whole_bits, 1) whole_0 (sysclk, enable, whole_d[whole_bits+whole_low-1:whole_low], whole);
  xfc_register #(point_bits, 1) whole_1 (sysclk, enable, positive_d, positive_operand);
  xfc_registers #(point_bits, whole_cycles + power_cycles) whole_2 (sysclk, enable, positive_operand, operand);
  wire unused_whole = &{1'b0, whole_d[whole_low-1:0]};

  // power: what is before the point takes no part
  wire [ln_2_bits+whole_bits-1:0] power;
  xfc_unsigned_product #(ln_2_bits, whole_bits, power_borders, synthesize) power_product
    (sysclk, enable, ln_2, triple_ln_2, whole, power);
  wire [wide_bits-1:0] exponent_d = {{wide_bits-whole_bits{1'b0}}, whole} - whole_bias;   // two's complement
  wire unused_power = &{1'b0, power[ln_2_bits+whole_bits-1:ln_2_bits], power[ln_2_bits-point_bits-1:0]};

  wire [wide_bits-1:0] round_exponent;
  xfc_registers #(wide_bits, power_cycles + round_cycles + 2) power_0 (sysclk, enable, exponent_d, round_exponent);

  // reduce
  wire [point_bits-1:0] reduced_d = operand - power[ln_2_bits-1:ln_2_bits-point_bits];

  wire [point_bits-1:0] reduced;
  xfc_register #(point_bits, 1) reduce_0 (sysclk, enable, reduced_d, reduced);

  // look_up
  wire [high_bits-1:0] high_d, high;
  wire [low_bits-1:0] low_d, low;
  wire [cubic_bits-1:0] cubic_d, cubic;
  wire [rest_bits-1:0] rest_d = reduced[rest_bits-1:0];
  dp_exp_high_table high_exponential (reduced[point_bits-1:point_bits-segment_bits], high_d);
  dp_exp_low_table low_exponential (reduced[point_bits-segment_bits-1:rest_bits], low_d);
  dp_exp_cubic_table sixth_of_cube (rest_d[rest_bits-1:rest_bits-cubic_bits], cubic_d);

  wire [rest_bits-1:0] rest;
  xfc_register #(high_bits, 1) look_up_0 (sysclk, enable, high_d, high);
  xfc_register #(low_bits, 1) look_up_1 (sysclk, enable, low_d, low);
  xfc_register #(cubic_bits, 1) look_up_2 (sysclk, enable, cubic_d, cubic);
  xfc_register #(rest_bits, 1) look_up_3 (sysclk, enable, rest_d, rest);

  // square
  wire [2*short_bits-1:0] square;
  xfc_early_product #(short_bits, short_bits, square_borders, synthesize) square_product
    (sysclk, enable, rest_d[rest_bits-1:rest_bits-short_bits], rest[rest_bits-1:rest_bits-short_bits], square);
  wire [small_bits-1:0] others_d = {1'b0, rest, 1'b0} + {{small_bits-cubic_bits{1'b0}}, cubic};
  wire unused_square = &{1'b0, square[square_low-1:0]};

  wire [small_bits-1:0] other_terms;
  wire [low_bits-1:0] early_low, small_low;
  xfc_registers #(small_bits, square_cycles) square_0 (sysclk, enable, others_d, other_terms);
  xfc_registers #(low_bits, square_cycles) square_1 (sysclk, enable, low, early_low);

  // small
  wire [small_bits-1:0] small_d =
    other_terms + {{small_bits+square_low-2*short_bits{1'b0}}, square[2*short_bits-1:square_low]};

  wire [small_bits-1:0] small_rest;
  xfc_register #(small_bits, 1) small_0 (sysclk, enable, small_d, small_rest);
  xfc_register #(low_bits, 1) small_1 (sysclk, enable, early_low, small_low);

  // mixed
  wire [2*mixed_bits-1:0] mixed;
  xfc_early_product #(mixed_bits, mixed_bits, mixed_borders, synthesize) mixed_product
    (sysclk, enable, early_low[low_bits-1:low_bits-mixed_bits], small_rest[small_bits-1:small_bits-mixed_bits], mixed);
  wire [factor_bits-1:0] both_d = {small_low, 1'b0} + {{factor_bits+1-small_bits{1'b0}}, small_rest[small_bits-1:1]};
  wire unused_mixed = &{1'b0, mixed[mixed_bits-1:0], small_rest[0]};

  wire [factor_bits-1:0] both;
  xfc_registers #(factor_bits, mixed_cycles) mixed_0 (sysclk, enable, both_d, both);

  // factor
  wire [factor_bits-1:0] factor_d = both + {{factor_bits-mixed_bits{1'b0}}, mixed[2*mixed_bits-1:mixed_bits]};

  wire [factor_bits-1:0] factor;
  wire [high_bits-1:0] early_high, add_high;
  xfc_register #(factor_bits, 1) factor_0 (sysclk, enable, factor_d, factor);
  xfc_registers #(high_bits, factor_cycles - 1) factor_1 (sysclk, enable, high, early_high);

  // rise
  wire [short_high_bits+factor_bits-1:0] rise;
  xfc_early_product #(short_high_bits, factor_bits, rise_borders, synthesize) rise_product
    (sysclk, enable, early_high[high_bits-1:high_bits-short_high_bits], factor, rise);
  wire unused_rise = &{1'b0, rise[factor_bits-1:0]};

  xfc_registers #(high_bits, rise_cycles + 1) rise_0 (sysclk, enable, early_high, add_high);

  // add
  wire [high_bits-1:0] sum_d =
    add_high + {{high_bits-short_high_bits{1'b0}}, rise[short_high_bits+factor_bits-1:factor_bits]};

  wire [high_bits-1:low_round_bit] sum;
  xfc_register #(high_bits - low_round_bit, 1) add_0 (sysclk, enable, sum_d[high_bits-1:low_round_bit], sum);
  wire unused_sum = &{1'b0, sum_d[low_round_bit-1:0]};

  // round
  wire two = sum[high_bits-1];
  wire [fraction_bits-1:0] fraction =
    two ? sum[high_bits-2:low_round_bit+2] : sum[high_bits-3:low_round_bit+1];
  wire up = two ? sum[low_round_bit+1] : sum[low_round_bit];
  wire [wide_bits+fraction_bits-1:0] rounded_d =
    {round_exponent, fraction} + {{wide_bits-1{1'b0}}, two, {fraction_bits-1{1'b0}}, up};

  wire [wide_bits+fraction_bits-1:0] rounded;
  xfc_register #(wide_bits + fraction_bits, 1) round_0 (sysclk, enable, rounded_d, rounded);

  // pack
  wire [exponent_bits+fraction_bits:0] packed_d;
  xfc_pack_ieee #(exponent_bits, fraction_bits, wide_bits) pack_result
    (rounded[wide_bits+fraction_bits-1:fraction_bits], rounded[fraction_bits-1:0],
     {1'b0, pack_marks[2], pack_marks[1] & pack_marks[0], pack_marks[1] & !pack_marks[0]}, packed_d);

  xfc_register #(1 + exponent_bits + fraction_bits, 1) pack_0
    (sysclk, enable, packed_d, {signout, exponentout, mantissaout});
endmodule
