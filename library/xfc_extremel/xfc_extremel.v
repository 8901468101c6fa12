// The smaller of two integers of 32 bits, or the larger one when `greatest` is 1. Exact.
//   step order:   whether the first is less
//   step choose:  one of both
// Latency 2 cycles: a register behind each step.
module xfc_extremel
  #(parameter greatest = 0)
  (input sysclk, reset, enable,
   input [32:1] aa,
   input [32:1] bb,
   output [32:1] cc);

  generate
    if (greatest < 0 || greatest > 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  // order
  wire below_d = $signed(aa) < $signed(bb);

  wire [32:1] a, b;
  wire below;
  xfc_register #(32, 1) order_0 (sysclk, enable, aa, a);
  xfc_register #(32, 1) order_1 (sysclk, enable, bb, b);
  xfc_register #(1, 1) order_2 (sysclk, enable, below_d, below);

  // choose
  wire take_a = greatest == 1 ? !below : below;
  wire [32:1] chosen_d = take_a ? a : b;

  xfc_register #(32, 1) choose_0 (sysclk, enable, chosen_d, cc);
endmodule
