// Compares two integers of 32 bits: equal, not equal, less, less or equal, greater, greater or equal for relation 0
// to 5. Exact.
//   step relate:  one carry chain; the relation from less and equal
// Latency 1 cycle.
module xfc_cmpl
  #(parameter relation = 0)
  (input sysclk, reset, enable,
   input [32:1] aa,
   input [32:1] bb,
   output cc);

  generate
    if (relation < 0 || relation > 5)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  // relate
  wire equal = aa == bb;
  wire less = $signed(aa) < $signed(bb);
  wire holds_d;
  xfc_relation #(relation) relate_holds (1'b0, equal, less, holds_d);

  xfc_register #(1, 1) relate_0 (sysclk, enable, holds_d, cc);
endmodule
