// Tries the signed product and the packer of IEEE numbers on every input of a small width, against plain arithmetic.
// Prints what differs, then the number of differences.
module product_parts;
  reg signed [7:0] value, factor;
  reg [3:0] distance, exponent, marks;
  reg clock, enable;
  wire [15:0] product, blocks_product;
  wire [5:0] packed_number;
  integer i, d, errors;

  xfc_product #(8, 0, 0, 0, 0) product_of_rows (clock, enable, value, factor, product);
  xfc_product #(8, 1, 0, 0, 0) product_in_blocks (clock, enable, value, factor, blocks_product);
  // Six digits: a block of four and one of two.
  wire [23:0] long_product;
  xfc_product #(12, 0, 0, 0, 0) product_of_blocks
    (clock, enable, {value, 4'd0}, {{4{factor[7]}}, factor}, long_product);
  xfc_pack_ieee #(3, 2, 5) pack ({exponent[3], exponent}, distance[1:0], marks, packed_number);

  task expect_equal(input integer found, input integer wanted, input integer part);
    if (found !== wanted) begin
      $display("part %0d, value %0d, factor %0d: %0d, not %0d", part, value, factor, found, wanted);
      errors = errors + 1;
    end
  endtask

  initial begin
    errors = 0;
    clock = 0;
    enable = 1;
    for (i = 0; i < 256; i = i + 1)
      for (d = 0; d < 256; d = d + 1) begin
        value = i;
        factor = d;
        exponent = i;
        marks = i >> 4;
        distance = d;
        #1;
        expect_equal($signed(product), value * factor, 1);
        expect_equal($signed(blocks_product), value * factor, 2);
        expect_equal($signed(long_product), value * factor * 16, 3);
        if (marks[2]) expect_equal(packed_number, 6'b011110, 4);
        else if (marks[0]) expect_equal(packed_number, {marks[3], 5'b11100}, 4);
        else if (marks[1] || $signed(exponent) <= 0) expect_equal(packed_number, {marks[3], 5'd0}, 4);
        else if (exponent >= 7) expect_equal(packed_number, {marks[3], 5'b11100}, 4);
        else expect_equal(packed_number, {marks[3], exponent[2:0], distance[1:0]}, 4);
      end
    $display("%0d differences", errors);
    $finish;
  end
endmodule
