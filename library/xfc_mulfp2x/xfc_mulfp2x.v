// Multiplies two YDouble values in multiplier form; their hidden ones are taken for granted. The product is exact
// before it is brought into the form of the output: rounded to nearest even as an IEEE double (ieeeoutput) or to the 53
// bits of the multiplier form (multoutput), or with lost bits or'ed into the lowest one in adder form (xoutput, from
// 1 to 4). inf * 0 is nan; exponent field 0 is zero. What comes below the smallest exponent is zero, what is too large
// is infinite. roundconvert, doublespeed, outputpipe and device say how many cycles there are; roundnormalize and
// doubleaccuracy change nothing.
//   step recode:  digits of bb; exponents; flags
//   step twos:    sums of two rows of the product
//   step pairs:   sums of four and of eight rows
//   step quads:   sums of sixteen rows
//   step sum:     the product
//   step decide:  shift, what is kept, in adder form complemented for a negative product; whether it gets a unit
//   step round:   lower half of the carry chain; the exponent, one more where rounding carries into it
//   step carry:   upper half
//   step settle:  the fields; range and flags
// Latency 7 - 2 * device + roundconvert * (1 + doublespeed) cycles with ieeeoutput, 7 - 2 * device with multoutput,
// 6 - 2 * device + (roundconvert == 1 ? 1 + doublespeed : outputpipe) with xoutput, 2 to 9: registers behind twos and
// settle; with more cycles also behind sum, quads, recode, decide, pairs, round, carry, in this order. With synthesize
// 1 the product is made of multiplier blocks.
module xfc_mulfp2x
  #(parameter ieeeoutput = 1, xoutput = 0, multoutput = 0, roundconvert = 0, roundnormalize = 0, doublespeed = 0,
    outputpipe = 1, doubleaccuracy = 1, device = 0, synthesize = 0)
  (input sysclk, reset, enable,
   input [67:1] aa,
   input aasat, aazip, aanan,
   input [67:1] bb,
   input bbsat, bbzip, bbnan,
   output [(ieeeoutput == 1 ? 64 : 67 + 10 * xoutput):1] cc,
   output ccsat, cczip, ccnan);

  generate
    if (ieeeoutput < 0 || xoutput < 0 || multoutput < 0 || ieeeoutput + xoutput + multoutput != 1 ||
        roundconvert < 0 || roundconvert > 1 || roundnormalize < 0 || roundnormalize > 1 || doublespeed < 0 ||
        doublespeed > 1 || outputpipe < 0 || outputpipe > 1 || doubleaccuracy < 0 || doubleaccuracy > 1 ||
        device < 0 || device > 2 || synthesize < 0 || synthesize > 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset, aa[66], bb[66]};     // hidden ones

  localparam exponent_bits = 13;
  localparam wide_bits = exponent_bits + 2;         // two's complement
  localparam bias = 1023;
  localparam fraction_bits = 52;
  localparam mantissa = fraction_bits + 2;          // sign, hidden one, fraction
  localparam adder_mantissa = 64;
  localparam low_bits = 6;                          // of the adder form
  localparam ieee_exponent = 11;
  localparam top = 2 * fraction_bits + 1;           // of the product: 2; below it 1
  localparam kept_bits = xoutput == 1 ? fraction_bits + low_bits + 2 : fraction_bits;
  localparam lower_bits = kept_bits / 2;
  localparam latency = ieeeoutput == 1 ? 7 - 2 * device + roundconvert * (1 + doublespeed) :
                       multoutput == 1 ? 7 - 2 * device :
                       6 - 2 * device + (roundconvert == 1 ? 1 + doublespeed : outputpipe);
  localparam sum_border = latency >= 3 ? 1 : 0;
  localparam quads_border = latency >= 4 ? 1 : 0;
  localparam recode_border = latency >= 5 ? 1 : 0;
  localparam decide_border = latency >= 6 ? 1 : 0;
  localparam pairs_border = latency >= 7 ? 1 : 0;
  localparam round_border = latency >= 8 ? 1 : 0;
  localparam carry_border = latency >= 9 ? 1 : 0;

  // recode
  wire [exponent_bits-1:0] a_exponent = aa[exponent_bits:1];
  wire [exponent_bits-1:0] b_exponent = bb[exponent_bits:1];
  wire a_zero = !aasat & (aazip | (a_exponent == 0));
  wire b_zero = !bbsat & (bbzip | (b_exponent == 0));
  wire nan = aanan | bbnan | (aasat & b_zero) | (a_zero & bbsat);
  wire sat = !nan & (aasat | bbsat);
  wire zip = !nan & !sat & (a_zero | b_zero);
  wire [3:0] recode_marks_d = {aa[mantissa+exponent_bits] ^ bb[mantissa+exponent_bits], nan, zip, sat};
  wire [exponent_bits:0] both_exponents_d = {1'b0, a_exponent} + {1'b0, b_exponent};

  wire [3:0] recode_marks, marks;
  wire [exponent_bits:0] both_exponents;
  xfc_register #(4, recode_border) recode_0 (sysclk, enable, recode_marks_d, recode_marks);
  xfc_register #(exponent_bits + 1, recode_border) recode_1 (sysclk, enable, both_exponents_d, both_exponents);

  // twos, pairs, quads, sum
  wire [wide_bits-1:0] twos_exponent_d = {1'b0, both_exponents} - bias[wide_bits-1:0];
  wire [2*mantissa-1:0] product_d;
  xfc_product #(mantissa, synthesize, recode_border, 0, pairs_border, quads_border, 1) multiply
    (sysclk, enable, {2'b01, aa[fraction_bits+exponent_bits:exponent_bits+1]},
     {2'b01, bb[fraction_bits+exponent_bits:exponent_bits+1]}, product_d);

  wire [wide_bits-1:0] exponent;
  wire [top:0] product;
  xfc_registers #(4, 1 + pairs_border + quads_border + sum_border) sum_0 (sysclk, enable, recode_marks, marks);
  xfc_registers #(wide_bits, 1 + pairs_border + quads_border + sum_border) sum_1
    (sysclk, enable, twos_exponent_d, exponent);
  xfc_register #(top + 1, sum_border) sum_2 (sysclk, enable, product_d[top:0], product);
  wire unused_signs = &{1'b0, product_d[2*mantissa-1:top+1]};

  // decide: a product from 2 on is halved, in adder form one whose exponent field would be 0
  wire halve = xoutput == 1 ? exponent == 0 : product[top];
  wire [wide_bits-1:0] decide_exponent_d = exponent + {{wide_bits-1{1'b0}}, halve};
  wire [kept_bits-1:0] kept_d;
  wire up_d;
  generate
    if (xoutput == 1) begin : keep_for_adders
      wire [kept_bits-1:0] magnitude =
        halve ? {1'b0, product[top:top+2-kept_bits]} : product[top:top+1-kept_bits];
      wire lost = (|product[top-kept_bits:0]) | (halve & product[top+1-kept_bits]);
      wire [kept_bits-1:0] complement = magnitude ^ {kept_bits{marks[3]}};
      assign kept_d = {complement[kept_bits-1:1], complement[0] | lost};
      assign up_d = marks[3] & !lost;
    end else begin : keep_for_others
      localparam lowest = top - 1 - fraction_bits;   // unless halved
      wire rest = |product[lowest-2:0];
      assign kept_d = halve ? product[top-1:lowest+1] : product[top-2:lowest];
      xfc_round_even #(3) round_even
        (kept_d[0], halve ? {product[lowest:lowest-1], rest} : {product[lowest-1], {2{rest}}}, 1'b0, up_d);
    end
  endgenerate
  wire [1:0] full_d = {&kept_d[kept_bits-1:lower_bits], &kept_d[lower_bits-1:0]};

  wire [kept_bits-1:0] kept;
  wire up;
  wire [1:0] full;
  wire [wide_bits-1:0] decide_exponent;
  wire [3:0] decide_marks;
  xfc_register #(kept_bits, decide_border) decide_0 (sysclk, enable, kept_d, kept);
  xfc_register #(1, decide_border) decide_1 (sysclk, enable, up_d, up);
  xfc_register #(2, decide_border) decide_2 (sysclk, enable, full_d, full);
  xfc_register #(wide_bits, decide_border) decide_3 (sysclk, enable, decide_exponent_d, decide_exponent);
  xfc_register #(4, decide_border) decide_4 (sysclk, enable, marks, decide_marks);

  // round: what is carried up to 2 has the next exponent; nothing is in adder form
  wire [lower_bits-1:0] lower_d = kept[lower_bits-1:0] + {{lower_bits-1{1'b0}}, up};
  wire upper_up_d = up & full[0];
  wire following = xoutput == 1 ? 1'b0 : up & (&full);
  wire [wide_bits-1:0] round_exponent_d = decide_exponent + {{wide_bits-1{1'b0}}, following};

  wire [lower_bits-1:0] lower;
  wire [kept_bits-1:lower_bits] upper;
  wire upper_up;
  wire [wide_bits-1:0] round_exponent;
  wire [3:0] round_marks;
  xfc_register #(lower_bits, round_border) round_0 (sysclk, enable, lower_d, lower);
  xfc_register #(kept_bits - lower_bits, round_border) round_1 (sysclk, enable, kept[kept_bits-1:lower_bits], upper);
  xfc_register #(1, round_border) round_2 (sysclk, enable, upper_up_d, upper_up);
  xfc_register #(wide_bits, round_border) round_3 (sysclk, enable, round_exponent_d, round_exponent);
  xfc_register #(4, round_border) round_4 (sysclk, enable, decide_marks, round_marks);

  // carry
  wire [kept_bits-1:lower_bits] upper_d = upper + {{kept_bits-lower_bits-1{1'b0}}, upper_up};

  wire [kept_bits-1:0] rounded;
  wire [wide_bits-1:0] last_exponent;
  wire [3:0] last_marks;
  xfc_register #(kept_bits, carry_border) carry_0 (sysclk, enable, {upper_d, lower}, rounded);
  xfc_register #(wide_bits, carry_border) carry_1 (sysclk, enable, round_exponent, last_exponent);
  xfc_register #(4, carry_border) carry_2 (sysclk, enable, round_marks, last_marks);

  // settle
  generate
    if (ieeeoutput == 1) begin : to_ieee
      wire [63:0] result_d;
      xfc_pack_ieee #(ieee_exponent, fraction_bits, wide_bits) pack (last_exponent, rounded, last_marks, result_d);

      xfc_register #(64, 1) settle_0 (sysclk, enable, result_d, cc);
      assign ccsat = 1'b0;
      assign cczip = 1'b0;
      assign ccnan = 1'b0;
    end else begin : internal
      localparam result_bits = xoutput == 1 ? adder_mantissa : mantissa;
      wire marked = |last_marks[2:0];
      wire below_zero = last_exponent[wide_bits-1];
      wire too_small = below_zero | (last_exponent == 0);
      // From 7680 on the four high bits of the field are set.
      wire too_large = !below_zero & (last_exponent[exponent_bits] | (&last_exponent[exponent_bits-1:exponent_bits-4]));
      wire [2:0] flags_d =
        {last_marks[2], last_marks[1] | (too_small & !marked), last_marks[0] | (too_large & !marked)};
      wire [result_bits-1:0] mantissa_d;
      if (xoutput == 1) begin : for_adders
        assign mantissa_d = {{adder_mantissa-kept_bits{last_marks[3]}}, rounded};
      end else begin : for_others
        assign mantissa_d = {last_marks[3], 1'b1, rounded};
      end

      wire [2:0] flags;
      xfc_register #(result_bits + exponent_bits, 1) settle_0
        (sysclk, enable, {mantissa_d, last_exponent[exponent_bits-1:0]}, cc);
      xfc_register #(3, 1) settle_1 (sysclk, enable, flags_d, flags);
      assign ccsat = flags[0];
      assign cczip = flags[1];
      assign ccnan = flags[2];
    end
  endgenerate
endmodule
