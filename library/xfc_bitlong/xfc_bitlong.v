// Combines two integers of 32 bits bit by bit: and, or, exclusive or for bitoperation 0 to 2.
//   step combine:  one table a bit
// Latency 1 cycle.
module xfc_bitlong
  #(parameter bitoperation = 0)
  (input sysclk, reset, enable,
   input [32:1] aa,
   input [32:1] bb,
   output [32:1] cc);

  generate
    if (bitoperation < 0 || bitoperation > 2)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  // combine
  wire [32:1] combined_d = bitoperation == 0 ? aa & bb : bitoperation == 1 ? aa | bb : aa ^ bb;

  xfc_register #(32, 1) combine_0 (sysclk, enable, combined_d, cc);
endmodule
