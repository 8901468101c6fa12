// Combines two truth values: and, or, exclusive or for bitoperation 0 to 2.
//   step combine:  one table
// Latency 1 cycle.
module xfc_logic
  #(parameter bitoperation = 0)
  (input sysclk, reset, enable,
   input aa,
   input bb,
   output cc);

  generate
    if (bitoperation < 0 || bitoperation > 2)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  // combine
  wire combined_d = bitoperation == 0 ? aa & bb : bitoperation == 1 ? aa | bb : aa ^ bb;

  xfc_register #(1, 1) combine_0 (sysclk, enable, combined_d, cc);
endmodule
