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

  xfc_extreme_ieee #(11, 52, greatest) extreme (sysclk, enable, aa, bb, cc);
endmodule
