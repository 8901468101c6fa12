// Makes an IEEE number of an unsigned sum whose leading one stands in a window at its top, in four cycles.
//   step count:  leading zeros
//   step shift:  shift left by them
//   step round:  to nearest, into the exponent
//   step pack:   marks
// `zeros_before`, what the sum has been shifted left by already, is read in the step shift, `marks` in the step pack.
module xfc_sum_to_ieee
  #(parameter exponent_bits  = 8,    // of the IEEE format
    parameter fraction_bits  = 23,
    parameter sum_bits       = 39,   // more than fraction_bits + 1
    parameter window_bits    = 10,   // of the sum
    parameter window_levels  = 4,    // bits of the window's count of zeros
    parameter zero_levels    = 5,    // bits of zeros_before
    parameter first_exponent = 133)  // of the sum's highest bit
  (input sysclk, enable,
   input [sum_bits-1:0] sum,
   input [zero_levels-1:0] zeros_before,
   input [3:0] marks,                // sign, nan, zip, sat
   output [exponent_bits+fraction_bits:0] packed_number);

  // count
  wire [window_levels-1:0] zeros_d, zeros;
  wire [sum_bits-1:0] counted;
  xfc_leading_zeros #(window_bits, window_levels) count_zeros (sum[sum_bits-1:sum_bits-window_bits], zeros_d);
  xfc_register #(window_levels, 1) count_0 (sysclk, enable, zeros_d, zeros);
  xfc_register #(sum_bits, 1) count_1 (sysclk, enable, sum, counted);

  // shift
  wire [sum_bits-1:0] shifted_d;
  xfc_shift_left #(sum_bits, window_levels, 1) shift_sum (counted, zeros, 1'b0, shifted_d);
  wire [exponent_bits-1:0] exponent_d =
    first_exponent[exponent_bits-1:0] - {{exponent_bits-window_levels{1'b0}}, zeros} -
    {{exponent_bits-zero_levels{1'b0}}, zeros_before};

  wire [fraction_bits:0] shifted;
  wire [exponent_bits-1:0] exponent;
  xfc_register #(fraction_bits + 1, 1) shift_0
    (sysclk, enable, shifted_d[sum_bits-2:sum_bits-2-fraction_bits], shifted);
  xfc_register #(exponent_bits, 1) shift_1 (sysclk, enable, exponent_d, exponent);
  wire unused_shifted = &{1'b0, shifted_d[sum_bits-1], shifted_d[sum_bits-3-fraction_bits:0]};

  // round
  wire [exponent_bits+fraction_bits-1:0] rounded_d =
    {exponent, shifted[fraction_bits:1]} + {{exponent_bits+fraction_bits-1{1'b0}}, shifted[0]};

  wire [exponent_bits+fraction_bits-1:0] rounded;
  xfc_register #(exponent_bits + fraction_bits, 1) round_0 (sysclk, enable, rounded_d, rounded);

  // pack
  wire [exponent_bits+fraction_bits:0] packed_d;
  xfc_pack_ieee #(exponent_bits, fraction_bits, exponent_bits + 2) pack_result
    ({2'b00, rounded[exponent_bits+fraction_bits-1:fraction_bits]}, rounded[fraction_bits-1:0], marks, packed_d);

  xfc_register #(1 + exponent_bits + fraction_bits, 1) pack_0 (sysclk, enable, packed_d, packed_number);
endmodule
