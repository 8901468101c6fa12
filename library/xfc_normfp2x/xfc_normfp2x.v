// Normalizes a YDouble value in adder form: for a multiplier or divider (target 0), rounded to the 53 bits of its form,
// nearest even; or in adder form (target 1), nearest even when roundnormalize is 1, else lost bits are or'ed into the
// lowest. What comes below exponent 1 is zero, from 7680 on infinite. roundconvert costs cycles alone.
//   step complement:  ones' complement of a negative mantissa; whether it is minus a power of two
//   step bytes:       how many bytes in front are empty
//   step coarse:      shift left by so many bytes
//   step bits:        zeros in front of the first byte
//   step fine:        shift left by so many bits
//   step decide:      what is kept, whether to round up; the exponent
//   step round:       lower half of the carry chain
//   step carry:       upper half
//   step settle:      range and flags
// Latency 3 + normspeed + roundnormalize * (1 + doublespeed) + doublespeed * roundconvert cycles, 4 to 9: registers
// behind bytes, bits, decide and settle; a fifth stands behind coarse, then fine, carry, round, complement.
module xfc_normfp2x
  #(parameter roundconvert = 0, roundnormalize = 0, normspeed = 3, doublespeed = 0, target = 0, synthesize = 0)
  (input sysclk, reset, enable,
   input [77:1] aa,
   input aasat, aazip, aanan,
   output [10*target+67:1] cc,
   output ccsat, cczip, ccnan);

  generate
    if (roundconvert < 0 || roundconvert > 1 || roundnormalize < 0 || roundnormalize > 1 || normspeed < 1 ||
        normspeed > 3 || doublespeed < 0 || doublespeed > 1 || target < 0 || target > 1 || synthesize < 0 ||
        synthesize > 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam exponent_bits = 13;
  localparam guard_bits = 4;
  localparam fraction_bits = 52;
  localparam mantissa = 64;
  localparam magnitude_bits = mantissa - 1;
  localparam padded = 64;                           // whole bytes
  localparam wide_bits = exponent_bits + 2;         // exponent below zero and above the field
  localparam side_bits = exponent_bits + 5;
  localparam dropped_bits = magnitude_bits - fraction_bits - 1;
  localparam low_bits = 27;
  localparam latency = doublespeed * roundconvert + roundnormalize * (doublespeed + 1) + normspeed + 3;
  localparam coarse_border = latency / 5;
  localparam fine_border = latency / 6;
  localparam carry_border = latency / 7;
  localparam round_border = latency / 8;
  localparam complement_border = latency / 9;

  // complement: minus a power of two has no 1 behind a 0
  wire [mantissa-1:0] mantissa_in = aa[mantissa+exponent_bits:exponent_bits+1];
  wire [exponent_bits-1:0] exponent_in = aa[exponent_bits:1];
  wire sign_in = mantissa_in[mantissa-1];
  wire [magnitude_bits-1:0] magnitude_d = mantissa_in[magnitude_bits-1:0] ^ {magnitude_bits{sign_in}};
  wire power_in = target == 1 ? sign_in & !(|(mantissa_in[mantissa-2:0] & ~mantissa_in[mantissa-1:1])) : 1'b0;
  wire zip_in = aazip | (exponent_in == 0);
  wire [side_bits-1:0] side_d = {exponent_in, power_in, sign_in, aanan, zip_in, aasat};

  wire [magnitude_bits-1:0] magnitude;
  wire [side_bits-1:0] side;
  xfc_register #(magnitude_bits, complement_border) complement_0 (sysclk, enable, magnitude_d, magnitude);
  xfc_register #(side_bits, complement_border) complement_1 (sysclk, enable, side_d, side);

  // bytes, coarse, bits, fine
  wire [padded-1:0] normal;
  wire [5:0] zeros;
  wire [side_bits-1:0] fine_side;
  xfc_normalize #(magnitude_bits, side_bits, 1, coarse_border, 1, fine_border) normalize
    (sysclk, enable, magnitude, side[3], side, normal, zeros, fine_side);

  // decide: an adder's mantissa is complemented again, others keep the missing unit for the rounding
  wire power = fine_side[4];
  wire sign = fine_side[3];
  wire [wide_bits-1:0] leading_d =   // two's complement; four guard bits and the power's one
    {2'b00, fine_side[side_bits-1:5]} + {{wide_bits-3{1'b0}}, 2'b10, power} - {{wide_bits-6{1'b0}}, zeros};
  wire [magnitude_bits-1:0] magnitude_out = normal[padded-1:padded-magnitude_bits];
  wire unused_padding = &{1'b0, normal[padded-magnitude_bits-1:0]};
  wire [mantissa-1:0] kept_d;
  wire up_d;
  generate
    if (target == 1) begin : keep_for_adders
      wire [magnitude_bits-1:0] complement = magnitude_out ^ {magnitude_bits{sign}};
      wire [mantissa-1:0] exact = {sign, complement[magnitude_bits-1] | power, complement[magnitude_bits-2:0]};
      wire rounds_up;
      xfc_round_even #(guard_bits) round_even (exact[guard_bits], exact[guard_bits-1:0], 1'b0, rounds_up);
      wire lost = roundnormalize == 1 ? 1'b0 : |exact[guard_bits-1:0];
      assign kept_d = {{guard_bits{sign}}, exact[mantissa-1:guard_bits+1], exact[guard_bits] | lost};
      assign up_d = roundnormalize == 1 ? rounds_up : 1'b0;
      wire unused_rounds = &{1'b0, rounds_up};
    end else begin : keep_for_others
      wire unused_power = &{1'b0, power};
      assign kept_d = {{dropped_bits+1{1'b0}}, magnitude_out[magnitude_bits-1:dropped_bits]};
      xfc_round_even #(dropped_bits) round_even
        (magnitude_out[dropped_bits], magnitude_out[dropped_bits-1:0], sign, up_d);
    end
  endgenerate
  wire [3:0] marks_d = {sign, fine_side[2], fine_side[1] | !normal[padded-1], fine_side[0]};   // sign, nan, zip, sat

  wire [mantissa-1:0] kept;
  wire up;
  wire [wide_bits-1:0] leading;
  wire [3:0] marks;
  xfc_register #(mantissa, 1) decide_0 (sysclk, enable, kept_d, kept);
  xfc_register #(1, 1) decide_1 (sysclk, enable, up_d, up);
  xfc_register #(wide_bits, 1) decide_2 (sysclk, enable, leading_d, leading);
  xfc_register #(4, 1) decide_3 (sysclk, enable, marks_d, marks);

  // round
  wire [low_bits:0] low_d = {1'b0, kept[low_bits-1:0]} + {{low_bits{1'b0}}, up};

  wire [low_bits:0] low;
  wire [mantissa-1:low_bits] high;
  wire [wide_bits-1:0] round_leading;
  wire [3:0] round_marks;
  xfc_register #(low_bits + 1, round_border) round_0 (sysclk, enable, low_d, low);
  xfc_register #(mantissa - low_bits, round_border) round_1 (sysclk, enable, kept[mantissa-1:low_bits], high);
  xfc_register #(wide_bits, round_border) round_2 (sysclk, enable, leading, round_leading);
  xfc_register #(4, round_border) round_3 (sysclk, enable, marks, round_marks);

  // carry
  wire [mantissa-1:low_bits] high_sum = high + {{mantissa-low_bits-1{1'b0}}, low[low_bits]};

  wire [mantissa-1:0] sum;
  wire [wide_bits-1:0] carry_leading;
  wire [3:0] carry_marks;
  xfc_register #(mantissa, carry_border) carry_0 (sysclk, enable, {high_sum, low[low_bits-1:0]}, sum);
  xfc_register #(wide_bits, carry_border) carry_1 (sysclk, enable, round_leading, carry_leading);
  xfc_register #(4, carry_border) carry_2 (sysclk, enable, round_marks, carry_marks);

  // settle: what carries out of a multiplier's fraction is the next exponent; exponents from 7680 on have their four
  // high bits set, they are infinite
  wire following = target == 1 ? 1'b0 : sum[fraction_bits+1];
  wire [wide_bits-1:0] exponent = carry_leading + {{wide_bits-1{1'b0}}, following};
  wire below_zero = exponent[wide_bits-1];
  wire too_small = below_zero | (exponent == 0);
  wire too_large = !below_zero & (exponent[wide_bits-2] | (&exponent[exponent_bits-1:exponent_bits-4]));
  wire [2:0] flags_d =
    {carry_marks[2], !carry_marks[2] & !carry_marks[0] & (carry_marks[1] | too_small),
     !carry_marks[2] & (carry_marks[0] | (too_large & !carry_marks[1]))};
  wire [10*target+67:1] value_d;
  generate
    if (target == 1) begin : for_adders
      wire unused_sign = &{1'b0, carry_marks[3]};
      assign value_d = {sum, exponent[exponent_bits-1:0]};
    end else begin : for_others
      wire unused_high = &{1'b0, sum[mantissa-1:fraction_bits+2]};
      assign value_d =
        {carry_marks[3], sum[fraction_bits] | following, sum[fraction_bits-1:0], exponent[exponent_bits-1:0]};
    end
  endgenerate

  wire [2:0] flags;
  xfc_register #(10 * target + 67, 1) settle_0 (sysclk, enable, value_d, cc);
  xfc_register #(3, 1) settle_1 (sysclk, enable, flags_d, flags);

  assign ccsat = flags[0];
  assign cczip = flags[1];
  assign ccnan = flags[2];
endmodule
