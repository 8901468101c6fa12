// A register that a pipeline may have or not: q is d of the last cycle in which enable was 1, or d itself when
// enabled is 0. Data needs no reset, so there is none. Every border between two steps is made of these alone; a
// proof replaces this one file to compare the steps without their registers.
module xfc_register
  #(parameter width   = 1,   // bits
    parameter enabled = 1)   // 1: a register, 0: wires
  (input sysclk, enable,
   input [width-1:0] d,
   output [width-1:0] q);

  generate
    if (enabled == 1) begin : clocked
      reg [width-1:0] stored;
      always @(posedge sysclk)
        if (enable) stored <= d;
      assign q = stored;
    end else begin : wires
      wire unused = &{1'b0, sysclk, enable};
      assign q = d;
    end
  endgenerate
endmodule
