// Tries the parts that order IEEE numbers on every pair of a small format (three bits of exponent, three of fraction),
// against plain integers. Prints what differs, then the number of differences.
module order_parts;
  reg [6:0] a, b;
  wire [8:0] marks;
  wire below, same;
  wire unordered = marks[6] | marks[5];
  wire equal = !unordered & (marks[4] | same);
  wire less = !unordered & !marks[4] & below;
  wire [5:0] holds;
  integer i, j, a_rank, b_rank, errors;

  xfc_ieee_halves #(3, 3) halves (a, b, marks);
  xfc_ieee_below relate_below (marks[8:7], marks[3:0], below, same);
  genvar r;
  generate
    for (r = 0; r < 6; r = r + 1) begin : relations
      xfc_relation #(r) relate (unordered, equal, less, holds[r]);
    end
  endgenerate

  task expect_equal(input integer found, input integer wanted, input integer part);
    if (found !== wanted) begin
      $display("part %0d, a %b, b %b: %0d, not %0d", part, a, b, found, wanted);
      errors = errors + 1;
    end
  endtask

  // Grows with the number; the zeros and the subnormal numbers are 0.
  function integer rank(input [6:0] number);
    begin
      rank = number[5:3] == 0 ? 0 : number[5:0];
      if (number[6]) rank = -rank;
    end
  endfunction

  function is_nan(input [6:0] number);
    is_nan = number[5:0] > 56;
  endfunction

  initial begin
    errors = 0;
    for (i = 0; i < 128; i = i + 1)
      for (j = 0; j < 128; j = j + 1) begin
        a = i;
        b = j;
        #1;
        a_rank = rank(a);
        b_rank = rank(b);
        expect_equal(marks[6:5], {is_nan(a), is_nan(b)}, 1);
        expect_equal(same, i == j, 2);
        if (is_nan(a) || is_nan(b)) begin
          expect_equal(holds, 6'b000010, 3);
        end else begin
          expect_equal(holds, {a_rank >= b_rank, a_rank > b_rank, a_rank <= b_rank, a_rank < b_rank,
                               a_rank != b_rank, a_rank == b_rank}, 4);
          // -0 stands before +0.
          if (a_rank != b_rank || a[6] != b[6])
            expect_equal(below, a_rank == b_rank ? a[6] : a_rank < b_rank, 5);
        end
      end
    $display("%0d differences", errors);
    $finish;
  end
endmodule
