// Makes an IEEE number of a two's complement mantissa and an exponent: nearest, to even between two. A mantissa of
// 0100... (behind the sign) has the exponent field exponent + adjust. What is below the smallest normal number after
// rounding is zero, what is too large is infinite; nan goes before sat, sat before zero.
//   step complement:  ones' complement of a negative mantissa, one low unit short of its magnitude
//   step bytes:       how many bytes in front are empty
//   step coarse:      shift left by so many bytes
//   step bits:        zeros in front of the first byte
//   step fine:        shift left by so many bits
//   step decide:      whether to round up; the exponent of the leading one; nothing but zeros is zero
//   step round:       lower half of the fraction, for rounding and for the missing unit
//   step carry:       upper half of the fraction and the exponent
//   step range:       too small, too large
//   step pack:        the fields
// Registers behind bytes, bits, decide, carry and pack make 5 cycles; a sixth stands behind coarse, then fine, round,
// complement, range.
module xfc_to_ieee
  #(parameter mantissa_bits = 64,
    parameter adjust        = 4,
    parameter ieee_exponent = 11,
    parameter fraction_bits = 52,
    parameter latency       = 7)   // cycles, 5 to 10
  (input sysclk, enable,
   input [mantissa_bits-1:0] mantissa,
   input [12:0] exponent,
   input [2:0] flags,             // nan, zero, sat
   output [ieee_exponent+fraction_bits:0] result);

  localparam exponent_bits = 13;
  localparam wide_bits = exponent_bits + 2;          // exponent below zero and above the field
  localparam magnitude_bits = mantissa_bits - 1;
  localparam padded = 8 * (magnitude_bits / 8 + 1);
  localparam extension = fraction_bits + 3 > padded + 1 ? fraction_bits + 3 - padded : 1;
  localparam dropped_bits = padded + extension - 1 - fraction_bits;
  localparam low_bits = fraction_bits / 2;
  localparam high_bits = fraction_bits - low_bits;
  localparam coarse_border = latency / 6;
  localparam fine_border = latency / 7;
  localparam round_border = latency / 8;
  localparam complement_border = latency / 9;
  localparam range_border = latency / 10;
  localparam [wide_bits-1:0] adjustment = adjust[wide_bits-1:0];

  // complement
  wire sign = mantissa[mantissa_bits-1];
  wire [magnitude_bits-1:0] magnitude_d = mantissa[magnitude_bits-1:0] ^ {magnitude_bits{sign}};
  wire [exponent_bits+3:0] side_d = {exponent, sign, flags};

  wire [magnitude_bits-1:0] magnitude;
  wire [exponent_bits+3:0] side;
  xfc_register #(magnitude_bits, complement_border) complement_0 (sysclk, enable, magnitude_d, magnitude);
  xfc_register #(exponent_bits + 4, complement_border) complement_1 (sysclk, enable, side_d, side);

  // bytes, coarse, bits, fine: a negative mantissa is followed by ones, for the missing unit belongs to its lowest bit
  wire [padded-1:0] normal;
  wire [5:0] zeros;
  wire [exponent_bits+3:0] fine_side;
  xfc_normalize #(magnitude_bits, exponent_bits + 4, 1, coarse_border, 1, fine_border) normalize
    (sysclk, enable, magnitude, side[3], side, normal, zeros, fine_side);

  // decide
  wire fine_sign = fine_side[3];
  wire [padded+extension-1:0] extended = {normal, {extension{fine_sign}}};
  wire up_d;
  xfc_round_even #(dropped_bits) round_even
    (extended[dropped_bits], extended[dropped_bits-1:0], fine_sign, up_d);
  wire [wide_bits-1:0] leading_d =   // two's complement
    {2'b00, fine_side[exponent_bits+3:4]} + adjustment - {{wide_bits-6{1'b0}}, zeros};
  wire [3:0] decide_marks_d = {fine_side[3:2], fine_side[1] | !normal[padded-1], fine_side[0]};   // sign, nan, zip, sat

  wire up;
  wire [fraction_bits-1:0] kept;
  wire [wide_bits-1:0] leading;
  wire [3:0] decide_marks;
  xfc_register #(1, 1) decide_0 (sysclk, enable, up_d, up);
  xfc_register #(fraction_bits, 1) decide_1
    (sysclk, enable, extended[dropped_bits+fraction_bits-1:dropped_bits], kept);
  xfc_register #(wide_bits, 1) decide_2 (sysclk, enable, leading_d, leading);
  xfc_register #(4, 1) decide_3 (sysclk, enable, decide_marks_d, decide_marks);

  // round
  wire [low_bits:0] low_d = {1'b0, kept[low_bits-1:0]} + {{low_bits{1'b0}}, up};

  wire [low_bits:0] low;
  wire [wide_bits+high_bits-1:0] high;
  wire [3:0] round_marks;
  xfc_register #(low_bits + 1, round_border) round_0 (sysclk, enable, low_d, low);
  xfc_register #(wide_bits + high_bits, round_border) round_1
    (sysclk, enable, {leading, kept[fraction_bits-1:low_bits]}, high);
  xfc_register #(4, round_border) round_2 (sysclk, enable, decide_marks, round_marks);

  // carry
  wire [wide_bits+high_bits-1:0] high_sum = high + {{wide_bits+high_bits-1{1'b0}}, low[low_bits]};

  wire [fraction_bits-1:0] rounded;
  wire [wide_bits-1:0] rounded_exponent;
  wire [3:0] carry_marks;
  xfc_register #(fraction_bits, 1) carry_0 (sysclk, enable, {high_sum[high_bits-1:0], low[low_bits-1:0]}, rounded);
  xfc_register #(wide_bits, 1) carry_1 (sysclk, enable, high_sum[wide_bits+high_bits-1:high_bits], rounded_exponent);
  xfc_register #(4, 1) carry_2 (sysclk, enable, round_marks, carry_marks);

  // range
  wire below_zero = rounded_exponent[wide_bits-1];
  wire too_small = below_zero | (rounded_exponent == 0);
  wire too_large = !below_zero & ((|rounded_exponent[wide_bits-2:ieee_exponent]) |
                                  (&rounded_exponent[ieee_exponent-1:0]));
  wire flushed_d = !carry_marks[2] & !carry_marks[0] & (carry_marks[1] | too_small);
  wire ones_d = carry_marks[2] | carry_marks[0] | (too_large & !carry_marks[1]);
  wire [3:0] range_marks_d = {carry_marks[3] & !carry_marks[2], carry_marks[2], flushed_d, ones_d};

  wire [fraction_bits-1:0] range_fraction;
  wire [ieee_exponent-1:0] range_exponent;
  wire [3:0] range_marks;
  xfc_register #(fraction_bits, range_border) range_0 (sysclk, enable, rounded, range_fraction);
  xfc_register #(ieee_exponent, range_border) range_1
    (sysclk, enable, rounded_exponent[ieee_exponent-1:0], range_exponent);
  xfc_register #(4, range_border) range_2 (sysclk, enable, range_marks_d, range_marks);

  // pack
  wire constant = range_marks[1] | range_marks[0];
  wire [ieee_exponent-1:0] packed_exponent =
    (range_exponent | {ieee_exponent{range_marks[0]}}) & {ieee_exponent{!range_marks[1]}};
  wire [fraction_bits-1:0] packed_fraction =
    {range_marks[2] | (range_fraction[fraction_bits-1] & !constant),
     range_fraction[fraction_bits-2:0] & {fraction_bits-1{!constant}}};

  xfc_register #(ieee_exponent + fraction_bits + 1, 1) pack_0
    (sysclk, enable, {range_marks[3], packed_exponent, packed_fraction}, result);
endmodule
