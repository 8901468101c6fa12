// Selects one of two buses, whatever their bits mean: aa where condition is 1, else bb.
//   step choose:  one of both
// Latency 1 cycle.
module xfc_select
  #(parameter width = 1)
  (input sysclk, reset, enable, condition,
   input [width:1] aa,
   input [width:1] bb,
   output [width:1] cc);

  generate
    if (width < 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  // choose
  wire [width:1] chosen_d = condition ? aa : bb;

  xfc_register #(width, 1) choose_0 (sysclk, enable, chosen_d, cc);
endmodule
