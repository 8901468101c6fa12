// Converts a YDouble value in adder form to XFloat in adder form: nearest, to even between two, in the place that the
// exponent gives the lowest bit, for there is no normalization. What has used guard bits just below the range of
// exponents is shifted into it; below that it is zero, from exponent 960 on infinite, but a mantissa of zero is zero.
// Rounds whatever roundconvert is.
//   cycle 1  align:  the exponent with the single's bias; shift into the range; whether to round up
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
  wire unused = &{1'b0, reset};

  localparam exponent_bits = 10;
  localparam double_exponent = 13;
  localparam double_mantissa = 64;
  localparam dropped_bits = double_mantissa - mantissa;
  localparam bias_difference = 896;

  // align: exponents from 893 to 896 become 1
  wire [double_exponent-1:0] exponent_in = aa[double_exponent:1];
  wire [double_mantissa-1:0] mantissa_in = aa[double_mantissa+double_exponent:double_exponent+1];
  wire just_below = exponent_in >= 893 && exponent_in <= bias_difference;
  wire [2:0] distance = (3'd1 - exponent_in[2:0]) & {3{just_below}};
  wire [double_exponent-1:0] less = exponent_in - bias_difference[double_exponent-1:0];
  wire [double_exponent-1:0] exponent_d = just_below ? {{double_exponent-1{1'b0}}, 1'b1} : less;
  wire zip_d = aazip | (exponent_in < 893) | (mantissa_in == 0);
  wire [double_mantissa-1:0] aligned;
  wire lost;
  xfc_shift_right #(double_mantissa, 3, 1) shift_align (mantissa_in, distance, 1'b0, aligned, lost);
  wire up_d;
  xfc_round_even #(dropped_bits + 1) round_even
    (aligned[dropped_bits], {aligned[dropped_bits-1:0], lost}, 1'b0, up_d);

  wire [double_exponent-1:0] exponent;
  wire [mantissa-1:0] kept;
  wire up;
  wire [3:0] marks;   // sign, nan, zip, sat
  xfc_register #(double_exponent, 1) align_0 (sysclk, enable, exponent_d, exponent);
  xfc_register #(mantissa, 1) align_1 (sysclk, enable, aligned[double_mantissa-1:dropped_bits], kept);
  xfc_register #(1, 1) align_2 (sysclk, enable, up_d, up);
  xfc_register #(4, 1) align_3 (sysclk, enable, {mantissa_in[double_mantissa-1], aanan, zip_d, aasat}, marks);

  // round: exponents from 960 on are infinite; with a flag the sign is the operand's
  wire [mantissa-1:0] sum = kept + {{mantissa-1{1'b0}}, up};
  wire halve = sum[mantissa-1] & !kept[mantissa-1];
  wire [double_exponent-1:0] following = exponent + {{double_exponent-1{1'b0}}, halve};
  wire too_large = following >= 960;
  wire [2:0] flags_d =
    {marks[2], !marks[2] & !marks[0] & marks[1], !marks[2] & (marks[0] | (too_large & !marks[1]))};
  wire sign = |flags_d ? marks[3] : sum[mantissa-1] & !halve;
  wire [mantissa-1:0] result_d = {sign, sum[mantissa-2] | halve, sum[mantissa-3:0]};

  wire [2:0] flags;
  xfc_register #(mantissa + exponent_bits, 1) round_0
    (sysclk, enable, {result_d, following[exponent_bits-1:0]}, cc);
  xfc_register #(3, 1) round_1 (sysclk, enable, flags_d, flags);

  assign ccsat = flags[0];
  assign cczip = flags[1];
  assign ccnan = flags[2];
endmodule
