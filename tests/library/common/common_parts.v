// Tries the common parts on every input of a small width, against plain arithmetic. Prints what differs, then the
// number of differences.
module common_parts;
  reg signed [7:0] value;
  reg [3:0] distance;
  reg before, fill, clock, enable;
  wire [7:0] right, left, stored, passed;
  wire lost, up, up_complemented;
  wire [3:0] zeros;
  wire [15:0] normal;
  wire [5:0] shifted_out;
  wire beside;
  reg [7:0] kept;
  wire [11:0] product, product_later, product_in_blocks;
  wire [14:0] product_of_odd_bits;
  wire [7:0] chained;
  reg [7:0] kept_before;
  reg [3:0] factor;
  integer i, d, errors, exact_now, exact_before, magnitude, exact, nearest;
  wire [8:0] root_1, root_2, root_3;
  wire [17:0] divided;

  xfc_shift_right #(8, 4, 1) shift_right (value, distance, before, right, lost);
  xfc_shift_left #(8, 4, 1) shift_left (value, distance, fill, left);
  xfc_leading_zeros #(8, 4) leading_zeros (value, zeros);
  xfc_round_even #(3) round_even (value[3], value[2:0], 1'b0, up);
  xfc_round_even #(3) round_complemented (value[3], value[2:0], 1'b1, up_complemented);
  xfc_normalize #(11, 1) normalize (clock, enable, {3'b000, value}, fill, before, normal, shifted_out, beside);
  // The root of an eight-bit value whose highest pair of bits is not 0; remainder and divisor of four bits each.
  xfc_root_digit #(4, 1, 0) root_digit_1 (clock, enable, {value[7:6] - 2'd1, value[5:0], 1'b0}, root_1);
  xfc_root_digit #(4, 2, 0) root_digit_2 (clock, enable, root_1, root_2);
  xfc_root_digit #(4, 3, 0) root_digit_3 (clock, enable, root_2, root_3);
  wire [5:0] thrice = 3 * value[3:0];
  wire low_is_zero = value[1:0] == 0;
  xfc_divide_digit #(4, 5, 0) divide_digit
    (clock, enable, {value[7:4], ~value[3:0], ~thrice[5:2], low_is_zero, 5'd5}, divided);
  xfc_register #(8, 1) register_there (clock, enable, value, stored);
  xfc_register #(8, 0) register_left_out (clock, enable, value, passed);
  xfc_registers #(8, 2) registers (clock, enable, value, chained);

  // Products: without registers, with two behind each other, as an operator, with a number of bits that is no power.
  wire [9:0] triple = {2'b00, value} + {1'b0, value, 1'b0};
  xfc_unsigned_product #(8, 4, 0, 0) tree (clock, enable, value, triple, factor, product);
  xfc_unsigned_product #(8, 4, 3, 0) tree_later (clock, enable, value, triple, factor, product_later);
  xfc_unsigned_product #(8, 4, 0, 1) operator (clock, enable, value, triple, factor, product_in_blocks);
  xfc_unsigned_product #(8, 7, 0, 0) tree_of_odd_bits
    (clock, enable, value, triple, {factor[2:0], factor}, product_of_odd_bits);

  task expect_equal(input integer found, input integer wanted, input integer part);
    if (found !== wanted) begin
      $display("part %0d, value %0d, distance %0d: %0d, not %0d", part, value, distance, found, wanted);
      errors = errors + 1;
    end
  endtask

  // The nearest multiple of 8, to an even one between two, in units of 8.
  function integer nearest_even(input integer number);
    begin
      nearest_even = number / 8;
      if (number % 8 > 4 || (number % 8 == 4 && nearest_even % 2 == 1)) nearest_even = nearest_even + 1;
    end
  endfunction

  initial begin
    errors = 0;
    clock = 0;
    enable = 1;
    kept = 0;
    exact_now = -1;
    exact_before = -1;
    value = 0;
    #1 clock = 1;
    #1 clock = 0;
    for (i = 0; i < 256; i = i + 1)
      for (d = 0; d < 16; d = d + 1) begin
        value = i;
        distance = d;
        factor = d;
        before = (i + d) % 3 == 0;
        fill = (i + d) % 2 == 0;
        #1;
        expect_equal($signed(right), value >>> d, 1);
        // Copies of the sign that go over the edge count as well.
        exact = value;
        expect_equal(lost, before || (exact & ((1 << d) - 1)) != 0, 2);
        exact = (i << d) | (fill ? (1 << d) - 1 : 0);
        expect_equal(left, exact & 255, 3);
        magnitude = 8;
        while (magnitude > 0 && (i >> (8 - magnitude)) != 0) magnitude = magnitude - 1;
        expect_equal(zeros, magnitude, 4);
        // Eleven bits, three of them zeros, and five copies of fill; all zeros count but for the last bit.
        exact = i * 32 + (fill ? 31 : 0);
        magnitude = 0;
        while (magnitude < 15 && exact < 32768) begin
          exact = exact * 2 + fill;
          magnitude = magnitude + 1;
        end
        expect_equal(normal, exact, 18);
        expect_equal(shifted_out, magnitude, 19);
        expect_equal(beside, before, 20);
        expect_equal(i / 8 + up, nearest_even(i), 5);
        expect_equal(i / 8 + up_complemented, nearest_even(i + 1), 6);
        expect_equal(passed, i, 7);
        expect_equal(product, i * d, 9);
        expect_equal(product_in_blocks, i * d, 10);
        expect_equal(product_of_odd_bits, i * (d % 8 * 16 + d), 11);
        exact = 15 - root_3[3:0];
        nearest = i - exact * exact;
        if (i >= 64) expect_equal(nearest >= 0 && nearest <= 2 * exact && root_3[8:4] == nearest, 1, 14);
        if (value[7:4] < value[3:0]) begin
          exact = 4 * (i / 16);
          expect_equal(divided[17:14], exact % (i % 16), 15);
          expect_equal(divided[13:5], {~value[3:0], ~thrice[5:2], low_is_zero}, 16);
          expect_equal(divided[4:0], 20 + exact / (i % 16), 17);
        end
        enable = (i + d) % 4 != 0;
        #1 clock = 1;
        if (enable) begin
          kept_before = kept;
          exact_before = exact_now;
          kept = value;
          exact_now = i * d;
        end
        #1 clock = 0;
        value = ~value;
        factor = ~factor;
        #1 expect_equal(stored, kept, 8);
        if (exact_before >= 0) begin
          expect_equal(chained, kept_before, 12);
          expect_equal(product_later, exact_before, 13);
        end
      end
    $display("%0d differences", errors);
    $finish;
  end
endmodule
