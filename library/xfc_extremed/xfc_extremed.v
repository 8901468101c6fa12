// The smaller of two IEEE doubles, or the larger one when `greatest` is 1. Exact. The number beside a nan, the quiet
// nan of two; -0 is below +0, a subnormal number is the zero of its sign.
//   step halves:  both halves of exponent and fraction, nan and zero
//   step choose:  one of both; zeros and nan
// Latency 2 cycles: a register behind each step.
module xfc_extremed
  #(parameter greatest = 0)
  (input sysclk, reset, enable,
   input [64:1] aa,
   input [64:1] bb,
   output [64:1] cc);

  generate
    if (greatest < 0 || greatest > 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam exponent_bits = 11;
  localparam fraction_bits = 52;
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
