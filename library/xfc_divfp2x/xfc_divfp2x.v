// Divides YDouble values in multiplier form; their hidden ones are taken for granted. At the IEEE output the quotient
// is rounded to the nearest, to even between two (roundconvert 1), or truncated (0); in divider form (divoutput, which
// is the multiplier form) it is rounded to its 53 bits, in adder form (xoutput) it has 55 bits and a 56th that is 1
// where it is not exact. What comes below the smallest exponent is zero, what is too large is infinite. 0 / 0 and
// inf / inf are nan, x / 0 and inf / x infinite, 0 / x and x / inf zero; exponent field 0 is zero. The other generics
// say how many cycles there are; doubleaccuracy and synthesize change nothing. README.md explains the digits.
//   step compare:  which significand is larger; b's inverse to eight bits; exponents; flags
//   step order:    the dividend, so that the quotient is from 1 to 2; the quotient's exponent
//   step scale:    dividend and divisor times b's inverse: rows
//   step near:     the sums, the divisor's near 1
//   step rows:     the next digit times the divisor, subtracted; eight digits, five bits and seven times seven
//   step rest:     what is left for the next digit
//   step decide:   what is kept, complemented for adders where it is negative; whether a unit comes on or off
//   step round:    one carry chain
//   step settle:   the fields; range and flags
// Latency 21 + 4 * doublespeed - device * (1 + 2 * doublespeed) + roundconvert * (1 + doublespeed) cycles with
// ieeeoutput, 20 + 4 * doublespeed - device * (1 + 2 * doublespeed) with divoutput and as many with xoutput, but one
// more with roundconvert and doublespeed; 18 to 27. Registers are behind order, near, all rows but the last one, all
// rests and settle; with more cycles also behind the last rows, scale, decide, round, compare, in this order, and what
// there is above 23 stands behind settle.
module xfc_divfp2x
  #(parameter ieeeoutput = 1, xoutput = 0, divoutput = 0, roundconvert = 0, doublespeed = 0, doubleaccuracy = 1,
    device = 0, synthesize = 0)
  (input sysclk, reset, enable,
   input [67:1] aa,
   input aasat, aazip, aanan,
   input [67:1] bb,
   input bbsat, bbzip, bbnan,
   output [(ieeeoutput == 1 ? 64 : 67 + 10 * xoutput):1] cc,
   output ccsat, cczip, ccnan);

  generate
    if (ieeeoutput < 0 || xoutput < 0 || divoutput < 0 || ieeeoutput + xoutput + divoutput != 1 ||
        roundconvert < 0 || roundconvert > 1 || doublespeed < 0 || doublespeed > 1 || doubleaccuracy < 0 ||
        doubleaccuracy > 1 || device < 0 || device > 2 || synthesize < 0 || synthesize > 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset, aa[66], bb[66]};     // hidden ones

  localparam exponent_bits = 13;
  localparam wide_bits = exponent_bits + 2;         // two's complement
  localparam bias = 1023;
  localparam fraction_bits = 52;
  localparam mantissa = fraction_bits + 2;          // sign, hidden one, fraction
  localparam adder_mantissa = 64;
  localparam guard_bits = 4;                        // of the adder form
  localparam ieee_exponent = 11;
  localparam digits = 8;
  localparam point = 61;                            // bits behind it: of dividend and divisor when scaled
  localparam quotient_bits = 55;                    // 1, and 54 bits behind the point
  localparam kept_bits = xoutput == 1 ? quotient_bits : fraction_bits;
  localparam family = device * (1 + 2 * doublespeed);
  localparam latency = ieeeoutput == 1 ? 21 + 4 * doublespeed - family + roundconvert * (1 + doublespeed) :
                       20 + 4 * doublespeed - family + xoutput * roundconvert * doublespeed;
  localparam last_border = latency >= 19 ? 1 : 0;
  localparam scale_border = latency >= 20 ? 1 : 0;
  localparam decide_border = latency >= 21 ? 1 : 0;
  localparam round_border = latency >= 22 ? 1 : 0;
  localparam compare_border = latency >= 23 ? 1 : 0;
  localparam more_borders = latency >= 24 ? latency - 23 : 0;

  // compare
  wire [fraction_bits-1:0] a_fraction_d = aa[fraction_bits+exponent_bits:exponent_bits+1];
  wire [fraction_bits-1:0] b_fraction_d = bb[fraction_bits+exponent_bits:exponent_bits+1];
  wire less_d = a_fraction_d < b_fraction_d;
  wire [8:0] row_d;
  xfc_divfp2x_table inverse (b_fraction_d[fraction_bits-1:fraction_bits-8], row_d);
  wire [exponent_bits:0] exponents_d = {1'b0, aa[exponent_bits:1]} - {1'b0, bb[exponent_bits:1]};   // two's complement
  wire a_zero = aazip | (aa[exponent_bits:1] == 0);
  wire b_zero = bbzip | (bb[exponent_bits:1] == 0);
  wire nan = aanan | bbnan | (aasat & bbsat) | (!aasat & !bbsat & a_zero & b_zero);
  wire sat = !nan & (aasat | (b_zero & !bbsat));
  wire zip = !nan & !sat & (a_zero | bbsat);
  wire [3:0] compare_marks_d = {aa[mantissa+exponent_bits] ^ bb[mantissa+exponent_bits], nan, zip, sat};

  wire [fraction_bits-1:0] a_fraction, b_fraction;
  wire less;
  wire [8:0] compare_row;
  wire [exponent_bits:0] exponents;
  wire [3:0] compare_marks;
  xfc_register #(fraction_bits, compare_border) compare_0 (sysclk, enable, a_fraction_d, a_fraction);
  xfc_register #(fraction_bits, compare_border) compare_1 (sysclk, enable, b_fraction_d, b_fraction);
  xfc_register #(1, compare_border) compare_2 (sysclk, enable, less_d, less);
  xfc_register #(9, compare_border) compare_3 (sysclk, enable, row_d, compare_row);
  xfc_register #(exponent_bits + 1, compare_border) compare_4 (sysclk, enable, exponents_d, exponents);
  xfc_register #(4, compare_border) compare_5 (sysclk, enable, compare_marks_d, compare_marks);

  // order
  wire [fraction_bits+1:0] dividend_d = less ? {1'b1, a_fraction, 1'b0} : {2'b01, a_fraction};
  wire [wide_bits-1:0] exponent_d =
    {exponents[exponent_bits], exponents} + bias[wide_bits-1:0] - {{wide_bits-1{1'b0}}, less};

  wire [fraction_bits+1:0] dividend;
  wire [fraction_bits-1:0] divisor_fraction;
  wire [8:0] row;
  wire [wide_bits-1:0] order_exponent, exponent;
  wire [3:0] order_marks, marks;
  xfc_register #(fraction_bits + 2, 1) order_0 (sysclk, enable, dividend_d, dividend);
  xfc_register #(fraction_bits, 1) order_1 (sysclk, enable, b_fraction, divisor_fraction);
  xfc_register #(9, 1) order_2 (sysclk, enable, compare_row, row);
  xfc_register #(wide_bits, 1) order_3 (sysclk, enable, exponent_d, order_exponent);
  xfc_register #(4, 1) order_4 (sysclk, enable, compare_marks, order_marks);
  xfc_registers #(wide_bits, scale_border + 2 * digits + last_border) aside_0
    (sysclk, enable, order_exponent, exponent);
  xfc_registers #(4, scale_border + 2 * digits + last_border) aside_1 (sysclk, enable, order_marks, marks);

  // scale, near
  wire [point+1:0] scaled_dividend_d, scaled_divisor_d;
  xfc_divfp2x_scale #(scale_border) scale_dividend (sysclk, enable, dividend, row, scaled_dividend_d);
  xfc_divfp2x_scale #(scale_border) scale_divisor
    (sysclk, enable, {2'b01, divisor_fraction}, row, scaled_divisor_d);
  wire [8:0] first_codes_d;
  xfc_divfp2x_codes first_digit
    (1'b0, {1'b0, scaled_dividend_d[point+1:point-5]}, scaled_dividend_d[point-6], first_codes_d);
  wire unused_top = &{1'b0, scaled_divisor_d[point+1]};

  // rows, rest: what is known in front of the first digit and behind each
  genvar known;
  generate
    for (known = 0; known <= digits; known = known + 1) begin : after
      wire [point:0] divisor;
      wire [point+2:0] remainder;
      wire [8:0] codes;
      wire [quotient_bits-1:0] quotient;
      if (known == 0) begin : step_near
        xfc_register #(point + 1, 1) near_0 (sysclk, enable, scaled_divisor_d[point:0], divisor);
        xfc_register #(point + 3, 1) near_1 (sysclk, enable, {1'b0, scaled_dividend_d}, remainder);
        xfc_register #(9, 1) near_2 (sysclk, enable, first_codes_d, codes);
        assign quotient = {quotient_bits{1'b0}};
      end else begin : step_digit
        xfc_divfp2x_digit #(known == 1 ? 5 : 7, known == digits ? last_border : 1, 1) next_digit
          (sysclk, enable, after[known-1].divisor, after[known-1].remainder, after[known-1].codes,
           after[known-1].quotient, divisor, remainder, codes, quotient);
      end
    end
  endgenerate

  // decide: what is left says whether the quotient is more or less than its digits, or they are all of it
  wire [quotient_bits-1:0] quotient = after[digits].quotient;
  wire below = after[digits].remainder[point];
  wire lost_d = xoutput == 1 ? |after[digits].remainder[point:0] : 1'b0;
  wire [kept_bits-1:0] kept_d;
  wire up_d, down_d;
  generate
    if (xoutput == 1) begin : keep_for_adders
      assign kept_d = quotient ^ {quotient_bits{marks[3]}};
      assign up_d = marks[3] & (below | !lost_d);
      assign down_d = !marks[3] & below;
    end else begin : keep_for_others
      // Nothing is halfway between two numbers.
      localparam rounds = ieeeoutput == 0 || roundconvert == 1;
      assign kept_d = quotient[fraction_bits+1:2];
      assign up_d = rounds && quotient[1] & (quotient[0] | !below);
      assign down_d = !rounds && below & (quotient[1:0] == 2'd0);
      wire unused_one = &{1'b0, quotient[quotient_bits-1]};
    end
  endgenerate
  wire unused_last = &{1'b0, after[digits].divisor, after[digits].remainder, after[digits].codes};

  wire [kept_bits-1:0] kept;
  wire up, down, lost;
  wire [wide_bits-1:0] decide_exponent;
  wire [3:0] decide_marks;
  xfc_register #(kept_bits, decide_border) decide_0 (sysclk, enable, kept_d, kept);
  xfc_register #(3, decide_border) decide_1 (sysclk, enable, {up_d, down_d, lost_d}, {up, down, lost});
  xfc_register #(wide_bits, decide_border) decide_2 (sysclk, enable, exponent, decide_exponent);
  xfc_register #(4, decide_border) decide_3 (sysclk, enable, marks, decide_marks);

  // round
  wire [kept_bits-1:0] rounded_d = kept + {{kept_bits-1{down}}, up | down};

  wire [kept_bits-1:0] rounded;
  wire sticky;
  wire [wide_bits-1:0] last_exponent;
  wire [3:0] last_marks;
  xfc_register #(kept_bits, round_border) round_0 (sysclk, enable, rounded_d, rounded);
  xfc_register #(1, round_border) round_1 (sysclk, enable, lost, sticky);
  xfc_register #(wide_bits, round_border) round_2 (sysclk, enable, decide_exponent, last_exponent);
  xfc_register #(4, round_border) round_3 (sysclk, enable, decide_marks, last_marks);

  // settle
  generate
    if (ieeeoutput == 1) begin : to_ieee
      wire [63:0] result_d;
      xfc_pack_ieee #(ieee_exponent, fraction_bits, wide_bits) pack (last_exponent, rounded, last_marks, result_d);

      xfc_registers #(64, 1 + more_borders) settle_0 (sysclk, enable, result_d, cc);
      assign ccsat = 1'b0;
      assign cczip = 1'b0;
      assign ccnan = 1'b0;
      wire unused_sticky = &{1'b0, sticky};
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
        assign mantissa_d = {{guard_bits+1{last_marks[3]}}, rounded, sticky,
                             {adder_mantissa-guard_bits-2-quotient_bits{1'b0}}};
      end else begin : for_others
        wire unused_sticky = &{1'b0, sticky};
        assign mantissa_d = {last_marks[3], 1'b1, rounded};
      end

      wire [2:0] flags;
      xfc_registers #(result_bits + exponent_bits, 1 + more_borders) settle_0
        (sysclk, enable, {mantissa_d, last_exponent[exponent_bits-1:0]}, cc);
      xfc_registers #(3, 1 + more_borders) settle_1 (sysclk, enable, flags_d, flags);
      assign ccsat = flags[0];
      assign cczip = flags[1];
      assign ccnan = flags[2];
    end
  endgenerate
endmodule
