// Registers behind each other: q is d of so many cycles ago, counted in cycles with enable. Made of xfc_register alone.
module xfc_registers
  #(parameter width = 1,   // bits
    parameter count = 1)   // cycles, at least 0
  (input sysclk, enable,
   input [width-1:0] d,
   output [width-1:0] q);

  // Each on a wire of its own: simulators are slow with a vector that many instances drive a part of.
  genvar i;
  generate
    for (i = 0; i < count; i = i + 1) begin : each
      wire [width-1:0] stored;
      if (i == 0) begin : first
        xfc_register #(width, 1) stage (sysclk, enable, d, stored);
      end else begin : next
        xfc_register #(width, 1) stage (sysclk, enable, each[i-1].stored, stored);
      end
    end
    if (count == 0) begin : none
      wire unused = &{1'b0, sysclk, enable};
      assign q = d;
    end else begin : last
      assign q = each[count-1].stored;
    end
  endgenerate
endmodule
