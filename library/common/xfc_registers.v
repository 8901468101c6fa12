// Registers behind each other: q is d of so many cycles ago, counted in cycles with enable. Made of xfc_register alone.
module xfc_registers
  #(parameter width = 1,   // bits
    parameter count = 1)   // cycles, at least 0
  (input sysclk, enable,
   input [width-1:0] d,
   output [width-1:0] q);

  wire [width*(count+1)-1:0] chain;
  genvar i;

  assign chain[width-1:0] = d;
  generate
    for (i = 0; i < count; i = i + 1) begin : each
      xfc_register #(width, 1) stage (sysclk, enable, chain[width*i +: width], chain[width*(i+1) +: width]);
    end
    if (count == 0) begin : none
      wire unused = &{1'b0, sysclk, enable};
    end
  endgenerate
  assign q = chain[width*count +: width];
endmodule
