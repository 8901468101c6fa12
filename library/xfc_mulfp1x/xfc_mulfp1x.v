// Multiplies two XFloat values in multiplier form (magnitudes from 1 to 2). The product is exact before it is brought
// into the form of the output: rounded to nearest even as an IEEE single (ieeeoutput), or with its lost bits or'ed into
// the lowest one in adder form (xoutput, from 1 to 4, or from 1 to 2 with outputscale), normalized in multiplier form
// (multoutput) or in sign and magnitude (divoutput). inf * 0 is nan; exponent field 0 is zero.
//   step choose:  the rows of the product, for each two bits of bb; sum of the exponents; flags
//   step rows:    sums of four rows
//   step pairs:   sums of two of these
//   step sum:     the product
//   step settle:  internal outputs: shift, exponent, range
//   step round:   IEEE output: rounds the product for either place of its highest one, exponent and fraction in one
//                 carry chain, and chooses
// Latency 5 cycles with ieeeoutput, 3 + outputscale with xoutput, else 4: a register behind every step but pairs and
// sum, behind pairs with ieeeoutput, behind sum unless it is xoutput without outputscale.
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
  localparam pairs_border = ieeeoutput;
  localparam sum_border = xoutput == 1 ? outputscale : 1;

  // choose
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
  wire [3:0] choose_marks_d = {sign, nan, zip, sat};
  wire [exponent_bits:0] both_exponents_d = {1'b0, a_exponent} + {1'b0, b_exponent};

  wire [3:0] choose_marks;
  wire [exponent_bits:0] both_exponents;
  xfc_register #(4, 1) choose_0 (sysclk, enable, choose_marks_d, choose_marks);
  xfc_register #(exponent_bits + 1, 1) choose_1 (sysclk, enable, both_exponents_d, both_exponents);

  // rows
  wire [wide_bits-1:0] rows_exponent_d = {1'b0, both_exponents} - bias[wide_bits-1:0];

  wire [3:0] rows_marks;
  wire [wide_bits-1:0] rows_exponent;
  xfc_register #(4, 1) rows_0 (sysclk, enable, choose_marks, rows_marks);
  xfc_register #(wide_bits, 1) rows_1 (sysclk, enable, rows_exponent_d, rows_exponent);

  // pairs
  wire [3:0] pairs_marks;
  wire [wide_bits-1:0] pairs_exponent;
  xfc_register #(4, pairs_border) pairs_0 (sysclk, enable, rows_marks, pairs_marks);
  xfc_register #(wide_bits, pairs_border) pairs_1 (sysclk, enable, rows_exponent, pairs_exponent);

  // sum: of a negative product the ones' complement where it becomes an IEEE number
  wire [2*mantissa-1:0] product;
  wire [2*mantissa-1:0] value_d = product ^ {2*mantissa{ieeeoutput == 1 && pairs_marks[3]}};
  xfc_product #(mantissa, synthesize, 0, 1, pairs_border, 0, 0, 1) multiply
    (sysclk, enable, a_mantissa, b_mantissa, product);

  wire [3:0] marks;
  wire [wide_bits-1:0] exponent;
  wire [2*mantissa-1:0] value;
  xfc_register #(4, sum_border) sum_0 (sysclk, enable, pairs_marks, marks);
  xfc_register #(wide_bits, sum_border) sum_1 (sysclk, enable, pairs_exponent, exponent);
  xfc_register #(2 * mantissa, sum_border) sum_2 (sysclk, enable, value_d, value);

  generate
    if (ieeeoutput == 1) begin : ieee
      // pairs: the exponent of a product from 2 on
      wire [wide_bits-1:0] next_exponent_d = rows_exponent + {{wide_bits-1{1'b0}}, 1'b1};
      wire [wide_bits-1:0] next_exponent;
      xfc_register #(wide_bits, 1) pairs_2 (sysclk, enable, next_exponent_d, next_exponent);

      // sum: the number's sign and exponent below 2 and from 2 on, which bits of its fraction count (the highest one,
      // the others), whether rounding may give it the next exponent; one bit that stands for those below the
      // rounding's reach
      localparam low_bits = top - 4 - fraction_bits;
      wire [10:0] unshifted_d, halved_d, unshifted, halved;
      xfc_pack_ieee #(ieee_exponent, 2, wide_bits) pack_unshifted (pairs_exponent, 2'b11, pairs_marks, unshifted_d);
      xfc_pack_ieee #(ieee_exponent, 2, wide_bits) pack_halved (next_exponent, 2'b11, pairs_marks, halved_d);
      wire unshifted_carries_d = unshifted_d[0] | halved_d[0];
      wire halved_carries_d = halved_d[0] | ((next_exponent == 0) & !(|pairs_marks[2:0]));
      wire low_bit_d = pairs_marks[3] == (product[low_bits-1:0] == 0);
      wire unshifted_carries, halved_carries, low_bit;
      xfc_register #(11, 1) sum_3 (sysclk, enable, unshifted_d, unshifted);
      xfc_register #(11, 1) sum_4 (sysclk, enable, halved_d, halved);
      xfc_register #(1, 1) sum_5 (sysclk, enable, unshifted_carries_d, unshifted_carries);
      xfc_register #(1, 1) sum_6 (sysclk, enable, halved_carries_d, halved_carries);
      xfc_register #(1, 1) sum_7 (sysclk, enable, low_bit_d, low_bit);

      // round: what is carried up to the next exponent has a fraction of zero; so has a product of 4, whose exponent is
      // one more in any case
      wire unshifted_up, halved_up;
      xfc_round_even #(2) round_unshifted (value[low_bits+1], {value[low_bits], low_bit}, marks[3], unshifted_up);
      xfc_round_even #(3) round_halved
        (value[low_bits+2], {value[low_bits+1:low_bits], low_bit}, marks[3], halved_up);
      // The hidden one comes in between, and in front a bit that lets the carry in.
      localparam chain_bits = ieee_exponent + fraction_bits + 2;
      wire [chain_bits-1:0] unshifted_sum =
        {unshifted[9:2], value[top-3:low_bits+1], unshifted_carries} + {{chain_bits-1{1'b0}}, unshifted_up};
      wire [chain_bits-1:0] halved_sum =
        {halved[9:2], halved_carries, value[top-3:low_bits+2], halved_carries} +
        {{ieee_exponent{1'b0}}, value[top-1], {fraction_bits{1'b0}}, halved_up};
      wire halve = value[top-1] | value[top-2];
      wire [chain_bits-1:0] chosen = halve ? halved_sum : unshifted_sum;
      wire [1:0] counts = halve ? halved[1:0] : unshifted[1:0];
      wire [31:0] result_d =
        {unshifted[10], chosen[chain_bits-1:fraction_bits+2], (chosen[fraction_bits] & counts[1]) | marks[2],
         chosen[fraction_bits-1:1] & {fraction_bits-1{counts[0]}}};
      wire unused_here = &{1'b0, exponent, marks[1:0], value[top], value[low_bits-1:0], halved[10],
                           chosen[fraction_bits+1], chosen[0]};

      xfc_register #(32, 1) round_0 (sysclk, enable, result_d, cc);
      assign ccsat = 1'b0;
      assign cczip = 1'b0;
      assign ccnan = 1'b0;
    end else begin : internal
      // settle
      wire [mantissa-1:0] settled;
      wire [wide_bits-1:0] next_exponent;
      wire negative = value[top];
      if (xoutput == 1) begin : adder_form
        wire lost = |value[mantissa+1:0];
        wire [mantissa-3:0] kept = {value[top:mantissa+3], value[mantissa+2] | lost};
        wire two = negative ^ value[top-2] | (!negative & value[top-1]);
        // An exponent of 0 would be a zero.
        wire halve = outputscale == 1 ? two : exponent == 0;
        assign settled = halve ? {{3{negative}}, kept[mantissa-3:2], kept[1] | kept[0]} : {{2{negative}}, kept};
        assign next_exponent = exponent + {{wide_bits-1{1'b0}}, halve};
      end else begin : normalized
        wire lost = |value[mantissa-3:0];
        wire converts = divoutput == 1 && negative;
        wire increment = converts & !lost;
        wire [mantissa:0] magnitude =
          (value[top-1:mantissa-2] ^ {mantissa+1{converts}}) + {{mantissa{1'b0}}, increment};
        wire four = magnitude[mantissa] & (divoutput == 1 || !negative);
        wire two = (divoutput == 1 ? magnitude[mantissa-1] : negative ^ magnitude[mantissa-1]) | four;
        wire lowest = magnitude[0] | lost;
        assign settled = two ? {negative, magnitude[mantissa-1] | four, magnitude[mantissa-2:2], magnitude[1] | lowest}
                             : {negative, magnitude[mantissa-2:1], lowest};
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
