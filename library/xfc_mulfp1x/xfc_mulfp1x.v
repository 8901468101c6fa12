// Multiplies two XFloat values in multiplier form (magnitudes from 1 to 2). The product is exact before it is brought
// into the form of the output: rounded to nearest even as an IEEE single (ieeeoutput), or with its lost bits or'ed into
// the lowest one in adder form (xoutput, from 1 to 4, or from 1 to 2 with outputscale), normalized in multiplier form
// (multoutput) or in sign and magnitude (divoutput). inf * 0 is nan; exponent field 0 is zero.
//   step recode:  digits of bb; exponents; flags
//   step rows:    sums of four rows of the product
//   step sum:     the product
//   step settle:  internal outputs: shift, exponent, range
//   step decide:  IEEE output: ones' complement of a negative product, shift, whether to round up; its exponent and
//                 the next one, both with range and flags
//   step round:   IEEE output: one carry chain for rounding and the missing unit chooses between them
// Latency 5 cycles with ieeeoutput, 3 + outputscale with xoutput, else 4: a register behind every step but sum, and
// behind sum when there are more than 3.
module xfc_mulfp1x
  #(parameter mantissa = 32, ieeeoutput = 1, xoutput = 0, multoutput = 0, divoutput = 0, outputscale = 0,
    synthesize = 0)
  (input sysclk, reset, enable,
   input [mantissa+10:1] aa,
   input aasat, aazip, aanan,
   input [mantissa+10:1] bb,
   input bbsat, bbzip, bbnan,
   output [(ieeeoutput == 1 ? 32 : mantissa + 10):1] cc,
   output ccsat, cczip, ccnan);

  generate
    if ((mantissa != 32 && mantissa != 36) || ieeeoutput < 0 || xoutput < 0 || multoutput < 0 || divoutput < 0 ||
        ieeeoutput + xoutput + multoutput + divoutput != 1 || outputscale < 0 || outputscale > 1 ||
        synthesize < 0 || synthesize > 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam exponent_bits = 10;
  localparam wide_bits = exponent_bits + 2;         // two's complement
  localparam bias = 127;
  localparam fraction_bits = 23;
  localparam ieee_exponent = 8;
  localparam top = 2 * mantissa - 1;                // sign of the product; below it 4, 2 and 1
  localparam sum_border = xoutput == 1 ? outputscale : 1;

  // recode
  wire [exponent_bits-1:0] a_exponent = aa[exponent_bits:1];
  wire [exponent_bits-1:0] b_exponent = bb[exponent_bits:1];
  wire [mantissa-1:0] a_mantissa = aa[mantissa+exponent_bits:exponent_bits+1];
  wire [mantissa-1:0] b_mantissa = bb[mantissa+exponent_bits:exponent_bits+1];
  wire a_zero = !aasat & (aazip | (a_exponent == 0));
  wire b_zero = !bbsat & (bbzip | (b_exponent == 0));
  wire sign = a_mantissa[mantissa-1] ^ b_mantissa[mantissa-1];
  wire nan = aanan | bbnan | (aasat & b_zero) | (a_zero & bbsat);
  wire sat = !nan & (aasat | bbsat);
  wire zip = !nan & !sat & (a_zero | b_zero);
  wire [3:0] recode_marks_d = {sign, nan, zip, sat};
  wire [exponent_bits:0] both_exponents_d = {1'b0, a_exponent} + {1'b0, b_exponent};

  wire [3:0] recode_marks;
  wire [exponent_bits:0] both_exponents;
  xfc_register #(4, 1) recode_0 (sysclk, enable, recode_marks_d, recode_marks);
  xfc_register #(exponent_bits + 1, 1) recode_1 (sysclk, enable, both_exponents_d, both_exponents);

  // rows
  wire [wide_bits-1:0] rows_exponent_d = {1'b0, both_exponents} - bias[wide_bits-1:0];

  wire [3:0] rows_marks;
  wire [wide_bits-1:0] rows_exponent;
  xfc_register #(4, 1) rows_0 (sysclk, enable, recode_marks, rows_marks);
  xfc_register #(wide_bits, 1) rows_1 (sysclk, enable, rows_exponent_d, rows_exponent);

  // sum
  wire [2*mantissa-1:0] product_d;
  xfc_product #(mantissa, synthesize, 1, 1, 0) multiply (sysclk, enable, a_mantissa, b_mantissa, product_d);

  wire [3:0] marks;
  wire [wide_bits-1:0] exponent;
  wire [2*mantissa-1:0] product;
  xfc_register #(4, sum_border) sum_0 (sysclk, enable, rows_marks, marks);
  xfc_register #(wide_bits, sum_border) sum_1 (sysclk, enable, rows_exponent, exponent);
  xfc_register #(2 * mantissa, sum_border) sum_2 (sysclk, enable, product_d, product);

  generate
    if (ieeeoutput == 1) begin : ieee
      // sum: the number's sign and exponent for each exponent that it may get, and which bits of its fraction count:
      // the highest one, the others
      wire [10:0] unshifted_d, halved_d, carried_d, unshifted, halved, carried;
      xfc_pack_ieee #(ieee_exponent, 2, wide_bits) pack_unshifted (rows_exponent, 2'b11, rows_marks, unshifted_d);
      xfc_pack_ieee #(ieee_exponent, 2, wide_bits) pack_halved
        (rows_exponent + {{wide_bits-1{1'b0}}, 1'b1}, 2'b11, rows_marks, halved_d);
      xfc_pack_ieee #(ieee_exponent, 2, wide_bits) pack_carried
        (rows_exponent + {{wide_bits-2{1'b0}}, 2'b10}, 2'b11, rows_marks, carried_d);
      xfc_register #(11, 1) sum_3 (sysclk, enable, unshifted_d, unshifted);
      xfc_register #(11, 1) sum_4 (sysclk, enable, halved_d, halved);
      xfc_register #(11, 1) sum_5 (sysclk, enable, carried_d, carried);
      wire unused_packs = &{1'b0, exponent, marks[1:0], carried[1:0]};

      // decide: the bits below the shift's reach are known by one that stands for them
      localparam low_bits = top - 4 - fraction_bits;
      wire [top:low_bits] magnitude = product[top:low_bits] ^ {top-low_bits+1{marks[3]}};
      wire low_is_zero = product[low_bits-1:0] == 0;
      wire low_bit = marks[3] == low_is_zero;
      wire halve = magnitude[top-1] | magnitude[top-2];
      wire [fraction_bits+1:0] shifted = halve ? magnitude[top-1:low_bits+2] : magnitude[top-2:low_bits+1];
      wire [fraction_bits+1:0] kept_d =              // nan has the highest bit of the fraction
        {shifted[fraction_bits+1] & !marks[2], shifted[fraction_bits], shifted[fraction_bits-1] | marks[2],
         shifted[fraction_bits-2:0]};
      wire [2:0] dropped = halve ? {magnitude[low_bits+1:low_bits], low_bit} : {magnitude[low_bits], {2{low_bit}}};
      wire up;
      xfc_round_even #(3) round_even (shifted[0], dropped, marks[3], up);
      wire [10:0] packed_d = halve ? halved : unshifted;
      wire [8:0] next_packed_d = halve ? carried[10:2] : halved[10:2];
      wire unused_sign = &{1'b0, magnitude[top]};

      wire [fraction_bits+1:0] kept;
      wire increment;
      wire [10:0] packed_number;
      wire [8:0] next_packed;
      xfc_register #(fraction_bits + 2, 1) decide_0 (sysclk, enable, kept_d, kept);
      xfc_register #(1, 1) decide_1 (sysclk, enable, up & !marks[2], increment);
      xfc_register #(11, 1) decide_2 (sysclk, enable, packed_d, packed_number);
      xfc_register #(9, 1) decide_3 (sysclk, enable, next_packed_d, next_packed);

      // round: what is carried up to 2 has a fraction of zero
      wire [fraction_bits+1:0] rounded = kept + {{fraction_bits+1{1'b0}}, increment};
      wire [31:0] result_d =
        {rounded[fraction_bits+1] ? next_packed : packed_number[10:2],
         rounded[fraction_bits-1:0] & {packed_number[1], {fraction_bits-1{packed_number[0]}}}};
      wire unused_hidden = &{1'b0, rounded[fraction_bits]};

      xfc_register #(32, 1) round_0 (sysclk, enable, result_d, cc);
      assign ccsat = 1'b0;
      assign cczip = 1'b0;
      assign ccnan = 1'b0;
    end else begin : internal
      // settle
      wire [mantissa-1:0] settled;
      wire [wide_bits-1:0] next_exponent;
      wire negative = product[top];
      if (xoutput == 1) begin : adder_form
        wire lost = |product[mantissa+1:0];
        wire [mantissa-3:0] kept = {product[top:mantissa+3], product[mantissa+2] | lost};
        wire two = negative ^ product[top-2] | (!negative & product[top-1]);
        // An exponent of 0 would be a zero.
        wire halve = outputscale == 1 ? two : exponent == 0;
        assign settled = halve ? {{3{negative}}, kept[mantissa-3:2], kept[1] | kept[0]} : {{2{negative}}, kept};
        assign next_exponent = exponent + {{wide_bits-1{1'b0}}, halve};
      end else begin : normalized
        wire lost = |product[mantissa-3:0];
        wire converts = divoutput == 1 && negative;
        wire increment = converts & !lost;
        wire [mantissa:0] value = (product[top-1:mantissa-2] ^ {mantissa+1{converts}}) + {{mantissa{1'b0}}, increment};
        wire four = value[mantissa] & (divoutput == 1 || !negative);
        wire two = (divoutput == 1 ? value[mantissa-1] : negative ^ value[mantissa-1]) | four;
        wire lowest = value[0] | lost;
        assign settled = two ? {negative, value[mantissa-1] | four, value[mantissa-2:2], value[1] | lowest}
                             : {negative, value[mantissa-2:1], lowest};
        assign next_exponent = exponent + {{wide_bits-2{1'b0}}, four, two & !four};
      end

      wire marked = |marks[2:0];
      wire below_zero = next_exponent[wide_bits-1];
      wire too_small = below_zero | (next_exponent == 0);
      // From 960 on the four high bits of the field are set.
      wire too_large = !below_zero & (next_exponent[exponent_bits] | (&next_exponent[exponent_bits-1:exponent_bits-4]));
      wire [mantissa-1:0] result_d = {marked ? marks[3] : settled[mantissa-1], settled[mantissa-2:0]};
      wire [2:0] result_flags_d =
        {marks[2], marks[1] | (too_small & !marked), marks[0] | (too_large & !marked)};

      wire [2:0] result_flags;
      xfc_register #(exponent_bits, 1) settle_0
        (sysclk, enable, next_exponent[exponent_bits-1:0], cc[exponent_bits:1]);
      xfc_register #(mantissa, 1) settle_1 (sysclk, enable, result_d, cc[mantissa+exponent_bits:exponent_bits+1]);
      xfc_register #(3, 1) settle_2 (sysclk, enable, result_flags_d, result_flags);
      assign ccsat = result_flags[0];
      assign cczip = result_flags[1];
      assign ccnan = result_flags[2];
    end
  endgenerate
endmodule
