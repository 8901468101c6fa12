// Tries the common parts on every input of a small width, against plain arithmetic. Prints what differs, then the
// number of differences.
module common_parts;
  reg signed [7:0] value;
  reg [3:0] distance;
  reg before, fill, clock, enable;
  wire [7:0] right, left, stored, passed;
  wire lost, up, up_complemented;
  wire [3:0] zeros;
  reg [7:0] kept;
  reg signed [7:0] factor;
  reg [3:0] exponent, marks;
  wire [15:0] product, blocks_product;
  wire [5:0] packed_number;
  integer i, d, errors, magnitude, exact, nearest;

  xfc_shift_right #(8, 4, 1) shift_right (value, distance, before, right, lost);
  xfc_shift_left #(8, 4, 1) shift_left (value, distance, fill, left);
  xfc_leading_zeros #(8, 4) leading_zeros (value, zeros);
  xfc_round_even #(3) round_even (value[3], value[2:0], 1'b0, up);
  xfc_round_even #(3) round_complemented (value[3], value[2:0], 1'b1, up_complemented);
  xfc_register #(8, 1) register_there (clock, enable, value, stored);
  xfc_register #(8, 0) register_left_out (clock, enable, value, passed);

  xfc_product #(8, 0, 0, 0, 0) product_of_rows (clock, enable, value, factor, product);
  xfc_product #(8, 1, 0, 0, 0) product_in_blocks (clock, enable, value, factor, blocks_product);
  // Six digits: a block of four and one of two.
  wire [23:0] long_product;
  xfc_product #(12, 0, 0, 0, 0) product_of_blocks
    (clock, enable, {value, 4'd0}, {{4{factor[7]}}, factor}, long_product);
  xfc_pack_ieee #(3, 2, 5) pack ({exponent[3], exponent}, distance[1:0], marks, packed_number);

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
    value = 0;
    #1 clock = 1;
    #1 clock = 0;
    for (i = 0; i < 256; i = i + 1)
      for (d = 0; d < 16; d = d + 1) begin
        value = i;
        distance = d;
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
        expect_equal(i / 8 + up, nearest_even(i), 5);
        expect_equal(i / 8 + up_complemented, nearest_even(i + 1), 6);
        expect_equal(passed, i, 7);
        enable = (i + d) % 4 != 0;
        #1 clock = 1;
        if (enable) kept = value;
        #1 clock = 0;
        value = ~value;
        #1 expect_equal(stored, kept, 8);
      end
    enable = 1;
    for (i = 0; i < 256; i = i + 1)
      for (d = 0; d < 256; d = d + 1) begin
        value = i;
        factor = d;
        #1;
        expect_equal($signed(product), value * factor, 9);
        expect_equal($signed(blocks_product), value * factor, 10);
        expect_equal($signed(long_product), value * factor * 16, 11);
        exponent = i;
        marks = i >> 4;
        distance = d;
        #1;
        if (marks[2]) expect_equal(packed_number, 6'b011110, 12);
        else if (marks[0]) expect_equal(packed_number, {marks[3], 5'b11100}, 12);
        else if (marks[1] || $signed(exponent) <= 0) expect_equal(packed_number, {marks[3], 5'd0}, 12);
        else if (exponent >= 7) expect_equal(packed_number, {marks[3], 5'b11100}, 12);
        else expect_equal(packed_number, {marks[3], exponent[2:0], distance[1:0]}, 12);
      end
    $display("%0d differences", errors);
    $finish;
  end
endmodule
