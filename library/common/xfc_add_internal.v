// Adds two values of an internal form, or subtracts the second when addsub is 1: a common part of the adders. The
// operand with the smaller exponent is rounded to odd where it is shifted over the edge; the sum of this and the other
// one is exact, and is halved (the lost bit or'ed into the lowest) when it uses up the guard bits. inf - inf is nan,
// 0 - 0 is +0 but -0 - 0 is -0; exponent field 0 is zero.
//   step difference:  which operand is zero, which one leads, by how much the exponents differ
//   step order:       the operand with the larger exponent and the other one, which is shifted by 1 when a leads
//   step shift:       the shift by whole bytes
//   step align:       the shift by single bits; lost bits are or'ed into the lowest
//   step add:         one carry chain; of a split sum the lower half
//   step carry:       upper half of a split sum
//   step settle:      halve when the guard bits are used up; flags
// Registers behind order, align and settle always, behind difference and carry as their borders say, behind add as its
// border says when the sum is split. With one behind difference, that of the smaller operand is not behind order but
// behind shift. The mantissa has up to 64 bits.
module xfc_add_internal
  #(parameter mantissa = 32, exponent_bits = 10, split = 0, difference_border = 1, add_border = 1, carry_border = 1)
  (input sysclk, enable, addsub,
   input [mantissa+exponent_bits:1] aa,
   input aasat, aazip, aanan,
   input [mantissa+exponent_bits:1] bb,
   input bbsat, bbzip, bbnan,
   output [mantissa+exponent_bits:1] cc,
   output ccsat, cczip, ccnan);

  localparam fine_levels = 3;                       // distances below 8
  localparam levels = mantissa > 32 ? 6 : 5;        // enough to shift all but the sign out
  localparam word_levels = levels - fine_levels - 1;   // distances of 16 and more

  // difference
  wire [exponent_bits-1:0] a_exponent_d = aa[exponent_bits:1];
  wire [exponent_bits-1:0] b_exponent_d = bb[exponent_bits:1];
  wire [mantissa-1:0] a_mantissa_d = aa[mantissa+exponent_bits:exponent_bits+1];
  wire [mantissa-1:0] b_mantissa_d = bb[mantissa+exponent_bits:exponent_bits+1];
  wire a_zero = aazip | (a_exponent_d == 0);
  wire b_zero = bbzip | (b_exponent_d == 0);
  wire [2:0] a_flags_d = {aanan, a_zero, aasat};    // nan, zip, sat
  wire [2:0] b_flags_d = {bbnan, b_zero, bbsat};
  // a - b - 1 in two's complement: by how much it shifts the smaller operand, when that is b after a shift by 1, and as
  // a complement when it is a. Of equal exponents b leads.
  wire [exponent_bits:0] apart_d = {1'b0, a_exponent_d} + {1'b1, ~b_exponent_d};
  wire far_d = |(apart_d[exponent_bits-1:levels] ^ {exponent_bits-levels{apart_d[exponent_bits]}});
  // A zero never leads another operand.
  wire b_leads_d = a_zero | (!b_zero & apart_d[exponent_bits]);

  wire [exponent_bits-1:0] a_exponent, b_exponent;
  wire [mantissa-1:0] a_mantissa, b_mantissa;
  wire [levels-1:0] apart;
  wire [2:0] a_flags, b_flags;
  wire far, subtract, b_leads;
  xfc_register #(exponent_bits, difference_border) difference_0 (sysclk, enable, a_exponent_d, a_exponent);
  xfc_register #(exponent_bits, difference_border) difference_1 (sysclk, enable, b_exponent_d, b_exponent);
  xfc_register #(mantissa, difference_border) difference_2 (sysclk, enable, a_mantissa_d, a_mantissa);
  xfc_register #(mantissa, difference_border) difference_3 (sysclk, enable, b_mantissa_d, b_mantissa);
  xfc_register #(levels, difference_border) difference_4 (sysclk, enable, apart_d[levels-1:0], apart);
  xfc_register #(1, difference_border) difference_5 (sysclk, enable, far_d, far);
  xfc_register #(3, difference_border) difference_6 (sysclk, enable, a_flags_d, a_flags);
  xfc_register #(3, difference_border) difference_7 (sysclk, enable, b_flags_d, b_flags);
  xfc_register #(1, difference_border) difference_8 (sysclk, enable, addsub, subtract);
  xfc_register #(1, difference_border) difference_9 (sysclk, enable, b_leads_d, b_leads);

  // order: what is shifted by 1 here may lose a bit
  wire [exponent_bits-1:0] larger_exponent_d = b_leads ? b_exponent : a_exponent;
  wire [mantissa-1:0] larger_d = b_leads ? b_mantissa ^ {mantissa{subtract}} : a_mantissa;
  wire [mantissa-1:0] smaller_d = b_leads ? a_mantissa : {b_mantissa[mantissa-1], b_mantissa[mantissa-1:1]};
  wire smaller_lost = !b_leads & b_mantissa[0];
  wire smaller_is_zero = b_leads ? a_flags[1] : b_flags[1];
  wire [levels+3:0] shift_d = {apart, far, b_leads, smaller_lost, smaller_is_zero};
  wire [1:0] inverts_d = {subtract, subtract & !b_leads};   // subtract, the smaller operand is the subtrahend

  wire a_sign = a_mantissa[mantissa-1];
  wire b_sign = b_mantissa[mantissa-1] ^ subtract;
  wire nan = a_flags[2] | b_flags[2] | (a_flags[0] & b_flags[0] & (a_sign ^ b_sign));
  wire sat = !nan & (a_flags[0] | b_flags[0]);
  wire zip = !nan & !sat & a_flags[1] & b_flags[1];
  wire mark_sign = a_flags[0] ? a_sign : b_flags[0] ? b_sign : a_sign & b_sign;
  wire [3:0] marks_d = {mark_sign, nan, zip, sat};

  wire [exponent_bits-1:0] larger_exponent;
  wire [mantissa-1:0] larger, smaller;
  wire [levels-1:0] order_apart;
  wire order_far, order_b_leads, lost_before, is_zero;
  wire [1:0] inverts;
  wire [3:0] marks;
  xfc_register #(exponent_bits, 1) order_0 (sysclk, enable, larger_exponent_d, larger_exponent);
  xfc_register #(mantissa, 1) order_1 (sysclk, enable, larger_d, larger);
  xfc_register #(2, 1) order_2 (sysclk, enable, inverts_d, inverts);
  xfc_register #(4, 1) order_3 (sysclk, enable, marks_d, marks);
  xfc_register #(mantissa, 1 - difference_border) order_4 (sysclk, enable, smaller_d, smaller);
  xfc_register #(levels + 4, 1 - difference_border) order_5
    (sysclk, enable, shift_d, {order_apart, order_far, order_b_leads, lost_before, is_zero});

  // shift: a zero is shifted as zero
  wire [levels-1:0] distance = (order_apart ^ {levels{order_b_leads}}) | {levels{order_far}};
  wire [fine_levels-1:0] fine_d = distance[fine_levels-1:0];
  wire [mantissa-1:0] by_words, coarse_d;
  wire words_lost;
  wire [1:0] lost_d;                                // of words, of a byte
  xfc_shift_right #(mantissa, word_levels, 2 << fine_levels) shift_words
    (smaller, distance[levels-1:fine_levels+1], lost_before, by_words, words_lost);
  wire [mantissa-1:0] by_words_or_zero = by_words & {mantissa{!is_zero}};
  xfc_shift_right #(mantissa, 1, 1 << fine_levels) shift_byte
    (by_words_or_zero, distance[fine_levels], 1'b0, coarse_d, lost_d[0]);
  assign lost_d[1] = words_lost & !is_zero;

  wire [mantissa-1:0] coarse;
  wire [1:0] lost;
  wire [fine_levels-1:0] fine;
  xfc_register #(mantissa, difference_border) shift_0 (sysclk, enable, coarse_d, coarse);
  xfc_register #(2, difference_border) shift_1 (sysclk, enable, lost_d, lost);
  xfc_register #(fine_levels, difference_border) shift_2 (sysclk, enable, fine_d, fine);

  // align
  wire coarse_lost = |lost;
  wire [mantissa-1:0] aligned;
  wire aligned_lost;
  xfc_shift_right #(mantissa, fine_levels, 1) shift_fine (coarse, fine, coarse_lost, aligned, aligned_lost);
  wire [mantissa-1:0] jammed = {aligned[mantissa-1:1], aligned[0] | aligned_lost};
  wire [mantissa-1:0] addend_d = jammed ^ {mantissa{inverts[0]}};

  wire [exponent_bits-1:0] align_exponent;
  wire [mantissa-1:0] augend, addend;
  wire carry;
  wire [3:0] align_marks;
  xfc_register #(exponent_bits, 1) align_0 (sysclk, enable, larger_exponent, align_exponent);
  xfc_register #(mantissa, 1) align_1 (sysclk, enable, larger, augend);
  xfc_register #(mantissa, 1) align_2 (sysclk, enable, addend_d, addend);
  xfc_register #(1, 1) align_3 (sysclk, enable, inverts[1], carry);
  xfc_register #(4, 1) align_4 (sysclk, enable, marks, align_marks);

  // add and carry
  wire [mantissa:0] sum_d;
  wire [exponent_bits-1:0] add_exponent;
  wire [3:0] add_marks;
  generate
    if (split == 1) begin : halves
      localparam low_bits = mantissa / 2;
      localparam high_bits = mantissa + 1 - low_bits;   // one more than the operands have
      wire [low_bits:0] low_d =
        {1'b0, augend[low_bits-1:0]} + {1'b0, addend[low_bits-1:0]} + {{low_bits{1'b0}}, carry};
      wire [high_bits-1:0] augend_high_d = {augend[mantissa-1], augend[mantissa-1:low_bits]};
      wire [high_bits-1:0] addend_high_d = {addend[mantissa-1], addend[mantissa-1:low_bits]};

      wire [low_bits:0] low;
      wire [high_bits-1:0] augend_high, addend_high;
      xfc_register #(exponent_bits, add_border) add_0 (sysclk, enable, align_exponent, add_exponent);
      xfc_register #(low_bits + 1, add_border) add_1 (sysclk, enable, low_d, low);
      xfc_register #(high_bits, add_border) add_2 (sysclk, enable, augend_high_d, augend_high);
      xfc_register #(high_bits, add_border) add_3 (sysclk, enable, addend_high_d, addend_high);
      xfc_register #(4, add_border) add_4 (sysclk, enable, align_marks, add_marks);

      // both sums of the upper half are ready when the lower half's carry comes
      wire [high_bits-1:0] high_without = augend_high + addend_high;
      wire [high_bits-1:0] high_with = augend_high + addend_high + {{high_bits-1{1'b0}}, 1'b1};
      assign sum_d = {low[low_bits] ? high_with : high_without, low[low_bits-1:0]};
    end else begin : whole
      assign sum_d = {augend[mantissa-1], augend} + {addend[mantissa-1], addend} + {{mantissa{1'b0}}, carry};
      assign add_exponent = align_exponent;
      assign add_marks = align_marks;
    end
  endgenerate

  wire marked_d = |add_marks[2:0];
  wire near_d = (&add_exponent[exponent_bits-1:exponent_bits-3]) & !marked_d;   // perhaps too large

  wire [exponent_bits-1:0] carry_exponent;
  wire [mantissa:0] sum;
  wire [3:0] carry_marks;
  wire marked, near;
  xfc_register #(exponent_bits, carry_border) carry_0 (sysclk, enable, add_exponent, carry_exponent);
  xfc_register #(mantissa + 1, carry_border) carry_1 (sysclk, enable, sum_d, sum);
  xfc_register #(4, carry_border) carry_2 (sysclk, enable, add_marks, carry_marks);
  xfc_register #(2, carry_border) carry_3 (sysclk, enable, {marked_d, near_d}, {marked, near});

  // settle: exponents with their four high bits set are infinite; the lowest of the four may come with halving
  wire halve = sum[mantissa] ^ sum[mantissa-1];
  wire [mantissa-2:0] halved = {sum[mantissa-1:2], sum[1] | sum[0]};
  wire [mantissa-2:0] settled = halve ? halved : sum[mantissa-2:0];   // all but the sign
  wire result_sign = marked ? carry_marks[3] : sum[mantissa];
  wire [mantissa-1:0] result_d = {result_sign, settled};
  wire [exponent_bits-1:0] result_exponent_d = carry_exponent + {{exponent_bits-1{1'b0}}, halve};
  // Read from the sum that is there anyway, or, where there is no register behind carry, on a shorter path.
  wire lowest_comes =
    carry_border == 1 ? result_exponent_d[exponent_bits-4] : halve & (&carry_exponent[exponent_bits-5:0]);
  wire too_large = near & (carry_exponent[exponent_bits-4] | lowest_comes);
  wire [2:0] result_flags_d = {carry_marks[2:1], carry_marks[0] | too_large};

  wire [exponent_bits-1:0] result_exponent;
  wire [mantissa-1:0] result;
  wire [2:0] result_flags;
  xfc_register #(exponent_bits, 1) settle_0 (sysclk, enable, result_exponent_d, result_exponent);
  xfc_register #(mantissa, 1) settle_1 (sysclk, enable, result_d, result);
  xfc_register #(3, 1) settle_2 (sysclk, enable, result_flags_d, result_flags);

  assign cc = {result, result_exponent};
  assign ccsat = result_flags[0];
  assign cczip = result_flags[1];
  assign ccnan = result_flags[2];
endmodule
