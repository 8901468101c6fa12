// The smaller of two IEEE numbers, or the larger one when `greatest` is 1: a common part of xfc_extremef and
// xfc_extremed, which say more.
//   step halves:  both halves of exponent and fraction, nan and zero
//   step choose:  one of both; zeros and nan
// Latency 2 cycles: a register behind each step.
module xfc_extreme_ieee
  #(parameter exponent_bits = 8,
    parameter fraction_bits = 23,
    parameter greatest      = 0)
  (input sysclk, enable,
   input [exponent_bits+fraction_bits:0] aa,
   input [exponent_bits+fraction_bits:0] bb,
   output [exponent_bits+fraction_bits:0] cc);

  localparam width = exponent_bits + fraction_bits + 1;

  // halves
  wire [8:0] marks_d;
  xfc_ieee_halves #(exponent_bits, fraction_bits) halves (aa, bb, marks_d);

  wire [width-1:0] a, b;
  wire [8:0] marks;   // signs, nan, both zero, halves
  xfc_register #(width, 1) halves_0 (sysclk, enable, aa, a);
  xfc_register #(width, 1) halves_1 (sysclk, enable, bb, b);
  xfc_register #(9, 1) halves_2 (sysclk, enable, marks_d, marks);

  // choose
  wire below, same;
  wire unused_marks = &{1'b0, marks[4], same};
  xfc_ieee_below choose_below (marks[8:7], marks[3:0], below, same);
  wire take_a = marks[5] | (!marks[6] & (greatest == 1 ? !below : below));
  wire [width-1:0] chosen = take_a ? a : b;
  wire both_are_nan = marks[6] & marks[5];
  wire zero = !(|chosen[width-2:fraction_bits]);
  wire [width-1:0] chosen_d =
    both_are_nan ? {1'b0, {exponent_bits+1{1'b1}}, {fraction_bits-1{1'b0}}} :
    zero ? {chosen[width-1], {width-1{1'b0}}} : chosen;

  xfc_register #(width, 1) choose_0 (sysclk, enable, chosen_d, cc);
endmodule
