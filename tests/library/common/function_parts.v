// Tries the parts that functions are made of, with their registers as wires, on every operand of a few bits: sums to
// IEEE numbers, the smaller and the larger number, a quadratic and the end of a Newton step. Prints what differs, then
// the number of differences.
module function_parts;
  integer errors;

  task expect_equal(input integer found, input integer wanted, input integer part, input [31:0] operands);
    if (found !== wanted) begin
      $display("part %0d, operands %b: %0d, not %0d", part, operands, found, wanted);
      errors = errors + 1;
    end
  endtask

  // ---- A sum of 9 bits whose leading one is among its first 5, to 4 bits of exponent and 3 of fraction ----
  reg [8:0] sum;
  reg [2:0] zeros_before;
  reg [3:0] marks;
  wire [7:0] low_number, high_number;   // the exponents go from 0 and to 15
  xfc_sum_to_ieee #(.exponent_bits(4), .fraction_bits(3), .sum_bits(9), .window_bits(5), .window_levels(3),
                    .zero_levels(3), .first_exponent(11)) low (1'b0, 1'b1, sum, zeros_before, marks, low_number);
  xfc_sum_to_ieee #(.exponent_bits(4), .fraction_bits(3), .sum_bits(9), .window_bits(5), .window_levels(3),
                    .zero_levels(3), .first_exponent(15)) high (1'b0, 1'b1, sum, zeros_before, marks, high_number);

  // By division instead of shifts: the exponent of the leading one, and the nearest fraction of it, ties away from 0.
  function [7:0] ieee_of(input integer first_exponent, input [8:0] of, input [2:0] before, input [3:0] with_marks);
    integer exponent, unit, fraction;
    begin
      exponent = first_exponent - before;
      unit = 256;
      while (of < unit) begin
        unit = unit / 2;
        exponent = exponent - 1;
      end
      fraction = (8 * of + unit / 2) / unit - 8;
      if (fraction == 8) begin
        fraction = 0;
        exponent = exponent + 1;
      end
      ieee_of = with_marks[2] ? 8'b0_1111_100 :
                with_marks[0] ? {with_marks[3], 7'b1111_000} :
                with_marks[1] || exponent <= 0 ? {with_marks[3], 7'b0} :
                exponent >= 15 ? {with_marks[3], 7'b1111_000} :
                {with_marks[3], exponent[3:0], fraction[2:0]};
    end
  endfunction

  // ---- The smaller and the larger of two numbers of three bits of exponent and three of fraction ----
  reg [6:0] a, b;
  wire [6:0] smaller, larger;
  xfc_extreme_ieee #(3, 3, 0) least (1'b0, 1'b1, a, b, smaller);
  xfc_extreme_ieee #(3, 3, 1) greatest (1'b0, 1'b1, a, b, larger);

  // Grows with the number, -0 before +0; the subnormal numbers are zeros.
  function integer rank(input [6:0] of);
    begin
      rank = of[5:3] == 0 ? 0 : of[5:0];
      rank = of[6] ? -1 - rank : rank;
    end
  endfunction

  function is_nan(input [6:0] of);
    is_nan = of[5:0] > 56;
  endfunction

  function [6:0] extreme_of(input [6:0] x, input [6:0] y, input of_greatest);
    reg [6:0] chosen;
    begin
      chosen = is_nan(x) || (!is_nan(y) && (rank(x) > rank(y)) != of_greatest) ? y : x;
      extreme_of = is_nan(chosen) ? 7'b0_111_100 : chosen[5:3] == 0 ? {chosen[6], 6'b0} : chosen;
    end
  endfunction

  // ---- A quadratic of a position of 5 bits, of which 3 make the curve ----
  reg [4:0] position;
  reg [7:0] level;
  reg [4:0] slope;
  reg [2:0] curve;
  wire [7:0] value;
  xfc_quadratic #(.position_bits(5), .short_bits(3), .level_bits(8), .slope_bits(5), .curve_bits(3))
    quadratic (1'b0, 1'b1, position, {level, slope, curve}, value);

  // ---- A guess of 5 bits, more by its product with an error of 4, rounded to 6 of 8 bits ----
  reg [4:0] guess;
  reg [3:0] error;
  wire [6:0] corrected;
  xfc_newton_add #(.guess_bits(5), .error_bits(4), .rise_bits(5), .sum_bits(8), .kept_bits(6))
    newton (1'b0, 1'b1, guess, error, corrected);

  integer i, j, k;
  initial begin
    errors = 0;
    for (i = 16; i < 512; i = i + 1)
      for (j = 0; j < 128; j = j + 1) begin
        {sum, zeros_before, marks} = {i[8:0], j[6:0]};
        #1 expect_equal(low_number, ieee_of(11, sum, zeros_before, marks), 1, {i[8:0], j[6:0]});
        // What rounds up to the exponent 16 has no room for it.
        if (sum < 9'd496) expect_equal(high_number, ieee_of(15, sum, zeros_before, marks), 1, {i[8:0], j[6:0]});
      end

    for (i = 0; i < 128; i = i + 1)
      for (j = 0; j < 128; j = j + 1) begin
        a = i;
        b = j;
        #1 expect_equal(smaller, extreme_of(a, b, 1'b0), 2, {a, b});
        expect_equal(larger, extreme_of(a, b, 1'b1), 3, {a, b});
      end

    // No difference may be negative: levels are above the highest slope, slopes above the highest curve.
    for (i = 0; i < 32; i = i + 1)
      for (j = 8; j < 32; j = j + 1)
        for (k = 0; k < 8; k = k + 1) begin
          {position, slope, curve} = {i[4:0], j[4:0], k[2:0]};
          level = 8'd64 + 3 * i + 2 * k;
          #1 expect_equal(value, level - (slope - curve * (i / 4) / 8) * i / 32, 4, {position, slope, curve});
        end

    for (i = 0; i < 32; i = i + 1)
      for (j = 0; j < 16; j = j + 1) begin
        {guess, error} = {i[4:0], j[3:0]};
        // The guess in units of the sum, half a unit of what is kept, and the product's upper five bits.
        #1 expect_equal(corrected, (8 * i + 2 + i * j / 16) / 4, 5, {guess, error});
      end
    $display("%0d differences", errors);
    $finish;
  end
endmodule
