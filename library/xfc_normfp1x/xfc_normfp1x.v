// Normalizes an XFloat value in adder form: its magnitude becomes 1 or more and below 2. Exact for a multiplier (target
// 0) and a divider (1, sign and magnitude), whatever inputnormalize says; in adder form (2) the four bits that the
// guard bits need are rounded to nearest even with roundnormalize, else or'ed into the lowest that is left. What has
// an exponent below 1 then is zero, as is a mantissa of zero; exponent field 0 is zero.
//   step magnitude:  a divider's magnitude
//   step count:      leading zeros, of the ones' complement of a negative number
//   step coarse:     shift left by whole bytes; the exponent of the leading one
//   step fine:       shift left by single bits
//   step round:      -2 becomes -1 with the next exponent; adder form: rounding
//   step settle:     range and flags
// Latency 2 + normspeed cycles (a register behind count, coarse and settle, and behind fine when normspeed is 2), one
// more for a divider (behind magnitude) and for roundnormalize in adder form (behind round); 1 for a multiplier without
// inputnormalize (behind settle alone).
module xfc_normfp1x
  #(parameter mantissa = 32, inputnormalize = 0, roundnormalize = 0, normspeed = 2, target = 0)
  (input sysclk, reset, enable,
   input [mantissa+10:1] aa,
   input aasat, aazip, aanan,
   output [mantissa+10:1] cc,
   output ccsat, cczip, ccnan);

  generate
    if ((mantissa != 32 && mantissa != 36) || inputnormalize < 0 || inputnormalize > 1 || roundnormalize < 0 ||
        roundnormalize > 1 || normspeed < 1 || normspeed > 2 || target < 0 || target > 2)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam exponent_bits = 10;
  localparam guard_bits = 4;
  localparam magnitude_bits = mantissa - 1;
  localparam fine_levels = 3;                       // distances below 8
  localparam levels = 5 + mantissa / 36;            // enough to count and shift magnitude_bits
  localparam coarse_levels = levels - fine_levels;
  localparam wide_bits = exponent_bits + 2;         // exponent below zero and above the field
  localparam divider = target == 1 ? 1 : 0;
  localparam adder = target == 2 ? 1 : 0;
  localparam pipelined = target != 0 ? 1 : inputnormalize;
  localparam fine_border = pipelined * (normspeed - 1);
  localparam round_border = adder * roundnormalize;

  // magnitude: -32 is half of it, one exponent higher
  wire [mantissa-1:0] mantissa_in = aa[mantissa+exponent_bits:exponent_bits+1];
  wire sign = mantissa_in[mantissa-1];
  wire [exponent_bits-1:0] exponent_d = aa[exponent_bits:1];
  wire negates = divider == 1 ? sign : 1'b0;
  wire [mantissa-1:0] converted = (mantissa_in ^ {mantissa{negates}}) + {{mantissa-1{1'b0}}, negates};
  wire largest = divider == 1 ? converted[mantissa-1] : 1'b0;
  wire [magnitude_bits-1:0] value_d =
    {converted[magnitude_bits-1] | largest, converted[magnitude_bits-2:0]};
  wire [4:0] marks_d =                              // one exponent higher, sign, nan, zip, sat
    {largest, sign, aanan, !aanan & !aasat & (aazip | (exponent_d == 0)), aasat & !aanan};

  wire [magnitude_bits-1:0] value;
  wire [exponent_bits-1:0] exponent;
  wire [4:0] marks;
  xfc_register #(magnitude_bits, divider) magnitude_0 (sysclk, enable, value_d, value);
  xfc_register #(exponent_bits, divider) magnitude_1 (sysclk, enable, exponent_d, exponent);
  xfc_register #(5, divider) magnitude_2 (sysclk, enable, marks_d, marks);

  // count
  wire complements = divider == 1 ? 1'b0 : marks[3];
  wire [levels-1:0] zeros_d;
  xfc_leading_zeros #(magnitude_bits, levels) count_zeros (value ^ {magnitude_bits{complements}}, zeros_d);

  wire [levels-1:0] zeros;
  wire [magnitude_bits-1:0] count_value;
  wire [exponent_bits-1:0] count_exponent;
  wire [4:0] count_marks;
  xfc_register #(levels, pipelined) count_0 (sysclk, enable, zeros_d, zeros);
  xfc_register #(magnitude_bits, pipelined) count_1 (sysclk, enable, value, count_value);
  xfc_register #(exponent_bits, pipelined) count_2 (sysclk, enable, exponent, count_exponent);
  xfc_register #(5, pipelined) count_3 (sysclk, enable, marks, count_marks);

  // coarse
  wire [magnitude_bits-1:0] coarse_d;
  xfc_shift_left #(magnitude_bits, coarse_levels, 1 << fine_levels) shift_coarse
    (count_value, zeros[levels-1:fine_levels], 1'b0, coarse_d);
  wire [wide_bits-1:0] leading_d =                  // two's complement
    {2'b00, count_exponent} + guard_bits[wide_bits-1:0] - {{wide_bits-levels{1'b0}}, zeros};

  wire [magnitude_bits-1:0] coarse;
  wire [wide_bits-1:0] leading;
  wire [fine_levels-1:0] fine_zeros;
  wire [4:0] coarse_marks;
  xfc_register #(magnitude_bits, pipelined) coarse_0 (sysclk, enable, coarse_d, coarse);
  xfc_register #(wide_bits, pipelined) coarse_1 (sysclk, enable, leading_d, leading);
  xfc_register #(fine_levels, pipelined) coarse_2 (sysclk, enable, zeros[fine_levels-1:0], fine_zeros);
  xfc_register #(5, pipelined) coarse_3 (sysclk, enable, count_marks, coarse_marks);

  // fine
  wire [magnitude_bits-1:0] shifted_d;
  xfc_shift_left #(magnitude_bits, fine_levels, 1) shift_fine (coarse, fine_zeros, 1'b0, shifted_d);

  wire [magnitude_bits-1:0] shifted;
  wire [wide_bits-1:0] fine_exponent;
  wire [4:0] fine_marks;
  xfc_register #(magnitude_bits, fine_border) fine_0 (sysclk, enable, shifted_d, shifted);
  xfc_register #(wide_bits, fine_border) fine_1 (sysclk, enable, leading, fine_exponent);
  xfc_register #(5, fine_border) fine_2 (sysclk, enable, coarse_marks, fine_marks);

  // round
  wire negative = fine_marks[3];
  wire is_minus_two = divider == 1 ? 1'b0 : negative & (shifted == 0);
  wire is_zero = !shifted[magnitude_bits-1] & (divider == 1 || !negative);
  wire [magnitude_bits-1:0] normal = {shifted[magnitude_bits-1] | is_minus_two, shifted[magnitude_bits-2:0]};
  wire [mantissa-1:0] rounded_d;
  generate
    if (adder == 1 && roundnormalize == 1) begin : nearest
      wire up;
      xfc_round_even #(guard_bits) round_even (normal[guard_bits], normal[guard_bits-1:0], 1'b0, up);
      wire [mantissa-guard_bits:0] sum =
        {{2{negative}}, normal[magnitude_bits-1:guard_bits]} + {{mantissa-guard_bits{1'b0}}, up};
      assign rounded_d = {{guard_bits-1{negative}}, sum};
    end else if (adder == 1) begin : jammed
      assign rounded_d = {{guard_bits+1{negative}}, normal[magnitude_bits-1:guard_bits+1], |normal[guard_bits:0]};
    end else begin : exact
      assign rounded_d = {negative, normal};
    end
  endgenerate
  wire [4:0] round_marks_d =
    {fine_marks[4] | is_minus_two, fine_marks[3:2], fine_marks[1] | (is_zero & !fine_marks[2] & !fine_marks[0]),
     fine_marks[0]};

  wire [mantissa-1:0] rounded;
  wire [wide_bits-1:0] round_exponent;
  wire [4:0] round_marks;
  xfc_register #(mantissa, round_border) round_0 (sysclk, enable, rounded_d, rounded);
  xfc_register #(wide_bits, round_border) round_1 (sysclk, enable, fine_exponent, round_exponent);
  xfc_register #(5, round_border) round_2 (sysclk, enable, round_marks_d, round_marks);

  // settle
  wire [wide_bits-1:0] next_exponent = round_exponent + {{wide_bits-1{1'b0}}, round_marks[4]};
  wire marked = |round_marks[2:0];
  wire below_zero = next_exponent[wide_bits-1];
  wire too_small = below_zero | (next_exponent == 0);
  // From 960 on the four high bits of the field are set.
  wire too_large = !below_zero & (next_exponent[exponent_bits] | (&next_exponent[exponent_bits-1:exponent_bits-4]));
  wire [mantissa-1:0] result_d = {marked ? round_marks[3] : rounded[mantissa-1], rounded[mantissa-2:0]};
  wire [2:0] result_flags_d =
    {round_marks[2], round_marks[1] | (too_small & !marked), round_marks[0] | (too_large & !marked)};

  wire [2:0] result_flags;
  xfc_register #(exponent_bits, 1) settle_0
    (sysclk, enable, next_exponent[exponent_bits-1:0], cc[exponent_bits:1]);
  xfc_register #(mantissa, 1) settle_1 (sysclk, enable, result_d, cc[mantissa+exponent_bits:exponent_bits+1]);
  xfc_register #(3, 1) settle_2 (sysclk, enable, result_flags_d, result_flags);
  assign ccsat = result_flags[0];
  assign cczip = result_flags[1];
  assign ccnan = result_flags[2];
endmodule
