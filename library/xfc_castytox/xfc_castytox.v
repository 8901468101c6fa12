// Converts a YDouble value in adder form to XFloat in adder form: nearest, to even between two, in the place that the
// exponent gives the lowest bit, for there is no normalization. What has used guard bits just below the range of
// exponents is shifted into it; below that it is zero, from exponent 960 on infinite, but a mantissa of zero is zero.
// Rounds whatever roundconvert is.
//   cycle 1  align:  the exponent with the single's bias; shift into the range; beside it, whether to round up
//   cycle 2  round:  one carry chain; halve when the guard bits are used up; flags
// Latency 2 cycles.
module xfc_castytox
  #(parameter roundconvert = 0, mantissa = 32)
  (input sysclk, reset, enable,
   input [77:1] aa,
   input aasat, aazip, aanan,
   output [mantissa+10:1] cc,
   output ccsat, cczip, ccnan);

  generate
    if (roundconvert < 0 || roundconvert > 1 || (mantissa != 32 && mantissa != 36))
      parameter_missing_or_out_of_range refused ();
  endgenerate

  localparam exponent_bits = 10;
  localparam double_exponent = 13;
  localparam double_mantissa = 64;
  localparam dropped_bits = double_mantissa - mantissa;
  localparam guard_bits = 4;
  localparam bias_difference = 896;
  localparam infinite = bias_difference + 960;      // operands' exponents from here on

  // align: exponents from 893 to 896 become 1
  wire [double_exponent-1:0] exponent_in = aa[double_exponent:1];
  wire [double_mantissa-1:0] mantissa_in = aa[double_mantissa+double_exponent:double_exponent+1];
  wire far_below = exponent_in <= bias_difference - guard_bits;
  wire just_below = !far_below && exponent_in <= bias_difference;
  wire [2:0] distance = (3'd1 - exponent_in[2:0]) & {3{just_below}};
  wire [exponent_bits-1:0] exponent_d =
    just_below ? {{exponent_bits-1{1'b0}}, 1'b1} : exponent_in[exponent_bits-1:0] - bias_difference[exponent_bits-1:0];
  wire zip_d = aazip | far_below | (mantissa_in == 0);
  wire [double_mantissa-1:0] aligned;
  wire lost;
  xfc_shift_right #(double_mantissa, 3, 1) shift_align (mantissa_in, distance, 1'b0, aligned, lost);
  wire unused = &{1'b0, reset, lost, aligned[dropped_bits-1:0]};
  // Every distance's rounding is decided while the distance is found.
  wire [guard_bits:0] ups;
  genvar places;
  generate
    for (places = 0; places <= guard_bits; places = places + 1) begin : shifted_by
      xfc_round_even #(dropped_bits + places) round_even
        (mantissa_in[dropped_bits+places], mantissa_in[dropped_bits+places-1:0], 1'b0, ups[places]);
    end
  endgenerate
  wire up_d = distance[2] ? ups[4] : distance[1] ? (distance[0] ? ups[3] : ups[2]) : (distance[0] ? ups[1] : ups[0]);
  // What has been shifted has a sign more on top, so that rounding up does not use up its guard bits.
  wire full_d = !just_below & !mantissa_in[double_mantissa-1] & (&mantissa_in[double_mantissa-2:dropped_bits]);
  wire [2:0] limits_d = {full_d, exponent_in == infinite - 1, exponent_in >= infinite};

  wire [exponent_bits-1:0] exponent;
  wire [mantissa-1:0] kept;
  wire up;
  wire [3:0] marks;   // sign, nan, zip, sat
  wire [2:0] limits;  // positive and all ones, exponent 959, exponent from 960 on
  xfc_register #(exponent_bits, 1) align_0 (sysclk, enable, exponent_d, exponent);
  xfc_register #(mantissa, 1) align_1 (sysclk, enable, aligned[double_mantissa-1:dropped_bits], kept);
  xfc_register #(1, 1) align_2 (sysclk, enable, up_d, up);
  xfc_register #(4, 1) align_3 (sysclk, enable, {mantissa_in[double_mantissa-1], aanan, zip_d, aasat}, marks);
  xfc_register #(3, 1) align_4 (sysclk, enable, limits_d, limits);

  // round: exponents from 960 on are infinite; with a flag the sign is the operand's
  wire [mantissa-1:0] sum = kept + {{mantissa-1{1'b0}}, up};
  wire halve = limits[2] & up;
  wire [exponent_bits-1:0] following = exponent + {{exponent_bits-1{1'b0}}, halve};
  wire too_large = limits[0] | (limits[1] & halve);
  wire [2:0] flags_d =
    {marks[2], !marks[2] & !marks[0] & marks[1], !marks[2] & (marks[0] | (too_large & !marks[1]))};
  wire sign = |flags_d ? marks[3] : sum[mantissa-1] & !halve;
  wire [mantissa-1:0] result_d = {sign, sum[mantissa-2] | halve, sum[mantissa-3:0]};

  wire [2:0] flags;
  xfc_register #(mantissa + exponent_bits, 1) round_0
    (sysclk, enable, {result_d, following}, cc);
  xfc_register #(3, 1) round_1 (sysclk, enable, flags_d, flags);

  assign ccsat = flags[0];
  assign cczip = flags[1];
  assign ccnan = flags[2];
endmodule
