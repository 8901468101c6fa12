// One over the square root of an IEEE single, within 0.67 ulp. Subnormal operands are zero; zero gives infinity with
// its sign, infinity gives 0, a negative operand nan.
//   step arrive:   the operand, in cycles that the steps behind have no use for
//   step unpack:   marks; segment and position in it; the exponent of the result, one lower
//   step look_up:  coefficients of the segment, whose value is level - slope * u + curve * u ** 2
//   step bend:     slope less curve times the high bits of the position
//   step fall:     level less that times the position; half a unit of the result is in level, so the lower bits are
//                  dropped
//   step pack:     the value of 2 goes into the exponent; marks
// Latency 19 cycles. README.md has the bound of the error.
module fp_invsqr
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
  localparam segment_bits = 7;
  localparam position_bits = fraction_bits - segment_bits;
  localparam short_bits = 12;       // of the position, for the curve
  localparam level_bits = 28;       // one before the point
  localparam slope_bits = 21;
  localparam curve_bits = 13;
  localparam mark_bits = 4;         // sign, nan, zip, sat
  localparam arrive_cycles = 5;
  localparam bend_borders = 15;     // behind the multiples and behind each of three levels
  localparam bend_cycles = 4;
  localparam fall_borders = 31;
  localparam fall_cycles = 5;
  localparam side_cycles = bend_cycles + fall_cycles + 3;

  // arrive
  wire sign;
  wire [exponent_bits-1:0] exponent;
  wire [fraction_bits-1:0] fraction;
  xfc_registers #(1 + exponent_bits + fraction_bits, arrive_cycles) arrive_0
    (sysclk, enable, {signin, exponentin, mantissain}, {sign, exponent, fraction});

  // unpack: an even power of two has an odd exponent field
  wire zero = exponent == 0;
  wire top = &exponent;
  wire [mark_bits-1:0] marks_d = {sign, (top & (|fraction)) | (sign & !zero), top, zero};
  wire [segment_bits:0] index_d = {!exponent[0], fraction[fraction_bits-1:position_bits]};
  wire [exponent_bits:0] twice_d = 9'd380 - {1'b0, exponent};

  wire [mark_bits-1:0] pack_marks;
  wire [segment_bits:0] index;
  wire [position_bits-1:0] position;
  wire [exponent_bits-1:0] pack_exponent;
  xfc_registers #(mark_bits, side_cycles + 1) unpack_0 (sysclk, enable, marks_d, pack_marks);
  xfc_register #(segment_bits + 1, 1) unpack_1 (sysclk, enable, index_d, index);
  xfc_register #(position_bits, 1) unpack_2 (sysclk, enable, fraction[position_bits-1:0], position);
  xfc_registers #(exponent_bits, side_cycles + 1) unpack_3 (sysclk, enable, twice_d[exponent_bits:1], pack_exponent);
  wire unused_half = &{1'b0, twice_d[0]};

  // look_up
  wire [level_bits+slope_bits+curve_bits-1:0] row_d, row;
  fp_invsqr_table coefficients (index, row_d);

  xfc_register #(level_bits + slope_bits + curve_bits, 1) look_up_0 (sysclk, enable, row_d, row);

  // bend, fall
  wire [level_bits-1:0] all_level;
  xfc_quadratic #(position_bits, short_bits, level_bits, slope_bits, curve_bits, bend_borders, fall_borders, synthesize)
    fall (sysclk, enable, position, row, all_level);
  wire [fraction_bits:0] level = all_level[level_bits-1:level_bits-fraction_bits-1];
  wire unused_level = &{1'b0, all_level[level_bits-fraction_bits-2:0]};

  // pack
  wire two = level[fraction_bits];
  wire [exponent_bits-1:0] result_exponent = pack_exponent + {{exponent_bits-1{1'b0}}, two};
  wire [fraction_bits-1:0] result = level[fraction_bits-1:0] & {fraction_bits{!two}};
  wire nan = pack_marks[2];
  wire zip = pack_marks[1];
  wire sat = pack_marks[0];
  wire [exponent_bits+fraction_bits:0] packed_d =
    nan ? 32'h7FC00000 :
    sat ? {pack_marks[3], {exponent_bits{1'b1}}, {fraction_bits{1'b0}}} :
    zip ? 32'd0 : {1'b0, result_exponent, result};

  xfc_register #(1 + exponent_bits + fraction_bits, 1) pack_0
    (sysclk, enable, packed_d, {signout, exponentout, mantissaout});
endmodule
