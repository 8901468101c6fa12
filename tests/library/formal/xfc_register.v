// The optional register as wires, whatever its parameters say: what is left of a pipeline is a function of its
// operands, which a proof compares for all of them at once.
module xfc_register
  #(parameter width = 1, parameter enabled = 1)
  (input sysclk, enable,
   input [width-1:0] d,
   output [width-1:0] q);

  wire unused = &{1'b0, sysclk, enable, enabled != 0};
  assign q = d;
endmodule
