// Divides XFloat values in divider form; their hidden ones are taken for granted. At the IEEE output the quotient is
// rounded to the nearest, to even between two (roundconvert 1), or truncated (0); what is below the smallest normal
// number after that is zero, what is too large is infinite, nan is 7FC00000. At the internal outputs (xoutput adder
// form, multoutput multiplier form, divoutput divider form) it has 25 bits and a 26th that is 1 where it is not exact.
// 0 / 0 and inf / inf are nan, x / 0 and inf / x infinite, 0 / x and x / inf zero; exponent field 0 is zero.
//   step order:   which significand is larger, so that the quotient is below 2; its hidden one; the divisor times three
//   step range:   the quotient's exponent, beside the first digit
//   step digit:   a base 4 digit a cycle, eleven of them
//   step last:    the twelfth digit and whether it leaves no remainder
//   step settle:  round and pack, or append the sticky bit and complement; flags
// Latency 13 cycles, a register behind order, each digit, and settle; with the IEEE output and roundconvert 1 there is
// one behind last too. `synthesize` changes nothing.
module xfc_divfp1x
  #(parameter mantissa = 32, ieeeoutput = 0, xoutput = 1, multoutput = 0, divoutput = 0, roundconvert = 0,
              synthesize = 0)
  (input sysclk, reset, enable,
   input [mantissa+10:1] aa,
   input aasat, aazip, aanan,
   input [mantissa+10:1] bb,
   input bbsat, bbzip, bbnan,
   output [mantissa+10-ieeeoutput*(mantissa-22):1] cc,
   output ccsat, cczip, ccnan);

  generate
    if ((mantissa != 32 && mantissa != 36) || ieeeoutput < 0 || xoutput < 0 || multoutput < 0 || divoutput < 0 ||
        ieeeoutput + xoutput + multoutput + divoutput != 1 || roundconvert < 0 || roundconvert > 1 ||
        synthesize < 0 || synthesize > 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate

  localparam exponent_bits = 10;
  localparam wide_bits = exponent_bits + 2;          // exponent below zero and above the field
  localparam fraction_bits = 23;
  localparam ieee_exponent = 8;
  localparam bias = 127;
  localparam magnitude_bits = mantissa - 1;
  localparam digits = 12;
  localparam quotient_bits = 2 * digits + 1;         // hidden one and base 4 digits
  localparam kept_bits = quotient_bits - 2;          // before the last digit
  localparam state_bits = 3 * magnitude_bits + 1 + quotient_bits;
  localparam aside_bits = 4 + wide_bits;             // marks and exponent
  localparam last_border = ieeeoutput * roundconvert;

  // order
  wire [magnitude_bits-1:0] dividend = {1'b1, aa[mantissa+exponent_bits-2:exponent_bits+1]};
  wire [magnitude_bits-1:0] divisor = {1'b1, bb[mantissa+exponent_bits-2:exponent_bits+1]};
  wire [magnitude_bits:0] difference = {1'b0, dividend} - {1'b0, divisor};
  wire [magnitude_bits:0] doubled_difference = {dividend, 1'b0} - {1'b0, divisor};
  wire less_d = difference[magnitude_bits];
  wire [magnitude_bits-1:0] remainder =
    less_d ? doubled_difference[magnitude_bits-1:0] : difference[magnitude_bits-1:0];
  wire [magnitude_bits+1:0] triple = {2'b00, divisor} + {1'b0, divisor, 1'b0};
  wire [state_bits-1:0] order_d =
    {remainder, ~divisor, ~triple[magnitude_bits+1:2], divisor[1:0] == 0, {quotient_bits-1{1'b0}}, 1'b1};
  wire [exponent_bits:0] exponents_d = {1'b0, aa[exponent_bits:1]} - {1'b0, bb[exponent_bits:1]};   // two's complement

  wire a_zero = aazip | (aa[exponent_bits:1] == 0);
  wire b_zero = bbzip | (bb[exponent_bits:1] == 0);
  wire nan = aanan | bbnan | (aasat & bbsat) | (!aasat & !bbsat & a_zero & b_zero);
  wire sat = !nan & (aasat | (b_zero & !bbsat));
  wire zip = !nan & !sat & (a_zero | bbsat);
  wire sign_d = aa[mantissa+exponent_bits] ^ bb[mantissa+exponent_bits];
  wire [3:0] marks_d = {sign_d, nan, zip, sat};

  wire [state_bits-1:0] first_state;
  wire [exponent_bits:0] exponents;
  wire less;
  wire [3:0] marks;
  xfc_register #(state_bits, 1) order_0 (sysclk, enable, order_d, first_state);
  xfc_register #(exponent_bits + 1, 1) order_1 (sysclk, enable, exponents_d, exponents);
  xfc_register #(1, 1) order_2 (sysclk, enable, less_d, less);
  xfc_register #(4, 1) order_3 (sysclk, enable, marks_d, marks);

  // range
  wire [wide_bits-1:0] quotient_exponent =   // two's complement
    {exponents[exponent_bits], exponents} + bias[wide_bits-1:0] - {{wide_bits-1{1'b0}}, less};
  wire [aside_bits-1:0] first_aside = {marks, quotient_exponent};

  // digit: what is known in front of the first and behind each
  genvar known;
  generate
    for (known = 0; known < digits; known = known + 1) begin : after
      wire [state_bits-1:0] state;
      wire [aside_bits-1:0] aside;
      if (known == 0) begin : step_range
        assign state = first_state;
        assign aside = first_aside;
      end else begin : step_digit
        xfc_divide_digit #(magnitude_bits, quotient_bits, 1) next_digit
          (sysclk, enable, after[known-1].state, state);
        xfc_register #(aside_bits, 1) digit_0 (sysclk, enable, after[known-1].aside, aside);
      end
    end
  endgenerate

  // last: nothing is left where four times the remainder is a multiple of the divisor
  wire [state_bits-1:0] before_last = after[digits-1].state;
  wire [magnitude_bits-1:0] last_remainder = before_last[state_bits-1-:magnitude_bits];
  wire [magnitude_bits-1:0] last_divisor = ~before_last[state_bits-1-magnitude_bits-:magnitude_bits];
  wire [magnitude_bits+1:0] last_triple =
    {~before_last[quotient_bits+1+:magnitude_bits], ^last_divisor[1:0], last_divisor[0]};
  wire [magnitude_bits+1:0] last_wide = {last_remainder, 2'b00};
  wire exact_d = (last_remainder == 0) | (last_wide == {2'b00, last_divisor}) |
                 (last_wide == {1'b0, last_divisor, 1'b0}) | (last_wide == last_triple);
  // The complement of the digits so far, for an exact quotient whose last digit is 0.
  wire [kept_bits-1:0] complement = ~before_last[kept_bits-1:0] + {{kept_bits-1{1'b0}}, 1'b1};

  wire [state_bits-1:0] last_state;
  wire exact;
  wire [aside_bits-1:0] last_aside;
  xfc_divide_digit #(magnitude_bits, quotient_bits, last_border) last (sysclk, enable, before_last, last_state);
  xfc_register #(1, last_border) last_0 (sysclk, enable, exact_d, exact);
  xfc_register #(aside_bits, last_border) last_1 (sysclk, enable, after[digits-1].aside, last_aside);

  // settle
  wire [quotient_bits-1:0] quotient = last_state[quotient_bits-1:0];
  wire sign, last_nan, last_zip, last_sat;
  wire [wide_bits-1:0] exponent;
  assign {sign, last_nan, last_zip, last_sat, exponent} = last_aside;
  wire below_zero = exponent[wide_bits-1];
  wire too_small = below_zero | (exponent == 0);

  generate
    if (ieeeoutput == 1) begin : to_ieee
      // Exponent field 0 may be rounded up to the smallest normal number, 254 to infinity, whose fraction is zero too.
      wire nearest_up;
      xfc_round_even #(2) round_even (quotient[1], {quotient[0], !exact}, 1'b0, nearest_up);
      wire up = nearest_up & (roundconvert == 1);
      wire too_large = !below_zero & ((|exponent[wide_bits-2:ieee_exponent]) | (&exponent[ieee_exponent-1:0]));
      wire [ieee_exponent+fraction_bits-1:0] rounded =
        {exponent[ieee_exponent-1:0], quotient[fraction_bits:1]} + {{ieee_exponent+fraction_bits-1{1'b0}}, up};
      wire all_ones = last_nan | last_sat | (too_large & !last_zip);
      wire all_zeros = !last_nan & !last_sat & (last_zip | below_zero);
      wire no_fraction = all_ones | last_zip | too_small;
      wire [ieee_exponent-1:0] field =
        all_ones ? {ieee_exponent{1'b1}} : all_zeros ? {ieee_exponent{1'b0}} :
        rounded[ieee_exponent+fraction_bits-1:fraction_bits];
      wire [fraction_bits-1:0] fraction =
        no_fraction ? {last_nan, {fraction_bits-1{1'b0}}} : rounded[fraction_bits-1:0];

      xfc_register #(32, 1) settle_0 (sysclk, enable, {sign & !last_nan, field, fraction}, cc);
      assign ccsat = 1'b0;
      assign cczip = 1'b0;
      assign ccnan = 1'b0;
      wire unused = &{1'b0, quotient[quotient_bits-1], complement};
    end else begin : internal
      localparam lead_bits = 1 + 4 * xoutput;               // sign, and guard bits of the adder form
      localparam value_bits = quotient_bits + 1;
      localparam low_bits = mantissa - lead_bits - value_bits;
      wire negative = sign & (divoutput == 0);
      wire [kept_bits-1:0] kept = quotient[quotient_bits-1:2];
      wire [1:0] digit = quotient[1:0];
      wire [value_bits-1:0] value =
        !negative ? {kept, digit, !exact} :
        !exact ? {~kept, ~digit, 1'b1} :
        {digit == 2'd0 ? complement : ~kept, digit[1] ^ digit[0], digit[0], 1'b0};
      wire [mantissa-1:0] result = {{lead_bits{sign}}, value, {low_bits{1'b0}}};
      // Exponents from 960 on have their four high bits set; they are infinite.
      wire too_large = !below_zero & (exponent[exponent_bits] | (&exponent[exponent_bits-1:exponent_bits-4]));
      wire [2:0] flags = {last_nan, last_zip | (too_small & !last_nan & !last_sat),
                          last_sat | (too_large & !last_nan & !last_zip)};

      xfc_register #(mantissa + exponent_bits, 1) settle_0
        (sysclk, enable, {result, exponent[exponent_bits-1:0]}, cc);
      xfc_register #(3, 1) settle_1 (sysclk, enable, flags, {ccnan, cczip, ccsat});
    end
  endgenerate
  wire unused = &{1'b0, reset, aa[mantissa+exponent_bits-1], bb[mantissa+exponent_bits-1],
                  doubled_difference[magnitude_bits], triple[1:0], last_state[state_bits-1:quotient_bits]};
endmodule
